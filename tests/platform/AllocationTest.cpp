#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxUtil.h"

namespace {

std::size_t g_allocations = 0;

} // namespace

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace Keltrix {
namespace {

TEST(Allocation, IsCounted)
{
    const std::size_t before = g_allocations;
    const CString text(L'x', 1000);
    EXPECT_GT(g_allocations, before) << text.GetLength();
}

TEST(Scanners, ReadAWholeTextThroughViewsWithoutAllocating)
{
    CString text;
    for (int i = 0; i < 1000; ++i)
        text.AppendFormat(L"MEMBERPOINT,%i,%.17g,LTB R,%G\r\n", i, i / 7.0, -i / 3.0);
    text += CString(L'9', 5000);
    double sum = 0.0;
    const std::size_t before = g_allocations;
    for (std::wstring_view line = GetLineView(&text);; line = GetLineView(nullptr)) {
        sum += static_cast<double>(GetSubString(line).size());
        sum += GetValueInt(line);
        sum += GetValueDouble(line);
        GetSubString(line);
        sum += GetValueFloat(line);
        int whole = 0;
        if (StringTo(line, whole)) sum += whole;
        if (AtEndOfLines()) break;
    }
    EXPECT_EQ(g_allocations, before);
    EXPECT_NE(sum, 0.0);
}

TEST(CStringFormat, WritesNumbersIntoReservedTextWithoutAllocating)
{
    CString text;
    text.Reserve(10000);
    const std::size_t before = g_allocations;
    text.Format(L"%i,%G,%#.4f,%s,%f,%a,%x\n", -12, 1.0 / 3.0, 2.5, L"LTB R", 1.7976931348623157e308, 0.1, 255);
    text.AppendFormat(L"%.1200f", 5e-324);
    EXPECT_EQ(g_allocations, before);
    EXPECT_GT(text.GetLength(), 1500);
}

} // namespace
} // namespace Keltrix
