#pragma once

/// The floor of the section properties: the library's own formulas on plain structs of doubles.
///
/// The sources of the shapes are compiled a second time with each class name standing for a struct without virtual
/// properties, so that every formula can be inlined where it is used. Nothing is copied, and the floor cannot differ from
/// the library. Clones stay what they are, made and deleted through the base, because some of the library's properties
/// are required to be asked of one.

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <utility>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fabrication.h"
#include "section/Fillets.h"
#include "section/Powers.h"
#include "section/PrincipalAxes.h"
#include "section/TwoFlanges.h"

namespace Keltrix::Steel {

/// What the shapes have of their base. Every section of the benchmarks is hot rolled.
struct PlainSection {
    PlainSection() = default;
    PlainSection(const PlainSection&) = default;
    PlainSection& operator=(const PlainSection&) = default;
    virtual PlainSection* Clone() const = 0;
    virtual ~PlainSection() = default;
    bool SetKeltrixSec(const CSection&, CMemberResult*) { return true; }
    static CString FabricationText() { return L"Hot rolled "; }
    static int FabType() { return Fabrication::HOT_ROLLED; }
    static bool IsWelded() { return false; }
    static int ShapeCode(const CSection& sec) { return sec.Component(0).Shape() & CSecGeom::SHAPE_MASK; }
};

/// Declarations that all shapes share.
#define KELTRIX_BENCH_PLAIN_SHAPE(NAME)                                                                                \
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result);                                              \
    CString SectGeomString(const CDesFormat& fmt);                                                                     \
    NAME* Clone() const override { return new NAME(*this); }                                                           \
    double Area() const;                                                                                               \
    double Ybar() const;                                                                                               \
    double Xbar() const;                                                                                               \
    double Ixx() const;                                                                                                \
    double Iyy() const;                                                                                                \
    double Ixy() const;                                                                                                \
    double Sxx() const;                                                                                                \
    double Syy() const;                                                                                                \
    double Zxx() const;                                                                                                \
    double Zyy() const;                                                                                                \
    double J() const;

struct PlainI : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainI)
    double Gamma() const;
    void MirrorXX();
    bool IsXXSymmetric() const;
    double YbarPlastic() const;
    double m_dD, m_dTw, m_dT1, m_dT2, m_dB1, m_dB2, m_dR;
};

struct PlainPFC : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainPFC)
    double YbarPlastic() const;
    double XbarPlastic() const;
    double Iw() const;
    double m_dD, m_dTw, m_dT1, m_dT2, m_dB1, m_dB2, m_dR, m_dRt;
};

struct PlainT : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainT)
    double Iw() const;
    double MonoSymBeta() const;
    double YbarPlastic() const;
    double m_dD, m_dTw, m_dTf, m_dB, m_dR, m_dRt;
};

struct PlainAngle : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainAngle)
    double Iuu() const;
    double Ivv() const;
    double Alpha() const;
    double Zuu() const;
    double Zvv() const;
    double Suu() const;
    double Svv() const;
    double YbarPlastic() const;
    void Reflect45();
    double m_dDepth, m_dWidth, m_dThickness, m_dRootRadius, m_dToeRadius;
};

struct PlainRHS : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainRHS)
    double RadiusInner() const;
    double RadiusOuter() const;
    void Rotate90Clockwise();
    double m_dD, m_dB, m_dTf, m_dTw;
};

struct PlainCHS : PlainSection {
    KELTRIX_BENCH_PLAIN_SHAPE(PlainCHS)
    double m_dD, m_dT;
};

#undef KELTRIX_BENCH_PLAIN_SHAPE

} // namespace Keltrix::Steel

#define CDesSectGeom PlainSection
#define CDesSectGeomI PlainI
#define CDesSectGeomPFC PlainPFC
#define CDesSectGeomT PlainT
#define CDesSectGeomAngle PlainAngle
#define CDesSectGeomRHS PlainRHS
#define CDesSectGeomCHS PlainCHS
#include "section/DesSectGeomAngle.cpp"
#include "section/DesSectGeomCHS.cpp"
#include "section/DesSectGeomI.cpp"
#include "section/DesSectGeomPFC.cpp"
#include "section/DesSectGeomRHS.cpp"
#include "section/DesSectGeomT.cpp"
#undef CDesSectGeom
#undef CDesSectGeomI
#undef CDesSectGeomPFC
#undef CDesSectGeomT
#undef CDesSectGeomAngle
#undef CDesSectGeomRHS
#undef CDesSectGeomCHS
