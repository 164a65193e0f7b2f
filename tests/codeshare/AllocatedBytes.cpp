// Replaces the global allocation functions by counting ones. Apart from the tests that ask, so that no call is inlined
// there and compilers see matching pairs of new and delete.

#include "AllocatedBytes.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long long> allocated{0};

} // namespace

long long AllocatedBytes() { return allocated; }

void* operator new(std::size_t size)
{
    allocated += static_cast<long long>(size);
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
