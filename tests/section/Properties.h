#pragma once

#include <array>
#include <cmath>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/ConcreteSections.h"
#include "support/Outline.h"

namespace Keltrix {

inline void PrintTo(const CString& text, std::ostream* stream) { *stream << text.ToUtf8().value_or("(ill-formed)"); }

} // namespace Keltrix

namespace Keltrix::Steel::Test {

/// A property of a section class by name.
template <class S>
struct Property {
    const char* name;
    double (S::*get)() const;
};

/// Dimensions for a failure's text.
template <class... Values>
std::string Inputs(const Values&... values)
{
    std::ostringstream text;
    text.precision(17);
    ((text << values << ' '), ...);
    return text.str();
}

/// Within a fraction of the expected value.
inline testing::AssertionResult Within(double actual, double expected, double fraction)
{
    const double error = std::abs(actual - expected);
    if (error <= fraction * std::abs(expected)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << Inputs("got", actual, "expected", expected, "within", fraction,
                                                 "of it, is off by", error / std::abs(expected));
}

/// What was seen of a departure, a fraction of the exact value, over a grid.
class Departure {
public:
    void Add(double actual, double exact)
    {
        const double departure = actual / exact - 1.0;
        m_low = std::min(m_low, departure);
        m_high = std::max(m_high, departure);
    }
    /// The departures run from the one figure to the other; both are stated to about two digits.
    testing::AssertionResult Spans(double low, double high) const
    {
        const double slack = 0.05 * std::max(std::abs(low), std::abs(high)) + 1e-6;
        if (std::abs(m_low - low) <= slack && std::abs(m_high - high) <= slack) return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "departures run from " << m_low << " to " << m_high << ", stated " << low << " to " << high;
    }

private:
    double m_low = std::numeric_limits<double>::infinity();
    double m_high = -std::numeric_limits<double>::infinity();
};

/// Relative difference allowed between a closed formula that is exact and the integral over chords of the arcs.
inline constexpr double CHORD_ERROR = 1e-6;
/// Relative difference allowed between two ways of writing the same sum of some ten terms.
inline constexpr double ROUNDING = 1e-12;

} // namespace Keltrix::Steel::Test
