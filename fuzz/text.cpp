// UTF-8 and the scanners of lines, fields and numbers.
#include <algorithm>
#include <bit>

#include "Fuzz.h"
#include "keltrix/platform/KxUtil.h"

using namespace Keltrix;

namespace {

void CheckUtf8(std::string_view bytes)
{
    std::size_t offset = 0;
    const std::optional<CString> text = CString::FromUtf8(bytes, &offset);
    if (text) {
        Fuzz::Require(text->ToUtf8() == std::string(bytes), "well-formed UTF-8 goes round unchanged", *text);
        return;
    }
    Fuzz::Require(offset < bytes.size(), "the ill-formed place is inside the text");
    Fuzz::Require(CString::FromUtf8(bytes.substr(0, offset)).has_value(), "what stands before it is well-formed");
}

bool SameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

/// Takes the fields of a line by turns as each kind, from a text and from a view into another, which must agree.
void CheckFields(std::wstring_view view)
{
    CString line(view);
    const std::size_t commas = static_cast<std::size_t>(std::count(view.begin(), view.end(), L','));
    for (std::size_t field = 0; field <= commas; ++field) {
        CString copy = line;
        std::wstring_view field_view = line;
        const std::wstring_view text = GetSubString(field_view);
        Fuzz::Require(GetSubString(copy) == CString(text), "a field is the same from a text and from a view", line);
        Fuzz::Require(text.find(L',') == std::wstring_view::npos, "a field holds no comma", line);

        CString numbers = line;
        std::wstring_view number_view = line;
        const double value = GetValueDouble(numbers);
        Fuzz::Require(SameBits(GetValueDouble(number_view), value), "a number is the same from a text and from a view",
                      line);
        Fuzz::Require(numbers == copy, "a number takes away as much as a text does", line, numbers);

        CString whole = line;
        const int count = GetValueInt(whole);
        int asked = 0;
        if (StringTo(text, asked))
            Fuzz::Require(asked == count, "a text that is a whole number has its value", CString(text));
        CString single = line;
        GetValueFloat(single);
        Fuzz::Require(single == whole, "numbers of either kind take away the same", line);
        line = copy;
    }
    Fuzz::Require(line.IsEmpty(), "nothing is left after the last field", CString(view), line);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CheckUtf8(Fuzz::Bytes(data, size));

    const CString text = Fuzz::Text(Fuzz::Bytes(data, size));
    std::size_t seen = 0;
    for (const CString* start = &text;; start = nullptr) {
        const std::wstring_view line = GetLineView(start);
        Fuzz::Require(line.find(L'\n') == std::wstring_view::npos, "a line holds no line break", CString(line));
        seen += line.size();
        CheckFields(line);
        if (AtEndOfLines()) break;
    }
    Fuzz::Require(seen <= text.View().size(), "lines are no longer than the text", text);
    Fuzz::Require(GetLine(nullptr).IsEmpty(), "past the end lines are empty", text);
    return 0;
}
