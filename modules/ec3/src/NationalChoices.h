#pragma once

#include <vector>

#include "keltrix/design/DesignCode.h"
#include "keltrix/ec3/Annex.h"

namespace Keltrix::EC3 {

/// The choices that a file of national choices may make, in the order of NationalChoices.
std::vector<Design::NationalChoice> ChoicesOfFiles();
/// An annex with the choices of a file in place of its own, and the file's title.
Annex AnnexWith(const Annex& base, const Design::CodeSettings& settings);

} // namespace Keltrix::EC3
