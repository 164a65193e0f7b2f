#include "Requests.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "beamfile/BeamDocument.h"
#include "beamfile/BeamText.h"
#include "check/BucklingReport.h"
#include "check/BucklingText.h"
#include "check/CapacityReport.h"
#include "check/CheckedBeam.h"
#include "check/CheckedMember.h"
#include "check/CodesJson.h"
#include "check/DesignCodes.h"
#include "check/SectionChoice.h"
#include "check/TopicSummary.h"
#include "import/Import.h"
#include "keltrix/host/Host.h"
#include "loads/LoadText.h"
#include "memberfile/CodelessMember.h"
#include "memberfile/MemberPieces.h"
#include "report/BucklingDrawing.h"
#include "report/HtmlReport.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Sha256.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Web {

namespace {

using Host::BadInput;
using Host::CheckedMember;
using Host::CodeChoice;
using Host::Json;
using Host::JsonObject;
using Host::Utf8;

// --- What stands in a request ---

std::string WordOf(const Json& request, const char* name, const std::string& otherwise = {})
{
    const auto at = request.find(name);
    if (at == request.end() || at->is_null()) return otherwise;
    if (!at->is_string()) throw BadInput(std::string(name) + ": expected a text");
    return at->get<std::string>();
}

double NumberOf(const Json& request, const char* name, double otherwise)
{
    const auto at = request.find(name);
    if (at == request.end() || at->is_null()) return otherwise;
    if (!at->is_number()) throw BadInput(std::string(name) + ": expected a number");
    return at->get<double>();
}

bool IsSet(const Json& request, const char* name)
{
    const auto at = request.find(name);
    return at != request.end() && at->is_boolean() && at->get<bool>();
}

std::vector<std::string> WordsOf(const Json& request, const char* name)
{
    std::vector<std::string> words;
    const auto at = request.find(name);
    if (at == request.end()) return words;
    for (const Json& word : *at) {
        if (!word.is_string()) throw BadInput(std::string(name) + ": expected texts");
        words.push_back(word.get<std::string>());
    }
    return words;
}

Host::Settings SettingsOf(const Json& request)
{
    Host::Settings settings;
    settings.code = WordOf(request, "code");
    settings.annex = WordOf(request, "annex");
    settings.isStrict = IsSet(request, "strict");
    const auto options = request.find("options");
    if (options != request.end())
        for (const auto& [name, value] : options->items())
            settings.options.emplace_back(name, value.is_string() ? value.get<std::string>() : std::string());
    return settings;
}

CodeChoice ChoiceOf(const Host::Settings& settings)
{
    return Host::ChooseCode(settings.code, settings.annex, settings.options);
}

Host::ReadingOptions ReadingOf(const Host::Settings& settings) { return {settings.allowGaps, settings.isStrict}; }

std::string NameOf(const Json& request) { return Host::PrintableLine(WordOf(request, "name", "beam.toml")); }

// --- Texts of data: the page shows numbers as every other output does ---

std::string TextOf(Design::Quantity quantity, double value)
{
    return std::isnan(value) ? std::string() : Utf8(Design::QuantityText(quantity, value, CDesFormat()));
}

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
    for (const Design::Step& step : steps)
        list.push_back(JsonObject("symbol", Utf8(step.symbol), "formula", Utf8(step.formula), "value",
                                  TextOf(step.quantity, step.value), "clause", Utf8(step.clause)));
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

// --- The requests ---

Json Codes(const Json&, std::string_view) { return Host::CodesJson(); }

// Name, family, mass in kg/m and outer dimensions in mm of every section.
Json Sections(const Json&, std::string_view)
{
    Json list = Json::array();
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries())
        list.push_back(Json::array(
            {Utf8(entry.designation), Utf8(entry.family), entry.massPerMetre, entry.depth * 1e3, entry.width * 1e3}));
    return list;
}

Json ValueList(const std::vector<Host::SectionValue>& values)
{
    Json list = Json::array();
    for (const Host::SectionValue& value : values)
        list.push_back(JsonObject("symbol", value.symbol, "value", Host::Rounded(value.si * value.factor, 4), "unit",
                                  value.unit, "meaning", value.meaning));
    return list;
}

Json Section(const Json& request, std::string_view)
{
    const Host::NamedSection section = Host::FindSection(WordOf(request, "section"));
    const CSecComp& component = section.section.Component(0);
    return JsonObject("name", section.name, "shape", Host::ShapeName(component.Shape()), "mass",
                      Host::Rounded(Host::MassPerMetre(section), 4), "dimensions",
                      ValueList(Host::SectionDimensionValues(section.section)), "properties",
                      ValueList(Host::SectionPropertyValues(section.section)), "svg",
                      Host::SectionSvg(section.section, section.name));
}

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
        if (outcome.checked) lines += Host::JsonLine(Host::JsonOf(*outcome.checked));
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

struct Buckled {
    std::string name;
    std::string title;
    Host::BucklingReport report;
    std::string svg;
};

Buckled BucklingOf(const Host::MemberFile& file, const CodeChoice& choice, const std::string& name)
{
    Host::CodelessMember member;
    member.SetGrade(file.ReadInto(0, member));
    Buckled buckled{name,
                    Utf8(member.GetTitle()),
                    Host::MakeBucklingReport(member, Host::ModuliOf(choice.code, member.GetGrade()), false),
                    {}};
    if (buckled.report.refusal.empty()) buckled.svg = Host::BucklingSvgFile(buckled.report, member, buckled.title);
    return buckled;
}

// Smaller is worse: not held, then by the factor; what does not buckle, and what has no answer, come last.
double RankOf(const Host::BucklingReport& report)
{
    if (!report.IsHeld()) return -1.0;
    const Stability::CriticalLoad* const critical = report.Critical();
    return critical ? critical->lambda : std::numeric_limits<double>::infinity();
}

// Every combination with its verdict, the drawing of the one that buckles first.
Json Buckling(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const CodeChoice choice = ChoiceOf(settings);
    const Host::Beam beam = Host::ReadBeam(NameOf(request), bytes, ReadingOf(settings), choice);
    if (beam.members.empty()) throw BadInput("the beam has errors: its buckling is not known");
    Json list = Json::array();
    std::optional<Buckled> worst;
    for (std::size_t i = 0; i < beam.members.size(); ++i) {
        Buckled one = BucklingOf(beam.members[i], choice, beam.made.members[i].name);
        list.push_back(JsonObject("combination", one.name, "verdict",
                                  one.report.refusal.empty() ? Host::VerdictSentence(one.report) : one.report.refusal,
                                  "stable", one.report.IsStable(), "answered", one.report.refusal.empty()));
        if (one.report.refusal.empty() && (!worst || RankOf(one.report) < RankOf(worst->report)))
            worst = std::move(one);
    }
    return JsonObject("combinations", std::move(list), "worst", worst ? worst->name : std::string(), "verdict",
                      worst ? Host::VerdictSentence(worst->report) : std::string(), "svg",
                      worst ? worst->svg : std::string());
}

// The figures of sections in words, as `ksteel design` shows them.
void AddTexts(Json& list, const std::vector<Host::Candidate>& candidates)
{
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        list[i]["shown"] = Host::UtilisationText(candidates[i].utilisation);
        list[i]["mass_text"] = Host::Rounded(candidates[i].entry->massPerMetre, 4);
        list[i]["depth_text"] = Host::Rounded(candidates[i].entry->depth * 1e3, 4);
        list[i]["warnings"] = candidates[i].warnings.size();
    }
}

Json Lightest(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const double depth = NumberOf(request, "depth", std::nan(""));
    const double count = NumberOf(request, "count", 6.0);
    if (!(count >= 1.0 && count <= 100.0)) throw BadInput("count: expected 1 to 100");
    Host::SectionSearch search;
    search.families = WordsOf(request, "families");
    if (search.families.empty()) throw BadInput("families: expected one or more");
    search.by = WordOf(request, "by", "mass");
    if (search.by != "mass" && search.by != "depth") throw BadInput("by: expected mass or depth");
    if (!std::isnan(depth)) {
        if (!(depth > 0.0)) throw BadInput("depth: expected a depth in mm above 0");
        search.maxDepth = depth / 1e3;
    }
    search.count = static_cast<int>(count);
    search.code = ChoiceOf(settings);
    search.reading = ReadingOf(settings);
    const Host::Beam beam = Host::ReadBeam(NameOf(request), bytes, search.reading, search.code);
    if (beam.members.empty()) throw BadInput("the beam has errors: no section can be chosen");
    const Host::SectionChoice choice = Host::ChooseSection(beam, search);
    Json json = Host::JsonOf(choice, search.by,
                             {beam.file.name, 1, beam.file.title,
                              choice.passing.empty() ? Host::WarningsOf(beam) : choice.passing.front().warnings});
    AddTexts(json["passing"], choice.passing);
    AddTexts(json["lighter_failing"], choice.failing);
    return json;
}

const char* KiloUnitOf(Design::Quantity quantity)
{
    return quantity == Design::Quantity::Moment ? ", kNm" : quantity == Design::Quantity::Force ? ", kN" : "";
}

std::string CapacityText(const std::optional<double>& value)
{
    return value ? Host::Figures(*value / 1e3, 3) : "\u2013";
}

// One row for each number of the first column, one column for each curve.
Json CurveTable(const char* title, const std::string& first, const std::vector<double>& numbers,
                const std::vector<Design::CapacityCurve>& curves)
{
    Json head = Json::array({first});
    for (const Design::CapacityCurve& curve : curves)
        head.push_back(Utf8(curve.symbol) + KiloUnitOf(curve.quantity));
    Json rows = Json::array();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        Json row = Json::array({Host::Rounded(numbers[i], 5)});
        for (const Design::CapacityCurve& curve : curves)
            row.push_back(CapacityText(curve.values[i]));
        rows.push_back(std::move(row));
    }
    return JsonObject("title", title, "head", std::move(head), "rows", std::move(rows));
}

// One column for each share of an axial force.
Json ReducedTable(const Design::CapacityTable& table)
{
    Json head = Json::array({Utf8(table.shareName)});
    for (const double share : table.shares)
        head.push_back(Host::Rounded(share, 3));
    Json rows = Json::array();
    for (const Design::CapacityCurve& curve : table.reduced) {
        Json row = Json::array({Utf8(curve.symbol) + KiloUnitOf(curve.quantity)});
        for (const std::optional<double>& value : curve.values)
            row.push_back(CapacityText(value));
        rows.push_back(std::move(row));
    }
    return JsonObject("title", "Reduced by an axial force", "head", std::move(head), "rows", std::move(rows));
}

Json CrossSectionTable(const Design::CapacityTable& table)
{
    Json head = Json::array();
    Json row = Json::array();
    for (const Design::Capacity& capacity : table.crossSection) {
        head.push_back(Utf8(capacity.resistance.symbol) + KiloUnitOf(capacity.resistance.quantity));
        row.push_back(Host::Figures(capacity.resistance.value / 1e3, capacity.figures));
    }
    return JsonObject("title", "Cross-section", "head", std::move(head), "rows", Json::array({std::move(row)}));
}

// Of each resistance that depends on the effective length: pairs of that and its size.
Json CapacityCharts(const Design::CapacityTable& table, const std::vector<double>& lengths)
{
    Json charts = Json::array();
    for (const Design::CapacityCurve& curve : table.buckling) {
        Json points = Json::array();
        double most = 0.0;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (!curve.values[i]) continue;
            points.push_back(Json::array({lengths[i], *curve.values[i]}));
            most = std::max(most, *curve.values[i]);
        }
        charts.push_back(JsonObject("title", Utf8(curve.symbol) + KiloUnitOf(curve.quantity), "points",
                                    std::move(points), "most", most, "most_text", Host::Figures(most / 1e3, 3)));
    }
    return charts;
}

std::string ClassWords(const Design::CapacityTable& table)
{
    std::string text;
    for (const Design::CapacityClass& one : table.classes)
        text += (text.empty() ? "class " : ", class ") + std::to_string(one.cls) + ' ' + Utf8(one.state);
    return text;
}

// Resistances of a section, every figure as `ksteel capacity` prints it.
Json Capacity(const Json& request, std::string_view)
{
    const CodeChoice choice = ChoiceOf(SettingsOf(request));
    std::vector<double> lengths;
    for (const Json& length : request.value("lengths", Json::array()))
        lengths.push_back(length.is_number() ? length.get<double>() : std::nan(""));
    if (lengths.empty()) throw BadInput("lengths: expected effective lengths in m");
    for (const double length : lengths)
        if (!(length > 0.0) || !std::isfinite(length)) throw BadInput("lengths: expected lengths in m above 0");
    const Host::NamedSection section = Host::FindSectionOfType(WordOf(request, "section"), WordOf(request, "type"));
    const Design::CapacityTable table = Host::CapacityTableOf(section, WordOf(request, "grade"), lengths, choice);
    std::vector<double> bearings = table.bearings;
    for (double& length : bearings)
        length *= 1e3;
    Json tables = Json::array({CrossSectionTable(table)});
    if (!table.buckling.empty())
        tables.push_back(CurveTable("Buckling, by effective length", "LE, m", lengths, table.buckling));
    if (!table.reduced.empty()) tables.push_back(ReducedTable(table));
    if (!table.bearing.empty())
        tables.push_back(
            CurveTable("Web under concentrated loads", Utf8(table.bearingName) + ", mm", bearings, table.bearing));
    Json notes = Json::array();
    if (table.fabricationNote[0] != L'\0') notes.push_back(Utf8(table.fabricationNote));
    for (const CString& note : table.notes)
        notes.push_back(Utf8(note));
    return JsonObject("section", section.name, "strength",
                      Utf8(table.designStrength.symbol) + " = " +
                          TextOf(table.designStrength.quantity, table.designStrength.value),
                      "classes", ClassWords(table), "fabrication", Utf8(table.fabrication), "notes", std::move(notes),
                      "tables", std::move(tables), "charts", CapacityCharts(table, lengths));
}

// --- Forces of another program ---

Json Conventions(const Json&, std::string_view)
{
    Json list = Json::array();
    for (const Host::SignConvention& convention : Host::SignConventions())
        list.push_back(JsonObject("name", convention.name, "meaning", convention.meaning));
    return list;
}

// Members of a table of forces and one of members. The bytes are those of both, the first table ending after `split`.
Json ImportTables(const Json& request, std::string_view bytes)
{
    Host::ImportSettings settings;
    if (const std::string fault = Host::ReadImportMap(WordsOf(request, "map"), settings); !fault.empty())
        throw BadInput(fault);
    settings.forces.allowRepeats = IsSet(request, "repeats");
    settings.hasGrade = Host::IsGradeOfAnyCode;
    settings.grades = Host::GradesOfAllCodes();
    const double split = NumberOf(request, "split", -1.0);
    if (!(split >= 0.0 && split <= static_cast<double>(bytes.size())))
        throw BadInput("split: expected the size of the first table");
    const auto at = static_cast<std::size_t>(split);
    const Host::Import import = Host::ImportForces(
        {Host::PrintableLine(WordOf(request, "forces", "forces.csv")), bytes.substr(0, at)},
        {Host::PrintableLine(WordOf(request, "members", "members.csv")), bytes.substr(at)}, settings);
    Json findings = Json::array();
    for (const Host::ImportFinding& finding : import.findings)
        findings.push_back(
            JsonObject("severity", Host::SeverityWord(finding.defect.severity), "text", finding.Message()));
    return JsonObject("text", import.text, "members", import.members, "cases", import.cases, "refused",
                      import.HasErrors(), "findings", std::move(findings));
}

// --- A batch of members, in pieces of the file as they come ---

struct Batch {
    std::string name;
    CodeChoice choice;
    Host::ReadingOptions reading;
    Host::MemberCutter cutter;
    bool isFull = false; // all that was found of each member, as `ksteel check --format jsonl` writes it
};
std::unique_ptr<Batch> batch;

Json BeginBatch(const Json& request, std::string_view)
{
    const Host::Settings settings = SettingsOf(request);
    batch = std::make_unique<Batch>();
    batch->name = NameOf(request);
    batch->choice = ChoiceOf(settings);
    batch->reading = ReadingOf(settings);
    batch->isFull = IsSet(request, "full");
    return Json::object();
}

Json RefusalJson(const std::string& title, Host::LineNumber line, const std::vector<std::string>& reasons)
{
    return JsonObject("schema", Host::JSON_SCHEMA, "file", batch->name, "line", line, "title", title, "status",
                      "refused", "errors", reasons);
}

// A row, and its figures in words.
struct BatchRow {
    Json row;
    std::string shown = {};
    std::string governing = {};
};

BatchRow RowOf(const Host::MemberFile& file, std::size_t i)
{
    const Host::MemberText& member = file.Member(i);
    const auto refuse = [&](const std::vector<std::string>& reasons) {
        return BatchRow{RefusalJson(Utf8(member.title), member.firstLine, reasons)};
    };
    if (member.hasErrors) {
        const std::vector<std::string> errors = file.ErrorsOf(i);
        return refuse(errors.empty() ? file.UnlistedErrorsOf(i) : errors);
    }
    try {
        const CheckedMember checked = Host::CheckMember(file, i, batch->choice, false);
        return {batch->isFull ? Host::JsonOf(checked) : Host::HeadlineJson(checked),
                Host::UtilisationText(checked.Utilisation()), checked.Governing()};
    } catch (const BadInput& failure) {
        return refuse({failure.what()});
    }
}

// A row for each member, with the bytes of the file that hold it.
void AddRows(Json& rows, const Host::MemberPiece& piece)
{
    const auto add = [&](BatchRow one) {
        rows.push_back(JsonObject("from", piece.start.bytes, "bytes", piece.bytes.size(), "text",
                                  batch->isFull ? Host::JsonLine(one.row) : std::string(), "row",
                                  batch->isFull ? Json() : std::move(one.row), "shown", one.shown, "governing",
                                  one.governing));
    };
    try {
        const Host::MemberFile file(batch->name, piece, batch->reading);
        for (const Host::Defect& defect : file.Check().defects)
            if (defect.severity == Host::Severity::Error && defect.member == Host::Defect::NO_MEMBER)
                add({RefusalJson({}, defect.line, {defect.Text(batch->name)})});
        for (std::size_t i = 0; i < file.MemberCount(); ++i)
            add(RowOf(file, i));
    } catch (const BadInput& failure) {
        add({RefusalJson({}, piece.FirstLine(), {failure.what()})});
    }
}

Json AddToBatch(const Json& request, std::string_view bytes)
{
    if (!batch) throw BadInput("no batch was begun");
    Json rows = Json::array();
    batch->cutter.Add(bytes);
    while (const auto piece = batch->cutter.Next())
        AddRows(rows, *piece);
    if (IsSet(request, "last")) {
        if (const auto rest = batch->cutter.Rest()) AddRows(rows, *rest);
        batch.reset();
    }
    return rows;
}

struct Request {
    const char* name;
    Json (*reply)(const Json& request, std::string_view bytes);
};

constexpr std::array<Request, 15> REQUESTS{{{"codes", Codes},
                                            {"sections", Sections},
                                            {"section", Section},
                                            {"document", Document},
                                            {"check", Check},
                                            {"steps", Steps},
                                            {"lines", Lines},
                                            {"sheet", Sheet},
                                            {"buckling", Buckling},
                                            {"lightest", Lightest},
                                            {"capacity", Capacity},
                                            {"conventions", Conventions},
                                            {"import", ImportTables},
                                            {"begin batch", BeginBatch},
                                            {"add to batch", AddToBatch}}};

Json JsonReplyTo(std::string_view text, std::string_view bytes)
{
    const Json request = Json::parse(text, nullptr, false);
    if (!request.is_object()) throw BadInput("the request is no JSON object");
    const std::string asked = WordOf(request, "ask");
    for (const Request& known : REQUESTS)
        if (asked == known.name) return known.reply(request, bytes);
    throw BadInput("ask: got \"" + Host::PrintableLine(asked) + "\", which is no request");
}

} // namespace

Reply ReplyTo(std::string_view request, std::string_view bytes)
{
    try {
        return {false, Host::JsonLine(JsonReplyTo(request, bytes))};
    } catch (const BadInput& refusal) {
        return {true, refusal.what()};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        return {true, std::string("this is a fault of the program: ") + failure.what()};
    }
}

} // namespace Keltrix::Web
