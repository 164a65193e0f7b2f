#pragma once

#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "keltrix/design/Findings.h"
#include "keltrix/host/Host.h"
#include "memberfile/MemberFile.h"
#include "text/JsonFwd.h"

// What stands in a request. Each throws BadInput, with the field's name, for a value of another kind.
namespace Keltrix::Web {

std::string WordOf(const Host::Json& request, const char* name, const std::string& otherwise = {});
double NumberOf(const Host::Json& request, const char* name, double otherwise);
/// False where it is not there.
bool IsSet(const Host::Json& request, const char* name);
std::vector<std::string> WordsOf(const Host::Json& request, const char* name);

Host::Settings SettingsOf(const Host::Json& request);
Host::CodeChoice ChoiceOf(const Host::Settings& settings);
Host::ReadingOptions ReadingOf(const Host::Settings& settings);
/// How messages call the bytes that came with the request.
std::string NameOf(const Host::Json& request);

/// A value in the user's units, as every other output shows it.
std::string TextOf(Design::Quantity quantity, double value);

} // namespace Keltrix::Web
