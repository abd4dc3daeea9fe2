// SPDX-License-Identifier: GPL-3.0-or-later
// Packets to frames.
#include "ArrivalBook.h"

#include <algorithm>
#include <cstdlib>

namespace aravis {

namespace {

constexpr std::size_t keptFrames = 256;
constexpr quint32 mostPackets = 1U << 20; ///< of a frame; more is no sense
constexpr qint64 clockToleranceNs = 100000;

} // namespace

ArrivalBook::Frame& ArrivalBook::frameOf(const TapRecord& record)
{
    const auto found =
        std::find_if(frames.rbegin(), frames.rend(), [&](const Frame& frame) { return frame.id == record.frameId; });
    if (found != frames.rend())
        return *found;
    if (frames.size() == keptFrames) {
        frames.pop_front();
        ++forgotten;
    }
    frames.emplace_back();
    frames.back().id = record.frameId;
    return frames.back();
}

void ArrivalBook::addPacket(const TapRecord& record)
{
    if (record.packetId > mostPackets)
        return;
    Frame& frame = frameOf(record);
    frame.touchedAt = statuses;
    if (record.kind == TapRecord::Leader) {
        if (!frame.leaderNs)
            frame.leaderNs = record.stampNs;
    } else if (record.kind == TapRecord::Trailer) {
        frame.trailerId = record.packetId;
    } else if (record.packetId > 0 && record.bytes > 0) {
        const std::size_t place = record.packetId - 1;
        if (frame.packets.size() <= place) {
            frame.missing += static_cast<quint32>(place + 1 - frame.packets.size());
            frame.packets.resize(place + 1);
        }
        PacketArrival& packet = frame.packets[place];
        if (packet.bytes > 0)
            return;
        packet = {record.bytes, record.stampNs};
        frame.bytes += record.bytes;
        --frame.missing;
    }
}

/// Frames of which something came since the last good status; the newest one of those may have begun before it.
void ArrivalBook::markAround(bool Frame::*mark)
{
    const quint64 first = firstUnsure > 0 ? firstUnsure - 1 : 0;
    for (quint64 i = std::max(first, forgotten) - forgotten; i < frames.size(); ++i)
        frames[i].*mark = true;
}

void ArrivalBook::addStatus(const TapRecord& record)
{
    ++statuses;
    const bool clockSet = offsetNs && std::llabs(record.offsetNs - *offsetNs) > clockToleranceNs;
    if (clockSet)
        markAround(&Frame::clockWasSet);
    if (!offsetNs || clockSet)
        offsetNs = record.offsetNs;
    if (record.frameId > 0)
        markAround(&Frame::maybeDropped);
    else
        firstUnsure = forgotten + frames.size();
}

void ArrivalBook::add(const TapRecord& record)
{
    switch (record.kind) {
    case TapRecord::Leader:
    case TapRecord::Payload:
    case TapRecord::Trailer:
        addPacket(record);
        break;
    case TapRecord::Ready:
    case TapRecord::Status:
        addStatus(record);
        break;
    case TapRecord::Fault:
        end();
        break;
    }
}

/// Ids come again after a time. Null if the book has none.
const ArrivalBook::Frame* ArrivalBook::newest(quint64 id) const
{
    const auto found =
        std::find_if(frames.rbegin(), frames.rend(), [id](const Frame& frame) { return frame.id == id; });
    return found == frames.rend() ? nullptr : &*found;
}

ArrivalBook::Fate ArrivalBook::fate(quint64 id, quint64 next) const
{
    const Frame* const later = newest(next);
    const Frame* const frame = newest(id);
    if (frame && frame->touchedAt < statuses && frame->isWhole())
        return Fate::Arrived;
    if (ended)
        return Fate::Unknown;
    if (!later || later->touchedAt == statuses || (frame && frame->touchedAt == statuses))
        return Fate::NotYet;
    // Of a frame of which nothing came, only its neighbour can tell.
    const bool dropped = later->maybeDropped || (frame && frame->maybeDropped);
    return dropped ? Fate::Unknown : Fate::OnTheWay;
}

ArrivalBook::Known ArrivalBook::find(quint64 id, quint64 bytes, ArrivalCurve& curve) const
{
    const Frame* const found = newest(id);
    // What was dropped, and whether the clock was set, is told after the packets.
    if (!found || found->touchedAt == statuses)
        return ended ? Known::Nothing : Known::NotYet;
    if (!found->isWhole() || found->bytes < bytes)
        return ended || found->maybeDropped ? Known::Nothing : Known::NotYet;
    if (found->clockWasSet)
        return Known::Nothing;
    curve = ArrivalCurve(found->packets, *found->leaderNs, *offsetNs);
    return curve.points().empty() ? Known::Nothing : Known::Whole;
}

} // namespace aravis
