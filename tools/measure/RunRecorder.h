// SPDX-License-Identifier: GPL-3.0-or-later
// What a report tells of a run's course: kept while it runs, in bounded memory.
#ifndef KESTROVA_MEASURE_RUNRECORDER_H
#define KESTROVA_MEASURE_RUNRECORDER_H

#include <map>

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
    /// another one.
    void add(const MeasuredCamera& camera, const Stretch& tick);
    /// Something happened now.
    void note(const MeasuredCamera& camera, const QString& text, bool bad = false);

    /// Empty for a camera that never ran.
    std::vector<HistoryColumn> course(const MeasuredCamera& camera) const;
    const RunEvents& events() const { return allEvents; }

private:
    struct Course
    {
        RunHistory history;
        bool silent = false;
    };

    const double tickS;
    std::map<const MeasuredCamera*, Course> courses;
    RunEvents allEvents;
};

#endif
