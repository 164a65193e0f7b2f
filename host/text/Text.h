#pragma once

#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"

namespace Keltrix::Host {

/// UTF-8 of any text: what has no UTF-8 form becomes U+FFFD.
std::string Utf8(const CString& text);
std::string Utf8(std::wstring_view text);
inline std::string Utf8(const wchar_t* text) { return Utf8(std::wstring_view(text)); }

/// A text of the program's own, in UTF-8, as wide text; ill-formed bytes become U+FFFD.
CString Wide(std::string_view utf8);

/// The code point at the front of UTF-8 bytes and the number of bytes that it takes. An ill-formed byte is U+FFFD of
/// length 1. The bytes must not be empty.
struct CodePoint {
    char32_t value;
    std::size_t length;
};
CodePoint FirstCodePoint(std::string_view utf8);

/// The length of the run of printable ASCII at the front: what stands for itself everywhere, and is most of all texts.
std::size_t PlainLength(std::string_view utf8);

/// The same text as a terminal shows and never obeys: every byte that is not part of a well-formed character, and every
/// control character other than line feed and tab, becomes U+FFFD. What shows nothing but changes what a text seems to say
/// is named: "[U+202E]" stands for the character that turns the direction of writing, and likewise for the others of that
/// kind, for characters without width and for the separators of lines and paragraphs.
std::string Printable(std::string_view utf8);
/// Adds it to the end of a text.
void AppendPrintable(std::string& text, std::string_view utf8);

/// The same for a name, which stands in one line: a line feed is named, too, and a tab is a blank.
std::string PrintableLine(std::string_view utf8);

/// Columns that a terminal gives to a UTF-8 text: two for wide East Asian characters, none for combining marks.
std::size_t DisplayWidth(std::string_view utf8);

/// A quotation of what stands in a file, in double quotes, without control characters and cut after 60 characters.
std::string Quote(std::wstring_view text);

/// A number in the fewest digits that say it exactly, or with `figures` significant figures; independent of the locale.
/// "inf", "-inf" and "nan" for what is not finite.
std::string Shortest(double value);
std::string Figures(double value, int figures);
/// As Figures, without zeros at the end of its decimals: what was given as a round number.
std::string Rounded(double value, int figures);
/// A length of a member or a place along it: "6.25 m".
std::string LengthText(double metres);
/// A utilisation as reports have it.
std::string UtilisationText(double utilisation);

} // namespace Keltrix::Host
