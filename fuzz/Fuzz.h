#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"

/// One input of the fuzzer or of the corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace Keltrix::Fuzz {

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// The input as text: UTF-8 where it is well-formed, and otherwise each byte a character, so that no input is lost.
inline CString Text(std::string_view bytes)
{
    if (std::optional<CString> text = CString::FromUtf8(bytes)) return *text;
    std::wstring wide;
    for (const char c : bytes)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return CString(std::move(wide));
}

inline std::string Show(const CString& text) { return text.ToUtf8().value_or("(not well-formed)"); }

/// What must hold for every input. Ends the program otherwise, with what was required and the values at hand.
inline void Require(bool holds, const char* what, const CString& a = {}, const CString& b = {})
{
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n--- first\n%s\n--- second\n%s\n---\n", what, Show(a).c_str(),
                 Show(b).c_str());
    std::abort();
}

} // namespace Keltrix::Fuzz
