#include <cassert>
#include <numeric>
#include <set>

#include "keltrix/steel/MemberResult.h"

namespace Keltrix::Steel {

namespace {

const wchar_t* const LOCAL_HEADING = L"<h4>Local capacity checks:</h4>\n";
const wchar_t* const ALONG_MEMBER_HEADING = L"<h5>Checks along member:</h5>\n";
const wchar_t* const CRITICAL_HEADING = L"<h5>Checks critical sub_spans:</h5>\n";

/// A flag with its line in the summary.
struct FlagLine {
    int flag;
    const wchar_t* line;
};

/// In the order of the summary.
constexpr FlagLine FLAG_LINES[] = {
    {CMemberResult::NOTIFY, L"\t<blue>NOTIFY</blue>\n"},
    {CMemberResult::WARNING, L"\t<orange>WARNING</orange>\n"},
    {CMemberResult::FAIL, L"\t<red>FAIL</red>\n"},
    {CMemberResult::NOT_CHECKED, L"\t<red>NOT CHECKED</red>\n"},
    {CMemberResult::FAIL_LOCAL, L"\t<red>FAIL LOCAL</red>\n"},
    {CMemberResult::FAIL_BUCKLE, L"\t<red>FAIL BUCKLE</red>\n"},
    {CMemberResult::FAIL_BUCKLE_LAT_TORS, L"\t<red>FAIL BUCKLE LAT_TORS</red>\n"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR, L"\t<red>FAIL BUCKLE AXIAL MAJOR</red>\n"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MINOR, L"\t<red>FAIL BUCKLE AXIAL MINOR</red>\n"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_TORSION, L"\t<red>FAIL BUCKLE AXIAL TORSION</red>\n"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, L"\t<red>FAIL BUCKLE AXIAL FLEXURAL TORSION</red>\n"},
    {CMemberResult::FAIL_LOCAL_AXIAL, L"\t<red>FAIL LOCAL AXIAL</red>\n"},
    {CMemberResult::FAIL_LOCAL_BENDING_MAJOR, L"\t<red>FAIL LOCAL BENDING MAJOR</red>\n"},
    {CMemberResult::FAIL_LOCAL_BENDING_MINOR, L"\t<red>FAIL LOCAL BENDING MINOR</red>\n"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MAJOR, L"\t<red>FAIL LOCAL SHEAR MAJOR</red>\n"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MINOR, L"\t<red>FAIL LOCAL SHEAR MINOR</red>\n"},
    {CMemberResult::FAIL_LOCAL_TORSION, L"\t<red>FAIL LOCAL TORSION</red>\n"},
    {CMemberResult::INFO_LOCAL_SLENDER, L"\t<blue>INFO LOCAL SLENDER</blue>\n"},
    {CMemberResult::INFO_LOCAL_SLENDER_WEB, L"\t<blue>INFO LOCAL SLENDER WEB</blue>\n"},
    {CMemberResult::INFO_LOCAL_SLENDER_FLANGE, L"\t<blue>INFO LOCAL SLENDER FLANGE</blue>\n"},
    {CMemberResult::INFO_MEMBER_SLENDER, L"\t<blue>INFO MEMBER SLENDER</blue>\n"},
};

/// Appends a text with `indent` tabs after every line break except a final one.
void AppendTabified(CString& to, std::wstring_view text, int indent)
{
    for (;;) {
        const std::size_t lineBreak = indent == 0 ? std::wstring_view::npos : text.find(L'\n');
        if (lineBreak == std::wstring_view::npos || lineBreak + 1 == text.size()) {
            to += text;
            return;
        }
        to += text.substr(0, lineBreak + 1);
        to.Append(indent, L'\t');
        text.remove_prefix(lineBreak + 1);
    }
}

/// Texts one after the other, put together in one go.
CString Joined(const std::vector<std::wstring_view>& parts)
{
    std::size_t length = 0;
    for (const std::wstring_view part : parts)
        length += part.size();
    CString text;
    text.Reserve(length);
    for (const std::wstring_view part : parts)
        text += part;
    return text;
}

} // namespace

CString& CMemberResult::TextHere()
{
    assert(m_iCurSubSpan >= 0 && static_cast<std::size_t>(m_iCurSubSpan) < m_vstrVerbose.size());
    m_bTextsAreNotes = false;
    return m_vstrVerbose[static_cast<std::size_t>(m_iCurSubSpan)];
}

void CMemberResult::AddOutputString(const CString& text)
{
    if (m_bTextEnabled) ReallyAddVerbose(text);
}

void CMemberResult::PushIndentVerbose(int levels)
{
    if (m_bTextEnabled) m_viIndent.push_back(levels);
}

int CMemberResult::PopIndentVerbose()
{
    if (!m_bTextEnabled || m_viIndent.empty()) return 0;
    const int levels = m_viIndent.back();
    m_viIndent.pop_back();
    return levels;
}

int CMemberResult::GetIndentVerbose() const { return std::accumulate(m_viIndent.begin(), m_viIndent.end(), 0); }

CString CMemberResult::Tabify(const CString& text, const int& indent, bool indentFirst)
{
    CString result;
    result.Reserve(static_cast<std::size_t>(text.GetLength()) + 16);
    if (indentFirst) result.Append(indent, L'\t');
    AppendTabified(result, text, indent);
    return result;
}

void CMemberResult::ReallyAddVerbose(const CString& text)
{
    CString& stored = TextHere();
    const int indent = GetIndentVerbose();
    if (stored.IsEmpty() || stored[stored.GetLength() - 1] == L'\n') stored.Append(indent, L'\t');
    AppendTabified(stored, text, indent);
}

CString CMemberResult::TitleForCheckLocalOutput(bool alongMember) const
{
    CString title = LOCAL_HEADING;
    title += alongMember ? ALONG_MEMBER_HEADING : CRITICAL_HEADING;
    return title;
}

CString CMemberResult::GetVerbose() const
{
    std::vector<std::wstring_view> parts(m_vstrVerbose.begin(), m_vstrVerbose.end());
    const CString title = TitleForCheckLocalOutput(true);
    if (parts.size() >= 2) parts.insert(parts.begin() + 1, title);
    return Joined(parts);
}

CString CMemberResult::GetBrief() const
{
    std::set<int> critical;
    for (const std::vector<double>* values :
         {&m_vUtilLocalCombined, &m_vUtilLocalAxial, &m_vUtilLocalMomMajor, &m_vUtilLocalMomMinor,
          &m_vUtilLocalShearMajor, &m_vUtilLocalShearMinor, &m_vUtilLocalTorsion}) {
        int position = 0;
        if (MaxOf(*values, &position) > 1.0) critical.insert(position);
    }
    if (critical.empty()) {
        int position = 0;
        MaxOf(m_vUtilLocalCombined, &position);
        // Position 0, the member-level text, stands in the report already.
        if (position > 0) critical.insert(position);
    }

    if (m_vstrVerbose.size() < 2) return m_vstrVerbose.empty() ? CString() : m_vstrVerbose.front();
    const CString title = TitleForCheckLocalOutput(false);
    std::vector<std::wstring_view> parts = {m_vstrVerbose.front(), title};
    for (const int k : critical)
        if (static_cast<std::size_t>(k) < m_vstrVerbose.size())
            parts.emplace_back(m_vstrVerbose[static_cast<std::size_t>(k)]);
    if (m_bIncBuckChk) parts.emplace_back(m_vstrVerbose.back());
    return Joined(parts);
}

CString CMemberResult::GetSummary() const
{
    // Labels are padded to one width so that the values line up.
    const struct {
        const wchar_t* label;
        double value;
        int loads; // shown where any of these is present; 0: always
    } lines[] = {
        {L"\tLocalAxial                  \t<b>", MaxUtilLocalAxial(nullptr), LOAD_AXIAL},
        {L"\tLocalMomMajor               \t<b>", MaxUtilLocalMomMajor(nullptr), LOAD_MAJOR},
        {L"\tLocalMomMinor               \t<b>", MaxUtilLocalMomMinor(nullptr), LOAD_MINOR},
        {L"\tLocalShearMajor             \t<b>", MaxUtilLocalShearMajor(nullptr), LOAD_MAJOR},
        {L"\tLocalShearMinor             \t<b>", MaxUtilLocalShearMinor(nullptr), LOAD_MINOR},
        {L"\tLocalTorsion                \t<b>", MaxUtilLocalTorsion(nullptr), LOAD_TORSION},
        {L"\tBucklingAxialMajor          \t<b>", m_dUtilBucklingAxialMajor, LOAD_AXIAL},
        {L"\tBucklingAxialMinor          \t<b>", m_dUtilBucklingAxialMinor, LOAD_AXIAL},
        {L"\tBucklingAxialTorsion        \t<b>", m_dUtilBucklingAxialTorsion, LOAD_AXIAL},
        {L"\tBucklingAxialFlexuralTorsion\t<b>", m_dUtilBucklingAxialFlexuralTorsion, LOAD_AXIAL},
        {L"\tBucklingLT                  \t<b>", m_dUtilBucklingLT, LOAD_MAJOR | LOAD_MINOR},
        {L"\tBucklingCombined            \t<b>", m_dUtilBucklingCombined, 0},
        {L"\tLocalCombined               \t<b>", MaxUtilLocalCombined(nullptr), 0},
        {L"\tUtilOverAll                 \t<b>", m_dUtilOverAll, 0},
    };
    CString report = L"<h4>Utilization factors:</h4>\n";
    for (const auto& line : lines) {
        if (line.loads != 0 && !TestLoadFlags(line.loads)) continue;
        report += line.label;
        report += m_format.Util(line.value);
        report += L"</b>\n";
    }
    report += L"<h4>Flags:</h4>\n";
    for (const FlagLine& line : FLAG_LINES)
        if (m_iFlags & line.flag) report += line.line;
    if (m_iFlags == 0) report += L"\tNone\n";
    return report;
}

CResultIndent::CResultIndent(CMemberResult* result) : m_pResult(result)
{
    if (m_pResult != nullptr) m_pResult->PushIndentVerbose(1);
}

CResultIndent::~CResultIndent()
{
    if (m_pResult != nullptr) m_pResult->PopIndentVerbose();
}

} // namespace Keltrix::Steel
