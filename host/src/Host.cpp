#include "keltrix/host/Host.h"

#include <algorithm>
#include <stdexcept>

#include "beamfile/BeamText.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
#include "check/DesignCodes.h"
#include "check/FindingsJson.h"
#include "memberfile/MemberFile.h"
#include "report/HtmlReport.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "report/LoadSheet.h"
#endif
#include "report/MemberReport.h"
#include "text/BadInput.h"
#include "text/Render.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

Diagnostic DiagnosticOf(const Defect& defect, const std::string& name)
{
    return {SeverityWord(defect.severity),
            defect.line,
            defect.code,
            defect.Text(name),
            defect.keyword,
            defect.field,
            defect.got,
            defect.expected,
            defect.advice};
}

Diagnostic DiagnosticOf(const MemberWarning& warning)
{
    return {SeverityWord(warning.severity), warning.line, warning.code, warning.Message()};
}

void Refuse(Outcome& outcome, std::vector<std::string> reasons)
{
    outcome.status = "refused";
    for (std::string& reason : reasons)
        outcome.diagnostics.push_back({SeverityWord(Severity::Error), outcome.line, {}, std::move(reason)});
}

void TakeChecked(Outcome& outcome, CheckedMember member)
{
    auto checked = std::make_shared<CheckedMember>(std::move(member));
    outcome.status = checked->Status();
    outcome.utilisation = checked->Utilisation();
    outcome.governing = checked->Governing();
    outcome.findings = checked->findings;
    const std::vector<Design::RuleFinding> information = checked->Information();
    outcome.findings.rules.insert(outcome.findings.rules.end(), information.begin(), information.end());
    for (const MemberWarning& warning : checked->CheckWarnings())
        outcome.diagnostics.push_back(DiagnosticOf(warning));
    outcome.checked = std::move(checked);
}

void CheckInto(Outcome& outcome, const MemberFile& file, std::size_t i, const CodeChoice& choice)
{
    try {
        TakeChecked(outcome, CheckMember(file, i, choice, true));
    } catch (const BadMember& refusal) {
        outcome.status = "refused";
        outcome.diagnostics.push_back(DiagnosticOf(refusal.defect, file.Name()));
    } catch (const BadInput& refusal) {
        Refuse(outcome, {refusal.what()});
    }
}

Outcome OutcomeOf(const MemberFile& file, std::size_t i, const CodeChoice& choice)
{
    const MemberText& member = file.Member(i);
    Outcome outcome;
    outcome.line = member.firstLine;
    outcome.title = Utf8(member.title);
    for (const Defect& defect : file.Check().DefectsOf(i))
        outcome.diagnostics.push_back(DiagnosticOf(defect, file.Name()));
    if (!member.hasErrors) {
        CheckInto(outcome, file, i, choice);
    } else {
        Refuse(outcome, file.ErrorsOf(i).empty() ? file.UnlistedErrorsOf(i) : std::vector<std::string>());
    }
    return outcome;
}

#ifdef KELTRIX_HOST_WITH_STATICS
// A beam is one member.
Outcome OutcomeOfBeam(const std::string& name, std::string_view text, const ReadingOptions& reading,
                      const CodeChoice& choice)
{
    const auto beam = std::make_shared<const Beam>(ReadBeam(name, text, reading, choice));
    Outcome outcome;
    if (!beam->made.HasErrors()) outcome.loadReport = [beam] { return LoadReportOf(*beam); };
    outcome.line = 1;
    outcome.title = beam->file.title;
    for (const Defect& defect : beam->made.defects) {
        outcome.diagnostics.push_back(DiagnosticOf(defect, name));
        outcome.diagnostics.back().message = BeamMessage(defect, name);
    }
    try {
        if (beam->members.empty()) {
            outcome.status = "refused";
        } else {
            TakeChecked(outcome, CheckBeam(*beam, choice, true, true));
        }
        outcome.loads = LoadPartOf(beam);
    } catch (const BadMember& refusal) {
        outcome.status = "refused";
        outcome.diagnostics.push_back(DiagnosticOf(refusal.defect, name));
    } catch (const BadInput& refusal) {
        Refuse(outcome, {refusal.what()});
    }
    return outcome;
}
#else
Outcome OutcomeOfBeam(const std::string& name, std::string_view, const ReadingOptions&, const CodeChoice&)
{
    throw BadInput(name + ": a beam file, and this library was built without Eigen, which it needs");
}
#endif

const CheckedMember& CheckedOf(const Outcome& outcome)
{
    if (!outcome.checked) throw std::invalid_argument("the member was refused: it has no findings");
    return *outcome.checked;
}

} // namespace

bool Outcomes::Pass() const
{
    return !members.empty() &&
           std::all_of(members.begin(), members.end(), [](const Outcome& one) { return one.status == "pass"; }) &&
           std::none_of(diagnostics.begin(), diagnostics.end(),
                        [](const Diagnostic& one) { return one.severity == SeverityWord(Severity::Error); });
}

Outcomes Check(std::string_view text, const std::string& name, const Settings& settings)
{
    const CodeChoice choice = ChooseCode(settings.code, settings.annex, settings.options);
    Outcomes outcomes;
    const std::string printable = PrintableLine(name);
    try {
        if (IsBeamText(printable, text)) {
            outcomes.members.push_back(OutcomeOfBeam(printable, text, {settings.allowGaps, settings.isStrict}, choice));
            return outcomes;
        }
        const MemberFile file(DecodeText(printable, text), {settings.allowGaps, settings.isStrict});
        for (const Defect& defect : file.Check().defects)
            if (defect.member == Defect::NO_MEMBER) outcomes.diagnostics.push_back(DiagnosticOf(defect, file.Name()));
        outcomes.members.reserve(file.MemberCount());
        for (std::size_t i = 0; i < file.MemberCount(); ++i)
            outcomes.members.push_back(OutcomeOf(file, i, choice));
    } catch (const BadInput& failure) {
        outcomes.diagnostics.push_back({SeverityWord(Severity::Error), 0, {}, failure.what()});
    }
    return outcomes;
}

std::string FindingsJson(const Outcome& outcome) { return IndentedFindings(CheckedOf(outcome), 0) + '\n'; }

std::string Report(const Outcome& outcome)
{
    return RenderMarkup(ReportMarkup(CheckedOf(outcome), "brief") + FlagMeanings(*CheckedOf(outcome).result),
                        Rendering::Plain);
}

std::string Sheets(const Outcomes& outcomes, const std::string& job)
{
    TitleBlock block;
    block.job = job;
    block.version = KELTRIX_VERSION;
    HtmlReport report(std::move(block));
    for (const Outcome& outcome : outcomes.members) {
        for (const Diagnostic& diagnostic : outcome.diagnostics)
            report.AddRemark(diagnostic.message);
        if (outcome.checked) report.Add(*outcome.checked, outcome.loads);
    }
    for (const Diagnostic& diagnostic : outcomes.diagnostics)
        report.AddRemark(diagnostic.message);
    std::string html;
    report.Write([&](std::string_view piece) { html += piece; });
    return html;
}

} // namespace Keltrix::Host
