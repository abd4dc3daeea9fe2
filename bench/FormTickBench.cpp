// SPDX-License-Identifier: GPL-3.0-or-later
// A tick of the form while cameras are measured: without the drawing as the time, with it as a counter, and the
// longest time that the form held a record's mutex.
#include <ctime>

#include <algorithm>
#include <functional>

#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include <QtCore/QFile>

#include <vnCore/vnTypes.h>

#include "FormBench.h"
#include "sim/CameraModel.h"
#include "sim/ScenarioReader.h"

/// In a static library nobody else does.
static void registerScenarios()
{
    Q_INIT_RESOURCE(scenarios);
}

namespace {

constexpr quint64 keptBlocks = 10'000'000; ///< of each camera
constexpr qint64 tickUs = 1'000'000;
constexpr qint32 wordsPerBlock = 512;

/// Of the processor, for this thread: others may have it beside it.
double threadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

/// The default cameras in turn, each with an id and a seed of its own.
std::vector<sim::CameraScenario> someCameras(std::size_t count)
{
    QFile file(QStringLiteral(":/kestrova/scenarios/default.json"));
    QString error;
    registerScenarios();
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the built-in scenario cannot be read");
    const std::vector<sim::CameraScenario> kinds = sim::readScenario(file.readAll(), error);
    std::vector<sim::CameraScenario> cameras;
    for (std::size_t i = 0; i < count; ++i) {
        cameras.push_back(kinds.at(i % kinds.size()));
        cameras.back().id = QString::number(i);
        cameras.back().seed += i;
    }
    return cameras;
}

/// What a simulated camera would deliver to a measurement, without the time that this takes.
class MeasuredFrames
{
public:
    explicit MeasuredFrames(const sim::CameraScenario& camera)
        : model(camera, std::make_shared<sim::SharedLink>(camera.link), 1)
    {
        model.set(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT), VN_FRM_TRANSPORT_DATA, 0);
        model.set(QStringLiteral(VN_PRM_OUTPUT_DATA_BIT_DEPTH), 16, 0);
        model.set(QStringLiteral(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR), VN_TESTPAT_GEN_FPGA, 0);
        model.set(QStringLiteral(VN_PRM_TEST_PATTERN), VN_TESTPAT_DEVICE_SPEC_COUNTER, 0);
        model.start(0);
    }

    std::unique_ptr<FrameRecord> next()
    {
        while (!model.hasFrame())
            model.advanceTo(*model.nextEventNs());
        const sim::Frame frame = model.takeFrame();
        auto record = std::make_unique<FrameRecord>();
        record->frameNumber = frame.number;
        record->timestampUs = static_cast<qint64>(frame.stampUs);
        record->blockCount = frame.times->words / wordsPerBlock;
        record->blockTicks.reset(new quint64[record->blockCount]);
        for (quint64 i = 0; i < record->blockCount; ++i)
            record->blockTicks[i] = frame.times->written(i * wordsPerBlock);
        record->durationTicks = record->blockTicks[record->blockCount - 1] - record->blockTicks[0];
        return record;
    }

private:
    sim::CameraModel model;
};

/// A camera of the form that measures without a worker: frames come when they are told to.
class MeasuringCamera
{
public:
    /// Its record is full at that time.
    MeasuringCamera(const sim::CameraScenario& camera, CxCameraLineData& record, qint64 nowUs)
        : source(camera), data(record), settings(record.evaluationSettings()), ahead(source.next())
    {
        std::vector<std::unique_ptr<FrameRecord>> frames;
        for (quint64 blocks = 0; blocks < keptBlocks; blocks += frames.back()->blockCount)
            frames.push_back(std::exchange(ahead, source.next()));
        offsetUs = nowUs - frames.back()->timestampUs;
        data.avgFrameTime = static_cast<double>(ahead->timestampUs) / static_cast<double>(frames.size());
        data.measuring = true;
        for (auto& frame : frames)
            append(std::move(frame));
    }
    ~MeasuringCamera() { data.measuring = false; }

    void arriveUntil(qint64 nowUs)
    {
        const QMutexLocker lock(&data.mutex);
        for (; ahead->timestampUs + offsetUs <= nowUs; data.frameList.pop_front())
            append(std::exchange(ahead, source.next()));
    }

private:
    void append(std::unique_ptr<FrameRecord> frame)
    {
        frame->timestampUs += offsetUs;
        FrameAggregates aggregates = makeAggregates(*frame, settings);
        data.frameList.push_back(std::move(frame), std::move(aggregates), settings);
    }

    MeasuredFrames source;
    CxCameraLineData& data;
    EvaluationSettings settings;
    std::unique_ptr<FrameRecord> ahead;
    qint64 offsetUs = 0;
};

/// For how long the form holds a record's mutex: calculateStats() does from its begin to its end.
double longestLock(FormBench& bench, const std::function<void()>& passTick)
{
    double longest = 0.0;
    QCustomPlot* plot = bench.plot();
    const QCPRange range(-20.0, 0.0);
    for (int ticks = 0; ticks < 10; ++ticks) {
        passTick();
        for (int i = 0; i < bench.table()->rowCount(); ++i) {
            plot->graph(0)->data()->clear();
            plot->graph(1)->data()->clear();
            const double start = threadSeconds();
            bench.record(i).calculateStats(plot->graph(0), plot->graph(1), &range, bench.nowUs - 20 * tickUs,
                                           bench.nowUs, range.size() * 1000.0 / plot->width());
            longest = std::max(longest, threadSeconds() - start);
        }
    }
    return longest;
}

void tick(benchmark::State& state, std::size_t cameras)
{
    const std::vector<sim::CameraScenario> scenarios = someCameras(cameras);
    FormBench bench;
    for (const sim::CameraScenario& scenario : scenarios)
        bench.addCamera([&scenario](sim::CameraScenario& camera) { camera = scenario; });
    bench.form->resize(1920, 1080);
    std::vector<std::unique_ptr<MeasuringCamera>> measuring;
    for (const sim::CameraScenario& scenario : scenarios) {
        CxCameraLineData& record = bench.record(static_cast<int>(measuring.size()));
        measuring.push_back(std::make_unique<MeasuringCamera>(scenario, record, bench.nowUs));
    }
    bench.form->activateWindow();
    bench.plot()->setFocus();
    bench.tick();
    QCoreApplication::processEvents();

    const auto timedTick = [&bench] {
        const double start = threadSeconds();
        bench.tick();
        return threadSeconds() - start;
    };
    // The form draws nothing while its window is minimized.
    const double withReplot = std::min(timedTick(), timedTick());
    double longestScroll = 0.0; // by an area
    for (int i = 0; i < 10; ++i) {
        const double start = threadSeconds();
        QTest::keyClick(bench.plot(), Qt::Key_PageDown, Qt::ControlModifier);
        longestScroll = std::max(longestScroll, threadSeconds() - start);
    }
    bench.form->showMinimized();
    const auto passTick = [&] {
        bench.nowUs += tickUs;
        for (const auto& camera : measuring)
            camera->arriveUntil(bench.nowUs);
    };
    for (auto _ : state) {
        state.PauseTiming();
        passTick();
        state.ResumeTiming();
        bench.tick();
    }
    state.counters["with_replot_ms"] = withReplot * 1e3;
    state.counters["scroll_ms"] = longestScroll * 1e3;
    state.counters["longest_lock_us"] = longestLock(bench, passTick) * 1e6;
    state.counters["curves"] = bench.plot()->graphCount();
}

} // namespace

void registerFormBenchmarks()
{
    for (const std::size_t cameras : {4, 8, 64}) {
        benchmark::RegisterBenchmark(("form_tick/" + std::to_string(cameras)).c_str(), tick, cameras)
            ->Unit(benchmark::kMillisecond);
    }
}
