// SPDX-License-Identifier: GPL-3.0-or-later
// Steps from stamps, and words from steps.
#include "ArrivalCurve.h"

#include <algorithm>
#include <cstring>

namespace aravis {

namespace {

constexpr quint64 wordBytes = 8;
constexpr qint64 tickNs = 4;

/// Fractions of a tick are counted in whole numbers, which are written two at a time.
constexpr unsigned fractionBits = 24; ///< a step may take half an hour
constexpr double fractions = 1U << fractionBits;

/// `count` words from `first` ticks on, each `step` later, both in fractions of a tick.
void writeStep(unsigned char* words, quint64 count, quint64 base, quint64 first, quint64 step)
{
    quint64 ticks = first;
    for (quint64 i = 0; i < count; ++i) {
        const quint64 word = base + (ticks >> fractionBits);
        std::memcpy(words + i * wordBytes, &word, wordBytes);
        ticks += step;
    }
}

} // namespace

ArrivalCurve::ArrivalCurve(const std::vector<PacketArrival>& packets, qint64 leaderNs, qint64 offsetNs)
{
    curve.reserve(packets.size() + 1);
    curve.push_back({0, leaderNs + offsetNs});
    quint64 bytes = 0;
    for (const PacketArrival& packet : packets) {
        bytes += packet.bytes;
        const Point point{bytes, packet.stampNs + offsetNs};
        if (curve.size() > 1 && point.timeNs <= curve.back().timeNs)
            curve.back().bytes = bytes;
        else
            curve.push_back(point);
    }
    if (curve.size() > 2) {
        const Point& end = curve[1];
        const double nsPerByte =
            static_cast<double>(curve[2].timeNs - end.timeNs) / static_cast<double>(curve[2].bytes - end.bytes);
        const qint64 beginNs = end.timeNs - std::max<qint64>(1, qint64(nsPerByte * static_cast<double>(end.bytes)));
        curve.front().timeNs = end.timeNs > curve.front().timeNs ? std::max(beginNs, curve.front().timeNs) : beginNs;
    }
    if (curve.size() < 2 || curve[1].timeNs <= curve[0].timeNs || curve.back().bytes == 0)
        curve.clear();
}

void ArrivalCurve::writeTicks(void* data, std::size_t bytes) const
{
    if (curve.empty())
        return;
    const quint64 words = bytes / wordBytes;
    quint64 word = 0;
    for (std::size_t i = 1; i < curve.size() && word < words; ++i) {
        const Point& begin = curve[i - 1];
        const Point& end = curve[i];
        const quint64 last = std::min(words, end.bytes / wordBytes);
        if (last <= word)
            continue;
        const double ticksPerByte =
            static_cast<double>(end.timeNs - begin.timeNs) / tickNs / static_cast<double>(end.bytes - begin.bytes);
        const auto base = static_cast<quint64>(begin.timeNs / tickNs);
        const double firstTicks = static_cast<double>(begin.timeNs % tickNs) / tickNs +
                                  static_cast<double>((word + 1) * wordBytes - begin.bytes) * ticksPerByte;
        writeStep(static_cast<unsigned char*>(data) + word * wordBytes, last - word, base,
                  static_cast<quint64>(firstTicks * fractions),
                  static_cast<quint64>(ticksPerByte * wordBytes * fractions));
        word = last;
    }
    const quint64 lastTick = static_cast<quint64>(curve.back().timeNs / tickNs);
    for (; word < words; ++word)
        std::memcpy(static_cast<unsigned char*>(data) + word * wordBytes, &lastTick, wordBytes);
}

} // namespace aravis
