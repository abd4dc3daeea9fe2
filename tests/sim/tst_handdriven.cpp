// SPDX-License-Identifier: GPL-3.0-or-later
// The drive for tests: model time, gated waits, the hook.
#include <QtTest>

#include <atomic>
#include <thread>

#include "sim/HandDrivenCamera.h"
#include "SimTesting.h"

using namespace sim;
using namespace simtest;

class TestHandDriven : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitMovesTime();
    void framesThatNobodyFetchesAreSkipped();
    void gateHoldsWaits();
    void blockedWaitEnds_data();
    void blockedWaitEnds();
    void hookSeesEveryCall();
    void manyCamerasAndCycles();
};

void TestHandDriven::waitMovesTime()
{
    CameraScenario scenario = smallCamera();
    scenario.sensor.rateHz = 10.0;
    HandDrivenCamera camera(scenario);
    DeviceImage image;
    QVERIFY(!camera.waitForImage(5s, image)); // not acquiring
    QCOMPARE(camera.now(), 0ns);
    QVERIFY(camera.start());
    QVERIFY(camera.waitForImage(5s, image));
    QVERIFY(camera.now() < 1ms);
    const auto before = camera.now();
    QVERIFY(!camera.waitForImage(50ms, image));
    QCOMPARE(camera.now(), before + 50ms);
    QVERIFY(camera.waitForImage(50ms, image));
    QCOMPARE(camera.now(), before + 100ms);
}

void TestHandDriven::framesThatNobodyFetchesAreSkipped()
{
    CameraScenario scenario = smallCamera();
    scenario.queueFrames = 3;
    HandDrivenCamera camera(scenario);
    QVERIFY(camera.start());
    camera.advance(995ms); // 100 frames
    int skipped = 0;
    QVERIFY(camera.setInt("counter_selector", VN_COUNTER_API_SKIP) && camera.getInt("counter_value", skipped));
    QCOMPARE(skipped, 97);
    DeviceImage image;
    QVERIFY(camera.waitForImage(0ms, image));
    QCOMPARE(image.descriptor.frameNumber, 97u);
}

void TestHandDriven::gateHoldsWaits()
{
    HandDrivenCamera camera(smallCamera());
    camera.setGated(true);
    QVERIFY(camera.start());
    std::atomic<int> images{0};
    std::thread host([&] {
        DeviceImage image;
        while (camera.waitForImage(5s, image))
            ++images;
    });
    for (int expected = 0; expected < 12; expected += 4) {
        QVERIFY(camera.settle());
        QCOMPARE(images.load(), expected);
        camera.release(4);
    }
    QVERIFY(camera.settle());
    QVERIFY(camera.stop());
    host.join();
    QCOMPARE(images.load(), 12);
}

void TestHandDriven::blockedWaitEnds_data()
{
    QTest::addColumn<QString>("by");
    for (const char* by : {"stop", "return"})
        QTest::newRow(by) << QString(by);
}

void TestHandDriven::blockedWaitEnds()
{
    QFETCH(QString, by);
    HandDrivenCamera camera(smallCamera());
    camera.setGated(true);
    QVERIFY(camera.start());
    std::atomic<int> ended{0};
    std::vector<std::thread> hosts;
    for (int i = 0; i < 3; ++i) {
        hosts.emplace_back([&] {
            DeviceImage image;
            if (!camera.waitForImage(5s, image))
                ++ended;
        });
    }
    QVERIFY(camera.settle());
    if (by == "return") {
        camera.lose();
        camera.comeBack();
        camera.setGated(false); // whoever came later: its wait lasts the limit
    } else {
        camera.stop();
    }
    for (std::thread& host : hosts)
        host.join();
    QCOMPARE(ended.load(), 3);
}

void TestHandDriven::hookSeesEveryCall()
{
    HandDrivenCamera camera(smallCamera());
    QByteArray calls;
    bool allow = true;
    camera.setHook([&](const HostCall& call) {
        calls +=
            QByteArray::number(static_cast<int>(call.kind)) + call.parameter + QByteArray::number(call.value) + ' ';
        return camera.parameter("LUTEnable") == 0 && allow; // reaches the model: no lock is held
    });
    DeviceImage image;
    const auto callAll = [&] {
        int value = 0;
        return int(camera.getInt("LUTEnable", value)) + int(camera.setInt("LUTEnable", 0)) +
               int(camera.canSet("LUTEnable", 1)) + int(camera.start()) + int(camera.waitForImage(5s, image)) +
               int(camera.stop());
    };
    QCOMPARE(callAll(), 6);
    QCOMPARE(calls, QByteArray("0LUTEnable0 1LUTEnable0 2LUTEnable1 30 55000 40 "));
    allow = false;
    const auto before = camera.now();
    QCOMPARE(callAll(), 0);
    QCOMPARE(camera.now(), before);
    camera.setHook({});
    QCOMPARE(callAll(), 6);
}

void TestHandDriven::manyCamerasAndCycles()
{
    std::vector<std::unique_ptr<HandDrivenCamera>> cameras;
    for (int i = 0; i < 64; ++i) {
        cameras.push_back(std::make_unique<HandDrivenCamera>(smallCamera()));
        QVERIFY(prepare(*cameras.back()) && cameras.back()->start());
    }
    for (int n = 0; n < 50; ++n) {
        for (const auto& camera : cameras) {
            DeviceImage image;
            QVERIFY(camera->waitForImage(1s, image));
            QCOMPARE(image.descriptor.frameNumber, quint32(n));
        }
    }
    HandDrivenCamera& camera = *cameras.front();
    for (int n = 0; n < 1000; ++n) {
        DeviceImage image;
        QVERIFY(camera.start() && camera.waitForImage(1s, image) && camera.stop());
        QCOMPARE(camera.ledger().frames.size(), size_t(1)); // only the present acquisition is kept
    }
}

QTEST_APPLESS_MAIN(TestHandDriven)
#include "tst_handdriven.moc"
