#include "keltrix/ec3/Material.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

#include "keltrix/design/MemberInput.h"

namespace Keltrix::EC3 {

using Design::Fabrication;

namespace {

constexpr double N_PER_MM2 = 1e6;

struct Row {
    double thickness; // mm, up to and including
    double strength;  // N/mm²
};

struct Strengths {
    std::span<const Row> fy;
    std::span<const Row> fu;
};

// EN 10025-2, Table 7: lowest of the range of fu.
constexpr std::array<Row, 4> S235_FY{{{16, 235}, {40, 225}, {100, 215}, {150, 195}}};
constexpr std::array<Row, 2> S235_FU{{{100, 360}, {150, 350}}};
constexpr std::array<Row, 6> S275_FY{{{16, 275}, {40, 265}, {63, 255}, {80, 245}, {100, 235}, {150, 225}}};
constexpr std::array<Row, 2> S275_FU{{{100, 410}, {150, 400}}};
constexpr std::array<Row, 6> S355_FY{{{16, 355}, {40, 345}, {63, 335}, {80, 325}, {100, 315}, {150, 295}}};
constexpr std::array<Row, 2> S355_FU{{{100, 470}, {150, 450}}};
// EN 10025-3 and EN 10025-4: the lower of qualities N and M.
constexpr std::array<Row, 5> S420_FY{{{16, 420}, {40, 400}, {63, 390}, {80, 370}, {100, 360}}};
constexpr std::array<Row, 4> S420_FU{{{40, 520}, {63, 500}, {80, 480}, {100, 470}}};
constexpr std::array<Row, 5> S460_FY{{{16, 460}, {40, 440}, {63, 430}, {80, 410}, {100, 400}}};
constexpr std::array<Row, 4> S460_FU{{{40, 540}, {63, 530}, {80, 510}, {100, 500}}};
// Fine grain qualities of S275 and S355, which yield as those of EN 10025-2.
constexpr std::array<Row, 4> S275_FINE_FU{{{40, 370}, {63, 360}, {100, 350}, {150, 340}}};
constexpr std::array<Row, 4> S355_FINE_FU{{{40, 470}, {63, 450}, {100, 440}, {150, 430}}};
// EN 10210-1 and EN 10219-1, fine grain steels: to 65 mm.
constexpr std::array<Row, 3> S275H_FINE_FY{{{16, 275}, {40, 265}, {65, 255}}};
constexpr std::array<Row, 1> S275H_FINE_FU{{{65, 370}}};
constexpr std::array<Row, 1> S275H_FINE_COLD_FU{{{40, 360}}};
constexpr std::array<Row, 3> S355H_FINE_FY{{{16, 355}, {40, 345}, {65, 335}}};
constexpr std::array<Row, 1> S355H_FINE_FU{{{65, 470}}};
constexpr std::array<Row, 3> S420H_FY{{{16, 420}, {40, 400}, {65, 390}}};
constexpr std::array<Row, 1> S420H_FU{{{65, 500}}};
constexpr std::array<Row, 3> S460H_FY{{{16, 460}, {40, 440}, {65, 430}}};
constexpr std::array<Row, 1> S460H_FU{{{65, 530}}};

// EN 1993-1-1, Table 3.1: up to 40 mm and up to 80 mm, EN 10025; where qualities differ the lower figures.
constexpr std::array<Row, 2> T31_S235_FY{{{40, 235}, {80, 215}}};
constexpr std::array<Row, 1> T31_S235_FU{{{80, 360}}};
constexpr std::array<Row, 2> T31_S275_FY{{{40, 275}, {80, 255}}};
constexpr std::array<Row, 2> T31_S275_FU{{{40, 430}, {80, 410}}};
constexpr std::array<Row, 2> T31_S355_FY{{{40, 355}, {80, 335}}};
constexpr std::array<Row, 2> T31_S355_FU{{{40, 490}, {80, 470}}};
constexpr std::array<Row, 2> T31_S275_FINE_FU{{{40, 370}, {80, 360}}};
constexpr std::array<Row, 2> T31_S355_FINE_FU{{{40, 470}, {80, 450}}};
constexpr std::array<Row, 2> T31_S420_FY{{{40, 420}, {80, 390}}};
constexpr std::array<Row, 2> T31_S420_FU{{{40, 520}, {80, 500}}};
constexpr std::array<Row, 2> T31_S460_FY{{{40, 460}, {80, 430}}};
constexpr std::array<Row, 2> T31_S460_FU{{{40, 540}, {80, 530}}};
// Its part for EN 10210-1 and EN 10219-1, where that gives less; cold formed to 40 mm.
constexpr std::array<Row, 2> T31_S235H_FU{{{40, 360}, {80, 340}}};
constexpr std::array<Row, 2> T31_S275H_FINE_FU{{{40, 390}, {80, 370}}};
constexpr std::array<Row, 1> T31_S275H_FINE_COLD_FU{{{40, 360}}};
constexpr std::array<Row, 1> T31_S355H_FINE_COLD_FU{{{40, 470}}};
constexpr std::array<Row, 1> T31_S420H_COLD_FU{{{40, 500}}};
constexpr std::array<Row, 1> T31_S460H_COLD_FU{{{40, 530}}};

// Walls to which the standards of hollow sections go, mm.
constexpr double MOST_COLD_FORMED = 40.0;
constexpr double MOST_HOT_FINISHED = 120.0;

Strengths ProductRows(Grade grade, bool hollow)
{
    switch (grade) {
    case Grade::S235:
        return {S235_FY, S235_FU};
    case Grade::S275:
        return {S275_FY, S275_FU};
    case Grade::S355:
        return {S355_FY, S355_FU};
    case Grade::S420:
        return hollow ? Strengths{S420H_FY, S420H_FU} : Strengths{S420_FY, S420_FU};
    case Grade::S460:
        return hollow ? Strengths{S460H_FY, S460H_FU} : Strengths{S460_FY, S460_FU};
    default:
        return {};
    }
}

Strengths TableRows(Grade grade, bool hollow, bool cold)
{
    switch (grade) {
    case Grade::S235:
        return hollow ? Strengths{T31_S235_FY, T31_S235H_FU} : Strengths{T31_S235_FY, T31_S235_FU};
    case Grade::S275:
        return {T31_S275_FY, T31_S275_FU};
    case Grade::S355:
        return {T31_S355_FY, T31_S355_FU};
    case Grade::S420:
        return cold ? Strengths{T31_S420_FY, T31_S420H_COLD_FU} : Strengths{T31_S420_FY, T31_S420_FU};
    case Grade::S460:
        return cold ? Strengths{T31_S460_FY, T31_S460H_COLD_FU} : Strengths{T31_S460_FY, T31_S460_FU};
    default:
        return {};
    }
}

// S275 and S355 of EN 10025-3 and EN 10025-4 and the fine grain qualities of hollow sections: tensile strengths below those of other qualities.
Strengths FineRows(Grade grade, bool hollow, bool cold, StrengthSource source)
{
    const bool isS275 = grade == Grade::S275;
    if (source == StrengthSource::ProductStandards) {
        if (!hollow) return isS275 ? Strengths{S275_FY, S275_FINE_FU} : Strengths{S355_FY, S355_FINE_FU};
        if (!isS275) return {S355H_FINE_FY, S355H_FINE_FU};
        return cold ? Strengths{S275H_FINE_FY, S275H_FINE_COLD_FU} : Strengths{S275H_FINE_FY, S275H_FINE_FU};
    }
    if (!hollow) return isS275 ? Strengths{T31_S275_FY, T31_S275_FINE_FU} : Strengths{T31_S355_FY, T31_S355_FINE_FU};
    if (isS275)
        return cold ? Strengths{T31_S275_FY, T31_S275H_FINE_COLD_FU} : Strengths{T31_S275_FY, T31_S275H_FINE_FU};
    return cold ? Strengths{T31_S355_FY, T31_S355H_FINE_COLD_FU} : Strengths{T31_S355_FY, T31_S355_FU};
}

// S275 or S355 with a quality N or M: "S275NL".
bool IsFineGrain(Grade grade, const CString& name)
{
    if (grade != Grade::S275 && grade != Grade::S355) return false;
    CString text = name;
    text.Remove(L' ');
    text.MakeUpper();
    const CString quality = text.Mid(4).Left(1);
    return quality == L"N" || quality == L"M";
}

// 0 beyond the last row.
double StrengthAt(std::span<const Row> rows, double thickness)
{
    if (!(thickness > 0.0)) return 0.0;
    // A plate of 16 mm converted from mm to m must not fall into the next row by rounding.
    const double mm = thickness * 1000.0 * (1.0 - 1e-12);
    for (const Row& row : rows)
        if (mm <= row.thickness) return row.strength * N_PER_MM2;
    return 0.0;
}

// Why the values of a user's grade cannot be used; null where they can.
const wchar_t* UserRefusal(const CSteelGrade& grade)
{
    if (const wchar_t* const refusal = Design::UserGradeRefusal(grade)) return refusal;
    if (grade.GetUserPy() > 460.0 * N_PER_MM2 * (1.0 + 1e-9))
        return L"the user-defined grade's yield strength is above 460 N/mm², beyond EN 1993-1-1 (3.1(2), EN 1993-1-12)";
    if (grade.GetUserPu() > 0.0 && grade.GetUserPu() < grade.GetUserPy())
        return L"the user-defined grade's tensile strength lies below its yield strength";
    return nullptr;
}

Material UserMaterial(const CSteelGrade& grade)
{
    Material m;
    m.grade = Grade::User;
    m.source = L"given by the user";
    m.refusal = UserRefusal(grade);
    if (m.refusal) return m;
    m.fy = grade.GetUserPy() / grade.GetMatFactor();
    m.fuAssumed = grade.GetUserPu() == 0.0;
    m.fu = m.fuAssumed ? m.fy : grade.GetUserPu() / grade.GetMatFactor();
    if (grade.GetUserE() > 0.0) {
        m.E = grade.GetUserE();
        m.G = SHEAR_MODULUS * (m.E / ELASTIC_MODULUS);
    }
    return m;
}

const wchar_t* SourceOf(bool hollow, Fabrication fabrication, const Annex& annex, bool isFine)
{
    if (annex.strengths == StrengthSource::Table31) return L"Table 3.1";
    if (hollow && fabrication == Fabrication::Rolled) return L"EN 10210-1";
    if (hollow && fabrication == Fabrication::Formed) return L"EN 10219-1";
    return isFine ? L"EN 10025-3 and EN 10025-4" : L"EN 10025-2";
}

} // namespace

double Material::Epsilon() const { return std::sqrt(235.0 * N_PER_MM2 / fy); }

Grade GradeFromName(const CString& name)
{
    const CString base = Design::GradeWithoutQuality(name);
    if (base == L"USER_DEFINED") return Grade::User;
    if (base == L"S235") return Grade::S235;
    if (base == L"S275") return Grade::S275;
    if (base == L"S355") return Grade::S355;
    if (base == L"S420") return Grade::S420;
    if (base == L"S460") return Grade::S460;
    return Grade::None;
}

Material MakeMaterial(const CSteelGrade& grade, double thickest, bool hollow, Fabrication fabrication,
                      const Annex& annex)
{
    const Grade which = GradeFromName(grade.Name());
    if (which == Grade::User) return UserMaterial(grade);
    Material m;
    m.grade = which;
    if (which == Grade::None) {
        m.refusal = L"the grade is not one of S235, S275, S355, S420, S460 or User_defined";
        return m;
    }
    const bool tubular = hollow && fabrication != Fabrication::Welded;
    const bool cold = tubular && fabrication == Fabrication::Formed;
    const bool isFine = IsFineGrain(which, grade.Name());
    const Strengths rows = isFine ? FineRows(which, tubular, cold, annex.strengths)
                           : annex.strengths == StrengthSource::Table31 ? TableRows(which, tubular, cold)
                                                                        : ProductRows(which, tubular);
    const double most = !tubular                             ? std::numeric_limits<double>::infinity()
                        : fabrication == Fabrication::Formed ? MOST_COLD_FORMED
                                                             : MOST_HOT_FINISHED;
    m.source = SourceOf(hollow, fabrication, annex, isFine || which == Grade::S420 || which == Grade::S460);
    m.fy = StrengthAt(rows.fy, thickest);
    m.fu = StrengthAt(rows.fu, thickest);
    if (m.fy == 0.0 || m.fu == 0.0 || thickest * 1000.0 * (1.0 - 1e-12) > most) {
        m.fy = m.fu = 0.0;
        m.refusal = L"the thickest element lies beyond the thicknesses for which the grade has a strength (3.2.1)";
    }
    return m;
}

Material MakeMaterial(const CSteelGrade& grade, const Design::SectionProperties& section, const Annex& annex)
{
    return MakeMaterial(grade, std::max({section.t, section.T, section.T2}), section.IsHollow(), section.fabrication,
                        annex);
}

Strength MakeStrength(const Material& material, const Annex& annex)
{
    Strength s;
    s.fy = material.fy;
    s.fu = material.fu;
    s.epsilon = material.Epsilon();
    s.gammaM0 = annex.gammaM0;
    s.gammaM1 = annex.gammaM1;
    s.gammaM2 = annex.gammaM2;
    s.eta = annex.eta;
    s.E = material.E;
    s.G = material.G;
    return s;
}

} // namespace Keltrix::EC3
