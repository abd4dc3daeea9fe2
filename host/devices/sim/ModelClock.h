// SPDX-License-Identifier: GPL-3.0-or-later
// Real time turned into model time, on a computer that may be too slow for the model.
#ifndef KESTROVA_SIM_MODELCLOCK_H
#define KESTROVA_SIM_MODELCLOCK_H

#include <algorithm>
#include <optional>

#include <QtCore/QtGlobal>

namespace sim {

/// Follows real time, but never gets further ahead of an event that is due than the catch-up limit: real time beyond
/// that is left out for good. A stretch without events, however long, leaves out nothing. Not thread-safe.
class ModelClock
{
public:
    static constexpr qint64 catchUpLimitNs = 500000000;

    /// The model time at real time `realNs`, where the next event that has not happened yet is due at model time
    /// `nextEventNs`. Never less than before.
    qint64 at(qint64 realNs, std::optional<qint64> nextEventNs)
    {
        const qint64 wanted = realNs - skippedNs;
        const qint64 latest = nextEventNs ? std::max(nowNs, *nextEventNs) + catchUpLimitNs : wanted;
        nowNs = std::min(wanted, latest);
        skippedNs = realNs - nowNs;
        return nowNs;
    }

    /// The real time at which a model time comes.
    qint64 realNs(qint64 modelNs) const { return modelNs + skippedNs; }

private:
    qint64 nowNs = 0;
    qint64 skippedNs = 0; ///< real time that the model left out
};

} // namespace sim

#endif
