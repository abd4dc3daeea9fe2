// SPDX-License-Identifier: GPL-3.0-or-later
// Gaps between the ids of complete frames.
#include "FrameTally.h"

#include <algorithm>

namespace aravis {

namespace {

constexpr quint64 narrowIds = 65535; ///< 1 to 65535, then 1 again

} // namespace

/// How many frames after the last one; 0 for one before it.
quint64 FrameTally::stepsTo(quint64 id)
{
    wide |= id > narrowIds;
    if (wide)
        return id > *lastId ? id - *lastId : 0;
    const quint64 steps = (id + narrowIds - *lastId) % narrowIds;
    return steps <= narrowIds / 2 ? steps : 0;
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
        const quint64 steps = stepsTo(id);
        if (steps == 0)
            return std::nullopt;
        const quint64 withoutBuffer = std::min(steps - 1, underruns - knownUnderruns);
        knownUnderruns += withoutBuffer;
        number += static_cast<quint32>(steps);
        step = {number, static_cast<quint32>(steps - 1), static_cast<quint32>(withoutBuffer)};
    }
    lastId = id;
    ++complete;
    return step;
}

} // namespace aravis
