#pragma once

#include <vector>

#include "check/CheckedMember.h"

namespace Keltrix::Host {

/// What a check says of one topic.
struct TopicSummary {
    const Design::RuleFinding* worst = nullptr; ///< the rule of the largest utilisation; null where none was evaluated
    bool isOpen = false;                        ///< a rule of the topic was not evaluated

    bool IsEmpty() const { return !worst && !isOpen; }
};

/// Of other matters, those without a utilisation, such as the strength of the steel, are left out: there is nothing to compare.
TopicSummary SummaryOf(const CheckedMember& checked, Design::Topic topic);

/// All topics in the order in which they are shown: other matters last.
std::vector<Design::Topic> TopicsInOrder();

} // namespace Keltrix::Host
