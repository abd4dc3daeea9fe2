// SPDX-License-Identifier: GPL-3.0-or-later
// A weekend of model time: four cameras whose clocks drift, with a fault of every kind each hour.
#include <cmath>

#include <malloc.h>
#include <sys/time.h>

#include <QtTest/QtTest>

#include "LogCapture.h"
#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "TestScale.h"

namespace {

using namespace std::chrono_literals;

constexpr qint64 hourUs = 3600000000;
constexpr qint64 beginUs = 23 * hourUs; // 72 hours later three midnights are over
constexpr int framesPerHour = 3600;
constexpr int blocksPerFrame = 64;
constexpr qint32 period = 8;
constexpr quint64 shortBlocks = 2;
constexpr double jumpMs = -300.0; // as large as the delay of a queue that becomes full

std::atomic<qint64> wallClockShiftS{0};

/// The model time of the camera that this thread measures is its host's time too.
thread_local const sim::HandDrivenCamera* measured = nullptr;

qint64 modelClockUs()
{
    return beginUs + (measured == nullptr ? 0 : measured->now() / 1us);
}

sim::CameraScenario weekendCamera(int index)
{
    sim::CameraScenario scenario = smallCamera(16); // 64 blocks of a word
    scenario.seed = static_cast<quint64>(index);
    scenario.sensor.rateHz = 1.0;
    scenario.link.frameGapUs = 1e6;
    scenario.link.jitterUs = 5000.0;
    scenario.link.frameLoss = 1.0 / framesPerHour;
    sim::Faults& faults = scenario.faults;
    faults.driftPpm = std::array<double, 4>{50.0, -50.0, 50.0, -50.0}[size_t(index)];
    const quint64 hour = framesPerHour;
    faults.nullData = {500, 1, hour};
    faults.shortData = {1000, 1, hour};
    faults.shortBytes = shortBlocks * period;
    faults.oddSize = {1500, 1, hour}; // of 0 x 0
    faults.numberJump = {2000, 1, hour};
    faults.numberJumpBy = 10;
    for (int i = 0; i < 72; ++i)
        faults.noImage.push_back({(i + 0.7) * 3600e3, 12e3});
    if (index == 2) {
        faults.stampJump = {2500, 1, hour};
        faults.stampJumpMs = jumpMs;
    }
    return scenario;
}

/// One camera of the weekend with its record, and what it really sent.
class Weekend
{
public:
    explicit Weekend(int index)
        : bench(weekendCamera(index), index == 3 ? MeasModeStandardAcq : MeasModeDataThroughput)
    {
        bench.camera->setHook([this](const sim::HostCall& call) {
            if (call.kind == sim::Call::Wait) {
                measured = bench.camera.get();
                return ++waits % framesPerHour != 0;
            }
            return call.parameter != "counter_value" || ++reads % (6 * framesPerHour) != 0;
        });
    }

    /// Totals and records against the ledger; of the times the newest, the others among each other.
    template<typename List>
    void check(const List& records, quint64 hours, quint64 capacityHours) const
    {
        const CxCameraLineData& data = bench.data;
        const sim::Ledger ledger = bench.camera->ledger();
        const sim::Faults faults = bench.camera->faults();
        const bool jumps = faults.stampJump.count > 0;
        QVERIFY(bench.camera->now() > hours * 1h);
        QVERIFY(std::abs(data.clockDriftPpm().value() - faults.driftPpm) < (jumps ? 2.0 : 0.5));
        QCOMPARE(records.size(), capacityHours * framesPerHour + 1);

        const RunTotals totals = data.runTotals();
        const quint64 nulls = ledger.total(sim::Fate::Received).frames - totals.frames;
        const auto hourly = [hours](quint64 count) { // but for those lost on the link
            return count <= hours && count + hours / 8 >= hours;
        };
        QVERIFY(hourly(nulls));
        QCOMPARE(totals.failedWaits, nulls + waits / framesPerHour + 2 * hours); // a silence is two waits
        QCOMPARE(totals.frames + totals.missingFrames, records.back()->frameNumber + 1);
        if (data.measMode == MeasModeStandardAcq) {
            QCOMPARE(data.counterSampleList.back()->transportSkip, ledger.counters[0]);
        } else {
            constexpr quint64 cutOff = blocksPerFrame - shortBlocks;
            const quint64 lacking = blocksPerFrame * (totals.frames - totals.skippedFrames) - totals.blocks;
            QVERIFY(hourly(totals.skippedFrames) && lacking % cutOff == 0 && lacking / cutOff <= hours);
        }

        quint64 index = records.size();
        qint64 laterUs = 0;
        qint64 laterCameraUs = 0;
        for (auto entry = ledger.frames.rbegin(); entry != ledger.frames.rend() && index > 0; ++entry) {
            if (entry->fate != sim::Fate::Received || faults.nullData.contains(entry->number) ||
                (entry->counterPattern && faults.oddSize.contains(entry->number)))
                continue;
            const auto& record = *records[--index];
            const qint64 cameraUs = static_cast<qint64>(entry->times->packetTicks.front() * 4 / 1000);
            const qint64 distanceUs = laterCameraUs - cameraUs;
            if (laterCameraUs != 0 && !jumps)
                QVERIFY(std::abs(laterUs - record.timestampUs - distanceUs) <= distanceUs / 2000 + 2);
            // The live view: the host's time is that of the arrival.
            const qint64 behindUs = record.timestampUs - beginUs - entry->endNs / 1000;
            QVERIFY(jumps || std::abs(behindUs) < 120000);
            laterUs = record.timestampUs;
            laterCameraUs = cameraUs;
        }
        for (index = 1; index < records.size() && !jumps; ++index)
            QVERIFY(records[index]->timestampUs > records[index - 1]->timestampUs);
    }

    MeasurementBench bench;
    quint64 waits = 0; ///< every 3600th is refused
    quint64 reads = 0; ///< of counters
};

} // namespace

/// The wall clock, as this process sees it.
extern "C" __attribute__((visibility("default"))) int gettimeofday(timeval* now, void*) noexcept
{
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    *now = {time.tv_sec + wallClockShiftS, time.tv_nsec / 1000};
    return 0;
}

class TestLongRun : public QObject
{
    Q_OBJECT

    const int hours = std::max(12, testCount(72)); // the ledger, too, is full after 6
    const int capacityHours = hours * 2 / 3;

private Q_SLOTS:
    void wallClockSetBack()
    {
        const qint64 beforeUs = measurementClockUs();
        const QDateTime wallBefore = QDateTime::currentDateTime();
        wallClockShiftS = -5 * 3600;
        const qint64 wallPassedS = wallBefore.secsTo(QDateTime::currentDateTime());
        const qint64 passedUs = measurementClockUs() - beforeUs;
        wallClockShiftS = 0;
        QVERIFY(wallPassedS < -4 * 3600 && passedUs >= 0 && passedUs < hourUs);
    }

    void weekend()
    {
        setMeasurementClock(modelClockUs);
        LogCapture log;
        std::vector<std::unique_ptr<Weekend>> weekends;
        for (int i = 0; i < 4; ++i) {
            weekends.push_back(std::make_unique<Weekend>(i));
            const int capacity = capacityHours * framesPerHour * (i == 3 ? 1 : blocksPerFrame);
            QVERIFY(weekends.back()->bench.data.startMeasurement(period, capacity));
        }
        const auto measure = [&weekends](int moreHours) {
            for (const auto& weekend : weekends)
                weekend->bench.camera->release(moreHours * framesPerHour);
            return std::all_of(weekends.begin(), weekends.end(),
                               [](const auto& weekend) { return weekend->bench.camera->settle(300s); });
        };
        QVERIFY(measure(capacityHours + 1));
        const size_t bytes = mallinfo2().uordblks;
        QVERIFY(measure(hours - capacityHours - 1));
        QVERIFY(mallinfo2().uordblks < bytes + 1000000); // the faults of a third of the time, or 80 MB a camera

        int failures = 0;
        for (const auto& weekend : weekends) {
            const CxCameraLineData& data = weekend->bench.data;
            data.measMode == MeasModeStandardAcq ? weekend->check(data.counterSampleList, hours, capacityHours)
                                                 : weekend->check(data.frameList, hours, capacityHours);
            if (QTest::currentTestFailed())
                return;
            QVERIFY(weekend->bench.stop());
            failures += static_cast<int>(weekend->bench.data.runTotals().failedWaits);
        }
        QCOMPARE(log.texts().filter(QStringLiteral("vnApi_GetImage failed to capture image")).size(), failures);
        QCOMPARE(log.texts().filter(QStringLiteral("such frames are skipped")).size(), 3); // once a measurement
        QCOMPARE(log.texts().size(), failures + 3);
        setMeasurementClock({});
    }

    /// Lost and back once an hour, in one run.
    void lossEveryHour()
    {
        constexpr int failingWaits = 12;
        sim::CameraScenario scenario = weekendCamera(0);
        scenario.faults = {};
        MeasurementBench bench(scenario);
        bench.setOwnValues();
        const auto nowUs = [&camera = *bench.camera]() -> qint64 { return camera.now() / 1us; };
        setMeasurementClock(nowUs);
        const LogCapture log;
        quint64 received = 0;
        quint64 receivedBytes = 0;
        size_t bytes = 0;
        const qint32 capacity = capacityHours * framesPerHour * blocksPerFrame;
        for (int hour = 0; hour < hours; ++hour) {
            QVERIFY(hour == 0 ? bench.data.startMeasurement(period, capacity) : bench.data.resumeMeasurement());
            QVERIFY(bench.take(framesPerHour));
            const sim::Ledger::Total session = bench.camera->ledger().total(sim::Fate::Received);
            received += session.frames;
            receivedBytes += session.bytes;
            bench.camera->lose();
            QVERIFY(bench.take(failingWaits));
            QVERIFY(bench.data.suspendMeasurement());
            bench.camera->advance(1s);
            const RunTotals totals = bench.data.runTotals();
            QCOMPARE(std::tuple(totals.frames, totals.bytes, totals.losses, totals.lostUs),
                     std::tuple(received, receivedBytes, quint64(hour + 1), qint64(hour + 1) * 1000000));
            QCOMPARE(totals.elapsedUs, nowUs());
            bench.camera->comeBack(); // with its power-up values
            if (hour == capacityHours + 1)
                bytes = mallinfo2().uordblks;
        }
        QCOMPARE(bench.data.frameList.size(), quint64(capacityHours * framesPerHour + 1));
        QVERIFY(received > bench.data.frameList.size());
        QVERIFY(mallinfo2().uordblks < bytes + 10000000); // the log of the losses, or 40 MB of frames
        QVERIFY(bench.stop());
        QCOMPARE(bench.camera->parameter(QStringLiteral("imgdataformat")), int(VN_FRM_MONO16));
        setMeasurementClock({});
    }
};

QTEST_GUILESS_MAIN(TestLongRun)
#include "tst_longrun.moc"
