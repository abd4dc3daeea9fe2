// SPDX-License-Identifier: GPL-3.0-or-later
// Times for readers.
#ifndef KESTROVA_MEASURE_TIMETEXT_H
#define KESTROVA_MEASURE_TIMETEXT_H

#include <QtCore/QDateTime>

/// "3 Mar 2026, 14:05:09"
QString timeText(const QDateTime& time);
/// Without the year.
QString shortTimeText(const QDateTime& time);
/// "UTC+02:00"
QString zoneText(const QDateTime& time);
/// "2 d 3 h", "3 min 20 s", "4.5 s": its two largest parts.
QString lengthText(double lengthS);

#endif
