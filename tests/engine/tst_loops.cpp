// SPDX-License-Identifier: GPL-3.0-or-later
// The measurement loops on hand-driven cameras: figures against the camera's own ledger, many cameras, many starts.
#include <cmath>

#include <malloc.h>

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include "FrameCounters.h"
#include "LogCapture.h"
#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Table.h"
#include "TestScale.h"
#include "ThreadCount.h"

namespace {

constexpr qint64 always = std::numeric_limits<qint64>::max() / 4;

sim::CameraScenario lossyCamera()
{
    sim::CameraScenario scenario;
    scenario.bufferBytes = 1 << 20;
    scenario.queueFrames = 2;
    scenario.sensor.rateHz = 900; // 472 MB/s of images that the link cannot take
    scenario.sensor.jitterUs = 400;
    scenario.sensor.readoutUs = 1000;
    scenario.sensor.dataRate = 2000;
    scenario.link.rate = 200;
    scenario.link.frameLoss = 0.1;
    scenario.link.jitterUs = 50;
    scenario.link.stallEveryMs = 5;
    scenario.link.stallUs = 700;
    return scenario;
}

} // namespace

class TestLoops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_idleThreads = threadCount(); }
    void cleanup()
    {
        setMeasurementClock({});
        CameraRegistry::instance().removeAllDevices();
    }

    void figuresEqualTheLedger_data()
    {
        // The stride is in words.
        const Table<qint32, quint64> row("period", "stride");
        row("a page", 4096, 512);
        row("no whole number of words", 4100, 512);
        row("a word", 8, 1);
        row("largest of the dialog", 51200, 6400);
    }
    void figuresEqualTheLedger()
    {
        QFETCH(qint32, period);
        QFETCH(quint64, stride);
        setMeasurementClock([] { return qint64(3'600'000'000); });
        MeasurementBench bench(lossyCamera());
        CxCameraLineData& data = bench.data;
        QVERIFY(bench.measure(30, period, 1'000'000'000));
        QCOMPARE(data.frameList.size(), size_t(30));

        // The record that the ledger's word times give.
        CxCameraLineData truth;
        truth.samplePeriod = period;
        truth.requiredThroughput = data.requiredThroughput.load();
        truth.cameraBufferSize = data.cameraBufferSize.load();
        const sim::Ledger ledger = bench.camera->ledger();
        auto kept = data.frameList.begin();
        for (const sim::FrameEntry& entry : ledger.frames) {
            if (entry.fate != sim::Fate::Received)
                continue;
            std::vector<quint64> ticks(entry.times->words / stride);
            for (size_t i = 0; i < ticks.size(); ++i)
                ticks[i] = entry.times->written(i * stride);
            QVERIFY(kept != data.frameList.end());
            QCOMPARE((*kept)->frameNumber, quint64(entry.number));
            QVERIFY((*kept)->timestampUs >= 3'600'000'000);
            appendFrame(truth, (*kept++)->timestampUs, ticks);
        }
        QVERIFY(kept == data.frameList.end());
        const NaiveFigures figures = naiveFigures(truth, 0.0, -always, always, 0.0);
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, -always, always, 0.0));
        QVERIFY(std::abs(data.avgThroughput / figures.avgThroughput - 1.0) < 1e-12); // another order of summing up
        QVERIFY(data.minThroughput == figures.minThroughput);
        QVERIFY(data.maxBufferLevel == figures.maxBufferLevel);
        QCOMPARE(data.bufferOverflowCount, figures.bufferOverflowCount);
        QVERIFY(figures.minThroughput < figures.avgThroughput && figures.avgThroughput < 220.0);

        // The run's totals, which the capacity does not limit, are the same figures while everything is kept.
        const RunTotals totals = data.runTotals();
        QCOMPARE(totals.frames, quint64(30));
        QVERIFY(*totals.avgThroughput() == figures.avgThroughput);
        QVERIFY(*totals.minThroughput == figures.minThroughput);
        QVERIFY(*totals.maxBufferLevel == figures.maxBufferLevel);
        QCOMPARE(totals.overflows, figures.bufferOverflowCount);
        const quint64 span = data.frameList.back()->frameNumber - data.frameList.front()->frameNumber + 1;
        QCOMPARE(totals.frames + totals.missingFrames, span);
    }

    void countersEqualTheLedger()
    {
        MeasurementBench bench(lossyCamera(), MeasModeStandardAcq);
        QVERIFY(bench.measure(20));
        // The host is busy for a while: frames queue up and are dropped.
        bench.camera->advance(std::chrono::milliseconds(40));
        QVERIFY(bench.take(20));
        const auto truth = bench.camera->ledger().counters;
        for (const auto& counter : bench.data.counterList) {
            QVERIFY(counter->supported);
            QCOMPARE(bench.data.counterValue(counter->selector), truth[static_cast<size_t>(counter->selector)]);
            QVERIFY2(counter->value > 0, qPrintable(counter->name)); // each kind of loss happened
        }
        const CounterSample& last = *bench.data.counterSampleList.back();
        for (const FrameCounter& counter : frameCounters)
            QCOMPARE(counter.sample ? last.*counter.sample : truth[counter.selector], truth[counter.selector]);
        QCOMPARE(bench.data.runCounters().last->apiSkip, truth[1]);
        QCOMPARE(bench.data.runCounters().first->frameNumber, bench.data.counterSampleList.front()->frameNumber);
    }

    void frameTimes()
    {
        std::atomic<qint64> nowUs{0};
        MeasurementBench standard({}, MeasModeStandardAcq);
        QVERIFY(standard.measure(1));
        QCOMPARE(standard.data.frameTimeCount.load(), quint64(0));
        QVERIFY(standard.take(2));
        const auto& samples = standard.data.counterSampleList;
        QCOMPARE(standard.data.frameTimeCount.load(), quint64(2));
        QCOMPARE(standard.data.avgFrameTime.load(),
                 static_cast<double>(samples[2]->timestampUs - samples[0]->timestampUs) / 2.0);

        MeasurementBench throughput;
        for (int run = 0; run < 2; ++run) { // the second starts anew and appends
            QVERIFY(throughput.measure(1));
            const FrameRecord& frame = *throughput.data.frameList.back();
            QCOMPARE(throughput.data.maxFrameTime.load(), static_cast<double>(frame.durationTicks) / 250.0);
            QCOMPARE(throughput.data.minFrameTime.load(), throughput.data.avgFrameTime.load());
            QCOMPARE(throughput.data.frameTimeCount.load(), quint64(1));
            QVERIFY(throughput.stop());
        }
        QVERIFY(throughput.data.frameList.size() >= 2);

        // Time without a frame counts from where frames may come: not while the camera is prepared.
        setMeasurementClock([&nowUs] { return nowUs.load(); });
        throughput.camera->setHook([&nowUs](const sim::HostCall& call) {
            nowUs += call.kind == sim::Call::Set || call.kind == sim::Call::Start ? 1000000 : 0;
            return true;
        });
        QVERIFY(throughput.measure(1));
        QCOMPARE(throughput.data.runTotals().longestGapUs, qint64(0));
    }

    void earlyFailures()
    {
        for (const qint32 mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            MeasurementBench bench({}, mode);
            bench.camera->setGated(false);
            bench.camera->setHook([](const sim::HostCall& call) { return call.kind != sim::Call::Wait; });
            const LogCapture log;
            QElapsedTimer timer;
            timer.start();
            QVERIFY(bench.data.startMeasurement(4096, 1000));
            QTRY_VERIFY(bench.data.runTotals().failedWaits >= 4);
            QVERIFY(timer.elapsed() >= 10 + 20 + 40);
            QVERIFY(bench.data.stopMeasurement());
            QCOMPARE(log.texts().size(), 1);
        }
    }

    void manyCameras()
    {
        std::vector<std::unique_ptr<MeasurementBench>> benches;
        const int cameras = qMax(4, testCount(64));
        for (int i = 0; i < cameras; ++i) {
            sim::CameraScenario scenario;
            scenario.id = QString::number(i);
            scenario.seed = static_cast<quint64>(i);
            scenario.sensor.height = 64;
            benches.push_back(std::make_unique<MeasurementBench>(scenario, i % 3 == 0 ? 1 : 0));
            QVERIFY(benches.back()->data.startMeasurement(4096, 100000));
        }
        for (int round = 1; round <= 5; ++round) {
            for (const auto& bench : benches)
                bench->camera->release(10);
            for (const auto& bench : benches) {
                bench->data.calculateStats(nullptr, nullptr, nullptr, -always, always, 0.0); // while they work
                QVERIFY(bench->camera->settle());
                QCOMPARE(bench->data.runTotals().frames, quint64(10 * round));
            }
        }
        for (const auto& bench : benches)
            QVERIFY(bench->stop());
    }

    void manyStarts()
    {
        sim::CameraScenario scenario;
        scenario.sensor.width = scenario.sensor.height = 64;
        MeasurementBench bench(scenario);
        bench.camera->setGated(false);
        // One image a cycle, so that all cycles are alike: the worker's first wait lasts until the stop.
        QSemaphore waiting;
        bench.camera->setHook([&](const sim::HostCall& call) {
            if (call.kind == sim::Call::Wait)
                waiting.release();
            while (call.kind == sim::Call::Wait && !bench.data.stopRequested)
                QThread::yieldCurrentThread();
            return true;
        });
        size_t bytes = 0; // in use after the last cycle
        const auto cycles = [&](int count) {
            for (int i = 0; i < count; ++i) {
                bench.data.measMode = i % 2;
                if (!bench.data.startMeasurement(4096, 5))
                    return false;
                waiting.acquire();
                if (!bench.data.stopMeasurement())
                    return false;
                QCoreApplication::processEvents(); // what the host announces later
            }
            bench.data.clearData();
            bytes = mallinfo2().uordblks;
            return true;
        };
        const int count = testCount(1000);
        QVERIFY(cycles(count)); // what is made once, and what the heap keeps for reuse
        [[maybe_unused]] const size_t before = bytes;
        QVERIFY(cycles(count));
        bench.camera->setHook({});
        QTRY_COMPARE(threadCount(), m_idleThreads);
#ifndef __SANITIZE_ADDRESS__
        // The smallest allocation is 32 bytes: one in every second cycle would be too much. Of few cycles the
        // heap's own noise is more.
        QVERIFY2(count < 1000 || bytes < before + static_cast<size_t>(count) * 32 / 2,
                 qPrintable(QStringLiteral("%1 bytes more").arg(bytes - before)));
#endif
    }

private:
    int m_idleThreads = 0; ///< before any measurement: a thread joined later may still be on its way out
};

QTEST_GUILESS_MAIN(TestLoops)
#include "tst_loops.moc"
