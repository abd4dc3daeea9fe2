// SPDX-License-Identifier: GPL-3.0-or-later
// What the words of the counter pattern say, and that the ledger says the same.
#include <QtTest>

#include "HandDrivenCamera.h"
#include "Scenarios.h"

using namespace sim;
using namespace std::chrono_literals;

namespace {

std::vector<quint64> words(const DeviceImage& image)
{
    const auto* data = static_cast<const quint64*>(image.descriptor.data);
    return {data, data + image.descriptor.dataBytes / 8};
}

quint64 stampUs(const VN_IMG& image)
{
    return image.tsSec * 1000000ULL + image.tsUSec;
}

} // namespace

class TestCounterPattern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsLeaveAtLinkRate()
    {
        struct Row
        {
            double rate, gapUs, driftPpm;
            quint64 start = 0;
            int bits = 64;
            int direction = 1;
        };
        // A word every 5.7 ticks, every other tick and several a tick; a clock too fast; a counter that wraps at 64 and
        // at 16 bits, that stands still and that runs backwards.
        for (const auto& [rate, gapUs, driftPpm, start, bits, direction] :
             {Row{350.0, 1.0, 0.0}, Row{1000.0, 0.4, 0.0}, Row{5000.0, 0.0, 0.0}, Row{350.0, 1.0, 20000.0},
              Row{350.0, 1.0, 0.0, ~0ULL - 20000}, Row{350.0, 1.0, 0.0, 0, 16}, Row{350.0, 1.0, 0.0, 77, 64, 0},
              Row{350.0, 1.0, 0.0, 1000, 64, -1}}) {
            CameraScenario scenario = packetCamera();
            scenario.link.rate = rate;
            scenario.link.gapUs = gapUs;
            scenario.faults.driftPpm = driftPpm;
            scenario.faults.tickStart = start;
            scenario.faults.tickBits = bits;
            scenario.faults.tickDirection = direction;
            HandDrivenCamera camera(scenario);
            QVERIFY(prepare(camera) && camera.start());
            const double clock = 1.0 + driftPpm * 1e-6;
            const double ticksPerWord = 8.0 / rate * 250.0 * clock;
            const double gapTicks = gapUs * 250.0 * clock;
            const size_t perPacket = scenario.link.packetBytes / 8;
            quint64 before = 0;
            for (int n = 0; n < 20; ++n) {
                DeviceImage image;
                QVERIFY(camera.waitForImage(5s, image));
                const std::vector<quint64> frame = words(image);
                QCOMPARE(frame.size(), size_t(256 * 128 * 2 / 8));
                const FrameEntry entry = camera.ledger().frames.at(size_t(n));
                QVERIFY(entry.counterPattern && entry.number == image.descriptor.frameNumber);
                QCOMPARE(stampUs(image.descriptor), entry.times->tick(0) * 4 / 1000);
                for (size_t i = 0; i < frame.size(); ++i) {
                    const quint64 tick = entry.times->tick(i);
                    const size_t first = i - i % perPacket;
                    const auto inPacket = static_cast<double>(tick - entry.times->tick(first));
                    QVERIFY(qAbs(inPacket - static_cast<double>(i - first) * ticksPerWord) < 1.001);
                    if (i == first && i > 0)
                        QVERIFY(qAbs(static_cast<double>(tick - before) - ticksPerWord - gapTicks) <= 3.0);
                    QVERIFY(tick >= before);
                    before = tick;
                    QCOMPARE(frame[i], (start + static_cast<quint64>(direction) * tick) & (~0ULL >> (64 - bits)));
                    QCOMPARE(entry.times->written(i), frame[i]);
                }
            }
        }
    }

    void resetRestartsTicksAndStamps()
    {
        HandDrivenCamera camera(packetCamera());
        QVERIFY(prepare(camera));
        const auto firstStamp = [&camera] {
            DeviceImage image;
            return camera.start() && camera.waitForImage(1s, image) ? stampUs(image.descriptor) : ~0ULL;
        };
        for (const int mode : {0, 1}) { // at once, or with each acquisition
            camera.advance(3s);
            QVERIFY(firstStamp() >= 3000000);
            QVERIFY(camera.setInt("ts_rst_mode", mode) && camera.setInt("ts_rst_source", 19));
            QVERIFY(firstStamp() < 1000);
        }
        camera.advance(3s);
        QVERIFY(firstStamp() < 1000);
    }

    /// Nothing of an acquisition is left for the next one.
    void acquisitionsAreAlike()
    {
        CameraScenario scenario = packetCamera();
        scenario.link.stallEveryMs = 3.0;
        scenario.link.stallUs = 500.0;
        scenario.faults.numberJump = {2, 1, 0};
        scenario.faults.numberJumpBy = 5;
        scenario.faults.stampJump = {3, 1, 0};
        scenario.faults.stampJumpMs = 70.0;
        HandDrivenCamera camera(scenario);
        QVERIFY(prepare(camera) && camera.setInt("ts_rst_mode", 1) && camera.setInt("ts_rst_source", 19));
        const auto run = [&camera] {
            std::vector<std::vector<quint64>> frames;
            camera.advance(7ms); // no whole number of stalls
            camera.start();
            for (DeviceImage image; frames.size() < 50 && camera.waitForImage(1s, image);) {
                frames.push_back(words(image));
                frames.back().insert(frames.back().end(), {image.descriptor.frameNumber, stampUs(image.descriptor)});
            }
            return frames;
        };
        const auto first = run();
        QCOMPARE(first.size(), size_t(50));
        QVERIFY(run() == first);
    }

    void linkIsShared()
    {
        CameraScenario scenario = packetCamera();
        scenario.link.gapUs = 0.0;
        const auto link = std::make_shared<SharedLink>(scenario.link);
        HandDrivenCamera one(scenario, link);
        HandDrivenCamera other(scenario, link);
        const auto runsAt = [&one](double expected) {
            DeviceImage image;
            one.waitForImage(1s, image); // planned before
            one.waitForImage(1s, image);
            const std::vector<quint64> frame = words(image);
            const auto ticks = static_cast<double>(frame.back() - frame.front());
            return qAbs(static_cast<double>(frame.size() - 1) * 8.0 * 250.0 / ticks - expected) < 2.0;
        };
        QVERIFY(prepare(one) && prepare(other) && one.start() && runsAt(350.0));
        // Each packet waits for one of the other camera, except after the last.
        QVERIFY(other.start() && runsAt(350.0 * 16 / 31));
        QVERIFY(other.stop() && runsAt(350.0));
    }
};

QTEST_APPLESS_MAIN(TestCounterPattern)
#include "tst_counterpattern.moc"
