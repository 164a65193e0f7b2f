#include "RequestFields.h"

#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Web {

using Host::BadInput;
using Host::CodeChoice;
using Host::Json;
using Host::Utf8;

std::string WordOf(const Json& request, const char* name, const std::string& otherwise)
{
    const auto at = request.find(name);
    if (at == request.end() || at->is_null()) return otherwise;
    if (!at->is_string()) throw BadInput(std::string(name) + ": expected a text");
    return at->get<std::string>();
}

double NumberOf(const Json& request, const char* name, double otherwise)
{
    const auto at = request.find(name);
    if (at == request.end() || at->is_null()) return otherwise;
    if (!at->is_number()) throw BadInput(std::string(name) + ": expected a number");
    return at->get<double>();
}

bool IsSet(const Json& request, const char* name)
{
    const auto at = request.find(name);
    return at != request.end() && at->is_boolean() && at->get<bool>();
}

std::vector<std::string> WordsOf(const Json& request, const char* name)
{
    std::vector<std::string> words;
    const auto at = request.find(name);
    if (at == request.end()) return words;
    for (const Json& word : *at) {
        if (!word.is_string()) throw BadInput(std::string(name) + ": expected texts");
        words.push_back(word.get<std::string>());
    }
    return words;
}

Host::Settings SettingsOf(const Json& request)
{
    Host::Settings settings;
    settings.code = WordOf(request, "code");
    settings.annex = WordOf(request, "annex");
    settings.isStrict = IsSet(request, "strict");
    const auto options = request.find("options");
    if (options != request.end())
        for (const auto& [name, value] : options->items())
            settings.options.emplace_back(name, value.is_string() ? value.get<std::string>() : std::string());
    return settings;
}

CodeChoice ChoiceOf(const Host::Settings& settings)
{
    return Host::ChooseCode(settings.code, settings.annex, settings.options);
}

Host::ReadingOptions ReadingOf(const Host::Settings& settings) { return {settings.allowGaps, settings.isStrict}; }

std::string NameOf(const Json& request) { return Host::PrintableLine(WordOf(request, "name", "beam.toml")); }

std::string TextOf(Design::Quantity quantity, double value)
{
    return std::isnan(value) ? std::string() : Utf8(Design::QuantityText(quantity, value, CDesFormat()));
}

} // namespace Keltrix::Web
