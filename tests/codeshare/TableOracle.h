#pragma once

// The two effective-length tables stated a second time: on copies of the restraints, with the public operations only,
// row by row, as plain and slow as they read.

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <string>

#include "keltrix/steel/CodeShare.h"
#include "support/ResultRecord.h"

namespace Keltrix::Steel::Test {

using Direction = CCodeShare::LT_BuckleDirection;

inline constexpr unsigned int torsion = 0x40;
inline constexpr unsigned int torsionPart = 0x80;
inline constexpr unsigned int torsionFriction = 0x100;
inline constexpr unsigned int compLateral = 0x200;
inline constexpr unsigned int tensLateral = 0x400;
inline constexpr unsigned int compWarping = 0x800;
inline constexpr unsigned int tensWarping = 0x1000;
inline constexpr unsigned int compWarpingPart = 0x2000;
inline constexpr unsigned int tensWarpingPart = 0x4000;
inline constexpr unsigned int minorShear = 0x100000;

/// Every bit that a rule tests or from which one of those can follow.
inline constexpr std::array<unsigned int, 17> tableBits = {torsionPart,
                                                           compLateral,
                                                           tensLateral,
                                                           compWarping,
                                                           tensWarping,
                                                           compWarpingPart,
                                                           tensWarpingPart,
                                                           torsionFriction,
                                                           minorShear,
                                                           torsion,
                                                           0x1,
                                                           0x2,
                                                           0x4,
                                                           0x8,
                                                           0x10,
                                                           0x20,
                                                           0x10000};

inline unsigned int SpreadOverTableBits(unsigned int combination)
{
    unsigned int bits = 0;
    for (std::size_t i = 0; i < tableBits.size(); ++i)
        if ((combination >> i & 1u) != 0) bits |= tableBits[i];
    return bits;
}

inline CRestraint Held(unsigned int bits) { return CRestraint(static_cast<int>(bits), Data::SHR_CENTRE, 0.0); }

/// An end of the row 1.0 L of Table 13.
inline const CRestraint nominal = Held(compLateral);

inline constexpr Direction flange1 = CCodeShare::LT_COMP_FLANGE1;

/// What stands in front of each finding of Table 13.
inline const std::string clause13 = "<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i> condition: ";

inline CRestraint HeldWithMoment(unsigned int bits, double momentY, bool useMomentSign = true)
{
    CRestraint restraint = Held(bits);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, momentY, 5.0}, useMomentSign);
    return restraint;
}

inline bool UsesMomentSign(const CRestraint& restraint)
{
    Vec3<double> force;
    Vec3<double> moment;
    bool use = false;
    restraint.GetForcesAndMoments(force, moment, use);
    return use;
}

inline double MomentY(const CRestraint& restraint)
{
    Vec3<double> force;
    Vec3<double> moment;
    bool use = false;
    restraint.GetForcesAndMoments(force, moment, use);
    return moment.y;
}

/// The closed working copy on which a rule asks its questions.
class WorkingCopy {
public:
    WorkingCopy(const CRestraint& given, Direction dir, bool useMomentSign) : m_copy(given)
    {
        Vec3<double> force;
        Vec3<double> moment;
        bool ignored = false;
        given.GetForcesAndMoments(force, moment, ignored);
        if (static_cast<int>(dir) == 0) moment.y = -1.0;
        if (static_cast<int>(dir) == 1) moment.y = 1.0;
        m_copy.SetForcesAndMoments(force, moment, useMomentSign);
        m_copy.MakeConsistent();
    }
    bool Has(unsigned int bits) const { return m_copy.IsRestrained(bits, false); }

private:
    CRestraint m_copy;
};

/// A row: the length and the label of the column used. No row: infinite and "?".
struct Row {
    double length = infinity;
    std::string label = "?";
};

inline Row Table13Row(double L, double D, Direction dir, const CRestraint& restraint, bool destabilizing,
                      bool nominalRejected)
{
    const WorkingCopy R(restraint, dir, UsesMomentSign(restraint));
    const auto row = [&](double normal, double high, const char* normalLabel, const char* highLabel) {
        return destabilizing ? Row{high, highLabel} : Row{normal, normalLabel};
    };
    if (R.Has(torsionPart | compLateral)) {
        if (R.Has(compWarping | tensWarping)) return row(0.7 * L, 0.85 * L, "0.7L(normal)", "0.85L(destabilizing)");
        if (R.Has(compWarping)) return row(0.75 * L, 0.9 * L, "0.75L(normal)", "0.9L(destabilizing)");
        if (R.Has(compWarpingPart | tensWarpingPart))
            return row(0.8 * L, 0.95 * L, "0.8L(normal)", "0.95L(destabilizing)");
        if (R.Has(compWarpingPart)) return row(0.85 * L, 1.0 * L, "0.85L(normal)", "1.0L(destabilizing)");
        return row(1.0 * L, 1.2 * L, "1.0L(normal)", "1.2L(destabilizing)");
    }
    const bool laterallyHeld = R.Has(tensLateral) || R.Has(minorShear) || R.Has(compLateral);
    if (R.Has(torsionPart) && laterallyHeld)
        return row(1.0 * L + 2.0 * D, 1.2 * L + 2.0 * D, "1.0L+2D(normal)", "1.2L+2D(destabilizing)");
    if (R.Has(torsionFriction) && laterallyHeld)
        return row(1.2 * L + 2.0 * D, 1.4 * L + 2.0 * D, "1.2L+2D(normal)", "1.4L+2D(destabilizing)");
    if (R.Has(compLateral) && !nominalRejected) return row(1.0 * L, 1.2 * L, "1.0L(normal)", "1.2L(destabilizing)");
    return {};
}

inline void FailLateralTorsional(CMemberResult& result)
{
    result.SetUtilBucklingLT(infinity);
    result.SetFlags(result.GetFlags() | 0x127);
}

/// One end of Table 13, written into the result.
inline double Table13(CMemberResult* result, double L, double D, Direction dir, const CRestraint& restraint,
                      bool destabilizing, bool nominalRejected)
{
    const Row row = Table13Row(L, D, dir, restraint, destabilizing, nominalRejected);
    if (result == nullptr) return row.length;
    result->AddOutputString(Wide("<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i> condition: " + row.label + "\n"));
    if (row.label == "?") FailLateralTorsional(*result);
    return row.length;
}

/// Both ends of Table 13: two scratch records, merged.
inline double Table13(CMemberResult* result, double L, double D, Direction dir, const CRestraint& end1,
                      const CRestraint& end2, bool destabilizing, bool nominalRejected1, bool nominalRejected2)
{
    CMemberResult first;
    CMemberResult second;
    if (result != nullptr) {
        first = *result;
        first.ClearStrings();
        second = first;
    }
    const double length1 = Table13(&first, L, D, dir, end1, destabilizing, nominalRejected1);
    const double length2 = Table13(&second, L, D, dir, end2, destabilizing, nominalRejected2);
    if (result != nullptr) *result = first == second ? *result + first : *result + (first + second);
    return std::isfinite(length1) && std::isfinite(length2) ? (length1 + length2) * 0.5 : infinity;
}

/// A cantilever of Table 14, written into the result.
inline double Table14(CMemberResult* result, double L, Direction dir, const CRestraint& support, const CRestraint& tip,
                      bool destabilizing)
{
    // The tip's own use of the moment sign rules both ends: kept for compatibility.
    const bool use = UsesMomentSign(tip);
    const WorkingCopy S(support, dir, use);
    const WorkingCopy T(tip, dir, use);
    char letter = '?';
    if (S.Has(minorShear | tensWarping | compWarping | torsion))
        letter = 'd';
    else if (S.Has(minorShear | torsion))
        letter = 'c';
    else if (S.Has(torsionPart | compLateral) || S.Has(torsionPart | tensLateral))
        letter = 'b';
    else if (S.Has(tensLateral))
        letter = 'a';
    char digit = '1';
    if (T.Has(torsion | compLateral) || T.Has(torsion | tensLateral))
        digit = '4';
    else if (T.Has(torsion))
        digit = '3';
    else if (T.Has(tensLateral))
        digit = '2';

    static constexpr double normal[4][4] = {
        {3.0, 2.7, 2.4, 2.1}, {2.0, 1.8, 1.6, 1.4}, {1.0, 0.9, 0.8, 0.7}, {0.8, 0.7, 0.6, 0.5}};
    static constexpr double high[4][4] = {
        {7.5, 7.5, 4.5, 3.6}, {5.0, 5.0, 3.0, 2.4}, {2.5, 2.5, 1.5, 1.2}, {1.4, 1.4, 0.6, 0.5}};
    double k = infinity;
    if (letter != '?') k = (destabilizing ? high : normal)[letter - 'a'][digit - '1'];
    // No row: infinite whatever the length, a zero length included.
    double length = letter == '?' ? infinity : k * L;
    const bool tipMoment = std::abs(MomentY(tip)) >= 1.0;
    if (tipMoment && letter != '?') length = std::max(length + 0.3 * L, 1.3 * length);
    if (result == nullptr) return length;
    result->AddOutputString(Wide(std::string("<i>BS5950-1:2000 Table 14</i> condition: ") + letter + digit +
                                 (destabilizing ? " (destabilizing) " : " ") + Utf8(result->DesFormat().NoDim(k)) +
                                 "*L\n"));
    if (tipMoment) {
        result->AddOutputString(L"Le increased due to tip moment:");
        result->AddOutputString(L" <i>BS5950-1:2000 cl. 4.3.5.4</i>\n");
    }
    if (!std::isfinite(k)) FailLateralTorsional(*result);
    return length;
}

inline std::string Show(const CRestraint& r)
{
    std::ostringstream out;
    out << "0x" << std::hex << r.RestFlag() << std::dec << " moment y " << MomentY(r) << " sign " << UsesMomentSign(r);
    return out.str();
}

/// Same number, not-a-number included.
inline bool SameLength(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// A restraint as the rules may meet it: any of their bits, with or without forces, either sign of the moment.
inline CRestraint RandomRestraint(Random& random)
{
    unsigned int bits = 0;
    const int density = Pick(random, 1, 4);
    for (const unsigned int bit : tableBits)
        if (Pick(random, 0, 5) < density) bits |= bit;
    if (Pick(random, 0, 5) == 0) bits = 0;
    CRestraint restraint = Held(bits);
    static constexpr std::array<double, 9> moments = {0.0, -5.0, 5.0,   0.999999,  -0.999999,
                                                      1.0, -1.0, 2.5e4, notANumber};
    const double momentY = moments[static_cast<std::size_t>(Pick(random, 0, 8))];
    const bool useMomentSign = Pick(random, 0, 1) == 0;
    if (Pick(random, 0, 2) != 0) restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, momentY, 6.0}, useMomentSign);
    return restraint;
}

inline Direction RandomDirection(Random& random)
{
    static constexpr std::array<int, 6> values = {0, 1, 2, 3, 7, -1};
    return static_cast<Direction>(values[static_cast<std::size_t>(Pick(random, 0, 5))]);
}

} // namespace Keltrix::Steel::Test
