#include "Allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

}  // namespace

namespace kelvora {

std::size_t Allocations()
{
    return allocations;
}

}  // namespace kelvora

// The array forms come here too.
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
