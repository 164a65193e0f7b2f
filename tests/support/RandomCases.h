#pragma once

// How many random cases a test takes.

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Keltrix::TestSupport {

/// `count` times KELTRIX_TEST_SCALE, one at least: 10 tries ten times as many, 0.1 a tenth, which serves where each case takes long,
/// as under the sanitizers. Without the variable, or where it is no number above zero, `count`.
inline int RandomCases(int count)
{
    const char* const text = std::getenv("KELTRIX_TEST_SCALE");
    const double scale = text ? std::atof(text) : 1.0;
    return scale > 0.0 ? std::max(1, static_cast<int>(std::lround(count * scale))) : count;
}

} // namespace Keltrix::TestSupport
