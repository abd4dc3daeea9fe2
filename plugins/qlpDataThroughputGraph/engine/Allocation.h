// SPDX-License-Identifier: GPL-3.0-or-later
// Allocations whose failure is part of what the engine handles, with a place where tests make them fail.
#ifndef KESTROVA_ALLOCATION_H
#define KESTROVA_ALLOCATION_H

#include <cstddef>
#include <memory>
#include <new>

/// Asked before each of these allocations, on its thread and perhaps with a record's mutex held; false makes it fail.
/// Null, as it is outside of tests, allows all.
using AllocationHook = bool (*)(std::size_t bytes);
void setAllocationHook(AllocationHook hook);
bool mayAllocate(std::size_t bytes);

/// An array without initial values, or null.
template<typename T>
std::unique_ptr<T[]> allocateArray(std::size_t count)
{
    return std::unique_ptr<T[]>(mayAllocate(count * sizeof(T)) ? new (std::nothrow) T[count] : nullptr);
}

/// One object with its defaults, or null.
template<typename T>
std::unique_ptr<T> allocateOne()
{
    return std::unique_ptr<T>(mayAllocate(sizeof(T)) ? new (std::nothrow) T : nullptr);
}

#endif
