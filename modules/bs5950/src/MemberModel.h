#pragma once

#include <optional>
#include <vector>

#include "keltrix/bs5950/DesignOptions.h"
#include "keltrix/bs5950/Results.h"
#include "keltrix/bs5950/SectionBS5950.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::BS5950 {

/// What a check is made with. References are borrowed for the time of the check.
struct MemberInput {
    const std::vector<Steel::CMemberPoint>& points;
    const std::vector<Steel::CSubSpan>& subSpans;
    const CSectionBS5950& section;
    const DesignOptions& options;
    bool moreExact = false; ///< interaction by the more exact rules
    bool lengthOverride = false;
    double Lyy = 0.0, Lzz = 0.0, Llt = 0.0; ///< m; below zero minus a factor of the member's length
    std::optional<double> momentFactor;
    CDesFormat format; ///< of steps and warnings
};

/// The input of a check with what all of its chapters read from it: the moment diagrams, what holds the member, and what of it counts as
/// nothing.
struct MemberModel : MemberInput {
    explicit MemberModel(const MemberInput& input);

    const SectionProperties& Properties() const { return section.Properties(); }
    const Material& Steel() const { return section.Steel(); }
    /// As the host describes it.
    CSection KeltrixSection() const;
    double Length() const { return points.back().GetPos() - points.front().GetPos(); }
    int LastPoint() const { return static_cast<int>(points.size()) - 1; }
    double PointAt(int point) const { return points[static_cast<std::size_t>(point)].GetPos(); }

    /// Moments about the axes of the buckling checks: x-x and y-y, or u-u and v-v of an angle.
    const Design::MomentDiagram& MomentsX(bool turned) const;
    const Design::MomentDiagram& MomentsY(bool turned) const;
    /// Magnitudes up to which moments are analysis noise and count as none; about u-u, v-v of an angle.
    double LeastMomentX() const;
    double LeastMomentY() const;
    /// Whether an angle has to be checked turned the other way about as well.
    bool HasTwoWays() const;
    /// An equivalent uniform moment factor: the user's in place of the computed one, at least what the standard asks for.
    double Factor(double computed, double least) const;

    Steel::CRestraint PointRestraint(int point) const { return points[static_cast<std::size_t>(point)].GetRestraint(); }
    bool PointHeld(BucklingMode mode, int point) const;
    bool SubSpanHeld(BucklingMode mode, int subSpan) const;
    /// The longest length of the member that is not held in position.
    double LongestUnheld(BucklingMode mode) const;

    double StiffenerSpacing(Axis direction) const;
    /// 4.6.3.1 is for single angles, channels and tees, and so is 4.7.10.
    bool MayHaveEccentricConnection() const;
    /// A single angle, channel or T, whose ends are connected eccentrically: what clause 4.7.10 is for.
    bool IsEccentricStrut() const;

    Design::MomentDiagram major, minor;
    std::vector<Design::MomentDiagram> principal; ///< angle: Mu and Mv, then those of the angle turned the other way
    std::vector<double> levels; ///< positions at which a column in simple construction is held in both directions
};

} // namespace Keltrix::BS5950
