#include "stream/EachMember.h"

#include <algorithm>
#include <new>

#include "beamfile/BeamText.h"
#include "check/DesignCodes.h"
#include "stream/MemberPieceReader.h"
#include "text/Sha256.h"
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

} // namespace

MemberLoop::MemberLoop(const Console& console, const ReadingOptions& reading, UseMember use,
                       std::function<void(const Refusal&)> refused, BeamUse beams) :
    m_console(console),
    m_reading(reading), m_use(std::move(use)), m_refused(std::move(refused)), m_beams(std::move(beams))
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
        if (IsBeam(name, piece)) return UseBeam(name, piece);
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

#ifdef KELTRIX_HOST_WITH_STATICS
void MemberLoop::TellDeflections(const Beam& beam)
{
    const auto& checks = beam.made.deflections;
    if (checks.empty()) return;
    const auto worst = std::max_element(checks.begin(), checks.end(), [](const auto& a, const auto& b) {
        return a.utilisation < b.utilisation; // infinite where nothing was checked
    });
    const bool counts = worst->IsEvaluated() || beam.file.deflection.isAsked;
    const std::string result = !worst->IsEvaluated() ? "not evaluated"
                               : worst->IsPassed()   ? "the limits are kept"
                                                     : "fails";
    const std::string utilisation =
        worst->IsEvaluated() ? ", utilisation " + Utf8(CDesFormat().Util(worst->utilisation)) : std::string();
    const ExitCode code = counts && !worst->IsPassed() ? EXIT_MEMBER_FAILS : EXIT_FINE;
    m_worst = Worse(m_worst, code);
    m_beams.tellDeflections(code, beam.file.name + ':' + std::to_string(beam.file.deflection.line) + ": " +
                                      (worst->IsPassed() ? "note" : "warning") +
                                      ": deflection: of the beam, in none of its members: " + result + utilisation);
}

void MemberLoop::UseBeam(const std::string& name, const MemberPiece& piece)
{
    CodeChoice code = m_beams.code;
    if (!code.code && !DesignCodes().empty()) code = DefaultCode();
    const Beam beam = ReadBeam(name, piece.bytes, m_reading, code);
    std::vector<std::string> errors;
    for (const Defect& defect : beam.made.defects) {
        m_console.err(BeamMessage(defect, name));
        if (defect.severity == Severity::Error) errors.push_back(BeamMessage(defect, name));
    }
    if (!errors.empty()) return Leave({name, 1, beam.file.title, std::move(errors), WarningsOf(beam)});
    try {
        if (m_beams.use) {
            m_worst = Worse(m_worst, m_beams.use(beam));
            return;
        }
    } catch (const BadInput& failure) {
        return Refuse({name, 1, beam.file.title, {failure.what()}, WarningsOf(beam)});
    } catch (const std::bad_alloc&) {
        return Refuse({name, 1, beam.file.title, {name + ": not enough memory for this beam"}});
    }
    if (m_beams.tellDeflections) TellDeflections(beam);
    for (const MemberFile& member : beam.members) {
        for (const Defect& defect : member.Check().defects)
            if (!IsOfTheBeam(defect.code)) m_console.err(defect.Text(member.Name())); // else it stands above
        UseOne(member, 0);
    }
}
#else
void MemberLoop::UseBeam(const std::string& name, const MemberPiece&)
{
    Refuse({name, 0, {}, {name + ": a beam file, and this ksteel was built without Eigen, which it needs"}});
}
#endif

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
        std::vector<std::string> errors = file.ErrorsOf(i);
        if (!errors.empty()) return Leave(refusal(std::move(errors)));
        return Refuse(refusal(file.UnlistedErrorsOf(i)));
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
                       const UseMember& use, const BeamUse& beams)
{
    MemberLoop loop(console, reading, use, {}, beams);
    for (const std::string& path : files)
        loop.UseFile(path);
    return loop.Worst();
}

} // namespace Keltrix::App
