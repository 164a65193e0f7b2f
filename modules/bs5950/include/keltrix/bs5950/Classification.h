#pragma once

#include <array>

#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Material.h"
#include "keltrix/bs5950/SectionProperties.h"

namespace Keltrix::BS5950 {

/// Actions on a cross-section: N and N·m.
struct Actions {
    double F = 0.0;   ///< axial force, tension positive
    double Mx = 0.0;  ///< major-axis moment; above zero compresses flange 2 (bottom), below zero flange 1 (top)
    double My = 0.0;  ///< minor-axis moment
    double Fvy = 0.0; ///< shear along y (parallel to the web), goes with Mx
    double Fvx = 0.0; ///< shear along x, goes with My
    double Mt = 0.0;  ///< torsion

    double Compression() const { return F < 0.0 ? -F : 0.0; }
    double Tension() const { return F > 0.0 ? F : 0.0; }
};

/// One element of the cross-section against its row of Table 11 or 12.
struct ElementClass {
    const wchar_t* element = L"";
    const wchar_t* ratioName = L"";
    const wchar_t* source = L"";
    double ratio = 0.0;
    std::array<double, 3> limit{}; ///< limits of class 1, 2 and 3
    bool isWeb = false;
    bool compressed = true; ///< false: no compression in it, so it has no class of its own (1)
    bool aboutY = false;    ///< a flange of bending about y-y
    int cls = 1;

    /// Square of limit over ratio, at most 1: reduction of the design strength of clause 3.6.5.
    KELTRIX_BS5950_API double SlenderFactor() const;
};

/// Class of a cross-section for one state of stress, and the effective properties that follow from it.
struct Classification {
    static constexpr int MAX_ELEMENTS = 6;
    std::array<ElementClass, MAX_ELEMENTS> elements{};
    int count = 0;
    int cls = 1; ///< 1 plastic, 2 compact, 3 semi-compact, 4 slender
    double epsilon = 1.0;
    double r1 = 0.0; ///< stress ratios of the web, clause 3.5.5
    double r2 = 0.0;
    bool webSlender = false;
    bool flangeSlender = false;

    /// Area for compression: gross, or in class 4 the effective area where the standard has one for the shape (3.6.2.2,
    /// 3.6.4, 3.6.6). The capacity of the cross-section is Aeff pyCompression.
    double Aeff = 0.0;
    double Wx = 0.0; ///< modulus with which Mcx = pyMomentX Wx at low shear: Sx, Sx,eff, Zx, or Zx,eff of a CHS
    double Wy = 0.0; ///< the same about y-y
    // Design strengths, Pa: py, or in class 4 the reduced design strength pyr of clause 3.6.5 where no effective section is
    // used. They stand for py in section capacity, pc, pb, λL0 and py Z of the interaction; shear and tension keep py.
    double pyCompression = 0.0;
    double pyMomentX = 0.0;
    double pyMomentY = 0.0;
    bool WxIsPlastic = true; ///< Wx is Sx or Sx,eff, so that high shear takes off Sv and not Sv/1.5
    bool WyIsPlastic = true;
    const wchar_t* WxName = L"Sx";
    const wchar_t* WyName = L"Sy";
};

/// ε = (275/py)^0.5, py in Pa.
KELTRIX_BS5950_API double Epsilon(double py);

/// Clauses 3.5 and 3.6: class and effective properties under the given actions. Elements without compression under the
/// elastic stresses do not count. Shears do not matter.
KELTRIX_BS5950_API Classification Classify(const SectionProperties& section, const Material& material,
                                           const Actions& actions);

} // namespace Keltrix::BS5950
