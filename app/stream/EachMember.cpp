#include "stream/EachMember.h"

#include <new>

#include "stream/MemberPieceReader.h"
#include "text/Sha256.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

// The note that further defects were not listed is about none.
bool IsListed(const Defect& defect) { return !defect.got.empty() || !defect.expected.empty(); }

std::vector<std::string> ErrorsOf(const MemberFile& file, std::size_t i)
{
    std::vector<std::string> errors;
    for (const Defect& defect : file.Check().DefectsOf(i))
        if (defect.severity == Severity::Error && IsListed(defect)) errors.push_back(defect.Text(file.Name()));
    return errors;
}

// The errors of a member after so many defects that its own were not listed.
std::vector<std::string> UnlistedErrorsOf(const MemberFile& file, std::size_t i, const ReadingOptions& reading)
{
    std::vector<std::string> errors;
    const MemberText& member = file.Member(i);
    for (const Defect& defect : CheckMemberFile(CString(member.text), reading, member.firstLine, true).defects) {
        if (defect.severity == Severity::Error) errors.push_back(defect.Text(file.Name()));
    }
    return errors;
}

} // namespace

MemberLoop::MemberLoop(const Console& console, const ReadingOptions& reading, UseMember use,
                       std::function<void(const Refusal&)> refused) :
    m_console(console),
    m_reading(reading), m_use(std::move(use)), m_refused(std::move(refused))
{}

void MemberLoop::Leave(const Refusal& refusal)
{
    m_worst = EXIT_BAD_INPUT;
    if (m_refused) m_refused(refusal);
}

void MemberLoop::Refuse(const Refusal& refusal)
{
    for (const std::string& reason : refusal.reasons)
        m_console.err(reason);
    Leave(refusal);
}

void MemberLoop::UseFile(const std::string& path)
{
    const std::string name = NameOfInput(path);
    try {
        Sha256 sum;
        MemberPieceReader reader(path, m_console.in, m_console.wasRead ? &sum : nullptr);
        std::vector<MemberPiece> pieces;
        for (bool goesOn = true; goesOn;) {
            goesOn = reader.Read(pieces);
            for (const MemberPiece& piece : pieces)
                UsePiece(name, piece);
            pieces.clear();
        }
        if (m_console.wasRead) m_console.wasRead(name, sum.Digest());
    } catch (const BadInput& failure) {
        Refuse({name, 0, {}, {failure.what()}});
    }
}

void MemberLoop::UsePiece(const std::string& name, const MemberPiece& piece)
{
    try {
        const MemberFile file(name, piece, m_reading);
        for (const Defect& defect : file.Check().defects)
            m_console.err(defect.Text(name));
        RefuseStrayLines(file);
        for (std::size_t i = 0; i < file.MemberCount(); ++i)
            UseOne(file, i);
    } catch (const BadInput& failure) {
        Refuse({name, piece.FirstLine(), {}, {failure.what()}});
    }
}

// Errors between members are of none of them.
void MemberLoop::RefuseStrayLines(const MemberFile& file)
{
    for (const Defect& defect : file.Check().defects) {
        if (defect.severity == Severity::Error && defect.member == Defect::NO_MEMBER)
            Leave({file.Name(), defect.line, {}, {defect.Text(file.Name())}});
    }
}

void MemberLoop::UseOne(const MemberFile& file, std::size_t i)
{
    const MemberText& member = file.Member(i);
    const auto refusal = [&](std::vector<std::string> reasons) {
        return Refusal{file.Name(), member.firstLine, Utf8(member.title), std::move(reasons), file.WarningsOf(i)};
    };
    if (member.hasErrors) {
        std::vector<std::string> errors = ErrorsOf(file, i);
        if (!errors.empty()) return Leave(refusal(std::move(errors)));
        return Refuse(refusal(UnlistedErrorsOf(file, i, m_reading)));
    }
    try {
        m_worst = Worse(m_worst, m_use(file, i));
    } catch (const BadInput& failure) {
        Refuse(refusal({failure.what()}));
    } catch (const std::bad_alloc&) {
        Refuse(refusal({file.NameOf(i) + ": not enough memory for this member"}));
    }
}

ExitCode ForEachMember(const std::vector<std::string>& files, const ReadingOptions& reading, const Console& console,
                       const UseMember& use)
{
    MemberLoop loop(console, reading, use);
    for (const std::string& path : files)
        loop.UseFile(path);
    return loop.Worst();
}

} // namespace Keltrix::App
