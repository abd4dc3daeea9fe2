// SPDX-License-Identifier: GPL-3.0-or-later
// Microsecond arithmetic that stays defined at the ends of the range: a bound beyond it means "everything".
#ifndef KESTROVA_TIMEMATH_H
#define KESTROVA_TIMEMATH_H

#include <limits>

#include <QtCore/QtGlobal>

constexpr qint64 usPerSecond = 1000000;

inline qint64 saturatingAdd(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b < 0 ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
}

inline qint64 saturatingSub(qint64 a, qint64 b)
{
    qint64 difference = 0;
    if (!__builtin_sub_overflow(a, b, &difference))
        return difference;
    return b < 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
}

inline qint64 saturatingMul(qint64 a, qint64 b)
{
    qint64 product = 0;
    if (!__builtin_mul_overflow(a, b, &product))
        return product;
    return (a < 0) == (b < 0) ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
}

/// Truncates toward zero; beyond the range its end, not a number is 0.
inline qint64 truncatedToInt64(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value >= limit)
        return std::numeric_limits<qint64>::max();
    if (value < -limit)
        return std::numeric_limits<qint64>::min();
    return value == value ? static_cast<qint64>(value) : 0;
}

#endif
