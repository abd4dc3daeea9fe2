// SPDX-License-Identifier: GPL-3.0-or-later
// Packets to frames.
#include "ArrivalBook.h"

#include <algorithm>
#include <cstdlib>

namespace aravis {

namespace {

constexpr std::size_t keptFrames = 4096;
constexpr std::size_t keptWithPackets = 256; ///< the newest ones
constexpr quint32 mostPackets = 1U << 20;    ///< of a frame; more is no sense
constexpr qint64 clockToleranceNs = 100000;
constexpr int doubtfulStatuses = 3; ///< good ones, 10 ms apart: the ring hands over what it holds within one

} // namespace

/// Null if the packet comes so late that its frame's others are not known any more.
ArrivalBook::Frame* ArrivalBook::frameOf(const TapRecord& record)
{
    const auto found =
        std::find_if(frames.rbegin(), frames.rend(), [&](const Frame& frame) { return frame.id == record.frameId; });
    if (found != frames.rend())
        return static_cast<std::size_t>(found - frames.rbegin()) < keptWithPackets ? &*found : nullptr;
    if (frames.size() >= keptWithPackets)
        std::vector<PacketArrival>().swap(frames[frames.size() - keptWithPackets].packets);
    if (frames.size() == keptFrames) {
        frames.pop_front();
        ++forgotten;
    }
    frames.emplace_back();
    frames.back().id = record.frameId;
    firstSeen = firstSeen.value_or(record.frameId);
    return &frames.back();
}

/// Takes what the packet tells of its frame. False if the packet was there before.
bool ArrivalBook::isFirstCopy(Frame& frame, const TapRecord& record)
{
    if (record.kind == TapRecord::Leader) {
        if (frame.leaderNs)
            return false;
        frame.leaderNs = record.stampNs;
    } else if (record.kind == TapRecord::Trailer) {
        if (frame.trailerId)
            return false;
        frame.trailerId = record.packetId;
    } else {
        if (record.packetId == 0 || record.bytes == 0)
            return false;
        if (frame.highestId < record.packetId) {
            frame.missing += record.packetId - frame.highestId;
            frame.packets.resize(record.packetId);
            frame.highestId = record.packetId;
        }
        PacketArrival& packet = frame.packets[record.packetId - 1];
        if (packet.bytes > 0)
            return false;
        packet = {record.bytes, record.stampNs};
        frame.bytes += record.bytes;
        --frame.missing;
    }
    return true;
}

void ArrivalBook::addPacket(const TapRecord& record)
{
    if (record.packetId > mostPackets)
        return;
    wide |= record.extendedIds != 0;
    Frame* const found = frameOf(record);
    if (!found)
        return;
    Frame& frame = *found;
    frame.touchedAt = statuses;
    if (!isFirstCopy(frame, record))
        return;
    if (record.kind == TapRecord::Trailer && (!newestTrailer || frames.back().id == record.frameId))
        newestTrailer = record.frameId;
    const qint64 arrivalNs = record.stampNs + offsetNs.value_or(0);
    if (frame.beganNs)
        frame.longestPauseNs = std::max(frame.longestPauseNs, arrivalNs - frame.endedNs);
    frame.beganNs = std::min(frame.beganNs.value_or(arrivalNs), arrivalNs);
    frame.endedNs = std::max(frame.endedNs, arrivalNs);
}

/// Frames of which something came since the last good status, of which the newest may have begun before it, and those
/// of which something comes until the doubt is over. It lasts at least until another frame has begun.
void ArrivalBook::markAround(Doubt& doubt, bool again)
{
    if (again)
        doubt = {doubt.mark, doubtfulStatuses, forgotten + frames.size()};
    else if (doubt.statuses == 0)
        return;
    else if (forgotten + frames.size() > doubt.framesThen)
        --doubt.statuses;
    const quint64 first = firstUnsure > 0 ? firstUnsure - 1 : 0;
    for (quint64 i = std::max(first, forgotten) - forgotten; i < frames.size(); ++i)
        frames[i].*doubt.mark = true;
}

void ArrivalBook::addStatus(const TapRecord& record)
{
    ++statuses;
    const bool clockSet = offsetNs && std::llabs(record.offsetNs - *offsetNs) > clockToleranceNs;
    if (!offsetNs || clockSet)
        offsetNs = record.offsetNs;
    markAround(clockStep, clockSet);
    markAround(drops, record.frameId > 0);
    if (drops.statuses == 0 && clockStep.statuses == 0)
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

/// Ids come again after a time. The end if the book has none.
ArrivalBook::Frames::const_iterator ArrivalBook::newest(quint64 id) const
{
    const auto found =
        std::find_if(frames.rbegin(), frames.rend(), [id](const Frame& frame) { return frame.id == id; });
    return found == frames.rend() ? frames.end() : std::prev(found.base());
}

/// Whether the frame would have left the book by now if it had been there.
bool ArrivalBook::isForgotten(quint64 id) const
{
    if (forgotten == 0)
        return false;
    const quint64 oldest = frames.front().id;
    return wide ? id < oldest : static_cast<qint16>(id - oldest) < 0;
}

ArrivalBook::Passage ArrivalBook::passage(quint64 id, quint64 next) const
{
    const auto later = newest(next);
    const auto frame = newest(id);
    const bool known = frame != frames.end();
    if (known && frame->touchedAt < statuses && frame->isWhole()) {
        const auto follower = std::next(frame);
        const bool overtaken = follower != frames.end() && follower->beganNs < frame->endedNs;
        return {frame->clockWasSet ? Fate::Unknown : Fate::Arrived, *frame->beganNs, frame->endedNs,
                frame->longestPauseNs, overtaken};
    }
    if (ended || (!known && isForgotten(id)))
        return {Fate::Unknown};
    if (later == frames.end() || later->touchedAt == statuses || (known && frame->touchedAt == statuses))
        return {Fate::NotYet};
    // Of a frame of which nothing came, only its neighbour can tell.
    const bool dropped = later->maybeDropped || (known && frame->maybeDropped);
    return {dropped ? Fate::Unknown : Fate::OnTheWay};
}

ArrivalBook::Known ArrivalBook::find(quint64 id, quint64 bytes, ArrivalCurve& curve) const
{
    const auto found = newest(id);
    // What was dropped, and whether the clock was set, is told after the packets.
    if (found == frames.end() || found->touchedAt == statuses)
        return ended ? Known::Nothing : Known::NotYet;
    if (!found->isWhole() || found->bytes < bytes)
        return ended || found->maybeDropped ? Known::Nothing : Known::NotYet;
    if (found->packets.empty())
        return Known::Nothing;
    if (found->clockWasSet)
        return Known::Nothing;
    curve = ArrivalCurve(found->packets, *found->leaderNs, *offsetNs);
    return curve.points().empty() ? Known::Nothing : Known::Whole;
}

} // namespace aravis
