// SPDX-License-Identifier: GPL-3.0-or-later
// The measurement loops on hand-driven cameras: figures against the camera's own ledger.
#include <QtTest/QtTest>

#include "FrameCounters.h"
#include "LogCapture.h"
#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Scenarios.h"

class TestLoops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        setMeasurementClock({});
        CameraRegistry::instance().removeAllDevices();
    }

    void figuresEqualTheLedger()
    {
        constexpr qint64 beginUs = 3'600'000'000;
        setMeasurementClock([] { return beginUs; });
        for (const qint32 period : {4096, 4100, 8, 51200}) { // 4100: no whole number of words
            MeasurementBench bench(lossyCamera());
            CxCameraLineData& data = bench.data;
            QVERIFY(data.startMeasurement(period, 1'000'000'000));
            bench.camera->release(30);
            while (!bench.camera->settle(std::chrono::milliseconds(0)))
                data.calculateStats(nullptr, nullptr, nullptr, -always, always, 0.0); // while it works
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
                const quint64 stride = static_cast<quint64>(period) / 8; // words
                std::vector<quint64> ticks(entry.times->words / stride);
                for (size_t i = 0; i < ticks.size(); ++i)
                    ticks[i] = entry.times->written(i * stride);
                QVERIFY(kept != data.frameList.end());
                QCOMPARE((*kept)->frameNumber, quint64(entry.number));
                QVERIFY((*kept)->timestampUs >= beginUs);
                appendFrame(truth, (*kept++)->timestampUs, ticks);
            }
            QVERIFY(kept == data.frameList.end());
            const NaiveFigures figures = naiveFigures(truth, 0.0, -always, always, 0.0);
            QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, -always, always, 0.0));
            QVERIFY(hasFigures(data, figures));
            QVERIFY(figures.minThroughput < figures.avgThroughput && figures.avgThroughput < 220.0);

            // The run's totals, which the capacity does not limit, are the same figures while everything is kept.
            const RunTotals totals = data.runTotals();
            QCOMPARE(totals.frames, quint64(30));
            QCOMPARE(
                std::tuple(*totals.avgThroughput(), *totals.minThroughput, *totals.maxBufferLevel, totals.overflows),
                std::tuple(figures.avgThroughput, figures.minThroughput, figures.maxBufferLevel,
                           figures.bufferOverflowCount));
            const quint64 span = data.frameList.back()->frameNumber - data.frameList.front()->frameNumber + 1;
            QCOMPARE(totals.frames + totals.missingFrames, span);
        }
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
            QCOMPARE(bench.data.counterValue(counter->selector), truth[static_cast<size_t>(counter->selector)]);
            QVERIFY2(counter->supported && counter->value > 0,
                     qPrintable(counter->name)); // each kind of loss happened
        }
        const CounterSample& last = *bench.data.counterSampleList.back();
        for (const FrameCounter& counter : frameCounters)
            QCOMPARE(counter.sample ? last.*counter.sample : truth[counter.selector], truth[counter.selector]);
        QCOMPARE(bench.data.runCounters().last->apiSkip, truth[1]);
        const auto& samples = bench.data.counterSampleList;
        QCOMPARE(bench.data.runCounters().first->timestampUs, samples.front()->timestampUs);
        QVERIFY(bench.stop() && bench.measure(1)); // the next run begins anew
        QCOMPARE(bench.data.runCounters().first->timestampUs, samples.back()->timestampUs);
    }

    void frameTimes()
    {
        MeasurementBench standard({}, MeasModeStandardAcq);
        QVERIFY(standard.measure(3));
        const auto& samples = standard.data.counterSampleList;
        QCOMPARE(standard.data.frameTimeCount.load(), quint64(2));
        QCOMPARE(standard.data.avgFrameTime.load(),
                 static_cast<double>(samples[2]->timestampUs - samples[0]->timestampUs) / 2.0);

        MeasurementBench throughput;
        for (int run = 0; run < 2; ++run) { // the second starts anew and appends
            QVERIFY(throughput.measure(1));
            const CxCameraLineData& data = throughput.data;
            const double frameTime = static_cast<double>(data.frameList.back()->durationTicks) / 250.0;
            QCOMPARE(std::tuple(data.minFrameTime.load(), data.avgFrameTime.load(), data.maxFrameTime.load()),
                     std::tuple(frameTime, frameTime, frameTime));
            QVERIFY(data.frameTimeCount == 1 && data.frameList.size() >= size_t(run + 1));
            QVERIFY(throughput.stop());
        }

        // Time without a frame counts from where frames may come: not while the camera is prepared.
        std::atomic<qint64> nowUs{0};
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
};

QTEST_GUILESS_MAIN(TestLoops)
#include "tst_loops.moc"
