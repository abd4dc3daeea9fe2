// SPDX-License-Identifier: GPL-3.0-or-later
// Following a drift slowly.
#include "ClockDrift.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr qint64 minuteUs = 60000000;
constexpr qint64 knownAfterUs = 10 * minuteUs; ///< the host's clock counts milliseconds: 2 ppm of this
constexpr qint64 driftShare = 1000;            ///< a clock drifts by less than this part of the time

} // namespace

qint64 ClockDrift::correctionUs(qint64 stampUs, qint64 arrivalUs)
{
    if (shortest && arrivalUs >= minuteEndUs)
        endMinute();
    const Delay delay{arrivalUs - stampUs, arrivalUs};
    if (!shortest) {
        minuteEndUs = arrivalUs + minuteUs;
        shortest = delay;
    } else if (delay.us < shortest->us) {
        shortest = delay;
    }

    const qint64 driftUs = reference ? latest.us - reference->us : 0;
    const qint64 targetNs = (driftUs - std::clamp(driftUs, -deadBandUs, deadBandUs)) * 1000;
    const qint64 stepNs = std::max<qint64>(stampUs - previousStampUs, 0) * slewPpm / 1000;
    correctionNs += std::clamp(targetNs - correctionNs, -stepNs, stepNs);
    previousStampUs = stampUs;
    return correctionNs / 1000;
}

void ClockDrift::endMinute()
{
    if (!reference) {
        reference = shortest;
    } else {
        // Larger changes are clocks that were set, or a queue that was full for the whole minute.
        const qint64 changeUs = shortest->us - latest.us;
        const qint64 timeUs = std::max(minuteUs, shortest->arrivalUs - latest.arrivalUs);
        if (std::abs(changeUs) > timeUs / driftShare)
            reference->us += changeUs;
    }
    latest = *shortest;
    shortest.reset();
}

std::optional<double> ClockDrift::ppm() const
{
    const qint64 spanUs = reference ? latest.arrivalUs - reference->arrivalUs : 0;
    if (spanUs < knownAfterUs)
        return std::nullopt;
    return static_cast<double>(reference->us - latest.us) / static_cast<double>(spanUs) * 1e6;
}
