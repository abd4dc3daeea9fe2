// SPDX-License-Identifier: GPL-3.0-or-later
// Writes what happens to cameras into the event list.
#ifndef KESTROVA_CAMERAEVENTS_H
#define KESTROVA_CAMERAEVENTS_H

#include <chrono>
#include <map>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <vnCore/vnTypes.h>

#include "LostFrames.h"

class EventLog;
class TakeOvers;

/// Also watches the measured cameras: one that gets no frame for five seconds makes a line, and so do frames of any
/// camera that were lost, with where. User interface thread only.
class CameraEvents : public QObject
{
    Q_OBJECT

public:
    using TimePoint = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds longestSilence{5};

    CameraEvents(EventLog& log, TakeOvers& takeOvers, QObject* parent = nullptr);

    /// Looks for how long each measured camera has sent no frame. Called every second.
    void checkFrames(TimePoint now);
    /// Looks for lost frames. Called every second; a camera's are told at once, further ones after a while together.
    void checkLosses(TimePoint now);

private:
    void onTakenOver(VNCORE_HANDLE camera, bool takenOver);

    EventLog& eventLog;
    QTimer timer;
    std::map<VNCORE_HANDLE, bool> measured; ///< the measured cameras; whether their silence has been told
    struct ToldLosses
    {
        LostFrames frames;
        TimePoint tellNext{};
    };
    std::map<VNCORE_HANDLE, ToldLosses> lost; ///< of opened cameras, told so far
};

#endif
