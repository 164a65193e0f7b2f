#include "report/UtilisationChart.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "report/Join.h"
#include "report/Svg.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Design::RuleFinding;

// The worst finding of each rule that has a utilisation, in the order of the rules.
std::vector<const RuleFinding*> EvaluatedRules(const Design::MemberFindings& findings)
{
    std::set<int> numbers;
    for (const RuleFinding& finding : findings.rules)
        numbers.insert(finding.rule);
    std::vector<const RuleFinding*> rules;
    for (const int rule : numbers) {
        const RuleFinding* const finding = findings.Worst(rule);
        // Not-a-number counts as evaluated: it fails.
        if (finding && !(finding->utilisation <= 0.0)) rules.push_back(finding);
    }
    return rules;
}

std::string Name(const RuleFinding& entry) { return Utf8(entry.name) + " (" + Utf8(entry.clause) + ")"; }

} // namespace

std::string UtilisationSvg(const std::string& id, const CheckedMember& checked)
{
    const std::vector<const RuleFinding*> rules = EvaluatedRules(checked.findings);
    if (rules.empty()) return {};
    constexpr double names = 95.0; // mm to the left of the bars
    constexpr double row = 6.2;
    constexpr double width = 184.0;
    constexpr double most = 2.0; // longer bars are cut

    double largest = 1.0;
    std::string description;
    for (const RuleFinding* entry : rules) {
        largest = std::fmax(largest, entry->utilisation);
        AddItem(description, "; ",
                Name(*entry) + " " + UtilisationText(entry->utilisation) + (entry->governing ? ", governs" : ""));
    }
    const double scale = (width - names - 38.0) / std::min(largest * 1.05, most);
    Svg svg(id, "Utilisation of each check against the limit 1.0", description);
    const double bottom = 6.5 + row * static_cast<double>(rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const RuleFinding& entry = *rules[i];
        const double y = 6.0 + row * static_cast<double>(i);
        const bool fails = entry.status == Design::CheckStatus::Failed;
        const double length = scale * (entry.utilisation < most ? entry.utilisation : most);
        svg.Text(entry.governing ? "rule strong" : "rule", names - 2.0, y + 3.2, "end", Name(entry));
        svg.Rect(fails ? "bar fails" : entry.governing ? "bar governs" : "bar", names, y + 0.7, length, row - 2.2);
        const bool isCut = !(entry.utilisation < most);
        const std::string value = UtilisationText(entry.utilisation) + (isCut ? " (bar cut)" : "") +
                                  (fails ? " fails" : "") + (entry.governing ? " ◂ governs" : "");
        double start = names + std::max(length, 0.0) + 1.5;
        // The line of the limit does not run through a value.
        const double end = start + 1.7 * static_cast<double>(DisplayWidth(value));
        if (start < names + scale && end > names + scale) start = names + scale + 1.5;
        svg.Text(entry.governing ? "strong" : "", start, y + 3.2, "start", value);
    }
    svg.Line("base", names, 4.5, names, bottom);
    svg.Line("limit", names + scale, 4.5, names + scale, bottom);
    svg.Text("note", names + scale, 3.4, "middle", "1.0");
    return svg.Finish("chart", width, bottom + 1.5);
}

} // namespace Keltrix::Host
