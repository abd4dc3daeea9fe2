// SPDX-License-Identifier: GPL-3.0-or-later
// The place where tests make allocations fail.
#include "Allocation.h"

#include <atomic>

namespace {
std::atomic<AllocationHook> allocationHook{nullptr};
}

void setAllocationHook(AllocationHook hook)
{
    allocationHook = hook;
}

bool mayAllocate(std::size_t bytes)
{
    const AllocationHook hook = allocationHook;
    return hook == nullptr || hook(bytes);
}
