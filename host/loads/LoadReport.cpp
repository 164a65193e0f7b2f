#include "loads/LoadReport.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using namespace Statics;

// What rounding leaves where there is nothing, as a share of the largest value.
constexpr double NOTHING = 1e-11;
// Share of the largest value by which a combination has to exceed the one before it.
constexpr double EQUAL = 1e-9;

// Forces and moments against which a value is nothing.
struct Scale {
    double force = 0.0;
    double moment = 0.0;

    void Take(const Line& line, double length)
    {
        if (line.IsEmpty()) return;
        force = std::max(force, std::fabs(line.Shears(0.0, length).Worst().value));
        moment = std::max(moment, std::fabs(line.Moments(0.0, length).Worst().value));
    }
    void Take(const Response& response, double length)
    {
        Take(response.major, length);
        Take(response.minor, length);
        for (const AxialPiece& piece : response.axial)
            force = std::max({force, std::fabs(piece.left), std::fabs(piece.right)});
        for (const Reaction& r : response.reactions)
            force = std::max({force, std::fabs(r.vertical), std::fabs(r.lateral), std::fabs(r.axial)});
        moment = std::max(moment, force * length * 1e-3);
    }
};

double Cleaned(double value, double scale) { return std::fabs(value) <= NOTHING * scale ? 0.0 : value; }

bool IsMoment(ReactionPart part) { return part == ReactionPart::Moment || part == ReactionPart::LateralMoment; }
bool IsMoment(Action action) { return action == Action::Moment || action == Action::MinorMoment; }

// The greatest and the least of what combinations have, the first of equal ones.
class Range {
public:
    Range(GovernedRange& range, double scale) : m_range(range), m_scale(scale) {}

    void Take(const Extreme& least, const Extreme& greatest, int combination)
    {
        const double margin = m_first ? -1.0 : EQUAL * m_scale;
        if (m_first || greatest.value > m_range.greatest.value + margin)
            m_range.greatest = {greatest.value, greatest.at, combination};
        if (m_first || least.value < m_range.least.value - margin) m_range.least = {least.value, least.at, combination};
        m_first = false;
    }

    void Clean()
    {
        for (Governed* const one : {&m_range.greatest, &m_range.least})
            if (std::fabs(one->value) <= NOTHING * m_scale) *one = Governed();
    }

private:
    GovernedRange& m_range;
    double m_scale;
    bool m_first = true;
};

// An axial force between two places of the member, exact: a parabola on each piece.
Extremes AxialExtremes(const std::vector<AxialPiece>& pieces, const std::vector<double>& breaks, double from, double to)
{
    Extremes found;
    bool isFirst = true;
    const auto take = [&](double value, double at) {
        if (isFirst || value < found.least.value) found.least = {value, at};
        if (isFirst || value > found.greatest.value) found.greatest = {value, at};
        isFirst = false;
    };
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const double length = breaks[k + 1] - breaks[k];
        const double a = std::max((from - breaks[k]) / length, 0.0);
        const double b = std::min((to - breaks[k]) / length, 1.0);
        if (!(a < b)) continue;
        const AxialPiece& piece = pieces[k];
        std::vector<double> shares{a, b};
        if (piece.bow != 0.0) {
            const double level = 0.5 * (1.0 + (piece.right - piece.left) / piece.bow);
            if (level > a && level < b) shares.push_back(level);
        }
        for (const double s : shares)
            take(piece.At(s), breaks[k] + s * length);
    }
    return found;
}

// Across the member against z, and along it.
LoadSum Turned(double across, double along, double inclination)
{
    const double c = std::cos(inclination);
    const double s = std::sin(inclination);
    return {across * c - along * s, across * s + along * c, 0.0};
}

LoadSum SumOf(const Load& load, double inclination)
{
    if (load.shape == LoadShape::Moment) return {};
    const double sum =
        load.shape == LoadShape::Point ? load.value : 0.5 * (load.value + load.valueTo) * (load.to - load.from);
    switch (load.direction) {
    case Direction::Gravity:
        return {sum, 0.0, 0.0};
    case Direction::Major:
        return Turned(sum, 0.0, inclination);
    case Direction::Minor:
        return {0.0, 0.0, sum};
    default:
        return Turned(0.0, sum, inclination);
    }
}

class ReportMaker {
public:
    explicit ReportMaker(const LoadedBeam& source) :
        m_source(source), m_analysis(source.analysis), m_beam(source.analysis.GetBeam())
    {
        m_report.title = source.title;
        m_report.section = source.section;
        m_report.grade = source.grade;
        m_report.length = m_beam.length;
        m_report.inclination = m_beam.inclination;
        m_report.spans = m_analysis.Spans();
        m_report.cases = m_beam.cases;
        m_report.loads = m_beam.loads;
        m_report.combinations = source.combinations.list;
        m_report.limits = source.limits;
        m_report.checks = source.checks;
    }

    LoadReport Make()
    {
        Solve();
        AddCases();
        AddSupports();
        for (std::size_t a = 0; a < ACTIONS; ++a)
            AddEnvelope(static_cast<Action>(a));
        AddShape();
        AddNotes();
        return std::move(m_report);
    }

private:
    // An ultimate combination with its answer.
    struct Solved {
        int combination;
        Response response;
    };

    void Solve()
    {
        for (std::size_t c = 0; c < m_report.cases.size(); ++c) {
            m_ofCase.push_back(m_analysis.OfCase(c));
            m_scale.Take(m_ofCase.back(), m_beam.length);
        }
        for (std::size_t c = 0; c < m_report.combinations.size(); ++c) {
            if (m_report.combinations[c].state != LimitState::Ultimate) continue;
            m_solved.push_back({static_cast<int>(c), m_analysis.Of(m_report.combinations[c].terms)});
            m_scale.Take(m_solved.back().response, m_beam.length);
        }
    }

    void AddCases()
    {
        m_report.sums.resize(m_report.cases.size());
        for (const Load& load : m_beam.loads) {
            const LoadSum sum = SumOf(load, m_beam.inclination);
            LoadSum& ofCase = m_report.sums[load.caseIndex];
            ofCase.down += sum.down;
            ofCase.right += sum.right;
            ofCase.lateral += sum.lateral;
        }
        for (LoadSum& sum : m_report.sums)
            for (double* const part : {&sum.down, &sum.right, &sum.lateral})
                *part = Cleaned(*part, m_scale.force);
    }

    void AddSupports()
    {
        if (m_ofCase.empty()) return;
        for (std::size_t s = 0; s < m_ofCase.front().reactions.size(); ++s) {
            SupportReactions& support = m_report.supports.emplace_back();
            support.at = m_ofCase.front().reactions[s].at;
            for (const Response& response : m_ofCase)
                support.ofCase.push_back(PartsOf(response.reactions[s]));
            for (std::size_t p = 0; p < REACTION_PARTS; ++p) {
                const auto part = static_cast<ReactionPart>(p);
                Range range(support.range[p], ScaleOf(IsMoment(part)));
                for (const Solved& solved : m_solved) {
                    const Extreme value{PartOf(solved.response.reactions[s], part, m_beam.inclination), support.at};
                    range.Take(value, value, solved.combination);
                }
                range.Clean();
            }
        }
    }

    std::array<double, REACTION_PARTS> PartsOf(const Reaction& reaction) const
    {
        std::array<double, REACTION_PARTS> parts{};
        for (std::size_t p = 0; p < REACTION_PARTS; ++p) {
            const auto part = static_cast<ReactionPart>(p);
            parts[p] = Cleaned(PartOf(reaction, part, m_beam.inclination), ScaleOf(IsMoment(part)));
        }
        return parts;
    }

    double ScaleOf(bool isMoment) const { return isMoment ? m_scale.moment : m_scale.force; }

    Extremes ExtremesOf(Action action, const Response& response, double from, double to) const
    {
        const Line& line =
            action == Action::MinorMoment || action == Action::MinorShear ? response.minor : response.major;
        if (action == Action::Axial) return AxialExtremes(response.axial, m_analysis.Breaks(), from, to);
        if (line.IsEmpty()) return {};
        return IsMoment(action) ? line.Moments(from, to) : line.Shears(from, to);
    }

    GovernedRange RangeOf(Action action, double from, double to) const
    {
        GovernedRange found;
        Range range(found, ScaleOf(IsMoment(action)));
        for (const Solved& solved : m_solved) {
            const Extremes extremes = ExtremesOf(action, solved.response, from, to);
            range.Take(extremes.least, extremes.greatest, solved.combination);
        }
        range.Clean();
        return found;
    }

    void AddEnvelope(Action action)
    {
        ActionEnvelope envelope;
        envelope.action = action;
        envelope.whole = RangeOf(action, 0.0, m_beam.length);
        for (const Span& span : m_report.spans)
            envelope.spans.push_back(RangeOf(action, span.from, span.to));
        if (!envelope.whole.IsZero()) AddSamples(envelope);
        m_report.envelopes.push_back(std::move(envelope));
    }

    // Places along a piece: equal steps, and where an extreme is.
    std::vector<double> PlacesIn(double from, double to, const ActionEnvelope& envelope) const
    {
        constexpr double steps = 120.0; // along the member
        const int parts = std::clamp(static_cast<int>(std::ceil(steps * (to - from) / m_beam.length)), 1, 120);
        std::vector<double> places;
        for (int i = 0; i <= parts; ++i)
            places.push_back(i == parts ? to : from + (to - from) * i / parts);
        const auto add = [&](const GovernedRange& range) {
            for (const Governed& one : {range.greatest, range.least})
                if (one.at > from && one.at < to) places.push_back(one.at);
        };
        add(envelope.whole);
        for (const GovernedRange& range : envelope.spans)
            add(range);
        std::sort(places.begin(), places.end());
        return places;
    }

    double ValueOf(Action action, const Response& response, std::size_t piece, double at) const
    {
        const std::vector<double>& breaks = m_analysis.Breaks();
        if (action == Action::Axial)
            return response.axial[piece].At((at - breaks[piece]) / (breaks[piece + 1] - breaks[piece]));
        const bool isMinor = action == Action::MinorMoment || action == Action::MinorShear;
        const Piece& p = (isMinor ? response.minor : response.major).Pieces()[piece];
        return IsMoment(action) ? p.MomentAt(at - p.start) : p.ShearAt(at - p.start);
    }

    void AddSamples(ActionEnvelope& envelope) const
    {
        const std::vector<double>& breaks = m_analysis.Breaks();
        for (std::size_t k = 0; k + 1 < breaks.size(); ++k) {
            for (const double at : PlacesIn(breaks[k], breaks[k + 1], envelope)) {
                ActionEnvelope::Sample sample{at, -INFINITY, INFINITY};
                for (const Solved& solved : m_solved) {
                    const double value = ValueOf(envelope.action, solved.response, k, at);
                    sample.greatest = std::max(sample.greatest, value);
                    sample.least = std::min(sample.least, value);
                }
                envelope.samples.push_back(sample);
            }
        }
    }

    void AddShape()
    {
        DeflectedShape& shape = m_report.shape;
        for (std::size_t i = 0; i < m_report.checks.size(); ++i) {
            const DeflectionCheck& check = m_report.checks[i];
            if (!check.IsEvaluated() || m_report.limits[check.limit].minor) continue;
            if (shape.check < 0 ||
                check.utilisation > m_report.checks[static_cast<std::size_t>(shape.check)].utilisation)
                shape.check = static_cast<int>(i);
        }
        if (shape.check < 0) return;
        const DeflectionCheck& check = m_report.checks[static_cast<std::size_t>(shape.check)];
        const DeflectionLimit& limit = m_report.limits[check.limit];
        const Combination& combination = m_report.combinations[static_cast<std::size_t>(check.combination)];
        const Line line = m_analysis.Of(CountedTerms(m_beam, combination, limit)).major;
        const std::vector<double>& breaks = m_analysis.Breaks();
        for (std::size_t k = 0; k + 1 < breaks.size(); ++k) {
            std::vector<double> places = PlacesIn(breaks[k], breaks[k + 1], {});
            if (check.at > breaks[k] && check.at < breaks[k + 1]) places.push_back(check.at);
            std::sort(places.begin(), places.end());
            for (const double at : places)
                shape.samples.push_back({at, line.Deflection(at) - CamberAt(at, limit.counted == Counted::Total)});
        }
    }

    double CamberAt(double at, bool isCounted) const
    {
        for (std::size_t s = 0; isCounted && s < std::min(m_report.spans.size(), m_source.camber.size()); ++s) {
            const Span& span = m_report.spans[s];
            if (span.IsOverhang() || at < span.from || at > span.to) continue;
            const double share = (at - span.from) / span.Length();
            return 4.0 * m_source.camber[s] * share * (1.0 - share);
        }
        return 0.0;
    }

    void AddNotes()
    {
        for (const CString& note : m_analysis.Notes())
            m_report.notes.push_back(Utf8(note));
        for (const Note& note : m_source.combinations.notes)
            m_report.notes.push_back(Utf8(note.text));
        if (m_solved.empty())
            m_report.notes.push_back("there is no ultimate combination, and so no envelope of actions and reactions");
    }

    const LoadedBeam& m_source;
    const Analysis& m_analysis;
    const Statics::Beam& m_beam;
    LoadReport m_report;
    std::vector<Response> m_ofCase;
    std::vector<Solved> m_solved;
    Scale m_scale;
};

} // namespace

double PartOf(const Reaction& reaction, ReactionPart part, double inclination)
{
    const double c = std::cos(inclination);
    const double s = std::sin(inclination);
    switch (part) {
    case ReactionPart::Vertical:
        return reaction.vertical * c + reaction.axial * s;
    case ReactionPart::Horizontal:
        return reaction.axial * c - reaction.vertical * s;
    case ReactionPart::Moment:
        return reaction.moment;
    case ReactionPart::Lateral:
        return reaction.lateral;
    case ReactionPart::LateralMoment:
        return reaction.lateralMoment;
    case ReactionPart::Across:
        return reaction.vertical;
    case ReactionPart::Along:
        return reaction.axial;
    }
    return 0.0;
}

bool SupportReactions::IsIdle() const
{
    const auto isZero = [](double value) { return value == 0.0; };
    return std::all_of(range.begin(), range.end(), [](const GovernedRange& one) { return one.IsZero(); }) &&
           std::all_of(ofCase.begin(), ofCase.end(), [&](const std::array<double, REACTION_PARTS>& parts) {
               return std::all_of(parts.begin(), parts.end(), isZero);
           });
}

bool LoadReport::HasUltimate() const
{
    return std::any_of(combinations.begin(), combinations.end(),
                       [](const Combination& one) { return one.state == LimitState::Ultimate; });
}

bool LoadReport::HasReaction(ReactionPart part) const
{
    return std::any_of(supports.begin(), supports.end(), [&](const SupportReactions& support) {
        if (!support.RangeOf(part).IsZero()) return true;
        for (std::size_t i = 0; i < support.ofCase.size(); ++i)
            if (support.OfCase(i, part) != 0.0) return true;
        return false;
    });
}

LoadReport MakeLoadReport(const LoadedBeam& beam)
{
    if (!beam.analysis.IsAnswered()) throw std::invalid_argument("a beam without an answer has no loads to report");
    return ReportMaker(beam).Make();
}

const char* NameOf(ActionKind kind)
{
    switch (kind) {
    case ActionKind::Permanent:
        return "permanent";
    case ActionKind::Imposed:
        return "imposed";
    case ActionKind::Snow:
        return "snow";
    case ActionKind::SnowAbove1000m:
        return "snow above 1000 m";
    case ActionKind::Wind:
        return "wind";
    }
    return "";
}

const char* NameOf(Category category)
{
    static constexpr const char* NAMES[] = {"", "A", "B", "C", "D", "E", "F", "G", "H"};
    const auto place = static_cast<std::size_t>(category);
    return place < std::size(NAMES) ? NAMES[place] : "";
}

const char* NameOf(LimitState state)
{
    switch (state) {
    case LimitState::Ultimate:
        return "ultimate";
    case LimitState::Serviceability:
        return "serviceability";
    case LimitState::Characteristic:
        return "characteristic";
    case LimitState::Frequent:
        return "frequent";
    case LimitState::QuasiPermanent:
        return "quasi-permanent";
    }
    return "";
}

} // namespace Keltrix::Host
