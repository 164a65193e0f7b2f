#pragma once

#include <atomic>
#include <optional>
#include <stdexcept>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/steel/CodeShare.h"
#include "keltrix/steel/Export.h"
#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"

namespace Keltrix::Steel {

/// Thrown for an input that the design code does not support.
class KELTRIX_STEEL_API unsupported_design_code_error : public std::logic_error {
public:
    using std::logic_error::logic_error;
    unsupported_design_code_error(const unsupported_design_code_error&) = default;
    unsupported_design_code_error& operator=(const unsupported_design_code_error&) = default;
    ~unsupported_design_code_error() override;
};

/// A steel member that a design code checks. The order of the operations is part of the interface of compiled modules.
class KELTRIX_STEEL_API CSteelMember : public CDesign {
public:
    ~CSteelMember() override;
    CSteelMember& operator=(const CSteelMember&) = delete;

    /// Name of the design code of a design option.
    virtual CString DesOptName(int desOpt) = 0;
    /// Brings the member into the state in which an input text is read.
    virtual void PrepareInput() = 0;
    /// Takes the section; false when the code does not cover it.
    virtual bool SetKeltrixSec(const CSection& section) = 0;
    virtual CSection GetKeltrixSec() const = 0;
    /// Takes the grade; false when it is not a grade of the code.
    virtual bool SetGrade(const CSteelGrade& grade) = 0;
    virtual CSteelGrade GetGrade() const = 0;
    /// Cross-section checks at the positions.
    virtual bool CheckLocal(bool alongMember) = 0;
    /// Member buckling checks, span by span.
    virtual bool CheckBuckling() = 0;
    /// Validates, echoes the input and runs both; true when the member passes.
    virtual bool Check() = 0;
    virtual bool SetResult(CMemberResult* result) = 0;
    virtual bool SetMemberPointVec(const std::vector<CMemberPoint>& points) = 0;
    virtual bool SetSubSpanVec(const std::vector<CSubSpan>& subSpans) = 0;
    virtual void SetTitle(const CString& title) = 0;
    virtual void SetQuickCheckMode() = 0;
    virtual std::vector<CMemberPoint> GetMemberPointVec() = 0;
    virtual std::vector<CSubSpan> GetSubSpanVec() = 0;
    virtual CString GetTitle() = 0;
    virtual double Length() const = 0;
    virtual void SetLengthOverride(bool isOverridden) = 0;
    virtual void SetLyy(double length) = 0;
    virtual void SetLzz(double length) = 0;
    virtual void SetLlt(double length) = 0;
    virtual void SetNumSubSpansUser(int count) = 0;
    virtual void SetEquivalentUniformMomentFactor(double factor) = 0;
    virtual void SetMomentAmplificationFactorStrongAxis(double factor) = 0;
    virtual void SetMomentAmplificationFactorWeakAxis(double factor) = 0;
    /// Reads the member input file's text.
    virtual bool CSVInputData(const CString& text, CSteelGrade& grade) = 0;
    /// Writes the member input file's text.
    virtual CString CSVInputData(CSteelGrade& grade) = 0;
    /// The effective lengths that the last check used.
    virtual SubspanEffectiveLengthData GetEffectiveLengths() const = 0;
    /// The text put under "Section Data" in the input report.
    virtual CString GetSectionText(const CDesFormat& fmt) const = 0;
    /// Governing class 1 to 4, 0 before a check.
    virtual int SectionClass() const = 0;

protected:
    /// Design option 1.
    CSteelMember();
    CSteelMember(const CSteelMember&) = default;
};

/// The code-independent member: layout, title, effective-length overrides, code factors, validation, input file, input
/// report and buckling sense. Design-code classes derive from it and fill in the rest. Axis names are the host's:
/// yy is the member's major axis (the section's x-x), zz its minor axis (the section's y-y).
class KELTRIX_STEEL_API CSteelMemberGen : public CSteelMember {
public:
    ~CSteelMemberGen() override;
    CSteelMemberGen& operator=(const CSteelMemberGen&) = delete;

    /// Attaches a result, which is borrowed, and writes the design code's name into its text. Null: false, nothing
    /// changed.
    bool SetResult(CMemberResult* result) override;
    /// Takes a copy sorted by number. False when it is empty, positions do not ascend or numbers have gaps or repeat.
    bool SetMemberPointVec(const std::vector<CMemberPoint>& points) override;
    /// Takes a copy sorted by number. False when it is empty or numbers repeat.
    bool SetSubSpanVec(const std::vector<CSubSpan>& subSpans) override;
    void SetTitle(const CString& title) override;
    /// From now on validation collects no text. A new object or a copy is out of this mode again.
    void SetQuickCheckMode() override;
    std::vector<CMemberPoint> GetMemberPointVec() override;
    std::vector<CSubSpan> GetSubSpanVec() override;
    CString GetTitle() override;
    /// Distance from the first to the last point, m; 0 without points.
    double Length() const override;
    void SetLengthOverride(bool isOverridden) override;
    /// Effective length about the major axis, m; below zero, minus a factor of the member's length. So are the next
    /// two: about the minor axis, and for lateral-torsional buckling.
    void SetLyy(double length) override;
    void SetLzz(double length) override;
    void SetLlt(double length) override;
    void SetNumSubSpansUser(int count) override;
    void SetEquivalentUniformMomentFactor(double factor) override;
    /// Throws unsupported_design_code_error; a design code that knows these factors overrides them.
    void SetMomentAmplificationFactorStrongAxis(double factor) override;
    void SetMomentAmplificationFactorWeakAxis(double factor) override;
    /// Reads a member from the text of an input file, and its grade. False where the text departs from the format; what
    /// was read before then stays set. Points and sub-spans are set only when "END" is reached. Lets out
    /// unsupported_design_code_error for a factor that the member refuses.
    bool CSVInputData(const CString& text, CSteelGrade& grade) override;
    /// The text of the input file for this member and the given grade.
    CString CSVInputData(CSteelGrade& grade) override;
    virtual bool LengthOverride() const;
    virtual double Lyy() const;
    virtual double Lzz() const;
    virtual double Llt() const;
    virtual int NumSubSpansUser() const;

    /// Empties points, sub-spans and title, and clears the attached result. Everything else stays.
    void Clear();
    /// Whether points and sub-spans fit together. If not, the reason goes into the result's text, unless in
    /// quick-check mode.
    bool ValidateInputData() const;

    // Validators. With a sink, exactly one message line is appended to it for the first fault. Lists are taken as
    // stored.
    static bool ValidateMPVandSSV(const std::vector<CMemberPoint>* const mpv, const std::vector<CSubSpan>* const ssv,
                                  CString* err);
    static bool ValidateMPV(const std::vector<CMemberPoint>* const mpv, CString* err);
    /// Gaps in the numbers are no fault here. A sub-span that does not equal itself (a not-a-number force) is out of
    /// order.
    static bool ValidateSSV(const std::vector<CSubSpan>* const ssv, CString* err);
    /// Sorts by ascending position.
    static void SortMPVByPos(std::vector<CMemberPoint>* mpv);

protected:
    CSteelMemberGen();
    /// Not a full copy: result, quick-check mode and the three optional factors are not copied.
    CSteelMemberGen(const CSteelMemberGen& other);

    /// Writes the input report into the result's text, with the module's section text in it.
    void ReportInput(const CString& sectionText) const { AddStringInput(sectionText); }
    /// Member points and sub-spans as tables.
    CString GetStringForcesMomentsAndRestraints(const CDesFormat& fmt) const;
    CString GetStringEffectiveLengthsInput(const CDesFormat& fmt) const;
    /// Empty without an override.
    CString GetStringOverridesInput(const CDesFormat& fmt) const;
    /// One effective length: a length, or for a value below zero the factor, the member's length and their product.
    static CString EffectiveLengthOverrideString(const CDesFormat& fmt, const CString& axis, double value,
                                                 double memberLength);
    /// Which flange is in compression over a span, by the extremes of the major-axis moment against a tolerance of 1
    /// N·m or 1 % of the larger, strictly beyond it. Above zero is flange 2.
    CCodeShare::LT_BuckleDirection BucklingSenseLT(const CSpan& span) const;

    const std::vector<CMemberPoint>& MemberPoints() const { return m_vMemberPoints; }
    const std::vector<CSubSpan>& SubSpans() const { return m_vSubSpans; }
    CMemberResult* Result() const { return m_pResult; }
    bool QuickCheckMode() const { return m_bQuickCheckMode; }
    const std::optional<double>& EquivalentUniformMomentFactor() const { return m_optEquivalentUniformMomentFactor; }
    const std::optional<double>& MomentAmplificationFactorStrongAxis() const
    {
        return m_optMomentAmplificationFactorStrongAxis;
    }
    const std::optional<double>& MomentAmplificationFactorWeakAxis() const
    {
        return m_optMomentAmplificationFactorWeakAxis;
    }
    /// For design codes whose setters accept these factors.
    void StoreMomentAmplificationFactorStrongAxis(std::optional<double> factor)
    {
        m_optMomentAmplificationFactorStrongAxis = factor;
    }
    void StoreMomentAmplificationFactorWeakAxis(std::optional<double> factor)
    {
        m_optMomentAmplificationFactorWeakAxis = factor;
    }

private:
    friend class CSteelMemberGenTestAccess;

    void AddStringInput(const CString& sectionText) const;
    CString GetStringInput(const CString& sectionText, const CDesFormat& fmt) const;
    static CString SecUserDescShort(const CString& desc);
    static CSection KXSectFromUserDesc(const CString& desc);

    static std::atomic<int> m_iInstances;

    CMemberResult* m_pResult = nullptr;
    std::vector<CMemberPoint> m_vMemberPoints;
    std::vector<CSubSpan> m_vSubSpans;
    CString m_strTitle;
    bool m_bQuickCheckMode = false;
    bool m_bLengthOverride = false;
    double m_dLyy = 0.0;
    double m_dLzz = 0.0;
    double m_dLlt = 0.0;
    int m_iNumSubSpansUser = 1;
    std::optional<double> m_optMomentAmplificationFactorStrongAxis;
    std::optional<double> m_optMomentAmplificationFactorWeakAxis;
    std::optional<double> m_optEquivalentUniformMomentFactor;
};

} // namespace Keltrix::Steel
