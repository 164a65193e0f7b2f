#include <algorithm>
#include <cmath>

#include "SamePlace.h"
#include "keltrix/statics/Beam.h"

namespace Keltrix::Statics {

namespace {

using Steel::CRestraint;

// Nodes closer than this share of the length are refused: no stiffness of use lies between them.
constexpr double CLOSEST = 1e-4;
// Springs below this share of EI/L³ (of EI/L for rotations) are refused: rounding of the member's own stiffness would be of their size.
constexpr double SOFTEST = 1e-7;
// Lengths in m between which squares and cubes of them are numbers.
constexpr double SHORTEST = 1e-6;
constexpr double LONGEST = 1e9;

// Whether a value is one of an enumeration that begins with 0.
template <class Enumeration>
bool IsOneOf(Enumeration value, Enumeration last)
{
    return static_cast<int>(value) >= 0 && static_cast<int>(value) <= static_cast<int>(last);
}

class FaultFinder {
public:
    explicit FaultFinder(const Beam& beam) : m_beam(beam) {}

    std::vector<Fault> Find()
    {
        if (!(std::isfinite(m_beam.length) && m_beam.length > 0.0)) {
            Say(Part::Beam, 0, L"length %s: a length above zero is expected", m_beam.length);
            return std::move(m_faults);
        }
        if (m_beam.length < SHORTEST || m_beam.length > LONGEST)
            Say(Part::Beam, 0, L"length %s m: one from 1e-6 to 1e9 m is expected", m_beam.length);
        FindOfBeam();
        for (std::size_t i = 0; i < m_beam.supports.size(); ++i)
            FindOfSupport(i);
        for (std::size_t i = 0; i < m_beam.hinges.size(); ++i)
            FindOfHinge(i);
        for (std::size_t i = 0; i < m_beam.restraints.size(); ++i)
            FindOfRestraint(i);
        for (std::size_t i = 0; i < m_beam.cases.size(); ++i)
            FindOfCase(i);
        for (std::size_t i = 0; i < m_beam.loads.size(); ++i)
            FindOfLoad(i);
        FindCloseNodes();
        return std::move(m_faults);
    }

private:
    // %s in the text stands for the number.
    void Say(Part part, std::size_t index, const wchar_t* text, double number)
    {
        CString made;
        made.Format(text, m_format.NoDim(number));
        m_faults.push_back({part, index, made});
    }
    void Say(Part part, std::size_t index, const wchar_t* text) { m_faults.push_back({part, index, text}); }
    bool IsInside(double x) const
    {
        const double tolerance = SAME_PLACE * m_beam.length;
        return x >= -tolerance && x <= m_beam.length + tolerance;
    }
    bool AreOne(double a, double b) const { return std::abs(a - b) <= SAME_PLACE * m_beam.length; }
    bool IsEnd(double x) const { return AreOne(x, 0.0) || AreOne(x, m_beam.length); }

    void FindOfBeam()
    {
        const Section& s = m_beam.section;
        if (!(std::isfinite(s.E) && s.E > 0.0))
            Say(Part::Section, 0, L"Young's modulus %s N/m²: a value above zero is expected", s.E);
        if (!(std::isfinite(s.Iy) && s.Iy > 0.0))
            Say(Part::Section, 0, L"second moment of area about the major axis %s m⁴: a value above zero is expected",
                s.Iy);
        FindOfStiffness(s.E * s.Iy, L"the major");
        if (HasMinorLoads()) FindOfStiffness(s.E * s.Iz, L"the minor");
        if (!(std::isfinite(s.mass) && s.mass >= 0.0)) Say(Part::Section, 0, L"mass %s kg/m: no mass", s.mass);
        if (m_beam.selfWeight && s.mass == 0.0)
            Say(Part::Section, 0,
                L"mass %s kg/m, and the self weight is to act: give the mass, or leave the self weight out", s.mass);
        if (!std::isfinite(m_beam.inclination))
            Say(Part::Beam, 0, L"inclination %s: an angle is expected", m_beam.inclination);
        const std::optional<double>& held = m_beam.axiallyHeldAt;
        if (held && !IsInside(*held))
            Say(Part::Beam, 0, L"axial hold at %s m: a place of the member is expected", *held);
    }

    bool HasMinorLoads() const
    {
        return std::any_of(m_beam.loads.begin(), m_beam.loads.end(),
                           [](const Load& load) { return load.direction == Direction::Minor; });
    }
    void FindOfStiffness(double stiffness, const wchar_t* axis)
    {
        if (std::isnormal(stiffness)) return;
        CString text;
        text.Format(L"bending stiffness %s N·m² about %s axis: a product of E and I above zero that is a number is "
                    L"expected",
                    m_format.NoDim(stiffness), axis);
        m_faults.push_back({Part::Section, 0, text});
    }

    void FindOfCase(std::size_t i)
    {
        const Case& c = m_beam.cases[i];
        if (!IsOneOf(c.kind, ActionKind::Wind))
            Say(Part::Case, i, L"kind of action %s: there is no such kind", static_cast<double>(c.kind));
        if (!IsOneOf(c.category, Category::H))
            Say(Part::Case, i, L"category %s: there is no such category", static_cast<double>(c.category));
        if (c.bySpan && c.kind == ActionKind::Permanent)
            Say(Part::Case, i, L"a permanent action acts on all spans, not span by span");
    }

    void FindOfSupport(std::size_t i)
    {
        const Support& s = m_beam.supports[i];
        if (!IsInside(s.at)) Say(Part::Support, i, L"support at %s m: a place of the member is expected", s.at);
        FindOfHold(Part::Support, i, s.holds);
        for (const double stiffness : {s.vertical, s.rotation, s.lateral, s.lateralRotation})
            if (!(std::isfinite(stiffness) && stiffness >= 0.0))
                Say(Part::Support, i, L"stiffness %s: 0 (no spring) or a value above zero is expected", stiffness);
        const double L = m_beam.length;
        const double major = m_beam.section.E * m_beam.section.Iy / L;
        const double minor = HasMinorLoads() ? m_beam.section.E * m_beam.section.Iz / L : 0.0;
        FindOfSpring(i, s.vertical, major / L / L);
        FindOfSpring(i, s.rotation, major);
        FindOfSpring(i, s.lateral, minor / L / L);
        FindOfSpring(i, s.lateralRotation, minor);
    }
    // `scale` is the stiffness of the member for the same motion.
    void FindOfSpring(std::size_t i, double stiffness, double scale)
    {
        if (!(stiffness > 0.0 && stiffness < SOFTEST * scale)) return;
        CString text;
        text.Format(L"stiffness %s: too soft beside the member to be computed with; give 0 (no spring) or at least %s",
                    m_format.NoDim(stiffness), m_format.NoDim(SOFTEST * scale));
        m_faults.push_back({Part::Support, i, text});
    }

    // Load heights come from the loads.
    void FindOfHold(Part part, std::size_t i, const CRestraint& holds)
    {
        if (holds.LoadHeight() != 0.0 || holds.RefLoadHeight() != Steel::SHR_CENTRE)
            Say(part, i, L"load height %s m of a restraint: give it with the load", holds.LoadHeight());
    }

    void FindOfHinge(std::size_t i)
    {
        const Hinge& hinge = m_beam.hinges[i];
        if (!IsInside(hinge.at) || IsEnd(hinge.at)) {
            Say(Part::Hinge, i,
                L"hinge at %s m: a place inside the member is expected; what its ends hold is in the supports",
                hinge.at);
            return;
        }
        for (std::size_t j = 0; j < i; ++j)
            if (AreOne(hinge.at, m_beam.hinges[j].at)) Say(Part::Hinge, i, L"a second hinge at %s m", hinge.at);
        for (const Support& s : m_beam.supports) {
            if (!AreOne(s.at, hinge.at)) continue;
            const bool major = s.rotation > 0.0 || s.holds.IsRestrained(CRestraint::MAJOR_ROTATION, true);
            const bool minor = s.lateralRotation > 0.0 || s.holds.IsRestrained(CRestraint::MINOR_ROTATION, true);
            if ((hinge.major && major) || (hinge.minor && minor))
                Say(Part::Hinge, i,
                    L"hinge at %s m: the support there holds rotation, and which side of the hinge is not said",
                    hinge.at);
        }
    }

    void FindOfRestraint(std::size_t i)
    {
        const Restraint& r = m_beam.restraints[i];
        FindOfHold(Part::Restraint, i, r.holds);
        if (!IsInside(r.from))
            Say(Part::Restraint, i, L"restraint from %s m: a place of the member is expected", r.from);
        if (!IsInside(r.to)) Say(Part::Restraint, i, L"restraint to %s m: a place of the member is expected", r.to);
        if (!(r.to - r.from > SAME_PLACE * m_beam.length))
            Say(Part::Restraint, i,
                L"restraint to %s m: a place after its beginning is expected; at one place use a support", r.to);
    }

    void FindOfLoad(std::size_t i)
    {
        const Load& load = m_beam.loads[i];
        if (!IsOneOf(load.shape, LoadShape::Moment))
            Say(Part::Load, i, L"shape %s: there is no such shape of loads", static_cast<double>(load.shape));
        if (!IsOneOf(load.direction, Direction::Axial))
            Say(Part::Load, i, L"direction %s: there is no such direction", static_cast<double>(load.direction));
        if (load.caseIndex >= m_beam.cases.size())
            Say(Part::Load, i, L"case %s: the beam has no such case", static_cast<double>(load.caseIndex));
        if (!std::isfinite(load.value)) Say(Part::Load, i, L"load %s: a number is expected", load.value);
        if (!IsInside(load.from)) Say(Part::Load, i, L"load at %s m: a place of the member is expected", load.from);
        if (load.shape == LoadShape::Distributed) FindOfLength(i, load);
        if (load.shape == LoadShape::Moment) FindOfMoment(i, load);
        if (load.direction == Direction::Minor && !(std::isfinite(m_beam.section.Iz) && m_beam.section.Iz > 0.0))
            Say(Part::Load, i, L"load across the web, and the second moment of area about the minor axis is %s m⁴",
                m_beam.section.Iz);
        FindOfHeight(i, load);
    }

    void FindOfLength(std::size_t i, const Load& load)
    {
        if (!std::isfinite(load.valueTo)) Say(Part::Load, i, L"load %s at its end: a number is expected", load.valueTo);
        const bool toEnd = std::isinf(load.to) && load.to > 0.0;
        if (!toEnd && !IsInside(load.to))
            Say(Part::Load, i, L"load to %s m: a place of the member is expected", load.to);
        const double to = toEnd ? m_beam.length : load.to;
        if (!(to - load.from > SAME_PLACE * m_beam.length))
            Say(Part::Load, i, L"load to %s m: a place after its beginning is expected", to);
    }

    void FindOfMoment(std::size_t i, const Load& load)
    {
        if (load.direction == Direction::Axial)
            Say(Part::Load, i, L"moment %s N·m about the member's own axis: torsion is not analysed", load.value);
        for (const Hinge& hinge : m_beam.hinges)
            if (AreOne(hinge.at, load.from) && (load.direction == Direction::Minor ? hinge.minor : hinge.major))
                Say(Part::Load, i,
                    L"moment at the hinge at %s m: which side it turns is not said; put it beside the hinge",
                    load.from);
    }

    void FindOfHeight(std::size_t i, const Load& load)
    {
        if (!std::isfinite(load.height)) Say(Part::Load, i, L"load height %s: a number is expected", load.height);
        const Section& s = m_beam.section;
        if (load.reference == Steel::TOP_FLANGE && !std::isfinite(s.topFlange))
            Say(Part::Load, i, L"load height from the top flange, whose height is %s", s.topFlange);
        else if (load.reference == Steel::BOT_FLANGE && !std::isfinite(s.bottomFlange))
            Say(Part::Load, i, L"load height from the bottom flange, whose height is %s", s.bottomFlange);
        else if (load.reference != Steel::SHR_CENTRE && load.reference != Steel::TOP_FLANGE &&
                 load.reference != Steel::BOT_FLANGE)
            Say(Part::Load, i, L"load height from reference %s: shear centre, top flange or bottom flange is expected",
                static_cast<double>(load.reference));
        const bool acrossMajor = load.direction == Direction::Gravity || load.direction == Direction::Major;
        if (!acrossMajor && (load.height != 0.0 || load.reference != Steel::SHR_CENTRE))
            Say(Part::Load, i, L"load height %s: only a load across the major axis has one", load.height);
    }

    void FindCloseNodes()
    {
        std::vector<double> places{0.0, m_beam.length};
        for (const Support& s : m_beam.supports)
            places.push_back(s.at);
        for (const Hinge& h : m_beam.hinges)
            places.push_back(h.at);
        std::sort(places.begin(), places.end());
        for (std::size_t i = 1; i < places.size(); ++i)
            if (!AreOne(places[i - 1], places[i]) && places[i] - places[i - 1] < CLOSEST * m_beam.length)
                Say(Part::Beam, 0,
                    L"supports, hinges or ends close to %s m are apart by less than a ten-thousandth of the length; "
                    L"put them at one place",
                    places[i]);
    }

    const Beam& m_beam;
    CDesFormat m_format;
    std::vector<Fault> m_faults;
};

} // namespace

std::vector<Fault> FindFaults(const Beam& beam) { return FaultFinder(beam).Find(); }

} // namespace Keltrix::Statics
