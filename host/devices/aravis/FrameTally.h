// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers the frames that came through and counts those that did not.
#ifndef KESTROVA_ARAVIS_FRAMETALLY_H
#define KESTROVA_ARAVIS_FRAMETALLY_H

#include <optional>

#include "LostFrames.h"

namespace aravis {

/// Cameras number their frames in 16 bits, leaving out 0, or in 64. Whoever calls it keeps the calls apart.
class FrameTally
{
public:
    struct Step
    {
        quint32 number;        ///< of the frame
        quint32 lost;          ///< frames between it and the last complete one; none before the first
        quint32 withoutBuffer; ///< of those, at most
    };

    FrameTally() = default;
    /// `underruns` below rise by so many with a frame that finds no buffer, or by fewer if it finds one on the way.
    explicit FrameTally(quint64 perFrame) : underrunsPerFrame(perFrame) {}

    /// The number of a complete frame with this id, counted from the first one. None for a frame that comes after a
    /// later one, which nobody gets. `underruns` is how often no buffer was found so far.
    std::optional<Step> addComplete(quint64 id, quint64 underruns);
    /// How many frames the one with the id `to` comes after the one with `from`; 0 for one before it.
    quint64 steps(quint64 from, quint64 to);
    /// The id of the last complete frame.
    std::optional<quint64> newest() const { return lastId; }
    /// The id of a frame, `back` frames before the one with `id`.
    quint64 idBefore(quint64 id, quint64 back) const;

    /// Where frames of a gap were lost.
    void addLost(const LostFrames& frames) { allLost += frames; }

    const LostFrames& lost() const { return allLost; }
    quint32 delivered() const { return complete; }

private:
    std::optional<quint64> lastId;
    quint32 number = 0;
    quint32 complete = 0;
    quint64 underrunsPerFrame = 1;
    LostFrames allLost;
    quint64 knownUnderruns = 0; ///< those that a gap was put down to, and those before the first frame
    bool wide = false;          ///< ids of 64 bits
};

} // namespace aravis

#endif
