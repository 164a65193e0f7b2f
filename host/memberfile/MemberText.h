#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "keltrix/platform/KxData.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Host {

/// What a member file says, in SI units.
struct MemberContent {
    std::string title;
    std::string section; ///< designation or parametric description
    std::string type;    ///< "ROLLED", "WELDED", "FORMED" or "UNDEF"
    std::string grade;   ///< all fields of the GRADE line after the keyword
    double netToGross = 1.0;
    double plasticToElastic = 1.2;
    double shearLag = 0.7;
    std::optional<std::array<double, 3>> effectiveLengths; ///< major, minor, lateral-torsional, m
    std::optional<double> momentFactor;
    std::vector<Steel::CMemberPoint> points;
    std::vector<Steel::CSubSpan> subSpans; ///< one less than points
    /// What is held at the points and along the sub-spans in words, as they are, for the reader of the text to judge; where one of
    /// these is empty, the restraints of the records stand.
    std::vector<std::string> pointWords = {};
    std::vector<std::string> subSpanWords = {};
};

/// The GRADE fields of a grade: its name, and the strengths where it has its own.
std::string GradeFields(const CSteelGrade& grade);

/// The member file. Numbers are in the fewest digits that say them exactly, so that what is read is what was computed. Points and
/// sub-spans are numbered from 1 in their order. Semicolons stand for the commas of a title, which cannot hold one.
std::string MemberFileText(const MemberContent& content);

/// A member file with lines of captions that say what the fields mean, in which units and with which signs. Captions change
/// nothing of what is read.
std::string ExplainedMemberFile(const std::string& memberFile);

} // namespace Keltrix::Host
