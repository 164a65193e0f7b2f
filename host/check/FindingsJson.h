#pragma once

#include <string>

#include "check/CheckedMember.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// What an engineer asks first as JSON in one line, with its line break: the member, its status, utilisation and what governs.
std::string HeadlineLine(const CheckedMember& checked);

/// The findings in full as JSON in one line, with its line break, the headline first; `withSteps` with the steps of each rule, which a member has that
/// was checked with text.
std::string FindingsLine(const CheckedMember& checked, bool withSteps = false);

/// The same indented, without a line break at the end, in the place of an entry `depth` levels below the top of a document.
std::string IndentedFindings(const CheckedMember& checked, int depth, bool withSteps = false);

/// Both as trees.
Json HeadlineJson(const CheckedMember& checked);
Json JsonOf(const CheckedMember& checked, bool withSteps = false);

} // namespace Keltrix::Host
