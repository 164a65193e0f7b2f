#pragma once

namespace Keltrix::Statics {

/// Share of the beam's length within which two places are one.
inline constexpr double SAME_PLACE = 1e-9;

} // namespace Keltrix::Statics
