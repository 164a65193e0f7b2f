// The stream that commands pull members from: what it brings in which order, what is told when, and what becomes of members that cannot be
// used.

#include "stream/MemberStream.h"

#include <algorithm>
#include <new>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Trial::GOOD_MEMBER;
using Trial::TestDirectory;

const std::string SPOILED = "TITLE,Spoiled\nSECTION,UB 1x1x1,ROLLED\nGRADE,S275\nEND\n";

class MemberStreams : public ::testing::Test {
protected:
    // What was brought and told, in its order.
    std::vector<std::string> Seen(const std::vector<std::string>& files)
    {
        MemberStream stream(files, {}, m_console);
        while (auto member = stream.Next()) {
            stream.Use(*member, [&] {
                m_seen.push_back("use " + Utf8(member->file->Member(member->place).title));
                return EXIT_FINE;
            });
            if (member->refusal) m_seen.push_back("refused " + member->refusal->title);
        }
        m_worst = stream.Worst();
        return m_seen;
    }

    TestDirectory m_directory;
    std::istringstream m_input;
    std::vector<std::string> m_seen;
    ExitCode m_worst = EXIT_FINE;
    Console m_console{m_input,
                      {},
                      [this](std::string_view message) {
                          m_seen.push_back("told " + std::string(message.substr(message.find_last_of("/\\") + 1, 16)));
                      },
                      {},
                      [this](const std::string&, const std::string&) { m_seen.push_back("read"); }};
};

TEST_F(MemberStreams, BringsMembersInTheirOrderAndTellsAsTheyCome)
{
    const std::string file = m_directory.Write("f.csv", GOOD_MEMBER + SPOILED + GOOD_MEMBER);
    const std::vector<std::string> seen = Seen({file, m_directory.Path("none.csv")});
    ASSERT_GE(seen.size(), 6u);
    EXPECT_EQ(seen[0], "use Floor beam");
    EXPECT_THAT(seen[1], HasSubstr("told f.csv:20"));
    EXPECT_EQ(m_worst, EXIT_BAD_INPUT);
    const auto at = [&](const std::string& what) { return std::find(seen.begin(), seen.end(), what) - seen.begin(); };
    EXPECT_LT(at("refused Spoiled"), at("read"));
    EXPECT_EQ(seen[static_cast<std::size_t>(at("read")) - 1], "use Floor beam") << "read once its last member is used";
    EXPECT_EQ(seen.back(), "refused ") << "a file that is not there";
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "read"), 1);
}

TEST_F(MemberStreams, NothingOfNoFiles) { EXPECT_THAT(Seen({}), IsEmpty()); }

TEST_F(MemberStreams, AMemberThatItsUseRefusesIsARefusalAndHarmsNoOther)
{
    const std::string file = m_directory.Write("f.csv", GOOD_MEMBER + GOOD_MEMBER + GOOD_MEMBER);
    MemberStream stream({file}, {}, m_console);
    int used = 0;
    std::vector<std::string> reasons;
    while (auto member = stream.Next()) {
        const ExitCode code = stream.Use(*member, [&]() -> ExitCode {
            ++used;
            if (used == 1) throw BadInput("not this one");
            if (used == 2) throw std::bad_alloc();
            return EXIT_MEMBER_FAILS;
        });
        EXPECT_EQ(code, used == 3 ? EXIT_MEMBER_FAILS : EXIT_BAD_INPUT);
        ASSERT_EQ(member->refusal.has_value(), used < 3);
        if (!member->refusal) continue;
        reasons.push_back(member->refusal->reasons.front());
        EXPECT_EQ(member->refusal->title, "Floor beam");
    }
    EXPECT_THAT(reasons, ElementsAre("not this one", file + ":19: not enough memory for this member"));
    EXPECT_EQ(stream.Worst(), EXIT_BAD_INPUT);
    EXPECT_EQ(used, 3);
}

} // namespace
} // namespace Keltrix::App
