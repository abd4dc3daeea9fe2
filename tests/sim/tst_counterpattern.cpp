// SPDX-License-Identifier: GPL-3.0-or-later
// What the words of the counter pattern say, and that the ledger says the same.
#include <QtTest>

#include "HandDrivenCamera.h"
#include "SimTesting.h"
#include "Table.h"

using namespace sim;
using namespace simtest;

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
    void wordsLeaveAtLinkRate_data()
    {
        const Table<double, double, double> row("rate", "gapUs", "driftPpm");
        row("a word every 5.7 ticks", 350.0, 1.0, 0.0);
        row("every other tick", 1000.0, 0.4, 0.0);
        row("several a tick", 5000.0, 0.0, 0.0);
        row("camera clock too fast", 350.0, 1.0, 20000.0);
    }
    void wordsLeaveAtLinkRate()
    {
        QFETCH(double, rate);
        QFETCH(double, gapUs);
        QFETCH(double, driftPpm);
        CameraScenario scenario = smallCamera();
        scenario.link.rate = rate;
        scenario.link.gapUs = gapUs;
        scenario.faults.driftPpm = driftPpm;
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
            QCOMPARE(stampUs(image.descriptor), frame.front() * 4 / 1000);
            QVERIFY(frame.front() >= before);
            before = frame.back();
            for (size_t i = 0; i < frame.size(); ++i) {
                const size_t first = i - i % perPacket;
                const double inPacket = static_cast<double>(frame[i] - frame[first]);
                QVERIFY(qAbs(inPacket - static_cast<double>(i - first) * ticksPerWord) < 1.001);
                if (i == first && i > 0)
                    QVERIFY(qAbs(static_cast<double>(frame[i] - frame[i - 1]) - ticksPerWord - gapTicks) <= 3.0);
            }
            const FrameEntry entry = camera.ledger().frames.at(size_t(n));
            QVERIFY(entry.counterPattern);
            QCOMPARE(entry.number, image.descriptor.frameNumber);
            for (size_t i = 0; i < frame.size(); ++i)
                QCOMPARE(entry.times->written(i), frame[i]);
        }
    }

    void counterMisbehaves_data()
    {
        const Table<quint64, int, int> row("start", "bits", "direction");
        row("wraps at 64 bits", ~0ULL - 20000, 64, 1);
        row("wraps at 16 bits", 0ULL, 16, 1);
        row("stands still", 77ULL, 64, 0);
        row("runs backwards", 1000ULL, 64, -1);
    }
    void counterMisbehaves()
    {
        QFETCH(quint64, start);
        QFETCH(int, bits);
        QFETCH(int, direction);
        CameraScenario scenario = smallCamera();
        HandDrivenCamera good(scenario);
        scenario.faults.tickStart = start;
        scenario.faults.tickBits = bits;
        scenario.faults.tickDirection = direction;
        HandDrivenCamera bad(scenario);
        QVERIFY(prepare(good) && prepare(bad) && good.start() && bad.start());
        const quint64 mask = bits == 64 ? ~0ULL : (1ULL << bits) - 1;
        for (int n = 0; n < 3; ++n) {
            DeviceImage goodImage;
            DeviceImage badImage;
            QVERIFY(good.waitForImage(1s, goodImage) && bad.waitForImage(1s, badImage));
            QCOMPARE(stampUs(badImage.descriptor), stampUs(goodImage.descriptor));
            std::vector<quint64> expected = words(goodImage);
            for (quint64& word : expected)
                word = (direction > 0 ? start + word : direction < 0 ? start - word : start) & mask;
            QCOMPARE(words(badImage), expected);
            QCOMPARE(bad.ledger().frames.back().times->written(100), expected[100]);
        }
    }

    void resetRestartsTicksAndStamps()
    {
        HandDrivenCamera camera(smallCamera());
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
        CameraScenario scenario = smallCamera();
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
        CameraScenario scenario = smallCamera();
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

    void stallsShow()
    {
        CameraScenario scenario = smallCamera();
        scenario.link.stallEveryMs = 10.0;
        scenario.link.stallUs = 500.0;
        HandDrivenCamera camera(scenario);
        QVERIFY(prepare(camera) && camera.start());
        int stalls = 0;
        DeviceImage image;
        for (quint64 last = ~0ULL; last == ~0ULL || last < 995000 * 250ULL;) {
            QVERIFY(camera.waitForImage(1s, image));
            for (const quint64 word : words(image)) {
                stalls += word > last && word - last > 400 * 250;
                last = word;
            }
        }
        QCOMPARE(stalls, 99);
    }
};

QTEST_APPLESS_MAIN(TestCounterPattern)
#include "tst_counterpattern.moc"
