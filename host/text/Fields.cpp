#include "text/Fields.h"

#include <algorithm>
#include <numeric>

#include "keltrix/platform/KxUtil.h"

namespace Keltrix::Host {

namespace {

constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

constexpr wchar_t Lower(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; }

std::size_t SignLength(std::wstring_view text) { return !text.empty() && (text[0] == L'-' || text[0] == L'+') ? 1 : 0; }

std::size_t DigitsFrom(std::wstring_view text, std::size_t place)
{
    while (place < text.size() && IsDigit(text[place]))
        ++place;
    return place;
}

std::size_t EditDistance(std::wstring_view a, std::wstring_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t(0));
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (Lower(a[i]) == Lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::size_t WholeNumberPrefix(std::wstring_view text)
{
    const std::size_t sign = SignLength(text);
    const std::size_t end = DigitsFrom(text, sign);
    return end > sign ? end : 0;
}

std::size_t NumberPrefix(std::wstring_view text)
{
    const std::size_t sign = SignLength(text);
    for (const std::wstring_view word : {L"infinity", L"inf", L"nan"}) {
        if (SameWord(text.substr(sign, word.size()), word)) return sign + word.size();
    }
    std::size_t end = DigitsFrom(text, sign);
    std::size_t digits = end - sign;
    if (end < text.size() && text[end] == L'.') {
        const std::size_t fractionEnd = DigitsFrom(text, end + 1);
        digits += fractionEnd - end - 1;
        end = fractionEnd;
    }
    if (digits == 0) return 0;
    if (end < text.size() && Lower(text[end]) == L'e') {
        const std::size_t exponent = WholeNumberPrefix(text.substr(end + 1));
        if (exponent > 0) end += 1 + exponent;
    }
    return end;
}

bool SameWord(std::wstring_view a, std::wstring_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return Lower(x) == Lower(y); });
}

std::optional<std::wstring> Nearest(std::wstring_view text, const std::vector<std::wstring_view>& candidates)
{
    constexpr std::size_t longest = 80;
    if (text.empty() || text.size() > longest) return std::nullopt;
    std::optional<std::wstring> nearest;
    std::size_t least = 4;
    for (const std::wstring_view candidate : candidates) {
        const std::size_t distance = EditDistance(text, candidate);
        if (distance < least && 3 * distance <= candidate.size()) {
            least = distance;
            nearest = std::wstring(candidate);
        }
    }
    return nearest;
}

FieldList SplitFields(std::wstring_view rest, std::size_t most)
{
    FieldList list;
    while (!rest.empty()) {
        if (list.fields.size() == most) {
            list.count += static_cast<std::size_t>(std::count(rest.begin(), rest.end(), L',')) + 1;
            // The reader's last comma ends a field and begins none.
            if (rest.back() == L',') --list.count;
            return list;
        }
        list.fields.push_back(GetSubString(rest));
        ++list.count;
    }
    return list;
}

} // namespace Keltrix::Host
