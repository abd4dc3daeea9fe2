// SPDX-License-Identifier: GPL-3.0-or-later
// Writing of failure messages.
#include "LogLine.h"

#include <QtCore/QDebug>
#include <QtCore/QThread>

void logFailure(const char* file, int line, const char* where, const QString& text)
{
    const QString message = (QLatin1String(where) + QStringLiteral("(): %1")).arg(text, 0, QLatin1Char(' '));
    // The line carries its own place, so the logger gets none.
    QMessageLogger().critical() << QThread::currentThreadId() << file << "L" << line << ":"
                                << "" << message;
}
