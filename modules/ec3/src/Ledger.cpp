#include "Ledger.h"

#include <array>

namespace Keltrix::EC3 {

namespace {

constexpr std::array<RuleRow, static_cast<std::size_t>(Rule::COUNT)> RULES{{
    {L"yield and ultimate strength", L"3.2.1", Stage::General},
    {L"classification", L"5.5", Stage::Local},
    {L"tension", L"6.2.3", Stage::Local},
    {L"compression of the cross-section", L"6.2.4", Stage::Local},
    {L"bending moment, major axis", L"6.2.5", Stage::Local},
    {L"bending moment, minor axis", L"6.2.5", Stage::Local},
    {L"fastener holes in the tension flange", L"6.2.5(4)", Stage::Local},
    {L"shear along the web", L"6.2.6", Stage::Local},
    {L"shear along the flanges", L"6.2.6", Stage::Local},
    {L"shear buckling of the web", L"EN 1993-1-5 5", Stage::Local},
    {L"torsion", L"6.2.7", Stage::Local},
    {L"bending and shear, major axis", L"6.2.8", Stage::Local},
    {L"bending and shear, minor axis", L"6.2.8", Stage::Local},
    {L"bending with a web that buckles in shear", L"EN 1993-1-5 7.1", Stage::Local},
    {L"bending, shear and axial force", L"6.2.9", Stage::Local},
    {L"web under concentrated loads", L"EN 1993-1-5 6", Stage::Local},
    {L"flexural buckling, major axis", L"6.3.1", Stage::Buckling},
    {L"flexural buckling, minor axis", L"6.3.1", Stage::Buckling},
    {L"torsional buckling", L"6.3.1", Stage::Buckling},
    {L"lateral-torsional buckling", L"6.3.2", Stage::Buckling},
    {L"bending and axial compression, major axis", L"6.3.3 (6.61)", Stage::Buckling},
    {L"bending and axial compression, minor axis", L"6.3.3 (6.62)", Stage::Buckling},
    {L"frame: second-order effects and imperfections", L"5.2, 5.3", Stage::General},
    {L"built-up compression members", L"6.4", Stage::General},
    {L"ductility of the steel", L"3.2.2", Stage::General},
    {L"deflection", L"7.2", Stage::General},
    {L"vibration", L"7.2.3", Stage::General},
    {L"fatigue", L"EN 1993-1-9", Stage::General},
    {L"brittle fracture", L"EN 1993-1-10", Stage::General},
    {L"strength and stiffness of the restraints", L"5.3.3, 6.3.5.2", Stage::General},
    {L"connections", L"EN 1993-1-8", Stage::General},
    {L"web openings", L"6.1", Stage::General},
    {L"structural integrity", L"EN 1991-1-7", Stage::General},
}};

} // namespace

const RuleRow& RowOf(Rule rule) { return RULES[static_cast<std::size_t>(rule)]; }

Design::RuleFinding FindingOf(Rule rule, Design::CheckStatus status, const wchar_t* reason)
{
    Design::RuleFinding f;
    f.rule = static_cast<int>(rule);
    f.name = RowOf(rule).name;
    f.clause = RowOf(rule).clause;
    f.status = status;
    f.reason = reason;
    return f;
}

} // namespace Keltrix::EC3
