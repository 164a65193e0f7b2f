#pragma once

namespace Keltrix::Steel {

constexpr double Square(double x) { return x * x; }
constexpr double Cube(double x) { return x * x * x; }
constexpr double Fourth(double x) { return Square(x) * Square(x); }

} // namespace Keltrix::Steel
