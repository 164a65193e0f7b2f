// The effective-length tables. Floor: closing the restraints that the table looks at, and the product of a row; where
// text is written, the appending of the same text besides.

#include "Bench.h"

#include <array>
#include <memory>
#include <stdexcept>

#include "keltrix/steel/CodeShare.h"

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;

constexpr double L = 6.0;
constexpr double D = 0.4534;
/// Text grows and notes are added with every call, so the number of calls in one measurement is limited.
constexpr long CALLS = 2000;

enum class Record { Null, TextDisabled, TextEnabled, Long };
constexpr std::array<Record, 4> RECORDS = {Record::Null, Record::TextDisabled, Record::TextEnabled, Record::Long};

std::string Name(Record record)
{
    switch (record) {
    case Record::Null:
        return "no result";
    case Record::TextDisabled:
        return "text disabled";
    case Record::TextEnabled:
        return "text enabled";
    case Record::Long:
        break;
    }
    return "1,000 positions of 10,000 characters";
}

std::shared_ptr<CMemberResult> Make(Record record)
{
    if (record == Record::Null) return nullptr;
    auto result = std::make_shared<CMemberResult>();
    if (record == Record::TextDisabled) result->EnableText(false);
    if (record == Record::Long) {
        result->IniDynaArray(1000);
        const CString line = CString(L'x', 99) + L"\n";
        for (int i = 0; i < 1000; ++i) {
            result->SetCurSubSpan(i);
            for (int k = 0; k < 100; ++k)
                result->AddOutputString(line);
        }
    }
    return result;
}

struct Ends {
    CRestraint first;
    CRestraint second;
    Ends()
    {
        if (!first.SetDescription(L"Full rotational") || !second.SetDescription(L"Partial rotational"))
            throw std::logic_error("an end restraint is not understood");
    }
};

double Closed(CRestraint restraint)
{
    restraint.SetForcesAndMoments({0.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, true);
    restraint.MakeConsistent();
    return restraint.IsRestrained(CRestraint::TORSION_PART | CRestraint::COMP_FLANGE_LATERAL, false) ? 0.85 * L : L;
}

} // namespace

void RegisterEffectiveLengths()
{
    const Ends ends;
    for (const Record record : RECORDS) {
        const std::string suffix = ", " + Name(record);
        const bool writes = record == Record::TextEnabled || record == Record::Long;
        const auto result = std::make_shared<std::shared_ptr<CMemberResult>>();
        const auto text = std::make_shared<CString>();
        const Work work{1.0, CALLS, [record, result, text] {
                            *result = Make(record);
                            text->Empty();
                        }};
        const auto floor = [&](int numEnds) {
            return [ends, numEnds, writes, text] {
                for (int i = 0; writes && i < numEnds; ++i)
                    *text += L"<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i> condition: 0.85L(normal)\n";
                const double first = Closed(ends.first);
                return numEnds == 1 ? first : (first + Closed(ends.second)) * 0.5;
            };
        };
        const auto pair = [&](const std::string& name, int numEnds, auto call) {
            MeasureWithFloor(
                name + suffix, [result, call] { return call(CCodeShare(result->get())); }, floor(numEnds), 0.0, work);
        };
        constexpr auto flange1 = CCodeShare::LT_COMP_FLANGE1;
        pair("Table 13, one end", 1, [ends](const CCodeShare& code) {
            return code.BS5950_1_2000_Table13(L, D, flange1, ends.first, false, false);
        });
        pair("Table 13, two ends", 2, [ends](const CCodeShare& code) {
            return code.BS5950_1_2000_Table13(L, D, flange1, ends.first, ends.second, false, false, false);
        });
        pair("Table 14", 2, [ends](const CCodeShare& code) {
            return code.BS5950_1_2000_Table14(L, flange1, ends.first, ends.second, false);
        });
        // Whatever the result holds: the two-ended call looks at two ends and merges two findings.
        Compare({"Table 13, two ends" + suffix, "Table 13, one end" + suffix, 6.0});
    }
}

} // namespace Keltrix::Bench
