// Workers, be they processes or threads: order, waiting, bounds.

#include "stream/Workers.h"

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

#include "WorkersSupport.h"
#include "io/Failure.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using Trial::Echo;
using Trial::RunInWorkers;
using Trial::Words;

#if defined(_WIN32)
int OpenPipe(int* ends) { return _pipe(ends, 256, _O_BINARY); }
#else
int OpenPipe(int* ends) { return pipe(ends); }
#endif

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
        RunInWorkers(count, words, [](std::string_view request, std::string& reply) {
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
    RunInWorkers(3, words, Echo);
    EXPECT_TRUE(words.replies.empty());
}

TEST(Workers, LargeAndEmptyTextsPass)
{
    const std::string large(5 << 20, 'x');
    Words words({large, "", large});
    RunInWorkers(2, words, [](std::string_view request, std::string& reply) { reply = request; });
    EXPECT_THAT(words.replies, ElementsAre(large, "", large));
}

// A slow source, of which the descriptor tells when there is more: replies do not wait for the next request.
class SlowSource : public Words {
public:
    SlowSource() : Words({"a", "b"}) { EXPECT_EQ(OpenPipe(m_pipe), 0); }
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
    RunInWorkers(2, source, Echo);
    EXPECT_THAT(source.replies, ElementsAre("<a>", "<b>"));
}

TEST(Workers, AnExceptionOfTheOneWhoTakesRepliesEndsTheWorkers)
{
    class Refusing : public Words {
    public:
        using Words::Words;
        void Take(std::string_view) override { throw BadOutput("full"); }
    };
    Refusing words({"a", "b", "c", "d"});
    EXPECT_THROW(RunInWorkers(2, words, Echo), BadOutput);
}

} // namespace
} // namespace Keltrix::App
