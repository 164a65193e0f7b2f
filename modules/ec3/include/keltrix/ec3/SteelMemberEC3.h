#pragma once

#include <map>
#include <optional>

#include "keltrix/design/DesignCode.h"
#include "keltrix/ec3/Annex.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Material.h"
#include "keltrix/ec3/Section.h"
#include "keltrix/steel/SteelMember.h"

namespace Keltrix::EC3 {

/// How elastic critical moments are found. Elastic: of the member as it is held and loaded. C1: closed form between forks with the
/// tables' factor C1 and loads at the shear centre, for comparison with handbooks.
enum class CriticalMoment { Elastic, C1 };

/// How members under compression and bending are checked: (6.61) and (6.62) with the factors of Annex B or of Annex A, or 6.3.4.
enum class InteractionMethod { AnnexB, AnnexA, General };

/// How lateral-torsional buckling is checked: by reduction factors of 6.3.2.2 and 6.3.2.3, or by 6.3.2.4.
enum class LateralMethod { Curves, Simplified };

/// What the member file has no place for.
struct DesignOptions {
    CriticalMoment mcr = CriticalMoment::Elastic;
    /// Stiff bearing length ss at supports and concentrated loads, m; 0 where none is given. EN 1993-1-5 6.
    double stiffBearing = 0.0;
    InteractionMethod interaction = InteractionMethod::AnnexB;
    LateralMethod lateral = LateralMethod::Curves;
    /// Column in simple construction with nominal moments, by NCCI SN048.
    bool simpleColumn = false;
};

/// Why the module does not take a section; null where it does.
KELTRIX_EC3_API const wchar_t* SectionRefusal(const CSection& section);

class MemberCheck;

/// A steel member checked to EN 1993-1-1:2005+A1:2014.
///
/// Signs are the host's: axial force above zero is tension; shear Fz is along the web, Fy along the flanges; Myy is the moment about the
/// major axis, which is y-y here as well, and Mzz that about the minor axis, z-z.
///
/// Utilisations, flags and text go to the attached result as every design code writes them. Without a result the check runs just
/// the same.
class KELTRIX_EC3_API CSteelMemberEC3 : public Steel::CSteelMemberGen, public Design::CodeMember {
public:
    CSteelMemberEC3() = default;
    ~CSteelMemberEC3() override;
    CSteelMemberEC3* Clone() const override { return new CSteelMemberEC3(*this); }
    int NumDesOpt() const override { return 1; }
    CString DesOptName(int desOpt) override;

    /// Drops section, grade and findings; points, overrides and factors stay until they are read.
    void PrepareInput() override;
    bool SetKeltrixSec(const CSection& section) override;
    CSection GetKeltrixSec() const override { return m_keltrixSection; }
    bool SetGrade(const CSteelGrade& grade) override;
    CSteelGrade GetGrade() const override { return m_grade; }
    /// Every position is checked, whatever `alongMember` says. The findings are those of the local rules alone.
    bool CheckLocal(bool alongMember) override;
    /// The findings are those of the buckling rules alone.
    bool CheckBuckling() override;
    /// True when every rule that applies was evaluated and none failed.
    bool Check() override;
    bool SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points) override;
    bool SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans) override;
    Steel::SubspanEffectiveLengthData GetEffectiveLengths() const override;
    CString GetSectionText(const CDesFormat& fmt) const override;
    int SectionClass() const override { return m_class; }

    Steel::CSteelMemberGen& Member() override { return *this; }
    Design::MemberFindings Findings() const override { return m_findings; }

    /// Both drop the findings.
    void SetAnnex(const Annex& annex);
    void SetOptions(const DesignOptions& options);
    const Annex& NationalAnnex() const { return m_annex; }
    const DesignOptions& Options() const { return m_options; }

protected:
    CSteelMemberEC3(const CSteelMemberEC3&);

private:
    enum class Part { Local, Buckling, Both };
    bool Run(Part part);
    Design::Refusal FindRefusal() const;
    void Refuse(const Design::Refusal& refusal);
    void DropFindings();
    void Write(MemberCheck& check);
    void WriteUtilisations(const MemberCheck& check);
    void SetLoads(const MemberCheck& check);
    void KeepLengths(const MemberCheck& check);

    CSection m_keltrixSection;
    std::optional<Section> m_section;
    CSteelGrade m_grade;
    bool m_hasGrade = false;
    Annex m_annex = UkAnnex();
    DesignOptions m_options;
    Design::MemberFindings m_findings;
    std::map<int, Steel::SubspanEffectiveLengthData::Entry> m_lengthsMajor, m_lengthsMinor;
    int m_class = 0;
};

} // namespace Keltrix::EC3
