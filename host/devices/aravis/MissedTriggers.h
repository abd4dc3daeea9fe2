// SPDX-License-Identifier: GPL-3.0-or-later
// What a camera itself counts of its triggers.
#ifndef KESTROVA_ARAVIS_MISSEDTRIGGERS_H
#define KESTROVA_ARAVIS_MISSEDTRIGGERS_H

#include <optional>
#include <string>

#include "GlibOwners.h"

namespace aravis {

/// The counter of a camera that somebody has set up to count triggers that came too early for a frame, by its
/// standard features CounterSelector, CounterEventSource ("FrameTriggerMissed") and CounterValue. The camera's worker
/// calls it.
class MissedTriggers
{
public:
    /// Looks through the camera's counters; what is selected stays selected, and nothing else is changed. The camera
    /// is to outlive this.
    explicit MissedTriggers(ArvCamera* camera);

    /// None if there is no such counter or the camera does not answer.
    std::optional<int> read() const;

private:
    ArvCamera* camera;
    std::string counter; ///< empty: there is none
};

} // namespace aravis

#endif
