#pragma once

#include <string>

#include "check/CheckedBeam.h"
#include "text/Text.h"

namespace Keltrix::BeamTest {

using namespace Host;

/// A floor beam by a few keys; further ones stand in front of its tables.
inline std::string FloorBeam(const std::string& keys = {}, const std::string& tables = {})
{
    return "title = \"Floor beam B12\"\nsection = \"UB 457x191x67\"\ngrade = \"S275\"\nlength = 9.0\n"
           "supports = \"pinned\"\n" +
           keys +
           "[[restraint]]\nfrom = 0\nto = 6\nholds = \"Top flange lateral\"\n"
           "[[load]]\ncase = \"Dead\"\nkind = \"permanent\"\nudl = 12.0\n"
           "[[load]]\ncase = \"Imposed\"\nkind = \"imposed\"\npoint = 45.0\nat = 3.0\n" +
           tables;
}

inline Beam Read(const std::string& text, const ReadingOptions& reading = {})
{
    return ReadBeam("beam.toml", text, reading, DefaultCode());
}

/// All defects as messages, one to a line.
inline std::string Messages(const Beam& beam)
{
    std::string text;
    for (const Defect& defect : beam.made.defects)
        text += BeamMessage(defect, "beam.toml") + '\n';
    return text;
}
inline std::string Messages(const std::string& text) { return Messages(Read(text)); }

/// The finding whose rule begins with some words, the worst of them.
inline const Design::RuleFinding* Find(const CheckedMember& checked, const std::string& rule)
{
    const Design::RuleFinding* found = nullptr;
    for (const Design::RuleFinding& one : checked.findings.rules)
        if (DescribeRule(one).rfind(rule, 0) == 0 && (!found || one.utilisation > found->utilisation)) found = &one;
    return found;
}

} // namespace Keltrix::BeamTest
