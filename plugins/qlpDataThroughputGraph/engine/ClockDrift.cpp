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
    if (m_shortest && arrivalUs >= m_minuteEndUs)
        endMinute();
    const Delay delay{arrivalUs - stampUs, arrivalUs};
    if (!m_shortest) {
        m_minuteEndUs = arrivalUs + minuteUs;
        m_shortest = delay;
    } else if (delay.us < m_shortest->us) {
        m_shortest = delay;
    }

    const qint64 driftUs = m_reference ? m_latest.us - m_reference->us : 0;
    const qint64 targetNs = (driftUs - std::clamp(driftUs, -deadBandUs, deadBandUs)) * 1000;
    const qint64 stepNs = std::max<qint64>(stampUs - m_previousStampUs, 0) * slewPpm / 1000;
    m_correctionNs += std::clamp(targetNs - m_correctionNs, -stepNs, stepNs);
    m_previousStampUs = stampUs;
    return m_correctionNs / 1000;
}

void ClockDrift::endMinute()
{
    if (!m_reference) {
        m_reference = m_shortest;
    } else {
        // Larger changes are clocks that were set, or a queue that was full for the whole minute.
        const qint64 changeUs = m_shortest->us - m_latest.us;
        const qint64 timeUs = std::max(minuteUs, m_shortest->arrivalUs - m_latest.arrivalUs);
        if (std::abs(changeUs) > timeUs / driftShare)
            m_reference->us += changeUs;
    }
    m_latest = *m_shortest;
    m_shortest.reset();
}

std::optional<double> ClockDrift::ppm() const
{
    const qint64 spanUs = m_reference ? m_latest.arrivalUs - m_reference->arrivalUs : 0;
    if (spanUs < knownAfterUs)
        return std::nullopt;
    return static_cast<double>(m_reference->us - m_latest.us) / static_cast<double>(spanUs) * 1e6;
}
