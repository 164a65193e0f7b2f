// The member input file: one keyword-led, comma-separated line for each thing, in a fixed order. Reading goes once over
// the text and looks at views into it; the only texts made are those that are kept.

#include <algorithm>
#include <string_view>

#include "keltrix/steel/SteelMember.h"
#include "member/FieldText.h"

namespace Keltrix::Steel {

namespace {

bool SameWord(std::wstring_view a, const wchar_t* b)
{
    const std::wstring_view word(b);
    return a.size() == word.size() && std::equal(a.begin(), a.end(), word.begin(), [](wchar_t x, wchar_t y) {
               const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? c - L'A' + L'a' : c + 0; };
               return lower(x) == lower(y);
           });
}

/// One line of the file: its keyword, and the fields after it.
class InputLine {
public:
    /// The first line of a text.
    explicit InputLine(const CString& text) { Take(GetLineView(&text)); }

    /// Goes to the next line.
    void Next() { Take(GetLineView(nullptr)); }
    /// Goes to the next line, past one caption line.
    void NextPastCaption()
    {
        Next();
        if (Is(L"HEADINGS")) Next();
    }
    bool Is(const wchar_t* keyword) const { return SameWord(m_keyword, keyword); }
    /// The fields not yet taken.
    std::wstring_view& Fields() { return m_fields; }
    std::wstring_view Text() { return GetSubString(m_fields); }
    double Number() { return GetValueDouble(m_fields); }

private:
    void Take(std::wstring_view line)
    {
        m_fields = line;
        m_keyword = GetSubString(m_fields);
    }

    std::wstring_view m_keyword;
    std::wstring_view m_fields;
};

// Words after a keyword are as they are written, in capitals, unlike keywords.
SecType SecTypeOf(std::wstring_view word)
{
    if (word == L"FORMED") return SEC_FORMED;
    if (word == L"ROLLED") return SEC_ROLLED;
    if (word == L"WELDED") return SEC_WELDED;
    return SEC_UNDEF;
}

CSection ReadSection(InputLine& line)
{
    CSecDB geometry(CString(), CSectDB::GetDatabase());
    geometry.SetUpFromDesc(CString(line.Text()));
    CSecComp component;
    component.SetSecGeom(geometry);
    component.SetMaterialType(1);
    component.SetMaterialAnalysis(0);
    component.SetType(SecTypeOf(line.Text()));
    CSection section{CString()};
    section.SetComponent(0, component);
    return section;
}

/// Lengths in characters, to have room for a file's text from the start; texts may well be longer.
constexpr std::size_t TYPICAL_HEAD = 640;
constexpr std::size_t TYPICAL_POINT_LINE = 40;
constexpr std::size_t TYPICAL_SUBSPAN_LINE = 100;

const wchar_t* const USER_DEFINED = L"User_defined";

CSteelGrade ReadGrade(InputLine& line)
{
    const CString name(line.Text());
    if (!SameWord(name, USER_DEFINED)) return CSteelGrade(name, 0.0, 0.0, 0.0, 1.0);
    const double py = line.Number();
    const double pu = line.Number();
    const double e = line.Number();
    const double matFactor = line.Number();
    return CSteelGrade(name, py, pu, e, matFactor);
}

} // namespace

bool CSteelMemberGen::CSVInputData(const CString& text, CSteelGrade& grade)
{
    PrepareInput();
    InputLine line(text);
    if (!line.Is(L"TITLE")) return false;
    SetTitle(CString(line.Text()));

    line.NextPastCaption();
    if (!line.Is(L"SECTION")) return false;
    if (!SetKeltrixSec(ReadSection(line))) return false;
    CSection section = GetKeltrixSec();
    CSecComp component = section.Component(0);

    line.Next();
    if (!line.Is(L"GRADE")) return false;
    grade = ReadGrade(line);

    line.Next();
    if (!line.Is(L"NET_TO_GROSS")) return false;
    component.SetNetGross(line.Number());
    line.Next();
    if (!line.Is(L"ALLOWABLE_PLASTIC/ELASTIC_RATIO")) return false;
    component.SetPlasElas(line.Number());
    // Taken whatever it is: files from before this factor have a caption here, which is lost without harm.
    line.Next();
    if (line.Is(L"SHEAR_LAG_FACTOR")) component.SetBeta(line.Number());

    line.NextPastCaption();
    if (!line.Is(L"EFFECTIVE_LENGTH_OVERRIDES")) return false;
    const bool isOverridden = line.Text() == L"YES";
    SetLengthOverride(isOverridden);
    if (isOverridden) {
        SetLyy(line.Number());
        SetLzz(line.Number());
        SetLlt(line.Number());
    }

    line.Next();
    if (line.Is(L"EQUIVALENT_UNIFORM_MOMENT_FACTOR")) {
        SetEquivalentUniformMomentFactor(line.Number());
        line.Next();
    }
    if (line.Is(L"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS")) {
        SetMomentAmplificationFactorStrongAxis(line.Number());
        line.Next();
    }
    // Whatever line stands here is not looked at again: in a written file it is the caption of the points.
    if (line.Is(L"MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS")) SetMomentAmplificationFactorWeakAxis(line.Number());

    section.SetComponent(0, component);
    if (!SetKeltrixSec(section)) return false;

    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;
    for (;;) {
        do
            line.Next();
        while (line.Is(L"HEADINGS"));
        if (line.Is(L"MEMBERPOINT")) {
            TakeFields(line.Fields(), points.emplace_back());
        } else if (line.Is(L"SUBSPAN")) {
            TakeFields(line.Fields(), subSpans.emplace_back());
        } else if (line.Is(L"END")) {
            SetMemberPointVec(points);
            SetSubSpanVec(subSpans);
            return true;
        } else {
            return false;
        }
    }
}

CString CSteelMemberGen::CSVInputData(CSteelGrade& grade)
{
    const CSection section = GetKeltrixSec();
    const CSecComp& component = section.Component(0);

    // Asked for, because a module may keep them elsewhere.
    const std::vector<CMemberPoint> points = GetMemberPointVec();
    const std::vector<CSubSpan> subSpans = GetSubSpanVec();

    CString text;
    text.Reserve(TYPICAL_HEAD + TYPICAL_POINT_LINE * points.size() + TYPICAL_SUBSPAN_LINE * subSpans.size());
    text += L"TITLE,";
    text += GetTitle();
    text += L"\nHEADINGS,Keltrix description,Rolled/Welded\nSECTION,";
    text += SecUserDescShort(component.Description(true));
    text += L',';
    text += SecTypeString(component.Type());
    text += L"\nGRADE,";
    const CString gradeName = grade.Name();
    text += gradeName;
    if (SameWord(gradeName, USER_DEFINED))
        text.AppendFormat(L",%G,%G,%G,%G", grade.GetUserPy(), grade.GetUserPu(), grade.GetUserE(),
                          grade.GetMatFactor());
    text += L'\n';
    text.AppendFormat(L"NET_TO_GROSS,%#.4f\n", component.NetGross());
    text.AppendFormat(L"ALLOWABLE_PLASTIC/ELASTIC_RATIO,%#.4f\n", component.PlasElas());
    text.AppendFormat(L"SHEAR_LAG_FACTOR,%#.4f\n", component.Beta());
    text += L"HEADINGS,YES/NO,Leff Maj, Leff Min, Leff LT\n";
    if (LengthOverride())
        text.AppendFormat(L"EFFECTIVE_LENGTH_OVERRIDES,YES,%#.4f,%#.4f,%#.4f\n", Lyy(), Lzz(), Llt());
    else
        text += L"EFFECTIVE_LENGTH_OVERRIDES,NO\n";
    if (m_optEquivalentUniformMomentFactor)
        text.AppendFormat(L"EQUIVALENT_UNIFORM_MOMENT_FACTOR,%#.4f\n", *m_optEquivalentUniformMomentFactor);
    if (m_optMomentAmplificationFactorStrongAxis)
        text.AppendFormat(L"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,%#.4f\n",
                          *m_optMomentAmplificationFactorStrongAxis);
    if (m_optMomentAmplificationFactorWeakAxis)
        text.AppendFormat(L"MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,%#.4f\n", *m_optMomentAmplificationFactorWeakAxis);
    text += L"HEADINGS,";
    text += CMemberPoint::CSVTitleLine();
    for (const CMemberPoint& point : points) {
        text += L"MEMBERPOINT,";
        AppendFields(text, point);
    }
    text += L"HEADINGS,";
    text += CSubSpan::CSVTitleLine();
    for (const CSubSpan& subSpan : subSpans) {
        text += L"SUBSPAN,";
        AppendFields(text, subSpan);
    }
    text += L"END\n";
    return text;
}

CString CSteelMemberGen::SecUserDescShort(const CString& desc)
{
    CSecDB geometry(CString(), CSectDB::GetDatabase());
    geometry.SetUpFromDesc(desc);
    return geometry.UserDesc();
}

CSection CSteelMemberGen::KXSectFromUserDesc(const CString& desc)
{
    CSecDB geometry(CString(), nullptr);
    geometry.SetUpFromDesc(desc);
    CSecComp component;
    component.SetSecGeom(geometry);
    CSection section{CString()};
    section.SetComponent(0, component);
    return section;
}

} // namespace Keltrix::Steel
