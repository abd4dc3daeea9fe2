// SPDX-License-Identifier: GPL-3.0-or-later
// Looking for a time.
#include "TimeIndex.h"

#include <algorithm>

void TimeIndex::push_back(qint64 timeUs)
{
    if (size() > 0 && timeUs < times[size() - 1])
        ++stepsBack;
    times.push_back(timeUs);
}

void TimeIndex::pop_front()
{
    if (size() > 1 && times[1] < times[0])
        --stepsBack;
    times.takeFront();
}

quint64 TimeIndex::find(quint64 from, qint64 timeUs) const
{
    if (!isOrdered()) {
        while (from < size() && times[from] < timeUs)
            ++from;
        return from;
    }
    // Steps that double until the time is passed, then halving: the next one is usually near.
    quint64 step = 1;
    quint64 end = from;
    while (end < size() && times[end] < timeUs) {
        from = end + 1;
        end += step;
        step *= 2;
    }
    end = std::min(end, size());
    while (from < end) {
        const quint64 middle = from + (end - from) / 2;
        if (times[middle] < timeUs)
            from = middle + 1;
        else
            end = middle;
    }
    return from;
}
