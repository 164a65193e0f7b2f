#pragma once

// Reads the equations of a report and works their right sides out again from the numbers that are printed in them.

#include <string>
#include <vector>

namespace BS5950Test {

/// A number that is known to half a unit of its last printed digit, in SI.
struct Interval {
    double low = 0.0;
    double high = 0.0;
};

/// One side of an equation: an expression of printed numbers, or symbols.
struct Side {
    std::string text;
    bool isNumeric = false;
    bool hasOperator = false;
    Interval value;
};

struct Equation {
    std::string text;
    std::vector<Side> sides;
};

/// The equations of a report: text without its mark-up, cut into lines and at the commas and semicolons outside brackets that
/// begin another statement.
std::vector<Equation> EquationsOf(const std::string& report);

/// What is wrong with an equation: two numeric sides whose intervals do not meet, or a formula without its numbers; empty where
/// it is right.
std::string FaultOf(const Equation& equation);

} // namespace BS5950Test
