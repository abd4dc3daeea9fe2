// SPDX-License-Identifier: GPL-3.0-or-later
// Writing of failure messages.
#include "LogLine.h"

#include <cstdio>
#include <new>

#include <QtCore/QDebug>
#include <QtCore/QThread>

void logFailure(const char* file, int line, const char* where, const char* text)
{
    try {
        const QString message = QStringLiteral("%1(): %2").arg(QLatin1String(where), QLatin1String(text));
        // The line carries its own place, so the logger gets none.
        QMessageLogger().critical() << QThread::currentThreadId() << file << "L" << line << ":"
                                    << "" << message;
    } catch (const std::bad_alloc&) {
        // What is told of a lack of memory must not end in it: without Qt, and so without memory.
        std::fprintf(stderr, "%s L %d : %s failed, and there is no memory to say how\n", file, line, where);
    }
}
