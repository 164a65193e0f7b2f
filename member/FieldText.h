#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"
#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/Restraint.h"

namespace Keltrix::Steel {

/// Takes the last two fields of a member point or sub-span line: the restraint, as a description or, where it is none, as a
/// number of restraint bits; and the load height, which is read in single precision (kept for compatibility, so a height of
/// more than about seven digits comes back rounded).
inline void TakeRestraint(std::wstring_view& line, Data::CRestraint& restraint)
{
    const CString text(GetSubString(line));
    if (!restraint.SetDescription(text)) {
        int bits = 0;
        StringTo(text, bits);
        restraint.SetRestFlag(bits);
    }
    restraint.SetLoadHeight(GetValueFloat(line));
}

/// The fields of a point or sub-span from the front of a line, which is consumed. The restraint fields are read over the
/// restraint that is there.
void TakeFields(std::wstring_view& line, CMemberPoint& point);
void TakeFields(std::wstring_view& line, CSubSpan& subSpan);

/// Fields of whole and real numbers, six significant digits each, put together before they are appended to a text: the
/// digits of printf's %i and %G.
class NumberFields {
public:
    NumberFields& Put(int value, char separator)
    {
        m_end = std::to_chars(m_end, Limit(), value).ptr;
        *m_end++ = separator;
        return *this;
    }
    NumberFields& Put(double value, char separator)
    {
        m_end = WriteNumber(m_end, Limit(), value, std::chars_format::general, 6).ptr;
        *m_end++ = separator;
        return *this;
    }
    NumberFields& Put(const Vec3<double>& v) { return Put(v.x, ',').Put(v.y, ',').Put(v.z, ','); }

    void AppendTo(CString& text) const
    {
        std::array<wchar_t, CAPACITY> wide;
        // Numbers have no character above the small letters.
        const auto upper = [](char c) { return static_cast<wchar_t>(c >= 'a' ? c - 'a' + 'A' : c); };
        wchar_t* const end = std::transform(m_buffer.data(), static_cast<const char*>(m_end), wide.data(), upper);
        text += std::wstring_view(wide.data(), static_cast<std::size_t>(end - wide.data()));
    }

private:
    /// Room for the longest line: an index and twelve numbers of up to 13 characters ("-1.23457E-308").
    static constexpr std::size_t CAPACITY = 192;
    char* Limit() { return m_buffer.data() + CAPACITY - 1; }

    std::array<char, CAPACITY> m_buffer;
    char* m_end = m_buffer.data();
};

/// Appends the last two fields of such a line, as TakeRestraint takes them, and a line break.
inline void AppendRestraint(CString& text, const Data::CRestraint& restraint)
{
    text += restraint.Description(true);
    text += L',';
    NumberFields().Put(restraint.LoadHeight(), '\n').AppendTo(text);
}

/// Appends the fields of a point or sub-span and a line break.
void AppendFields(CString& text, const CMemberPoint& point);
void AppendFields(CString& text, const CSubSpan& subSpan);

} // namespace Keltrix::Steel
