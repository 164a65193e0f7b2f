#include "keltrix/design/DesignCode.h"

namespace Keltrix::Design {

// The home of their type information, so that a module and its host have one.
CodeMember::~CodeMember() = default;
DesignCode::~DesignCode() = default;

std::vector<RuleFinding> CodeMember::Information() const { return {}; }

} // namespace Keltrix::Design
