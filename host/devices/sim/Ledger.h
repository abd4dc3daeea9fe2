// SPDX-License-Identifier: GPL-3.0-or-later
// What really happened to every frame of a simulated camera: the truth that figures are tested against.
#ifndef KESTROVA_SIM_LEDGER_H
#define KESTROVA_SIM_LEDGER_H

#include <array>
#include <deque>
#include <memory>
#include <vector>

#include <vnCore/vnTypes.h>

namespace sim {

/// When the 64-bit words of a frame left. Packets start on a tick of the camera's 4 ns clock; within a packet
/// words follow each other at link rate. Compact: one number per packet.
struct WordTimes
{
    std::vector<quint64> packetTicks; ///< tick at which each packet began
    quint64 wordsPerPacket = 0;
    quint64 step = 0;     ///< ticks per word, 32 fraction bits
    quint64 words = 0;    ///< in the frame
    quint64 start = 0;    ///< what the counter shows at tick 0
    quint64 mask = ~0ULL; ///< bits that the counter has
    int direction = 1;    ///< of the counter: 1, 0 or -1

    /// Tick at which a word left.
    quint64 tick(quint64 word) const
    {
        return packetTicks[word / wordsPerPacket] + ((word % wordsPerPacket * step) >> 32);
    }
    /// What the counter pattern writes into that word; differs from the tick only under a fault.
    quint64 written(quint64 word) const { return show(tick(word)); }
    quint64 show(quint64 tick) const { return (start + static_cast<quint64>(direction) * tick) & mask; }
};

/// What has become of a frame: UnderWay until one of the others, which then stays.
enum class Fate
{
    UnderWay,      ///< in the frame buffer, on the link or waiting for the host
    Received,      ///< handed out
    BufferLost,    ///< did not fit into the frame buffer
    TransportLost, ///< lost on the link
    ApiLost,       ///< fetched too late
    Discarded,     ///< not fetched when the acquisition ended
};

/// One frame. Its fate is settled at the latest when the acquisition ends.
struct FrameEntry
{
    quint32 number = 0; ///< as counted by the camera, before a jump
    quint64 bytes = 0;
    qint64 endNs = 0; ///< model time at which the last word left
    bool counterPattern = false;
    std::shared_ptr<const WordTimes> times; ///< null for a frame that never got onto the link
    Fate fate = Fate::UnderWay;
};

/// Totals since the camera was created or came back, and the frames since the last start. For every
/// acquisition that has ended, bytes produced = bytes received + bytes lost, by whichever cause.
struct Ledger
{
    struct Total
    {
        quint64 frames = 0;
        quint64 bytes = 0;
    };

    Total produced;                   ///< frames that the sensor or the pattern generator made
    std::array<Total, 6> fates;       ///< by Fate
    std::array<qint32, 6> counters{}; ///< by VN_COUNTER_SELECTOR, what the camera's counters show

    std::deque<FrameEntry> frames; ///< oldest first; kept only as many as the camera was told to

    const Total& total(Fate fate) const { return fates[static_cast<size_t>(fate)]; }
};

} // namespace sim

#endif
