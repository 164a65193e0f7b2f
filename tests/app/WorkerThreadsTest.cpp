// Worker threads: which they are, and work that throws.

#include <atomic>
#include <chrono>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "WorkersSupport.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using Trial::Echo;
using Trial::RunInWorkers;
using Trial::Words;

std::string ThisThread()
{
    std::ostringstream text;
    text << std::this_thread::get_id();
    return text.str();
}

TEST(WorkerThreads, TheWorkIsSharedAmongThreads)
{
    Words words({"a", "b", "c", "d", "e", "f"});
    RunInWorkers(3, words, [](std::string_view, std::string& reply) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        reply = ThisThread();
    });
    const std::set<std::string> threads(words.replies.begin(), words.replies.end());
    EXPECT_EQ(threads.size(), 3u);
    EXPECT_EQ(threads.count(ThisThread()), 0u);
}

TEST(WorkerThreads, WorkThatThrowsLosesOnlyWhatItCannotDo)
{
    for (const int count : {1, 2, 5}) {
        Words words({"a b", "c bad d", "e", "bad", "f"});
        RunInWorkers(count, words, [](std::string_view request, std::string& reply) {
            reply = "half of a reply";
            if (request.find("bad") != std::string_view::npos) throw std::runtime_error("no");
            reply.clear();
            Echo(request, reply);
        });
        EXPECT_THAT(words.replies, ElementsAre("<a b>", "<c>", "lost bad: unable to go on: no", "<d>", "<e>",
                                               "lost bad: unable to go on: no", "<f>"))
            << count;
    }
}

TEST(WorkerThreads, WhatFailedOnceIsTriedAgain)
{
    Words words({"a", "b", "c"});
    std::atomic<int> attempts = 0;
    RunInWorkers(2, words, [&](std::string_view request, std::string& reply) {
        reply = "half of a reply";
        if (request == "b" && ++attempts == 1) throw std::bad_alloc();
        reply.clear();
        Echo(request, reply);
    });
    EXPECT_THAT(words.replies, ElementsAre("<a>", "<b>", "<c>"));
    EXPECT_EQ(attempts, 2);
}

} // namespace
} // namespace Keltrix::App
