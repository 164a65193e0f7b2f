#include "keltrix/bs5950/Material.h"

#include <array>
#include <cmath>
#include <span>

#include "keltrix/design/MemberInput.h"

namespace Keltrix::BS5950 {

namespace {

struct ThicknessRow {
    double thickness; // mm, up to and including
    double py;        // N/mm²
};

// Table 9.
constexpr std::array<ThicknessRow, 6> S275_ROWS{{{16, 275}, {40, 265}, {63, 255}, {80, 245}, {100, 235}, {150, 225}}};
constexpr std::array<ThicknessRow, 6> S355_ROWS{{{16, 355}, {40, 345}, {63, 335}, {80, 325}, {100, 315}, {150, 295}}};
constexpr std::array<ThicknessRow, 5> S460_ROWS{{{16, 460}, {40, 440}, {63, 430}, {80, 410}, {100, 400}}};

std::span<const ThicknessRow> Table9Rows(Grade grade)
{
    switch (grade) {
    case Grade::S275:
        return S275_ROWS;
    case Grade::S355:
        return S355_ROWS;
    case Grade::S460:
        return S460_ROWS;
    default:
        return {};
    }
}

Material UserMaterial(const CSteelGrade& grade)
{
    Material m;
    m.grade = Grade::User;
    m.refusal = Design::UserGradeRefusal(grade);
    if (m.refusal) return m;
    const double Ys = grade.GetUserPy();
    const double Us = grade.GetUserPu();
    m.matFactor = grade.GetMatFactor();
    m.limitedByUs = Us > 0.0 && Us / 1.2 < Ys;
    m.py = (m.limitedByUs ? Us / 1.2 : Ys) / m.matFactor;
    if (grade.GetUserE() > 0.0) m.E = grade.GetUserE();
    m.keAssumed = Us == 0.0;
    m.Ke = m.keAssumed ? 1.0 : (Us / 1.2) / (m.limitedByUs ? Us / 1.2 : Ys);
    return m;
}

} // namespace

Grade GradeFromName(const CString& name)
{
    const CString base = Design::GradeWithoutQuality(name);
    if (base == L"USER_DEFINED") return Grade::User;
    if (base == L"S275") return Grade::S275;
    if (base == L"S355") return Grade::S355;
    if (base == L"S460") return Grade::S460;
    return Grade::None;
}

double DesignStrengthTable9(Grade grade, double thickness)
{
    if (!(thickness > 0.0)) return 0.0;
    // A wall of 16 mm converted from mm to m must not fall into the next row by rounding.
    const double mm = thickness * 1000.0 * (1.0 - 1e-12);
    for (const ThicknessRow& row : Table9Rows(grade))
        if (mm <= row.thickness) return row.py * 1e6;
    return 0.0;
}

Material MakeMaterial(const CSteelGrade& grade, double thickestElement)
{
    const Grade which = GradeFromName(grade.Name());
    if (which == Grade::User) return UserMaterial(grade);
    Material m;
    m.grade = which;
    if (which == Grade::None) {
        m.refusal = L"the grade is not one of S275, S355, S460 (Table 9) or User_defined";
        return m;
    }
    m.py = DesignStrengthTable9(which, thickestElement);
    if (m.py == 0.0) {
        m.refusal = L"the thickest element lies outside Table 9 (150 mm, for S460 100 mm)";
        return m;
    }
    m.Ke = which == Grade::S275 ? 1.2 : which == Grade::S355 ? 1.1 : 1.0;
    return m;
}

} // namespace Keltrix::BS5950
