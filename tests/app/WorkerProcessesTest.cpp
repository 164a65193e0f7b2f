// Worker processes that end, and where none can be started.

#include "stream/Workers.h"

#include <csignal>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "WorkersSupport.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using Trial::Echo;
using Trial::RunInWorkers;
using Trial::Words;

TEST(WorkerProcesses, TheWorkIsSharedAmongProcesses)
{
    Words words({"a", "b", "c", "d", "e", "f"});
    RunInWorkers(3, words, [](std::string_view, std::string& reply) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        reply = std::to_string(getpid());
    });
    std::set<std::string> processes(words.replies.begin(), words.replies.end());
    EXPECT_EQ(processes.size(), 3u);
    EXPECT_EQ(processes.count(std::to_string(getpid())), 0u);
}

TEST(WorkerProcesses, OneThatEndsLosesOnlyWhatItCannotDo)
{
    Words words({"a b", "c killer d", "e", "leaver", "f"});
    RunInWorkers(2, words, [](std::string_view request, std::string& reply) {
        if (request.find("killer") != std::string_view::npos) std::raise(SIGKILL);
        if (request.find("leaver") != std::string_view::npos) _exit(7);
        Echo(request, reply);
    });
    EXPECT_THAT(words.replies, ElementsAre("<a b>", "<c>", "lost killer: killed by signal 9", "<d>", "<e>",
                                           "lost leaver: ended with exit code 7", "<f>"));
}

TEST(WorkerProcesses, WorkThatThrowsEndsItsWorkerAndNothingElse)
{
    Words words({"a", "b", "c"});
    RunInWorkers(1, words, [](std::string_view request, std::string& reply) {
        if (request == "b") throw std::runtime_error("no");
        Echo(request, reply);
    });
    EXPECT_THAT(words.replies, ElementsAre("<a>", "lost b: ended with exit code 1", "<c>"));
}

// Three workers reply, wait for more, and are killed before there is any: nobody has begun with the fourth request.
class KillingSource : public Words {
public:
    KillingSource() : Words({"a", "b", "c", "d", "e"}) { EXPECT_EQ(pipe(m_pipe), 0); }
    ~KillingSource() override
    {
        close(m_pipe[0]);
        close(m_pipe[1]);
    }
    Answer Next(std::string& request, bool mayWait) override
    {
        if (asked == 3 && !mayWait) return Answer::Later;
        if (asked == 3) {
            for (const std::string& reply : replies) {
                const pid_t worker = std::stoi(reply);
                siginfo_t info{};
                EXPECT_EQ(kill(worker, SIGKILL), 0);
                EXPECT_EQ(waitid(P_PID, static_cast<id_t>(worker), &info, WEXITED | WNOWAIT), 0);
            }
        }
        return Words::Next(request, mayWait);
    }
    int Descriptor() const override { return m_pipe[0]; }

private:
    int m_pipe[2] = {-1, -1};
};

// The program ignores this signal; a test that needs it ignored says so, because other tests start programs that inherit it.
class IgnoredPipeSignal {
public:
    IgnoredPipeSignal() : m_before(std::signal(SIGPIPE, SIG_IGN)) {}
    IgnoredPipeSignal(const IgnoredPipeSignal&) = delete;
    IgnoredPipeSignal& operator=(const IgnoredPipeSignal&) = delete;
    ~IgnoredPipeSignal() { std::signal(SIGPIPE, m_before); }

private:
    void (*m_before)(int);
};

TEST(WorkerProcesses, IdleOnesThatAreKilledLoseNothing)
{
    const IgnoredPipeSignal ignored;
    KillingSource source;
    RunInWorkers(3, source, [](std::string_view request, std::string& reply) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        reply = request == "d" || request == "e" ? std::string(request) : std::to_string(getpid());
    });
    ASSERT_EQ(source.replies.size(), 5u);
    EXPECT_EQ(std::set<std::string>(source.replies.begin(), source.replies.end()).size(), 5u) << "three workers";
    EXPECT_EQ(source.replies[3], "d");
    EXPECT_EQ(source.replies[4], "e");
}

// The worker is stopped before the second request is sent to it, and killed with that request in its pipe. The next one
// begins with it and ends, too: that is the first attempt, not the second.
class StoppingSource : public Words {
public:
    StoppingSource() : Words({"a", "b", "c"}) { EXPECT_EQ(pipe(m_pipe), 0); }
    ~StoppingSource() override
    {
        close(m_pipe[0]);
        close(m_pipe[1]);
        if (m_killer > 0) waitpid(m_killer, nullptr, 0);
    }
    Answer Next(std::string& request, bool mayWait) override
    {
        if (asked == 1 && !mayWait) return Answer::Later;
        if (asked == 1) {
            const pid_t worker = std::stoi(replies[0]);
            siginfo_t info{};
            EXPECT_EQ(kill(worker, SIGSTOP), 0);
            EXPECT_EQ(waitid(P_PID, static_cast<id_t>(worker), &info, WSTOPPED | WNOWAIT), 0);
            m_killer = fork();
            if (m_killer == 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                kill(worker, SIGKILL);
                _exit(0);
            }
        }
        return Words::Next(request, mayWait);
    }
    int Descriptor() const override { return m_pipe[0]; }

private:
    int m_pipe[2] = {-1, -1};
    pid_t m_killer = -1;
};

TEST(WorkerProcesses, OneThatIsKilledBeforeItBeginsIsNoAttempt)
{
    const IgnoredPipeSignal ignored;
    int once[2];
    ASSERT_EQ(pipe(once), 0);
    ASSERT_EQ(write(once[1], "x", 1), 1);
    close(once[1]);
    StoppingSource source;
    RunInWorkers(1, source, [&](std::string_view request, std::string& reply) {
        char byte = 0;
        if (request == "b" && read(once[0], &byte, 1) == 1) std::raise(SIGKILL);
        reply = request == "a" ? std::to_string(getpid()) : std::string(request);
    });
    close(once[0]);
    ASSERT_EQ(source.replies.size(), 3u);
    EXPECT_EQ(source.replies[1], "b");
    EXPECT_EQ(source.replies[2], "c");
}

// Runs in a copy of this process, which may open no further file and so has no pipe for a worker.
TEST(WorkerProcesses, WithoutProcessesTheWorkIsDoneHere)
{
    for (const bool isUserLimit : {false, true}) {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit none{3, 3};
            const rlimit noProcess{0, 0};
            // The limit of processes does not hold for an administrator.
            if (isUserLimit && (setrlimit(RLIMIT_NPROC, &noProcess) != 0 || (geteuid() == 0 && setuid(65534) != 0)))
                _exit(2);
            if (!isUserLimit && setrlimit(RLIMIT_NOFILE, &none) != 0) _exit(2);
            Words words({"a", "b c", "d", "e", "f", "g", "h", "i"});
            RunInWorkers(4, words, Echo);
            const bool isTold =
                words.messages.size() == 1 &&
                words.messages[0].rfind("--jobs: no worker process can be started, the work is done in one "
                                        "process: ",
                                        0) == 0;
            const bool isDone =
                words.replies == std::vector<std::string>{"<a>", "<b c>", "<d>", "<e>", "<f>", "<g>", "<h>", "<i>"};
            _exit(isTold && isDone ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0) << isUserLimit;
    }
}

// As before, from the moment on at which the first worker ended.
TEST(WorkerProcesses, WhatEndedAWorkerIsNotDoneHere)
{
    class Limiting : public Words {
    public:
        using Words::Words;
        std::vector<std::string> Parts(std::string_view request) const override
        {
            const rlimit none{3, 3};
            setrlimit(RLIMIT_NOFILE, &none);
            return Words::Parts(request);
        }
    };
    const pid_t child = fork();
    if (child == 0) {
        Limiting words({"a", "killer", "b", "c"});
        RunInWorkers(1, words, [](std::string_view request, std::string& reply) {
            if (request == "killer") std::raise(SIGKILL);
            Echo(request, reply);
        });
        const bool isRight =
            words.replies == std::vector<std::string>{"<a>", "lost killer: killed by signal 9", "<b>", "<c>"};
        _exit(isRight && words.messages.size() == 1 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace Keltrix::App
