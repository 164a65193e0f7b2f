// The one printer of a check's text: every rule is printed from its steps.

#include "MemberText.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;
using Steel::CMemberResult;

namespace {

class Printer {
public:
    Printer(MemberCheck& check, CMemberResult& result) :
        m_check(check), m_findings(check.Findings()), m_result(result), m_fmt(result.DesFormat())
    {}

    void Print()
    {
        m_result.SetCurSubSpan(0);
        for (const Design::Warning& warning : m_findings.warnings)
            Line(L"<red><b>WARNING:</b></red> %s", warning.text);
        const int last = 2 * static_cast<int>(m_check.Input().subSpans.size()) + 1;
        // Cross-section checks stand together at the position of the largest utilisation, which short reports show as well.
        int worst = 1;
        m_result.MaxUtilLocalCombined(&worst);
        PrintStage(Stage::General, 0);
        PrintStage(Stage::Local, worst);
        m_result.SetCurSubSpan(last);
        Line(L"<h4>Buckling checks:</h4>");
        PrintStage(Stage::Buckling, last);
        m_result.SetCurSubSpan(last);
        Assumptions();
        Ledger();
    }

private:
    template <class... Args>
    void Line(const wchar_t* format, const Args&... args)
    {
        m_line.Empty();
        m_line.AppendFormat(format, args...);
        WriteLine();
    }
    void WriteLine()
    {
        m_line += L'\n';
        m_result.AddOutputString(m_line);
    }

    void PrintStage(Stage stage, int entry)
    {
        m_result.SetCurSubSpan(entry);
        for (const RuleFinding& f : m_findings.rules)
            if (StageOf(f) == stage && !f.steps.empty()) PrintRule(f);
    }

    void PrintRule(const RuleFinding& f)
    {
        CString where;
        if (f.start < f.end)
            where.Format(L", %s to %s", m_fmt.Length(f.start), m_fmt.Length(f.end));
        else if (!std::isnan(f.start))
            where.Format(L" at %s", m_fmt.Length(f.start));
        Line(L"<h5>%s %s%s</h5>", f.clause, f.name, where);
        Design::CalculationPart part{f.start, f.end};
        if (std::isnan(f.start)) part.start = part.end = m_check.Input().Start();
        for (const Design::Step& step : f.steps)
            Write(step);
        if (f.WasEvaluated() && f.utilisation > 0.0) {
            const bool fails = f.status == CheckStatus::Failed;
            part.utilisation = f.utilisation;
            part.isMarked = fails;
            CString against;
            if (f.quantity != Quantity::None && !std::isnan(f.resistance))
                against.Format(L"%s = %s, ", f.symbol, Design::QuantityText(f.quantity, f.resistance, m_fmt));
            Line(fails ? L"\t%sutilisation <red><b>%s</b> FAIL</red>" : L"\t%sutilisation <b>%s</b> OK", against,
                 m_fmt.Util(f.utilisation));
        }
        m_findings.parts.push_back(part);
    }

    // With its clause.
    void Write(const Design::Step& step)
    {
        m_line = L"\t";
        Design::AppendStep(m_line, step, Design::QuantityText(step.quantity, step.value, m_fmt));
        if (*step.clause) ((m_line += L" <i>") += step.clause) += L"</i>";
        WriteLine();
    }

    void Assumptions()
    {
        Line(L"<h4>Assumptions:</h4>");
        if (m_findings.assumptions.empty()) Line(L"\tnone");
        for (const Design::Assumption& a : m_findings.assumptions)
            Line(L"\t<b>%s</b>: %s", a.name, Design::AssumptionText(a, m_fmt));
        Line(L"<h4>National choices, %s:</h4>", m_check.Input().annex->title);
        for (const NationalChoice& choice : NationalChoices(*m_check.Input().annex))
            Line(L"\t%s = %s <i>%s</i>", choice.name, choice.word.IsEmpty() ? m_fmt.NoDim(choice.value) : choice.word,
                 choice.clause);
    }

    void Ledger()
    {
        Line(L"<h4>Ledger of checks:</h4>");
        CString rows = L"<table><align left>Clause\tRule\tStatus\tWhere\tUtilisation\tResistance\n";
        rows.Reserve(LEDGER_ROW * (m_findings.rules.size() + 2));
        for (const RuleFinding& f : m_findings.rules)
            AppendRow(rows, f);
        rows += L"</align></table>\n";
        m_result.AddOutputString(rows);
    }

    void AppendRow(CString& rows, const RuleFinding& f) const
    {
        CString where, resistance;
        if (f.start < f.end)
            where.Format(L"%s to %s", m_fmt.Length(f.start), m_fmt.Length(f.end));
        else if (!std::isnan(f.start))
            where = m_fmt.Length(f.start);
        if (f.quantity != Quantity::None)
            resistance.Format(L"%s = %s", f.symbol, Design::QuantityText(f.quantity, f.resistance, m_fmt));
        const wchar_t* const status =
            f.status == CheckStatus::Failed ? L"<red>failed</red>" : Design::StatusName(f.status);
        rows.AppendFormat(L"%s\t%s%s%s\t%s%s%s\t%s\t%s\t%s\n", f.clause, f.governing ? L"<b>" : L"", f.name,
                          f.governing ? L" (governs)</b>" : L"", status, *f.reason ? L": " : L"", f.reason, where,
                          f.WasEvaluated() && f.utilisation > 0.0 ? m_fmt.Util(f.utilisation) : CString(), resistance);
    }

    static constexpr std::size_t LEDGER_ROW = 160; // characters, most of them

    MemberCheck& m_check;
    Design::MemberFindings& m_findings;
    CMemberResult& m_result;
    const CDesFormat& m_fmt;
    CString m_line; ///< keeps its space from line to line
};

CString Figures(double value, const wchar_t* unit)
{
    CString text;
    text.Format(L"%.5G %s", value, unit);
    return text;
}

} // namespace

void WriteText(MemberCheck& check, CMemberResult& result) { Printer(check, result).Print(); }

CString CSteelMemberEC3::GetSectionText(const CDesFormat& fmt) const
{
    if (!m_section) return L"no section\n";
    const Section& s = *m_section;
    const wchar_t* const made = Design::FabricationText(s.fabrication);
    CString text = m_keltrixSection.Component(0).Description(true) + L", " + made + L"\n";
    if (const auto geometry = Design::MakeGeometry(m_keltrixSection, nullptr)) text += geometry->SectGeomString(fmt);
    text += L"A = " + Figures(s.A * 1e4, L"cm²") + L", Iy = " + Figures(s.Iy * 1e8, L"cm⁴") + L", Iz = " +
            Figures(s.Iz * 1e8, L"cm⁴") + L"\n";
    if (s.shape == Shape::Angle)
        text += L"Iu = " + Figures(s.Iu * 1e8, L"cm⁴") + L", Iv = " + Figures(s.Iv * 1e8, L"cm⁴") + L", Wel,u = " +
                Figures(s.Welu * 1e6, L"cm³") + L", Wel,v = " + Figures(s.Welv * 1e6, L"cm³") + L"\n";
    else
        text += L"Wel,y = " + Figures(s.Wely * 1e6, L"cm³") + L", Wel,z = " + Figures(s.Welz * 1e6, L"cm³") +
                L", Wpl,y = " + Figures(s.Wply * 1e6, L"cm³") + L", Wpl,z = " + Figures(s.Wplz * 1e6, L"cm³") + L"\n";
    text += L"iy = " + Figures(s.iy * 1e2, L"cm") + L", iz = " + Figures(s.iz * 1e2, L"cm") + L", It = " +
            Figures(s.It * 1e8, L"cm⁴") + L", Iw = " + Figures(s.Iw * 1e12, L"cm⁶") + L"\n";
    if (!s.IsDoublySymmetric())
        text += L"Shear centre from the centroid: " + Figures(std::abs(s.y0) * 1e3, L"mm") + L" across, " +
                Figures(s.z0 * 1e3, L"mm") + L" up; i0 = " + Figures(s.i0 * 1e2, L"cm") + L"\n";
    if (!m_hasGrade) return text + L"no grade\n";
    const Material m = MakeMaterial(m_grade, s.basis, m_annex);
    if (!m.IsValid()) {
        text.AppendFormat(L"Grade %s: <red>%s</red>\n", m_grade.Name(), m.refusal);
        return text;
    }
    text.AppendFormat(L"Grade %s, thickest element %s m: fy = %s, fu = %s <i>3.2.1, %s</i>, E = %s\n", m_grade.Name(),
                      fmt.LengthSmall(s.thickest), fmt.Stress(m.fy), fmt.Stress(m.fu), m.source, fmt.Stress(m.E));
    return text;
}

} // namespace Keltrix::EC3
