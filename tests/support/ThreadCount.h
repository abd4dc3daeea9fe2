// SPDX-License-Identifier: GPL-3.0-or-later
// How many threads the process has. One that was joined may still be on its way out.
#ifndef KESTROVA_THREADCOUNT_H
#define KESTROVA_THREADCOUNT_H

#include <QtCore/QDir>

inline int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

#endif
