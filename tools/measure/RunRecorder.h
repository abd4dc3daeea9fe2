// SPDX-License-Identifier: GPL-3.0-or-later
// What a report tells of a run's course: kept while it runs, in bounded memory.
#ifndef KESTROVA_MEASURE_RUNRECORDER_H
#define KESTROVA_MEASURE_RUNRECORDER_H

#include <map>
#include <utility>

#include "MeasuredCamera.h"
#include "RunEvents.h"
#include "RunHistory.h"

/// On the thread of the event loop.
class RunRecorder
{
public:
    /// `tick`: how often add() is called for each camera.
    explicit RunRecorder(std::chrono::milliseconds tick);

    /// What came since the last one. A silence of more than a second becomes an event when it is seen, and its end
    /// another one; so do frames that were lost, with where.
    void add(const MeasuredCamera& camera, const Stretch& tick);
    /// Something happened now.
    void note(const MeasuredCamera& camera, const QString& text, bool bad = false);

    /// Empty for a camera that never ran.
    std::vector<HistoryColumn> course(const MeasuredCamera& camera) const;
    const RunEvents& events() const { return allEvents; }

private:
    /// A counter of the camera, which a tick tells as what it has become since the start.
    class RunningCount
    {
    public:
        quint64 step(quint64 now)
        {
            const quint64 before = std::exchange(last, now);
            return now > before ? now - before : 0; // a camera that starts anew counts anew
        }

    private:
        quint64 last = 0;
    };
    struct Course
    {
        RunHistory history;
        RunningCount overflows{};
        RunningCount skips{};
        bool silent = false;
    };

    const double tickS;
    std::map<const MeasuredCamera*, Course> courses;
    RunEvents allEvents;
};

#endif
