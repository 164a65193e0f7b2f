#pragma once

#include "keltrix/bs5950/Export.h"
#include "keltrix/platform/KxData.h"

namespace Keltrix::BS5950 {

/// Grades of Table 9, and a grade whose strengths the user gives.
enum class Grade { None, S275, S355, S460, User };

/// Modulus of elasticity, clause 3.1.3, Pa.
inline constexpr double ELASTIC_MODULUS = 205e9;

/// Material of a section: what clause 3.1 makes of a grade and a thickness. Stresses in Pa.
struct Material {
    Grade grade = Grade::None;
    double py = 0.0; ///< design strength, clause 3.1.1
    double E = ELASTIC_MODULUS;
    double Ke = 1.0;          ///< effective net area coefficient, clause 3.4.3
    double matFactor = 1.0;   ///< divisor of py, from a user-defined grade
    bool keAssumed = false;   ///< user-defined grade without tensile strength: Ke is 1.0
    bool limitedByUs = false; ///< py is Us/1.2 of a user-defined grade
    /// Why there is no design strength; null where there is one.
    const wchar_t* refusal = nullptr;

    bool IsValid() const { return refusal == nullptr; }
};

/// The grade that a name means: "S275", "S355", "S460", each also with a quality ("S355J2H"), or "User_defined"; letter
/// case and blanks are forgiven. None for any other name.
KELTRIX_BS5950_API Grade GradeFromName(const CString& name);

/// Table 9: design strength in Pa for a thickness in m; 0 where the table ends (150 mm, S460 100 mm) or the thickness
/// is not above 0.
KELTRIX_BS5950_API double DesignStrengthTable9(Grade grade, double thickness);

/// Clause 3.1.1: material for the thickest element (m) of a section. A user-defined grade has
/// py = min(Ys, Us/1.2)/material factor; its modulus of elasticity is the user's where given. `refusal` says why not.
KELTRIX_BS5950_API Material MakeMaterial(const CSteelGrade& grade, double thickestElement);

} // namespace Keltrix::BS5950
