#pragma once

#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Host {

/// Modulus of elasticity of steel where no design code gives one, Pa.
inline constexpr double STEEL_E = 205e9;

/// A member without a design code: it takes every section and grade, shows its input and checks nothing.
class CodelessMember : public Steel::CSteelMemberGen {
public:
    CodelessMember() = default;
    CodelessMember(const CodelessMember&) = default;
    CodelessMember* Clone() const override { return new CodelessMember(*this); }

    CString DesOptName(int) override { return L"none: input only"; }
    void PrepareInput() override { Clear(); }
    bool SetKeltrixSec(const CSection& section) override;
    CSection GetKeltrixSec() const override { return m_section; }
    bool SetGrade(const CSteelGrade& grade) override;
    CSteelGrade GetGrade() const override { return m_grade; }
    /// Without a code there is nothing to check; none passes.
    bool CheckLocal(bool) override { return false; }
    bool CheckBuckling() override { return false; }
    /// Validates and reports the input; true when it is valid.
    bool Check() override;
    Steel::SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat& fmt) const override;
    int SectionClass() const override { return 0; }

    using CSteelMemberGen::BucklingSenseLT;
    using CSteelMemberGen::EquivalentUniformMomentFactor;
    using CSteelMemberGen::LengthOverride;
    using CSteelMemberGen::Llt;
    using CSteelMemberGen::MemberPoints;
    using CSteelMemberGen::SubSpans;

private:
    CSection m_section;
    CSteelGrade m_grade;
};

} // namespace Keltrix::Host
