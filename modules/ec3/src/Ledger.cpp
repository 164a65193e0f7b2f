#include "Ledger.h"

#include <array>

namespace Keltrix::EC3 {

using Design::Topic;

namespace {

constexpr std::array<RuleRow, static_cast<std::size_t>(Rule::COUNT)> RULES{{
    {L"yield and ultimate strength", L"3.2.1", Stage::General, Topic::Other},
    {L"classification", L"5.5", Stage::Local, Topic::Other},
    {L"tension", L"6.2.3", Stage::Local, Topic::Tension},
    {L"tension of an angle by one leg", L"EN 1993-1-8 3.10.3", Stage::Local, Topic::Tension},
    {L"compression of the cross-section", L"6.2.4", Stage::Local, Topic::Compression},
    {L"bending moment, major axis", L"6.2.5", Stage::Local, Topic::BendingMajor},
    {L"bending moment, minor axis", L"6.2.5", Stage::Local, Topic::BendingMinor},
    {L"fastener holes in the tension flange", L"6.2.5(4)", Stage::Local, Topic::Other},
    {L"shear along the web", L"6.2.6", Stage::Local, Topic::ShearMajor},
    {L"shear along the flanges", L"6.2.6", Stage::Local, Topic::ShearMinor},
    {L"shear buckling of the web", L"EN 1993-1-5 5", Stage::Local, Topic::ShearBuckling},
    {L"torsion", L"6.2.7", Stage::Local, Topic::Torsion},
    {L"bending and shear, major axis", L"6.2.8", Stage::Local, Topic::CrossSection},
    {L"bending and shear, minor axis", L"6.2.8", Stage::Local, Topic::CrossSection},
    {L"bending with a web that buckles in shear", L"EN 1993-1-5 7.1", Stage::Local, Topic::CrossSection},
    {L"flange induced buckling of the web", L"EN 1993-1-5 8", Stage::Local, Topic::Other},
    {L"shear lag in wide flanges", L"EN 1993-1-5 3", Stage::Local, Topic::Other},
    {L"bending, shear and axial force", L"6.2.9", Stage::Local, Topic::CrossSection},
    {L"web under concentrated loads", L"EN 1993-1-5 6", Stage::Local, Topic::WebForces},
    {L"web under concentrated loads, with bending", L"EN 1993-1-5 7.2", Stage::Local, Topic::WebForces},
    {L"flexural buckling, major axis", L"6.3.1", Stage::Buckling, Topic::BucklingMajor},
    {L"flexural buckling, minor axis", L"6.3.1", Stage::Buckling, Topic::BucklingMinor},
    {L"torsional buckling", L"6.3.1", Stage::Buckling, Topic::BucklingTorsional},
    {L"lateral-torsional buckling", L"6.3.2", Stage::Buckling, Topic::LateralTorsional},
    {L"bending and axial compression, major axis", L"6.3.3 (6.61)", Stage::Buckling, Topic::MemberInteraction},
    {L"bending and axial compression, minor axis", L"6.3.3 (6.62)", Stage::Buckling, Topic::MemberInteraction},
    {L"general method", L"6.3.4", Stage::Buckling, Topic::MemberInteraction},
    {L"column in simple construction", L"NCCI SN048", Stage::Buckling, Topic::MemberInteraction},
    {L"frame: second-order effects and imperfections", L"5.2, 5.3", Stage::General, Topic::Other},
    {L"built-up compression members", L"6.4", Stage::General, Topic::Other},
    {L"ductility of the steel", L"3.2.2", Stage::General, Topic::Other},
    {L"deflection", L"7.2", Stage::General, Topic::Deflection},
    {L"vibration", L"7.2.3", Stage::General, Topic::Other},
    {L"fatigue", L"EN 1993-1-9", Stage::General, Topic::Other},
    {L"brittle fracture", L"EN 1993-1-10", Stage::General, Topic::Other},
    {L"strength and stiffness of the restraints", L"5.3.3, 6.3.5.2", Stage::General, Topic::Other},
    {L"connections", L"EN 1993-1-8", Stage::General, Topic::Other},
    {L"web openings", L"6.1", Stage::General, Topic::Other},
    {L"structural integrity", L"EN 1991-1-7", Stage::General, Topic::Other},
}};

} // namespace

const RuleRow& RowOf(Rule rule) { return RULES[static_cast<std::size_t>(rule)]; }

Design::RuleFinding FindingOf(Rule rule, Design::CheckStatus status, const wchar_t* reason)
{
    Design::RuleFinding f;
    f.rule = static_cast<int>(rule);
    f.name = RowOf(rule).name;
    f.clause = RowOf(rule).clause;
    f.topic = RowOf(rule).topic;
    f.status = status;
    f.reason = reason;
    return f;
}

} // namespace Keltrix::EC3
