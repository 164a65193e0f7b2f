// Queries of a span allocate no memory, so none of them copies the member's points or sub-spans.

#include "member/LayoutSupport.h"

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

using namespace LayoutSupport;

TEST(SpanAllocation, TheCountSeesWhatTheLibraryAllocates)
{
    const Layout layout({0.0, 1.0, 2.0});
    const CSpan span = layout.Whole();
    const long before = allocations;
    const int length = span.GetString(CDesFormat()).GetLength();
    EXPECT_GT(allocations, before) << "a text of " << length << " characters";
}

TEST(SpanAllocation, QueriesAllocateNothing)
{
    Layout layout({0.0, 1.0, 2.0, 3.5, 5.0});
    layout.Fz({4, 3, 3, 2, 2, 1, 1, -2}).Myy({0, 10, 10, 20, 20, 30, 30, 5}).Mzz({1, 2, 2, 3, 3, 4, 4, 5});
    const CSpan span = layout.Whole();
    const long before = allocations;
    const CSpan copy(span);
    double sum = span.Length() + span.InterpolatePosition(0.3) + copy.PosLeft();
    sum += span.RestraintEndL().LoadHeight() + span.RestraintEndR().LoadHeight();
    sum += span.ContinuousRestraint().LoadHeight();
    sum += span.MaxForces().GetForcesLeft().z + span.MinForces().GetForcesLeft().z;
    sum += span.InterpolateForces(0.3).z + span.InterpolateMoments(0.7).y;
    sum += span.MaxDispXX(1.0, 1.0) + span.MaxDispYY(1.0, 1.0);
    sum += span.DispXX(2.2, 1.0, 1.0, true, false) + span.DispYY(2.2, 1.0, 1.0, false, true);
    int results = span.IsNull() + span.IsValid() + span.IsLEndOfMember() + span.IsREndOfMember();
    results += span.IsDestabilized() + span.IsMinorAxisLoaded() + span.IsMajorAxisLoaded() + span.IsLoaded(true);
    results += span.IsLoadedWithPointLoad() + span.IsLeftEndPtLoadOnly() + span.IsRightEndPtLoadOnly();
    results += span.IsLeftEndMomentLoadOnly() + span.IsRightEndMomentLoadOnly() + span.IsLeftEndMomentLoaded();
    results += span.IsRightEndMomentLoaded() + span.IsLoadedWithCentrePointLoad() + span.IsLoadedWithUDL();
    results += span == copy;
    EXPECT_EQ(allocations, before);
    EXPECT_TRUE(std::isfinite(sum)) << sum;
    EXPECT_GT(results, 0);
}
