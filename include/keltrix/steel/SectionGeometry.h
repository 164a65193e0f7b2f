#pragma once

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/Vec3.h"
#include "keltrix/steel/Export.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/Restraint.h"

namespace Keltrix::Steel {

using Data::CRestraint;

/// Root of the section geometry: what can be copied through a base pointer.
class KELTRIX_STEEL_API CCloneableGeom {
public:
    /// A new copy of the most derived object, owned by the caller: put it into a std::unique_ptr at once.
    virtual CCloneableGeom* Clone() const = 0;
    // Comes after Clone: derived classes count their virtual operations on from here.
    virtual ~CCloneableGeom();

    CCloneableGeom& operator=(const CCloneableGeom&) { return *this; }
    CCloneableGeom& operator=(CCloneableGeom&&) noexcept { return *this; }

protected:
    CCloneableGeom() = default;
    CCloneableGeom(const CCloneableGeom&) {}
    CCloneableGeom(CCloneableGeom&&) noexcept {}
};

/// Section geometry that a design code needs: the plate dimensions of one standard shape, and its properties by
/// closed formulas. Dimensions and properties are in the length unit of the host's section (m, m², m³, m⁴, m⁶); x is
/// the major, horizontal axis and y the minor, vertical one. Properties are computed at every call and nothing is
/// cached. Formulas are not guarded against zero dimensions.
///
/// A code module derives its own class from a shape class, implements Clone, and fills it with SetKeltrixSec.
class KELTRIX_STEEL_API CDesSectGeom : public CCloneableGeom {
public:
    CDesSectGeom* Clone() const override = 0;
    ~CDesSectGeom() override;
    CDesSectGeom(const CDesSectGeom&) = default;
    CDesSectGeom& operator=(const CDesSectGeom&) = default;
    /// Takes the dimensions from component 0 of the section and says whether the shape covers it. Departures from
    /// what the shape can represent go to the result, which may be null, as warning text and the flags WARNING and
    /// NOTIFY. The body here takes fabrication and plate type, and returns true; every shape class calls it.
    virtual bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) = 0;
    /// Gross area.
    virtual double Area() const = 0;
    /// Height of the elastic centroid above the bottom edge; 0 for hollow sections, whose properties are about the
    /// centre.
    virtual double Ybar() const = 0;
    /// Distance of the elastic centroid from the left (back) edge; 0 for shapes symmetric about y.
    virtual double Xbar() const = 0;
    /// Second moments of area about the centroidal axes, and their product moment (0 except for the angle).
    virtual double Ixx() const = 0;
    virtual double Iyy() const = 0;
    virtual double Ixy() const = 0;
    /// Plastic moduli.
    virtual double Sxx() const = 0;
    virtual double Syy() const = 0;
    /// Elastic moduli: second moment over the largest distance from the centroid to an extreme fibre.
    virtual double Zxx() const = 0;
    virtual double Zyy() const = 0;
    /// St Venant torsion constant.
    virtual double J() const = 0;
    /// The way it is made, the shape and its dimensions, one tab-led line each.
    virtual CString SectGeomString(const CDesFormat& fmt) = 0;
    /// Fabrication kinds 0 and 3. Kinds 4 and 5 are not, although their text says "Welded": kept for compatibility.
    virtual bool IsWelded() const;

protected:
    CDesSectGeom() = default;

    /// "Hot rolled ", "Cold formed " or, for every other kind, "Welded ".
    CString FabricationText() const;
    /// How the section is made: 0 welded, 1 hot rolled, 2 cold formed, 3 and 4 further kinds, 5 not yet set.
    int FabType() const { return m_iFabType; }
    int PlateTypeCode() const { return m_iPlateType; }
    /// The shape code of component 0 of a section.
    static int ShapeCode(const CSection& sec);

    // State for the code modules; the library itself reads the first only.
    int m_iFabType = 5;
    int m_iPlateType = 0;
};

/// I section of one or two flange sizes: two flanges, a web and four equal root fillets. Heights are measured
/// from the outer face of flange 2 (bottom) unless an operation says otherwise.
class KELTRIX_STEEL_API CDesSectGeomI : public CDesSectGeom {
public:
    CDesSectGeomI(const CDesSectGeomI&) = default;
    CDesSectGeomI& operator=(const CDesSectGeomI&) = default;

    /// False, touching nothing, unless the shape is an I or a general I.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;
    /// Warping constant.
    virtual double Gamma() const;
    /// Turns the section upside down: flanges 1 and 2 change places.
    virtual void MirrorXX();
    /// Whether both flanges are exactly equal.
    virtual bool IsXXSymmetric() const;
    /// Equal-area axis for bending about x. In a flange it is measured from the outer face of flange 2, in the web
    /// from that of flange 1: kept for compatibility, Sxx is written to match.
    virtual double YbarPlastic() const;

protected:
    CDesSectGeomI() = default;

private:
    double m_dD = 0.0;
    double m_dTw = 0.0;
    double m_dT1 = 0.0;
    double m_dT2 = 0.0;
    double m_dB1 = 0.0;
    double m_dB2 = 0.0;
    double m_dR = 0.0;
};

/// Parallel-flange channel: a web at the back, two flanges, two root fillets and two toe roundings at the inner
/// corners of the flange tips. x is measured from the back of the web, y from the outer face of flange 2.
class KELTRIX_STEEL_API CDesSectGeomPFC : public CDesSectGeom {
public:
    CDesSectGeomPFC(const CDesSectGeomPFC&) = default;
    CDesSectGeomPFC& operator=(const CDesSectGeomPFC&) = default;

    /// False, touching nothing, unless the shape is a channel.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;
    /// Equal-area axis for bending about x, by the I section's rule.
    virtual double YbarPlastic() const;
    /// Equal-area axis for bending about y, from the back of the web.
    virtual double XbarPlastic() const;
    /// Warping constant.
    virtual double Iw() const;

protected:
    CDesSectGeomPFC() = default;

private:
    double m_dD = 0.0;
    double m_dTw = 0.0;
    double m_dT1 = 0.0;
    double m_dT2 = 0.0;
    double m_dB1 = 0.0;
    double m_dB2 = 0.0;
    double m_dR = 0.0;
    double m_dRt = 0.0;
};

/// T section: a flange at the top, a stem below it, two root fillets, and two toe roundings under the flange tips. y is
/// measured upwards from the stem's tip unless an operation says otherwise.
class KELTRIX_STEEL_API CDesSectGeomT : public CDesSectGeom {
public:
    CDesSectGeomT(const CDesSectGeomT&) = default;
    CDesSectGeomT& operator=(const CDesSectGeomT&) = default;

    /// False, touching nothing, unless the shape is a T.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;
    /// Warping constant.
    virtual double Iw() const;
    /// Monosymmetry property for lateral-torsional buckling.
    virtual double MonoSymBeta() const;

protected:
    CDesSectGeomT() = default;

    /// Equal-area axis for bending about x: in the flange measured from the stem's tip, in the stem from the top of the
    /// flange. Kept for compatibility, Sxx is written to match.
    virtual double YbarPlastic() const;

private:
    double m_dD = 0.0;
    double m_dTw = 0.0;
    double m_dTf = 0.0;
    double m_dB = 0.0;
    double m_dR = 0.0;
    double m_dRt = 0.0;
};

/// Angle with two legs of one thickness, a root fillet and a toe rounding at each leg's tip. The heel is the origin,
/// x runs along the horizontal leg and y up the vertical one.
class KELTRIX_STEEL_API CDesSectGeomAngle : public CDesSectGeom {
public:
    CDesSectGeomAngle(const CDesSectGeomAngle&) = default;
    CDesSectGeomAngle& operator=(const CDesSectGeomAngle&) = default;

    /// Always true. Another shape leaves the dimensions as they are; two thicknesses give the smaller, with a warning.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;
    /// Principal second moments, u major and v minor.
    virtual double Iuu() const;
    virtual double Ivv() const;
    /// Angle from the x axis to the u axis, radians.
    ///
    /// Hazard: it is 45° wherever |Ixx - Iyy| < 1e-6 in the fourth power of the host's length unit. In metres that is
    /// 100 cm⁴, so that every unequal angle from about 100x75x8 down gets 45° where L 60x30x5 lies at 14.3°, with Zuu
    /// up to 22 % too large. The rule is required of this base; concrete angles override it with a rule relative to
    /// Ixx + Iyy.
    virtual double Alpha() const;
    /// Elastic and plastic moduli about the principal axes.
    virtual double Zuu() const;
    virtual double Zvv() const;
    virtual double Suu() const;
    virtual double Svv() const;
    /// Height of the equal-area axis parallel to x.
    virtual double YbarPlastic() const;

    double GetDepth() const { return m_dDepth; }
    double GetWidth() const { return m_dWidth; }
    double GetThickness() const { return m_dThickness; }
    double GetRootRadius() const { return m_dRootRadius; }
    double GetToeRadius() const { return m_dToeRadius; }

protected:
    CDesSectGeomAngle() = default;

    /// Mirrors the angle about its 45° line: the legs change places.
    virtual void Reflect45();

    void SetDepth(double metres) { m_dDepth = metres; }
    void SetWidth(double metres) { m_dWidth = metres; }
    void SetThickness(double metres) { m_dThickness = metres; }
    void SetRootRadius(double metres) { m_dRootRadius = metres; }
    void SetToeRadius(double metres) { m_dToeRadius = metres; }

private:
    double m_dDepth = 0.0;
    double m_dWidth = 0.0;
    double m_dThickness = 0.0;
    double m_dRootRadius = 0.0;
    double m_dToeRadius = 0.0;
};

/// Rectangular or square hollow section. Corner radii follow from fabrication and thickness, not from the host.
class KELTRIX_STEEL_API CDesSectGeomRHS : public CDesSectGeom {
public:
    CDesSectGeomRHS(const CDesSectGeomRHS&) = default;
    CDesSectGeomRHS& operator=(const CDesSectGeomRHS&) = default;

    /// Always true. Another shape leaves the dimensions as they are; unless welded, two wall thicknesses give the
    /// smaller, with a warning.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;

protected:
    CDesSectGeomRHS() = default;

    /// Corner radii: 1.0 and 1.5 times the thickness hot rolled, 1.5 and 2.5 times cold formed, otherwise 0.
    virtual double RadiusInner() const;
    virtual double RadiusOuter() const;
    /// Depth and width, flange and web thickness change places.
    virtual void Rotate90Clockwise();

private:
    double m_dD = 0.0;
    double m_dB = 0.0;
    double m_dTf = 0.0;
    double m_dTw = 0.0;
};

/// Circular hollow section.
class KELTRIX_STEEL_API CDesSectGeomCHS : public CDesSectGeom {
public:
    CDesSectGeomCHS(const CDesSectGeomCHS&) = default;
    CDesSectGeomCHS& operator=(const CDesSectGeomCHS&) = default;

    /// Always true. Another shape leaves the dimensions as they are.
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override;
    double Area() const override;
    double Ybar() const override;
    double Xbar() const override;
    double Ixx() const override;
    double Iyy() const override;
    double Ixy() const override;
    double Sxx() const override;
    double Syy() const override;
    double Zxx() const override;
    double Zyy() const override;
    double J() const override;
    CString SectGeomString(const CDesFormat& fmt) override;

protected:
    CDesSectGeomCHS() = default;

private:
    double m_dD = 0.0;
    double m_dT = 0.0;
};

/// A cross-section under design: section, grade, forces and moments, design ratios, fire data and the member's
/// restraint at it. Forces in N, moments in N·m, temperature in °C. Derived classes add the code's checks; they are
/// notified of every change before it happens, so that they can drop what they computed.
class KELTRIX_STEEL_API CSectionCodeBase : public CCloneable {
public:
    ~CSectionCodeBase() override;
    CSectionCodeBase(const CSectionCodeBase&) = default;
    CSectionCodeBase& operator=(const CSectionCodeBase&) = default;
    /// Takes the grade and, from component 0 of the section, the net to gross ratio, beta (into all four factors) and
    /// the plastic to elastic ratio; a ratio of 0 becomes 1.2 and is marked as defaulted (the mark is never taken
    /// back). No notification. Always true.
    virtual bool SetSteelDesignProp(const CSteelGrade& grade);
    /// Called at the start of every force or moment setter.
    virtual void ForcesChanged() = 0;
    /// Called at the start of SetKeltrixSec, SetGrade and MirrorXX.
    virtual void SectionChanged() = 0;

protected:
    /// Mirrors about the major axis: the member's restraint where one was set (which empties its bits), the major-axis
    /// moment, the shear along y and the torsion.
    virtual void MirrorXX();

public:
    /// The body here takes over the section and returns true; it writes nothing to the result. Overriders call it.
    virtual bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) = 0;
    /// Section properties, as in CDesSectGeom.
    virtual double Area() const = 0;
    virtual CString SectGeomString(const CDesFormat& fmt) = 0;
    virtual double Ixx() const = 0;
    virtual double Iyy() const = 0;
    virtual double Ixy() const = 0;
    virtual double Sxx() const = 0;
    virtual double Syy() const = 0;
    virtual double Zxx() const = 0;
    virtual double Zyy() const = 0;
    virtual double J() const = 0;
    /// Class 1 to 4, 0 before a check.
    virtual int SectionClass() const = 0;
    /// Warping constant: 0.0 unless overridden.
    virtual double Gamma() const;
    /// Principal second moments, u major and v minor.
    virtual double Iuu() const;
    virtual double Ivv() const;
    /// Angle from the x axis to the u axis, radians. The hazard of CDesSectGeomAngle::Alpha applies here too.
    virtual double Alpha() const;
    virtual CSection GetKeltrixSec();

    /// From the host's element axes: axial x, shear along section x is y, shear along section y is minus z.
    void SetMemberForces(Vec3<double> force);
    /// From the host's element axes: torsion x, major-axis moment y, minor-axis moment z.
    void SetMemberMoments(Vec3<double> moment);
    void SetMomentXX(double moment);
    void SetMomentYY(double moment);
    void SetForceAxial(double force);
    void SetTorsion(double moment);
    void SetShearForceX(double force);
    void SetShearForceY(double force);
    void ClearForcesAndMoments();

    double GetMomentXX() const { return m_dMomentXX; }
    double GetMomentYY() const { return m_dMomentYY; }
    double GetForceAxial() const { return m_dForceAxial; }
    double GetTorsion() const { return m_dTorsion; }
    double GetShearX() const { return m_dShearX; }
    double GetShearY() const { return m_dShearY; }
    double GetTemperature() const { return m_dTemperature; }
    double GetExpPeriRatio() const { return m_dExpPeriRatio; }
    ExposureType GetExposureType() const { return m_eExposureType; }
    CSteelGrade GetGrade() const { return m_grade; }

    void SetGrade(const CSteelGrade& grade);
    /// No notification.
    void SetMemberRestraint(const CRestraint& restraint);

protected:
    CSectionCodeBase();

    // What derived classes read.
    double NetGross() const { return m_dNetGross; }
    double Beta1() const { return m_dBeta1; }
    double Beta2() const { return m_dBeta2; }
    double Beta3() const { return m_dBeta3; }
    double Beta4() const { return m_dBeta4; }
    double PlasElas() const { return m_dPlasElas; }
    bool PlasElasDefaulted() const { return m_bPlasElasDefaulted; }
    const CRestraint& MemberRestraint() const { return m_restraint; }
    bool MemberRestraintSet() const { return m_bRestraintSet; }

    double m_dMomentXX = 0.0;
    double m_dMomentYY = 0.0;
    double m_dForceAxial = 0.0;
    double m_dTorsion = 0.0;
    double m_dShearX = 0.0;
    double m_dShearY = 0.0;
    double m_dNetGross = 1.0;
    double m_dBeta1 = 0.7;
    double m_dBeta2 = 0.4;
    double m_dBeta3 = 0.6;
    double m_dBeta4 = 0.7;
    double m_dPlasElas = 1.2;
    bool m_bPlasElasDefaulted = false;
    double m_dTemperature = 20.0;
    double m_dExpPeriRatio = 0.0;
    ExposureType m_eExposureType = EXPOSURE_4_SIDES;
    CSteelGrade m_grade;
    CRestraint m_restraint;
    bool m_bRestraintSet = false;
    CSection m_section;
};

} // namespace Keltrix::Steel
