// SPDX-License-Identifier: GPL-3.0-or-later
// The one clock of the measurement loops and of whoever needs "now" on their scale.
#ifndef KESTROVA_MEASUREMENTCLOCK_H
#define KESTROVA_MEASUREMENTCLOCK_H

#include <functional>

#include <QtCore/QtGlobal>

/// Microseconds, in whole milliseconds, since the midnight before the process first asked. Runs on the steady clock,
/// anchored once to the time of day: past midnight it goes on beyond 24 h, and neither a set clock nor summer time
/// tears a measurement. 0 if there is no valid time of day. Any thread.
qint64 measurementClockUs();

/// Replaces the clock for tests; an empty function puts the real one back. No loop may be running.
void setMeasurementClock(std::function<qint64()> clock);

#endif
