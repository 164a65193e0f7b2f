#include "check/TopicSummary.h"

namespace Keltrix::Host {

using Design::Topic;

TopicSummary SummaryOf(const CheckedMember& checked, Topic topic)
{
    TopicSummary summary;
    for (const Design::RuleFinding& rule : checked.findings.rules) {
        if (rule.topic != topic) continue;
        summary.isOpen = summary.isOpen || rule.status == Design::CheckStatus::NotEvaluated;
        if (rule.WasEvaluated() && (!summary.worst || Design::IsWorse(rule.utilisation, summary.worst->utilisation)))
            summary.worst = &rule;
    }
    if (topic == Topic::Other && summary.worst && summary.worst->utilisation == 0.0) summary.worst = nullptr;
    return summary;
}

std::vector<Topic> TopicsInOrder()
{
    constexpr int count = static_cast<int>(Topic::COUNT);
    std::vector<Topic> topics;
    topics.reserve(count);
    for (int topic = 0; topic < count; ++topic)
        topics.push_back(static_cast<Topic>((topic + 1) % count));
    return topics;
}

} // namespace Keltrix::Host
