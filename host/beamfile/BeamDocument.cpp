#include "beamfile/BeamDocument.h"

#include <cmath>
#include <sstream>

#include "beamfile/SafeToml.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/SourceText.h"

namespace Keltrix::Host {

namespace {

Json JsonOf(const toml::node& node);

Json JsonOf(double value)
{
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0.0 ? "inf" : "-inf";
    return value;
}

Json JsonOf(const toml::table& table)
{
    Json json = Json::object();
    for (const auto& [key, value] : table)
        json[std::string(key.str())] = JsonOf(value);
    return json;
}

Json JsonOf(const toml::array& array)
{
    Json json = Json::array();
    for (const toml::node& value : array)
        json.push_back(JsonOf(value));
    return json;
}

template <class T>
std::string Written(const T& value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

Json JsonOf(const toml::node& node)
{
    return node.visit([](const auto& value) -> Json {
        using Node = std::decay_t<decltype(value)>;
        if constexpr (toml::is_table<Node> || toml::is_array<Node>)
            return JsonOf(value);
        else if constexpr (toml::is_floating_point<Node>)
            return JsonOf(value.get());
        else if constexpr (toml::is_date<Node> || toml::is_time<Node> || toml::is_date_time<Node>)
            return Written(value.get());
        else
            return value.get();
    });
}

} // namespace

Json BeamDocument(const std::string& name, std::string_view bytes)
{
    DecodeText(name, bytes);
    const SafeToml toml = ReadBeamToml(bytes);
    if (!toml.fault.empty()) throw BadInput(name + ':' + std::to_string(toml.line) + ": error: " + toml.fault);
    return JsonOf(toml.root);
}

} // namespace Keltrix::Host
