#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace Keltrix::Steel::Test {

/// The text of a member input file in which every kind of line stands once, line by line, to be altered.
struct FileText {
    std::vector<std::string> lines = {"TITLE,Beam B1",
                                      "HEADINGS,Keltrix description,Rolled/Welded",
                                      "SECTION,UB 457x191x67,ROLLED",
                                      "GRADE,S275",
                                      "NET_TO_GROSS,0.9",
                                      "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.5",
                                      "SHEAR_LAG_FACTOR,0.65",
                                      "HEADINGS,YES/NO,Leff Maj, Leff Min, Leff LT",
                                      "EFFECTIVE_LENGTH_OVERRIDES,YES,-0.85,2,3",
                                      "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.95",
                                      "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1.1",
                                      "MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,1.2",
                                      "HEADINGS,Index,Position,Restraint int, Load height",
                                      "MEMBERPOINT,1,0,Pinned,0",
                                      "MEMBERPOINT,2,5.5,F1L TR,0.1",
                                      "HEADINGS,Index,Fx-L",
                                      "SUBSPAN,1,1,2,3,4,5,6,7,8,9,10,11,12.5,Free,-0.3",
                                      "END"};

    /// Place of the first line that starts so.
    std::size_t At(const std::string& start) const
    {
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].starts_with(start)) return i;
        throw std::logic_error("no line starts with " + start);
    }
    std::string& Line(const std::string& start) { return lines[At(start)]; }
    void Remove(const std::string& start) { lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(At(start))); }
    void InsertBefore(const std::string& start, const std::string& line)
    {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(At(start)), line);
    }
    void CutBefore(const std::string& start) { lines.resize(At(start)); }
    /// Takes out the lines of moment amplification, which not every member takes.
    FileText& WithoutAmplification()
    {
        Remove("MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS");
        Remove("MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS");
        return *this;
    }
    std::string Text(const char* lineEnd = "\n") const
    {
        std::string text;
        for (const std::string& line : lines)
            text += line + lineEnd;
        return text;
    }
};

} // namespace Keltrix::Steel::Test
