// SPDX-License-Identifier: GPL-3.0-or-later
// What is announced to the form at a moment when it must not act: noted, to be handled afterwards.
#ifndef KESTROVA_POSTPONEDEVENTS_H
#define KESTROVA_POSTPONEDEVENTS_H

#include <algorithm>
#include <utility>
#include <vector>

#include <vnCore/vnTypes.h>

/// Each event is noted once, in the order of first arrival. That is enough: whoever handles one asks the host for the
/// state at that time. A camera that closes and opens again stays in this order, so its former record goes first.
class PostponedEvents
{
public:
    enum Kind
    {
        RefreshTimer,
        GraphRefresh,
        CameraOpened,
        CameraClosed,
        CameraAcquisition,
        CameraFormat
    };
    struct Event
    {
        Kind kind;
        VNCORE_HANDLE hCam; ///< null if the kind concerns no one camera

        bool operator==(const Event& other) const { return kind == other.kind && hCam == other.hCam; }
    };

    /// From now on events are noted, for the sake of a camera whose record is in use.
    void hold(VNCORE_HANDLE camera) { m_inUse = camera; }
    bool isHeld() const { return m_inUse != nullptr; }
    bool isInUse(VNCORE_HANDLE camera) const { return isHeld() && camera == m_inUse; }

    /// True if the event has been noted and the caller must return.
    bool postpone(Kind kind, VNCORE_HANDLE camera = nullptr)
    {
        const Event event{kind, camera};
        if (isHeld() && std::find(m_events.begin(), m_events.end(), event) == m_events.end())
            m_events.push_back(event);
        return isHeld();
    }

    /// Nothing is noted any more; what was is handed over.
    std::vector<Event> release()
    {
        m_inUse = nullptr;
        return std::exchange(m_events, {});
    }

private:
    VNCORE_HANDLE m_inUse = nullptr;
    std::vector<Event> m_events;
};

#endif
