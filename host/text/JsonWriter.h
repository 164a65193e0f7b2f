#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "keltrix/platform/CString.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// Writes JSON as text, value after value, without a tree of it in memory. What it writes is well formed where each object consists of names that
/// differ and one value after each name, and where all that was begun is ended. A number has the fewest digits that say it exactly; not-a-number and
/// infinity, which JSON does not have, are null. Ill-formed text becomes U+FFFD.
class JsonWriter {
public:
    /// All in one line, without blanks.
    JsonWriter() = default;
    /// Indented by two blanks a level. With a `depth` the text stands in the place of a value so many levels below the top.
    static JsonWriter Indented(int depth = 0);

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }
    /// The name of an object's next value.
    void Name(std::string_view name);

    void Put(std::nullptr_t);
    void Put(double value);
    void Put(std::string_view text);
    void Put(std::wstring_view text);
    void Put(const Json& tree);
    void Put(const char* text) { Put(std::string_view(text)); }
    void Put(const std::string& text) { Put(std::string_view(text)); }
    void Put(const wchar_t* text) { Put(std::wstring_view(text)); }
    void Put(const CString& text) { Put(text.View()); }
    template <std::same_as<bool> Bool>
    void Put(Bool value)
    {
        PutWord(value ? "true" : "false");
    }
    template <std::integral Integer>
    requires(!std::same_as<Integer, bool>) void Put(Integer value) { PutWord(std::to_string(value)); }
    /// What a function writes: one value.
    template <std::invocable Function>
    void Put(const Function& function)
    {
        function();
    }

    /// Names and their values within an object: Add("x", 1.5, "y", "text").
    template <class Value, class... NamesAndValues>
    void Add(std::string_view name, const Value& value, const NamesAndValues&... rest)
    {
        Name(name);
        Put(value);
        if constexpr (sizeof...(rest) > 0) Add(rest...);
    }
    /// An object of names and their values.
    template <class... NamesAndValues>
    void Object(const NamesAndValues&... namesAndValues)
    {
        BeginObject();
        Add(namesAndValues...);
        EndObject();
    }
    /// An array of what `put` writes for each element: one value.
    template <class List, class Function>
    void Array(const List& list, const Function& put)
    {
        BeginArray();
        for (const auto& element : list)
            put(element);
        EndArray();
    }

    /// The text. Nothing is written after it.
    std::string Take();

private:
    char* RoomFor(std::size_t length);
    void WriteUpTo(const char* end) { m_length = static_cast<std::size_t>(end - m_text.data()); }
    char* BeginValue(std::size_t length);
    void Begin(char bracket);
    void End(char bracket);
    void PutWord(std::string_view word);

    std::string m_text;       ///< what was written, and room after it
    std::size_t m_length = 0; ///< of what was written
    bool m_isIndented = false;
    int m_depth = 0;
    bool m_isEmpty = true; ///< what was begun last has no value yet
    bool m_hasName = true; ///< the next value follows a name, or is the first of all
};

} // namespace Keltrix::Host
