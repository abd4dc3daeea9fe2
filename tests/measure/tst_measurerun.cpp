// SPDX-License-Identifier: GPL-3.0-or-later
// A run on hand-driven cameras: its lines add up, unknown is unknown, cameras are restored.
#include <cmath>
#include <thread>

#include <QtTest/QtTest>

#include "CameraRegistry.h"
#include "Diagnosis.h"
#include "FailingNew.h"
#include "Files.h"
#include "HandDrivenCamera.h"
#include "MeasurementClock.h"
#include "MeasureRun.h"
#include "RandomRecord.h"
#include "Report.h"
#include "ReportDescription.h"
#include "Scenarios.h"

namespace {

/// Options whose timers never come into it: the test prints the lines.
Options byHand(ExMeasMode mode = MeasModeDataThroughput)
{
    Options options;
    options.mode = mode;
    options.interval = std::chrono::hours(24);
    return options;
}

/// A hand-driven camera, whose time is that of the measurement unless lines come by themselves, and perhaps others that
/// send all they can, in a run with JSON output.
class Bench
{
public:
    explicit Bench(const sim::CameraScenario& scenario = {}, const Options& runOptions = byHand(), int others = 0)
        : camera(std::make_shared<sim::HandDrivenCamera>(scenario)), options(runOptions)
    {
        if (runOptions.interval == byHand().interval)
            setMeasurementClock([model = camera.get()] { return model->now() / std::chrono::microseconds(1); });
        auto& registry = CameraRegistry::instance();
        camera->setGated(true);
        camera->setParameter(QStringLiteral("LUTEnable"), 1); // not its value at power-up
        before = camera->parameters();
        for (registry.addDevice(camera); others > 0; --others)
            registry.addDevice(std::make_shared<sim::HandDrivenCamera>(scenario));
        for (int i = 0; i < registry.deviceCount(); ++i)
            cameras.push_back(std::make_unique<MeasuredCamera>(registry.open(i), registry.deviceInfo(i), options));
        run.start();
    }
    ~Bench()
    {
        stop();
        CameraRegistry::instance().removeAllDevices();
        setMeasurementClock({});
    }

    /// The worker gets that many images and is done with them afterwards.
    bool take(int images)
    {
        camera->release(images);
        return camera->settle();
    }
    void stop()
    {
        camera->setGated(false);
        run.stop();
    }

    double total(const char* key) const
    {
        return figureValue(cameras[0]->wholeRun().figures, QLatin1String(key)).value();
    }

    std::shared_ptr<sim::HandDrivenCamera> camera;
    QMap<QString, int> before;
    const Options options;
    QTemporaryFile text;
    const bool opened = text.open();
    LineWriter writer{text.handle(), text.fileName(), LineWriter::Until::Written};
    const std::unique_ptr<Output> output = makeJsonOutput(writer);
    std::vector<std::unique_ptr<MeasuredCamera>> cameras;
    MeasureRun run{options, cameras, *output, nullptr};
};

double sumOf(const std::vector<QJsonObject>& lines, const char* key)
{
    double sum = 0.0;
    for (const QJsonObject& line : lines)
        sum += line.value(QLatin1String(key)).toDouble();
    return sum;
}

} // namespace

class TestMeasureRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void intervalsAddUp()
    {
        for (const ExMeasMode mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            sim::CameraScenario scenario;
            scenario.link.frameLoss = 0.3;
            Options options = byHand(mode);
            options.capacity = 500; // far less than the run
            Bench bench(scenario, options);
            for (const int images : {7, 1, 0, 12}) {
                QVERIFY(bench.take(images - images / 2));
                bench.cameras[0]->takeTick(); // lines are the sums of ticks
                QVERIFY(bench.take(images / 2));
                bench.run.printIntervals();
            }
            bench.stop();
            QCOMPARE(bench.camera->parameters(), bench.before);
            QVERIFY(!bench.camera->isAcquiring());

            const auto lines = jsonLines(readFile(bench.text.fileName()));
            QCOMPARE(lines.size(), size_t(5));
            QCOMPARE(lines[0]["frames"].toInt(), 7);
            QVERIFY(lines[2]["missingFrames"].isNull());
            for (const char* key :
                 {"frames", "missingFrames", "failedWaits", "silentMs", "losses", "lostS", "lostOnTheWay"})
                QCOMPARE(sumOf(lines, key), bench.total(key));
            QVERIFY(bench.total("missingFrames") > 0);
            QVERIFY(bench.total("lostOnTheWay") >= bench.total("missingFrames")); // those after the last one, too
            const auto events = bench.run.recorder().events().list();
            QVERIFY(std::any_of(events.begin(), events.end(), [](const RunEvent& event) {
                return event.text.startsWith("lost frames: ") && event.text.endsWith(" on the way");
            }));
            QVERIFY(bench.cameras[0]->problems().isEmpty());
            QVERIFY(qAbs(sumOf(lines, "intervalS") - bench.cameras[0]->wholeRun().lengthS) < 1e-6);
            if (mode == MeasModeStandardAcq) {
                // Counters run: the last line's are the run's. Nothing but the link loses frames here.
                QCOMPARE(lines.back()["skips"].toDouble(), bench.total("skips"));
                QCOMPARE(bench.total("transportSkips"), bench.total("missingFrames"));
                double skips = 0.0;
                for (const HistoryColumn& column : bench.run.recorder().course(*bench.cameras[0]))
                    skips += double(column.skips);
                QCOMPARE(skips, bench.total("skips"));
            } else {
                QCOMPARE(sumOf(lines, "blocks"), bench.total("blocks"));
                const auto received = bench.camera->ledger().total(sim::Fate::Received);
                const double timeUs = double(bench.cameras[0]->record().runTotals().elapsedUs);
                QCOMPARE(bench.total("framesPerSecond"), double(received.frames) * 1e6 / timeUs);
                QCOMPARE(bench.total("deliveredMBps"), double(received.bytes) / timeUs);
                QVERIFY(lines[2]["avgThroughputMBps"].isNull());
                QVERIFY(lines[0]["avgThroughputMBps"].toDouble() > 0.0);
            }
        }
    }

    void aNameTellsWhatThroughputIsMeasuredBy()
    {
        const SxCameraInfo info{"A", "1", {}, "host arrival"};
        QCOMPARE(MeasuredCamera(nullptr, info, byHand(MeasModeDataThroughput)).info().name,
                 QString("A [host arrival]"));
        QCOMPARE(MeasuredCamera(nullptr, info, byHand(MeasModeStandardAcq)).info().name, QString("A"));
    }

    /// Random runs with losses, some while the camera is prepared again, against what the camera really sent.
    void lossesDoNotEndARun()
    {
        for (quint64 seed = 1; seed <= 30; ++seed) {
            const int mode = seed % 2 == 0 ? MeasModeStandardAcq : MeasModeDataThroughput;
            Dice dice(seed);
            sim::CameraScenario scenario;
            scenario.link.frameLoss = 0.2;
            Bench bench(scenario, byHand(ExMeasMode(mode)));
            sim::HandDrivenCamera& camera = *bench.camera;
            sim::Ledger::Total received;
            std::chrono::nanoseconds lostFor{0};
            const QSignalSpy lost(&CameraRegistry::instance(), &CameraRegistry::cameraLost);
            const auto addReceived = [&] { // the ledger begins anew when the camera comes back
                const sim::Ledger ledger = camera.ledger();
                received.frames += ledger.total(sim::Fate::Received).frames;
                received.bytes += ledger.total(sim::Fate::Received).bytes;
            };
            for (int step = 0; step < 12; ++step) {
                QVERIFY(bench.take(int(dice.between(1, 30))));
                if (dice.oneIn(2))
                    bench.run.printIntervals();
                addReceived();
                camera.lose();
                const auto lostAt = camera.now();
                QCoreApplication::processEvents();
                QVERIFY(!bench.cameras[0]->isRunning() && !bench.run.isOver());
                while (dice.oneIn(2)) {
                    camera.advance(std::chrono::milliseconds(dice.between(0, 700)));
                    bench.run.printIntervals();
                }
                std::atomic<int> calls{int(dice.between(0, 60))}; // until it is lost again, if so many are made
                camera.setHook([&camera, &calls](const sim::HostCall&) {
                    if (calls-- == 0)
                        camera.lose();
                    return true;
                });
                camera.comeBack();
                QCoreApplication::processEvents();
                camera.setHook({});
                if (!bench.cameras[0]->isRunning()) {
                    camera.advance(std::chrono::milliseconds(5));
                    camera.comeBack();
                    QCoreApplication::processEvents();
                }
                QVERIFY(bench.cameras[0]->isRunning());
                lostFor += camera.now() - lostAt;
            }
            QVERIFY(bench.take(3));
            bench.run.printIntervals();
            const RunTotals untilStop = bench.cameras[0]->record().runTotals();
            double megabytes = 0.0;
            double frames = 0.0;
            double longestGapMs = 0.0;
            for (const QJsonObject& line : jsonLines(readFile(bench.text.fileName()))) {
                megabytes += line["deliveredMBps"].toDouble() * line["intervalS"].toDouble();
                frames += line["framesPerSecond"].toDouble() * line["intervalS"].toDouble();
                longestGapMs = std::max(longestGapMs, line["longestGapMs"].toDouble());
            }
            QCOMPARE(
                std::tuple(std::llround(megabytes * 1e6), std::llround(frames), longestGapMs),
                std::tuple(qint64(untilStop.bytes), qint64(untilStop.frames), double(untilStop.longestGapUs) / 1e3));
            bench.stop();
            addReceived();
            if (mode == MeasModeDataThroughput) // the other one saves nothing that a camera loses with its power
                QCOMPARE(camera.parameters(), bench.before);
            const RunTotals totals = bench.cameras[0]->record().runTotals();

            QCOMPARE(std::tuple(totals.frames, totals.bytes), std::tuple(received.frames, received.bytes));
            QCOMPARE(totals.lostUs, qint64(lostFor / std::chrono::microseconds(1)));
            QVERIFY(totals.losses >= 12 && totals.losses <= quint64(lost.size()));
            QVERIFY(totals.silentUs >= totals.lostUs && totals.elapsedUs > totals.silentUs);
            if (mode == MeasModeStandardAcq)
                QCOMPARE(bench.total("transportSkips"), bench.total("missingFrames"));
            const auto lines = jsonLines(readFile(bench.text.fileName()));
            for (const char* key : {"frames", "missingFrames", "failedWaits", "silentMs", "losses", "lostS"})
                QVERIFY(qAbs(sumOf(lines, key) - bench.total(key)) < 1e-6);
        }
    }

    void unknownIsNotZero()
    {
        sim::CameraScenario scenario; // without speed and two of the counters
        scenario.transportSpeed.reset();
        scenario.missedTriggerCounters = false;
        for (const ExMeasMode mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            Bench bench(scenario, byHand(mode));
            QVERIFY(bench.take(5));
            QStringList unknown;
            for (const Figure& figure : bench.cameras[0]->wholeRun().figures) {
                if (!figure.value)
                    unknown << QLatin1String(figure.key);
                QCOMPARE(figureText(figure) == QLatin1String("n/a"), !figure.value);
            }
            QCOMPARE(unknown.join(' '), mode == MeasModeDataThroughput
                                            ? QStringLiteral("maxBufferLevelPercent overflows")
                                            : QStringLiteral("missedTriggersOverlap missedTriggersOverflow"));
        }
    }

    void countersAreThoseOfTheCamera()
    {
        Bench bench(lossyCamera(), byHand(MeasModeStandardAcq));
        const auto counters = [&bench] { return bench.camera->ledger().counters; };
        bench.camera->advance(
            std::chrono::milliseconds(40)); // what is counted before the first frame is not the run's
        QVERIFY(bench.take(1));
        const auto before = counters();
        bench.camera->advance(std::chrono::milliseconds(40));
        QVERIFY(bench.take(30));
        const std::pair<const char*, size_t> figures[] = {{"transportSkips", VN_COUNTER_TRANSPORT_SKIP},
                                                          {"apiSkips", VN_COUNTER_API_SKIP},
                                                          {"missedTriggersOverlap", VN_COUNTER_MISSED_TRG_OVERLAP},
                                                          {"missedTriggersOverflow", VN_COUNTER_MISSED_TRG_OVERFLOW},
                                                          {"overflows", VN_COUNTER_BUFFER_OVERFLOW}};
        for (const auto& [key, selector] : figures)
            QCOMPARE(bench.total(key), double(counters()[selector] - before[selector]));

        bench.camera->lose(); // it comes back with its counters at 0, and somebody starts it
        bench.camera->comeBack();
        QVERIFY(bench.camera->start());
        do // until it has counted further than before
            QVERIFY(bench.take(30));
        while (counters()[VN_COUNTER_TRANSPORT_SKIP] < before[VN_COUNTER_TRANSPORT_SKIP]);
        const CxCameraLineData& record = bench.cameras[0]->record();
        double reset = 0.0;
        for (const auto& [key, selector] : figures)
            reset += figureValue(bench.cameras[0]->wholeRun().figures, key) ? 0.0 : 1.0;
        const auto findings = diagnose(diagnosisInput(record, record.runTotals()));
        QVERIFY(reset > 1.0 && !figureValue(bench.cameras[0]->wholeRun().figures, "transportSkips"));
        QCOMPARE(findings.back().figures[0].value, reset);
        QCOMPARE(QString(findingName(findings.back().kind)), QString("countersReset"));
    }

    /// A line that comes late does not move the ones behind it.
    void linesKeepToTheirGrid()
    {
        Options options = byHand();
        options.interval = std::chrono::milliseconds(100);
        Bench bench({}, options);
        for (const QDeadlineTimer busy(270); !busy.hasExpired();)
            std::this_thread::yield();
        const auto lines = [&bench] { return jsonLines(readFile(bench.text.fileName())); };
        QTRY_VERIFY(lines().size() >= 6);
        double off = 100.0; // the least that a line is behind the grid
        for (const QJsonObject& line : lines())
            off = std::min(off, std::fmod(line.value("elapsedS").toDouble() * 1e3, 100.0));
        QVERIFY2(off < 50.0, qPrintable(QString::number(off)));
    }

    void anEndForLackOfMemoryIsTold()
    {
        Bench bench;
        int nth = 0;
        bench.camera->setHook([&nth](const sim::HostCall& call) {
            if (call.kind == sim::Call::Wait)
                failAllocation(++nth);
            return true;
        });
        bench.camera->setGated(false);
        while (bench.cameras[0]->isRunning())
            std::this_thread::yield();
        bench.stop();
        QVERIFY(bench.cameras[0]->problems().contains("measurement ended for lack of memory"));
    }

    void allLoopsEndTogether()
    {
        Bench bench({}, byHand(), 1);
        bool announced = false;
        bench.camera->setHook([&](const sim::HostCall& call) {
            announced |= call.kind == sim::Call::Stop && bench.cameras[1]->record().stopAnnounced;
            return true;
        });
        bench.stop();
        QVERIFY(announced);
    }

    void theReportHoldsWhatIsKeptAndIsDescribed()
    {
        Options options = byHand();
        options.capacity = 1000; // blocks; some frames of the run
        options.samplePeriod = 8192;
        options.required = 100000; // no link is as fast: every frame overflows the buffer
        sim::CameraScenario scenario;
        scenario.faults.shortData = {1, 1, 0}; // one without a whole block
        Bench bench(scenario, options);
        QVERIFY(bench.take(40));
        bench.stop();
        QCOMPARE(bench.cameras[0]->problems(), QStringList());
        QCOMPARE(bench.total("skippedFrames"), 1.0);
        const double wholeFrames = bench.total("frames") - 1;
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("report.csv"));
        QString error;
        QVERIFY(canWriteReport(file, &error));
        const auto report = writeReport(bench.cameras[0]->record(), file, &error);
        QVERIFY(report.has_value());
        QCOMPARE(double(report->frames + report->droppedFrames), wholeFrames);
        QVERIFY(report->droppedFrames > 0);
        QCOMPARE(bench.total("maxBufferLevelPercent"), 100.0);
        QCOMPARE(bench.total("overflows"), wholeFrames);
        QVERIFY(report->fromUs < report->toUs);
        const QByteArray written = readFile(file);
        const double blocksPerFrame = bench.total("blocks") / wholeFrames;
        QCOMPARE(double(written.count('\n')), 1 + double(report->frames) * (blocksPerFrame - 1));

        QVERIFY(writeDescription(*bench.cameras[0], *report, &error));
        const QJsonObject description = jsonLines(readFile(file + ".json").simplified())[0];
        QString facts = description["camera"]["id"].toString();
        for (const char* key : {"report", "mode", "samplePeriodBytes", "requiredThroughputMBps"})
            facts += ' ' + description[QLatin1String(key)].toVariant().toString();
        QCOMPARE(facts, bench.cameras[0]->info().id + " report.csv throughput 8192 100000");
        QCOMPARE(description["droppedFrames"].toDouble(), double(report->droppedFrames));
        QVERIFY(description["bufferSizeBytes"].toInt() > 0);
        const QString startTime = description["startTime"].toString();
        QVERIFY2(startTime.contains(QRegularExpression("T.*(Z|[+-]\\d\\d:\\d\\d)$")), qPrintable(startTime));
        QStringList headings;
        for (const QJsonValue column : description["columns"].toArray()) {
            QVERIFY(!column["meaning"].toString().isEmpty());
            headings.append(column["heading"].toString());
        }
        QCOMPARE(headings.join(", ").replace("number, ", "number,") + '\n',
                 QString(written.left(written.indexOf('\n') + 1)));

        QVERIFY(!canWriteReport(folder.filePath(QStringLiteral("no/where.csv")), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!writeReport(bench.cameras[0]->record(), QStringLiteral("/dev/full"), &error));
    }

    void theLogIsAppendedTo()
    {
        QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("log.csv"));
        const SxCameraInfo camera{QStringLiteral("A \"B\"\n,"), QStringLiteral("1"), {}};
        const IntervalLine line{
            camera, QDateTime::currentDateTimeUtc(), {1.0, 1.0, throughputFigures({}, 4096, true)}};
        {
            IntervalLog log;
            QVERIFY(log.open(name, MeasModeDataThroughput));
            QVERIFY(log.append(line));
            QCOMPARE(readFile(name).count('\n'), 2); // there at once
        }
        const QByteArray whole = readFile(name);
        QVERIFY(QFile::resize(name, whole.size() - 5)); // a power cut
        {
            IntervalLog log;
            QVERIFY(log.open(name, MeasModeDataThroughput));
            for (const rlim_t room : {rlim_t(5), RLIM_INFINITY}) {
                const FullDisk disk(room == RLIM_INFINITY ? room : rlim_t(readFile(name).size()) + room);
                QCOMPARE(log.append(line), room == RLIM_INFINITY);
            }
            QCOMPARE(log.lines().lostLines(), quint64(1));
            QVERIFY2(log.lines().error().endsWith("File too large"), qPrintable(log.lines().error()));
        }
        QCOMPARE(readFile(name), whole.left(whole.size() - 5) + '\n' + whole.mid(whole.indexOf('\n') + 1));
        QVERIFY(whole.contains("\"A \"\"B\"\" ,\""));
        QVERIFY(whole.contains("n/a"));

        IntervalLog other;
        QVERIFY(!other.open(name, MeasModeStandardAcq));
        QVERIFY(!other.error().isEmpty());
        IntervalLog full;
        QVERIFY(!full.open(QStringLiteral("/dev/full"), MeasModeStandardAcq));
        QCOMPARE(full.error(), QStringLiteral("/dev/full: No space left on device"));
    }
};

QTEST_GUILESS_MAIN(TestMeasureRun)
#include "tst_measurerun.moc"
