#pragma once

#include <array>
#include <compare>
#include <concepts>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "keltrix/platform/Export.h"

namespace Keltrix {

class CString;

/// One argument of CString::Format: a whole number, a real number, a character or a wide text, taken by reference.
class FormatArg {
public:
    enum class Kind { Signed, Unsigned, Real, Character, Text };

    template <std::integral T>
    FormatArg(T value) :

        m_kind(std::is_same_v<T, wchar_t> ? Kind::Character
               : std::is_signed_v<T>      ? Kind::Signed
                                          : Kind::Unsigned),
        m_bits(static_cast<unsigned long long>(value)), m_size(sizeof(T))
    {}
    template <class T>
    requires std::is_enum_v<T> FormatArg(T value) : FormatArg(static_cast<std::underlying_type_t<T>>(value)) {}
    FormatArg(double value) : m_kind(Kind::Real), m_real(value) {}
    FormatArg(const wchar_t* text) :

        m_kind(Kind::Text), m_text(text ? std::wstring_view(text) : std::wstring_view())
    {}
    FormatArg(std::wstring_view text) : m_kind(Kind::Text), m_text(text) {}
    FormatArg(const std::wstring& text) : m_kind(Kind::Text), m_text(text) {}
    inline FormatArg(const CString& text);

    Kind ArgKind() const { return m_kind; }
    long long Signed() const { return static_cast<long long>(m_bits); }
    /// The value as an unsigned number of the argument's own width (so -1 of an int is 4294967295).
    unsigned long long Unsigned() const
    {
        return m_size >= sizeof(m_bits) ? m_bits : m_bits & ((1ULL << (8 * m_size)) - 1);
    }
    double Real() const { return m_real; }
    std::wstring_view Text() const { return m_text; }

private:
    Kind m_kind;
    unsigned long long m_bits = 0;
    std::size_t m_size = sizeof(unsigned long long);
    double m_real = 0.0;
    std::wstring_view m_text;
};

/// Wide-character text with value semantics; the type of all text in the system. `wchar_t` may be 16 or 32 bits wide.
/// Positions and lengths count `wchar_t` units. No operation depends on the process locale: letter case is that of
/// ASCII, white space is blank, tab, carriage return, line feed, vertical tab and form feed.
class KELTRIX_PLATFORM_API CString {
public:
    CString() noexcept = default;
    /// A null pointer makes an empty text.
    CString(const wchar_t* text) : m_text(text ? text : L"") {}
    explicit CString(std::wstring text) noexcept : m_text(std::move(text)) {}
    explicit CString(std::wstring_view text) : m_text(text) {}
    CString(wchar_t character, int repeat) : m_text(repeat > 0 ? static_cast<std::size_t>(repeat) : 0, character) {}

    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }
    /// The text, terminated by a null character; valid until the text changes.
    const wchar_t* GetString() const noexcept { return m_text.c_str(); }
    std::wstring_view View() const noexcept { return m_text; }
    operator std::wstring_view() const noexcept { return m_text; }
    /// The character at 0 <= i < length; the null character at i = length.
    wchar_t operator[](int i) const noexcept { return m_text[static_cast<std::size_t>(i)]; }
    void Reserve(std::size_t length) { m_text.reserve(length); }

    /// The first n characters. n below 0 counts as 0, beyond the end as the whole text; the same in Right and Mid.
    CString Left(int n) const;
    CString Right(int n) const;
    /// From position `first` to the end, or n characters of it. `first` below 0 counts as 0.
    CString Mid(int first) const;
    CString Mid(int first, int n) const;

    /// Position of the first match at or after `start`, or -1. An empty needle is found at `start`.
    int Find(wchar_t character, int start = 0) const;
    int Find(std::wstring_view needle, int start = 0) const;

    /// Replaces every occurrence, from the left and without looking again at what was put in; returns how many.
    int Replace(wchar_t from, wchar_t to);
    int Replace(std::wstring_view from, std::wstring_view to);
    /// Removes every occurrence of the character; returns how many.
    int Remove(wchar_t character);

    /// ASCII letters only; each returns the text itself.
    CString& MakeUpper();
    CString& MakeLower();
    /// Removes white space at both ends, at the left or at the right end.
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();

    /// Below, equal to or above zero as this text sorts before, with or after the other by its code units.
    int Compare(std::wstring_view other) const noexcept;
    /// As Compare, with ASCII letters taken as lower case.
    int CompareNoCase(std::wstring_view other) const noexcept;

    /// Replaces the text by a printf-style format with its arguments put in.
    /// Conversions: d i u o x X c s f F e E g G a A and %%, with the flags "-+ #0", width and precision (numbers or *)
    /// and the length modifiers h hh l ll z t j L, which are read and ignored, because arguments carry their own type.
    /// %s takes a wide text on every platform. Numbers have the digits of C's printf in the "C" locale, whatever
    /// the process locale is. Throws std::invalid_argument when the format and the arguments do not fit together.
    template <class... Args>
    void Format(const wchar_t* format, const Args&... args)
    {
        m_text.clear();
        AppendFormat(format, args...);
    }
    /// As Format, after the present text. No argument may be this text itself.
    template <class... Args>
    void AppendFormat(const wchar_t* format, const Args&... args)
    {
        const std::array<FormatArg, sizeof...(Args)> list{FormatArg(args)...};
        AppendFormatArgs(format, list);
    }

    /// Text from UTF-8. Ill-formed input (a stray or missing continuation byte, an overlong form, a surrogate, a value
    /// above U+10FFFF) gives no text; `errorOffset`, where given, then receives the offset of the first byte of the first
    /// ill-formed sequence.
    static std::optional<CString> FromUtf8(std::string_view bytes, std::size_t* errorOffset = nullptr);
    /// UTF-8 of this text, or nothing when it is not well-formed (an unpaired surrogate, a value above U+10FFFF).
    std::optional<std::string> ToUtf8() const;

    CString& operator+=(const CString& other)
    {
        m_text += other.m_text;
        return *this;
    }
    CString& operator+=(const wchar_t* other)
    {
        if (other) m_text += other;
        return *this;
    }
    CString& operator+=(std::wstring_view other)
    {
        m_text += other;
        return *this;
    }
    CString& operator+=(wchar_t character)
    {
        m_text += character;
        return *this;
    }
    /// Appends `repeat` times the character (none when repeat is not positive).
    void Append(int repeat, wchar_t character)
    {
        if (repeat > 0) m_text.append(static_cast<std::size_t>(repeat), character);
    }

    friend CString operator+(CString a, const CString& b) { return std::move(a += b); }
    friend CString operator+(CString a, const wchar_t* b) { return std::move(a += b); }
    friend CString operator+(CString a, wchar_t b) { return std::move(a += b); }
    friend CString operator+(const wchar_t* a, const CString& b) { return std::move(CString(a) += b); }

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const wchar_t* b) noexcept
    {
        return a.View() == (b ? std::wstring_view(b) : std::wstring_view());
    }
    friend bool operator==(const CString& a, std::wstring_view b) noexcept { return a.View() == b; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept { return a.Compare(b) <=> 0; }
    friend std::strong_ordering operator<=>(const CString& a, const wchar_t* b) noexcept
    {
        return a.Compare(b ? std::wstring_view(b) : std::wstring_view()) <=> 0;
    }

private:
    void AppendFormatArgs(std::wstring_view format, std::span<const FormatArg> args);

    std::wstring m_text;
};

inline FormatArg::FormatArg(const CString& text) : m_kind(Kind::Text), m_text(text.View()) {}

} // namespace Keltrix
