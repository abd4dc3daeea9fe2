// SPDX-License-Identifier: GPL-3.0-or-later
// Possible causes of a run on simulated cameras against what really happened there, by the ledger; time is the model's.
#include <cmath>

#include <QtTest>

#include "MeasurementBench.h"
#include "MeasurementClock.h"
#include "RunDiagnosis.h"

namespace {

using namespace std::chrono_literals;

constexpr qint32 period = 4096;
constexpr double tickUs = 0.004;
constexpr double required = 380.0; ///< as every camera here tells it

/// A run, and what a diagnosis of it has to name.
struct Run
{
    enum Event
    {
        None,
        HostIsLate, ///< the host fetches nothing for a while
        Neighbour,  ///< another camera sends all that it can on the same link
    };

    qint32 mode;
    std::function<void(sim::CameraScenario&)> change; ///< of a camera that is well
    const char* causes;
    Event event = None;
    qint32 capacity = 1000000; ///< samples
    int images = 400;
};

QStringList namesOf(const std::vector<Finding>& findings)
{
    QStringList names;
    for (const Finding& finding : findings)
        names.append(QString::fromLatin1(findingName(finding.kind)));
    return names;
}

/// How the link really gave a frame's blocks, and what a buffer that fills evenly would have held.
struct Pace
{
    explicit Pace(const sim::WordTimes& times)
    {
        const quint64 step = period / 8;
        double level = 0.0;
        quint64 word = step;
        for (; word < times.words; word += step) {
            const double us = static_cast<double>(times.tick(word) - times.tick(word - step)) * tickUs;
            slowestUs = std::max(slowestUs, us);
            level = std::max(0.0, level + us * required - period);
            highest = std::max(highest, level);
        }
        const double wholeUs = static_cast<double>(times.tick(word - step) - times.tick(0)) * tickUs;
        throughput = static_cast<double>((word - step) * 8) / wholeUs;
    }

    double slowestUs = 0.0;
    double highest = 0.0; ///< bytes
    double throughput;    ///< MB/s
};

/// The causes as the ledger knows them.
QStringList truth(const Run& run, const sim::Ledger& ledger, const sim::CameraScenario& scenario)
{
    const auto any = [&ledger](sim::Fate fate) { return ledger.total(fate).frames > 0; };
    QStringList causes;
    const auto add = [&causes](bool is, const char* name) {
        if (is)
            causes.append(QString::fromLatin1(name));
    };
    add(!scenario.faults.noImage.empty() && scenario.faults.noImage[0].forMs > 1000.0, "silence");
    if (run.mode == MeasModeStandardAcq) {
        const bool full = ledger.counters[VN_COUNTER_MISSED_TRG_OVERFLOW] > 0 || any(sim::Fate::BufferLost);
        add(full && run.event == Run::Neighbour, "sharedLink");
        add(any(sim::Fate::TransportLost), "lostOnLink");
        add(any(sim::Fate::ApiLost), "fetchedTooLate");
        add(ledger.counters[VN_COUNTER_MISSED_TRG_OVERLAP] > 0, "triggersTooFast");
        add(full, "triggersFullBuffer");
        return causes;
    }
    double throughputs = 0.0;
    double slowestUs = 0.0;
    double highest = 0.0;
    quint64 frames = 0;
    for (const sim::FrameEntry& frame : ledger.frames) {
        if (frame.fate != sim::Fate::Received)
            continue;
        const Pace pace(*frame.times);
        throughputs += pace.throughput;
        slowestUs = std::max(slowestUs, pace.slowestUs);
        highest = std::max(highest, pace.highest);
        ++frames;
    }
    const bool enough = throughputs / static_cast<double>(frames) >= required;
    const bool held = highest <= scenario.bufferBytes;
    add(!enough, run.event == Run::Neighbour ? "sharedLink" : "linkTooSlow");
    add(enough && held && slowestUs > 2.0 * period / required && highest > 0.01 * scenario.bufferBytes, "stallsHeld");
    add(enough && !held, "stallsNotHeld");
    add(any(sim::Fate::TransportLost) || any(sim::Fate::ApiLost), "framesMissing");
    add(std::abs(scenario.faults.driftPpm) > 100.0, "clockDrift");
    const quint64 blocks = ledger.total(sim::Fate::Received).bytes / period;
    add(!causes.empty() && blocks > static_cast<quint64>(run.capacity), "historyTooShort");
    return causes;
}

} // namespace

class TestDiagnosis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setMeasurementClock({}); }

    void oneIsNoPlural()
    {
        DiagnosisInput input;
        QStringList said;
        for (input.run.missingFrames = 1; input.run.missingFrames < 3; ++input.run.missingFrames)
            said << diagnose(input)[0].sentence.section('.', 0, 0);
        QCOMPARE(said.join(", "), QString("One frame is missing, 2 frames are missing"));
    }

    /// Of each cause on this host one that has it, and one that comes near to it.
    void hostCausesNeedSomethingToExplain()
    {
        using Change = std::function<void(DiagnosisInput&, HostFigures&)>;
        const auto set = [](double HostFigures::*lost, std::optional<double> HostFigures::*one = nullptr,
                            double first = 0.0, std::optional<double> HostFigures::*other = nullptr,
                            double second = 0.0) -> Change {
            return [=](DiagnosisInput& /*input*/, HostFigures& host) {
                host.*lost = 3.0;
                if (one)
                    host.*one = first;
                if (other)
                    host.*other = second;
            };
        };
        using Host = HostFigures;
        const auto shared = [](double lost, int cameras, std::optional<double> rate) -> Change {
            return [=](DiagnosisInput& input, HostFigures& host) {
                host.lostOnTheWay = lost;
                input.link = LinkUse{"eth0", rate, 90.0, cameras};
            };
        };
        const auto grain = [](double bytes, double packet, bool min = true) -> Change {
            return [=](DiagnosisInput& input, HostFigures& host) {
                host.grainBytes = bytes;
                host.packetBytes = packet;
                if (min)
                    input.run.minThroughput = 10.0;
            };
        };
        const auto usb = [](double limit, quint64 frames, quint64 missing) -> Change {
            return [=](DiagnosisInput& input, HostFigures& host) {
                host.usbLimitBytes = limit;
                host.usbBufferBytes = 2e7;
                input.run.frames = frames;
                input.run.missingFrames = missing;
            };
        };
        const std::vector<std::pair<Change, const char*>> rows{
            {[](DiagnosisInput&, HostFigures&) {}, ""},
            {set(&Host::lostOnTheWay, &Host::packetBytes, 1500, &Host::interfaceMtu, 1500), "lostOnLink"},
            {set(&Host::lostOnTheWay, &Host::packetBytes, 1501, &Host::interfaceMtu, 1500),
             "lostOnLink packetsTooLarge"},
            {set(&Host::lostNoBuffer, &Host::packetBytes, 1501, &Host::interfaceMtu, 1500), "fetchedTooLate"},
            {[](DiagnosisInput& input, HostFigures& host) {
                 input.run.frames = 0;
                 host.packetBytes = 9000;
                 host.interfaceMtu = 1500;
             },
             "packetsTooLarge"},
            {set(&Host::lostOnTheWay, &Host::interfaceDrops, 1), "lostOnLink interfaceDrops"},
            {set(&Host::lostOnTheWay, &Host::interfaceDrops, 0), "lostOnLink"},
            {set(&Host::lostInSocket, &Host::interfaceDrops, 1), "socketFull"},
            {shared(1, 2, 125.0), "lostOnLink sharedInterface"},
            {shared(1, 2, std::nullopt), "lostOnLink sharedInterface"},
            {shared(1, 2, 1250.0), "lostOnLink"}, // has room
            {shared(1, 1, 125.0), "lostOnLink"},
            {shared(0, 2, 125.0), ""},
            {set(&Host::lostInSocket, &Host::processorsBusyPercent, 95), "socketFull processorsBusy"},
            {set(&Host::lostInSocket, &Host::processorsBusyPercent, 85), "socketFull"},
            {set(&Host::lostOnTheWay, &Host::processorsBusyPercent, 95), "lostOnLink"},
            {set(&Host::lostLate), "packetsLate"},
            {set(&Host::lostNotAttributable), "lostHere"},
            {set(&Host::lostUnknown), "lostUnseen"},
            {usb(1e7, 5, 1), "usbMemory"},
            {usb(1e7, 0, 0), "usbMemory"},
            {usb(1e7, 5, 0), ""},
            {usb(2e7, 5, 1), ""},
            {grain(9000, 1400), "coarseArrival"},
            {grain(1400, 1400), "coarseArrival"},
            {grain(1024, 1024), ""},
            {grain(9000, 1400, false), ""},
        };
        for (std::size_t i = 0; i < rows.size(); ++i) {
            DiagnosisInput input;
            input.run.frames = 5;
            input.samplePeriod = 4096;
            input.host.emplace();
            rows[i].first(input, *input.host);
            QCOMPARE(QString("%1: %2").arg(i).arg(namesOf(diagnose(input)).join(' ')),
                     QString("%1: %2").arg(i).arg(rows[i].second));
        }
        for (const double frame : {999.0, 1001.0}) {
            DiagnosisInput input;
            input.host.emplace();
            set(&Host::lostInSocket, &Host::socketLimitBytes, 1000, &Host::frameBytes, frame)(input, *input.host);
            QCOMPARE(diagnose(input)[0].sentence.contains("rmem_max=2002"), frame > 1000.0);
        }
    }

    /// Gaps in ms, the last one up to the end.
    void slowIsNotSilent()
    {
        const std::vector<qint64> tenMs(200, 10);
        const auto with = [](std::vector<qint64> gaps, std::size_t at, qint64 hole) {
            gaps.insert(gaps.begin() + qint64(at), hole);
            return gaps;
        };
        const std::tuple<std::vector<qint64>, bool, qint64> rows[] = {
            {{2500, 2500, 2501, 2499, 2500, 1500}, false, 5000},
            {{10000, 10000, 10001, 9999, 10000, 1500}, false, 20000},
            {{1001, 1002, 999, 1001, 1002, 998, 1001, 1000, 1002, 1001, 500}, false, 2003},
            {{1800, 900, 2400, 1300, 700, 2100, 900}, false, 1800}, // triggered
            {with(tenMs, 0, 12000), true, 12000},
            {with(tenMs, 3, 12000), true, 12000},
            {with(tenMs, 100, 12000), true, 12000},
            {with(with(tenMs, 190, 12000), 100, 2000), true, 14000},
            {{10, 10, 14000}, true, 14000},
            {{14000}, true, 14000}};
        for (const auto& [gaps, silent, silentMs] : rows) {
            RunTotalsCounter counter;
            counter.begin(0);
            qint64 nowUs = 0;
            for (std::size_t i = 0; i < gaps.size(); ++i) {
                nowUs += gaps[i] * 1000;
                if (i + 1 < gaps.size())
                    counter.addFrame(quint32(i), 1, FrameFigures(), false, nowUs);
            }
            counter.end(nowUs);
            DiagnosisInput input;
            input.run = counter.run(nowUs);
            QCOMPARE(input.run.silentUs / 1000, silentMs);
            QCOMPARE(namesOf(diagnose(input)), silent ? QStringList("silence") : QStringList());
        }
    }

    /// Of each cause a run that has it, and one that comes near to it and has none.
    void causesAreTrue()
    {
        constexpr qint32 blocks = MeasModeDataThroughput;
        constexpr qint32 counters = MeasModeStandardAcq;
        const auto link = [](double rate, double stallUs) {
            return [=](sim::CameraScenario& camera) {
                camera.link.rate = rate;
                camera.link.stallEveryMs = 5.0;
                camera.link.stallUs = stallUs;
            };
        };
        const auto sensor = [](double rateHz, double exposureUs, quint32 bufferBytes = 1 << 20) {
            return [=](sim::CameraScenario& camera) {
                camera.sensor.rateHz = rateHz;
                camera.sensor.exposureUs = exposureUs;
                camera.sensor.dataRate = 2000.0;
                camera.bufferBytes = bufferBytes;
            };
        };
        const auto loss = [](double share) {
            return [=](sim::CameraScenario& camera) { camera.link.frameLoss = share; };
        };
        const auto drift = [](double ppm) {
            return [=](sim::CameraScenario& camera) {
                camera.faults.driftPpm = ppm;
                camera.link.frameGapUs = 0.9e6;
            };
        };
        const auto silence = [](double ms) {
            return [=](sim::CameraScenario& camera) { camera.faults.noImage = {{20.0, ms}}; };
        };
        const auto smallBuffer = [&link](double stallUs) {
            return [=](sim::CameraScenario& camera) {
                link(500.0, stallUs)(camera);
                camera.bufferBytes = 1 << 16;
            };
        };
        const std::vector<Run> runs{
            {blocks, link(300.0, 0.0), "linkTooSlow"},
            {blocks, link(390.0, 0.0), ""},
            {blocks, link(500.0, 300.0), "stallsHeld"},
            {blocks, link(500.0, 100.0), ""},
            {blocks, smallBuffer(8.0), ""},
            {blocks, smallBuffer(200.0), "stallsNotHeld"},
            {blocks, smallBuffer(150.0), "stallsHeld"},
            {blocks, link(400.0, 0.0), "sharedLink", Run::Neighbour},
            {blocks, link(1000.0, 0.0), "", Run::Neighbour},
            {blocks, loss(0.1), "framesMissing"},
            {blocks, drift(150.0), "clockDrift", Run::None, 1000000, 800},
            {blocks, drift(-90.0), "", Run::None, 1000000, 800},
            {blocks, link(500.0, 300.0), "stallsHeld historyTooShort", Run::None, 1000},
            {blocks, link(500.0, 0.0), "", Run::None, 1000},
            {blocks, [](sim::CameraScenario& slow) { slow.link.frameGapUs = 2e6; }, ""},
            {blocks, silence(1200.0), "silence"},
            {blocks, silence(800.0), ""},
            {counters, silence(1200.0), "silence"},
            {counters, loss(0.1), "lostOnLink"},
            {counters, sensor(1000.0, 100.0), "fetchedTooLate", Run::HostIsLate},
            {counters, sensor(1000.0, 900.0), ""},
            {counters, sensor(1000.0, 1100.0), "triggersTooFast"},
            {counters, sensor(7000.0, 100.0), "triggersFullBuffer"},
            {counters, sensor(5000.0, 100.0), ""},
            {counters, sensor(5000.0, 100.0), "sharedLink triggersFullBuffer", Run::Neighbour},
            {counters, sensor(2000.0, 100.0), "", Run::Neighbour},
        };
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const Run& run = runs[i];
            sim::CameraScenario scenario = smallCamera(256);
            scenario.link.packetBytes = 8192; // a stall seldom falls between frames, where no block is slow
            scenario.link.gapUs = 0.1;
            run.change(scenario);
            const auto shared = std::make_shared<sim::SharedLink>(scenario.link);
            if (run.event == Run::Neighbour)
                shared->setDemand(&run, scenario.link.rate);
            MeasurementBench bench(scenario, run.mode, shared);
            const auto camera = bench.camera;
            setMeasurementClock([camera] { return 1h / 1us + camera->now() / 1ms * 1000; });
            QVERIFY(bench.measure(run.images / 2, period, run.capacity));
            if (run.event == Run::HostIsLate)
                camera->advance(50ms);
            QVERIFY(bench.take(run.images / 2));
            const RunTotals totals = bench.data.runTotals();
            DiagnosisInput input = diagnosisInput(bench.data, totals);
            const double own = totals.deliveredThroughput().value();
            const double other = run.event == Run::Neighbour ? shared->share(&run) : 0.0;
            input.link = LinkUse{"hub", scenario.link.rate, own + other, 2, own, std::max(own, other)};
            const auto findings = diagnose(input);
            const sim::Ledger ledger = camera->ledger();
            bench.stop();
            const QString expected = QString("%1: %2").arg(i).arg(run.causes);
            QCOMPARE(QString("%1: %2").arg(i).arg(namesOf(findings).join(' ')), expected);
            QCOMPARE(QString("%1: %2").arg(i).arg(truth(run, ledger, scenario).join(' ')), expected);
            for (const Finding& finding : findings)
                QVERIFY2(!finding.sentence.contains("%1") && !finding.figures.empty(), qPrintable(finding.sentence));
            CameraRegistry::instance().removeAllDevices();
        }
    }
};

QTEST_GUILESS_MAIN(TestDiagnosis)
#include "tst_diagnosis.moc"
