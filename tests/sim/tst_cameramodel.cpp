// SPDX-License-Identifier: GPL-3.0-or-later
// Laws of the model: nothing gets lost uncounted, and losses happen where arithmetic by hand says they do.
#include <QtTest>

#include <numeric>

#include "Scenarios.h"
#include "sim/CameraModel.h"
#include "sim/ModelClock.h"

using namespace sim;

namespace {

constexpr qint64 ms = 1000000;

/// A sensor of 1 MB frames, read out in 10 ms, on a link of half its rate, with a buffer of 3.3 MB.
CameraScenario fastSensor()
{
    CameraScenario camera;
    camera.sensor = {1000, 1000, 8, 100.0, 0.0, 0.0, 0.0, 100.0};
    camera.link.rate = 50.0;
    camera.link.packetBytes = 8000;
    camera.link.gapUs = 0.0;
    camera.bufferBytes = 3300000;
    camera.queueFrames = 1000;
    return camera;
}

void setPattern(CameraModel& model)
{
    model.set(QStringLiteral("imgdataformat"), 7, 0);
    model.set(QStringLiteral("test_pattern_generator_selector"), 1, 0);
    model.set(QStringLiteral("test_pattern"), 11, 0);
}

std::vector<quint64> numbersOf(const Ledger& ledger, Fate fate)
{
    std::vector<quint64> numbers;
    for (const FrameEntry& frame : ledger.frames) {
        if (frame.fate == fate)
            numbers.push_back(frame.number);
    }
    return numbers;
}

Ledger ledgerAfter(const CameraScenario& camera, int milliseconds, bool pattern = false)
{
    CameraModel model(camera, nullptr, 100000);
    if (pattern)
        setPattern(model);
    model.start(0);
    model.advanceTo(milliseconds * ms);
    return model.ledger();
}

} // namespace

class TestCameraModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void silenceEndsWithItsWindow()
    {
        for (const bool pattern : {false, true}) {
            CameraScenario scenario = packetCamera();
            scenario.link.frameGapUs = 9e3;
            scenario.faults.noImage = {{20e3, 7e3}, {11e3, 3e3}, {2e3, 1e3}, {10e3, 2e3}, {5e3, 2e3}};
            CameraModel model(scenario, nullptr, 100000);
            if (pattern)
                setPattern(model);
            model.start(0);
            ModelClock clock; // as the camera's thread has it: asked when something is due, a little late
            qint64 realNs = 0;
            for (qint64 now = 0; now < 30000 * ms; now = clock.at(realNs, model.nextEventNs()), model.advanceTo(now))
                realNs = clock.realNs(model.nextEventNs().value()) + 100;
            QCOMPARE(clock.realNs(0), qint64(0)); // no time was left out

            QVector<qint64> silences;
            qint64 before = 0;
            const auto beginNs = [](const FrameEntry& frame) {
                return static_cast<qint64>(frame.times->tick(0) * 4);
            };
            const qint64 offsetNs = beginNs(model.ledger().frames.front());
            for (const FrameEntry& frame : model.ledger().frames) {
                const qint64 begin = beginNs(frame) - offsetNs;
                if (begin - before > 500 * ms) // from the last frame, which began at most a period earlier
                    silences << (before + 10 * ms) / (1000 * ms) << begin;
                before = begin;
            }
            QCOMPARE(silences, (QVector<qint64>{2, 3000 * ms, 5, 7000 * ms, 10, 14000 * ms, 20, 27000 * ms}));

            // Of what is due, half a second is made up for.
            const qint64 next = model.nextEventNs().value();
            QCOMPARE(clock.at(realNs + 3000 * ms, next), next + ModelClock::catchUpLimitNs);
        }
    }

    void nothingIsLostUncounted()
    {
        // Milliseconds from fetch to fetch: the host keeps up, or does not.
        for (const auto& [pattern, fetchEvery] : {std::pair(false, 1), {false, 40}, {true, 1}, {true, 40}}) {
            CameraModel model(lossyCamera(), nullptr, 100000);
            if (pattern)
                setPattern(model);

            quint64 fetchedBytes = 0;
            std::vector<quint64> fetched;
            size_t most = 0; // at a time
            model.start(0);
            for (int now = 0; now < 2000; ++now) {
                model.advanceTo(now * ms);
                const size_t before = fetched.size();
                while (now % fetchEvery == 0 && model.hasFrame()) {
                    const Frame frame = model.takeFrame();
                    fetchedBytes += frame.linkBytes;
                    fetched.push_back(frame.number);
                }
                most = std::max(most, fetched.size() - before);
            }
            model.stop();
            QCOMPARE(most == lossyCamera().queueFrames, fetchEvery > 1);

            const Ledger& ledger = model.ledger();
            QVERIFY(ledger.produced.frames > 200);
            QCOMPARE(quint64(ledger.frames.size()), ledger.produced.frames);
            QCOMPARE(ledger.total(Fate::UnderWay).bytes, quint64(0));
            QCOMPARE(ledger.total(Fate::Received).bytes, fetchedBytes);
            QCOMPARE(std::accumulate(ledger.fates.begin(), ledger.fates.end(), quint64(0),
                                     [](quint64 sum, const Ledger::Total& fate) { return sum + fate.bytes; }),
                     ledger.produced.bytes);
            for (const auto& [counter, fate] : {std::pair(VN_COUNTER_TRANSFERRED, Fate::Received),
                                                {VN_COUNTER_TRANSPORT_SKIP, Fate::TransportLost},
                                                {VN_COUNTER_API_SKIP, Fate::ApiLost},
                                                {VN_COUNTER_BUFFER_OVERFLOW, Fate::BufferLost}})
                QCOMPARE(quint64(ledger.counters[counter]), ledger.total(fate).frames);
            QByteArray happened; // by counter; the pattern's generator waits for the link
            for (const qint32 counter : ledger.counters)
                happened += counter > 0 ? '1' : '0';
            QCOMPARE(happened, QByteArray(fetchEvery > 1 ? "11" : "10") + (pattern ? "1000" : "1111"));

            // Losses, and only they, leave gaps in the numbers.
            QCOMPARE(numbersOf(ledger, Fate::Received), fetched);
            for (size_t i = 0; i < ledger.frames.size(); ++i)
                QCOMPARE(quint64(ledger.frames[i].number), quint64(i));
        }
    }

    void withoutFrameBufferTwoPacketsFit()
    {
        // Ten packets, sent at 95 of 100 MB/s, need the room of two and a half.
        CameraScenario camera = fastSensor();
        camera.sensor = {80, 1000, 8, 100.0, 0.0, 0.0, 0.0, 100.0};
        camera.link.rate = 95.0;
        for (const auto& [packets, mode, frames] : {std::tuple{2, 10, 10}, {3, 10, 0}, {99, 9, 10}}) {
            camera.bufferBytes = quint32(packets) * camera.link.packetBytes;
            CameraModel model(camera, nullptr, 1000);
            QVERIFY(model.set("dp_param_selector", 6, 0) && model.set("dp_param_value", mode, 0));
            model.start(0);
            model.advanceTo(99 * ms);
            QCOMPARE(model.ledger().counters[VN_COUNTER_BUFFER_OVERFLOW], frames);
        }
    }

    void bufferOverflowsWhereItMust()
    {
        // Each frame leaves half of itself behind: after six there are 3 MB in the buffer and the seventh (6) does not
        // fit. While it is thrown away half a megabyte drains, so the next fits, and from there on every second is lost.
        const Ledger ledger = ledgerAfter(fastSensor(), 999);
        std::vector<quint64> everySecond;
        for (quint64 number = 6; number < 100; number += 2)
            everySecond.push_back(number);
        QCOMPARE(numbersOf(ledger, Fate::BufferLost), everySecond);
        QCOMPARE(ledger.counters[VN_COUNTER_MISSED_TRG_OVERFLOW], 0);

        // The first frame leaves as a whole at link rate: 125 packets of 160 us, the first of them read out at 80 us.
        QVERIFY(qAbs(ledger.frames.front().endNs - 20080000) < 1000);
    }

    void triggersAreMissedWhereTheyMust()
    {
        // A trigger every 5 ms. With an exposure of 1 ms and a readout of 8 ms the one at 5 would be exposed before the
        // readout has ended; with 2 ms and 4.5 ms its exposure ends behind the readout.
        CameraScenario camera = fastSensor();
        camera.link.rate = 400.0;
        for (const auto& [height, exposureUs, missed] : {std::tuple(800U, 1000.0, 10), {450U, 2000.0, 0}}) {
            camera.sensor = {1000, height, 8, 200.0, 0.0, exposureUs, 0.0, 100.0};
            const Ledger ledger = ledgerAfter(camera, 99);
            QCOMPARE(ledger.counters[VN_COUNTER_MISSED_TRG_OVERLAP], missed);
            QCOMPARE(ledger.produced.frames, quint64(20 - missed));
        }

        // Half a frame more is in the buffer after each frame. A trigger needs room for half the buffer: of 1.4 MB the
        // third one finds 0.4 MB and every other from there, of 1 MB the second finds 0.5 MB less a packet under way.
        camera = fastSensor();
        camera.triggerReserveBytes = 1000000; // more than half the buffer counts as half
        for (const auto& [bufferBytes, missed] : {std::pair(1400000, 2), {1000000, 3}}) {
            camera.bufferBytes = quint32(bufferBytes);
            QCOMPARE(ledgerAfter(camera, 59).counters[VN_COUNTER_MISSED_TRG_OVERFLOW], missed);
        }
    }

    void stallsShow()
    {
        CameraScenario camera = packetCamera();
        camera.link.stallEveryMs = 10.0;
        camera.link.stallUs = 500.0;
        const Ledger ledger = ledgerAfter(camera, 995, true);
        int stalls = 0;
        quint64 last = ~0ULL; // tick
        for (const FrameEntry& frame : ledger.frames) {
            for (const quint64 tick : frame.times->packetTicks) {
                stalls += tick > last && tick - last > 400 * 250;
                last = tick;
            }
        }
        QCOMPARE(stalls, 99);
    }

    void equalSeedsGiveEqualRuns()
    {
        const auto run = [](quint64 seed) {
            CameraScenario camera = lossyCamera();
            camera.seed = seed;
            const Ledger ledger = ledgerAfter(camera, 500);
            std::vector<qint64> ends;
            for (const FrameEntry& frame : ledger.frames)
                ends.push_back(frame.endNs * 10 + static_cast<int>(frame.fate));
            return ends;
        };
        QCOMPARE(run(7), run(7));
        QVERIFY(run(7) != run(8));
    }

    void camerasOnALinkSlowEachOther()
    {
        SharedLink link(LinkScenario{});
        const int cameras[4] = {};
        const auto firstShare = [&](int camera, double demand) {
            link.setDemand(&cameras[camera], demand);
            return link.share(&cameras[0]);
        };
        QCOMPARE(firstShare(0, 400.0), 400.0);
        QCOMPARE(firstShare(1, 100.0), 300.0); // it wants less than its half: the rest is the first one's
        QCOMPARE(link.share(&cameras[1]), 200.0);
        firstShare(2, 400.0);
        QCOMPARE(firstShare(3, 30.0), 135.0);
        QCOMPARE(firstShare(2, 0.0), 270.0);
    }
};

QTEST_APPLESS_MAIN(TestCameraModel)
#include "tst_cameramodel.moc"
