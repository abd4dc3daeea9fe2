// SPDX-License-Identifier: GPL-3.0-or-later
// Memory runs out: each allocation of a worker and of the figures fails, no thread can be had, the address space is
// full. The measurement ends at most, keeps what it has, and gives the camera back.
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>

#include <cerrno>
#include <numeric>

#include <qcustomplot.h>

#include <QtTest/QtTest>

#include "AcquisitionThread.h"
#include "FailingNew.h"
#include "LogCapture.h"
#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"

namespace {

const QString figuresFailed =
    QStringLiteral("CxCameraLineData::calculateStats(): Failed to allocate temporary buffers "
                   "for internal calculations");
std::atomic<bool> noThreads{false};

/// Calls it while no thread can be had.
template<typename Operation>
bool withoutThreads(Operation operation)
{
    noThreads = true;
    const bool done = operation();
    noThreads = false;
    return done;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int
pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*), void* argument) noexcept
{
    static const auto original = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return noThreads ? EAGAIN : original(thread, attributes, routine, argument);
}

class TestMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CameraRegistry::instance().removeAllDevices(); }
    /// Frames at which the lists grow in all their ways, the last ones while the oldest leave.
    void worker()
    {
        for (const bool throughput : {true, false}) {
            const int mode = throughput ? MeasModeDataThroughput : MeasModeStandardAcq;
            QStringList seen, messages{QStringLiteral("Cannot allocate array for frame data")};
            if (throughput)
                messages << QStringLiteral("Cannot allocate array for frame time stamps");
            for (const int frame : {1, 2, 16, 256, 512, 513}) {
                bool more = true;
                for (int nth = 1; more; ++nth) {
                    MeasurementBench bench(smallCamera(), mode);
                    bench.setOwnValues();
                    bench.camera->setGated(false);
                    std::atomic<bool> done{false};
                    bool failed = false;
                    int waits = 0;
                    bench.camera->setHook([&](const sim::HostCall& call) {
                        if (call.kind == sim::Call::Wait && ++waits == frame)
                            failAllocation(nth);
                        while (call.kind == sim::Call::Wait && waits > frame && !bench.data.stopRequested) {
                            failed = failed || failAllocation(0);
                            done = true;
                            QThread::yieldCurrentThread();
                        }
                        return true;
                    });
                    const LogCapture log;
                    QVERIFY(bench.data.startMeasurement(16, (throughput ? 512 : 1) * 300));
                    while (!done && bench.data.isMeasuring())
                        QThread::yieldCurrentThread();
                    const bool ended = !bench.data.isMeasuring();
                    QCOMPARE(bench.data.stopMeasurement(), !ended);
                    bench.camera->setHook({});

                    const QString loop = throughput
                                             ? QStringLiteral("CxCameraLineData::runMeasureLoop(): ")
                                             : QStringLiteral("CxCameraLineData::runMeasureLoopAcquisition(): ");
                    const QStringList texts = log.texts();
                    const QString text = texts.isEmpty() ? QString() : texts[0].mid(loop.size());
                    QVERIFY(texts.size() <= 1 &&
                            texts.join(QString()).startsWith(texts.isEmpty() ? QString() : loop));
                    QVERIFY2(ended
                                 ? messages.contains(text)
                                 : text.isEmpty() || text == QLatin1String("vnApi_GetImage failed to capture image"),
                             qPrintable(text));
                    seen << text;

                    const RunTotals totals = bench.data.runTotals();
                    const quint64 kept = bench.data.frameList.size() + bench.data.counterSampleList.size();
                    QCOMPARE(std::tuple(totals.frames + totals.failedWaits, totals.skippedFrames, kept),
                             std::tuple(quint64(ended ? frame : frame + 1), quint64(ended ? 1 : 0),
                                        std::min<quint64>(totals.frames - totals.skippedFrames, 301)));
                    QVERIFY(!throughput || figuresAreTrue(bench.data));
                    setMeasurementClock([] { return always; });
                    QCOMPARE(bench.data.runTotals().presentGapUs, qint64(0)); // its time is over, too
                    setMeasurementClock({});
                    QVERIFY(!ended || (bench.data.startMeasurement(16, 1000) && bench.data.stopMeasurement()));
                    QVERIFY(bench.isAtRest());
                    more = failed || ended;
                }
            }
            for (const QString& message : messages)
                QVERIFY(seen.contains(message));
        }
    }

    void failedWorkArrays()
    {
        int nth = 0;
        for (const char* array : {"frame speeds array", "buffer occupancy array", "time stamp difference array"}) {
            CxCameraLineData data;
            QVERIFY(data.AlloCateBuffers(0) && !data.linkSpeeds);
            QVERIFY(data.AlloCateBuffers(500));
            const LogCapture log;
            failAllocation(++nth);
            QVERIFY(!data.AlloCateBuffers(2000));
            QVERIFY(failAllocation(0));
            QCOMPARE(log.texts(), QStringList(QLatin1String("CxCameraLineData::AlloCateBuffers(): Cannot allocate ") +
                                              QLatin1String(array)));
            // The former length is not taken for success while arrays are missing.
            QVERIFY(data.workArrayLength == 500 && data.AlloCateBuffers(500));
            QVERIFY(data.linkSpeeds && data.bufferDeltas && data.blockTimeOffsets);
        }
    }

    void figures()
    {
        Dice dice(3);
        CxCameraLineData data;
        data.cameraBufferSize = 1 << 20;
        appendRandomMeasurement(data, dice, 300);
        QCustomPlot plot;
        const QCPRange range(-10.0, 0.0);
        bool failed = true;
        int lines = 0;
        for (int nth = 1; failed; ++nth) {
            data.requiredThroughput = 100 + nth; // all aggregates are outdated
            plot.clearGraphs();
            QCPGraph* minimum = plot.addGraph();
            QCPGraph* level = plot.addGraph();
            const LogCapture log;
            failAllocation(nth);
            const bool evaluated = data.calculateStats(minimum, level, &range, -always, always, 0.001);
            failed = failAllocation(0);
            QVERIFY(failed || evaluated);
            QCOMPARE(log.texts().contains(figuresFailed), !evaluated);
            lines += evaluated ? 0 : 1;
            QVERIFY(figuresAreTrue(data));
        }
        QVERIFY(lines > 3);
    }

    void noThread()
    {
        MeasurementBench bench;
        bench.setOwnValues();
        const LogCapture log;
        QVERIFY(!withoutThreads([&] { return bench.data.startMeasurement(4096, 1000); }) && bench.isAtRest());
        const QString text =
            QStringLiteral("CxCameraLineData::setupCameraParameters(): Cannot start the acquisition thread");
        QVERIFY(log.texts().contains(text)); // beside one of Qt's
        QVERIFY(bench.measure(1) && bench.stop());

        CameraRegistry& host = CameraRegistry::instance(); // its own acquisition
        QVERIFY(!withoutThreads([&] { return host.startHostAcquisition(bench.data.hCam); }));
        QVERIFY(!host.isHostAcquiring(bench.data.hCam) && !bench.camera->isAcquiring());
        QVERIFY(host.startHostAcquisition(bench.data.hCam));
    }

    /// The worst that sizes of frames can do to the capacity: the newest one's block count decides how many are kept, so
    /// frames that halve leave the larger ones in place. The bound is that of docs/measurements.md.
    void shrinkingFrames()
    {
        constexpr int capacity = 100000;
        constexpr int mostBlocks = 1024;
        constexpr double mostKept = mostBlocks + capacity * (1.0 + 6.93); // ln 1024
        MeasurementBench bench(smallCamera());
        const size_t before = mallinfo2().uordblks;
        QVERIFY(bench.data.startMeasurement(8, capacity));
        sim::Faults faults;
        faults.oddSize = {0, 1, 1};
        faults.oddHeight = 1;
        double blocks = 0.0;
        const auto take = [&](int size, int frames) {
            faults.oddWidth = static_cast<quint32>(size) * 4; // pixels
            bench.camera->setFaults(faults);
            QVERIFY(bench.take(frames));
            const auto& list = bench.data.frameList;
            blocks = std::accumulate(list.begin(), list.end(), 0.0, [](double sum, const auto& frame) {
                return sum + static_cast<double>(frame->blockCount);
            });
            QVERIFY(blocks <= mostKept);
        };
        for (int size = mostBlocks; size > 0; size /= 2) // as many as push nothing out
            take(size, capacity / size + 1 - static_cast<int>(bench.data.frameList.size()));
        QVERIFY(blocks > 5.0 * capacity); // it is as bad as that
        const auto frames = static_cast<double>(bench.data.frameList.size());
        const double reserve = 4 << 20; // of the worker
        QVERIFY(static_cast<double>(mallinfo2().uordblks - before) < 8.5 * blocks + 200.0 * frames + reserve);
        take(mostBlocks, 1);
        QCOMPARE(bench.data.frameList.size(), size_t(capacity / mostBlocks + 1));
    }

    void fullAddressSpaceOfTheProgram()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer needs all of the address space");
#endif
        QTemporaryFile scenario;
        QVERIFY(scenario.open());
        const QByteArray fields = "\"sensor\": {\"width\": 2048, \"height\": 2048}, \"link\": {\"rate\": 4000}}";
        scenario.write("{\"cameras\": [{\"id\": \"1\", " + fields + ", {\"id\": \"2\", " + fields + "]}");
        scenario.close();
        const QString command = QStringLiteral("ulimit -v 900000; exec " MEASURE_PROGRAM " --all --sample-period 8 "
                                               "--capacity 2000M --interval 100ms --duration 60s --cameras \"$0\"");
        QProcess program;
        program.start(QStringLiteral("sh"), {QStringLiteral("-c"), command, scenario.fileName()});
        QVERIFY(program.waitForFinished(90000));
        QCOMPARE(std::tuple(program.exitStatus(), program.exitCode()), std::tuple(QProcess::NormalExit, 3));
        QCOMPARE(program.readAllStandardOutput().count("measurement ended for lack of memory"), 2);
    }
};

QTEST_MAIN(TestMemory)
#include "tst_memory.moc"
