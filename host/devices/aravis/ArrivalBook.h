// SPDX-License-Identifier: GPL-3.0-or-later
// What a tap has told of the newest frames.
#ifndef KESTROVA_ARAVIS_ARRIVALBOOK_H
#define KESTROVA_ARAVIS_ARRIVALBOOK_H

#include <deque>
#include <optional>
#include <vector>

#include "ArrivalCurve.h"
#include "TapRecord.h"

namespace aravis {

/// Takes a tap's records in their order. Whoever calls it keeps the calls apart.
class ArrivalBook
{
public:
    enum class Known
    {
        NotYet,
        Whole,   ///< each packet's arrival
        Nothing, ///< nobody will ever know: the tap missed a packet, or the wall clock was set meanwhile
    };

    /// What became of a frame that nobody received whole.
    enum class Fate
    {
        NotYet,
        OnTheWay, ///< a packet of it never arrived at this host
        Arrived,  ///< all packets did
        Unknown,  ///< the tap may have missed packets of it
    };

    /// How a frame that nobody received whole came to this host. Times are of the steady clock and have a meaning only
    /// if it arrived.
    struct Passage
    {
        Fate fate;
        qint64 beganNs = 0; ///< first packet
        qint64 endedNs = 0; ///< last one
        qint64 longestPauseNs = 0;
        bool overtaken = false; ///< the next frame began before it had ended
    };

    void add(const TapRecord& record);
    /// There is no tap any more: what it has not told it never will.
    void end() { ended = true; }

    /// Of a frame that the host has received whole, of which `bytes` came through the network.
    Known find(quint64 id, quint64 bytes, ArrivalCurve& curve) const;

    /// The first frame of which something came, and the newest one that has come to its end. None before.
    std::optional<quint64> firstId() const { return firstSeen; }
    std::optional<quint64> newestEnded() const { return newestTrailer; }

    /// Of the frame with this id, when `next` is the id of the next one that was received whole.
    Passage passage(quint64 id, quint64 next) const;

private:
    /// A frame as its packets arrived.
    struct Frame
    {
        quint64 id = 0;
        std::optional<qint64> leaderNs;     ///< of the first copy, like all stamps
        std::vector<PacketArrival> packets; ///< given up before the rest is
        quint32 highestId = 0;              ///< of a payload packet
        quint64 bytes = 0;                  ///< of all packets that came
        quint32 missing = 0;                ///< packets before the highest id that have not come
        std::optional<quint32> trailerId;
        std::optional<qint64> beganNs; ///< of the steady clock, like those that follow
        qint64 endedNs = 0;
        qint64 longestPauseNs = 0;
        quint64 touchedAt = 0; ///< how many statuses there had been at its newest packet
        bool clockWasSet = false;
        bool maybeDropped = false; ///< the tap dropped packets around it

        /// Whether leader, trailer and every packet between came.
        bool isWhole() const { return leaderNs && trailerId && missing == 0 && highestId + 1 == *trailerId; }
    };

    using Frames = std::deque<Frame>;

    /// Something that a status told may be true of frames before and after it: packets that had arrived by then may
    /// still lie in the tap's ring.
    struct Doubt
    {
        bool Frame::*mark;
        int statuses = 0;       ///< that it still takes until it is over
        quint64 framesThen = 0; ///< how many frames there had been when it came up
    };

    Frames::const_iterator newest(quint64 id) const;
    bool isForgotten(quint64 id) const;
    Frame* frameOf(const TapRecord& record);
    void addPacket(const TapRecord& record);
    static bool isFirstCopy(Frame& frame, const TapRecord& record);
    void addStatus(const TapRecord& record);
    void markAround(Doubt& doubt, bool again);

    std::optional<quint64> firstSeen;
    std::optional<quint64> newestTrailer;
    Frames frames;         ///< in the order of their first packets
    quint64 forgotten = 0; ///< frames that left `frames`
    bool wide = false;     ///< ids of 64 bits
    Doubt drops{&Frame::maybeDropped};
    Doubt clockStep{&Frame::clockWasSet};
    quint64 firstUnsure = 0; ///< how many frames there were at the last status without a doubt
    std::optional<qint64> offsetNs;
    quint64 statuses = 0;
    bool ended = false;
};

} // namespace aravis

#endif
