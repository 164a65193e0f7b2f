#include "memberfile/FieldCheck.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Data::CRestraint;

struct WrittenUnit {
    std::wstring_view word;
    std::string_view dimension;
    double factor;
};

constexpr WrittenUnit WRITTEN_UNITS[] = {{L"m", "length", 1.0},     {L"cm", "length", 1e-2},   {L"mm", "length", 1e-3},
                                         {L"N", "force", 1.0},      {L"kN", "force", 1e3},     {L"MN", "force", 1e6},
                                         {L"Nm", "moment", 1.0},    {L"kNm", "moment", 1e3},   {L"MNm", "moment", 1e6},
                                         {L"Pa", "stress", 1.0},    {L"kPa", "stress", 1e3},   {L"MPa", "stress", 1e6},
                                         {L"N/mm2", "stress", 1e6}, {L"N/mm²", "stress", 1e6}, {L"GPa", "stress", 1e9}};

const std::vector<std::wstring_view> RESTRAINT_NAMES = {L"Free",
                                                        L"None",
                                                        L"Pin",
                                                        L"Pinned",
                                                        L"Fix",
                                                        L"Fixed",
                                                        L"Encastre",
                                                        L"Full rotational",
                                                        L"Partial rotational",
                                                        L"Top flange lateral",
                                                        L"Bottom flange lateral",
                                                        L"Top and Bottom flange lateral"};

// "one of Free, None, ..., a code as "F1L TR", or a number of bits".
const std::string& RestraintExpected()
{
    static const std::string text = [] {
        std::string list = "one of ";
        for (const std::wstring_view name : RESTRAINT_NAMES)
            list += Utf8(name) + ", ";
        return list + "a code as \"F1L TR\", or a number of bits";
    }();
    return text;
}

// The shortest decimal that single precision reads back as the same value.
double ShortestOfFloat(float value)
{
    std::array<char, 32> buffer;
    const auto end = WriteNumber(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    double decimal = value;
    ReadNumber(buffer.data(), end, decimal);
    return decimal;
}

// A description that is no number.
bool IsRestraintText(std::wstring_view field)
{
    return !field.empty() && NumberPrefix(field) == 0 && CRestraint().SetDescription(CString(field));
}

bool IsClamped(std::wstring_view digits, int value)
{
    if (value != std::numeric_limits<int>::max() && value != std::numeric_limits<int>::min()) return false;
    std::wstring_view copy = digits;
    return GetValueDouble(copy) != static_cast<double>(value);
}

// What is likely meant by a number with other text after it: another unit, or digits in groups.
std::string AdviceOnNumber(std::wstring_view field, std::size_t prefix, const FieldQuantity& quantity)
{
    std::wstring number(field.substr(0, prefix));
    std::wstring_view after = field.substr(prefix);
    const bool hasGroups = after[0] == L' ' && IsOnlyOf(after, L" 0123456789.");
    after = GetSubString(after);
    const auto meant = [&](const WrittenUnit& unit) {
        return unit.dimension == quantity.dimension && SameWord(unit.word, after) &&
               (unit.word[0] != L'M' || unit.word == after);
    };
    const auto* const unit = std::find_if(std::begin(WRITTEN_UNITS), std::end(WRITTEN_UNITS), meant);
    if (unit != std::end(WRITTEN_UNITS) && unit->factor == 1.0) return "write " + Utf8(number);
    if (unit != std::end(WRITTEN_UNITS)) {
        std::wstring_view digits = number;
        return "write " + Rounded(GetValueDouble(digits) * unit->factor, 12);
    }
    if (!hasGroups) return {};
    number.assign(field);
    number.erase(std::remove(number.begin(), number.end(), L' '), number.end());
    return NumberPrefix(number) == number.size() ? "write " + Utf8(number) : std::string();
}

// "the position"; symbols as Fx-L have no article.
std::string NamedField(const FieldRule& field)
{
    const char initial = field.name[0];
    return (initial >= 'A' && initial <= 'Z' ? "" : "the ") + std::string(field.name);
}

} // namespace

bool FieldCheck::IsPadding(std::size_t wanted)
{
    std::wstring_view rest = m_line.rest;
    for (std::size_t i = 0; i < wanted; ++i)
        GetSubString(rest);
    if (!IsIdleLine(rest)) return false;
    if (m_defects.IsFirst("padding"))
        Warn("padding", {}, "empty fields after the last one", "none",
             "they are not read, here and in all lines of this member");
    return true;
}

void FieldCheck::WarnOfExtraFields(std::size_t wanted)
{
    if (Count() <= wanted || IsPadding(wanted)) return;
    Warn("extra-fields", {}, CountedWord(Count(), "field"), wanted == 0 ? "none" : CountedWord(wanted, "field"),
         "those after the last one are not read");
}

void FieldCheck::RefuseExtraFields(std::size_t wanted)
{
    if (Count() <= wanted || IsPadding(wanted)) return;
    Error("extra-fields", {}, CountedWord(Count(), "field"), CountedWord(wanted, "field"),
          "is there a comma within a number?");
}

// A line that ends early is one defect, whatever is lost with its rest.
void FieldCheck::RefuseShortLine()
{
    const std::size_t wanted = m_rule.fields.size();
    if (Count() >= wanted) return;
    Error("missing-field", {}, CountedWord(Count(), "field"), CountedWord(wanted, "field"),
          NamedField(m_rule.fields[Count()]) +
              (Count() + 1 == wanted ? " is missing" : " and what follows it are missing"));
}

// "2,5" is two fields, of which one number was meant: the line has one field too many. The fields after it are then not looked at.
bool FieldCheck::RefuseDecimalComma(std::size_t i)
{
    if (Count() != m_rule.fields.size() + 1 || i + 1 >= m_list.fields.size()) return false;
    const std::wstring_view whole = Field(i);
    const std::wstring_view decimals = Field(i + 1);
    if (whole.empty() || WholeNumberPrefix(whole) != whole.size() || decimals.empty()) return false;
    if (decimals[0] < L'0' || decimals[0] > L'9') return false;
    const std::wstring number = std::wstring(whole) + L'.' + std::wstring(decimals);
    Error("decimal-comma", m_rule.fields[i].name, Quote(std::wstring(whole) + L',' + std::wstring(decimals)),
          m_rule.fields[i].quantity->expected,
          "write " + Utf8(std::wstring_view(number).substr(0, NumberPrefix(number))));
    return true;
}

// A point whose position has a decimal comma: the restraint stands one field further.
bool FieldCheck::HasDecimalCommaBeforeRestraint()
{
    const auto rules = m_rule.fields;
    const auto restraint = std::find_if(rules.begin(), rules.end(),
                                        [](const FieldRule& field) { return field.kind == FieldKind::Restraint; });
    const auto place = static_cast<std::size_t>(restraint - rules.begin());
    return place == 2 && IsRestraintText(Field(place + 1)) && RefuseDecimalComma(place - 1);
}

double FieldCheck::SingleNumber()
{
    if (RefuseDecimalComma(0)) return 0.0;
    const double value = Number(0);
    RefuseExtraFields(1);
    return value;
}

double FieldCheck::Number(std::size_t i)
{
    std::wstring_view copy = Field(i);
    const double value = GetValueDouble(copy);
    if (CheckNumber(i, value)) NoteUnusual(m_rule.fields[i], value);
    return value;
}

// Whether the field is a number and nothing else.
bool FieldCheck::CheckNumber(std::size_t i, double value)
{
    const std::wstring_view field = Field(i);
    const FieldRule& rule = m_rule.fields[i];
    const std::size_t prefix = NumberPrefix(field);
    if (field.empty()) {
        Error("missing-field", rule.name, "nothing", rule.quantity->expected, "write 0 where that is meant");
    } else if (prefix == 0) {
        Error("number", rule.name, Quote(field), rule.quantity->expected);
    } else if (prefix < field.size()) {
        Error("number", rule.name, Quote(field), rule.quantity->expected,
              AdviceOnNumber(field, prefix, *rule.quantity));
    } else if (!std::isfinite(value)) {
        Error("number", rule.name, Quote(field), rule.quantity->expected + std::string(" that is finite"));
    } else {
        return true;
    }
    return false;
}

void FieldCheck::NoteUnusual(const FieldRule& field, double value)
{
    const UsualRange* const usual = field.usual;
    if (!usual || !(value > usual->most || (value > 0.0 && value < usual->least))) return;
    m_defects.Add(Severity::Note, usual->code, m_line, field.name, Shortest(value) + usual->unit, usual->expected,
                  usual->advice);
}

int FieldCheck::WholeNumber(std::size_t i)
{
    const FieldRule& rule = m_rule.fields[i];
    const char* const expected = rule.quantity->expected;
    const std::wstring_view field = Field(i);
    std::wstring_view copy = field;
    const int value = GetValueInt(copy);
    if (field.empty()) {
        Error("missing-field", rule.name, "nothing", expected);
    } else if (WholeNumberPrefix(field) < field.size()) {
        Error("number", rule.name, Quote(field), expected);
    } else if (IsClamped(field, value)) {
        Error("number", rule.name, Quote(field), expected + std::string(" within 32 bits"));
    }
    return value;
}

void FieldCheck::Restraint(std::size_t i, CRestraint& restraint)
{
    const char* const name = m_rule.fields[i].name;
    const std::wstring_view field = Field(i);
    if (field.empty())
        return Error("missing-field", name, "nothing", RestraintExpected(), "write Free where nothing is held");
    const auto refuse = [&](std::string advice) {
        Error("restraint", name, Quote(field), RestraintExpected(), std::move(advice));
    };
    if (restraint.SetDescription(CString(field))) {
        const bool saysFree = SameWord(field, L"Free") || SameWord(field, L"None");
        if (restraint.RestFlag() == 0 && !saysFree) refuse("it holds nothing: write Free where that is meant");
        return;
    }
    int bits = 0;
    if (!StringTo(field, bits)) {
        std::wstring blanks(field);
        std::replace(blanks.begin(), blanks.end(), L'_', L' ');
        const std::optional<std::wstring> nearest = Nearest(blanks, RESTRAINT_NAMES);
        return refuse(nearest ? "write " + Utf8(*nearest) : std::string());
    }
    restraint.SetRestFlag(bits);
    if (IsClamped(field, bits) || (static_cast<unsigned int>(bits) & CRestraint::NON_RESTRAINT_MASK) != 0)
        refuse("it has bits that are no restraints");
}

// Read in single precision.
void FieldCheck::LoadHeight(std::size_t i, CRestraint& restraint)
{
    const double written = Number(i);
    std::wstring_view field = Field(i);
    const float height = GetValueFloat(field);
    restraint.SetLoadHeight(height);
    if (std::isfinite(written) && ShortestOfFloat(height) != written) {
        Warn("load-height-digits", m_rule.fields[i].name, Quote(Field(i)), "at most seven significant digits",
             "single precision rounds it to " + Shortest(ShortestOfFloat(height)));
    }
}

FieldValues FieldCheck::All()
{
    FieldValues values;
    if (HasDecimalCommaBeforeRestraint()) {
        std::wstring_view whole = Field(1);
        values.index = WholeNumber(0);
        values.numbers[0] = GetValueDouble(whole);
        return values;
    }
    RefuseShortLine();
    std::size_t numbers = 0;
    for (std::size_t i = 0; i < std::min(Count(), m_rule.fields.size()); ++i) {
        switch (m_rule.fields[i].kind) {
        case FieldKind::WholeNumber:
            values.index = WholeNumber(i);
            break;
        case FieldKind::Restraint:
            Restraint(i, values.restraint);
            break;
        case FieldKind::LoadHeight:
            if (RefuseDecimalComma(i)) break;
            LoadHeight(i, values.restraint);
            RefuseExtraFields(i + 1);
            break;
        default:
            values.numbers[numbers++] = Number(i);
        }
    }
    return values;
}

} // namespace Keltrix::Host
