// SPDX-License-Identifier: GPL-3.0-or-later
// The steady clock, anchored to the time of day at which it was first asked.
#include "MeasurementClock.h"

#include <chrono>

#include <QtCore/QTime>

namespace {

std::function<qint64()>& replacement()
{
    static std::function<qint64()> clock;
    return clock;
}

/// Both taken at the same moment; the wall clock may be set afterwards.
struct Anchor
{
    std::chrono::steady_clock::time_point at = std::chrono::steady_clock::now();
    QTime timeOfDay = QTime::currentTime();
};

} // namespace

qint64 measurementClockUs()
{
    if (replacement())
        return replacement()();

    static const Anchor anchor;
    if (!anchor.timeOfDay.isValid())
        return 0;
    const auto elapsed = std::chrono::steady_clock::now() - anchor.at;
    const qint64 elapsedMs = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
    return (anchor.timeOfDay.msecsSinceStartOfDay() + elapsedMs) * 1000;
}

void setMeasurementClock(std::function<qint64()> clock)
{
    replacement() = std::move(clock);
}
