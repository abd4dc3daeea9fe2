// SPDX-License-Identifier: GPL-3.0-or-later
// The one form of a failure message: thread, file, "L", line, ":", an empty text, and "Class::method(): text".
#ifndef KESTROVA_LOGLINE_H
#define KESTROVA_LOGLINE_H

#include <QtCore/QString>

/// Writes one critical line through Qt's logger. `where` is "Class::method". Any thread, with any lock held.
void logFailure(const char* file, int line, const char* where, const QString& text);

#define LOG_FAILURE(where, text) logFailure(__FILE__, __LINE__, where, QStringLiteral(text))

#endif
