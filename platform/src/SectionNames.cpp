#include "SectionNames.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace Keltrix {

namespace {

bool IsLetter(wchar_t c) { return c >= L'A' && c <= L'Z'; }

bool IsNumeral(wchar_t c) { return (c >= L'0' && c <= L'9') || c == L'.'; }

// Levenshtein's distance: the fewest insertions, deletions and replacements of one character.
int EditDistance(std::wstring_view a, std::wstring_view b)
{
    std::vector<int> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        int diagonal = row[0];
        row[0] = static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const int replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// "0168.30" is 168.3; "." and nothing are 0.
std::wstring ShortestDigits(std::wstring_view number)
{
    const std::size_t point = std::min(number.find(L'.'), number.size());
    std::wstring_view whole = number.substr(0, point);
    std::wstring_view fraction = number.substr(std::min(point + 1, number.size()));
    while (!whole.empty() && whole.front() == L'0')
        whole.remove_prefix(1);
    while (!fraction.empty() && fraction.back() == L'0')
        fraction.remove_suffix(1);
    std::wstring digits(whole.empty() ? L"0" : whole);
    if (!fraction.empty()) digits.append(L".").append(fraction);
    return digits;
}

double LogOf(const std::wstring& digits)
{
    double value = 0.0;
    double place = 0.1;
    bool isFraction = false;
    for (const wchar_t c : digits) {
        if (c == L'.') {
            isFraction = true;
        } else if (isFraction) {
            value += place * (c - L'0');
            place *= 0.1;
        } else {
            value = 10.0 * value + (c - L'0');
        }
    }
    return std::log(value);
}

// Reads a normalised key from its front.
class NameReader {
public:
    explicit NameReader(std::wstring_view key) : m_rest(key) {}

    SectionName Read()
    {
        m_name.family = Letters();
        Sizes();
        if (m_name.family.empty()) {
            m_name.family = Letters();
            Sizes();
        } else if (m_name.family == L"HE" && m_name.sizes.size() == 1) {
            m_name.family += Letters();
        }
        m_name.isWhole = m_rest.empty() && !m_name.family.empty() && !m_name.sizes.empty();
        return std::move(m_name);
    }

private:
    std::wstring_view Take(bool (*belongs)(wchar_t))
    {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), belongs);
        const auto length = static_cast<std::size_t>(end - m_rest.begin());
        const std::wstring_view taken = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return taken;
    }

    std::wstring_view Letters() { return Take(IsLetter); }

    void Sizes()
    {
        while (!m_rest.empty() && IsNumeral(m_rest.front())) {
            const std::wstring_view number = Take(IsNumeral);
            std::wstring digits = ShortestDigits(number);
            if (digits.find(L'.') != digits.rfind(L'.') || number == L".") {
                m_rest = L"?"; // "1.2.3" is no number
                return;
            }
            const double log = LogOf(digits);
            m_name.sizes.push_back({std::move(digits), log});
            if (m_rest.size() > 1 && m_rest[0] == L'X' && IsNumeral(m_rest[1])) m_rest.remove_prefix(1);
        }
    }

    std::wstring_view m_rest;
    SectionName m_name;
};

struct Family {
    std::wstring_view name;
    std::wstring_view usual;
};

// Families of the product standards and makers' tables. Rolled steel channels (RSC) of today have parallel flanges; those of older
// tables with tapered ones have other sizes.
constexpr Family FAMILIES[] = {{L"UKB", L"UB"},   {L"UKC", L"UC"}, {L"UKBP", L"UBP"},  {L"UKPFC", L"PFC"},
                               {L"RSC", L"PFC"},  {L"UKA", L"L"},  {L"RSA", L"L"},     {L"EA", L"L"},
                               {L"UA", L"L"},     {L"UKT", L"T"},  {L"HFSHS", L"SHS"}, {L"HFRHS", L"RHS"},
                               {L"HFCHS", L"CHS"}};

} // namespace

std::wstring NormalisedKey(std::wstring_view designation)
{
    std::wstring key;
    key.reserve(designation.size());
    for (const wchar_t c : designation) {
        if (c == L' ' || c == L'\t') continue;
        if (c == L'\u00D7' || c == L'*') {
            key.push_back(L'X');
        } else {
            key.push_back(c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c);
        }
    }
    return key;
}

std::wstring SectionName::Key() const
{
    if (!isWhole) return {};
    std::wstring key = family;
    for (std::size_t i = 0; i < sizes.size(); ++i)
        key.append(i == 0 ? L"" : L"X").append(sizes[i].digits);
    return key;
}

SectionName ReadSectionName(std::wstring_view key) { return NameReader(key).Read(); }

std::wstring_view UsualFamily(std::wstring_view family)
{
    for (const Family& known : FAMILIES) {
        if (known.name == family) return known.usual;
    }
    return family;
}

bool LegsFit(const SectionName& name)
{
    const std::size_t count = name.sizes.size();
    const bool isEqual = count == 2 || (count == 3 && name.sizes[0].digits == name.sizes[1].digits);
    if (name.family == L"EA") return isEqual;
    return name.family != L"UA" || !isEqual;
}

std::vector<SectionName> OtherForms(const SectionName& name)
{
    std::vector<SectionName> forms{name};
    const auto isOneOf = [&](std::initializer_list<std::wstring_view> families) {
        return std::find(families.begin(), families.end(), name.family) != families.end();
    };
    if (name.sizes.size() == 2 && isOneOf({L"SHS", L"CFSHS", L"L"})) {
        forms.push_back(name);
        forms.back().sizes.insert(forms.back().sizes.begin(), name.sizes[0]);
    }
    if (name.sizes.size() != 3) return forms;
    if (name.sizes[0].digits == name.sizes[1].digits && isOneOf({L"RHS", L"CFRHS"})) {
        forms.push_back(name);
        forms.back().family = name.family == L"RHS" ? L"SHS" : L"CFSHS";
    }
    if (name.family == L"T") {
        forms.push_back(name);
        std::swap(forms.back().sizes[0], forms.back().sizes[1]);
    }
    return forms;
}

double Difference(const SectionName& wanted, const SectionName& other)
{
    constexpr double letter = 0.5;
    constexpr double farthest = 1e6;
    double difference = wanted.family.empty() ? 0.0 : letter * EditDistance(wanted.family, other.family);
    const std::size_t count = other.sizes.size();
    const std::size_t common = std::min(wanted.sizes.size(), count);
    for (std::size_t i = 0; i < common; ++i)
        difference += (i + 1 < count ? 2.0 : 1.0) * std::fabs(wanted.sizes[i].log - other.sizes[i].log);
    difference += static_cast<double>(std::max(wanted.sizes.size(), count) - common);
    return difference < farthest ? difference : farthest;
}

} // namespace Keltrix
