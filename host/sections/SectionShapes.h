#pragma once

#include <memory>

#include "keltrix/platform/KxData.h"
#include "keltrix/steel/SectionShapes.h"

namespace Keltrix::Host {

using Steel::AngleShape;
using Steel::ChannelShape;
using Steel::ChsShape;
using Steel::IShape;
using Steel::RhsShape;
using Steel::TeeShape;

/// Geometry of the shape of component 0, filled from it; null for a shape that the library does not know, and for dimensions
/// that are no section (not finite, not above zero, plates that do not fit into the outline).
std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section);

} // namespace Keltrix::Host
