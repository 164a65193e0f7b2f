#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Steel {

unsupported_design_code_error::~unsupported_design_code_error() = default;

CSteelMember::CSteelMember() { CDesign::SetDesOpt(1); }

CSteelMember::~CSteelMember() = default;

} // namespace Keltrix::Steel
