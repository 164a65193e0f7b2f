// What the two-ended table rule costs on a result with many positions and long texts: no more memory than a small
// multiple of the one-ended rule, because the record is merged without copies of it.

#include "AllocatedBytes.h"
#include "TableOracle.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

constexpr int positions = 2000;
constexpr int calls = 200;

/// A copy of the record with its texts takes 8 MB.
CMemberResult LargeResult()
{
    CMemberResult result;
    result.IniDynaArray(positions);
    const CString text(L'x', 1000);
    for (int i = 0; i < positions; ++i) {
        result.SetCurSubSpan(i);
        result.AddOutputString(text);
    }
    return result;
}

template <class Call>
long long BytesOf(Call call)
{
    const long long before = AllocatedBytes();
    for (int i = 0; i < calls; ++i)
        call();
    return AllocatedBytes() - before;
}

} // namespace

TEST(TableAllocation, TheCountSeesACopyOfTheRecord)
{
    const CMemberResult result = LargeResult();
    const long long before = AllocatedBytes();
    const CMemberResult copy(result);
    EXPECT_GT(AllocatedBytes() - before, 4'000'000) << ResultAccess::Texts(copy).size();
}

TEST(TableAllocation, TwoEndsCostAFixedMultipleOfOneEnd)
{
    CMemberResult one = LargeResult();
    CMemberResult two = one;
    const CRestraint end1 = Held(compLateral);
    const CRestraint end2 = Held(torsionPart | compLateral);
    constexpr Direction dir = CCodeShare::LT_COMP_FLANGE1;
    const long long oneEnded =
        BytesOf([&] { CCodeShare(&one).BS5950_1_2000_Table13(7.0, 0.4, dir, end1, false, false); });
    const long long twoEnded =
        BytesOf([&] { CCodeShare(&two).BS5950_1_2000_Table13(7.0, 0.4, dir, end1, end2, false, false, false); });
    EXPECT_LT(twoEnded, 8 * oneEnded) << "one-ended calls took " << oneEnded << " bytes";
    EXPECT_EQ(ResultAccess::Texts(two).size(), static_cast<std::size_t>(positions));
}

TEST(TableAllocation, WithTextDisabledEntriesAreAddedWithoutCopyingTheOthers)
{
    CMemberResult result = LargeResult();
    result.EnableText(false);
    const CRestraint end = Held(compLateral);
    const auto call = [&] {
        CCodeShare(&result).BS5950_1_2000_Table13(7.0, 0.4, CCodeShare::LT_COMP_FLANGE1, end, end, false, false, false);
    };
    call(); // once all texts become notes
    const std::size_t entries = ResultAccess::Texts(result).size();
    // The array of entries may grow to twice its size once; a copy of the notes at each call would take 40 MB.
    EXPECT_LT(BytesOf(call), 1'000'000);
    EXPECT_EQ(ResultAccess::Texts(result).size(), entries + calls);
}
