#pragma once

// Members that were checked, for the tests of the EN 1993-1-1 module.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "Sections.h"
#include "design/RandomMember.h"
#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/DesignCode.h"
#include "keltrix/ec3/SteelMemberEC3.h"

namespace EC3Test {

using DesignTest::AddPoint;
using DesignTest::AddSubSpan;

inline constexpr wchar_t DECK[] = L"F1L F2L TR";

// A member that was checked, with its findings.
class Checked {
public:
    Checked(const DesignTest::Member& m, const wchar_t* section, const wchar_t* grade, bool text = false,
            const DesignOptions& options = {}, int type = -1, const Annex& annex = UkAnnex(),
            const std::function<void(CSteelMemberEC3&)>& prepare = {})
    {
        CSection made{CString(section)};
        if (type >= 0) {
            CSecComp component = made.Component(0);
            component.SetType(type);
            made.SetComponent(0, component);
        }
        member.SetAnnex(annex);
        result.EnableText(text);
        member.SetOptions(options);
        member.SetResult(&result);
        EXPECT_TRUE(member.SetKeltrixSec(made));
        EXPECT_TRUE(member.SetGrade(CSteelGrade(CString(grade), 0.0, 0.0, 0.0, 1.0)));
        member.SetMemberPointVec(m.points);
        member.SetSubSpanVec(m.subSpans);
        if (prepare) prepare(member);
        passed = member.Check();
        findings = member.Findings();
    }

    // The finding of the largest utilisation of a clause and a symbol.
    const Design::RuleFinding& Rule(const std::wstring& clause, const std::wstring& symbol = L"") const
    {
        const Design::RuleFinding* best = nullptr;
        for (const Design::RuleFinding& f : findings.rules)
            if (f.clause == clause && (symbol.empty() || f.symbol == symbol))
                if (!best || f.utilisation > best->utilisation) best = &f;
        if (!best) throw std::runtime_error("no such finding");
        return *best;
    }
    double Value(const std::wstring& symbol) const
    {
        for (const Design::SpanFinding& s : findings.spans)
            if (s.resistance.symbol == symbol) return s.resistance.value;
        return std::nan("");
    }
    double Largest() const
    {
        const Design::RuleFinding* f = findings.Governing();
        return f ? f->utilisation : 0.0;
    }
    bool HasOpen() const
    {
        for (const Design::RuleFinding& f : findings.rules)
            if (f.status == Design::CheckStatus::NotEvaluated) return true;
        return false;
    }

    Steel::CMemberResult result;
    CSteelMemberEC3 member;
    Design::MemberFindings findings;
    bool passed = false;
};

// A beam between forks with a uniform load w, N/m, and a force P at the middle, N; sagging is below zero.
inline DesignTest::Member Beam(double L, double w, double P, const wchar_t* along = L"Free")
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 0.5 * L, L"Free");
    AddPoint(m, L, L"Pinned");
    const double V = 0.5 * (w * L + P);
    const double M = w * L * L / 8.0 + P * L / 4.0;
    AddSubSpan(m, -V, -0.5 * P, 0.0, -M, along);
    AddSubSpan(m, 0.5 * P, V, -M, 0.0, along);
    return m;
}

// A strut between forks with the moments at its right end.
inline DesignTest::Member Column(double L, double N, double My, double Mz)
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, L, L"Pinned");
    AddSubSpan(m, My / L, My / L, 0.0, My);
    m.subSpans[0].SetForcesAll({-N, -Mz / L, My / L}, {-N, -Mz / L, My / L});
    m.subSpans[0].SetMomentsAll({0.0, 0.0, 0.0}, {0.0, My, Mz});
    return m;
}

// Gives a check the effective lengths, m; below zero minus a factor of the member's length.
inline std::function<void(CSteelMemberEC3&)> GivenLengths(double Lyy, double Lzz, double Llt)
{
    return [=](CSteelMemberEC3& member) {
        member.SetLengthOverride(true);
        member.SetLyy(Lyy);
        member.SetLzz(Lzz);
        member.SetLlt(Llt);
    };
}

inline void Scale(DesignTest::Member& m, double k)
{
    const auto times = [k](const Vec3<double>& v) { return Vec3<double>{k * v.x, k * v.y, k * v.z}; };
    for (Steel::CSubSpan& s : m.subSpans) {
        s.SetForcesAll(times(s.GetForcesLeft()), times(s.GetForcesRight()));
        s.SetMomentsAll(times(s.GetMomentsLeft()), times(s.GetMomentsRight()));
    }
}

} // namespace EC3Test
