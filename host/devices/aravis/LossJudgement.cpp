// SPDX-License-Identifier: GPL-3.0-or-later
// The order of the causes.
#include "LossJudgement.h"

#include <algorithm>

namespace aravis {

namespace {

constexpr qint64 retentionNs = 100000000; ///< how long the library waits for a frame's next packet

} // namespace

std::optional<LossCause> lossCause(const ArrivalBook::Passage& passage, const DropSamples& drops, bool atOnce)
{
    using Fate = ArrivalBook::Fate;
    if (passage.fate == Fate::NotYet)
        return atOnce ? std::optional<LossCause>(&LostFrames::unknown) : std::nullopt;
    if (passage.fate != Fate::Arrived)
        return passage.fate == Fate::OnTheWay ? &LostFrames::onTheWay : &LostFrames::unknown;

    // A packet is dropped when it arrives, but found to have no buffer when it is read.
    const auto readBy = drops.readBy(passage.endedNs);
    if (!readBy && !atOnce)
        return std::nullopt;
    if (!drops.reachesBackTo(passage.beganNs))
        return &LostFrames::unknown;
    if (drops.wasSocketFull(passage.beganNs, passage.endedNs))
        return &LostFrames::socket;
    if (drops.wasWithoutBuffer(passage.beganNs, readBy.value_or(passage.endedNs)))
        return &LostFrames::noBuffer;
    return passage.longestPauseNs > retentionNs || passage.overtaken ? &LostFrames::late
                                                                     : &LostFrames::notAttributable;
}

} // namespace aravis
