#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "stream/Workers.h"

namespace Keltrix::App::Trial {

/// Requests are words separated by blanks; each can be taken apart into its words.
class Words : public RequestSource {
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

    virtual void Take(std::string_view reply) { replies.emplace_back(reply); }
    std::vector<std::string> Parts(std::string_view request) const override
    {
        std::istringstream stream{std::string(request)};
        std::vector<std::string> parts;
        for (std::string word; stream >> word;)
            parts.push_back(word);
        return parts;
    }
    void Lose(std::string_view request, const std::string& how)
    {
        replies.push_back("lost " + std::string(request) + ": " + how);
    }

    void Tell(const std::string& message) { messages.push_back(message); }

    std::vector<std::string> replies;
    std::vector<std::string> messages;
    std::size_t asked = 0;
    std::size_t most = 0; // requests that wait at once

private:
    std::vector<std::string> m_requests;
};

inline void Echo(std::string_view request, std::string& reply)
{
    reply += '<';
    reply += request;
    reply += '>';
}

/// Pulls all replies.
inline void RunInWorkers(int count, Words& words, const Work& work)
{
    Workers workers(count, words, work);
    while (const auto reply = workers.Next()) {
        if (reply->kind == WorkerReply::Done) words.Take(reply->Text());
        if (reply->kind == WorkerReply::Lost) words.Lose(reply->request, reply->how);
        if (reply->kind == WorkerReply::Told) words.Tell(reply->how);
    }
}

} // namespace Keltrix::App::Trial
