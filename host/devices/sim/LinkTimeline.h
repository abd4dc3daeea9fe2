// SPDX-License-Identifier: GPL-3.0-or-later
// When the packets of one camera leave: link rate, gaps, jitter, stalls and what the other cameras leave of the link.
#ifndef KESTROVA_SIM_LINKTIMELINE_H
#define KESTROVA_SIM_LINKTIMELINE_H

#include "Random.h"
#include "Scenario.h"

namespace sim {

/// A value: a copy goes on where the original stood, which is how a frame that then does not fit is taken back.
class LinkTimeline
{
public:
    LinkTimeline(const LinkScenario& scenario, quint64 seed);

    /// The link idles from here.
    void restart(qint64 nowNs);
    /// Sends a packet as soon as possible at or after `earliestNs` and returns when it begins. `share` is the rate
    /// in MB/s that the link has for this camera.
    qint64 send(qint64 earliestNs, quint64 bytes, double share);
    /// When the last packet's last byte has left.
    qint64 endNs() const { return end; }
    /// When the next packet can begin at the earliest.
    qint64 freeNs() const { return free; }
    /// Whether a frame is lost on its way.
    bool losesFrame() { return link.frameLoss > 0.0 && random.uniform() < link.frameLoss; }

private:
    void scheduleRandomStall(qint64 fromNs);
    qint64 afterStalls(qint64 beginNs);

    LinkScenario link;
    Random random;
    qint64 end = 0;
    qint64 free = 0;
    qint64 periodicStall = 0; ///< when the next one begins
    qint64 randomStall = 0;
    qint64 randomStallLength = 0;
};

} // namespace sim

#endif
