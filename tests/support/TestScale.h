// SPDX-License-Identifier: GPL-3.0-or-later
// How much of a long test runs: all in an optimized build, a tenth otherwise, or what KESTROVA_TEST_SCALE says in
// percent (for runs under valgrind).
#ifndef KESTROVA_TESTSCALE_H
#define KESTROVA_TESTSCALE_H

#include <algorithm>

#include <QtCore/QtGlobal>

inline int testCount(int full)
{
#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
    constexpr int usualPercent = 100;
#else
    constexpr int usualPercent = 10;
#endif
    bool given = false;
    const int percent = qEnvironmentVariableIntValue("KESTROVA_TEST_SCALE", &given);
    return std::max(1, static_cast<int>(static_cast<qint64>(full) * (given ? percent : usualPercent) / 100));
}

#endif
