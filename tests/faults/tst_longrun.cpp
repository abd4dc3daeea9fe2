// SPDX-License-Identifier: GPL-3.0-or-later
// A weekend of model time: four cameras whose clocks drift, with a fault of every kind each hour.
#include <cmath>

#include <malloc.h>
#include <sys/time.h>

#include <QtTest/QtTest>

#include "Diagnosis.h"
#include "Files.h"
#include "LogCapture.h"
#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "MeasureRun.h"
#include "ResidentMemory.h"
#include "RunSummary.h"
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

/// What this process uses, in bytes.
struct Memory
{
    static Memory now() { return {qint64(mallinfo2().uordblks), residentBytes()}; }

    qint64 heap = 0;
    qint64 resident = 0;
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

    /// Lost and back once an hour, at times lost again while it is prepared anew: lines, course, events, report.
    void lossEveryHour()
    {
        sim::CameraScenario scenario = weekendCamera(0);
        scenario.faults = {};
        scenario.link.frameLoss = 0.0; // nothing is missing where frame numbers begin anew
        const auto camera = std::make_shared<sim::HandDrivenCamera>(scenario);
        camera->setGated(true);
        camera->setParameter(QStringLiteral("imgdataformat"), VN_FRM_MONO16);
        const auto before = camera->parameters();
        setMeasurementClock([model = camera.get()] { return model->now() / 1us; });
        auto& registry = CameraRegistry::instance();
        registry.removeAllDevices();
        registry.addDevice(camera);

        QTemporaryDir folder;
        Options options;
        options.interval = 24h; // the lines are the test's
        options.samplePeriod = period;
        options.capacity = capacityHours * framesPerHour * blocksPerFrame;
        options.reportFile = folder.filePath(QStringLiteral("run.html"));
        const auto& kinds = limitKinds();
        const auto losses = std::find_if(kinds.begin(), kinds.end(),
                                         [](const LimitKind& kind) { return kind.name == QByteArray("max-losses"); });
        options.limits.given = {{&*losses, 1000.0}};
        QFile text(folder.filePath(QStringLiteral("run.json")));
        QVERIFY(text.open(QIODevice::ReadWrite));
        LineWriter writer(text.handle(), text.fileName(), LineWriter::Until::Written);
        const auto output = makeJsonOutput(writer);
        std::vector<std::unique_ptr<MeasuredCamera>> cameras;
        cameras.push_back(std::make_unique<MeasuredCamera>(registry.open(0), registry.deviceInfo(0), options));
        MeasureRun run(options, cameras, *output, nullptr);
        const LogCapture log;
        const auto stop = qScopeGuard([&] {
            camera->setGated(false);
            run.stop();
            registry.removeAllDevices();
            setMeasurementClock({});
            wallClockShiftS = 0;
        });
        run.start();

        sim::Ledger::Total received;
        std::chrono::nanoseconds lostFor{0};
        Memory full;
        for (int hour = 0; hour < hours; ++hour) {
            for (int minute = 0; minute < 60; ++minute) {
                camera->release(framesPerHour / 60);
                QVERIFY(camera->settle());
                wallClockShiftS = camera->now() / 1s;
                run.printIntervals();
            }
            const sim::Ledger::Total session = camera->ledger().total(sim::Fate::Received); // begins anew with it
            received.frames += session.frames;
            received.bytes += session.bytes;
            if (hour == capacityHours + 1)
                full = Memory::now();
            camera->lose();
            lostFor -= camera->now();
            QCoreApplication::processEvents();
            QVERIFY(!cameras[0]->isRunning() && !run.isOver());
            camera->advance(10s);
            std::atomic<int> calls{hour % 3 == 0 ? hour % 50 : -1};
            camera->setHook([&camera, &calls](const sim::HostCall&) {
                if (calls-- == 0)
                    camera->lose();
                return true;
            });
            camera->comeBack(); // with its power-up values
            QCoreApplication::processEvents();
            camera->setHook({});
            if (!cameras[0]->isRunning()) {
                camera->comeBack();
                QCoreApplication::processEvents();
            }
            QVERIFY(cameras[0]->isRunning());
            lostFor += camera->now();
        }
        const Memory end = Memory::now();
        // Frames of a third of the time have 45 MB.
        QVERIFY2(end.heap < full.heap + 4000000, QByteArray::number(end.heap - full.heap));
        QVERIFY2(end.resident < full.resident + 20000000, QByteArray::number(end.resident - full.resident));
        run.printIntervals();
        const RunTotals totals = cameras[0]->record().runTotals();
        const quint64 lossesOfRun = totals.losses;
        QCOMPARE(std::tuple(totals.frames, totals.bytes, totals.missingFrames),
                 std::tuple(received.frames, received.bytes, quint64(0)));
        QCOMPARE(totals.lostUs, qint64(lostFor / 1us));
        QCOMPARE(totals.elapsedUs, qint64(camera->now() / 1us));
        QVERIFY(received.frames > cameras[0]->record().frameList.size() && lossesOfRun >= quint64(hours));

        QVERIFY(diagnose(diagnosisInput(cameras[0]->record(), totals))[0].sentence.contains("the camera was lost"));

        HistoryColumn course;
        const auto columns = run.recorder().course(*cameras[0]);
        for (const HistoryColumn& column : columns)
            course += column;
        QVERIFY(columns.size() <= RunHistory::mostColumns + 1);
        QCOMPARE(std::tuple(course.losses, course.missingFrames), std::tuple(lossesOfRun, quint64(0)));
        QVERIFY(std::abs(course.megabytes * 1e6 / double(received.bytes) - 1.0) < 1e-9);
        QVERIFY(std::abs(course.endS * 1e9 - double(camera->now().count())) < 60e9);
        const auto events = run.recorder().events().list();
        const auto count = [&events](const char* what) {
            return std::count_if(events.begin(), events.end(),
                                 [what](const RunEvent& event) { return event.text == QLatin1String(what); });
        };
        QCOMPARE(count("is back and measured again"), std::ptrdiff_t(hours));
        QVERIFY(events.front().time.secsTo(events.back().time) >= hours * 3600);

        camera->setGated(false);
        run.stop();
        QCOMPARE(camera->parameters(), before);
        QCOMPARE(finishRun(options, cameras, {}, nullptr, run.recorder(), *output), 0);
        const QByteArray page = readFile(options.reportFile);
        QVERIFY(page.size() < 200000 && !page.contains("e+0"));
    }
};

QTEST_GUILESS_MAIN(TestLongRun)
#include "tst_longrun.moc"
