// Writing utilisations and flags allocates no memory, and neither does text while it is disabled: checks do all of it for
// every position of every load case.

#include "support/ResultRecord.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

std::atomic<long> allocations{0};

} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

TEST(ResultAllocation, TheCountSeesWhatTheLibraryAllocates)
{
    CMemberResult result;
    const long before = allocations;
    result.AddOutputString(L"a line of text\n");
    EXPECT_GT(allocations, before);
}

TEST(ResultAllocation, UtilisationsFlagsAndMaximaAllocateNothing)
{
    constexpr int positions = 20;
    CMemberResult result;
    result.IniDynaArray(positions);
    const long before = allocations;
    for (int i = 0; i < positions; ++i) {
        result.SetCurSubSpan(i);
        for (const ResultSetter set : localSetters)
            (result.*set)(0.1 * i);
        for (const ResultSetter set : bucklingSetters)
            (result.*set)(0.1 * i);
        result.SetUtilOverAll(0.1 * i);
    }
    result.AddFlags(CMemberResult::INFO_MEMBER_SLENDER);
    int critical = 0;
    const double largest = result.MaxUtilLocalCombined(&critical);
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(largest, 0.1 * (positions - 1));
    EXPECT_EQ(critical, positions - 1);
    EXPECT_TRUE(result.TestFlags(CMemberResult::FAIL_LOCAL_AXIAL | CMemberResult::FAIL_BUCKLE_LAT_TORS));
}

TEST(ResultAllocation, DisabledTextAllocatesNothing)
{
    const CString text(L"a line of text that is long enough for the heap\n");
    CMemberResult result;
    result.EnableText(false);
    const std::size_t numTexts = ResultAccess::Texts(result).size();
    const long before = allocations;
    for (int i = 0; i < 10; ++i) {
        const CResultIndent indent(&result);
        result.AddOutputString(text);
    }
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(ResultAccess::Texts(result).size(), numTexts);
}

// Records that hold no text keep none when they are merged, so that only the first merge makes the notes that say so.
TEST(ResultAllocation, MergingFurtherRecordsWithoutTextAllocatesNothing)
{
    CMemberResult result;
    result.IniDynaArray(5);
    result.EnableText(false);
    CMemberResult other = result;
    other.SetCurSubSpan(3);
    other.SetUtilLocalAxial(0.7);
    result += other;
    other.SetUtilLocalAxial(0.9);
    const long before = allocations;
    result += other;
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(result.UtilLocalAxial(3), 0.9);
    EXPECT_FALSE(result.TextEnabled());
}
