#include "memberfile/ActionFindings.h"

#include <algorithm>
#include <cmath>

#include "keltrix/design/MomentDiagram.h"
#include "keltrix/platform/KxData.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Data::CRestraint;
using Steel::CMemberPoint;
using Steel::CSubSpan;
using Vector = Vec3<double>;

struct Component {
    const char* name;
    double Vector::*value;
};

constexpr Component MOMENTS[] = {{"Mx", &Vector::x}, {"My", &Vector::y}, {"Mz", &Vector::z}};
constexpr Component BENDING[] = {{"My", &Vector::y}, {"Mz", &Vector::z}};

class ActionSearch {
public:
    ActionSearch(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans) :
        m_points(points), m_subSpans(subSpans)
    {
        for (const CSubSpan& s : subSpans) {
            m_largestForce = std::max({m_largestForce, LargestOf(s.GetForcesLeft()), LargestOf(s.GetForcesRight())});
            m_largestMoment =
                std::max({m_largestMoment, LargestOf(s.GetMomentsLeft()), LargestOf(s.GetMomentsRight())});
        }
    }

    std::vector<ActionFinding> Find()
    {
        FindUnbalanced(Design::Bending::Major);
        FindUnbalanced(Design::Bending::Minor);
        FindJumps();
        NoteSmallForces();
        NoteLength();
        NoteLoadHeights();
        NoteSupports();
        NoteFreeEnd(0);
        NoteFreeEnd(m_points.size() - 1);
        NoteFlanges();
        return std::move(m_found);
    }

private:
    static double LargestOf(const Vector& v) { return std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)}); }

    void Note(const char* code, std::size_t point, std::string got, std::string expected, std::string advice)
    {
        m_found.push_back(
            {Severity::Note, code, true, point, {}, std::move(got), std::move(expected), std::move(advice)});
    }

    void FindUnbalanced(Design::Bending bending)
    {
        const Design::MomentDiagram diagram(m_points, m_subSpans, bending);
        for (std::size_t k = 0; k < m_subSpans.size(); ++k) {
            const auto& piece = diagram.Pieces()[k];
            if (piece.balance.balanced) continue;
            m_found.push_back({Severity::Warning,
                               "unbalanced",
                               false,
                               k,
                               {},
                               {},
                               {},
                               Utf8(Design::UnbalancedText(static_cast<int>(k) + 1, bending, piece, CDesFormat()))});
        }
    }

    // Moments are continuous wherever no couple acts, and the format has no couples. Rounding of the file's figures is no
    // jump: they have six digits as a rule, and here three are enough.
    void FindJumps()
    {
        for (std::size_t k = 1; k < m_subSpans.size(); ++k) {
            for (const Component& component : BENDING) {
                const double left = m_subSpans[k - 1].GetMomentsRight().*component.value;
                const double right = m_subSpans[k].GetMomentsLeft().*component.value;
                const double allowed =
                    std::max(1e-3 * std::max(std::fabs(left), std::fabs(right)), 1e-5 * m_largestMoment);
                if (!(std::fabs(right - left) > allowed)) continue;
                m_found.push_back({Severity::Warning,
                                   "moment-jump",
                                   true,
                                   k,
                                   {},
                                   std::string(component.name) + " = " + Shortest(left) + " N·m on its left and " +
                                       Shortest(right) + " N·m on its right",
                                   "the same moment on both sides of a point",
                                   "checked as it stands; is a moment lost, or does a couple act at the point?"});
            }
        }
    }

    void NoteSmallForces()
    {
        constexpr double least = 1e3;
        const bool hasForce = m_largestForce > 0.0;
        if (m_largestForce >= least || (!hasForce && m_largestMoment >= least)) return;
        Note("small-forces", 0, "no force above " + Shortest(m_largestForce) + " N in the whole member",
             "forces in N and moments in N·m", "are they in kN?");
    }

    void NoteLength()
    {
        constexpr double most = 100.0;
        const double length = m_points.back().GetPos() - m_points.front().GetPos();
        if (!(length > most)) return;
        Note("long-member", m_points.size() - 1, "a member of " + Shortest(length) + " m", "positions in m",
             "are they in mm?");
    }

    void NoteLoadHeights()
    {
        for (std::size_t i = 0; i < m_points.size(); ++i)
            NoteLoadHeight(true, i, m_points[i].GetRestraint().LoadHeight());
        for (std::size_t k = 0; k < m_subSpans.size(); ++k)
            NoteLoadHeight(false, k, m_subSpans[k].GetRestraint().LoadHeight());
    }

    void NoteLoadHeight(bool isOfPoint, std::size_t index, double height)
    {
        constexpr double most = 5.0;
        if (!(std::fabs(height) > most)) return;
        m_found.push_back({Severity::Note, "load-height", isOfPoint, index, "load height", Shortest(height) + " m",
                           "a height in m above the shear centre", "is it in mm?"});
    }

    static bool Holds(const CRestraint& restraint, unsigned int bits) { return restraint.IsRestrained(bits, true); }

    bool IsHeldAnywhere(unsigned int bits) const
    {
        const auto holds = [bits](const auto& record) { return Holds(record.GetRestraint(), bits); };
        return std::any_of(m_points.begin(), m_points.end(), holds) ||
               std::any_of(m_subSpans.begin(), m_subSpans.end(), holds);
    }

    void NoteSupports()
    {
        if (!IsHeldAnywhere(CRestraint::MAJOR_SHEAR))
            Note("no-support", 0, "no point that is held in the direction of the web", "at least one support",
                 "is a restraint lost?");
        const bool isHeldLaterally = IsHeldAnywhere(CRestraint::MINOR_SHEAR) ||
                                     IsHeldAnywhere(CRestraint::FLANGE1_LATERAL) ||
                                     IsHeldAnywhere(CRestraint::FLANGE2_LATERAL);
        if (isHeldLaterally) return;
        m_found.push_back(
            {Severity::Warning, "no-lateral-support", true, 0, "restraint",
             "no point and no sub-span that is held laterally", "at least one lateral support",
             "nothing keeps the member from moving sideways, which the rules of sections that do not buckle "
             "laterally do not look at"});
    }

    // A tip carries its loads. An axial force or a moment in a free end can be one, and is what is left where the points
    // beyond it are lost.
    void NoteFreeEnd(std::size_t point)
    {
        const CRestraint restraint = m_points[point].GetRestraint();
        if (Holds(restraint, CRestraint::MAJOR_SHEAR) || Holds(restraint, CRestraint::MAJOR_ROTATION_PART)) return;
        const bool atLeft = point == 0;
        const CSubSpan& subSpan = atLeft ? m_subSpans.front() : m_subSpans.back();
        const Vector force = atLeft ? subSpan.GetForcesLeft() : subSpan.GetForcesRight();
        const Vector moment = atLeft ? subSpan.GetMomentsLeft() : subSpan.GetMomentsRight();
        std::string acts;
        if (std::fabs(force.x) > 1e-6 * m_largestForce) acts = "Fx = " + Shortest(force.x) + " N";
        for (const Component& component : MOMENTS) {
            if (!(std::fabs(moment.*component.value) > 1e-6 * m_largestMoment)) continue;
            acts += (acts.empty() ? "" : ", ") + std::string(component.name) + " = " +
                    Shortest(moment.*component.value) + " N·m";
        }
        if (acts.empty()) return;
        Note("loaded-free-end", point, acts + " at an end without support", "a free end without axial force and moment",
             "a load on a tip? or are points lost beyond it?");
    }

    void NoteFlanges()
    {
        const char* const top = "flange 1 (top)";
        const char* const bottom = "flange 2 (bottom)";
        NoteFlange(true, CRestraint::FLANGE2_LATERAL, bottom, CRestraint::FLANGE1_LATERAL, top);
        NoteFlange(false, CRestraint::FLANGE1_LATERAL, top, CRestraint::FLANGE2_LATERAL, bottom);
    }

    // A moment above zero compresses flange 2.
    void NoteFlange(bool whenSagging, unsigned int idle, const char* idleName, unsigned int compressed,
                    const char* compressedName)
    {
        const Design::MomentDiagram diagram(m_points, m_subSpans, Design::Bending::Major);
        const Design::Extremes moments = diagram.Between(m_points.front().GetPos(), m_points.back().GetPos());
        const double allowed = 1e-6 * diagram.Largest();
        const bool isSagging = moments.least < 0.0 && moments.greatest <= allowed;
        const bool isHogging = moments.greatest > 0.0 && moments.least >= -allowed;
        if (!(whenSagging ? isSagging : isHogging)) return;
        const auto isHeldWrongly = [&](const CRestraint& restraint) {
            return Holds(restraint, idle) && !Holds(restraint, compressed) &&
                   !Holds(restraint, CRestraint::COMP_FLANGE_LATERAL);
        };
        for (std::size_t i = 0; i < m_points.size(); ++i) {
            if (isHeldWrongly(m_points[i].GetRestraint())) NoteHeldFlange(true, i, idleName, compressedName);
        }
        for (std::size_t k = 0; k < m_subSpans.size(); ++k) {
            if (isHeldWrongly(m_subSpans[k].GetRestraint())) NoteHeldFlange(false, k, idleName, compressedName);
        }
    }

    void NoteHeldFlange(bool isOfPoint, std::size_t index, const std::string& idle, const std::string& compressed)
    {
        m_found.push_back({Severity::Note, "idle-flange", isOfPoint, index, "restraint",
                           idle + " held, which is never compressed, and " + compressed + " free",
                           "a restraint of the compressed flange",
                           "moments below zero compress flange 1, moments above zero flange 2"});
    }

    const std::vector<CMemberPoint>& m_points;
    const std::vector<CSubSpan>& m_subSpans;
    double m_largestForce = 0.0;
    double m_largestMoment = 0.0;
    std::vector<ActionFinding> m_found;
};

} // namespace

std::vector<ActionFinding> FindInActions(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans)
{
    return ActionSearch(points, subSpans).Find();
}

} // namespace Keltrix::Host
