// SPDX-License-Identifier: GPL-3.0-or-later
// How much memory this process really takes.
#ifndef KESTROVA_TESTS_RESIDENTMEMORY_H
#define KESTROVA_TESTS_RESIDENTMEMORY_H

#include <malloc.h>
#include <unistd.h>

#include "Files.h"

/// Without what has been freed and is kept for later, such as the heaps of ended threads.
inline qint64 residentBytes()
{
    malloc_trim(0);
    return readFile(QStringLiteral("/proc/self/statm")).split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

#endif
