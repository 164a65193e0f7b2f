// Closing and asking a restraint allocates no memory: both are done many times for every span of every check.

#include "restraint/RestraintOracle.h"

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

using namespace Keltrix::Data;
using RestraintOracle::Make;
using RestraintOracle::Moment;

TEST(RestraintAllocation, TheCountSeesWhatTheLibraryAllocates)
{
    const CRestraint both = Make(0x3);
    const long before = allocations;
    const int length = both.Description().GetLength();
    EXPECT_GT(allocations, before) << "a text of " << length << " characters does not fit into the string itself";
}

TEST(RestraintAllocation, ClosingAskingComparingAndReadingAllocateNothing)
{
    const std::vector<unsigned int> sets = RestraintOracle::SmallSets();
    const Keltrix::CString code(L"F1L F2W TR MAJRV MINPV");
    const long before = allocations;
    int results = 0;
    for (const unsigned int bits : sets)
        for (const Moment moment : RestraintOracle::allMoments) {
            const CRestraint restraint = Make(bits, moment);
            CRestraint copy = restraint;
            copy.MakeConsistent();
            for (const bool consistent : {false, true}) {
                results += restraint.IsRestrained(0x100643, consistent);
                results += restraint.IsFree(0x1800, consistent);
                results += restraint.IsEnc(consistent);
            }
            results += restraint == copy;
            results += restraint.IsPreset(CRestraint::PINNED);
            results += restraint.IsDestabilized() || restraint.IsStabilized();
            copy.MirrorMajorAxis();
            copy.SetEnc();
            copy.SetPreset(CRestraint::PINNED);
            copy.Clear();
            results += copy.SetDescription(code);
        }
    EXPECT_EQ(allocations, before);
    EXPECT_GT(results, 0);
}
