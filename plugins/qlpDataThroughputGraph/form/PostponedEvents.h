// SPDX-License-Identifier: GPL-3.0-or-later
// What is announced to the form at a moment when it must not act: noted, to be handled afterwards.
#ifndef KESTROVA_POSTPONEDEVENTS_H
#define KESTROVA_POSTPONEDEVENTS_H

#include <set>
#include <utility>

#include <vnCore/vnTypes.h>

/// Each event is noted once, and they are handled kind by kind, whatever order they came in. That is enough: whoever
/// handles one asks the host for the state at that time.
class PostponedEvents
{
public:
    /// In the order of handling: while events are held no record is made, so each one whose camera has closed is a
    /// former one, which goes before there is a record for every opened camera; last come those that look for
    /// records.
    enum Kind
    {
        CameraClosed,
        CameraOpened,
        CameraAcquisition,
        CameraFormat,
        AreasInView,
        GraphRefresh,
        RefreshTimer
    };
    /// The camera is null if the kind concerns no one camera.
    using Events = std::set<std::pair<Kind, VNCORE_HANDLE>>;

    /// From now on events are noted, for the sake of a camera whose record is in use.
    void hold(VNCORE_HANDLE camera) { inUse = camera; }
    bool isHeld() const { return inUse != nullptr; }
    bool isInUse(VNCORE_HANDLE camera) const { return isHeld() && camera == inUse; }

    /// True if the event has been noted and the caller must return.
    bool postpone(Kind kind, VNCORE_HANDLE camera = nullptr)
    {
        if (isHeld())
            events.emplace(kind, camera);
        return isHeld();
    }

    /// Nothing is noted any more; what was is handed over.
    Events release()
    {
        inUse = nullptr;
        return std::exchange(events, {});
    }

private:
    VNCORE_HANDLE inUse = nullptr;
    Events events;
};

#endif
