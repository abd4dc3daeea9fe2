// SPDX-License-Identifier: GPL-3.0-or-later
// Conversion of doubles that may lie anywhere, as a zoomed axis or a figure without data does.
#ifndef KESTROVA_NUMBERS_H
#define KESTROVA_NUMBERS_H

#include <limits>

#include <QtCore/QtGlobal>

/// Truncated toward zero and clamped to lowest..highest; 0 for what is no number.
template<class Integer>
constexpr Integer truncated(double value, Integer lowest = std::numeric_limits<Integer>::min(),
                            Integer highest = std::numeric_limits<Integer>::max())
{
    if (!(value == value))
        return 0;
    if (value <= static_cast<double>(lowest))
        return lowest;
    if (value >= static_cast<double>(highest))
        return highest;
    return static_cast<Integer>(value);
}

#endif
