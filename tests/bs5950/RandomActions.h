#pragma once

// Members of every shape with random actions in equilibrium.

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>
#include <utility>

#include "design/RandomMember.h"
#include "Members.h"

namespace BS5950Test {

struct SectionRow {
    const wchar_t* name;
    int type;
    const wchar_t* grade;
};

inline constexpr SectionRow SECTIONS[] = {
    {L"UB 457x191x67", SEC_ROLLED, L"S275"},    {L"UC 254x254x89", SEC_ROLLED, L"S355"},
    {L"UB 610x229x101", SEC_ROLLED, L"S460"},   {L"PFC 300x90x41", SEC_ROLLED, L"S275"},
    {L"RHS 200x100x6.3", SEC_ROLLED, L"S355"},  {L"SHS 200x200x5", SEC_ROLLED, L"S355"},
    {L"BOX 900x700x8x10", SEC_WELDED, L"S275"}, {L"CFRHS 200x100x5", SEC_FORMED, L"S355"},
    {L"CHS 168.3x5", SEC_ROLLED, L"S275"},      {L"TUBE 700x6", SEC_ROLLED, L"S355"},
    {L"T 254x343x63", SEC_ROLLED, L"S275"},     {L"T 229x191x34", SEC_ROLLED, L"S355"},
    {L"L 150x150x15", SEC_ROLLED, L"S275"},     {L"L 200x150x12", SEC_ROLLED, L"S355"},
    {L"I 1200x300x6x20", SEC_WELDED, L"S355"},  {L"GI 600x300x200x8x20x15", SEC_WELDED, L"S355"},
    {L"C 300x100x8x12", SEC_WELDED, L"S355"},   {L"I 700x400x8x14", SEC_WELDED, L"S460"},
};

/// The same member with lengths, axial forces, and forces of bending about both axes scaled.
inline DesignTest::Member Scaled(DesignTest::Member m, double length, double axial, double major, double minor)
{
    for (auto& p : m.points)
        p.SetPos(p.GetPos() * length);
    for (auto& s : m.subSpans) {
        const auto force = [&](const Vector& f) { return Vector(f.x * axial, f.y * minor, f.z * major); };
        const auto moment = [&](const Vector& k) { return Vector(0.0, k.y * major * length, k.z * minor * length); };
        s.SetForcesAll(force(s.GetForcesLeft()), force(s.GetForcesRight()));
        s.SetMomentsAll(moment(s.GetMomentsLeft()), moment(s.GetMomentsRight()));
    }
    return m;
}

/// A member whose actions use up to one and a half times what the section can bear, any of them often absent, and short often
/// enough that shear is high.
inline DesignTest::Member RandomActions(std::mt19937& random, const SectionProperties& s, const Material& m)
{
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const DesignTest::Member base = DesignTest::RandomMember(random);
    double F = 1.0, major = 1.0, minor = 1.0;
    for (const auto& sub : base.subSpans)
        for (const auto& [f, k] : {std::pair(sub.GetForcesLeft(), sub.GetMomentsLeft()),
                                   std::pair(sub.GetForcesRight(), sub.GetMomentsRight())}) {
            F = std::max(F, std::abs(f.x));
            major = std::max(major, std::abs(k.y));
            minor = std::max(minor, std::abs(k.z));
        }
    const double length = std::pow(10.0, real(-1.5, 0.0));
    const auto level = [&] { return real(0, 1) < 0.25 ? 0.0 : real(0.05, 1.5); };
    return Scaled(base, length, level() * s.A * m.py / F, level() * s.Zx * m.py / (major * length),
                  level() * s.Zy * m.py / (minor * length));
}

/// A member with a section and a grade.
class Subject {
public:
    Subject(const SectionRow& row, int option)
    {
        CSection section{CString(row.name)};
        CSecComp component = section.Component(0);
        component.SetType(row.type);
        section.SetComponent(0, component);
        if (!member.SetKeltrixSec(section) || !member.SetGrade(GradeNamed(row.grade)))
            throw std::runtime_error("a section of a test is refused");
        member.SetDesOpt(option);
    }

    CSteelMemberBS5950 member;
};

} // namespace BS5950Test
