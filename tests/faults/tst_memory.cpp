// SPDX-License-Identifier: GPL-3.0-or-later
// Memory runs out: each allocation of a worker and of the figures fails, no thread can be had, the address space is
// full. The measurement ends at most, keeps what it has, and gives the camera back.
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>

#include <cerrno>
#include <numeric>

#include <qcustomplot.h>

#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include "AcquisitionThread.h"
#include "FailingNew.h"
#include "LogCapture.h"
#include "MeasurementBench.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Table.h"

namespace {

constexpr qint64 always = std::numeric_limits<qint64>::max() / 4;
const QString figuresFailed =
    QStringLiteral("CxCameraLineData::calculateStats(): Failed to allocate temporary buffers "
                   "for internal calculations");
std::atomic<bool> noThreads{false};

sim::CameraScenario camera(quint32 width, quint32 height)
{
    sim::CameraScenario scenario;
    scenario.sensor.width = width;
    scenario.sensor.height = height;
    return scenario;
}

/// Whether the figures are those of the frames that are kept.
bool figuresAreTrue(CxCameraLineData& data)
{
    const NaiveFigures figures = naiveFigures(data, 0.0, -always, always, 0.0);
    return data.calculateStats(nullptr, nullptr, nullptr, -always, always, 0.0) == figures.evaluated &&
           (!figures.evaluated ||
            (std::abs(data.avgThroughput / figures.avgThroughput - 1.0) < 1e-12 &&
             data.minThroughput == figures.minThroughput && data.maxBufferLevel == figures.maxBufferLevel &&
             data.bufferOverflowCount == figures.bufferOverflowCount));
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
    void worker_data()
    {
        const Table<int, QStringList> row("mode", "messages");
        const QString frame = QStringLiteral("Cannot allocate array for frame data");
        const QString ticks = QStringLiteral("Cannot allocate array for frame time stamps");
        row("throughput", MeasModeDataThroughput, {frame, ticks});
        row("standard", MeasModeStandardAcq, {frame});
    }

    /// Frames at which the lists grow in all their ways, the last ones while the oldest leave.
    void worker()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, messages);
        const bool throughput = mode == MeasModeDataThroughput;
        QStringList seen;
        for (const int frame : {1, 2, 16, 256, 512, 513}) {
            bool more = true;
            for (int nth = 1; more; ++nth) {
                MeasurementBench bench(camera(64, 64), mode);
                bench.setOwnValues();
                const auto before = bench.camera->parameters();
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

                const QString loop = throughput ? QStringLiteral("CxCameraLineData::runMeasureLoop(): ")
                                                : QStringLiteral("CxCameraLineData::runMeasureLoopAcquisition(): ");
                const QStringList texts = log.texts();
                const QString text = texts.isEmpty() ? QString() : texts[0].mid(loop.size());
                QVERIFY(texts.size() <= 1 && texts.join(QString()).startsWith(texts.isEmpty() ? QString() : loop));
                if (ended)
                    QVERIFY2(messages.contains(text), qPrintable(text));
                else
                    QVERIFY(texts.isEmpty() || text == QLatin1String("vnApi_GetImage failed to capture image"));
                seen << text;

                const RunTotals totals = bench.data.runTotals();
                const quint64 kept = bench.data.frameList.size() + bench.data.counterSampleList.size();
                QCOMPARE(totals.frames + totals.failedWaits, quint64(ended ? frame : frame + 1));
                QCOMPARE(totals.skippedFrames, quint64(ended ? 1 : 0));
                QCOMPARE(kept, std::min<quint64>(totals.frames - totals.skippedFrames, 301));
                QVERIFY(!throughput || figuresAreTrue(bench.data));
                QCOMPARE(bench.camera->parameters(), before);
                QVERIFY(!bench.camera->isAcquiring());
                QVERIFY(!ended || (bench.data.startMeasurement(16, 1000) && bench.data.stopMeasurement()));
                more = failed || ended;
            }
        }
        for (const QString& message : messages)
            QVERIFY(seen.contains(message));
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
            QCOMPARE(data.workArrayLength, quint64(500));

            // The former length is not taken for success while arrays are missing.
            QVERIFY(data.AlloCateBuffers(500));
            QVERIFY(data.linkSpeeds && data.bufferDeltas && data.blockTimeOffsets);
            data.linkSpeeds[499] = data.bufferDeltas[499] = 1.0;
            data.blockTimeOffsets[499] = 1;
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
        const auto before = bench.camera->parameters();
        const LogCapture log;
        noThreads = true;
        const bool started = bench.data.startMeasurement(4096, 1000);
        noThreads = false;
        QVERIFY(!started && !bench.data.isMeasuring() && !bench.data.thread && !bench.camera->isAcquiring());
        QCOMPARE(bench.camera->parameters(), before);
        const QString text =
            QStringLiteral("CxCameraLineData::setupCameraParameters(): Cannot start the acquisition thread");
        QVERIFY(log.texts().contains(text)); // beside one of Qt's
        QVERIFY(bench.measure(1));
        QVERIFY(bench.stop());

        CameraRegistry& host = CameraRegistry::instance(); // its own acquisition
        noThreads = true;
        const bool shown = host.startHostAcquisition(bench.data.hCam);
        noThreads = false;
        QVERIFY(!shown && !host.isHostAcquiring(bench.data.hCam) && !bench.camera->isAcquiring());
        QVERIFY(host.startHostAcquisition(bench.data.hCam));
    }

    /// The worst that sizes of frames can do to the capacity: the newest one's block count decides how many are kept, so
    /// frames that halve leave the larger ones in place. The bound is that of docs/measurements.md.
    void shrinkingFrames()
    {
        constexpr int capacity = 100000;
        constexpr int mostBlocks = 1024;
        constexpr double mostKept = mostBlocks + capacity * (1.0 + 6.93); // ln 1024
        MeasurementBench bench(camera(64, 64));
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
        for (int size = mostBlocks; size > 0; size /= 2)
            take(size,
                 capacity / size + 1 - static_cast<int>(bench.data.frameList.size())); // as many as push nothing out
        QVERIFY(blocks > 5.0 * capacity);                                              // it is as bad as that
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
        QTemporaryDir folder;
        QFile scenario(folder.filePath(QStringLiteral("large.json")));
        QVERIFY(scenario.open(QIODevice::WriteOnly));
        const QByteArray fields = "\"sensor\": {\"width\": 2048, \"height\": 2048}, \"link\": {\"rate\": 4000}}";
        scenario.write("{\"cameras\": [{\"id\": \"1\", " + fields + ", {\"id\": \"2\", " + fields + "]}");
        scenario.close();
        QProcess program;
        program.start(QStringLiteral("sh"),
                      {QStringLiteral("-c"), QStringLiteral("ulimit -v 900000; exec \"$0\" \"$@\""),
                       QStringLiteral(MEASURE_PROGRAM), QStringLiteral("--cameras"), scenario.fileName(),
                       QStringLiteral("--all"), QStringLiteral("--sample-period"), QStringLiteral("8"),
                       QStringLiteral("--capacity"), QStringLiteral("2000M"), QStringLiteral("--interval"),
                       QStringLiteral("100ms"), QStringLiteral("--duration"), QStringLiteral("60s")});
        QVERIFY(program.waitForFinished(90000));
        const QByteArray told = program.readAllStandardOutput();
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 3);
        QCOMPARE(told.count("measurement ended for lack of memory"), 2);
    }
};

QTEST_MAIN(TestMemory)
#include "tst_memory.moc"
