// SPDX-License-Identifier: GPL-3.0-or-later
// The standard mode's refresh: five curves.
#include <array>

#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include "BenchData.h"
#include "NaiveEvaluator.h"

namespace {

constexpr int samples3M = 3'000'000;

CxCameraLineData& store()
{
    static CxCameraLineData data;
    if (data.counterSampleList.empty())
        fillSamples(data, samples3M);
    return data;
}

View wholeView()
{
    const qint64 endUs = store().counterSampleList.back()->timestampUs;
    return {endUs, static_cast<double>(endUs) * 1e-6};
}

void naive(benchmark::State& state)
{
    const View view = wholeView();
    for (auto _ : state) {
        benchmark::DoNotOptimize(naiveCounters(store(), 0.0, view.fromUs, view.toUs, view.spacingMs));
        benchmark::DoNotOptimize(naiveMarks(store(), view.eventRange()));
    }
}

void engine(benchmark::State& state)
{
    QCustomPlot plot;
    std::array<QCPGraph*, 5> graphs;
    for (QCPGraph*& graph : graphs)
        graph = plot.addGraph();
    const View view = wholeView();
    const QCPRange keys(-1.0, 0.0);
    std::vector<EventMark> marks;
    for (auto _ : state) {
        marks = store().eventMarks(view.fromUs, view.toUs, view.markJoinUs());
        for (QCPGraph* graph : graphs)
            graph->data()->clear();
        store().fillCounterGraphs(graphs[0], graphs[1], graphs[2], graphs[3], graphs[4], keys, view.fromUs, view.toUs,
                                  view.spacingMs);
    }
    const NaiveCounters counters = naiveCounters(store(), 0.0, view.fromUs, view.toUs, view.spacingMs);
    if (graphs[0]->dataCount() != static_cast<int>(counters.curves[0].size()) ||
        marks != naiveMarks(store(), view.eventRange()))
        state.SkipWithError("not equal to the naive evaluation");
}

} // namespace

void registerCounterBenchmarks()
{
    benchmark::RegisterBenchmark("counters_all/naive/3M", naive)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("counters_all/engine/3M", engine)->Unit(benchmark::kMicrosecond);
}
