// SPDX-License-Identifier: GPL-3.0-or-later
// The one form of a failure message: thread, file, "L", line, ":", an empty text, and "Class::method(): text".
#ifndef KESTROVA_LOGLINE_H
#define KESTROVA_LOGLINE_H

/// Writes one critical line through Qt's logger. `where` is "Class::method"; both texts are Latin-1. Any thread, with
/// any lock held, and without memory.
void logFailure(const char* file, int line, const char* where, const char* text);

#define LOG_FAILURE(where, text) logFailure(__FILE__, __LINE__, where, text)

#endif
