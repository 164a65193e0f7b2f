#include <cmath>
#include <limits>

#include "Replies.h"
#include "RequestFields.h"
#include "beamfile/BeamDocument.h"
#include "beamfile/BeamText.h"
#include "check/CheckedBeam.h"
#include "check/CheckedMember.h"
#include "check/CodesJson.h"
#include "check/FindingsJson.h"
#include "check/TopicSummary.h"
#include "loads/LoadText.h"
#include "report/HtmlReport.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Sha256.h"
#include "text/Text.h"

namespace Keltrix::Web {

using Host::BadInput;
using Host::CheckedMember;
using Host::CodeChoice;
using Host::Json;
using Host::JsonObject;
using Host::Utf8;

namespace {

Json DiagnosticJson(const Host::Diagnostic& diagnostic)
{
    return JsonObject("severity", diagnostic.severity, "line", diagnostic.line, "code", diagnostic.code, "keyword",
                      diagnostic.keyword, "field", diagnostic.field, "got", diagnostic.got, "expected",
                      diagnostic.expected, "advice", diagnostic.advice, "message", diagnostic.message);
}

Json DiagnosticList(const std::vector<Host::Diagnostic>& diagnostics)
{
    Json list = Json::array();
    for (const Host::Diagnostic& diagnostic : diagnostics)
        list.push_back(DiagnosticJson(diagnostic));
    return list;
}

Json StepList(const std::vector<Design::Step>& steps)
{
    Json list = Json::array();
    const CDesFormat format;
    for (const Design::Step& step : steps)
        list.push_back(JsonObject("text", Utf8(Design::StepText(step, format)), "clause", Utf8(step.clause)));
    return list;
}

Json FindingJson(const Design::RuleFinding& finding, const std::string& combination, double demand)
{
    return JsonObject("rule", Utf8(finding.name), "clause", Utf8(finding.clause), "topic",
                      Utf8(Design::TopicName(finding.topic)), "status", Utf8(Design::StatusName(finding.status)),
                      "reason", Utf8(finding.reason), "place", Host::DescribePlace(finding), "start", finding.start,
                      "end", finding.end, "utilisation", finding.utilisation, "shown",
                      Host::UtilisationText(finding.utilisation), "symbol", Utf8(finding.symbol), "resistance",
                      TextOf(finding.quantity, finding.resistance), "demand",
                      std::isnan(demand) ? std::string() : Host::MilliMetres(demand), "governing", finding.governing,
                      "combination", combination, "steps", StepList(finding.steps));
}

Json FindingList(const CheckedMember& checked)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    Json list = Json::array();
    for (std::size_t i = 0; i < checked.findings.rules.size(); ++i) {
        const Design::RuleFinding& finding = checked.findings.rules[i];
        list.push_back(FindingJson(finding, checked.CombinationOf(&finding),
                                   i < checked.sources.size() ? checked.sources[i].demand : none));
    }
    return list;
}

Json TopicList(const CheckedMember& checked)
{
    Json list = Json::array();
    for (const Design::Topic topic : Host::TopicsInOrder()) {
        const Host::TopicSummary summary = Host::SummaryOf(checked, topic);
        if (summary.IsEmpty()) continue;
        list.push_back(JsonObject("topic", Utf8(Design::TopicName(topic)), "shown",
                                  summary.worst ? Host::UtilisationText(summary.worst->utilisation) : std::string(),
                                  "clause", summary.worst ? Utf8(summary.worst->clause) : std::string(), "failed",
                                  summary.worst && summary.worst->status == Design::CheckStatus::Failed, "open",
                                  summary.isOpen));
    }
    return list;
}

Json WarningList(const CheckedMember& checked)
{
    Json list = Json::array();
    for (const Host::MemberWarning& warning : checked.warnings)
        list.push_back(JsonObject("severity", Host::SeverityWord(warning.severity), "code", warning.code, "line",
                                  warning.line, "text", warning.text));
    return list;
}

// The report with what its drawings are made of: for each action place, greatest and least value; place and deflection of the deflected shape.
Json LoadsJson(const Host::LoadReport& report)
{
    Json json = Host::JsonOf(report);
    Json curves = Json::array();
    for (const Host::ActionEnvelope& envelope : report.envelopes) {
        Json samples = Json::array();
        for (const Host::ActionEnvelope::Sample& sample : envelope.samples)
            samples.push_back(Json::array({sample.at, sample.greatest, sample.least}));
        const auto extreme = [&](const Host::Governed& governed) {
            return JsonObject("at", governed.at, "value", governed.value, "text",
                              Host::ValueText(envelope.action, governed.value), "combination", governed.combination);
        };
        curves.push_back(JsonObject("action", Host::NameOf(envelope.action), "isZero", envelope.whole.IsZero(),
                                    "greatest", extreme(envelope.whole.greatest), "least",
                                    extreme(envelope.whole.least), "samples", std::move(samples)));
    }
    json["curves"] = std::move(curves);
    Json shape = Json::array();
    for (const auto& [at, deflection] : report.shape.samples)
        shape.push_back(Json::array({at, deflection}));
    json["shape"] = std::move(shape);
    json["shapeOf"] = report.shape.check;
    Json limits = Json::array();
    for (const Statics::DeflectionCheck& check : report.checks)
        limits.push_back(JsonObject("at", check.at, "text", Host::MilliMetres(check.deflection)));
    json["deflectionTexts"] = std::move(limits);
    Json supports = Json::array();
    for (const Host::SupportReactions& support : report.supports) {
        const Host::GovernedRange& range = support.RangeOf(Host::ReactionPart::Vertical);
        if (support.IsIdle()) continue;
        supports.push_back(JsonObject("at", support.at, "greatest", Host::KiloNewtons(range.greatest.value), "least",
                                      Host::KiloNewtons(range.least.value)));
    }
    json["supports"] = std::move(supports);
    return json;
}

std::string CodeTitle(const CodeChoice& choice)
{
    const Design::CodeDescription& description = choice.code->Description();
    std::string title = Utf8(description.title);
    if (!description.annexes.empty()) title += " (" + Host::AnnexOf(choice) + ')';
    return title;
}

Json MemberJson(const Host::Outcome& outcome, const Json& request)
{
    Json json = JsonObject("title", outcome.title, "status", outcome.status, "utilisation",
                           outcome.checked ? Host::UtilisationText(outcome.utilisation) : std::string(), "ratio",
                           outcome.utilisation, "governing", outcome.governing, "diagnostics",
                           DiagnosticList(outcome.diagnostics));
    if (outcome.checked) {
        const CheckedMember& checked = *outcome.checked;
        const Design::Resistance& strength = checked.findings.designStrength;
        json["section"] = checked.Section();
        json["grade"] = checked.Grade();
        json["class"] = checked.member->SectionClass();
        json["strength"] = Utf8(strength.symbol) + " = " + TextOf(strength.quantity, strength.value);
        json["combination"] = checked.CombinationOf(checked.findings.Governing());
        json["open"] = Host::DescribeOpenRule(checked.findings);
        json["flags"] = Host::FlagWords(checked.result->GetFlags());
        json["warnings"] = WarningList(checked);
        json["topics"] = TopicList(checked);
        if (!IsSet(request, "brief")) json["findings"] = FindingList(checked);
    }
    if (outcome.loadReport && !IsSet(request, "brief")) json["loads"] = LoadsJson(outcome.loadReport());
    return json;
}

} // namespace

Json Codes(const Json&, std::string_view) { return Host::CodesJson(); }

// The keys of a beam file as they stand in it.
Json Document(const Json& request, std::string_view bytes)
{
    if (!Host::IsBeamText(NameOf(request), bytes)) return JsonObject("kind", "member file");
    return JsonObject("kind", "beam file", "keys", Host::BeamDocument(NameOf(request), bytes));
}

Json Check(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const Host::Outcomes outcomes = Host::Check(bytes, NameOf(request), settings);
    Json members = Json::array();
    for (const Host::Outcome& outcome : outcomes.members)
        members.push_back(MemberJson(outcome, request));
    return JsonObject("code", CodeTitle(ChoiceOf(settings)), "pass", outcomes.Pass(), "members", std::move(members),
                      "diagnostics", DiagnosticList(outcomes.diagnostics));
}

// The findings of one combination of a beam by itself, with the steps of their calculation, which an envelope does not keep.
Json Steps(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const CodeChoice choice = ChoiceOf(settings);
    const Host::Beam beam = Host::ReadBeam(NameOf(request), bytes, ReadingOf(settings), choice);
    const std::string wanted = WordOf(request, "combination");
    for (std::size_t i = 0; i < beam.members.size(); ++i)
        if (beam.made.members[i].name == wanted)
            return FindingList(Host::CheckMember(beam.members[i], 0, choice, true));
    throw BadInput("the beam has no ultimate combination of that name");
}

// The findings in full as `ksteel check --format jsonl` writes them.
Json Lines(const Json& request, std::string_view bytes)
{
    std::string lines;
    for (const Host::Outcome& outcome : Host::Check(bytes, NameOf(request), SettingsOf(request)).members)
        if (outcome.checked) lines += Host::FindingsLine(*outcome.checked);
    return JsonObject("lines", lines);
}

Json Sheet(const Json& request, std::string_view bytes)
{
    const std::string name = NameOf(request);
    Host::TitleBlock block;
    block.version = KELTRIX_VERSION;
    block.job = WordOf(request, "job");
    block.client = WordOf(request, "client");
    block.made.name = WordOf(request, "by");
    block.made.date = WordOf(request, "date");
    block.isBrief = IsSet(request, "brief");
    Host::HtmlReport report(std::move(block));
    Host::Sha256 digest;
    digest.Add(bytes);
    report.AddInput(name, digest.Digest());
    const Host::Outcomes outcomes = Host::Check(bytes, name, SettingsOf(request));
    for (const Host::Outcome& outcome : outcomes.members) {
        for (const Host::Diagnostic& diagnostic : outcome.diagnostics)
            report.AddRemark(diagnostic.message);
        if (outcome.checked) report.Add(*outcome.checked, outcome.loads);
    }
    for (const Host::Diagnostic& diagnostic : outcomes.diagnostics)
        report.AddRemark(diagnostic.message);
    std::string html;
    report.Write([&](std::string_view piece) { html += piece; });
    return JsonObject("html", html);
}

} // namespace Keltrix::Web
