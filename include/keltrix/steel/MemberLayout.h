#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/Vec3.h"
#include "keltrix/steel/Export.h"
#include "keltrix/steel/Restraint.h"

namespace Keltrix::Steel {

using Data::BOT_FLANGE;
using Data::CRestraint;
using Data::LoadPos;
using Data::LoadPosID;
using Data::LoadPosString;
using Data::SHR_CENTRE;
using Data::TOP_FLANGE;

/// An index moved by an offset; wraps around at the ends of int, so that any index read from a file is harmless.
constexpr int Shifted(int index, int by)
{
    return static_cast<int>(static_cast<unsigned int>(index) + static_cast<unsigned int>(by));
}

/// A numbered point along a member at which a restraint is defined: a support, a brace, an intermediate restraint.
/// Sub-span k (counted from 0) lies between the points of 1-based index k+1 and k+2.
class KELTRIX_STEEL_API CMemberPoint {
public:
    /// Index 1 at position 0, free.
    CMemberPoint() = default;

    /// Position along the member from its first end, m.
    void SetPos(double metres) { m_dPos = metres; }
    double GetPos() const { return m_dPos; }
    /// Number of the point, counted from 1.
    void Set1Index(int index) { m_i1Index = index; }
    int Get1Index() const { return m_i1Index; }
    /// Place in the member point vector, counted from 0.
    int CMPIndex() const { return Shifted(m_i1Index, -1); }
    /// Place of the sub-span to the left, -1 for the first point.
    int IndexCSSLeft() const { return Shifted(m_i1Index, -2); }
    /// Place of the sub-span to the right.
    int IndexCSSRight() const { return Shifted(m_i1Index, -1); }
    void SetRestraint(const CRestraint& restraint) { m_restraint = restraint; }
    CRestraint GetRestraint() const { return m_restraint; }

    /// Report text: number, position and what is held, the body indented by one tab.
    CString GetString(const CDesFormat& fmt) const;
    /// Caption of the lines that CSVLineOut writes.
    static CString CSVTitleLine();
    /// "index,position,restraint,load height\n". The third field is text although its caption says "int": kept, since
    /// the reader takes both.
    CString CSVLineOut() const;
    /// Reads such a line, consuming it. The restraint is a description or, where it is none, a number of restraint
    /// bits. The load height is read in single precision (kept for compatibility).
    void CSVLineIn(CString& line);

    /// Order by number, not by position.
    bool operator<(const CMemberPoint& other) const { return m_i1Index < other.m_i1Index; }
    /// Same number and exactly the same position. Restraints take no part (kept for compatibility).
    bool operator==(const CMemberPoint& other) const { return m_i1Index == other.m_i1Index && m_dPos == other.m_dPos; }

private:
    double m_dPos = 0.0;
    CRestraint m_restraint;
    int m_i1Index = 1;
};

/// The piece of a member between two consecutive member points: forces (N) and moments (N·m) at its two ends in the
/// host's element axes, and the restraint that acts along it. Myy (y) is the major-axis moment, Mzz (z) the
/// minor-axis moment.
class KELTRIX_STEEL_API CSubSpan {
public:
    /// Index 1, no forces or moments, free.
    CSubSpan() = default;
    void Clear() { *this = CSubSpan(); }

    /// Number of the sub-span, counted from 1.
    void Set1Index(int index) { m_i1Index = index; }
    int Get1Index() const { return m_i1Index; }
    /// Place in the sub-span vector, counted from 0.
    int IndexCSS() const { return Shifted(m_i1Index, -1); }
    /// Places of the end points in the member point vector, counted from 0.
    int IndexCMPLeft() const { return Shifted(m_i1Index, -1); }
    int IndexCMPRight() const { return m_i1Index; }

    void SetForcesAll(const Vec3<double>& left, const Vec3<double>& right)
    {
        m_vForceL = left;
        m_vForceR = right;
    }
    void SetMomentsAll(const Vec3<double>& left, const Vec3<double>& right)
    {
        m_vMomentL = left;
        m_vMomentR = right;
    }
    void SetForcesLeft(const Vec3<double>& force) { m_vForceL = force; }
    void SetForcesRight(const Vec3<double>& force) { m_vForceR = force; }
    void SetMomentsLeft(const Vec3<double>& moment) { m_vMomentL = moment; }
    void SetMomentsRight(const Vec3<double>& moment) { m_vMomentR = moment; }
    Vec3<double> GetForcesLeft() const { return m_vForceL; }
    Vec3<double> GetForcesRight() const { return m_vForceR; }
    Vec3<double> GetMomentsLeft() const { return m_vMomentL; }
    Vec3<double> GetMomentsRight() const { return m_vMomentR; }
    void SetRestraint(const CRestraint& restraint) { m_restraint = restraint; }
    CRestraint GetRestraint() const { return m_restraint; }

    /// Report text: number, forces and moments of both ends and what is held, the body indented by one tab.
    CString GetString(const CDesFormat& fmt) const;
    /// Caption of the lines that CSVLineOut writes.
    static CString CSVTitleLine();
    /// Fifteen fields: index, forces left and right, moments left and right, restraint, load height; six significant
    /// digits.
    CString CSVLineOut() const;
    /// Reads such a line from a copy, so the caller's is not consumed. Restraint and load height as for member points.
    void CSVLineIn(CString line);

    /// Envelope of forces and moments, component by component: a record of index 1 without restraint, no real sub-span.
    static CSubSpan Max(const CSubSpan& a, const CSubSpan& b);
    static CSubSpan Min(const CSubSpan& a, const CSubSpan& b);
    /// The larger (smaller) of each component; a's on a tie and where either is not-a-number.
    static Vec3<double> Max(const Vec3<double>& a, const Vec3<double>& b);
    static Vec3<double> Min(const Vec3<double>& a, const Vec3<double>& b);

    /// Order by number.
    bool operator<(const CSubSpan& other) const { return m_i1Index < other.m_i1Index; }
    /// Same number, equal restraints (which tolerates load heights), exactly equal forces and moments.
    bool operator==(const CSubSpan& other) const;

private:
    int m_i1Index = 1;
    Vec3<double> m_vForceL{0.0, 0.0, 0.0};
    Vec3<double> m_vForceR{0.0, 0.0, 0.0};
    Vec3<double> m_vMomentL{0.0, 0.0, 0.0};
    Vec3<double> m_vMomentR{0.0, 0.0, 0.0};
    CRestraint m_restraint;
};

/// View of the stretch of a member between two member points. It borrows the member's two vectors, which must stay
/// alive and keep their size. Point and sub-span places count from 0; the span from point L to point R has sub-spans
/// L to R-1.
///
/// Unless said otherwise an operation needs a valid span (IsValid) whose sub-spans exist. None reports an error.
/// Every query costs time linear in the number of sub-spans of the span and copies no vector.
class KELTRIX_STEEL_API CSpan {
public:
    CSpan(const std::vector<CMemberPoint>* points, const std::vector<CSubSpan>* subSpans, int left, int right) :
        m_iLeft(left), m_iRight(right), m_pPoints(points), m_pSubSpans(subSpans)
    {}
    CSpan(const CSpan&) = default;
    CSpan& operator=(const CSpan&) = default;
    virtual ~CSpan();

    /// Same two places and the same two vectors (by address, not by content).
    bool operator==(const CSpan& other) const;
    bool operator!=(const CSpan& other) const { return !(*this == other); }

    /// Marks the absence of a span: both places 0.
    void SetNull();
    bool IsNull() const { return m_iLeft == 0 && m_iRight == 0; }
    /// Both vectors given, left not after right (compared as unsigned), right inside the points. Sub-spans are not
    /// counted.
    bool IsValid() const;

    /// A negative place is ignored by the setters.
    void SetCMPIndexLeft(int i);
    void SetCMPIndexRight(int i);
    int GetCMPIndexLeft() const { return m_iLeft; }
    int GetCMPIndexRight() const { return m_iRight; }
    /// Places of the first and the last sub-span.
    int GetCSSIndexLeft() const { return m_iLeft; }
    int GetCSSIndexRight() const { return m_iRight - 1; }
    int NumSubSpans() const { return m_iRight - m_iLeft; }

    /// Positions along the member and the length between them, m.
    double PosLeft() const { return Pos(m_iLeft); }
    double PosRight() const { return Pos(m_iRight); }
    double Length() const { return PosRight() - PosLeft(); }
    /// (1 - t) PosLeft + t PosRight for any t.
    double InterpolatePosition(double t) const { return (1.0 - t) * PosLeft() + t * PosRight(); }
    /// Whether the span starts (ends) where the member does; false for a null span.
    bool IsLEndOfMember() const;
    bool IsREndOfMember() const;
    /// "left to right = length".
    CString GetString(const CDesFormat& fmt) const;

    /// The restraint of an end point, with the forces and moments of the adjoining sub-span end and the use of the
    /// moment sign.
    CRestraint RestraintEndL() const;
    CRestraint RestraintEndR() const;
    /// Whether any point (both ends included) or sub-span has a load height above zero.
    bool IsDestabilized() const;
    /// One restraint that stands for the whole span: bits common to the first and the last sub-span (those between
    /// take no part, kept for compatibility), the mean forces and moments, and the load height of largest magnitude
    /// with its reference, in single precision (kept). The moment sign is not used when the major-axis moment
    /// reverses: largest at or above and smallest at or below a tolerance of 1 N·m or 1 % of the larger.
    CRestraint ContinuousRestraint() const;

    /// Envelope over the sub-spans of the span, component by component, at left ends and at right ends.
    CSubSpan MaxForces() const;
    CSubSpan MinForces() const;
    /// Forces (moments) at the relative position t, 0 <= t <= 1: exact end values at 0 and 1, the mean of both sides
    /// on an inner point, linear in between. Outside, or where rounding leaves the span, values of a neighbour may
    /// enter; nothing outside the vectors is read.
    Vec3<double> InterpolateForces(double t) const;
    Vec3<double> InterpolateMoments(double t) const;

    // Load patterns, read off the jumps and slopes of the end forces and moments. Two forces differ when they are
    // apart by 1 N and 0.1 % of the reference, or, where the whole vector is looked at, by more than 0.1 % in any
    // component. A span of one sub-span returns false, except where noted.

    /// Fz (Fy) changes along a sub-span or jumps between two.
    bool IsMinorAxisLoaded() const;
    bool IsMajorAxisLoaded() const;
    /// Any force component changes, axial force included. `singleSubSpan` looks at a single sub-span too.
    bool IsLoaded(bool singleSubSpan) const;
    /// Forces jump at a joint or over a sub-span shorter than 1 mm.
    bool IsLoadedWithPointLoad() const;
    /// No moment at the left (right) end, the far moment is shear times length to 5 %, and between sub-spans neither Fz
    /// jumps nor Myy differs from left end to left end. That the moments of left ends are compared makes tip loads go
    /// unseen on three and more sub-spans (two, at the right); the two tests look at different joints and have different
    /// signs: all of this is kept.
    bool IsLeftEndPtLoadOnly() const;
    bool IsRightEndPtLoadOnly() const;
    /// End moments equal to 5 % of the right (left) one; a zero reference gives false, or true when both are zero.
    /// Any number of sub-spans.
    bool IsLeftEndMomentLoadOnly() const;
    bool IsRightEndMomentLoadOnly() const;
    /// True for an end moment of at most 100 N·m: the sense is the opposite of the name and is kept, callers rely on
    /// it. Any number of sub-spans.
    bool IsLeftEndMomentLoaded() const;
    bool IsRightEndMomentLoaded() const;
    /// Every jump of the forces lies at half the span's length measured from the member's start, not from the span's
    /// left end (kept): right only for spans that start at position 0. True also without any jump or any sub-span.
    bool IsLoadedWithCentrePointLoad() const;
    /// No jump of Fz and the same slope everywhere. The slope is compared with the tolerance of a force (kept).
    /// True also where Fz does not change, or without any sub-span.
    bool IsLoadedWithUDL() const;

    // Deflection from the chord of the span, m, by the moment-area method with moments linear along each sub-span: XX
    // by the minor-axis moment Mzz, YY by the major-axis moment Myy. modulus x inertia is the stiffness EI, N·m². 0.0
    // for a span of one sub-span or none.
    // Kept for compatibility: lever arms use positions from the member's start, so results are those of mechanics only
    // for spans that start at position 0; and in a sub-span whose moments are not of one sign at both ends the second
    // triangle's centroid is placed by the length of the first, which is exact only where both have the same length or
    // the second has none. A sub-span with no moment at either end makes the result not-a-number, as does a stiffness
    // of zero.

    /// Largest deflection over the span's points. After a not-a-number candidate the next one replaces it.
    double MaxDispXX(double modulus, double inertia) const;
    double MaxDispYY(double modulus, double inertia) const;
    /// Deflection at a position along the member, between points linear. 0.0 beyond the right end. leftEnd and
    /// rightEnd take off the moment at the respective end; both read the left end's moment (kept).
    double DispXX(double pos, double modulus, double inertia, bool leftEnd, bool rightEnd) const;
    double DispYY(double pos, double modulus, double inertia, bool leftEnd, bool rightEnd) const;

private:
    const CMemberPoint& Point(int i) const { return (*m_pPoints)[static_cast<std::size_t>(i)]; }
    const CSubSpan& SubSpan(int i) const { return (*m_pSubSpans)[static_cast<std::size_t>(i)]; }
    double Pos(int i) const { return Point(i).GetPos(); }

    int m_iLeft;
    int m_iRight;
    const std::vector<CMemberPoint>* m_pPoints;
    const std::vector<CSubSpan>* m_pSubSpans;
};

/// Effective lengths that a code module worked out for runs of sub-spans, by buckling mode. The library neither fills
/// nor reads it; the keys are the code module's.
class KELTRIX_STEEL_API SubspanEffectiveLengthData {
public:
    /// One run of sub-spans. Values are kept unchecked.
    class KELTRIX_STEEL_API Entry {
    public:
        /// First and last sub-span of the run; positions, effective length and radius of gyration in m.
        Entry(std::size_t subspanStart, std::size_t subspanEnd, double startPosition, double endPosition,
              double effectiveLength, double radiusOfGyration) :
            m_uSubspanStart(subspanStart),
            m_uSubspanEnd(subspanEnd), m_dStartPosition(startPosition), m_dEndPosition(endPosition),
            m_dEffectiveLength(effectiveLength), m_dRadiusOfGyration(radiusOfGyration)
        {}

        std::size_t GetSubspanStartIndex() const { return m_uSubspanStart; }
        std::size_t GetSubspanEndIndex() const { return m_uSubspanEnd; }
        double GetStartPosition() const { return m_dStartPosition; }
        double GetEndPosition() const { return m_dEndPosition; }
        double GetEffectiveLength() const { return m_dEffectiveLength; }
        double GetRadiusOfGyration() const { return m_dRadiusOfGyration; }
        /// End less start position; negative when they are given the other way round.
        double GetSpanLength() const { return m_dEndPosition - m_dStartPosition; }
        /// Effective length over radius of gyration; infinite or not-a-number for a zero radius.
        double GetSlendernessRatio() const { return m_dEffectiveLength / m_dRadiusOfGyration; }

        /// Exact equality of all six values.
        bool operator==(const Entry&) const = default;

    private:
        std::size_t m_uSubspanStart;
        std::size_t m_uSubspanEnd;
        double m_dStartPosition;
        double m_dEndPosition;
        double m_dEffectiveLength;
        double m_dRadiusOfGyration;
    };

    SubspanEffectiveLengthData(std::map<int, Entry> majorAxis, std::map<int, Entry> minorAxis,
                               std::map<int, Entry> lateralTorsional) :
        m_majorAxis(std::move(majorAxis)),
        m_minorAxis(std::move(minorAxis)), m_lateralTorsional(std::move(lateralTorsional))
    {}
    SubspanEffectiveLengthData(const SubspanEffectiveLengthData&) = default;
    SubspanEffectiveLengthData(SubspanEffectiveLengthData&&) = default;
    SubspanEffectiveLengthData& operator=(const SubspanEffectiveLengthData&) = default;
    /// Assignment to itself changes nothing.
    SubspanEffectiveLengthData& operator=(SubspanEffectiveLengthData&& other) noexcept;
    ~SubspanEffectiveLengthData() = default;

    const std::map<int, Entry>& GetMajorAxisEntries() const { return m_majorAxis; }
    const std::map<int, Entry>& GetMinorAxisEntries() const { return m_minorAxis; }
    const std::map<int, Entry>& GetLateralTorsionalEntries() const { return m_lateralTorsional; }

private:
    std::map<int, Entry> m_majorAxis;
    std::map<int, Entry> m_minorAxis;
    std::map<int, Entry> m_lateralTorsional;
};

} // namespace Keltrix::Steel
