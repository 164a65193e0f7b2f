#pragma once

#include <string>

#include "check/CheckedMember.h"

namespace Keltrix::Host {

/// The report of a member as mark-up: what an engineer asks first, then its calculation. The kinds are "brief", "verbose" and "summary".
/// The member was checked with text.
std::string ReportMarkup(const CheckedMember& checked, const std::string& kind);

/// What the flags mean whose words end a report, as mark-up; empty without any.
std::string FlagMeanings(const Steel::CMemberResult& result);

} // namespace Keltrix::Host
