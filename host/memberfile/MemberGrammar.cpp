#include "memberfile/MemberGrammar.h"

#include <algorithm>
#include <iterator>

#include "keltrix/platform/CString.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

constexpr FieldQuantity IN_METRES{"a number in m", "length"};
constexpr FieldQuantity IN_NEWTONS{"a number in N", "force"};
constexpr FieldQuantity IN_NEWTON_METRES{"a number in N·m", "moment"};
constexpr FieldQuantity IN_PASCALS{"a number in Pa", "stress"};
constexpr FieldQuantity AS_RATIO{"a number", ""};
constexpr FieldQuantity AS_EFFECTIVE_LENGTH{"a length in m, or below zero minus a factor of the member's length",
                                            "length"};
constexpr FieldQuantity AS_WHOLE_NUMBER{"a whole number", ""};

constexpr double ANY_NUMBER = std::numeric_limits<double>::infinity();

// Steel has no larger strength and modulus.
constexpr UsualRange USUAL_STRENGTH{0.0, 1e9, "large-strength", " Pa", "at most 1e+09 Pa in steel", "is it in Pa?"};
constexpr UsualRange USUAL_MODULUS{0.0, 250e9, "large-strength", " Pa", "at most 2.5e+11 Pa in steel", "is it in Pa?"};
constexpr UsualRange USUAL_MATERIAL_FACTOR{1.0, ANY_NUMBER,   "material-factor",
                                           "",  "1 or above", "below 1 it adds to the strength"};
// The rules of Tables 18 and 26 of BS 5950-1:2000 give no factor below 0.4.
constexpr UsualRange USUAL_MOMENT_FACTOR{0.4,
                                         ANY_NUMBER,
                                         "moment-factor",
                                         "",
                                         "0.4 or above, as the rules for it give",
                                         "it lowers the moments that are checked for buckling"};
// BS 5950-1:2000 4.2.5.1 knows 1.2 and 1.5.
constexpr UsualRange USUAL_PLASTIC_RATIO{
    1.0, 1.5, "plastic-ratio", "", "1.2, or 1.5 at most", "design codes take no more"};

constexpr FieldRule TITLE_FIELDS[] = {{"title", "Title", FieldKind::Text}};
constexpr FieldRule SECTION_FIELDS[] = {{"description", "Keltrix description", FieldKind::Description},
                                        {"type", "Rolled/Welded", FieldKind::SectionType}};
constexpr FieldRule GRADE_FIELDS[] = {
    {"name", "Name", FieldKind::Text},
    {"Py", "Py", FieldKind::Number, &IN_PASCALS, &USUAL_STRENGTH},
    {"Pu", "Pu", FieldKind::Number, &IN_PASCALS, &USUAL_STRENGTH},
    {"E", "E", FieldKind::Number, &IN_PASCALS, &USUAL_MODULUS},
    {"material factor", "Factor", FieldKind::Number, &AS_RATIO, &USUAL_MATERIAL_FACTOR}};
constexpr FieldRule NET_TO_GROSS_FIELDS[] = {{"net to gross ratio", "Ratio", FieldKind::Number, &AS_RATIO}};
constexpr FieldRule PLASTIC_FIELDS[] = {{"ratio", "Ratio", FieldKind::Number, &AS_RATIO, &USUAL_PLASTIC_RATIO}};
constexpr FieldRule SHEAR_LAG_FIELDS[] = {{"factor", "Factor", FieldKind::Number, &AS_RATIO}};
constexpr FieldRule UNIFORM_FIELDS[] = {{"factor", "Factor", FieldKind::Number, &AS_RATIO, &USUAL_MOMENT_FACTOR}};
constexpr FieldRule AMPLIFICATION_FIELDS[] = {{"factor", "Factor", FieldKind::Number, &AS_RATIO}};
constexpr FieldRule OVERRIDES_FIELDS[] = {
    {"word", "YES/NO", FieldKind::YesOrNo},
    {"major-axis length", "Leff Maj", FieldKind::Number, &AS_EFFECTIVE_LENGTH},
    {"minor-axis length", "Leff Min", FieldKind::Number, &AS_EFFECTIVE_LENGTH},
    {"lateral-torsional length", "Leff LT", FieldKind::Number, &AS_EFFECTIVE_LENGTH}};
constexpr FieldRule POINT_FIELDS[] = {{"index", "Index", FieldKind::WholeNumber, &AS_WHOLE_NUMBER},
                                      {"position", "Position", FieldKind::Number, &IN_METRES},
                                      {"restraint", "Restraint", FieldKind::Restraint},
                                      {"load height", "Load height", FieldKind::LoadHeight, &IN_METRES}};
constexpr FieldRule SUB_SPAN_FIELDS[] = {{"index", "Index", FieldKind::WholeNumber, &AS_WHOLE_NUMBER},
                                         {"Fx-L", "Fx-L", FieldKind::Number, &IN_NEWTONS},
                                         {"Fy-L", "Fy-L", FieldKind::Number, &IN_NEWTONS},
                                         {"Fz-L", "Fz-L", FieldKind::Number, &IN_NEWTONS},
                                         {"Fx-R", "Fx-R", FieldKind::Number, &IN_NEWTONS},
                                         {"Fy-R", "Fy-R", FieldKind::Number, &IN_NEWTONS},
                                         {"Fz-R", "Fz-R", FieldKind::Number, &IN_NEWTONS},
                                         {"Mx-L", "Mx-L", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"My-L", "My-L", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"Mz-L", "Mz-L", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"Mx-R", "Mx-R", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"My-R", "My-R", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"Mz-R", "Mz-R", FieldKind::Number, &IN_NEWTON_METRES},
                                         {"restraint", "Restraint", FieldKind::Restraint},
                                         {"load height", "Load height", FieldKind::LoadHeight, &IN_METRES}};

constexpr LineSentence TITLE_TEXT[] = {{"text", "title of the member"}};
constexpr LineSentence SECTION_TEXT[] = {
    {"description, type",
     "the [section](#section-descriptions), and how it is made: `ROLLED` (hot finished too), `WELDED`, "
     "`FORMED` (cold) or `UNDEF`"}};
constexpr LineSentence GRADE_TEXT[] = {
    {"name", "steel grade: `S275`, `S355`, `S460` for BS 5950-1:2000"},
    {"`User_defined`, Py, Pu, E, factor",
     "strengths and modulus of your own in Pa, and the material factor by which py is divided"}};
constexpr LineSentence NET_TO_GROSS_TEXT[] = {{"number", "net area over gross area, for tension"}};
constexpr LineSentence PLASTIC_TEXT[] = {{"number",
                                          "limit of plastic over elastic modulus: 1.2, or 1.5 for what is not a "
                                          "simply supported beam or cantilever"}};
constexpr LineSentence SHEAR_LAG_TEXT[] = {{"number", "beta, for codes that use it"}};
constexpr LineSentence OVERRIDES_TEXT[] = {
    {"`NO`", "effective lengths follow from the restraints"},
    {"`YES`, major, minor, LT",
     "effective lengths in m; below zero, minus a factor of the member's length: -0.85 is 0.85 L"}};
constexpr LineSentence UNIFORM_TEXT[] = {{"number", "optional: the factor to be used in place of the computed one"}};
constexpr LineSentence STRONG_TEXT[] = {
    {"number", "optional: for codes that know it; BS 5950-1:2000 does not, and refuses the file"}};
constexpr LineSentence WEAK_TEXT[] = {{"number", "likewise"}};
constexpr LineSentence POINT_TEXT[] = {{"index, position, restraint, load height", "a point along the member"}};
constexpr LineSentence SUB_SPAN_TEXT[] = {
    {"index, twelve forces and moments, restraint, load height", "the piece between two points"}};
constexpr LineSentence END_TEXT[] = {{"", "end of the member"}};
constexpr LineSentence HEADINGS_TEXT[] = {{"anything", "captions for people"}};

constexpr const char* POINT_EXPLAINED =
    "HEADINGS,Points: number; position in m; what is held there (Pinned, Fixed, Free, Top flange lateral "
    "...); height of the load above the shear centre in m\n";
constexpr const char* SUB_SPAN_EXPLAINED =
    "HEADINGS,Sub-spans between the points: forces in N and moments in N.m on the member's axes at the "
    "left and the right end; what is held along; height of the load in m\n"
    "HEADINGS,Signs: tension above zero; dMyy/dx = Fz; Myy below zero where the member sags; dMzz/dx = "
    "-Fy\n";

constexpr LineRule GRAMMAR_LINES[] = {
    {LineKind::Title, L"TITLE", LinePlace::Required, false, false, TITLE_FIELDS, TITLE_TEXT, ""},
    {LineKind::Section, L"SECTION", LinePlace::Required, true, false, SECTION_FIELDS, SECTION_TEXT, ""},
    {LineKind::Grade, L"GRADE", LinePlace::Required, false, false, GRADE_FIELDS, GRADE_TEXT, ""},
    {LineKind::NetToGross, L"NET_TO_GROSS", LinePlace::Required, false, false, NET_TO_GROSS_FIELDS, NET_TO_GROSS_TEXT,
     ""},
    {LineKind::PlasticToElastic, L"ALLOWABLE_PLASTIC/ELASTIC_RATIO", LinePlace::Required, false, true, PLASTIC_FIELDS,
     PLASTIC_TEXT, ""},
    {LineKind::ShearLag, L"SHEAR_LAG_FACTOR", LinePlace::Unread, false, false, SHEAR_LAG_FIELDS, SHEAR_LAG_TEXT, ""},
    {LineKind::LengthOverrides, L"EFFECTIVE_LENGTH_OVERRIDES", LinePlace::Required, true, true, OVERRIDES_FIELDS,
     OVERRIDES_TEXT, ""},
    {LineKind::UniformMoment, L"EQUIVALENT_UNIFORM_MOMENT_FACTOR", LinePlace::Optional, false, true, UNIFORM_FIELDS,
     UNIFORM_TEXT, ""},
    {LineKind::StrongAxis, L"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS", LinePlace::Unsupported, false, false,
     AMPLIFICATION_FIELDS, STRONG_TEXT, ""},
    {LineKind::WeakAxis, L"MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS", LinePlace::Unsupported, false, false,
     AMPLIFICATION_FIELDS, WEAK_TEXT, ""},
    {LineKind::MemberPoint, L"MEMBERPOINT", LinePlace::Repeated, true, false, POINT_FIELDS, POINT_TEXT,
     POINT_EXPLAINED},
    {LineKind::SubSpan, L"SUBSPAN", LinePlace::Repeated, true, false, SUB_SPAN_FIELDS, SUB_SPAN_TEXT,
     SUB_SPAN_EXPLAINED},
    {LineKind::End, L"END", LinePlace::Last, true, false, {}, END_TEXT, ""},
    {LineKind::Headings, L"HEADINGS", LinePlace::Caption, false, false, {}, HEADINGS_TEXT, ""}};

template <class Character>
LineKind KindOfWord(std::basic_string_view<Character> word)
{
    const auto isLetter = [](Character written, wchar_t letter) {
        const bool isLower = written >= Character('a') && written <= Character('z');
        return static_cast<wchar_t>(isLower ? written - Character('a') + Character('A') : written) == letter;
    };
    for (const LineRule& line : GRAMMAR_LINES)
        if (std::equal(word.begin(), word.end(), line.word.begin(), line.word.end(), isLetter)) return line.kind;
    return LineKind::Unknown;
}

} // namespace

std::span<const LineRule> MemberLines() { return GRAMMAR_LINES; }

const LineRule& RuleOf(LineKind kind)
{
    return *std::find_if(std::begin(GRAMMAR_LINES), std::prev(std::end(GRAMMAR_LINES)),
                         [kind](const LineRule& line) { return line.kind == kind; });
}

LineKind LineKindOf(std::wstring_view word) { return KindOfWord(word); }

LineKind LineKindOf(std::string_view word) { return KindOfWord(word); }

std::string KeywordOf(LineKind kind) { return kind == LineKind::Unknown ? std::string() : Utf8(RuleOf(kind).word); }

const std::string& RepeatedLinesText()
{
    static const std::string text = [] {
        std::string words;
        for (const LineRule& line : GRAMMAR_LINES) {
            if (line.place == LinePlace::Repeated) words += (words.empty() ? "" : ", ") + Utf8(line.word);
            if (line.place == LinePlace::Last) words += " or " + Utf8(line.word);
        }
        return "a " + words + " line";
    }();
    return text;
}

std::string CaptionLineOf(LineKind kind)
{
    std::string text = KeywordOf(LineKind::Headings);
    for (const FieldRule& field : RuleOf(kind).fields)
        text += ',' + std::string(field.caption);
    return text + '\n';
}

} // namespace Keltrix::Host
