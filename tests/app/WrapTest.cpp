#include "text/Wrap.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Render.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using Trial::LinesOf;
using Trial::RunKsteel;

std::string At(std::size_t width, std::string_view markup)
{
    return RenderMarkup(markup, Rendering(Rendering::Plain, width));
}

std::vector<std::string> WordsOf(const std::string& text)
{
    std::vector<std::string> words;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        words.push_back(word);
    std::sort(words.begin(), words.end());
    return words;
}

std::size_t Widest(const std::string& text)
{
    std::size_t widest = 0;
    for (const std::string& line : LinesOf(text))
        widest = std::max(widest, DisplayWidth(line));
    return widest;
}

TEST(Wrap, NumbersStayBesideTheirUnitsAndFamilies)
{
    const auto lines = [](const char* text, std::size_t width) {
        std::string joined;
        for (const Document::Cell& line : Wrapped({{text, {}}}, width)) {
            if (!joined.empty()) joined += '|';
            if (!line.empty()) joined += line[0].text;
        }
        return joined;
    };
    EXPECT_EQ(lines("one two three", 7), "one two|three");
    EXPECT_EQ(lines("one two three", 13), "one two three");
    EXPECT_EQ(lines("one two three", 1), "one|two|three");
    EXPECT_EQ(lines("a -119.5 kN b", 8), "a|-119.5 kN|b");
    EXPECT_EQ(lines("of UB 457x191x67, in S275", 10), "of|UB 457x191x67,|in S275");
    EXPECT_EQ(lines("Moment cl. 4.2.5: ok", 12), "Moment|cl. 4.2.5:|ok");
    EXPECT_EQ(lines("examples/long/continuous_beam.csv", 20), "examples/long/|continuous_beam.csv");
    EXPECT_EQ(lines("275 N/mm² and/or", 9), "275 N/mm²|and/or");
    EXPECT_EQ(lines("", 5), "");
    EXPECT_EQ(lines("blank   s  ", 5), "blank|s");
    EXPECT_EQ(WidestPart({{"UB 457x191x67 of steel", {}}}), 13u);
}

TEST(Wrap, StylesGoOnInTheNextLine)
{
    EXPECT_EQ(RenderMarkup("<red>" + std::string(30, 'a') + ' ' + std::string(30, 'b') + "</red>\n",
                           Rendering(Rendering::Ansi, 40)),
              "\x1B[31m" + std::string(30, 'a') + "\x1B[0m\n    \x1B[31m" + std::string(30, 'b') + "\x1B[0m\n");
}

TEST(Wrap, CellsGoOnInTheirColumn)
{
    EXPECT_EQ(At(40, "<table>Name\tValue\tRemark\nshear\t12 kN\tlateral and torsional restraint here\n"
                     "moment\t7 kNm\tnone\n</table>\n"),
              "Name    Value  Remark\n"
              "shear   12 kN  lateral and torsional\n"
              "               restraint here\n"
              "moment  7 kNm  none\n");
}

TEST(Wrap, NumbersKeepTheirSideAndNarrowGapsComeBeforeMoreLines)
{
    const std::string row = "1234567\t1234567\t1234567\t1234567\t1234567\n";
    EXPECT_EQ(At(40, "<table>A\tB\tC\tD\tE\n" + row + "</table>\n"), "      A       B       C       D       E\n"
                                                                     "1234567 1234567 1234567 1234567 1234567\n");
}

TEST(Wrap, ColumnsThatDoNotFitFollowBelowTheirRow)
{
    const std::string word(18, 'w');
    EXPECT_EQ(At(40, "<table>A\tB\tC\n" + word + "\t" + word + "\t" + word + "\n</table>\n"),
              "A                   B\n"
              "    C\n" +
                  word + "  " + word + "\n    " + word + "\n");
}

// Whatever the text: nothing wider than the terminal but a part that is wider by itself, and no word lost or added.
TEST(Wrap, NoLineIsWiderThanTheTerminalAndNoWordIsLost)
{
    std::mt19937 random(20261121);
    const auto upTo = [&](unsigned most) { return std::uniform_int_distribution<unsigned>(0, most)(random); };
    const char* const words[] = {
        "moment", "119.5",    "kN",   "UB",  "457x191x67",     "a", "lateral-torsional", "m",
        "Größe",  "<b>x</b>", "-0.5", "kNm", "examples/b.csv", "",  "(4.8.3.3.1),",      "日本"};
    for (int trial = 0; trial < 3000; ++trial) {
        SCOPED_TRACE("trial " + std::to_string(trial));
        std::string markup;
        const unsigned columns = 1 + upTo(6);
        const bool isTable = upTo(1) == 1;
        for (unsigned line = 0; line < 1 + upTo(4); ++line) {
            for (unsigned c = 0; c < columns; ++c) {
                if (c > 0) markup += '\t';
                for (unsigned w = 0, count = upTo(9); w < count; ++w) {
                    if (w > 0) markup += ' ';
                    markup += words[upTo(std::size(words) - 1)];
                }
            }
            markup += '\n';
        }
        if (isTable) markup.insert(0, "<table>").append("</table>\n");
        const std::size_t width = 40 + upTo(80);
        const std::string text = At(width, markup);
        EXPECT_EQ(WordsOf(text), WordsOf(At(0, markup))) << markup << text;
        // The widest part of these words is "UB 457x191x67" or a word; each fits beside an indent.
        EXPECT_LE(Widest(text), width) << markup << text;
    }
}

TEST(Wrap, EveryReportFitsATerminalOf80Columns)
{
    for (const char* command :
         {"show examples/*.csv", "check --report table examples/*.csv", "check --report verbose examples/*.csv",
          "check tests/report/failing.csv", "check --report summary examples/*.csv", "sections",
          "section 'L 150x75x10'", "section 'UB 457x191x67'", "spans examples/*.csv", "capacity 'UB 457x191x67'",
          "capacity 'CHS 168.3x5'", "design --family UB examples/floor_beam.csv",
          "design --family UC examples/column.csv"}) {
        SCOPED_TRACE(command);
        const auto wide = RunKsteel(std::string(command) + " --width 0 2>/dev/null");
        const auto narrow = RunKsteel(std::string(command) + " --width 80 2>/dev/null");
        EXPECT_EQ(narrow.code, wide.code);
        EXPECT_LE(Widest(narrow.out), 80u);
        EXPECT_GT(Widest(wide.out), 0u);
        // A path may be broken after a slash.
        const auto joined = [](std::string text) {
            text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\n'; }),
                       text.end());
            std::sort(text.begin(), text.end());
            return text;
        };
        EXPECT_EQ(joined(narrow.out), joined(wide.out));
        // Files and pipes get whole lines.
        EXPECT_EQ(RunKsteel(std::string(command) + " 2>/dev/null").out, wide.out);
    }
}

TEST(Wrap, WidthsThatHoldNoTableAreRefused)
{
    for (const char* width : {"39", "1", "-80", "eighty", "100001", "80.5"})
        EXPECT_EQ(RunKsteel(std::string("sections --family UBP --width ") + width).code, 3) << width;
    for (const char* width : {"0", "40", "80", "100000"})
        EXPECT_EQ(RunKsteel(std::string("sections --family UBP --width ") + width).code, 0) << width;
}

TEST(Wrap, ATerminalIsAskedForItsWidth)
{
    if (Trial::RunShell("TERM=xterm script -qec 'echo works' /dev/null </dev/null").out != "works\r\n")
        GTEST_SKIP() << "there is no script command that plays a terminal, or no terminal to play";
    const auto at = [](const char* columns) {
        return Trial::RunShell("K='" + Trial::ProgramUnderTest() + "' TERM=dumb script -qec 'stty cols " +
                               std::string(columns) + "; \"$K\" show examples/floor_beam.csv' /dev/null </dev/null");
    };
    std::string text = at("80").out;
    std::erase(text, '\r');
    EXPECT_EQ(text, RunKsteel("show examples/floor_beam.csv --width 80").out);
    text = at("0").out; // a terminal that does not know
    std::erase(text, '\r');
    EXPECT_EQ(text, RunKsteel("show examples/floor_beam.csv --width 0").out);
}

TEST(ReportKey, ExplainsAxesNumberingAndUnitsOnceAndFlagsWhereTheyAreSet)
{
    const auto count = [](const std::string& text, const std::string& part) {
        std::size_t found = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++found;
        return found;
    };
    for (const char* command : {"show examples/*.csv", "check examples/*.csv", "check --jobs 2 examples/*.csv",
                                "check --report verbose examples/*.csv"}) {
        const std::string text = RunKsteel(command).out;
        EXPECT_EQ(count(text, "How to read this report:"), 1u) << command;
        EXPECT_EQ(count(text, "The ZMD axes of forces and moments are the member's own"), 1u) << command;
        EXPECT_EQ(count(text, "that have no unit beside them are in m"), 1u) << command;
    }
    for (const char* command :
         {"show --raw examples/tie.csv", "check --report table examples/tie.csv",
          "check --report summary examples/tie.csv", "check --format json examples/tie.csv", "show missing.csv"})
        EXPECT_EQ(count(RunKsteel(command).out, "How to read this report:"), 0u) << command;
    const std::string failing = RunKsteel("check --report summary tests/report/failing.csv").out;
    for (const char* flag : {"NOTIFY", "WARNING", "FAIL", "FAIL LOCAL", "FAIL BUCKLE", "FAIL BUCKLE LAT_TORS"})
        EXPECT_EQ(count(failing, "  " + std::string(flag) + ": "), 1u) << flag;
    EXPECT_EQ(count(RunKsteel("check examples/tie.csv").out, "Meaning of the flags:"), 0u);
}

} // namespace
} // namespace Keltrix::App
