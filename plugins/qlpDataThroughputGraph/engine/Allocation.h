// SPDX-License-Identifier: GPL-3.0-or-later
// Allocations whose failure is handled on the spot.
#ifndef KESTROVA_ALLOCATION_H
#define KESTROVA_ALLOCATION_H

#include <cstddef>
#include <memory>
#include <new>

/// An array without initial values, or null.
template<typename T>
std::unique_ptr<T[]> allocateArray(std::size_t count)
{
    return std::unique_ptr<T[]>(new (std::nothrow) T[count]);
}

/// One object with its defaults, or null.
template<typename T>
std::unique_ptr<T> allocateOne()
{
    return std::unique_ptr<T>(new (std::nothrow) T);
}

#endif
