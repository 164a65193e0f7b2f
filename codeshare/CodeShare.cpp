// Effective lengths for lateral-torsional buckling, BS 5950-1:2000: Table 13 with clause 4.3.5.2 (beams) and Table 14 with
// clause 4.3.5.4 (cantilevers). The factors are the standard's; which row applies is read off the closure of the restraint.

#include "keltrix/steel/CodeShare.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace Keltrix::Steel {

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();

constexpr unsigned int COMP_HELD_IN_TORSION = CRestraint::TORSION_PART | CRestraint::COMP_FLANGE_LATERAL;
constexpr unsigned int TENS_HELD_IN_TORSION = CRestraint::TORSION_PART | CRestraint::TENS_FLANGE_LATERAL;

/// The restraint closed with the compression flange that the direction says: flange 1 by a moment below zero, flange 2 by
/// one above it, otherwise by the restraint's own moment. Forces and moments count as set, also where they were not.
class WorkingCopy {
public:
    WorkingCopy(const CRestraint& restraint, CCodeShare::LT_BuckleDirection dir, bool useMomentSign) :
        m_restraint(restraint)
    {
        Vec3<double> force;
        Vec3<double> moment;
        bool ownUse = true;
        restraint.GetForcesAndMoments(force, moment, ownUse);
        if (dir == CCodeShare::LT_COMP_FLANGE1) moment.y = -1.0;
        if (dir == CCodeShare::LT_COMP_FLANGE2) moment.y = 1.0;
        m_restraint.SetForcesAndMoments(force, moment, useMomentSign);
        m_restraint.MakeConsistent();
    }

    /// Whether every one of the bits is set.
    bool Has(unsigned int bits) const { return m_restraint.IsRestrained(bits, false); }

private:
    CRestraint m_restraint;
};

bool UsesMomentSign(const CRestraint& restraint)
{
    Vec3<double> force;
    Vec3<double> moment;
    bool use = true;
    restraint.GetForcesAndMoments(force, moment, use);
    return use;
}

/// A row of Table 13: factors of the length and the multiple of the depth, with the labels of its two columns.
struct Table13Row {
    unsigned int given;
    double normal;
    double destabilizing;
    double depths;
    const wchar_t* normalLabel;
    const wchar_t* destabilizingLabel;
};

/// Rows of an end that is held in torsion with its compression flange held laterally, by what holds the flanges' rotation on
/// plan; the first that applies counts.
constexpr Table13Row TORSION_ROWS[] = {
    {CRestraint::COMP_FLANGE_WARPING | CRestraint::TENS_FLANGE_WARPING, 0.7, 0.85, 0.0, L"0.7L(normal)",
     L"0.85L(destabilizing)"},
    {CRestraint::COMP_FLANGE_WARPING, 0.75, 0.9, 0.0, L"0.75L(normal)", L"0.9L(destabilizing)"},
    {CRestraint::COMP_FLANGE_WARPING_PART | CRestraint::TENS_FLANGE_WARPING_PART, 0.8, 0.95, 0.0, L"0.8L(normal)",
     L"0.95L(destabilizing)"},
    {CRestraint::COMP_FLANGE_WARPING_PART, 0.85, 1.0, 0.0, L"0.85L(normal)", L"1.0L(destabilizing)"},
    {0, 1.0, 1.2, 0.0, L"1.0L(normal)", L"1.2L(destabilizing)"},
};
constexpr Table13Row PART_TORSION_ROW = {0, 1.0, 1.2, 2.0, L"1.0L+2D(normal)", L"1.2L+2D(destabilizing)"};
constexpr Table13Row FRICTION_ROW = {0, 1.2, 1.4, 2.0, L"1.2L+2D(normal)", L"1.4L+2D(destabilizing)"};
constexpr Table13Row NOMINAL_TORSION_ROW = {0, 1.0, 1.2, 0.0, L"1.0L(normal)", L"1.2L(destabilizing)"};

/// The row that applies, or null.
const Table13Row* FindTable13Row(const CRestraint& restraint, CCodeShare::LT_BuckleDirection dir, bool nominalRejected)
{
    const WorkingCopy end(restraint, dir, UsesMomentSign(restraint));
    if (end.Has(COMP_HELD_IN_TORSION)) {
        const Table13Row* row = TORSION_ROWS;
        while (!end.Has(row->given))
            ++row;
        return row;
    }
    const bool compressionHeld = end.Has(CRestraint::COMP_FLANGE_LATERAL);
    const bool laterallyHeld =
        end.Has(CRestraint::TENS_FLANGE_LATERAL) || end.Has(CRestraint::MINOR_SHEAR) || compressionHeld;
    if (end.Has(CRestraint::TORSION_PART) && laterallyHeld) return &PART_TORSION_ROW;
    if (end.Has(CRestraint::TORSION_FRICTION) && laterallyHeld) return &FRICTION_ROW;
    if (compressionHeld && !nominalRejected) return &NOMINAL_TORSION_ROW;
    return nullptr;
}

/// What Table 13 says of one end.
struct EndFinding {
    double length;
    std::wstring_view label;
    bool failed;

    EndFinding(const Table13Row* row, double L, double D, bool destabilizing) :
        length(INF), label(L"?"), failed(row == nullptr)
    {
        if (failed) return;
        length = (destabilizing ? row->destabilizing : row->normal) * L;
        if (row->depths != 0.0) length += row->depths * D;
        label = destabilizing ? row->destabilizingLabel : row->normalLabel;
    }

    CString Text() const
    {
        CString text = L"<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i> condition: ";
        text += label;
        text += L"\n";
        return text;
    }
};

/// Support condition of Table 14, 'a' to 'd', or '?' where none applies.
wchar_t SupportCondition(const WorkingCopy& support)
{
    if (support.Has(CRestraint::MINOR_SHEAR | CRestraint::TENS_FLANGE_WARPING | CRestraint::COMP_FLANGE_WARPING |
                    CRestraint::TORSION))
        return L'd';
    if (support.Has(CRestraint::MINOR_SHEAR | CRestraint::TORSION)) return L'c';
    if (support.Has(COMP_HELD_IN_TORSION) || support.Has(TENS_HELD_IN_TORSION)) return L'b';
    if (support.Has(CRestraint::TENS_FLANGE_LATERAL)) return L'a';
    return L'?';
}

/// Tip condition of Table 14, '1' to '4'.
wchar_t TipCondition(const WorkingCopy& tip)
{
    if (tip.Has(CRestraint::TORSION | CRestraint::COMP_FLANGE_LATERAL) ||
        tip.Has(CRestraint::TORSION | CRestraint::TENS_FLANGE_LATERAL))
        return L'4';
    if (tip.Has(CRestraint::TORSION)) return L'3';
    if (tip.Has(CRestraint::TENS_FLANGE_LATERAL)) return L'2';
    return L'1';
}

/// Factors of Table 14 by support (a to d) and tip (1 to 4).
constexpr double TABLE14_NORMAL[4][4] = {
    {3.0, 2.7, 2.4, 2.1}, {2.0, 1.8, 1.6, 1.4}, {1.0, 0.9, 0.8, 0.7}, {0.8, 0.7, 0.6, 0.5}};
constexpr double TABLE14_DESTABILIZING[4][4] = {
    {7.5, 7.5, 4.5, 3.6}, {5.0, 5.0, 3.0, 2.4}, {2.5, 2.5, 1.5, 1.2}, {1.4, 1.4, 0.6, 0.5}};

} // namespace

double CCodeShare::BS5950_1_2000_Table13(double L, double D, LT_BuckleDirection dir, const CRestraint& restraint,
                                         bool bDestabilizing, bool bNominalRejected) const
{
    const EndFinding end(FindTable13Row(restraint, dir, bNominalRejected), L, D, bDestabilizing);
    if (m_pResult != nullptr) {
        if (end.failed) m_pResult->FailBucklingLT();
        if (m_pResult->TextEnabled()) m_pResult->ReallyAddVerbose(end.Text());
    }
    return end.length;
}

double CCodeShare::BS5950_1_2000_Table13(double L, double D, LT_BuckleDirection dir, const CRestraint& end1,
                                         const CRestraint& end2, bool bDestabilizing, bool bNominalRejected1,
                                         bool bNominalRejected2) const
{
    const EndFinding first(FindTable13Row(end1, dir, bNominalRejected1), L, D, bDestabilizing);
    const EndFinding second(FindTable13Row(end2, dir, bNominalRejected2), L, D, bDestabilizing);
    if (m_pResult != nullptr) {
        CString text;
        if (m_pResult->TextEnabled()) {
            const int indent = m_pResult->GetIndentVerbose();
            text.Append(indent, L'\t');
            text += CMemberResult::Tabify(first.Text(), indent, false);
            // One line where both ends leave equal records. A record with a not-a-number in its format equals nothing.
            const bool equalsItself = m_pResult->DesFormat() == m_pResult->DesFormat();
            if (second.label != first.label || !equalsItself) {
                text.Append(indent, L'\t');
                text += CMemberResult::Tabify(second.Text(), indent, false);
            }
        }
        m_pResult->MergeScratch(text, first.failed || second.failed);
    }
    return std::isfinite(first.length) && std::isfinite(second.length) ? (first.length + second.length) * 0.5 : INF;
}

double CCodeShare::BS5950_1_2000_Table14(double L, LT_BuckleDirection dir, const CRestraint& support,
                                         const CRestraint& tip, bool bDestabilizing) const
{
    // The tip's use of the moment sign rules the support as well, unlike in Table 13: kept for compatibility.
    const bool useMomentSign = UsesMomentSign(tip);
    const wchar_t supportCondition = SupportCondition(WorkingCopy(support, dir, useMomentSign));
    const wchar_t tipCondition = TipCondition(WorkingCopy(tip, dir, useMomentSign));
    const bool applies = supportCondition != L'?';
    double k = INF;
    if (applies) {
        const auto& factors = bDestabilizing ? TABLE14_DESTABILIZING : TABLE14_NORMAL;
        k = factors[supportCondition - L'a'][tipCondition - L'1'];
    }
    double length = applies ? k * L : INF;

    const bool writesText = CMemberResult::TextEnabled(m_pResult);
    if (writesText) {
        CString text = L"<i>BS5950-1:2000 Table 14</i> condition: ";
        text += supportCondition;
        text += tipCondition;
        text += bDestabilizing ? L" (destabilizing) " : L" ";
        text += m_pResult->DesFormat().NoDim(k) + L"*L\n";
        m_pResult->ReallyAddVerbose(text);
    }

    Vec3<double> tipForce;
    Vec3<double> tipMoment;
    bool use = true;
    tip.GetForcesAndMoments(tipForce, tipMoment, use);
    // A raw threshold of 1 N·m: kept for compatibility.
    if (std::fabs(tipMoment.y) >= 1.0) {
        length = std::max(1.3 * length, length + 0.3 * L);
        if (writesText) {
            m_pResult->ReallyAddVerbose(L"Le increased due to tip moment:");
            m_pResult->ReallyAddVerbose(L" <i>BS5950-1:2000 cl. 4.3.5.4</i>\n");
        }
    }
    if (!applies && m_pResult != nullptr) m_pResult->FailBucklingLT();
    return length;
}

} // namespace Keltrix::Steel
