// The one table of the lines of a member file: that the documents, the writer, the library's reader and the checker have its lines.

#include "memberfile/MemberGrammar.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "memberfile/CodelessMember.h"
#include "memberfile/MemberCheck.h"
#include "memberfile/MemberText.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::GOOD_MEMBER;
using Trial::LinesOf;

// The table of keywords as it stands in the documents: HEADINGS after TITLE, and a line for each form.
std::string KeywordTable()
{
    std::string table = "| Keyword | Fields | Meaning |\n|---|---|---|\n";
    const auto add = [&](const LineRule& rule) {
        std::string keyword = '`' + Utf8(rule.word) + '`';
        for (const LineSentence& row : rule.sentences) {
            const std::string fields = *row.fields ? ' ' + std::string(row.fields) : std::string();
            table += '|' + (keyword.empty() ? "" : ' ' + keyword) + " |" + fields + " | " + row.meaning + " |\n";
            keyword.clear();
        }
    };
    for (const LineRule& rule : MemberLines()) {
        if (rule.place == LinePlace::Caption) continue;
        add(rule);
        if (rule.kind == LineKind::Title) add(RuleOf(LineKind::Headings));
    }
    return table;
}

TEST(MemberGrammar, TheDocumentsHaveItsKeywords)
{
    std::ifstream file(KSTEEL_SOURCE_DIR "/docs/member-file.md");
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_THAT(text.str(), HasSubstr("\n" + KeywordTable() + "\n"));
}

TEST(MemberGrammar, LinesAreInTheirOrderAndKnownInAnyLetterCase)
{
    const auto lines = MemberLines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const LineRule& rule = lines[i];
        const bool isCaption = rule.place == LinePlace::Caption;
        EXPECT_EQ(static_cast<int>(rule.kind), isCaption ? -1 : static_cast<int>(i)) << Utf8(rule.word);
        std::string lower = KeywordOf(rule.kind);
        for (char& c : lower)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        EXPECT_EQ(LineKindOf(std::string_view(lower)), rule.kind);
        EXPECT_EQ(LineKindOf(std::wstring_view(Wide(lower).View())), rule.kind);
        EXPECT_EQ(LineKindOf(std::string_view(lower + "x")), LineKind::Unknown);
        EXPECT_EQ(&RuleOf(rule.kind), &rule);
    }
    EXPECT_EQ(LineKindOf(std::string_view()), LineKind::Unknown);
    EXPECT_EQ(RepeatedLinesText(), "a MEMBERPOINT, SUBSPAN or END line");
}

// What the library's reader does with a member in which one line is replaced by another with no keyword.
bool ReaderTakes(const std::string& text)
{
    CodelessMember member;
    CSteelGrade grade;
    return member.CSVInputData(Wide(text), grade);
}

TEST(MemberGrammar, TheReaderRequiresTheRequiredLinesAndNoOthers)
{
    const std::vector<std::string> lines = LinesOf(GOOD_MEMBER);
    std::size_t tried = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const LineRule& rule = RuleOf(LineKindOf(std::string_view(lines[i]).substr(0, lines[i].find(','))));
        if (rule.place == LinePlace::Caption || rule.place == LinePlace::Repeated) continue;
        std::string text;
        for (std::size_t k = 0; k < lines.size(); ++k)
            text += (k == i ? "remark" : lines[k]) + '\n';
        const bool isRequired = rule.place == LinePlace::Required || rule.place == LinePlace::Last;
        EXPECT_EQ(ReaderTakes(text), !isRequired) << text;
        EXPECT_EQ(CheckMemberFile(Wide(text)).members.front().isRefused, !ReaderTakes(text)) << text;
        tried += isRequired ? 1u : 0u;
    }
    EXPECT_EQ(tried, 7u);
}

TEST(MemberGrammar, TheReaderPassesOverWhatFollowsALineThatHidesTheNext)
{
    const std::vector<std::string> lines = LinesOf(GOOD_MEMBER);
    constexpr std::size_t beforePoints = 10;
    for (std::size_t i = 0; i < beforePoints; ++i) {
        const LineRule& rule = RuleOf(LineKindOf(std::string_view(lines[i]).substr(0, lines[i].find(','))));
        std::string text;
        for (std::size_t k = 0; k < lines.size(); ++k)
            text += (k == i + 1 ? "END" : lines[k]) + '\n';
        EXPECT_EQ(ReaderTakes(text), rule.hidesNextLine) << text;
    }
}

TEST(MemberGrammar, ANumberThatNobodyMeansIsNoted)
{
    const auto codes = [](const std::string& ratio) {
        std::string text = GOOD_MEMBER;
        const std::string line = "ALLOWABLE_PLASTIC/ELASTIC_RATIO,";
        const std::size_t at = text.find(line) + line.size();
        text.replace(at, text.find('\n', at) - at, ratio);
        std::string found;
        for (const Defect& defect : CheckMemberFile(Wide(text)).defects)
            found += defect.Text("f.csv");
        return found;
    };
    EXPECT_EQ(codes("1.2"), "");
    EXPECT_EQ(codes("1.5"), "");
    EXPECT_EQ(codes("9"), "f.csv:6: note: ALLOWABLE_PLASTIC/ELASTIC_RATIO ratio: got 9, expected 1.2, or 1.5 at most; "
                          "design codes take no more");
    EXPECT_THAT(codes("0.5"), HasSubstr("got 0.5"));
}

TEST(MemberGrammar, ExplanationsAreCaptionsThatTheCheckPassesOver)
{
    const std::string text = ExplainedMemberFile(GOOD_MEMBER);
    EXPECT_THAT(text, HasSubstr("HEADINGS,Points: number; position in m"));
    EXPECT_THAT(text, HasSubstr("HEADINGS,Signs: "));
    EXPECT_EQ(LinesOf(text).size(), LinesOf(GOOD_MEMBER).size() + 3);
    EXPECT_EQ(CaptionLineOf(LineKind::MemberPoint), "HEADINGS,Index,Position,Restraint,Load height\n");
    EXPECT_EQ(CheckMemberFile(Wide(text)).Errors(), 0u);
}

} // namespace
} // namespace Keltrix::App
