#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>

#include "keltrix/steel/Restraint.h"
#include "restraint/RestraintClosure.h"

namespace Keltrix::Data {

namespace {

/// A preset with its name and its closure, which does not depend on a moment because presets hold none.
struct NamedPreset {
    unsigned int closure;
    const wchar_t* name;
};

/// In the order in which Description tries them.
constexpr std::array<NamedPreset, 6> NAMED_PRESETS{{
    {RestraintClosure(CRestraint::FULL_ROTATIONAL, 0), L"Full rotational"},
    {RestraintClosure(CRestraint::PARTIAL_ROTATIONAL, 0), L"Partial rotational"},
    {RestraintClosure(CRestraint::PINNED, 0), L"Pinned"},
    {RestraintClosure(CRestraint::TOP_FLANGE_LATERAL, 0), L"Top flange lateral"},
    {RestraintClosure(CRestraint::BOTTOM_FLANGE_LATERAL, 0), L"Bottom flange lateral"},
    {RestraintClosure(CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL, 0), L"Top and Bottom flange lateral"},
}};

/// The bits of one flange group in the short code.
struct FlangeGroup {
    wchar_t mark;
    const wchar_t* prefix;
    unsigned int lateral;
    unsigned int warping;
    unsigned int warpingPart;
};

constexpr std::array<FlangeGroup, 4> FLANGE_GROUPS{{
    {L'1', L"F1", CRestraint::FLANGE1_LATERAL, CRestraint::FLANGE1_WARPING, CRestraint::FLANGE1_WARPING_PART},
    {L'2', L"F2", CRestraint::FLANGE2_LATERAL, CRestraint::FLANGE2_WARPING, CRestraint::FLANGE2_WARPING_PART},
    {L'C', L"FC", CRestraint::COMP_FLANGE_LATERAL, CRestraint::COMP_FLANGE_WARPING,
     CRestraint::COMP_FLANGE_WARPING_PART},
    {L'T', L"FT", CRestraint::TENS_FLANGE_LATERAL, CRestraint::TENS_FLANGE_WARPING,
     CRestraint::TENS_FLANGE_WARPING_PART},
}};

/// What the short code says of one flange group; part warping only counts where full warping is absent.
struct FlangeMarks {
    bool lateral;
    bool warping;
    bool part;

    FlangeMarks(unsigned int flag, const FlangeGroup& group) :
        lateral((flag & group.lateral) != 0), warping((flag & group.warping) != 0),
        part((flag & group.warpingPart) != 0 && !warping)
    {}
    bool Any() const { return lateral || warping || part; }
    void AppendTo(CString& code, const wchar_t* prefix) const
    {
        code += prefix;
        if (lateral) code += L'L';
        if (warping)
            code += L'W';
        else if (part)
            code += L'P';
        code += L' ';
    }
};

void AppendFlanges(CString& code, unsigned int flag)
{
    const FlangeMarks flange1(flag, FLANGE_GROUPS[0]);
    const FlangeMarks flange2(flag, FLANGE_GROUPS[1]);
    const FlangeMarks comp(flag, FLANGE_GROUPS[2]);
    const FlangeMarks tens(flag, FLANGE_GROUPS[3]);
    // An odd number of marks among the first three groups is compared with the fourth: it holds where both flanges match
    // and compression matches tension, and in a few further cases, in which the code loses restraints: 0x1800 (warping of
    // the compression and the tension flange) has the code "". Kept for compatibility with written files.
    const bool together = (flange1.lateral ^ flange2.lateral ^ comp.lateral) == tens.lateral &&
                          (flange1.warping ^ flange2.warping ^ comp.warping) == tens.warping &&
                          (flange1.part ^ flange2.part ^ comp.part) == tens.part;
    if (together) {
        if (flange1.Any()) flange1.AppendTo(code, L"F12");
        return;
    }
    const FlangeMarks* const marks[] = {&flange1, &flange2, &comp, &tens};
    for (std::size_t i = 0; i < FLANGE_GROUPS.size(); ++i)
        if (marks[i]->Any()) marks[i]->AppendTo(code, FLANGE_GROUPS[i].prefix);
}

/// "MAJ" or "MIN" with R for full rotation or else P for part rotation, and V for shear.
void AppendAxis(CString& code, unsigned int flag, const wchar_t* prefix, unsigned int rotation,
                unsigned int rotationPart, unsigned int shear)
{
    if (!(flag & (rotation | rotationPart | shear))) return;
    code += prefix;
    if (flag & rotation)
        code += L'R';
    else if (flag & rotationPart)
        code += L'P';
    if (flag & shear) code += L'V';
    code += L' ';
}

CString ShortCode(unsigned int flag)
{
    CString code;
    AppendFlanges(code, flag);
    if (flag & CRestraint::TORSION)
        code += L"TR ";
    else if (flag & CRestraint::TORSION_PART)
        code += L"TP ";
    else if (flag & CRestraint::TORSION_FRICTION)
        code += L"TF ";
    AppendAxis(code, flag, L"MAJ", CRestraint::MAJOR_ROTATION, CRestraint::MAJOR_ROTATION_PART,
               CRestraint::MAJOR_SHEAR);
    AppendAxis(code, flag, L"MIN", CRestraint::MINOR_ROTATION, CRestraint::MINOR_ROTATION_PART,
               CRestraint::MINOR_SHEAR);
    if (flag & (CRestraint::PART_A_CONNECTED | CRestraint::PART_B_CONNECTED)) {
        code += L'C';
        if (flag & CRestraint::PART_A_CONNECTED) code += L'A';
        if (flag & CRestraint::PART_B_CONNECTED) code += L'B';
        code += L' ';
    }
    code.TrimRight();
    return code;
}

/// One line of the report's list where a bit is set, another where only a weaker one is.
struct ReportLine {
    unsigned int full;
    const wchar_t* fullText;
    unsigned int part = 0;
    const wchar_t* partText = nullptr;
    unsigned int weakest = 0;
    const wchar_t* weakestText = nullptr;
};

constexpr ReportLine REPORT_LINES[] = {
    {CRestraint::MAJOR_ROTATION, L"\tmajor axis rotation full <i>(section XX axis)</i>\n",
     CRestraint::MAJOR_ROTATION_PART, L"\tmajor axis rotation part <i>(section XX axis)</i>\n"},
    {CRestraint::MINOR_ROTATION, L"\tminor axis rotation full <i>(section YY axis)</i>\n",
     CRestraint::MINOR_ROTATION_PART, L"\tminor axis rotation part <i>(section YY axis)</i>\n"},
    {CRestraint::MINOR_SHEAR, L"\tminor axis shear <i>(section X direction)</i>\n"},
    {CRestraint::MAJOR_SHEAR, L"\tmajor axis shear <i>(section Y direction)</i>\n"},
    {CRestraint::FLANGE1_LATERAL, L"\tflange 1 lateral\n"},
    {CRestraint::FLANGE2_LATERAL, L"\tflange 2 lateral\n"},
    {CRestraint::COMP_FLANGE_LATERAL, L"\tcompression flange lateral\n"},
    {CRestraint::TENS_FLANGE_LATERAL, L"\ttension flange lateral\n"},
    {CRestraint::FLANGE1_WARPING, L"\tflange 1 warping\n", CRestraint::FLANGE1_WARPING_PART,
     L"\tflange 1 warping part\n"},
    {CRestraint::FLANGE2_WARPING, L"\tflange 2 warping\n", CRestraint::FLANGE2_WARPING_PART,
     L"\tflange 2 warping part\n"},
    {CRestraint::TORSION, L"\ttorsion\n", CRestraint::TORSION_PART, L"\ttorsion part\n", CRestraint::TORSION_FRICTION,
     L"\ttorsion by friction/bearing\n"},
    {CRestraint::PART_A_CONNECTED | CRestraint::PART_B_CONNECTED, L"\tparts A and B connected\n",
     CRestraint::PART_A_CONNECTED, L"\tpart A connected\n", CRestraint::PART_B_CONNECTED, L"\tpart B connected\n"},
};

/// Compression and tension flange warping have no line of their own: kept for compatibility.
void AppendReportLines(CString& text, unsigned int flag)
{
    const auto has = [flag](unsigned int bits) { return bits != 0 && (flag & bits) == bits; };
    for (const ReportLine& line : REPORT_LINES) {
        if (has(line.full))
            text += line.fullText;
        else if (has(line.part))
            text += line.partText;
        else if (has(line.weakest))
            text += line.weakestText;
    }
}

constexpr std::wstring_view WHOLE_TEXT_WORDS[] = {L"FREE", L"NONE",  L"PIN", L"PINNED",
                                                  L"FIX",  L"FIXED", L"ENC", L"ENCASTRE"};

/// Preset names with blanks, which are understood only as the whole text, and the one word each stands for.
struct SpacedName {
    std::wstring_view spaced;
    std::wstring_view word;
};
constexpr SpacedName SPACED_NAMES[] = {
    {L"TOP FLANGE LATERAL", L"TOP_FLANGE_LATERAL"},
    {L"BOTTOM FLANGE LATERAL", L"BOTTOM_FLANGE_LATERAL"},
    {L"TOP AND BOTTOM FLANGE LATERAL", L"TOP_AND_BOTTOM_FLANGE_LATERAL"},
    {L"PARTIAL ROTATIONAL", L"PARTIAL_ROTATIONAL"},
    {L"PARTIAL ROTATIONAL RESTRAINT", L"PARTIAL_ROTATIONAL"},
    {L"FULL ROTATIONAL", L"FULL_ROTATIONAL"},
    {L"FULL ROTATIONAL RESTRAINT", L"FULL_ROTATIONAL"},
};

/// Every character that a code may have. Words of other letters (and names with underscores) are refused, as they always
/// were, so that a number or a stray text is not taken for a code.
constexpr std::wstring_view CODE_CHARACTERS = L"12ABCEFHIJLMNOPRSTVW*, ";

constexpr auto IS_CODE_CHARACTER = [] {
    std::array<bool, 128> table{};
    for (const wchar_t c : CODE_CHARACTERS)
        table[static_cast<std::size_t>(c)] = true;
    return table;
}();

bool IsCodeCharacter(wchar_t c)
{
    const auto code = static_cast<std::make_unsigned_t<wchar_t>>(c);
    return code < IS_CODE_CHARACTER.size() && IS_CODE_CHARACTER[code];
}

constexpr wchar_t UpperAscii(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c; }

/// Turns a whole-text word or spaced name into its word; false where the text has a character that no code has.
bool TranslateWholeText(std::wstring_view& text)
{
    for (const std::wstring_view word : WHOLE_TEXT_WORDS)
        if (text == word) return true;
    for (const SpacedName& name : SPACED_NAMES) {
        if (text == name.spaced) {
            text = name.word;
            return true;
        }
    }
    return std::all_of(text.begin(), text.end(), IsCodeCharacter);
}

std::wstring_view Trimmed(std::wstring_view text)
{
    constexpr std::wstring_view WHITE_SPACE = L" \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(WHITE_SPACE);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(WHITE_SPACE) + 1 - first);
}

/// A trimmed copy of a text in capitals, on the stack where it is as short as codes are.
class Capitals {
public:
    explicit Capitals(std::wstring_view text)
    {
        const std::wstring_view trimmed = Trimmed(text);
        if (trimmed.size() > m_short.size()) {
            m_long.resize(trimmed.size());
            m_first = m_long.data();
        }
        m_end = std::transform(trimmed.begin(), trimmed.end(), m_first, UpperAscii);
    }
    Capitals(const Capitals&) = delete;
    Capitals& operator=(const Capitals&) = delete;

    std::wstring_view View() const { return {m_first, static_cast<std::size_t>(m_end - m_first)}; }
    void Remove(wchar_t character) { m_end = std::remove(m_first, m_end, character); }

private:
    std::array<wchar_t, 48> m_short;
    std::wstring m_long;
    wchar_t* m_first = m_short.data();
    wchar_t* m_end = m_first;
};

/// Words that stand for a whole bit set.
struct NamedSet {
    std::wstring_view word;
    unsigned int bits;
};
constexpr NamedSet NAMED_SETS[] = {
    {L"FREE", 0},
    {L"NONE", 0},
    {L"TOP_FLANGE_LATERAL", CRestraint::TOP_FLANGE_LATERAL},
    {L"BOTTOM_FLANGE_LATERAL", CRestraint::BOTTOM_FLANGE_LATERAL},
    {L"TOP_AND_BOTTOM_FLANGE_LATERAL", CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL},
    {L"PINNED", CRestraint::PINNED},
    {L"PIN", CRestraint::PINNED},
    {L"PARTIAL_ROTATIONAL", CRestraint::PARTIAL_ROTATIONAL},
    {L"FULL_ROTATIONAL", CRestraint::FULL_ROTATIONAL},
    {L"FIXED", CRestraint::ENCASTRE},
    {L"FIX", CRestraint::ENCASTRE},
    {L"ENCASTRE", CRestraint::ENCASTRE},
    {L"ENC", CRestraint::ENCASTRE},
};

bool SameWord(std::wstring_view token, std::wstring_view upperCaseWord)
{
    return std::equal(token.begin(), token.end(), upperCaseWord.begin(), upperCaseWord.end(),
                      [](wchar_t a, wchar_t b) { return UpperAscii(a) == b; });
}

bool Has(std::wstring_view token, wchar_t letter) { return token.find(letter) != std::wstring_view::npos; }

/// Letters are searched in the whole token, so they hold for every flange that it names ("F1L2W" holds and stops warping
/// of both): kept for compatibility.
bool AddFlangeCode(std::wstring_view token, unsigned int& flag)
{
    const bool lateral = Has(token, L'L');
    const bool warping = Has(token, L'W');
    const bool part = Has(token, L'P');
    for (const FlangeGroup& group : FLANGE_GROUPS) {
        if (!Has(token, group.mark)) continue;
        if (!lateral && !warping && !part) return false;
        if (lateral) flag |= group.lateral;
        if (warping) flag |= group.warping;
        if (part) flag |= group.warpingPart;
    }
    return true;
}

/// "MAJ" needs one of its letters and "MIN" does not: kept for compatibility.
bool AddAxisCode(std::wstring_view token, unsigned int& flag)
{
    const std::wstring_view axis = token.substr(1, 2);
    const bool full = Has(token, L'R');
    const bool part = Has(token, L'P');
    const bool shear = Has(token, L'V');
    if (axis == L"AJ") {
        if (!full && !part && !shear) return false;
        if (full)
            flag |= CRestraint::MAJOR_ROTATION;
        else if (part)
            flag |= CRestraint::MAJOR_ROTATION_PART;
        if (shear) flag |= CRestraint::MAJOR_SHEAR;
        return true;
    }
    if (axis == L"IN") {
        if (full)
            flag |= CRestraint::MINOR_ROTATION;
        else if (part)
            flag |= CRestraint::MINOR_ROTATION_PART;
        if (shear) flag |= CRestraint::MINOR_SHEAR;
        return true;
    }
    return false;
}

bool AddTorsionCode(std::wstring_view token, unsigned int& flag)
{
    switch (token.size() > 1 ? token[1] : L'\0') {
    case L'R':
        flag |= CRestraint::TORSION;
        return true;
    case L'P':
        flag |= CRestraint::TORSION_PART;
        return true;
    case L'F':
        flag |= CRestraint::TORSION_FRICTION;
        return true;
    default:
        return false;
    }
}

void AddConnectionCode(std::wstring_view token, unsigned int& flag)
{
    const std::wstring_view parts = token.substr(1);
    if (Has(parts, L'A')) flag |= CRestraint::PART_A_CONNECTED;
    if (Has(parts, L'B')) flag |= CRestraint::PART_B_CONNECTED;
}

} // namespace

CString CRestraint::GetString(const CDesFormat& fmt, bool) const
{
    CString text = L"Restraints set:\n";
    const unsigned int closed = ConsistentFlag();
    if ((m_iRestFlag & RESTRAINT_MASK) == 0)
        text += L"\tnone\n";
    else if ((closed & ENCASTRE) == ENCASTRE)
        text += L"\tfully encastre\n";
    else
        AppendReportLines(text, closed);

    // LengthSmall gives the bare number; the unit is always written as m.
    if (IsDestabilized())
        text += L"load is destabilizing: (by " + fmt.LengthSmall(m_dLoadHeight) + L"m" + L")\n";
    else if (IsStabilized())
        text += L"load is stabilizing: (by " + fmt.LengthSmall(-m_dLoadHeight) + L"m" + L")\n";
    return text;
}

CString CRestraint::Description(bool consistent) const
{
    const unsigned int closed = ConsistentFlag();
    if ((closed & ENCASTRE) == ENCASTRE) return L"Fixed";

    // Presets are at the shear centre, without a load height and without forces: only such a restraint can equal one.
    if (!m_bHasForcesAndMoments && m_eRefLoadHeight == SHR_CENTRE && std::fabs(m_dLoadHeight) < 1e-10) {
        for (const NamedPreset& preset : NAMED_PRESETS)
            if (closed == preset.closure) return preset.name;
    }
    const unsigned int flag = consistent ? closed : m_iRestFlag;
    if ((flag & RESTRAINT_MASK) == 0) return L"Free";
    return ShortCode(flag);
}

CString CRestraint::UserDescription(bool consistent) const
{
    CString text = Description(consistent);
    text.Replace(L'_', L' ');
    return text;
}

bool CRestraint::SetDescription(const CString& text)
{
    Capitals capitals(text);
    std::wstring_view rest = capitals.View();
    if (!TranslateWholeText(rest)) return false;
    if (rest.find(L'*') != std::wstring_view::npos) { // no translated name has one
        capitals.Remove(L'*');
        rest = capitals.View();
    }

    const CRestraint saved = *this;
    Clear();
    for (;;) {
        const auto separator = std::find_if(rest.begin(), rest.end(), [](wchar_t c) { return c == L' ' || c == L','; });
        const auto length = static_cast<std::size_t>(separator - rest.begin());
        if (!SetDescriptionFragment(rest.substr(0, length))) {
            *this = saved;
            return false;
        }
        if (separator == rest.end()) return true;
        rest.remove_prefix(length + 1);
    }
}

bool CRestraint::SetDescriptionFragment(std::wstring_view token)
{
    if (token.empty()) return true;
    for (const NamedSet& named : NAMED_SETS) {
        if (SameWord(token, named.word)) {
            m_iRestFlag = (m_iRestFlag & NON_RESTRAINT_MASK) | named.bits;
            return true;
        }
    }
    switch (token[0]) {
    case L'C':
        AddConnectionCode(token, m_iRestFlag);
        return true;
    case L'F':
        return AddFlangeCode(token, m_iRestFlag);
    case L'M':
        return AddAxisCode(token, m_iRestFlag);
    case L'T':
        return AddTorsionCode(token, m_iRestFlag);
    default:
        return false;
    }
}

} // namespace Keltrix::Data
