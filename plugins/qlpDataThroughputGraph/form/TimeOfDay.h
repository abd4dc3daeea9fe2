// SPDX-License-Identifier: GPL-3.0-or-later
// Times of day, as text and on a time axis.
#ifndef KESTROVA_TIMEOFDAY_H
#define KESTROVA_TIMEOFDAY_H

#include <functional>

#include <QtCore/QSharedPointer>
#include <QtCore/QString>

class QCPAxisTicker;

/// Of the measurement clock, microseconds, which may be days after its midnight.
QString timeOfDayText(qint64 timeUs, bool milliseconds);

/// Ticks at round times of day, for an axis of seconds relative to `now`.
QSharedPointer<QCPAxisTicker> timeOfDayTicker(std::function<qint64()> now);

#endif
