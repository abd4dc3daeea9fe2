// SPDX-License-Identifier: GPL-3.0-or-later
// A frame's times of arrival, written into each of its words, beside writing the frame once. Frames take turns, so
// that none is in a cache.
#include <algorithm>
#include <vector>

#include <benchmark/benchmark.h>

#include "ArrivalCurve.h"

namespace {

constexpr size_t frameWords = size_t{2048} * 2048 / 8;
constexpr size_t frameCount = 16;

quint64* nextFrame()
{
    static std::vector<quint64> memory(frameCount * frameWords, 1);
    static size_t turn = 0;
    return memory.data() + turn++ % frameCount * frameWords;
}

/// A frame in packets of `packetBytes` that arrive at 400 MB/s.
aravis::ArrivalCurve curveOf(quint32 packetBytes)
{
    constexpr qint64 beganNs = 3600000000000;
    std::vector<aravis::PacketArrival> packets;
    for (quint64 bytes = 0; bytes < frameWords * 8; bytes += packetBytes) {
        const auto size = static_cast<quint32>(std::min<quint64>(packetBytes, frameWords * 8 - bytes));
        packets.push_back({size, beganNs + static_cast<qint64>((bytes + size) * 5 / 2)});
    }
    return {packets, beganNs, 0};
}

void write(benchmark::State& state)
{
    nextFrame(); // makes the memory
    quint64 value = 0;
    for (auto _ : state) {
        quint64* const frame = nextFrame();
        std::fill_n(frame, frameWords, ++value);
        benchmark::ClobberMemory();
    }
}

void stamp(benchmark::State& state, quint32 packetBytes)
{
    const aravis::ArrivalCurve curve = curveOf(packetBytes);
    nextFrame();
    for (auto _ : state) {
        curve.writeTicks(nextFrame(), frameWords * 8);
        benchmark::ClobberMemory();
    }
}

} // namespace

void registerStampBenchmarks()
{
    const auto add = [](const char* name, auto... arguments) {
        benchmark::RegisterBenchmark(name, arguments...)->Unit(benchmark::kMicrosecond);
    };
    add("stamp/write", write);
    add("stamp/1400", stamp, 1364U);
    add("stamp/9000", stamp, 8964U);
}
