// SPDX-License-Identifier: GPL-3.0-or-later
// The throughput mode's refresh: figures and both curves.
#include <cmath>
#include <memory>

#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include "BenchData.h"
#include "NaiveEvaluator.h"

namespace {

constexpr quint64 frames10M = 4000;
constexpr quint64 frames200M = 80000;
constexpr quint64 memoryFor200M = 8'000'000'000;
constexpr double allSeconds = 1e6;

/// A record filled with frames, and the ranges of it that are looked at.
struct Store
{
    explicit Store(quint64 frames) { fillRecord(data, source, frames); }
    View view(double seconds) const
    {
        return {source.timeUs(), std::min(seconds, static_cast<double>(source.timeUs()) * 1e-6)};
    }

    FrameSource source;
    CxCameraLineData data;
};

/// Kept from one benchmark to the next: making 200 million blocks takes seconds. One at a time, for the memory.
Store& store(quint64 frames)
{
    static std::unique_ptr<Store> kept;
    static quint64 keptFrames = 0;
    if (keptFrames != frames) {
        kept.reset();
        kept = std::make_unique<Store>(frames);
        keptFrames = frames;
    }
    return *kept;
}

/// Both graphs of one area on a plot of their own, and its marks.
struct Curves
{
    Curves() : minimum(plot.addGraph()), level(plot.addGraph()) {}

    bool refresh(CxCameraLineData& data, const View& view)
    {
        minimum->data()->clear();
        level->data()->clear();
        const QCPRange keys(view.keyUpper - 1.0, view.keyUpper);
        marks = data.eventMarks(view.fromUs, view.toUs, view.markJoinUs());
        return data.calculateStats(minimum, level, &keys, view.fromUs, view.toUs, view.spacingMs);
    }

    QCustomPlot plot;
    QCPGraph* minimum;
    QCPGraph* level;
    std::vector<EventMark> marks;
};

/// A comparison of costs means something only between equal results.
bool isEqual(CxCameraLineData& data, Curves& curves, const View& view)
{
    const NaiveFigures naive = naiveFigures(data, view.keyUpper, view.fromUs, view.toUs, view.spacingMs);
    if (!curves.refresh(data, view) || curves.minimum->dataCount() != static_cast<int>(naive.minimum.size()))
        return false;
    if (curves.marks != naiveMarks(data, view.eventRange()))
        return false;
    for (int i = 0; i < curves.minimum->dataCount(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (curves.minimum->dataMainValue(i) != naive.minimum[at].value ||
            curves.level->dataMainValue(i) != naive.level[at].value)
            return false;
    }
    return data.minThroughput == naive.minThroughput && data.maxBufferLevel == naive.maxBufferLevel &&
           data.bufferOverflowCount == naive.bufferOverflowCount &&
           std::abs(data.avgThroughput / naive.avgThroughput - 1.0) < 1e-12;
}

void naive(benchmark::State& state)
{
    Store& kept = store(frames10M);
    const View view = kept.view(allSeconds);
    for (auto _ : state) {
        benchmark::DoNotOptimize(naiveFigures(kept.data, 0.0, view.fromUs, view.toUs, view.spacingMs));
        benchmark::DoNotOptimize(naiveMarks(kept.data, view.eventRange()));
    }
    state.counters["per_block"] =
        benchmark::Counter(static_cast<double>(frames10M * benchFrameBlocks),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void engine(benchmark::State& state, quint64 frames, double seconds)
{
    if (frames == frames200M && availableMemory() < memoryFor200M) {
        state.SkipWithError("needs 8 GB of free memory");
        return;
    }
    Store& kept = store(frames);
    Curves curves;
    const View view = kept.view(seconds);
    if (frames == frames10M && !isEqual(kept.data, curves, view))
        state.SkipWithError("not equal to the naive evaluation");
    for (auto _ : state)
        benchmark::DoNotOptimize(curves.refresh(kept.data, view));
    state.counters["points"] = curves.minimum->dataCount();
    state.counters["marks"] = static_cast<double>(curves.marks.size());
}

void stale(benchmark::State& state)
{
    Store& kept = store(frames10M);
    Curves curves;
    const View view = kept.view(allSeconds);
    for (auto _ : state) {
        kept.data.requiredThroughput = kept.data.requiredThroughput == 1000 ? 1001 : 1000;
        benchmark::DoNotOptimize(curves.refresh(kept.data, view));
    }
    kept.data.requiredThroughput = 1000;
    curves.refresh(kept.data, view);
}

constexpr quint64 framesPerTick = 95; ///< 244,000 blocks, a second of 1 GB/s

/// New blocks each time, as in the other one: the processor must not have learned them.
void tickNaive(benchmark::State& state)
{
    Store second(framesPerTick);
    for (auto _ : state) {
        state.PauseTiming();
        for (quint64 i = 0; i < framesPerTick; ++i) {
            second.data.frameList.push_back(second.source.next());
            second.data.frameList.pop_front();
        }
        const View view = second.view(allSeconds);
        state.ResumeTiming();
        benchmark::DoNotOptimize(naiveFigures(second.data, 0.0, view.fromUs, view.toUs, view.spacingMs));
    }
}

/// What the worker does with the frames of a second, without their intake, and then the refresh.
void tickEngine(benchmark::State& state)
{
    Store kept(frames10M);
    Curves curves;
    curves.refresh(kept.data, kept.view(20.0));
    const EvaluationSettings settings = kept.data.evaluationSettings();
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::unique_ptr<FrameRecord>> arriving;
        std::vector<FrameList::Frame> leaving;
        for (quint64 i = 0; i < framesPerTick; ++i)
            arriving.push_back(kept.source.next());
        const View view = kept.view(20.0);
        state.ResumeTiming();
        for (auto& frame : arriving) {
            FrameAggregates aggregates = makeAggregates(*frame, settings);
            kept.data.frameList.push_back(std::move(frame), std::move(aggregates), settings);
            leaving.push_back(kept.data.frameList.takeFront());
        }
        benchmark::DoNotOptimize(curves.refresh(kept.data, view));
        state.PauseTiming();
        leaving.clear();
        state.ResumeTiming();
    }
}

} // namespace

void registerRefreshBenchmarks()
{
    using benchmark::RegisterBenchmark;
    const auto add = [](const char* name, auto function, auto... arguments) {
        RegisterBenchmark(name, function, arguments...)->Unit(benchmark::kMicrosecond);
    };
    add("refresh_all/naive/10M", naive);
    add("refresh_all/engine/10M", engine, frames10M, allSeconds);
    add("refresh_all/stale/10M", stale);
    add("refresh_20s/engine/10M", engine, frames10M, 20.0);
    add("refresh_all/engine/200M", engine, frames200M, allSeconds);
    add("refresh_20s/engine/200M", engine, frames200M, 20.0);
    add("refresh_tick/naive", tickNaive);
    add("refresh_tick/engine", tickEngine);
}
