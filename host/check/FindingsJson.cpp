#include "check/FindingsJson.h"

#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "text/Json.h"
#include "text/JsonWriter.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Design::LocalFinding;
using Design::RuleFinding;
using Steel::CMemberResult;
using Steel::SubspanEffectiveLengthData;

/// Writes the findings of a member, part by part. Values in SI.
class FindingsWriter {
public:
    FindingsWriter(const CheckedMember& checked, JsonWriter writer) : m_checked(checked), m_json(std::move(writer)) {}

    std::string Headline()
    {
        m_json.BeginObject();
        AddHeadline();
        m_json.EndObject();
        return m_json.Take();
    }

    std::string Findings(bool withSteps)
    {
        m_json.BeginObject();
        AddHeadline();
        m_json.Add(
            "moments",
            [&] {
                m_json.Object(
                    "major", [&] { PutMoments(m_checked.momentMajor); }, "minor",
                    [&] { PutMoments(m_checked.momentMinor); });
            },
            "utilisation",
            [&] {
                m_json.Object(
                    "local", [&] { PutPositions(); }, "buckling", [&] { PutBuckling(); });
            });
        const SubspanEffectiveLengthData lengths = m_checked.member->GetEffectiveLengths();
        m_json.Add(
            "effective_lengths",
            [&] {
                m_json.Object(
                    "major", [&] { PutLengths(lengths.GetMajorAxisEntries()); }, "minor",
                    [&] { PutLengths(lengths.GetMinorAxisEntries()); }, "lateral_torsional",
                    [&] { PutLengths(lengths.GetLateralTorsionalEntries()); });
            },
            "resistances",
            [&] {
                if (m_checked.code->Description().resistancesByName)
                    PutResistancesByName();
                else
                    PutResistances();
            },
            "checks", [&] { PutChecks(withSteps); }, "assumptions", [&] { PutAssumptions(); });
        m_json.EndObject();
        return m_json.Take();
    }

private:
    void AddHeadline()
    {
        const RuleFinding* const governing = m_checked.findings.Governing();
        m_json.Add(
            "schema", JSON_SCHEMA, "file", m_checked.file, "line", m_checked.line, "title", m_checked.title, "section",
            m_checked.Section(), "grade", m_checked.Grade(), "code", m_checked.code->Description().id, "annex",
            m_checked.annex, "status", m_checked.Status(), "overall", m_checked.Utilisation(), "governing",
            [&] {
                if (governing)
                    PutRule(*governing);
                else
                    m_json.Put(nullptr);
            },
            "warnings", WarningsJson(m_checked.warnings), "flags",
            [&] { m_json.Array(FlagWords(m_checked.result->GetFlags()), [&](const auto& word) { m_json.Put(word); }); },
            "class", m_checked.member->SectionClass(), "design_strength", m_checked.findings.designStrength.value);
    }

    void AddEntry(const RuleFinding& entry)
    {
        m_json.Add("rule", entry.name, "topic", Design::TopicName(entry.topic), "clause", entry.clause, "status",
                   Design::StatusName(entry.status), "reason", entry.reason, "start", entry.start, "end", entry.end,
                   "utilisation", entry.utilisation, "slenderness", entry.slenderness, "symbol", entry.symbol,
                   "quantity", QuantityWord(entry.quantity), "resistance", entry.resistance, "governing",
                   entry.governing);
    }

    void AddSource(const RuleFinding& rule)
    {
        if (m_checked.sources.empty()) return;
        const RuleSource& source = m_checked.sources[static_cast<std::size_t>(&rule - m_checked.findings.rules.data())];
        m_json.Add("combination", source.combination);
        if (!std::isnan(source.demand)) m_json.Add("demand", source.demand);
    }

    void AddSteps(const RuleFinding& entry)
    {
        m_json.Name("steps");
        m_json.Array(entry.steps, [&](const Design::Step& step) {
            m_json.Object("symbol", step.symbol, "formula", step.formula, "values", step.values, "value", step.value,
                          "quantity", QuantityWord(step.quantity), "note", step.note, "clause", step.clause);
        });
    }

    void PutRule(const RuleFinding& rule, bool withSteps = false)
    {
        m_json.BeginObject();
        AddEntry(rule);
        AddSource(rule);
        if (withSteps) AddSteps(rule);
        m_json.EndObject();
    }

    void PutChecks(bool withSteps)
    {
        m_json.BeginArray();
        for (const RuleFinding& rule : m_checked.findings.rules)
            PutRule(rule, withSteps);
        for (const RuleFinding& entry : m_checked.Information()) {
            m_json.BeginObject();
            AddEntry(entry);
            if (!m_checked.sources.empty()) m_json.Add("combination", m_checked.InformationCombination());
            if (withSteps) AddSteps(entry);
            m_json.EndObject();
        }
        m_json.EndArray();
    }

    void PutMoments(const Design::Extremes& extremes)
    {
        m_json.Object("greatest", extremes.greatest, "greatest_position", extremes.greatestAt, "least", extremes.least,
                      "least_position", extremes.leastAt);
    }

    void PutPositions()
    {
        m_json.Array(m_checked.findings.positions, [&](const LocalFinding& f) {
            m_json.Object("position", f.x, "sub_span", f.subSpan + 1, "place", PlaceName(f.place), "combined",
                          f.combined, "axial", f.axial, "moment_major", f.momentMajor, "moment_minor", f.momentMinor,
                          "shear_major", f.shearMajor, "shear_minor", f.shearMinor, "torsion",
                          f.hasTorsion ? NOT_A_NUMBER : 0.0);
        });
    }

    void PutBuckling()
    {
        const CMemberResult& result = *m_checked.result;
        m_json.Object("combined", result.UtilBucklingCombined(), "lateral_torsional", result.UtilBucklingLT(),
                      "axial_major", result.UtilBucklingAxialMajor(), "axial_minor", result.UtilBucklingAxialMinor(),
                      "axial_torsion", result.UtilBucklingAxialTorsion(), "axial_flexural_torsion",
                      result.UtilBucklingAxialFlexuralTorsion());
    }

    void PutLengths(const std::map<int, SubspanEffectiveLengthData::Entry>& entries)
    {
        m_json.Array(entries, [&](const auto& one) {
            const SubspanEffectiveLengthData::Entry& entry = one.second;
            m_json.Object("start", entry.GetStartPosition(), "end", entry.GetEndPosition(), "effective_length",
                          entry.GetEffectiveLength(), "radius_of_gyration", entry.GetRadiusOfGyration(), "slenderness",
                          entry.GetSlendernessRatio());
        });
    }

    void PutResistance(const Design::Resistance& resistance, double start, double end)
    {
        m_json.Object("symbol", resistance.symbol, "quantity", QuantityWord(resistance.quantity), "value",
                      resistance.value, "start", start, "end", end);
    }

    // Those of cross-sections, which have no place, then those of spans.
    void PutResistances()
    {
        m_json.BeginArray();
        for (const Design::Resistance& resistance : m_checked.findings.resistances)
            PutResistance(resistance, NOT_A_NUMBER, NOT_A_NUMBER);
        for (const Design::SpanFinding& span : m_checked.findings.spans)
            if (!span.isCombination) PutResistance(span.resistance, span.start, span.end);
        m_json.EndArray();
    }

    // `list` has all of them. A name for each symbol, and `spans`, are kept for compatibility until version 0.3.
    void PutResistancesByName()
    {
        m_json.BeginObject();
        m_json.Add("list", [&] { PutResistances(); });
        for (const Design::Resistance& resistance : m_checked.findings.resistances)
            m_json.Add(Utf8(resistance.symbol), resistance.value);
        m_json.Name("spans");
        m_json.BeginArray();
        for (const Design::SpanFinding& span : m_checked.findings.spans)
            if (!span.isCombination)
                m_json.Object("start", span.start, "end", span.end, Utf8(span.resistance.symbol),
                              span.resistance.value);
        m_json.EndArray();
        m_json.EndObject();
    }

    void PutAssumptions()
    {
        m_json.Array(m_checked.findings.assumptions, [&](const Design::Assumption& assumption) {
            m_json.Object("name", assumption.name, "text", assumption.text, "value", assumption.value);
        });
    }

    static constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN(); ///< null

    static const char* PlaceName(Design::Place place)
    {
        switch (place) {
        case Design::Place::LeftEnd:
            return "left end";
        case Design::Place::RightEnd:
            return "right end";
        default:
            return "inside";
        }
    }

    const CheckedMember& m_checked;
    JsonWriter m_json;
};

} // namespace

std::string HeadlineLine(const CheckedMember& checked) { return FindingsWriter(checked, {}).Headline() + '\n'; }

std::string FindingsLine(const CheckedMember& checked, bool withSteps)
{
    return FindingsWriter(checked, {}).Findings(withSteps) + '\n';
}

std::string IndentedFindings(const CheckedMember& checked, int depth, bool withSteps)
{
    return FindingsWriter(checked, JsonWriter::Indented(depth)).Findings(withSteps);
}

Json HeadlineJson(const CheckedMember& checked) { return Json::parse(HeadlineLine(checked)); }

Json JsonOf(const CheckedMember& checked, bool withSteps) { return Json::parse(FindingsLine(checked, withSteps)); }

} // namespace Keltrix::Host
