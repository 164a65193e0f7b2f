#include "stream/MemberStream.h"

#include <algorithm>
#include <new>

#include "beamfile/BeamText.h"
#include "check/DesignCodes.h"
#include "text/Text.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif

namespace Keltrix::App {

namespace {

// A beam file is one piece: it has no END lines.
bool IsBeam(const std::string& name, const MemberPiece& piece)
{
    return piece.start.bytes == 0 && !piece.isTooLarge && IsBeamText(name, piece.bytes);
}

Refusal RefusalOf(const MemberFile& file, std::size_t i, std::vector<std::string> reasons)
{
    const MemberText& member = file.Member(i);
    return {file.Name(), member.firstLine, Utf8(member.title), std::move(reasons), file.WarningsOf(i)};
}

Refusal RefusalOf(const StreamMember& member, std::string reason)
{
#ifdef KELTRIX_HOST_WITH_STATICS
    if (member.beam)
        return {member.beam->file.name, 1, member.beam->file.title, {std::move(reason)}, WarningsOf(*member.beam)};
#endif
    return RefusalOf(*member.file, member.place, {std::move(reason)});
}

Refusal WithoutMemory(const StreamMember& member)
{
#ifdef KELTRIX_HOST_WITH_STATICS
    if (member.beam) {
        const std::string& name = member.beam->file.name;
        return {name, 1, member.beam->file.title, {name + ": not enough memory for this beam"}};
    }
#endif
    return RefusalOf(*member.file, member.place,
                     {member.file->NameOf(member.place) + ": not enough memory for this member"});
}

#ifdef KELTRIX_HOST_WITH_STATICS
// What came of the deflections; the exit code is that of a member that fails where one is not allowed.
StreamMember DeflectionRemark(const Beam& beam)
{
    const auto& checks = beam.made.deflections;
    StreamMember remark;
    const auto worst = std::max_element(checks.begin(), checks.end(), [](const auto& a, const auto& b) {
        return a.utilisation < b.utilisation; // infinite where nothing was checked
    });
    const bool counts = worst->IsEvaluated() || beam.file.deflection.isAsked;
    const std::string result = !worst->IsEvaluated() ? "not evaluated"
                               : worst->IsPassed()   ? "the limits are kept"
                                                     : "fails";
    const std::string utilisation =
        worst->IsEvaluated() ? ", utilisation " + Utf8(CDesFormat().Util(worst->utilisation)) : std::string();
    remark.code = counts && !worst->IsPassed() ? EXIT_MEMBER_FAILS : EXIT_FINE;
    remark.remark = beam.file.name + ':' + std::to_string(beam.file.deflection.line) + ": " +
                    (worst->IsPassed() ? "note" : "warning") +
                    ": deflection: of the beam, in none of its members: " + result + utilisation;
    return remark;
}
#endif

} // namespace

MemberStream::MemberStream(PieceSource& source, const ReadingOptions& reading, const Console& console,
                           BeamReading beams, const Design::DesignCode* code) :
    m_source(source),
    m_reading(reading), m_console(console), m_beams(beams), m_code(code)
{}

MemberStream::MemberStream(const std::vector<std::string>& files, const ReadingOptions& reading, const Console& console,
                           BeamReading beams, const Design::DesignCode* code) :
    m_files(std::make_unique<FilePieces>(files, console)),
    m_source(*m_files), m_reading(reading), m_console(console), m_beams(beams), m_code(code)
{}

std::optional<StreamMember> MemberStream::Next()
{
    while (m_ready.empty()) {
        const std::optional<InputPiece> input = m_source.Next();
        if (!input) return std::nullopt;
        Open(*input);
    }
    StreamMember member = std::move(m_ready.front());
    m_ready.pop_front();
    for (const std::string& message : member.messages)
        m_console.err(message);
    return member;
}

ExitCode MemberStream::Use(StreamMember& member, const std::function<ExitCode()>& work)
{
    const auto refuse = [&](Refusal refusal) {
        for (const std::string& reason : refusal.reasons)
            m_console.err(reason);
        member.refusal = std::move(refusal);
        member.code = EXIT_BAD_INPUT;
    };
    try {
        if (member.file || member.beam) member.code = work();
    } catch (const BadInput& failure) {
        refuse(RefusalOf(member, failure.what()));
    } catch (const std::bad_alloc&) {
        refuse(WithoutMemory(member));
    }
    m_worst = Worse(m_worst, member.code);
    return member.code;
}

void MemberStream::Refuse(Refusal refusal, bool isTold)
{
    StreamMember member;
    member.code = EXIT_BAD_INPUT;
    if (!isTold) member.messages = refusal.reasons;
    member.refusal = std::move(refusal);
    m_ready.push_back(std::move(member));
}

void MemberStream::Open(const InputPiece& input)
{
    if (!input.failure.empty()) return Refuse({input.name, 0, {}, {input.failure}});
    try {
        if (IsBeam(input.name, input.piece)) return OpenBeam(input.name, input.piece);
        auto file = std::make_shared<const MemberFile>(input.name, input.piece, m_reading);
        for (const Defect& defect : file->Check().defects)
            m_console.err(defect.Text(input.name));
        // Errors between members are of none of them.
        for (const Defect& defect : file->Check().defects)
            if (defect.severity == Severity::Error && defect.member == Defect::NO_MEMBER)
                Refuse({input.name, defect.line, {}, {defect.Text(input.name)}}, true);
        OpenMembers(std::move(file));
    } catch (const BadInput& failure) {
        Refuse({input.name, input.piece.FirstLine(), {}, {failure.what()}});
    }
}

void MemberStream::OpenMembers(std::shared_ptr<const MemberFile> file)
{
    for (std::size_t i = 0; i < file->MemberCount(); ++i) {
        if (!file->Member(i).hasErrors) {
            StreamMember member;
            member.file = file;
            member.place = i;
            m_ready.push_back(std::move(member));
            continue;
        }
        std::vector<std::string> errors = file->ErrorsOf(i);
        const bool isListed = !errors.empty();
        if (!isListed) errors = file->UnlistedErrorsOf(i);
        Refuse(RefusalOf(*file, i, std::move(errors)), isListed);
    }
}

#ifdef KELTRIX_HOST_WITH_STATICS
void MemberStream::OpenBeam(const std::string& name, const MemberPiece& piece)
{
    const Design::DesignCode* code = m_code;
    if (!code && !DesignCodes().empty()) code = DefaultCode().code;
    const auto beam = std::make_shared<const Beam>(ReadBeam(name, piece.bytes, m_reading, code));
    std::vector<std::string> errors;
    for (const Defect& defect : beam->made.defects) {
        m_console.err(BeamMessage(defect, name));
        if (defect.severity == Severity::Error) errors.push_back(BeamMessage(defect, name));
    }
    if (!errors.empty()) return Refuse({name, 1, beam->file.title, std::move(errors), WarningsOf(*beam)}, true);
    if (m_beams == BeamReading::Whole) {
        m_ready.emplace_back().beam = beam;
        return;
    }
    if (m_beams == BeamReading::MembersWithDeflections && !beam->made.deflections.empty())
        m_ready.push_back(DeflectionRemark(*beam));
    for (const MemberFile& member : beam->members) {
        const std::size_t first = m_ready.size();
        OpenMembers(std::shared_ptr<const MemberFile>(beam, &member));
        for (const Defect& defect : member.Check().defects)
            if (!IsOfTheBeam(defect.code) && first < m_ready.size()) // else it stands above
                m_ready[first].messages.push_back(defect.Text(member.Name()));
    }
}
#else
void MemberStream::OpenBeam(const std::string& name, const MemberPiece&)
{
    Refuse({name, 0, {}, {name + ": a beam file, and this ksteel was built without Eigen, which it needs"}});
}
#endif

} // namespace Keltrix::App
