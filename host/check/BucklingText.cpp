#include "check/BucklingText.h"

#include <algorithm>
#include <cmath>

#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Stability::ShapeSample;

std::string Modulus(double value) { return Rounded(value / 1e9, 4) + " kN/mm²"; }

// --- For people ---

class Markup {
public:
    explicit Markup(const BucklingReport& report) : m_report(report) {}

    std::string Text()
    {
        m_text =
            "E = " + Modulus(m_report.moduli.E) + ", G = " + Modulus(m_report.moduli.G) + " (" +
            AsText(m_report.moduli.source) + "); " +
            (m_report.continuity ? "the whole member at once"
                                 : "each unit between sections held against lateral movement and twist by itself") +
            "\n";
        m_text += Verdict();
        Units();
        for (const std::string& remark : m_report.remarks)
            m_text += remark + "\n";
        if (const BucklingUnit* const unit = m_report.Governing()) Shape(*unit);
        return m_text;
    }

private:
    std::string Verdict() const
    {
        const std::string sentence = VerdictSentence(m_report);
        return (m_report.IsStable() ? "<b>" + sentence + "</b>" : "<red>" + sentence + "</red>") + "\n";
    }

    std::string Length(double metres) const { return Utf8(m_format.Length(metres)); }

    void Units()
    {
        if (m_report.units.empty()) return;
        const UnitTable table = MakeUnitTable(m_report);
        m_text += "<h5>Units</h5>\n<table>Unit";
        for (const std::string& name : table.head)
            m_text += '\t' + name;
        m_text += '\n';
        for (std::size_t i = 0; i < table.rows.size(); ++i) {
            m_text += std::to_string(i + 1);
            for (const std::string& cell : table.rows[i])
                m_text += '\t' + (cell == UnitTable::NOT_HELD ? "<red>" + cell + "</red>" : cell);
            m_text += '\n';
        }
        m_text += "</table>\n";
    }

    // The unit in plan, seen from above, down the lines: flanges 1 and 2, the shear centre where neither stands.
    static std::string PlanText(const ShapeSample& sample)
    {
        constexpr int reach = 12;
        const auto column = [](double value) {
            return reach + static_cast<int>(std::lround(std::clamp(value, -1.0, 1.0) * reach));
        };
        std::string text(2 * reach + 1, '.');
        const auto put = [&](double value, char mark) { text[static_cast<std::size_t>(column(value))] = mark; };
        put(0.0, '|');
        if (column(sample.flange[0]) == column(sample.flange[1])) {
            put(sample.flange[0], column(sample.flange[0]) == column(0.0) ? '|' : 'X');
        } else {
            put(sample.flange[1], '2');
            put(sample.flange[0], '1');
        }
        return text;
    }

    void Shape(const BucklingUnit& unit)
    {
        constexpr int intervals = 8;
        const std::vector<ShapeSample>& shape = ShownShape(unit.found);
        m_text += "<h5>" +
                  std::string(unit.found.outcome == Stability::Outcome::NotHeld ? "Free motion" : "Buckled shape") +
                  " of unit " + std::to_string(m_report.governing + 1) +
                  ", sideways, the largest displacement as 1</h5>\n"
                  "<table>At\tFlange 1\tShear centre\tFlange 2\tOn plan: 1, 2 flanges, X both\n";
        const auto number = [](double value) { return Utf8(CDesFormat().NoDim(std::round(value * 1e3) / 1e3 + 0.0)); };
        for (int i = 0; i <= intervals; ++i) {
            const double x = unit.found.start + (unit.found.end - unit.found.start) * i / intervals;
            const ShapeSample sample = ShapeAt(shape, x);
            m_text += Length(x) + '\t' + number(sample.flange[0]) + '\t' + number(sample.v) + '\t' +
                      number(sample.flange[1]) + '\t' + PlanText(sample) + '\n';
        }
        m_text += "</table>\n";
    }

    const BucklingReport& m_report;
    const CDesFormat m_format;
    std::string m_text;
};

// --- For programs ---

Json JsonOf(const std::vector<ShapeSample>& shape)
{
    Json samples = Json::array();
    for (const ShapeSample& s : shape)
        samples.push_back(
            {{"x", s.x}, {"v", s.v}, {"phi", s.phi}, {"flange_1", s.flange[0]}, {"flange_2", s.flange[1]}});
    return samples;
}

Json NumberOrNull(double value) { return value == 0.0 ? Json() : Json(value); }

Json LambdaOf(const Stability::CriticalLoad* load) { return load ? Json(load->lambda) : Json(); }
Json ErrorOf(const Stability::CriticalLoad* load) { return load ? Json(load->error) : Json(); }

Json JsonOf(const BucklingUnit& unit)
{
    const Stability::Unit& found = unit.found;
    const bool isHeld = found.outcome != Stability::Outcome::NotHeld;
    const Stability::CriticalLoad* const positive = found.positive ? &*found.positive : nullptr;
    const Stability::CriticalLoad* const negative = found.negative ? &*found.negative : nullptr;
    return {{"start", found.start},
            {"end", found.end},
            {"held", isHeld},
            {"lambda_cr", LambdaOf(positive)},
            {"error", ErrorOf(positive)},
            {"lambda_negative", LambdaOf(negative)},
            {"error_negative", ErrorOf(negative)},
            {"moment", unit.moment},
            {"moment_position", found.largestMomentAt},
            {"Mcr", positive ? NumberOrNull(positive->Mcr) : Json()},
            {"compression", unit.compression},
            {"Ncr", NumberOrNull(unit.Ncr)},
            {"continuous", found.continuous},
            {"balanced", found.balanced},
            {"restraints_left_out", found.restraintsLeftOut},
            {"shape", positive ? JsonOf(positive->shape) : Json::array()},
            {"free_motion", JsonOf(found.freeMotion)},
            {"free_motion_text", isHeld ? Json() : Json(unit.freeMotion)}};
}

} // namespace

std::string BucklingMarkup(const BucklingReport& report) { return Markup(report).Text(); }

Json JsonOf(const BucklingReport& report)
{
    Json units = Json::array();
    for (const BucklingUnit& unit : report.units)
        units.push_back(JsonOf(unit));
    const Stability::CriticalLoad* const critical = report.Critical();
    const Stability::CriticalLoad* const reversed = report.CriticalReversed();
    return {{"E", report.moduli.E},
            {"G", report.moduli.G},
            {"moduli_of", report.moduli.source},
            {"continuity", report.continuity},
            {"refusal", report.refusal.empty() ? Json() : Json(report.refusal)},
            {"held", report.refusal.empty() ? Json(report.IsHeld()) : Json()},
            {"lambda_cr", LambdaOf(critical)},
            {"error", ErrorOf(critical)},
            {"Mcr", critical ? NumberOrNull(critical->Mcr) : Json()},
            {"Ncr", critical ? NumberOrNull(report.Governing()->Ncr) : Json()},
            {"lambda_negative", LambdaOf(reversed)},
            {"governing", report.governing < 0 ? Json() : Json(report.governing)},
            {"remarks", report.remarks},
            {"units", std::move(units)}};
}

Json BucklingJson(const MemberFile& file, std::size_t i, CodelessMember& member, const BucklingReport& report)
{
    Json entry = {{"schema", JSON_SCHEMA},
                  {"file", file.Name()},
                  {"line", file.Member(i).firstLine},
                  {"title", Utf8(member.GetTitle())},
                  {"section", Utf8(member.GetKeltrixSec().Component(0).Description(true))},
                  {"grade", Utf8(member.GetGrade().Name())},
                  {"warnings", WarningsJson(file.WarningsOf(i))}};
    entry.update(JsonOf(report));
    return entry;
}

} // namespace Keltrix::Host
