// Worker processes: order, waiting, and workers that end.

#include "Workers.h"

#include <csignal>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Failure.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;

// Requests are words separated by blanks; each can be taken apart into its words.
class Words : public RequestSource, public ReplySink {
public:
    explicit Words(std::vector<std::string> requests) : m_requests(std::move(requests)) {}

    Answer Next(std::string& request, bool) override
    {
        most = std::max(most, asked - replies.size());
        if (asked == m_requests.size()) return Answer::End;
        request = m_requests[asked++];
        return Answer::Request;
    }
    int Descriptor() const override { return -1; }

    void Take(std::string_view reply) override { replies.emplace_back(reply); }
    std::vector<std::string> Parts(std::string_view request) const override
    {
        std::istringstream stream{std::string(request)};
        std::vector<std::string> parts;
        for (std::string word; stream >> word;)
            parts.push_back(word);
        return parts;
    }
    void Lose(std::string_view request, const std::string& how) override
    {
        replies.push_back("lost " + std::string(request) + ": " + how);
    }

    std::vector<std::string> replies;
    std::size_t asked = 0;
    std::size_t most = 0; // requests that wait at once

private:
    std::vector<std::string> m_requests;
};

void Echo(std::string_view request, std::string& reply)
{
    reply += '<';
    reply += request;
    reply += '>';
}

TEST(Workers, RepliesComeInTheOrderOfRequests)
{
    std::vector<std::string> requests;
    std::vector<std::string> replies;
    for (int i = 0; i < 500; ++i) {
        requests.push_back(std::to_string(i));
        Echo(requests.back(), replies.emplace_back());
    }
    for (const int count : {1, 2, 7}) {
        Words words(requests);
        RunInWorkers(count, words, words, [](std::string_view request, std::string& reply) {
            // The first of seven takes longest.
            if (std::stoi(std::string(request)) % 7 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
            Echo(request, reply);
        });
        EXPECT_EQ(words.replies, replies) << count;
        EXPECT_LE(words.most, 4u * static_cast<std::size_t>(count)) << "memory is bounded";
    }
}

TEST(Workers, NothingToDo)
{
    Words words({});
    RunInWorkers(3, words, words, Echo);
    EXPECT_TRUE(words.replies.empty());
}

TEST(Workers, LargeAndEmptyTextsPass)
{
    const std::string large(5 << 20, 'x');
    Words words({large, "", large});
    RunInWorkers(2, words, words, [](std::string_view request, std::string& reply) { reply = request; });
    EXPECT_THAT(words.replies, ElementsAre(large, "", large));
}

TEST(Workers, TheWorkIsSharedAmongProcesses)
{
    Words words({"a", "b", "c", "d", "e", "f"});
    RunInWorkers(3, words, words, [](std::string_view, std::string& reply) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        reply = std::to_string(getpid());
    });
    std::set<std::string> processes(words.replies.begin(), words.replies.end());
    EXPECT_EQ(processes.size(), 3u);
    EXPECT_EQ(processes.count(std::to_string(getpid())), 0u);
}

TEST(Workers, OneThatEndsLosesOnlyWhatItCannotDo)
{
    Words words({"a b", "c killer d", "e", "leaver", "f"});
    RunInWorkers(2, words, words, [](std::string_view request, std::string& reply) {
        if (request.find("killer") != std::string_view::npos) std::raise(SIGKILL);
        if (request.find("leaver") != std::string_view::npos) _exit(7);
        Echo(request, reply);
    });
    EXPECT_THAT(words.replies, ElementsAre("<a b>", "<c>", "lost killer: killed by signal 9", "<d>", "<e>",
                                           "lost leaver: ended with exit code 7", "<f>"));
}

TEST(Workers, WorkThatThrowsEndsItsWorkerAndNothingElse)
{
    Words words({"a", "b", "c"});
    RunInWorkers(1, words, words, [](std::string_view request, std::string& reply) {
        if (request == "b") throw std::runtime_error("no");
        Echo(request, reply);
    });
    EXPECT_THAT(words.replies, ElementsAre("<a>", "lost b: ended with exit code 1", "<c>"));
}

// A slow source, of which the descriptor tells when there is more: replies do not wait for the next request.
class SlowSource : public Words {
public:
    SlowSource() : Words({"a", "b"}) { EXPECT_EQ(pipe(m_pipe), 0); }
    ~SlowSource() override
    {
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
    Answer Next(std::string& request, bool mayWait) override
    {
        if (asked == 1 && !IsReadable(m_pipe[0])) {
            if (!mayWait) return Answer::Later;
            // Nothing is under way any more, so the first reply has been put out.
            EXPECT_THAT(replies, ElementsAre("<a>"));
            EXPECT_EQ(write(m_pipe[1], "x", 1), 1);
        }
        return Words::Next(request, mayWait);
    }
    int Descriptor() const override { return m_pipe[0]; }

private:
    int m_pipe[2] = {-1, -1};
};

TEST(Workers, RepliesDoNotWaitForASlowSource)
{
    SlowSource source;
    RunInWorkers(2, source, source, Echo);
    EXPECT_THAT(source.replies, ElementsAre("<a>", "<b>"));
}

TEST(Workers, AnExceptionOfTheSinkEndsTheWorkers)
{
    class Refusing : public Words {
    public:
        using Words::Words;
        void Take(std::string_view) override { throw BadOutput("full"); }
    };
    Refusing words({"a", "b", "c", "d"});
    EXPECT_THROW(RunInWorkers(2, words, words, Echo), BadOutput);
}

} // namespace
} // namespace Keltrix::App
