// SPDX-License-Identifier: GPL-3.0-or-later
// A link and the cameras on it. Who wants how much is all that they know of each other.
#ifndef KESTROVA_SIM_SHAREDLINK_H
#define KESTROVA_SIM_SHAREDLINK_H

#include <map>
#include <mutex>

#include "Scenario.h"

namespace sim {

/// Any thread.
class SharedLink
{
public:
    explicit SharedLink(const LinkScenario& scenario) : link(scenario) {}

    const LinkScenario& scenario() const { return link; }

    /// MB/s that a camera sends at most from now on; 0 when it sends nothing any more.
    void setDemand(const void* camera, double rate);

    /// MB/s that the link has for a camera. The link serves cameras in turn: nobody gets more than it wants, and what
    /// is left is divided evenly.
    double share(const void* camera) const;

private:
    const LinkScenario link;
    /// Guards `demands`. A leaf: nothing is called while it is held.
    mutable std::mutex mutex;
    std::map<const void*, double> demands;
};

} // namespace sim

#endif
