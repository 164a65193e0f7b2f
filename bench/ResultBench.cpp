// The result record: setters, merging and reports.

#include "Bench.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <string>
#include <vector>

#include "keltrix/steel/MemberResult.h"

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;

using Setter = void (CMemberResult::*)(double);
constexpr std::array<Setter, 13> SETTERS = {&CMemberResult::SetUtilLocalCombined,
                                            &CMemberResult::SetUtilLocalAxial,
                                            &CMemberResult::SetUtilLocalMomMajor,
                                            &CMemberResult::SetUtilLocalMomMinor,
                                            &CMemberResult::SetUtilLocalShearMajor,
                                            &CMemberResult::SetUtilLocalShearMinor,
                                            &CMemberResult::SetUtilLocalTorsion,
                                            &CMemberResult::SetUtilBucklingCombined,
                                            &CMemberResult::SetUtilBucklingLT,
                                            &CMemberResult::SetUtilBucklingAxialMajor,
                                            &CMemberResult::SetUtilBucklingAxialMinor,
                                            &CMemberResult::SetUtilBucklingAxialTorsion,
                                            &CMemberResult::SetUtilBucklingAxialFlexuralTorsion};

constexpr int POSITIONS = 12;

/// A result of a member with a few lines of text at every position. `seed` makes utilisations differ.
CMemberResult MakeResult(int seed, bool withText)
{
    CMemberResult result;
    result.IniDynaArray(POSITIONS);
    if (!withText) result.EnableText(false);
    for (int i = 0; i < POSITIONS; ++i) {
        result.SetCurSubSpan(i);
        const double util = 0.1 + 0.001 * ((seed * 37 + i * 11) % 800);
        result.SetUtilLocalMomMajor(util);
        result.SetUtilLocalShearMajor(0.6 * util);
        for (int line = 0; line < 6; ++line)
            result.AddOutputString(L"Major axis moment capacity: M = 123.4 kNm, Mc = 356.2 kNm, M/Mc = 0.346\n");
    }
    return result;
}

constexpr int RECORDS = 1000;

/// So many records merged one after the other into the first. Always a thousand in all, in groups of that size, so that
/// the size of a group does not change how much memory is gone over.
auto Fold(int groupSize, bool withText)
{
    auto records = std::make_shared<std::vector<CMemberResult>>();
    for (int i = 0; i < RECORDS; ++i)
        records->push_back(MakeResult(i, withText));
    return [records, groupSize] {
        std::vector<CMemberResult> sums;
        for (std::size_t i = 0; i < records->size(); ++i) {
            if (i % static_cast<std::size_t>(groupSize) == 0)
                sums.push_back((*records)[i]);
            else
                sums.back() += (*records)[i];
        }
        return sums.back().GetFlags();
    };
}

/// The same with plain arrays and texts.
struct PlainRecord {
    std::vector<double> values = std::vector<double>(std::size_t{7} * POSITIONS, 0.5);
    std::vector<std::wstring> texts;

    explicit PlainRecord(bool withText) : texts(POSITIONS, std::wstring(withText ? 6 * 75 : 0, L'x')) {}
    void Merge(const PlainRecord& other)
    {
        if (std::lexicographical_compare(values.begin(), values.end(), other.values.begin(), other.values.end()))
            values = other.values;
        for (std::size_t k = 0; k < texts.size(); ++k)
            texts[k] += other.texts[k];
    }
};

auto FoldFloor(int groupSize, bool withText)
{
    auto records = std::make_shared<std::vector<PlainRecord>>(RECORDS, PlainRecord(withText));
    return [records, groupSize] {
        std::vector<PlainRecord> sums;
        for (std::size_t i = 0; i < records->size(); ++i) {
            if (i % static_cast<std::size_t>(groupSize) == 0)
                sums.push_back((*records)[i]);
            else
                sums.back().Merge((*records)[i]);
        }
        return sums.back().texts.front().size();
    };
}

void RegisterSetters()
{
    const Work perSetter{static_cast<double>(SETTERS.size()) * POSITIONS};
    const auto utilAt = [](int i) { return 0.3 + 0.001 * i; };
    MeasureWithFloor(
        "result setters",
        [utilAt, result = MakeResult(0, false)]() mutable {
            CMemberResult& r = result;
            r.Clear();
            r.IniDynaArray(POSITIONS);
            for (int i = 0; i < POSITIONS; ++i) {
                r.SetCurSubSpan(i);
                for (const Setter set : SETTERS)
                    (r.*set)(utilAt(i));
            }
            return r.UtilOverAll();
        },
        [utilAt] {
            std::vector<std::vector<double>> values(SETTERS.size(), std::vector<double>(POSITIONS, 0.0));
            double overall = 0.0;
            for (std::size_t i = 0; i < POSITIONS; ++i)
                for (auto& component : values) {
                    benchmark::DoNotOptimize(component);
                    const double util = utilAt(static_cast<int>(i));
                    if (util > component[i]) component[i] = util;
                    if (util > values.front()[i]) values.front()[i] = util;
                    if (util > overall) overall = util;
                }
            return overall;
        },
        0.0, perSetter);
}

void RegisterMerging()
{
    for (const bool withText : {false, true}) {
        const std::string suffix = withText ? " with text" : " without text";
        const auto name = [&](int count) { return "merge " + std::to_string(count) + " records" + suffix; };
        for (const int count : {10, 100, RECORDS})
            MeasureWithFloor(name(count), Fold(count, withText), FoldFloor(count, withText), 0.0, {RECORDS});
        Compare({name(RECORDS), name(100), 1.3});
    }
}

/// A report beside the appending of its own text, and of its numbers, to a prepared text.
template <class Report>
void RegisterReport(const std::string& name, Report report, int numNumbers)
{
    auto result = std::make_shared<CMemberResult>(MakeResult(3, true));
    result->AddFlags(CMemberResult::INFO_LOCAL_SLENDER_WEB);
    const auto text = std::make_shared<CString>(report(*result));
    MeasureWithFloor(
        name, [result, report] { return report(*result).GetLength(); },
        [text, numNumbers, buffer = std::wstring(), digits = std::array<char, 32>()]() mutable {
            buffer.clear();
            buffer.append(text->View());
            for (int i = 0; i < numNumbers; ++i)
                benchmark::DoNotOptimize(
                    std::to_chars(digits.data(), digits.data() + digits.size(), 0.346, std::chars_format::fixed, 3));
            return buffer.size();
        });
}

} // namespace

void RegisterResults()
{
    RegisterSetters();
    RegisterMerging();
    RegisterReport(
        "GetVerbose", [](const CMemberResult& r) { return r.GetVerbose(); }, 0);
    RegisterReport(
        "GetBrief", [](const CMemberResult& r) { return r.GetBrief(); }, 0);
    RegisterReport(
        "GetSummary", [](const CMemberResult& r) { return r.GetSummary(); }, 13);
}

} // namespace Keltrix::Bench
