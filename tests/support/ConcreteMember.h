#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Steel {

/// Opens the private operations and fields of the generic member to the tests.
class CSteelMemberGenTestAccess {
public:
    static int Instances() { return CSteelMemberGen::m_iInstances; }
    static CMemberResult* Result(const CSteelMemberGen& member) { return member.m_pResult; }
    static bool QuickCheckMode(const CSteelMemberGen& member) { return member.m_bQuickCheckMode; }
    static std::optional<double>& StrongAxisFactor(CSteelMemberGen& member)
    {
        return member.m_optMomentAmplificationFactorStrongAxis;
    }
    static std::optional<double>& WeakAxisFactor(CSteelMemberGen& member)
    {
        return member.m_optMomentAmplificationFactorWeakAxis;
    }
    static std::optional<double>& UniformMomentFactor(CSteelMemberGen& member)
    {
        return member.m_optEquivalentUniformMomentFactor;
    }
    static void AddStringInput(const CSteelMemberGen& member, const CString& sectionText)
    {
        member.AddStringInput(sectionText);
    }
    static CString GetStringInput(const CSteelMemberGen& member, const CString& sectionText, const CDesFormat& fmt)
    {
        return member.GetStringInput(sectionText, fmt);
    }
    static CString SecUserDescShort(const CString& desc) { return CSteelMemberGen::SecUserDescShort(desc); }
    static CSection KXSectFromUserDesc(const CString& desc) { return CSteelMemberGen::KXSectFromUserDesc(desc); }
};

} // namespace Keltrix::Steel

/// A member as a code module has it, without a code: section and grade are stored, every check passes.
namespace Keltrix::Steel::Test {

class ConcreteMember : public CSteelMemberGen {
public:
    ConcreteMember() = default;
    ConcreteMember(const ConcreteMember&) = default;

    CCloneable* Clone() const override { return new ConcreteMember(*this); }
    CString DesOptName(int desOpt) override
    {
        CString name;
        name.Format(L"Plain code %i", desOpt);
        return name;
    }
    void PrepareInput() override { ++preparations; }
    bool SetKeltrixSec(const CSection& section) override
    {
        ++sectionsOffered;
        if (sectionsOffered == refusedSection) return false;
        m_section = section;
        return true;
    }
    CSection GetKeltrixSec() const override { return m_section; }
    bool SetGrade(const CSteelGrade& grade) override
    {
        m_grade = grade;
        return true;
    }
    CSteelGrade GetGrade() const override { return m_grade; }
    bool CheckLocal(bool) override { return true; }
    bool CheckBuckling() override { return true; }
    bool Check() override { return CheckLocal(true) && CheckBuckling(); }
    SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat&) const override { return m_section.Component(0).Description(true); }
    int SectionClass() const override { return 0; }

    using CSteelMemberGen::BucklingSenseLT;
    using CSteelMemberGen::EffectiveLengthOverrideString;
    using CSteelMemberGen::EquivalentUniformMomentFactor;
    using CSteelMemberGen::GetStringEffectiveLengthsInput;
    using CSteelMemberGen::GetStringForcesMomentsAndRestraints;
    using CSteelMemberGen::GetStringOverridesInput;
    using CSteelMemberGen::MemberPoints;
    using CSteelMemberGen::MomentAmplificationFactorStrongAxis;
    using CSteelMemberGen::MomentAmplificationFactorWeakAxis;
    using CSteelMemberGen::QuickCheckMode;
    using CSteelMemberGen::ReportInput;
    using CSteelMemberGen::Result;
    using CSteelMemberGen::SubSpans;

    int preparations = 0;    ///< calls of PrepareInput
    int sectionsOffered = 0; ///< calls of SetKeltrixSec
    int refusedSection = 0;  ///< which of these calls, counted from 1, is answered with false; 0: none

private:
    CSection m_section;
    CSteelGrade m_grade;
};

/// One whose code takes moment amplification factors.
class AmplifiedMember : public ConcreteMember {
public:
    AmplifiedMember() = default;
    AmplifiedMember(const AmplifiedMember&) = default;
    CCloneable* Clone() const override { return new AmplifiedMember(*this); }
    void SetMomentAmplificationFactorStrongAxis(double factor) override
    {
        StoreMomentAmplificationFactorStrongAxis(factor);
    }
    void SetMomentAmplificationFactorWeakAxis(double factor) override
    {
        StoreMomentAmplificationFactorWeakAxis(factor);
    }
};

inline CMemberPoint Point(int index, double position, int restraintBits = 0, double loadHeight = 0.0)
{
    CMemberPoint point;
    point.Set1Index(index);
    point.SetPos(position);
    point.SetRestraint(CRestraint(restraintBits, SHR_CENTRE, loadHeight));
    return point;
}

/// A sub-span with the major-axis moments of its ends.
inline CSubSpan SubSpan(int index, double momentLeft = 0.0, double momentRight = 0.0, int restraintBits = 0)
{
    CSubSpan subSpan;
    subSpan.Set1Index(index);
    subSpan.SetMomentsAll({0.0, momentLeft, 0.0}, {0.0, momentRight, 0.0});
    subSpan.SetRestraint(CRestraint(restraintBits, SHR_CENTRE, 0.0));
    return subSpan;
}

} // namespace Keltrix::Steel::Test
