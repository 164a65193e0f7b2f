#pragma once

#include <vector>

#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/DesignOptions.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Results.h"
#include "keltrix/bs5950/SectionBS5950.h"
#include "keltrix/design/DesignCode.h"
#include "keltrix/steel/SteelMember.h"

namespace Keltrix::BS5950 {

struct MemberInput;
struct MemberModel;

/// A steel member checked to BS 5950-1:2000.
///
/// Signs are the host's: axial force above zero is tension; shear Fz is along the web, Fy along the flanges;
/// Myy is the moment about the section's x-x axis, above zero it compresses flange 2 (the bottom flange), so that a
/// simply supported beam under gravity has moments below zero; dMyy/dx = Fz. Mzz is the moment about y-y.
///
/// Design option 1 takes the simplified interaction rules (4.8.2.2, 4.8.3.2 a, 4.8.3.3.1), option 2 the more exact
/// ones (4.8.2.3, 4.8.3.2 b, 4.8.3.3.2, 4.8.3.3.3) where the section has them.
///
/// Utilisations, flags and text go to the attached result: entry 0 the member, then the left and the right end of each
/// sub-span (PositionResult::Entry), the last entry the buckling checks. Without a result the check runs just the same.
class KELTRIX_BS5950_API CSteelMemberBS5950 : public Steel::CSteelMemberGen, public Design::CodeMember {
public:
    KELTRIX_CONSTANT static constexpr int SIMPLIFIED = 1;
    KELTRIX_CONSTANT static constexpr int MORE_EXACT = 2;

    CSteelMemberBS5950() = default;
    CSteelMemberBS5950* Clone() const override { return new CSteelMemberBS5950(*this); }
    int NumDesOpt() const override { return 2; }
    CString DesOptName(int desOpt) override;

    /// Drops section, grade and findings; points, overrides and factors stay until they are read.
    void PrepareInput() override;
    bool SetKeltrixSec(const CSection& section) override;
    CSection GetKeltrixSec() const override;
    bool SetGrade(const CSteelGrade& grade) override;
    CSteelGrade GetGrade() const override { return m_grade; }
    /// With `alongMember` the text covers every position, otherwise only those above 1.0 or else the one of the largest
    /// utilisation. All positions are checked either way. True when every local check that applies was evaluated and none
    /// failed.
    bool CheckLocal(bool alongMember) override;
    /// True when every buckling check that applies was evaluated and none failed.
    bool CheckBuckling() override;
    /// True when every rule that applies was evaluated and none failed: Status() tells the two other outcomes apart.
    bool Check() override;
    bool SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points) override;
    bool SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans) override;
    Steel::SubspanEffectiveLengthData GetEffectiveLengths() const override;
    CString GetSectionText(const CDesFormat& fmt) const override;
    int SectionClass() const override { return m_found.cls; }

    // As a design code's member.
    Steel::CSteelMemberGen& Member() override { return *this; }
    /// A copy of what stands in Checks(), Positions() and so on, as every design code gives it.
    Design::MemberFindings Findings() const override;
    /// InformationEntries() in the same way.
    std::vector<Design::RuleFinding> Information() const override;

    /// Drops the findings.
    void SetOptions(const DesignOptions& options);
    const DesignOptions& Options() const { return m_options; }

    const SectionProperties& Properties() const { return m_section.Properties(); }
    /// Material for the present section and grade; its `refusal` says why there is none.
    const Material& Steel() const { return m_section.Steel(); }
    double DesignStrength() const { return m_section.Steel().py; }

    // Findings of the last check.
    const MemberResults& Results() const { return m_found; }
    const Ledger& Checks() const { return m_found.ledger; }
    /// Outcome of the last check; NotChecked before one.
    Design::Status Status() const { return m_found.ledger.Status(); }
    /// What in the input leaves the answer in doubt, by place.
    const std::vector<Design::Warning>& Warnings() const { return m_found.warnings; }
    /// Moments along the member as they were checked, about x-x and y-y.
    const Design::MomentDiagram& MajorMoments() const { return m_found.major; }
    const Design::MomentDiagram& MinorMoments() const { return m_found.minor; }
    const std::vector<Assumption>& Assumptions() const { return m_found.assumptions; }
    const std::vector<PositionResult>& Positions() const { return m_found.positions; }
    /// Where a stiff bearing length is given and the section is one that 4.5 is evaluated for; otherwise empty.
    const std::vector<WebLoadResult>& WebLoads() const { return m_found.webLoads; }
    const std::vector<SpanResult>& Spans() const { return m_found.spans; }
    const std::vector<InteractionResult>& Interactions() const { return m_found.interactions; }
    /// Figures beside the rules, as entries of status Information: lateral-torsional buckling by the method that was not used, and
    /// the elastic critical load of a strut. With LateralMethod::Tables the elastic figures are given where a stretch has no effective length, where
    /// the other flange is held along it, and for cantilevers. Calculated at each call, except after a check with text, which has them; empty
    /// before a check.
    std::vector<LedgerEntry> InformationEntries() const;
    ResistanceSummary Resistances() const { return m_found.Resistances(); }

protected:
    CSteelMemberBS5950(const CSteelMemberBS5950&) = default;

private:
    enum class Part { Local, Buckling, Both };
    /// False where nothing can be checked.
    bool Run(Part part, bool alongMember);
    MemberInput Input() const;
    Design::Refusal FindRefusal() const;
    void Refuse(const Design::Refusal& refusal);
    void WriteGeneral(const MemberModel& model);

    CSectionBS5950 m_section;
    CSteelGrade m_grade;
    bool m_hasGrade = false;
    DesignOptions m_options;
    MemberResults m_found;
};

} // namespace Keltrix::BS5950
