// SPDX-License-Identifier: GPL-3.0-or-later
// The drive for tests: model time, gated waits, the hook.
#include <QtTest>

#include <atomic>
#include <thread>

#include "sim/HandDrivenCamera.h"
#include "SimTesting.h"
#include "Table.h"

using namespace sim;
using namespace simtest;

class TestHandDriven : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitMovesTime();
    void blockedWaitEnds_data();
    void blockedWaitEnds();
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

void TestHandDriven::blockedWaitEnds_data()
{
    const Table<bool> row("byReturn");
    row("by stop", false);
    row("by return", true);
}

void TestHandDriven::blockedWaitEnds()
{
    QFETCH(bool, byReturn);
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
    if (byReturn) {
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

QTEST_APPLESS_MAIN(TestHandDriven)
#include "tst_handdriven.moc"
