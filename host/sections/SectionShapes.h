#pragma once

#include "keltrix/design/SectionProperties.h"
#include "keltrix/steel/SectionShapes.h"

namespace Keltrix::Host {

using Steel::AngleShape;
using Steel::ChannelShape;
using Steel::ChsShape;
using Steel::IShape;
using Steel::RhsShape;
using Steel::TeeShape;

/// The one rule of what is a section, which the checks take as well.
using Design::MakeGeometry;

} // namespace Keltrix::Host
