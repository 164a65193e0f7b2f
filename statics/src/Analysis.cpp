#include "keltrix/statics/Analysis.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "Plane.h"
#include "SamePlace.h"

namespace Keltrix::Statics {

using Steel::CRestraint;

namespace {

// The break at a place.
std::size_t PlaceOf(const std::vector<double>& breaks, double x)
{
    const double tolerance = SAME_PLACE * breaks.back();
    const auto it = std::lower_bound(breaks.begin(), breaks.end(), x - tolerance);
    return std::min(static_cast<std::size_t>(it - breaks.begin()), breaks.size() - 1);
}

// Parts of a load across the major axis, across the minor axis and along the member.
struct Components {
    double major = 0.0;
    double minor = 0.0;
    double axial = 0.0;
};
Components ComponentsOf(const Load& load, double inclination)
{
    switch (load.direction) {
    case Direction::Gravity:
        // A moment has no weight that an inclination could divide.
        if (load.shape == LoadShape::Moment) return {1.0, 0.0, 0.0};
        return {std::cos(inclination), 0.0, -std::sin(inclination)};
    case Direction::Minor:
        return {0.0, 1.0, 0.0};
    case Direction::Axial:
        return {0.0, 0.0, 1.0};
    case Direction::Major:
        break;
    }
    return {1.0, 0.0, 0.0};
}

// All supports at one place as a node of a plane.
void AddSupport(const Support& support, bool minor, Node& node)
{
    const auto held = [&](unsigned int bits) { return support.holds.IsRestrained(bits, true); };
    const double spring = minor ? support.lateral : support.vertical;
    const double rotation = minor ? support.lateralRotation : support.rotation;
    if (spring == 0.0 && held(minor ? CRestraint::MINOR_SHEAR : CRestraint::MAJOR_SHEAR)) node.held = true;
    if (rotation == 0.0 && held(minor ? CRestraint::MINOR_ROTATION : CRestraint::MAJOR_ROTATION))
        node.rotationHeld = true;
    node.spring = std::max(node.spring, spring);
    node.rotationSpring = std::max(node.rotationSpring, rotation);
}

std::vector<Node> NodesOf(const Beam& beam, const std::vector<double>& breaks, bool minor)
{
    std::vector<Node> at(breaks.size());
    std::vector<bool> used(breaks.size(), false);
    used.front() = used.back() = true;
    for (const Support& support : beam.supports) {
        const std::size_t place = PlaceOf(breaks, support.at);
        AddSupport(support, minor, at[place]);
        used[place] = true;
    }
    for (const Hinge& hinge : beam.hinges) {
        if (!(minor ? hinge.minor : hinge.major)) continue;
        const std::size_t place = PlaceOf(breaks, hinge.at);
        at[place].hinge = true;
        used[place] = true;
    }
    std::vector<Node> nodes;
    for (std::size_t i = 0; i < breaks.size(); ++i) {
        if (!used[i]) continue;
        at[i].place = i;
        const bool end = i == 0 || i + 1 == breaks.size();
        if (end || at[i].Supports() || at[i].HoldsRotation() || at[i].hinge) nodes.push_back(at[i]);
    }
    return nodes;
}

// Loads of a unit in the two planes and along the member.
struct UnitLoads {
    explicit UnitLoads(std::size_t breaks) : major(breaks), minor(breaks), axial(breaks) {}
    PlaneLoads major;
    PlaneLoads minor;
    PlaneLoads axial;
};

void AddTo(PlaneLoads& loads, const Load& load, double factor, const std::vector<double>& breaks, double from,
           double to)
{
    if (factor == 0.0) return;
    if (load.shape != LoadShape::Distributed) {
        const std::size_t place = PlaceOf(breaks, load.from);
        (load.shape == LoadShape::Point ? loads.force : loads.moment)[place] += factor * load.value;
        loads.any = true;
        return;
    }
    const std::size_t first = PlaceOf(breaks, from);
    const std::size_t last = PlaceOf(breaks, to);
    const double a = breaks[PlaceOf(breaks, load.from)];
    const double b = breaks[PlaceOf(breaks, load.to)];
    const auto at = [&](double x) {
        const double s = (x - a) / (b - a);
        return factor * ((1.0 - s) * load.value + s * load.valueTo);
    };
    for (std::size_t j = first; j < last; ++j) {
        loads.left[j] += at(breaks[j]);
        loads.right[j] += at(breaks[j + 1]);
        loads.any = true;
    }
}

void AddTo(UnitLoads& loads, const Load& load, double inclination, const std::vector<double>& breaks, double from,
           double to)
{
    const Components c = ComponentsOf(load, inclination);
    AddTo(loads.major, load, c.major, breaks, from, to);
    AddTo(loads.minor, load, c.minor, breaks, from, to);
    AddTo(loads.axial, load, c.axial, breaks, from, to);
}

// Tension along the member: loads are taken by the hold, from both sides. Gives the hold's force along x.
double SolveAxial(const PlaneLoads& loads, const std::vector<double>& breaks, std::size_t hold,
                  std::vector<AxialPiece>& pieces)
{
    pieces.assign(breaks.size() - 1, {});
    const auto along = [&](std::size_t j) {
        return 0.5 * (loads.left[j] + loads.right[j]) * (breaks[j + 1] - breaks[j]);
    };
    double force = 0.0;
    for (std::size_t j = 0; j < hold; ++j) {
        force -= loads.force[j];
        pieces[j].left = force;
        force -= along(j);
        pieces[j].right = force;
    }
    for (std::size_t j = 0; j < pieces.size(); ++j)
        pieces[j].bow = 0.5 * (loads.right[j] - loads.left[j]) * (breaks[j + 1] - breaks[j]);
    const double fromLeft = force;
    force = 0.0;
    for (std::size_t j = pieces.size(); j-- > hold;) {
        force += loads.force[j + 1];
        pieces[j].right = force;
        force += along(j);
        pieces[j].left = force;
    }
    return fromLeft - force - loads.force[hold];
}

void AddSelfWeight(Beam& beam, std::vector<CString>& notes)
{
    const CDesFormat format;
    const auto first = std::find_if(beam.cases.begin(), beam.cases.end(),
                                    [](const Case& c) { return c.kind == ActionKind::Permanent; });
    const auto index = static_cast<std::size_t>(first - beam.cases.begin());
    if (first == beam.cases.end()) {
        Case made;
        made.name = L"Self weight";
        beam.cases.push_back(made);
    }
    beam.loads.push_back(UniformLoad(index, beam.section.mass * GRAVITY));
    CString note;
    note.Format(L"self weight of %s kg/m, %s for each metre, acts in the case %s", format.NoDim(beam.section.mass),
                format.Force(beam.section.mass * GRAVITY), beam.cases[index].name);
    notes.push_back(note);
}

// Holds that carry no loads, although one could think so.
void NoteHolds(const Beam& beam, bool hasMinor, std::vector<CString>& notes)
{
    const CDesFormat format;
    CString note;
    for (const Restraint& r : beam.restraints) {
        const bool major = !r.holds.IsFree(CRestraint::MAJOR_SHEAR | CRestraint::MAJOR_ROTATION, true);
        const bool minor = !r.holds.IsFree(CRestraint::MINOR_SHEAR | CRestraint::MINOR_ROTATION, true);
        if (!major && !(minor && hasMinor)) continue;
        note.Format(L"the restraint from %s to %s carries no loads: supports alone do", format.Length(r.from),
                    format.Length(r.to));
        notes.push_back(note);
    }
    for (const Support& s : beam.supports) {
        if (s.rotation > 0.0 || s.holds.IsRestrained(CRestraint::MAJOR_ROTATION, true)) continue;
        if (!s.holds.IsRestrained(CRestraint::MAJOR_ROTATION_PART, false)) continue;
        note.Format(L"the partial hold of rotation at %s has no stiffness: forces are those of a hinged support",
                    format.Length(s.at));
        notes.push_back(note);
    }
}

// A unit's response from its loads. `zero` is a response without forces, with its breaks and reactions.
Response Respond(const UnitLoads& loads, const Plane& major, const Plane* minor, const Response& zero,
                 const std::vector<double>& breaks, std::size_t axialHold)
{
    Response response = zero;
    const auto reactionAt = [&](std::size_t place) {
        return std::find_if(response.reactions.begin(), response.reactions.end(),
                            [&](const Reaction& r) { return r.at == breaks[place]; });
    };
    if (loads.major.any) {
        PlaneResult result = major.Solve(loads.major);
        response.major = std::move(result.line);
        for (std::size_t i = 0; i < result.reactions.size(); ++i) {
            if (!major.Nodes()[i].Supports() && !major.Nodes()[i].HoldsRotation()) continue;
            const auto reaction = reactionAt(major.Nodes()[i].place);
            reaction->vertical = result.reactions[i].force;
            reaction->moment = result.reactions[i].moment;
        }
    }
    if (minor && loads.minor.any) {
        PlaneResult result = minor->Solve(loads.minor);
        response.minor = std::move(result.line);
        for (std::size_t i = 0; i < result.reactions.size(); ++i) {
            if (!minor->Nodes()[i].Supports() && !minor->Nodes()[i].HoldsRotation()) continue;
            const auto reaction = reactionAt(minor->Nodes()[i].place);
            reaction->lateral = -result.reactions[i].force;
            reaction->lateralMoment = result.reactions[i].moment;
        }
    }
    if (loads.axial.any) reactionAt(axialHold)->axial = SolveAxial(loads.axial, breaks, axialHold, response.axial);
    return response;
}

// The loads of one case between two places; a force at the end of a span belongs to the span after it.
UnitLoads Collect(const Beam& beam, std::size_t caseIndex, const std::vector<double>& breaks, double from, double to)
{
    UnitLoads loads(breaks.size());
    const double tolerance = SAME_PLACE * beam.length;
    const bool last = to > beam.length - tolerance;
    for (const Load& load : beam.loads) {
        if (load.caseIndex != caseIndex) continue;
        if (load.shape == LoadShape::Distributed) {
            const double a = std::max(load.from, from);
            const double b = std::min(load.to, to);
            if (b - a > tolerance) AddTo(loads, load, beam.inclination, breaks, a, b);
        } else if (load.from >= from - tolerance && (last || load.from < to - tolerance))
            AddTo(loads, load, beam.inclination, breaks, load.from, load.from);
    }
    return loads;
}

bool IsFinite(const Line& line)
{
    return std::all_of(line.Pieces().begin(), line.Pieces().end(), [&](const Piece& p) {
        return std::isfinite(p.loadLeft) && std::isfinite(p.loadRight) && std::isfinite(p.shear) &&
               std::isfinite(p.slope) && std::isfinite(p.deflection) && std::isfinite(p.ShearAt(p.length)) &&
               std::isfinite(p.MomentAt(p.length)) && std::isfinite(p.DeflectionAt(p.length, line.EI()));
    });
}

bool IsFinite(const Response& response)
{
    return IsFinite(response.major) && IsFinite(response.minor) &&
           std::all_of(response.axial.begin(), response.axial.end(),
                       [](const AxialPiece& a) { return std::isfinite(a.left) && std::isfinite(a.right + a.bow); }) &&
           std::all_of(response.reactions.begin(), response.reactions.end(), [](const Reaction& r) {
               return std::isfinite(r.vertical) && std::isfinite(r.moment) && std::isfinite(r.lateral) &&
                      std::isfinite(r.lateralMoment) && std::isfinite(r.axial);
           });
}

CString MotionText(const FreeMotion& motion)
{
    const CDesFormat format;
    CString text = motion.minor ? L"nothing holds the member sideways: " : L"nothing holds the member in place: ";
    bool any = false;
    for (std::size_t i = 0; i + 1 < motion.samples.size(); ++i) {
        const auto& [x0, w0] = motion.samples[i];
        const auto& [x1, w1] = motion.samples[i + 1];
        if (std::max(std::abs(w0), std::abs(w1)) < 1e-9) continue;
        CString part;
        part.Format(L"%sfrom %s to %s it ", any ? L", " : L"", format.Length(x0), format.Length(x1));
        text += part;
        if (std::abs(w1 - w0) < 1e-9)
            text += L"moves as a whole";
        else {
            part.Format(L"turns about %s", format.Length(x0 - w0 * (x1 - x0) / (w1 - w0)));
            text += part;
        }
        any = true;
    }
    return text;
}

} // namespace

bool Response::IsEmpty() const { return major.IsEmpty() && minor.IsEmpty() && axial.empty() && reactions.empty(); }

void Response::Add(double factor, const Response& other)
{
    if (!std::isfinite(factor)) throw std::invalid_argument("a factor that is not a number");
    if (other.IsEmpty()) return;
    if (IsEmpty()) {
        axial.resize(other.axial.size());
        for (const Reaction& r : other.reactions)
            reactions.push_back({r.at});
    } else if (!IsOfTheAnalysisOf(other))
        throw std::invalid_argument("responses of different beams do not add");
    major.Add(factor, other.major);
    minor.Add(factor, other.minor);
    for (std::size_t i = 0; i < axial.size(); ++i) {
        axial[i].left += factor * other.axial[i].left;
        axial[i].right += factor * other.axial[i].right;
        axial[i].bow += factor * other.axial[i].bow;
    }
    for (std::size_t i = 0; i < reactions.size(); ++i) {
        Reaction& r = reactions[i];
        const Reaction& o = other.reactions[i];
        r.vertical += factor * o.vertical;
        r.moment += factor * o.moment;
        r.lateral += factor * o.lateral;
        r.lateralMoment += factor * o.lateralMoment;
        r.axial += factor * o.axial;
    }
}

bool Response::IsOfTheAnalysisOf(const Response& other) const
{
    return major.HasBreaksOf(other.major) && minor.HasBreaksOf(other.minor) && axial.size() == other.axial.size() &&
           std::equal(reactions.begin(), reactions.end(), other.reactions.begin(), other.reactions.end(),
                      [](const Reaction& a, const Reaction& b) { return a.at == b.at; });
}

Analysis::Analysis(Beam beam) : m_beam(std::move(beam))
{
    m_faults = FindFaults(m_beam);
    if (!m_faults.empty()) {
        m_reason = m_faults.front().text;
        return;
    }
    Prepare();
    FindBreaks();
    FindSpans();
    Solve();
}

// The beam as it is analysed.
void Analysis::Prepare()
{
    if (m_beam.selfWeight) AddSelfWeight(m_beam, m_notes);
    for (Load& load : m_beam.loads) {
        if (load.shape != LoadShape::Distributed) load.to = load.from;
        load.to = std::min(load.to, m_beam.length);
        m_hasMinor = m_hasMinor || load.direction == Direction::Minor;
    }
    const auto before = [](const Support& a, const Support& b) { return a.at < b.at; };
    std::stable_sort(m_beam.supports.begin(), m_beam.supports.end(), before);
    if (!m_beam.axiallyHeldAt && !m_beam.supports.empty()) m_beam.axiallyHeldAt = m_beam.supports.front().at;
    NoteHolds(m_beam, m_hasMinor, m_notes);
}

void Analysis::FindBreaks()
{
    std::vector<double> all{0.0, m_beam.length};
    for (const Support& s : m_beam.supports)
        all.push_back(s.at);
    for (const Hinge& h : m_beam.hinges)
        all.push_back(h.at);
    for (const Restraint& r : m_beam.restraints)
        all.insert(all.end(), {r.from, r.to});
    for (const Load& load : m_beam.loads)
        all.insert(all.end(), {load.from, load.to});
    if (m_beam.axiallyHeldAt) all.push_back(*m_beam.axiallyHeldAt);
    std::sort(all.begin(), all.end());
    m_breaks.assign(1, 0.0);
    for (const double x : all)
        if (x - m_breaks.back() > SAME_PLACE * m_beam.length) m_breaks.push_back(x);
    m_breaks.back() = m_beam.length;
}

void Analysis::FindSpans()
{
    std::vector<double> supports;
    for (const Node& node : NodesOf(m_beam, m_breaks, false))
        if (node.Supports()) supports.push_back(m_breaks[node.place]);
    if (supports.empty()) return;
    if (supports.front() > 0.0) m_spans.push_back({0.0, supports.front(), false, true});
    for (std::size_t i = 0; i + 1 < supports.size(); ++i)
        m_spans.push_back({supports[i], supports[i + 1], true, true});
    if (supports.back() < m_breaks.back()) m_spans.push_back({supports.back(), m_breaks.back(), true, false});
}

Response Analysis::Zero() const
{
    Response zero;
    std::vector<Piece> pieces(m_breaks.size() - 1);
    for (std::size_t j = 0; j + 1 < m_breaks.size(); ++j) {
        pieces[j].start = m_breaks[j];
        pieces[j].length = m_breaks[j + 1] - m_breaks[j];
    }
    if (m_hasMinor) zero.minor = Line(pieces, m_beam.section.E * m_beam.section.Iz);
    zero.major = Line(std::move(pieces), m_beam.section.E * m_beam.section.Iy);
    zero.axial.resize(m_breaks.size() - 1);
    std::vector<double> places;
    for (const Support& s : m_beam.supports)
        places.push_back(s.at);
    if (m_beam.axiallyHeldAt) places.push_back(*m_beam.axiallyHeldAt);
    std::vector<bool> used(m_breaks.size(), false);
    for (const double x : places)
        used[PlaceOf(m_breaks, x)] = true;
    for (std::size_t i = 0; i < m_breaks.size(); ++i)
        if (used[i]) zero.reactions.push_back({m_breaks[i]});
    return zero;
}

void Analysis::Solve()
{
    Plane major(m_breaks, NodesOf(m_beam, m_breaks, false), m_beam.section.E * m_beam.section.Iy);
    std::optional<Plane> minor;
    if (m_hasMinor) minor.emplace(m_breaks, NodesOf(m_beam, m_breaks, true), m_beam.section.E * m_beam.section.Iz);
    for (Plane* const plane : {&major, minor ? &*minor : nullptr}) {
        if (!plane) continue;
        const std::vector<double> motion = plane->FreeMotion();
        if (motion.empty()) {
            plane->Factorise();
            continue;
        }
        m_motion.minor = plane != &major;
        for (std::size_t i = 0; i < motion.size(); ++i)
            m_motion.samples.push_back({m_breaks[plane->Nodes()[i].place], motion[i]});
        m_reason = MotionText(m_motion);
        return;
    }
    const Response zero = Zero();
    const std::size_t hold = PlaceOf(m_breaks, *m_beam.axiallyHeldAt);
    const auto add = [&](std::size_t caseIndex, int span, double from, double to) {
        const UnitLoads loads = Collect(m_beam, caseIndex, m_breaks, from, to);
        if (!loads.major.any && !loads.minor.any && !loads.axial.any) return;
        m_units.push_back({caseIndex, span, Respond(loads, major, minor ? &*minor : nullptr, zero, m_breaks, hold)});
        if (IsFinite(m_units.back().response) || !IsAnswered()) return;
        m_reason.Format(L"the forces or deflections of the case %s are beyond the range of numbers",
                        m_beam.cases[caseIndex].name);
    };
    for (std::size_t c = 0; c < m_beam.cases.size(); ++c) {
        if (!m_beam.cases[c].bySpan) {
            add(c, -1, 0.0, m_beam.length);
            continue;
        }
        for (std::size_t i = 0; i < m_spans.size(); ++i)
            add(c, static_cast<int>(i), m_spans[i].from, m_spans[i].to);
    }
    if (!IsAnswered()) m_units.clear();
}

Response Analysis::Of(const std::vector<Term>& terms) const
{
    if (!IsAnswered()) return {};
    for (const Term& term : terms) {
        if (term.caseIndex >= m_beam.cases.size()) throw std::invalid_argument("a case that the beam has not");
        if (!std::isfinite(term.factor)) throw std::invalid_argument("a factor that is not a number");
    }
    Response sum = Zero();
    for (const Term& term : terms)
        for (const Unit& unit : m_units)
            if (unit.caseIndex == term.caseIndex && term.factor != 0.0 && term.ActsOn(unit.span))
                sum.Add(term.factor, unit.response);
    if (!IsFinite(sum)) throw std::overflow_error("forces or deflections beyond the range of numbers");
    return sum;
}

} // namespace Keltrix::Statics
