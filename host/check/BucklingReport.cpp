#include "check/BucklingReport.h"

#include <algorithm>
#include <cmath>

#include "check/SpanReport.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Stability::ShapeSample;
using Steel::CRestraint;

// --- Free motions ---

// Displacements at the start and the end of the unit, the largest of the motion being 1.
struct EndMotion {
    double start = 0.0;
    double end = 0.0;

    static constexpr double STILL = 1e-6;

    bool IsStill() const { return std::fabs(start) < STILL && std::fabs(end) < STILL; }
    bool IsAs(const EndMotion& other, double sign) const
    {
        return std::fabs(start - sign * other.start) < STILL && std::fabs(end - sign * other.end) < STILL;
    }
    std::string Words(const Stability::Unit& unit, bool isPlural) const
    {
        const char* const ending = isPlural ? "" : "s";
        if (std::fabs(start - end) < STILL) return std::string("shift") + ending + " sideways";
        const double pole = unit.start + (unit.end - unit.start) * start / (start - end);
        return std::string("turn") + ending + " on plan about " + LengthText(pole);
    }
};

std::string MotionWords(const Stability::Unit& unit)
{
    const ShapeSample& a = unit.freeMotion.front();
    const ShapeSample& b = unit.freeMotion.back();
    const EndMotion flange[2] = {{a.flange[0], b.flange[0]}, {a.flange[1], b.flange[1]}};
    const std::string both = std::string(FlangeName(0)) + " and " + FlangeName(1);
    if (flange[0].IsAs(flange[1], 1.0)) return both + ' ' + flange[0].Words(unit, true) + " together";
    if (flange[0].IsAs(flange[1], -1.0)) return both + ' ' + flange[0].Words(unit, true) + " to opposite sides";
    std::string text;
    for (std::size_t k = 0; k < 2; ++k) {
        text += std::string(k == 0 ? "" : ", ") + FlangeName(k) + ' ' +
                (flange[k].IsStill() ? "stays" : flange[k].Words(unit, false));
    }
    return text;
}

// --- Forces ---

double LargestCompression(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
                          const Stability::Unit& unit)
{
    double largest = 0.0;
    for (std::size_t k = 0; k < subSpans.size() && k + 1 < points.size(); ++k) {
        const double start = points[k].GetPos();
        const double end = points[k + 1].GetPos();
        const double from = std::max(start, unit.start);
        const double to = std::min(end, unit.end);
        if (!(from < to)) continue;
        const double left = -subSpans[k].GetForcesLeft().x;
        const double right = -subSpans[k].GetForcesRight().x;
        const auto at = [&](double x) { return left + (right - left) * (x - start) / (end - start); };
        largest = std::max({largest, at(from), at(to)});
    }
    return largest;
}

BucklingUnit MakeUnit(Stability::Unit found, const std::vector<Steel::CMemberPoint>& points,
                      const std::vector<Steel::CSubSpan>& subSpans, const Design::MomentDiagram& major)
{
    BucklingUnit unit;
    const Design::Extremes moments = major.Between(found.start, found.end);
    unit.moment = -moments.least >= moments.greatest ? moments.least : moments.greatest;
    unit.compression = LargestCompression(points, subSpans, found);
    if (found.positive) unit.Ncr = found.positive->lambda * unit.compression;
    if (found.outcome == Stability::Outcome::NotHeld) unit.freeMotion = MotionWords(found);
    unit.found = std::move(found);
    return unit;
}

// --- Remarks ---

// A jump of the moment that rounding of the input does not explain.
bool HasJump(const BucklingUnit& unit) { return unit.found.largestJump > 1e-3 * unit.found.largestMoment; }

bool HoldsInPart(const CRestraint& restraint)
{
    constexpr unsigned int parts = CRestraint::FLANGE1_WARPING_PART | CRestraint::FLANGE2_WARPING_PART |
                                   CRestraint::TORSION_PART | CRestraint::TORSION_FRICTION |
                                   CRestraint::COMP_FLANGE_WARPING_PART | CRestraint::TENS_FLANGE_WARPING_PART |
                                   CRestraint::MINOR_ROTATION_PART;
    constexpr std::pair<unsigned int, unsigned int> WHOLE[] = {
        {CRestraint::FLANGE1_WARPING_PART, CRestraint::FLANGE1_WARPING},
        {CRestraint::FLANGE2_WARPING_PART, CRestraint::FLANGE2_WARPING},
        {CRestraint::TORSION_PART, CRestraint::TORSION},
        {CRestraint::TORSION_FRICTION, CRestraint::TORSION},
        {CRestraint::COMP_FLANGE_WARPING_PART, CRestraint::COMP_FLANGE_WARPING},
        {CRestraint::TENS_FLANGE_WARPING_PART, CRestraint::TENS_FLANGE_WARPING},
        {CRestraint::MINOR_ROTATION_PART, CRestraint::MINOR_ROTATION}};
    if (restraint.IsFree(parts, false)) return false;
    return std::any_of(std::begin(WHOLE), std::end(WHOLE), [&](const auto& bits) {
        return restraint.IsRestrained(bits.first, false) && !restraint.IsRestrained(bits.second, true);
    });
}

std::vector<std::string> RemarksOn(const BucklingReport& report, const std::vector<Steel::CMemberPoint>& points,
                                   const std::vector<Steel::CSubSpan>& subSpans, bool isOffWebPlane)
{
    std::vector<std::string> remarks;
    const auto add = [&](bool applies, const char* sentence) {
        if (applies) remarks.emplace_back(sentence);
    };
    const auto anyOf = [&](auto has) { return std::any_of(subSpans.begin(), subSpans.end(), has); };
    const auto anyUnit = [&](auto has) { return std::any_of(report.units.begin(), report.units.end(), has); };
    add(anyUnit([](const BucklingUnit& unit) { return unit.compression > 0.0; }),
        "Flexural buckling in the plane of the web is not part of this factor.");
    add(anyOf([](const Steel::CSubSpan& s) { return s.GetMomentsLeft().z != 0.0 || s.GetMomentsRight().z != 0.0; }),
        "The moments about the minor axis take no part.");
    add(anyOf([](const Steel::CSubSpan& s) { return s.GetMomentsLeft().x != 0.0 || s.GetMomentsRight().x != 0.0; }),
        "The torsion takes no part.");
    add(isOffWebPlane, "The loads are taken to act in the plane of the shear centre, which lies off the web.");
    add(std::any_of(points.begin(), points.end(), [](const auto& p) { return HoldsInPart(p.GetRestraint()); }) ||
            anyOf([](const Steel::CSubSpan& s) { return HoldsInPart(s.GetRestraint()); }),
        "Partial restraints and restraint by friction hold nothing here.");
    add(anyUnit([](const BucklingUnit& unit) { return !unit.found.balanced; }),
        "The forces of a sub-span do not balance: the smallest factor of four readings of the moment counts.");
    add(anyUnit(HasJump),
        "The moment jumps at a section that is free to twist. It is taken as a pair of flange forces that keep their "
        "directions; applied "
        "in another way, as by two vertical forces, it can make the member buckle at a third of the factor.");
    add(anyUnit([](const BucklingUnit& unit) { return unit.found.restraintsLeftOut; }),
        "Restraints follow each other too closely for all to be counted: the factor is at most that with all of them.");
    return remarks;
}

// Of units that mirror each other the first one, whatever the rounding of their factors.
int FirstOfEqual(const std::vector<BucklingUnit>& units, int governing)
{
    if (governing < 0 || !units[static_cast<std::size_t>(governing)].found.positive) return governing;
    const double most = units[static_cast<std::size_t>(governing)].found.positive->lambda * (1.0 + 1e-9);
    const auto first = std::find_if(units.begin(), units.end(), [&](const BucklingUnit& unit) {
        return unit.found.positive && unit.found.positive->lambda <= most;
    });
    return static_cast<int>(first - units.begin());
}

template <class Factor>
const Stability::CriticalLoad* Smallest(const std::vector<BucklingUnit>& units, Factor factor)
{
    const Stability::CriticalLoad* smallest = nullptr;
    for (const BucklingUnit& unit : units) {
        const std::optional<Stability::CriticalLoad>& load = factor(unit);
        if (load && (!smallest || std::fabs(load->lambda) < std::fabs(smallest->lambda))) smallest = &*load;
    }
    return smallest;
}

} // namespace

Moduli ModuliOf(const Design::DesignCode* code, const CSteelGrade& grade)
{
    if (code) return {code->ElasticModulus(grade), code->ShearModulus(grade), Utf8(code->Description().title)};
    constexpr double POISSON = 0.3;
    const bool isOwn = grade.Name().CompareNoCase(L"User_defined") == 0 && grade.GetUserE() > 0.0;
    const double E = isOwn ? grade.GetUserE() : STEEL_E;
    return {E, E / (2.0 * (1.0 + POISSON)), isOwn ? "the grade" : "steel"};
}

const Stability::CriticalLoad* BucklingReport::Critical() const
{
    return IsHeld() && Governing() ? &*Governing()->found.positive : nullptr;
}

const Stability::CriticalLoad* BucklingReport::CriticalReversed() const
{
    if (!IsHeld()) return nullptr;
    return Smallest(
        units, [](const BucklingUnit& unit) -> const auto& { return unit.found.negative; });
}

bool BucklingReport::IsStable() const
{
    if (!refusal.empty() || !IsHeld() || std::any_of(units.begin(), units.end(), HasJump)) return false;
    const Stability::CriticalLoad* const load = Critical();
    return !load || load->lambda * (1.0 - load->error) > 1.0;
}

BucklingReport MakeBucklingReport(Steel::CSteelMemberGen& member, const Moduli& moduli, bool continuity)
{
    BucklingReport report;
    report.moduli = moduli;
    report.continuity = continuity;
    CString reason;
    const auto section = Stability::MakeSectionConstants(member.GetKeltrixSec(), moduli.E, moduli.G, &reason);
    if (!section) {
        report.refusal = Utf8(reason);
        return report;
    }
    const std::vector<Steel::CMemberPoint> points = member.GetMemberPointVec();
    const std::vector<Steel::CSubSpan> subSpans = member.GetSubSpanVec();
    const Design::MomentDiagram major(points, subSpans, Design::Bending::Major);
    Stability::Options options;
    options.continuity = continuity;
    Stability::CriticalLoads loads = FindCriticalLoads(points, subSpans, major, *section, options);
    if (!loads.IsAnswered()) {
        report.refusal = Utf8(loads.reason);
        return report;
    }
    for (Stability::Unit& unit : loads.units)
        report.units.push_back(MakeUnit(std::move(unit), points, subSpans, major));
    report.governing = FirstOfEqual(report.units, loads.governing);
    report.remarks = RemarksOn(report, points, subSpans, section->offWebPlane);
    return report;
}

const std::vector<ShapeSample>& ShownShape(const Stability::Unit& unit)
{
    static const std::vector<ShapeSample> none;
    if (unit.outcome == Stability::Outcome::NotHeld) return unit.freeMotion;
    return unit.positive ? unit.positive->shape : none;
}

namespace {

// Slope of the parabola through three neighbouring samples at the middle one, or at the first where `i` is an end.
template <class Value>
double SlopeAt(const std::vector<ShapeSample>& shape, std::size_t i, Value value)
{
    const std::size_t middle = std::clamp<std::size_t>(i, 1, shape.size() - 2);
    const ShapeSample& a = shape[middle - 1];
    const ShapeSample& b = shape[middle];
    const ShapeSample& c = shape[middle + 1];
    const double before = (value(b) - value(a)) / (b.x - a.x);
    const double after = (value(c) - value(b)) / (c.x - b.x);
    const double bend = (after - before) / (c.x - a.x);
    return before + bend * (2.0 * shape[i].x - a.x - b.x);
}

template <class Value>
double Between(const std::vector<ShapeSample>& shape, std::size_t left, double x, Value value)
{
    const ShapeSample& a = shape[left];
    const ShapeSample& b = shape[left + 1];
    const double h = b.x - a.x;
    const double s = (x - a.x) / h;
    const double linear = (1.0 - s) * value(a) + s * value(b);
    if (shape.size() < 3) return linear;
    const double chord = value(b) - value(a);
    const double first = h * SlopeAt(shape, left, value) - chord;
    const double second = h * SlopeAt(shape, left + 1, value) - chord;
    return linear + s * (1.0 - s) * ((1.0 - s) * first - s * second);
}

std::string FactorText(const BucklingUnit& unit, const std::optional<Stability::CriticalLoad>& load)
{
    if (unit.found.outcome == Stability::Outcome::NotHeld) return UnitTable::NOT_HELD;
    return load ? Figures(load->lambda, 4) : "none";
}

} // namespace

ShapeSample ShapeAt(const std::vector<ShapeSample>& shape, double x)
{
    if (!(x > shape.front().x)) return shape.front();
    if (!(x < shape.back().x)) return shape.back();
    const auto after =
        std::upper_bound(shape.begin(), shape.end(), x, [](double at, const ShapeSample& s) { return at < s.x; });
    const std::size_t left = static_cast<std::size_t>(after - shape.begin()) - 1;
    const auto value = [&](auto of) { return Between(shape, left, x, of); };
    return {x,
            value([](const ShapeSample& s) { return s.v; }),
            value([](const ShapeSample& s) { return s.phi; }),
            {value([](const ShapeSample& s) { return s.flange[0]; }),
             value([](const ShapeSample& s) { return s.flange[1]; })}};
}

const char* FlangeName(std::size_t flange) { return flange == 0 ? "flange 1 (top)" : "flange 2 (bottom)"; }

std::string ErrorText(double relativeError)
{
    const double percent = std::max(100.0 * relativeError, 1e-3);
    const double decade = std::pow(10.0, std::floor(std::log10(percent) + 1e-9));
    return Rounded(std::ceil(percent / decade - 1e-9) * decade, 1) + " %";
}

UnitTable MakeUnitTable(const BucklingReport& report)
{
    const CDesFormat format;
    const auto hasAny = [&](double BucklingUnit::*force) {
        return std::any_of(report.units.begin(), report.units.end(),
                           [&](const BucklingUnit& unit) { return unit.*force != 0.0; });
    };
    const bool hasMoment = hasAny(&BucklingUnit::moment);
    const bool hasCompression = hasAny(&BucklingUnit::compression);
    UnitTable table{{"From", "To", "λcr", "Error"}, {}};
    if (hasMoment) table.head.insert(table.head.end(), {"Largest moment", "At", "Mcr"});
    if (hasCompression) table.head.insert(table.head.end(), {"Compression", "Ncr"});
    table.head.emplace_back("λ reversed");
    for (const BucklingUnit& unit : report.units) {
        const Stability::Unit& found = unit.found;
        std::vector<std::string> row{Utf8(format.Length(found.start)), Utf8(format.Length(found.end)),
                                     FactorText(unit, found.positive),
                                     found.positive ? ErrorText(found.positive->error) : "-"};
        const auto add = [&](double value, const CString& text) { row.push_back(value == 0.0 ? "-" : Utf8(text)); };
        if (hasMoment) {
            const double Mcr = found.positive ? found.positive->Mcr : 0.0;
            add(unit.moment, format.Moment(std::fabs(unit.moment)) + (unit.moment < 0.0 ? L" sagging" : L" hogging"));
            add(unit.moment, format.Length(found.largestMomentAt));
            add(Mcr, format.Moment(Mcr));
        }
        if (hasCompression) {
            add(unit.compression, format.Force(unit.compression));
            add(unit.Ncr, format.Force(unit.Ncr));
        }
        row.push_back(FactorText(unit, found.negative));
        table.rows.push_back(std::move(row));
    }
    return table;
}

std::string VerdictSentence(const BucklingReport& report)
{
    if (!report.refusal.empty()) return "Not analysed: " + report.refusal;
    const BucklingUnit* const unit = report.Governing();
    if (!unit) return "Nothing buckles: no multiple of the forces given makes the member buckle sideways or twist";
    const std::string place = "from " + LengthText(unit->found.start) + " to " + LengthText(unit->found.end);
    if (!report.IsHeld()) return "Not held " + place + ": " + unit->freeMotion;
    const Stability::CriticalLoad& load = *unit->found.positive;
    const CDesFormat format;
    std::string text = "λcr = " + Figures(load.lambda, 4);
    if (load.Mcr > 0.0)
        text += ", Mcr = " + Utf8(format.Moment(load.Mcr)) + " at " + LengthText(unit->found.largestMomentAt);
    if (unit->Ncr > 0.0) text += ", Ncr = " + Utf8(format.Force(unit->Ncr));
    const bool isReached = !(load.lambda * (1.0 - load.error) > 1.0);
    return text + (isReached ? "; buckles under the forces given or less, " : "; buckles ") + place;
}

} // namespace Keltrix::Host
