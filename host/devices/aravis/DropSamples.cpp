// SPDX-License-Identifier: GPL-3.0-or-later
// Counters to stretches of time.
#include "DropSamples.h"

#include <algorithm>

namespace aravis {

namespace {

constexpr std::size_t keptSteps = 16384;    ///< most of a minute, however much goes on
constexpr qint64 clockToleranceNs = 200000; ///< between the stamps of packets and the samples' clock
constexpr qint64 longestQueueNs = 50000000; ///< in a socket that is read, though something always waits

} // namespace

void DropSamples::add(const DropSample& sample)
{
    if (last) {
        const Step next{last->beginNs,
                        sample.endNs,
                        sample.endNs,
                        sample.socketDrops != last->socketDrops,
                        sample.underruns != last->underruns,
                        sample.queuedBytes == 0};
        const auto isQuiet = [](const Step& step) { return !step.socketFull && !step.noBuffer && step.empty; };
        if (!steps.empty() && isQuiet(steps.back()) && isQuiet(next))
            steps.back().toNs = next.toNs;
        else
            steps.push_back(next);
        if (steps.size() > keptSteps)
            steps.pop_front();
    }
    last = sample;
}

std::optional<qint64> DropSamples::readBy(qint64 timeNs) const
{
    const auto found = std::find_if(steps.begin(), steps.end(), [timeNs](const Step& step) {
        return step.toNs >= timeNs + (step.empty ? clockToleranceNs : longestQueueNs);
    });
    return found == steps.end() ? std::nullopt : std::optional<qint64>(std::max(found->firstSampleNs, timeNs));
}

bool DropSamples::happened(bool Step::*event, qint64 fromNs, qint64 untilNs) const
{
    return std::any_of(steps.rbegin(), steps.rend(), [=](const Step& step) {
        return step.*event && step.fromNs <= untilNs + clockToleranceNs && step.toNs >= fromNs - clockToleranceNs;
    });
}

} // namespace aravis
