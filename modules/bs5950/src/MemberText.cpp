#include "MemberText.h"

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

namespace {

constexpr std::size_t LEDGER_ROW = 160; // characters, most of them

} // namespace

CString MemberText::Verdict(double utilisation, bool inclusive) const
{
    const double u = CMemberResult::InfinitiseNANs(utilisation);
    const bool fails = inclusive ? u >= 1.0 : u > 1.0;
    if (m_isInPart) {
        Design::CalculationPart& part = m_found.parts.back().second;
        if (!(part.utilisation >= u)) part.utilisation = u;
        part.isMarked = part.isMarked || fails;
    }
    CString text;
    text.Format(fails ? L"<red><b>%s</b> FAIL</red>" : L"<b>%s</b> OK", m_fmt.Util(u));
    return text;
}

void MemberText::BeginPart(double start, double end, int entry)
{
    m_found.parts.emplace_back(entry, Design::CalculationPart{start, end});
    m_isInPart = true;
}

void MemberText::Write()
{
    if (m_isInPart && m_line.View().find(L"<red>") != std::wstring_view::npos)
        m_found.parts.back().second.isMarked = true;
    m_line += L'\n';
    m_result.AddOutputString(m_line);
}

// Lead, step, clause.
void MemberText::Append(const CalculationLine& line)
{
    const Design::Step& step = line.step;
    m_line += line.lead;
    if (!*step.symbol) return;
    Design::AppendStep(m_line, step,
                       line.judged == Judged::No ? Design::QuantityText(step.quantity, step.value, m_fmt)
                                                 : Verdict(step.value, line.judged == Judged::BelowOne));
    if (!line.cites) return;
    const bool isClause = *step.clause >= L'0' && *step.clause <= L'9';
    ((m_line += isClause ? L" <i>cl. " : L" <i>") += step.clause) += L"</i>";
}

void MemberText::Print(const CalculationLines& lines)
{
    for (const CalculationLine& line : lines.Lines()) {
        const Steel::CResultIndent indent(line.indent > 0 ? &m_result : nullptr);
        m_line.Empty();
        Append(line);
        Write();
    }
}

void MemberText::Warnings()
{
    for (const Design::Warning& warning : m_found.warnings)
        Line(L"<red><b>WARNING:</b></red> %s", warning.text);
}

void MemberText::LedgerTable()
{
    Line(L"<h4>Ledger of checks:</h4>");
    CString rows = L"<table><align left>Clause\tRule\tStatus\tWhere\tUtilisation\tResistance\n";
    const std::vector<LedgerEntry>& entries = m_found.ledger.Entries();
    rows.Reserve(LEDGER_ROW * (entries.size() + m_found.information->size() + 2));
    const auto row = [&](const LedgerEntry& e) {
        CString where;
        if (e.position >= 0)
            where.Format(L"position %i at %s", e.position + 1, m_fmt.Length(e.start));
        else if (e.start < e.end)
            where.Format(L"%s to %s", m_fmt.Length(e.start), m_fmt.Length(e.end));
        CString resistance;
        if (e.quantity != Quantity::None)
            resistance.Format(L"%s = %s", e.symbol,
                              e.quantity == Quantity::Force    ? m_fmt.Force(e.resistance)
                              : e.quantity == Quantity::Moment ? m_fmt.Moment(e.resistance)
                                                               : m_fmt.Stress(e.resistance));
        const bool done =
            e.status == CheckStatus::Passed || e.status == CheckStatus::Failed || e.status == CheckStatus::Information;
        const wchar_t* const status = e.status == CheckStatus::Failed ? L"<red>failed</red>" : StatusName(e.status);
        rows.AppendFormat(L"%s\t%s%s%s\t%s%s%s\t%s\t%s\t%s\n", e.clause, e.governing ? L"<b>" : L"", RuleName(e.rule),
                          e.governing ? L" (governs)</b>" : L"", status, *e.reason ? L": " : L"", e.reason, where,
                          done && e.utilisation > 0.0 ? m_fmt.Util(e.utilisation) : CString(), resistance);
    };
    std::for_each(entries.begin(), entries.end(), row);
    std::for_each(m_found.information->begin(), m_found.information->end(), row);
    rows += L"</align></table>\n";
    m_result.AddOutputString(rows);
}

void MemberText::Summary()
{
    Line(L"<h4>Assumptions:</h4>");
    if (m_found.assumptions.empty()) Line(L"\tnone");
    for (const Assumption& a : m_found.assumptions)
        Line(L"\t<b>%s</b>: %s", a.name, AssumptionText(a, m_fmt));
    LedgerTable();
}

CString CSteelMemberBS5950::GetSectionText(const CDesFormat& fmt) const
{
    CString text;
    if (!m_section.HasSection()) return L"no section\n";
    const SectionProperties& s = m_section.Properties();
    text = GetKeltrixSec().Component(0).Description(true) + L", " + Design::FabricationText(s.fabrication) + L"\n";
    text += const_cast<CSectionBS5950&>(m_section).SectGeomString(fmt); // not const in the base, and changes nothing
    text.AppendFormat(L"A = %.4G cm², Ix = %.5G cm⁴, Iy = %.5G cm⁴\n", s.A * 1e4, s.Ix * 1e8, s.Iy * 1e8);
    text.AppendFormat(L"Zx = %.4G cm³, Zy = %.4G cm³, Sx = %.4G cm³, Sy = %.4G cm³\n", s.Zx * 1e6, s.Zy * 1e6,
                      s.Sx * 1e6, s.Sy * 1e6);
    text.AppendFormat(L"rx = %.4G cm, ry = %.4G cm, J = %.4G cm⁴\n", s.rx * 1e2, s.ry * 1e2, s.J * 1e8);
    if (s.u > 0.0) text.AppendFormat(L"u = %.3f, x = %.1f <i>Annex B.2</i>\n", s.u, s.x);
    if (s.shape == Shape::Angle)
        text.AppendFormat(L"Zu = %.4G cm³, Zv = %.4G cm³, rv = %.4G cm, tan α = %.3f\n", s.Zu * 1e6, s.Zv * 1e6,
                          s.rv * 1e2, std::tan(s.alpha));
    if (!m_hasGrade) return text + L"no grade\n";
    const Material& m = m_section.Steel();
    if (!m.IsValid()) {
        text.AppendFormat(L"Grade %s: <red>%s</red>\n", m_grade.Name(), m.refusal);
        return text;
    }
    text.AppendFormat(L"Grade %s, thickest element %s m: py = %s <i>cl. 3.1.1%s</i>, E = %s\n", m_grade.Name(),
                      fmt.LengthSmall(s.thickest), fmt.Stress(m.py), m.grade == Grade::User ? L"" : L", Table 9",
                      fmt.Stress(m.E));
    return text;
}

} // namespace Keltrix::BS5950
