#pragma once

#include <vector>

#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Host {

/// A member's layout as the sheet draws it.
struct DrawnLayout {
    std::vector<Steel::CMemberPoint> points; ///< by ascending number
    std::vector<Steel::CSubSpan> subSpans;   ///< sub-span k lies between points k and k + 1

    double Start() const { return points.empty() ? 0.0 : points.front().GetPos(); }
    double Length() const { return points.empty() ? 0.0 : points.back().GetPos() - Start(); }
    /// Sub-spans that have both their points.
    std::size_t SubSpanCount() const;
};

/// Where the positions along a member are on the paper: one scale for its drawing and all its diagrams.
class MemberAxis {
public:
    /// Width of every drawing along the member, mm.
    static constexpr double WIDTH = 184.0;

    /// The largest of the usual scales at which length and depth (m) fit the paper.
    MemberAxis(const DrawnLayout& layout, double depth);

    /// 50 means 1:50.
    double Scale() const { return m_scale; }
    /// Of a position along the member, m.
    double X(double position) const { return m_left + Paper(position - m_start); }
    /// A length of m on the paper, mm.
    double Paper(double metres) const { return metres * 1e3 / m_scale; }
    double Left() const { return m_left; }
    double Right() const { return WIDTH - m_left; }

private:
    double m_scale = 1.0;
    double m_start = 0.0;
    double m_left = WIDTH / 2.0;
};

/// The smallest of the usual scales 1:n at which `size` (m) takes up at most `room` mm of paper.
double DrawingScale(double size, double room);

} // namespace Keltrix::Host
