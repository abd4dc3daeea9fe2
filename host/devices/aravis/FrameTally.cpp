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

std::optional<quint32> FrameTally::addComplete(quint64 id, quint64 underruns)
{
    if (!lastId) {
        knownUnderruns = underruns;
    } else {
        const quint64 steps = stepsTo(id);
        if (steps == 0)
            return std::nullopt;
        const quint64 lost = steps - 1;
        const quint64 withoutBuffer = std::min(lost, underruns - knownUnderruns);
        knownUnderruns += withoutBuffer;
        lostForBuffers += static_cast<quint32>(withoutBuffer);
        lostOnTheWay += static_cast<quint32>(lost - withoutBuffer);
        number += static_cast<quint32>(steps);
    }
    lastId = id;
    ++complete;
    return number;
}

} // namespace aravis
