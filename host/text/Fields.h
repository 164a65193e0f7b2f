#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::Host {

// Fields of comma-separated lines, looked at more closely than the library's reader does. What counts as a number here is
// what the reader takes as one.

/// Length of the longest start of a text that the reader takes as a number; 0 where there is none.
std::size_t NumberPrefix(std::wstring_view text);

/// Length of the longest start that the reader takes as a whole number; 0 where there is none.
std::size_t WholeNumberPrefix(std::wstring_view text);

/// Whether two texts are the same except for the case of ASCII letters.
bool SameWord(std::wstring_view a, std::wstring_view b);

/// The candidate nearest to a text in letters to change, leave out or put in, in any case; nothing where none is near
/// (more than a third of its length, or more than three letters off).
std::optional<std::wstring> Nearest(std::wstring_view text, const std::vector<std::wstring_view>& candidates);

/// The fields of a line after its keyword, trimmed, at most `most` of them, and how many there are.
struct FieldList {
    std::vector<std::wstring_view> fields;
    std::size_t count = 0;
};
FieldList SplitFields(std::wstring_view rest, std::size_t most);

} // namespace Keltrix::Host
