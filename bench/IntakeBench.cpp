// SPDX-License-Identifier: GPL-3.0-or-later
// The worker's share: reading the blocks of large frames that no cache holds, and the aggregates of a frame
// with the count of its intervals.
#include <vector>

#include <benchmark/benchmark.h>

#include "BenchData.h"
#include "BlockReader.h"
#include "IntervalHistogram.h"
#include "NaiveEvaluator.h"

namespace {

constexpr quint64 frameBytes = 64 << 20;
constexpr quint64 blockWords = benchPeriod / wordBytes;
constexpr quint64 blocks = frameBytes / benchPeriod;
constexpr quint64 frameCount = 8; ///< in turn, so that a frame has left all caches when it comes again

const quint64* nextFrame()
{
    static const std::vector<quint64> memory(frameCount * frameBytes / wordBytes, 1);
    static quint64 turn = 0;
    return memory.data() + turn++ % frameCount * (frameBytes / wordBytes);
}

void setBlocks(benchmark::State& state)
{
    state.SetItemsProcessed(static_cast<qint64>(blocks) * static_cast<qint64>(state.iterations()));
}

void touch(benchmark::State& state)
{
    constexpr quint64 ahead = 24;
    nextFrame(); // makes the memory
    for (auto _ : state) {
        const quint64* frame = nextFrame();
        quint64 sum = 0;
        for (quint64 i = 0; i < blocks; ++i) {
            __builtin_prefetch(frame + (i + ahead) * blockWords);
            sum += frame[i * blockWords];
        }
        benchmark::DoNotOptimize(sum);
    }
    setBlocks(state);
}

void engine(benchmark::State& state)
{
    std::vector<quint64> ticks(blocks);
    nextFrame();
    for (auto _ : state) {
        copyBlockTicks(nextFrame(), blockWords, blocks, ticks.data());
        benchmark::DoNotOptimize(ticks.data());
        benchmark::ClobberMemory();
    }
    setBlocks(state);
}

/// One frame of as many blocks, to evaluate it and to make its aggregates.
struct LargeFrame
{
    LargeFrame()
    {
        fillRecord(data, source, 0);
        data.frameList.push_back(source.next(blocks));
    }
    FrameSource source;
    CxCameraLineData data;
};

void naive(benchmark::State& state)
{
    LargeFrame frame;
    for (auto _ : state)
        benchmark::DoNotOptimize(naiveFigures(frame.data, 0.0, 0, frame.source.timeUs(), 1e6));
    setBlocks(state);
}

void aggregates(benchmark::State& state)
{
    LargeFrame frame;
    const EvaluationSettings settings = frame.data.evaluationSettings();
    FrameIntervalCounter intervals;
    IntervalHistogram run;
    for (auto _ : state) {
        benchmark::DoNotOptimize(makeAggregates(*frame.data.frameList[0], settings, &intervals));
        intervals.addTo(run);
    }
    setBlocks(state);
}

} // namespace

void registerIntakeBenchmarks()
{
    const auto add = [](const char* name, auto function) {
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMicrosecond);
    };
    add("intake/touch", touch);
    add("intake/engine", engine);
    add("intake/naive", naive);
    add("intake/aggregates", aggregates);
}
