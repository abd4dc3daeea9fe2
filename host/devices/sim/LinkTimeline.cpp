// SPDX-License-Identifier: GPL-3.0-or-later
// Packets one after the other, with what holds them up.
#include "LinkTimeline.h"

#include <algorithm>

namespace sim {

namespace {

qint64 fromUs(double us)
{
    return static_cast<qint64>(us * 1e3);
}

} // namespace

LinkTimeline::LinkTimeline(const LinkScenario& scenario, quint64 seed) : link(scenario), random(seed)
{
    restart(0);
}

void LinkTimeline::restart(qint64 nowNs)
{
    end = free = nowNs;
    periodicStall = nowNs + fromUs(link.stallEveryMs * 1e3);
    scheduleRandomStall(nowNs);
}

void LinkTimeline::scheduleRandomStall(qint64 fromNs)
{
    if (link.randomStallsPerSecond <= 0.0)
        return;
    randomStall = fromNs + fromUs(random.exponential(1e6 / link.randomStallsPerSecond));
    randomStallLength = fromUs(random.exponential(link.randomStallUs));
}

/// A stall holds back packets that would begin in it; one that passed while the link idled held back nobody.
qint64 LinkTimeline::afterStalls(qint64 beginNs)
{
    const qint64 period = fromUs(link.stallEveryMs * 1e3);
    if (period > 0 && beginNs >= periodicStall) {
        const qint64 latest = periodicStall + (beginNs - periodicStall) / period * period;
        beginNs = std::max(beginNs, latest + fromUs(link.stallUs));
        periodicStall = latest + period;
    }
    while (link.randomStallsPerSecond > 0.0 && beginNs >= randomStall) {
        beginNs = std::max(beginNs, randomStall + randomStallLength);
        scheduleRandomStall(randomStall + randomStallLength);
    }
    return beginNs;
}

qint64 LinkTimeline::send(qint64 earliestNs, quint64 bytes, double share)
{
    const qint64 begin = afterStalls(std::max(earliestNs, free));
    const double durationNs = static_cast<double>(bytes) * 1e3 / link.rate;
    // While the link serves the others, this camera pauses.
    const double othersNs = durationNs * (link.rate / share - 1.0);
    const double jitterNs = link.jitterUs > 0.0 ? random.uniform() * link.jitterUs * 1e3 : 0.0;
    end = begin + static_cast<qint64>(durationNs) + 1;
    free = end + fromUs(link.gapUs) + static_cast<qint64>(othersNs + jitterNs);
    return begin;
}

} // namespace sim
