// SPDX-License-Identifier: GPL-3.0-or-later
// Writes what happens to cameras into the event list.
#ifndef KESTROVA_CAMERAEVENTS_H
#define KESTROVA_CAMERAEVENTS_H

#include <chrono>
#include <map>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "CameraDevice.h"

class EventLog;
class TakeOvers;

/// Also watches the measured cameras: one that gets no frame for five seconds makes a line. User interface thread
/// only.
class CameraEvents : public QObject
{
    Q_OBJECT

public:
    using TimePoint = std::chrono::steady_clock::time_point;
    static constexpr std::chrono::seconds longestSilence{5};

    CameraEvents(EventLog& log, TakeOvers& takeOvers, QObject* parent = nullptr);

    /// Looks whether each measured camera has a newer frame than at the last call. Called every second.
    void checkFrames(TimePoint now);

private:
    struct Watch
    {
        std::weak_ptr<const void> memory; ///< of the last frame seen; weak, so that its driver can reuse it
        quint32 frameNumber = 0;
        TimePoint since; ///< when that frame was first seen
        bool reported = false;
    };

    void onTakenOver(VNCORE_HANDLE camera, bool takenOver);

    EventLog& m_log;
    QTimer m_timer;
    std::map<VNCORE_HANDLE, Watch> m_watches; ///< the measured cameras
};

#endif
