// SPDX-License-Identifier: GPL-3.0-or-later
// The drive for people: real time, several threads.
#include <QtTest>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "Scenarios.h"
#include "sim/FreeRunningCamera.h"

using namespace sim;
using namespace std::chrono_literals;

class TestFreeRunning : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesKeepToTheSchedule()
    {
        CameraScenario scenario = packetCamera();
        scenario.sensor.rateHz = 200.0;
        scenario.queueFrames = 1000; // whatever else the machine does meanwhile
        FreeRunningCamera camera(scenario);
        const auto began = std::chrono::steady_clock::now();
        QVERIFY(camera.start());
        DeviceImage first;
        QVERIFY(camera.waitForImage(20s, first));
        DeviceImage image;
        for (quint32 n = 1; n <= 100; ++n) {
            QVERIFY(camera.waitForImage(20s, image));
            QCOMPARE(image.descriptor.frameNumber, n);
        }
        // Frame 100 is due 0.5 s after frame 0 and never comes early.
        QVERIFY(std::chrono::steady_clock::now() - began >= 500ms);
        const auto stamp = [](const VN_IMG& got) { return got.tsSec * 1000000LL + got.tsUSec; };
        QVERIFY(qAbs(stamp(image.descriptor) - stamp(first.descriptor) - 500000) <= 1);
    }

    void lossIsToldAtOnceAndInOrder()
    {
        CameraScenario scenario = packetCamera();
        scenario.faults.loss = {{1000.0, 20.0}, {1040.0, 0.0}};
        FreeRunningCamera camera(scenario);
        std::mutex mutex;
        std::string heard; // not shared behind the lock's back, as Qt's strings are
        camera.setLossListener([&](bool lost) {
            const std::lock_guard<std::mutex> lock(mutex);
            while (heard.empty() && camera.isLost()) // the first call still goes on when the camera is back
                std::this_thread::yield();
            heard += lost ? '-' : '+';
        });
        camera.start();
        std::thread host([&camera] {
            DeviceImage image;
            while (camera.waitForImage(std::chrono::hours(1), image)) {
            }
        });
        const auto told = [&] {
            const std::lock_guard<std::mutex> lock(mutex);
            return heard;
        };
        QTRY_COMPARE_WITH_TIMEOUT(told(), std::string("-+-"), 20000);
        camera.setLossListener({});
        camera.stop();
        host.join();
    }

    /// Nothing to compare but that it ends: for the race and memory checkers.
    void callsFromTwoThreads()
    {
        CameraScenario scenario = packetCamera();
        scenario.link.rate = 20.0;
        scenario.faults.loss = {{30.0, 10.0}, {80.0, 10.0}};
        const auto link = std::make_shared<SharedLink>(scenario.link);
        FreeRunningCamera camera(scenario, link);
        FreeRunningCamera neighbour(scenario, link);
        std::atomic<bool> ending{false};
        std::atomic<quint64> seen{0};
        std::thread host([&] {
            DeviceImage image;
            int value = 0;
            while (!ending) {
                camera.setLossListener([&seen](bool) { ++seen; });
                if (camera.waitForImage(2ms, image) && image.descriptor.data)
                    seen += *static_cast<const quint64*>(image.descriptor.data);
                camera.getInt("counter_value", value);
                camera.setLossListener({});
            }
        });
        for (int n = 0; n < 30; ++n) {
            prepare(camera);
            camera.start();
            neighbour.start();
            DeviceImage image;
            camera.waitForImage(2ms, image);
            camera.stop();
            neighbour.stop();
        }
        ending = true;
        host.join();
        QCOMPARE(camera.ledger().total(Fate::UnderWay).frames, quint64(0));
    }
};

QTEST_APPLESS_MAIN(TestFreeRunning)
#include "tst_freerunning.moc"
