#include "keltrix/statics/GeneratedMember.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Keltrix::Statics {

using Steel::CMemberPoint;
using Steel::CRestraint;
using Steel::CSubSpan;

namespace {

// Largest of s (1 - s)(1 - 2s)/12: what a parabola misses of the moment under a load that changes by 1 over a length of 1.
constexpr double PARABOLA_ERROR = 0.0080187537;
// Share of the largest moment (shear) that a division may cost.
constexpr double ALLOWED = 0.9e-3;
// Share of its scale by which a sub-span's moments may depart from linear shear, half of what a moment diagram takes.
constexpr double BALANCE = 0.005;
constexpr int MOST_PARTS = 200;
// What rounding leaves where there is nothing, as a share of the largest value.
constexpr double NOTHING = 1e-12;

constexpr double NO_LOAD = -std::numeric_limits<double>::infinity();

struct Largest {
    double moment = 0.0;
    double shear = 0.0;
};

Largest LargestOf(const Line& line, double length)
{
    if (line.IsEmpty()) return {};
    return {std::abs(line.Moments(0.0, length).Worst().value), std::abs(line.Shears(0.0, length).Worst().value)};
}

// End forces of a sub-span in one plane, textbook signs.
struct Ends {
    double shearLeft = 0.0;
    double shearRight = 0.0;
    double momentLeft = 0.0;
    double momentRight = 0.0;
    bool meanLoad = false; ///< the shears are those of the mean load
};

// Between two places of a piece. Under a load that changes, shears that do not belong to the moments become those of the mean load.
Ends EndsOf(const Piece& p, double from, double to)
{
    Ends ends{p.ShearAt(from), p.ShearAt(to), p.MomentAt(from), p.MomentAt(to)};
    if (p.loadLeft == p.loadRight) return ends;
    const double h = to - from;
    const double change = ends.momentRight - ends.momentLeft;
    const double scale = std::max({std::abs(ends.momentLeft), std::abs(ends.momentRight),
                                   (std::abs(ends.shearLeft) + std::abs(ends.shearRight)) * h / 8.0});
    const double byShears = 0.5 * (ends.shearLeft + ends.shearRight) * h;
    if (std::abs(change - byShears) <= BALANCE * scale) return ends;
    const double half = 0.5 * (ends.shearLeft - ends.shearRight);
    ends.shearLeft = change / h + half;
    ends.shearRight = change / h - half;
    ends.meanLoad = true;
    return ends;
}

// Zeros that rounding has left of larger numbers. A zero has no sign.
void Clean(const Largest& largest, Ends& ends)
{
    for (double* const shear : {&ends.shearLeft, &ends.shearRight})
        if (std::abs(*shear) <= NOTHING * largest.shear) *shear = 0.0;
    for (double* const moment : {&ends.momentLeft, &ends.momentRight})
        if (std::abs(*moment) <= NOTHING * largest.moment) *moment = 0.0;
}

int Whole(double parts) { return parts < MOST_PARTS ? std::max(1, static_cast<int>(std::ceil(parts))) : MOST_PARTS; }

bool HasMeanLoad(const Piece& piece, int parts)
{
    const double h = piece.length / parts;
    for (int k = 0; k < parts; ++k)
        if (EndsOf(piece, k * h, (k + 1) * h).meanLoad) return true;
    return false;
}

// Equal parts into which a piece is divided: for the sake of the moments, then until shears and moments belong together everywhere. Where they
// never do, for the sake of the shears of mean loads.
int PartsOf(const Piece& piece, const Largest& largest)
{
    const double change = std::abs(piece.loadRight - piece.loadLeft);
    const double h = piece.length;
    if (change == 0.0) return 1;
    int parts = Whole(std::cbrt(PARABOLA_ERROR * change * h * h / (ALLOWED * largest.moment)));
    const int byShears = Whole(std::sqrt(change * h / 12.0 / (ALLOWED * largest.shear)));
    while (parts < byShears && HasMeanLoad(piece, parts))
        ++parts;
    return parts;
}

double Minus(double value) { return 0.0 - value; }

double HeightOf(const Load& load, const Section& section)
{
    if (load.reference == Steel::TOP_FLANGE) return section.topFlange + load.height;
    if (load.reference == Steel::BOT_FLANGE) return section.bottomFlange + load.height;
    return load.height;
}

class Maker {
public:
    Maker(const Analysis& analysis, const std::vector<Combination>& combinations) :
        m_analysis(analysis), m_beam(analysis.GetBeam()), m_combinations(combinations)
    {
        m_parts.assign(analysis.Breaks().size() - 1, 1);
        m_responses.reserve(combinations.size());
        for (const Combination& combination : combinations) {
            m_responses.push_back(analysis.Of(combination.terms));
            Divide(m_responses.back());
        }
        PlacePoints();
        NoteOfStatics();
    }

    GeneratedMember Make(std::size_t combination) const
    {
        GeneratedMember member;
        member.points = m_points;
        member.subSpans = m_subSpans;
        member.notes = m_notes;
        SetForces(m_responses[combination], member);
        SetHeights(m_combinations[combination], member);
        return member;
    }

private:
    void Divide(const Response& response)
    {
        for (const Line* const line : {&response.major, &response.minor}) {
            const Largest largest = LargestOf(*line, m_beam.length);
            for (std::size_t j = 0; j < line->Pieces().size(); ++j)
                m_parts[j] = std::max(m_parts[j], PartsOf(line->Pieces()[j], largest));
        }
    }

    // What the forces know and the member cannot say.
    void NoteOfStatics()
    {
        const CDesFormat format;
        CString note;
        for (const Support& s : m_beam.supports) {
            if (!(s.vertical > 0.0 || s.rotation > 0.0 || s.lateral > 0.0 || s.lateralRotation > 0.0)) continue;
            note.Format(
                L"the springs at %s are in the forces alone: the member's point holds rigidly what the restraint "
                L"of the support says",
                format.Length(s.at));
            m_notes.push_back({note, true});
        }
        for (const Hinge& hinge : m_beam.hinges) {
            if (!hinge.major && !hinge.minor) continue;
            note.Format(L"the hinge at %s is in the forces alone: the member is continuous there",
                        format.Length(hinge.at));
            m_notes.push_back({note, true});
        }
    }

    std::size_t BreakAt(double x) const
    {
        const std::vector<double>& breaks = m_analysis.Breaks();
        const auto it = std::lower_bound(breaks.begin(), breaks.end(), x - 1e-9 * m_beam.length);
        return std::min(static_cast<std::size_t>(it - breaks.begin()), breaks.size() - 1);
    }

    void PlacePoints()
    {
        const std::vector<double>& breaks = m_analysis.Breaks();
        std::vector<int> at(breaks.size(), 0);
        std::vector<int> along(breaks.size() - 1, 0);
        for (const Support& s : m_beam.supports)
            at[BreakAt(s.at)] |= s.holds.RestFlag();
        for (const Restraint& r : m_beam.restraints)
            for (std::size_t j = BreakAt(r.from); j < BreakAt(r.to); ++j)
                along[j] |= r.holds.RestFlag();
        for (std::size_t j = 0; j < breaks.size(); ++j) {
            m_first.push_back(m_points.size());
            AddPoint(breaks[j], at[j]);
            if (j + 1 == breaks.size()) break;
            const double h = (breaks[j + 1] - breaks[j]) / m_parts[j];
            for (int k = 1; k < m_parts[j]; ++k)
                AddPoint(breaks[j] + k * h, 0);
            for (int k = 0; k < m_parts[j]; ++k) {
                CSubSpan s;
                s.Set1Index(static_cast<int>(m_subSpans.size()) + 1);
                s.SetRestraint(CRestraint(along[j], Steel::SHR_CENTRE, 0.0));
                m_subSpans.push_back(s);
            }
        }
    }

    void AddPoint(double x, int bits)
    {
        CMemberPoint p;
        p.Set1Index(static_cast<int>(m_points.size()) + 1);
        p.SetPos(x);
        p.SetRestraint(CRestraint(bits, Steel::SHR_CENTRE, 0.0));
        m_points.push_back(p);
    }

    void SetForces(const Response& response, GeneratedMember& member) const
    {
        const Largest major = LargestOf(response.major, m_beam.length);
        const Largest minor = LargestOf(response.minor, m_beam.length);
        const std::vector<double>& breaks = m_analysis.Breaks();
        int meanLoads = 0;
        for (std::size_t j = 0; j + 1 < breaks.size(); ++j) {
            const double length = breaks[j + 1] - breaks[j];
            const auto parts = static_cast<double>(m_parts[j]);
            const AxialPiece& axial = response.axial[j];
            for (int k = 0; k < m_parts[j]; ++k) {
                const double a = k / parts;
                const double b = k + 1 == m_parts[j] ? 1.0 : (k + 1) / parts;
                const Ends y = EndsOf(response.major, j, a * length, b * length, major);
                const Ends z = EndsOf(response.minor, j, a * length, b * length, minor);
                CSubSpan& s = member.subSpans[m_first[j] + static_cast<std::size_t>(k)];
                s.SetForcesAll({axial.At(a), z.shearLeft, Minus(y.shearLeft)},
                               {axial.At(b), z.shearRight, Minus(y.shearRight)});
                s.SetMomentsAll({0.0, Minus(y.momentLeft), Minus(z.momentLeft)},
                                {0.0, Minus(y.momentRight), Minus(z.momentRight)});
                meanLoads += y.meanLoad || z.meanLoad;
            }
        }
        NoteDivision(meanLoads, member);
    }

    static Ends EndsOf(const Line& line, std::size_t piece, double from, double to, const Largest& largest)
    {
        if (line.IsEmpty()) return {};
        Ends ends = Statics::EndsOf(line.Pieces()[piece], from, to);
        Clean(largest, ends);
        return ends;
    }

    void NoteDivision(int meanLoads, GeneratedMember& member) const
    {
        int divided = 0;
        int most = 1;
        for (const int parts : m_parts) {
            divided += parts > 1;
            most = std::max(most, parts);
        }
        if (divided == 0 && meanLoads == 0) return;
        CString note;
        note.Format(L"%i %s under loads that change along them divided into up to %i parts: the parabola "
                    L"between two points "
                    L"errs by less than 0.1 %% of the largest moment",
                    divided, divided == 1 ? L"length" : L"lengths", most);
        if (meanLoads > 0) {
            CString more;
            more.Format(L"; %i of the parts have the shears of their mean load, within 0.1 %% of the largest shear",
                        meanLoads);
            note += more;
        }
        if (most == MOST_PARTS) note += L"; the number of parts is at its limit, so that the error can be larger";
        member.notes.push_back({note, most == MOST_PARTS, false});
    }

    // The factor of a load in a combination in the span that has the place; 0 where it does not act.
    double FactorOf(const Combination& combination, const Load& load, double from, double to) const
    {
        const bool bySpan = m_beam.cases[load.caseIndex].bySpan;
        double factor = 0.0;
        for (const Term& term : combination.terms) {
            if (term.caseIndex != load.caseIndex) continue;
            bool acts = !bySpan || term.spans.empty();
            for (std::size_t i = 0; !acts && i < m_analysis.Spans().size(); ++i) {
                const Span& span = m_analysis.Spans()[i];
                acts = term.ActsOn(static_cast<int>(i)) && from >= span.from - 1e-9 * m_beam.length &&
                       to <= span.to + 1e-9 * m_beam.length;
            }
            if (acts) factor += term.factor;
        }
        return factor;
    }

    // What acts at a place, downwards above zero, and at which heights.
    struct Acting {
        double sum = 0.0;
        double sumOfMagnitudes = 0.0;
        double moment = 0.0; // of the loads about the shear centre once the section has turned, for each radian
        double highestDown = -std::numeric_limits<double>::infinity();
        double lowestUp = std::numeric_limits<double>::infinity();
        double first = std::numeric_limits<double>::quiet_NaN();
        bool differs = false;

        void Add(double load, double height)
        {
            if (load == 0.0) return;
            sum += load;
            sumOfMagnitudes += std::abs(load);
            moment += load * height;
            if (load > 0.0)
                highestDown = std::max(highestDown, height);
            else
                lowestUp = std::min(lowestUp, height);
            differs = differs || (!std::isnan(first) && first != height);
            if (std::isnan(first)) first = height;
        }

        // The height at which the sum of the loads turns the section at least as much as all of them do, and no less than any load of its
        // sense would. Whole micrometres, because half a depth has more digits than a member file.
        double Height() const
        {
            if (sumOfMagnitudes == 0.0) return NO_LOAD;
            const double most = std::max(std::abs(highestDown > -1e300 ? highestDown : 0.0),
                                         std::abs(lowestUp < 1e300 ? lowestUp : 0.0));
            double height = std::max(highestDown, -lowestUp);
            if (sum > 1e-9 * sumOfMagnitudes) height = std::max(moment / sum, highestDown);
            if (sum < -1e-9 * sumOfMagnitudes) height = std::min(moment / sum, lowestUp);
            return std::round(std::clamp(height, -10.0 * most, 10.0 * most) * 1e6) / 1e6;
        }
    };

    void SetHeights(const Combination& combination, GeneratedMember& member) const
    {
        const std::vector<double>& breaks = m_analysis.Breaks();
        std::vector<Acting> at(breaks.size());
        std::vector<Acting> along(breaks.size() - 1);
        for (const Load& load : m_beam.loads) {
            if (load.direction == Direction::Minor || load.direction == Direction::Axial ||
                load.shape == LoadShape::Moment)
                continue;
            const double height = HeightOf(load, m_beam.section);
            const std::size_t first = BreakAt(load.from);
            if (load.shape == LoadShape::Point) {
                at[first].Add(FactorOf(combination, load, load.from, load.from) * load.value, height);
                continue;
            }
            for (std::size_t j = first; j < BreakAt(load.to); ++j) {
                const double s = (0.5 * (breaks[j] + breaks[j + 1]) - load.from) / (load.to - load.from);
                along[j].Add(FactorOf(combination, load, breaks[j], breaks[j + 1]) *
                                 (load.value + s * (load.valueTo - load.value)),
                             height);
            }
        }
        const auto differs = [](const Acting& acting) { return acting.differs; };
        if (std::any_of(at.begin(), at.end(), differs) || std::any_of(along.begin(), along.end(), differs))
            member.notes.push_back(
                {L"where loads act at different heights, all of them count at the one that destabilises most", false,
                 false});
        std::vector<double> heights(at.size());
        std::vector<double> heightsAlong(along.size());
        std::transform(at.begin(), at.end(), heights.begin(), [](const Acting& acting) { return acting.Height(); });
        std::transform(along.begin(), along.end(), heightsAlong.begin(),
                       [](const Acting& acting) { return acting.Height(); });
        Put(heights, heightsAlong, member);
    }

    void Put(const std::vector<double>& at, const std::vector<double>& along, GeneratedMember& member) const
    {
        const auto set = [](auto& place, double height) {
            if (height == NO_LOAD || height == 0.0) return;
            CRestraint r = place.GetRestraint();
            r.SetLoadHeight(height);
            place.SetRestraint(r);
        };
        for (std::size_t j = 0; j < at.size(); ++j) {
            set(member.points[m_first[j]], at[j]);
            if (j == along.size()) break;
            for (int k = 0; k < m_parts[j]; ++k)
                set(member.subSpans[m_first[j] + static_cast<std::size_t>(k)], along[j]);
        }
    }

    const Analysis& m_analysis;
    const Beam& m_beam;
    const std::vector<Combination>& m_combinations;
    std::vector<Response> m_responses;
    std::vector<int> m_parts;         // of each length between breaks
    std::vector<std::size_t> m_first; // point of each break; the sub-span after it has the same place
    std::vector<CMemberPoint> m_points;
    std::vector<CSubSpan> m_subSpans;
    std::vector<Note> m_notes; // of all members
};

} // namespace

std::vector<GeneratedMember> MakeMembers(const Analysis& analysis, const std::vector<Combination>& combinations)
{
    std::vector<GeneratedMember> members;
    if (!analysis.IsAnswered()) return members;
    const Maker maker(analysis, combinations);
    members.reserve(combinations.size());
    for (std::size_t i = 0; i < combinations.size(); ++i)
        members.push_back(maker.Make(i));
    return members;
}

} // namespace Keltrix::Statics
