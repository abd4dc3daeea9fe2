// SPDX-License-Identifier: GPL-3.0-or-later
// Gaps between the ids of complete frames.
#include "FrameTally.h"

#include <algorithm>

namespace aravis {

namespace {

constexpr quint64 narrowIds = 65535; ///< 1 to 65535, then 1 again

} // namespace

quint64 FrameTally::steps(quint64 from, quint64 to)
{
    wide |= to > narrowIds;
    if (wide)
        return to > from ? to - from : 0;
    const quint64 forward = (to + narrowIds - from) % narrowIds;
    return forward <= narrowIds / 2 ? forward : 0;
}

quint64 FrameTally::idBefore(quint64 id, quint64 back) const
{
    return wide ? id - back : (id - 1 + narrowIds - back % narrowIds) % narrowIds + 1;
}

std::optional<FrameTally::Step> FrameTally::addComplete(quint64 id, quint64 underruns)
{
    Step step{};
    if (!lastId) {
        knownUnderruns = underruns;
    } else {
        const quint64 forward = steps(*lastId, id);
        if (forward == 0)
            return std::nullopt;
        const quint64 more = underruns - knownUnderruns;
        const quint64 withoutBuffer = std::min(forward - 1, (more + underrunsPerFrame - 1) / underrunsPerFrame);
        knownUnderruns += std::min(more, withoutBuffer * underrunsPerFrame);
        number += static_cast<quint32>(forward);
        step = {number, static_cast<quint32>(forward - 1), static_cast<quint32>(withoutBuffer)};
    }
    lastId = id;
    ++complete;
    return step;
}

} // namespace aravis
