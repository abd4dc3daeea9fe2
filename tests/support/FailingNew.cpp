// SPDX-License-Identifier: GPL-3.0-or-later
// The replaced operators. Those of arrays would use the others anyway, but for sanitizers that replace them too.
#include "FailingNew.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

thread_local int allocationsLeft = 0; ///< until the one that fails; 0: none does
thread_local bool failed = false;

} // namespace

bool failAllocation(int nth)
{
    allocationsLeft = nth;
    return std::exchange(failed, false);
}

void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept
{
    if (allocationsLeft > 0 && --allocationsLeft == 0) {
        failed = true;
        return nullptr;
    }
    return std::malloc(bytes == 0 ? 1 : bytes); // NOLINT: this is what it stands for
}

void* operator new(std::size_t bytes)
{
    void* memory = operator new(bytes, std::nothrow);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory); // NOLINT
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory); // NOLINT
}

void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept
{
    return operator new(bytes, std::nothrow);
}

void* operator new[](std::size_t bytes)
{
    return operator new(bytes);
}

void operator delete[](void* memory) noexcept
{
    operator delete(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    operator delete(memory);
}
