#pragma once

#include "CalculationLines.h"
#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// The calculation of the rules of the cross-section at a position, line by line. Every step shows the numbers that its result follows
/// from.
class LocalLines : public CalculationLines {
public:
    /// Borrowed.
    explicit LocalLines(const MemberModel& model) : m_model(model), m_fmt(model.format) {}

    /// Each adds the lines of its rule, none where the rule does not apply there.
    void Class(const PositionResult& p);
    void Tension(const PositionResult& p);
    void EccentricTie(const PositionResult& p);
    void Compression(const PositionResult& p);
    void ShearMajor(const PositionResult& p);
    void ShearMinor(const PositionResult& p);
    void ShearBuckling(const PositionResult& p, Axis direction);
    void PrincipalMoments(const PositionResult& p);
    void Moment(const PositionResult& p, Axis axis);
    void Combined(const PositionResult& p);
    void WebBearing(const WebLoadResult& w);
    void WebBuckling(const WebLoadResult& w);

    /// All that a position shows, in the order of the text.
    void All(const PositionResult& p);
    /// The lines that the entry of a rule rests on.
    void OfRule(const LedgerEntry& e, const PositionResult& p);

private:
    struct Bending;
    void Element(const ElementClass& e);
    CString Ratio(double effect, double resistance) const;
    Bending BendingOf(const PositionResult& p, Axis axis) const;
    void Capacity(const Bending& b);
    void HighShear(const Bending& b, double rho);
    void FlangesOnly(const Bending& b, const Classification& c);
    void MoreExact(const PositionResult& p);
    void OneAction(const PositionResult& p);
    double EffectiveTieArea() const;
    CString Spread(const WebLoadResult& w) const;

    const MemberModel& m_model;
    const CDesFormat& m_fmt;
};

} // namespace Keltrix::BS5950
