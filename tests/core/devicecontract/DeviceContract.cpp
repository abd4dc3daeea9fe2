// SPDX-License-Identifier: GPL-3.0-or-later
// The sentences of CameraDevice.h, for every family.
#include "DeviceContract.h"

#include <QtTest/QtTest>

#include <atomic>
#include <cstring>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;

Q_DECLARE_METATYPE(std::function<ContractCamera()>)

namespace {

constexpr auto never = 1h;
constexpr int unlikely = -77;
const char* const format = VN_PRM_IMAGE_DATA_FORMAT; // every camera has it
const char* const noParameter = "no such parameter";

} // namespace

#define NEEDS(hook)                                                                                                  \
    if (!camera.hook)                                                                                                \
    QSKIP("this family cannot do that on demand")

class TestDeviceContract : public QObject
{
    Q_OBJECT

private:
    ContractCamera camera;

    void loseIt() const
    {
        camera.lose();
        QTRY_VERIFY(camera.device->isLost());
    }
    void bringItBack() const
    {
        camera.comeBack();
        QTRY_VERIFY(!camera.device->isLost());
    }
    bool receive(DeviceImage& image) const { return camera.device->waitForImage(20s, image); }
    /// Whether a wait brings nothing and lasts its limit.
    bool waitsInVain(const std::function<void()>& meanwhile = {}) const
    {
        const auto began = camera.now();
        std::thread other(meanwhile ? meanwhile : std::function<void()>([] {}));
        DeviceImage image;
        image.descriptor.frameNumber = 4711;
        const bool got = camera.device->waitForImage(100ms, image) || image.descriptor.frameNumber != 4711;
        other.join();
        return !got && camera.now() - began >= 100ms;
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<std::function<ContractCamera()>>("family");
        for (const auto& [name, make] : contractFamilies())
            QTest::newRow(name) << make;
    }
    void init()
    {
        QFETCH_GLOBAL(std::function<ContractCamera()>, family);
        camera = family();
        QVERIFY(!camera.device->isLost());
    }
    void cleanup() { camera = {}; }

    void parametersThatThereAreNot()
    {
        int value = unlikely;
        QVERIFY(!camera.device->hasParameter(noParameter));
        QVERIFY(!camera.device->getInt(noParameter, value));
        QCOMPARE(value, unlikely);
        QVERIFY(!camera.device->setInt(noParameter, 1) && !camera.device->canSet(noParameter, 1));
        QVERIFY(camera.device->enumeration(noParameter).isEmpty());
    }

    void aQuestionChangesNothingAndTellsTheTruth()
    {
        QVERIFY(camera.device->hasParameter(format));
        QList<int> values{unlikely};
        for (const auto& item : camera.device->enumeration(format))
            values.append(item.value);
        QVERIFY(values.size() > 1);
        for (const int value : values) {
            int before = unlikely;
            int after = unlikely;
            QVERIFY(camera.device->getInt(format, before));
            const bool can = camera.device->canSet(format, value);
            QVERIFY(camera.device->getInt(format, after));
            QCOMPARE(after, before);
            QCOMPARE(camera.device->setInt(format, value), can);
            QVERIFY(camera.device->getInt(format, after));
            QCOMPARE(after, can ? value : before);
            QVERIFY(can || value == unlikely || value == VN_FRM_TRANSPORT_DATA);
        }
    }

    void withoutAStartAWaitFailsAtOnce()
    {
        DeviceImage image;
        QVERIFY(!camera.device->waitForImage(never, image));
        QVERIFY(camera.device->start() && receive(image) && camera.device->stop());
        QVERIFY(!camera.device->waitForImage(never, image));
    }

    void imagesRiseAndBeginAnewWithEachStart()
    {
        int expected = unlikely;
        QVERIFY(camera.device->getInt(format, expected));
        for (int starts = 0; starts < 2; ++starts) { // the second one while it acquires
            QVERIFY(camera.device->start());
            DeviceImage image;
            QVERIFY(receive(image));
            QVERIFY(image.descriptor.frameNumber < 5);
            const VN_IMG first = image.descriptor;
            for (quint32 last = first.frameNumber; last < first.frameNumber + 10;) {
                QVERIFY(receive(image));
                QVERIFY(image.descriptor.frameNumber > last);
                last = image.descriptor.frameNumber;
                QCOMPARE(image.descriptor.size, quint32(sizeof(VN_IMG)));
                QCOMPARE(image.descriptor.dataFormat, quint32(expected));
                QVERIFY(image.descriptor.dataBytes > 0 && image.memory != nullptr);
            }
        }
    }

    void heldMemoryIsNotWritten()
    {
        QVERIFY(camera.device->start());
        DeviceImage held;
        QVERIFY(receive(held));
        const QByteArray copy(static_cast<const char*>(held.descriptor.data), int(held.descriptor.dataBytes));
        DeviceImage image;
        for (int i = 0; i < 10; ++i)
            QVERIFY(receive(image));
        QVERIFY(camera.device->stop());
        camera = {}; // it outlives the device
        QVERIFY(std::memcmp(copy.constData(), held.descriptor.data, size_t(copy.size())) == 0);
    }

    void stopIsTrueWhenNothingAcquires()
    {
        QVERIFY(camera.device->stop());
        QVERIFY(camera.device->start() && camera.device->stop() && camera.device->stop());
        NEEDS(lose);
        QVERIFY(camera.device->start());
        loseIt();
        QVERIFY(camera.device->stop() && camera.device->stop());
    }

    void stopEndsAWaitThatKeepsNobodyWaiting()
    {
        if (!camera.silence && !camera.lose)
            QSKIP("this family cannot do that on demand");
        for (const auto& disturb : {camera.silence, camera.lose}) {
            if (!disturb)
                continue;
            QVERIFY(camera.device->start());
            disturb();
            std::thread waiter([this] {
                DeviceImage image;
                while (camera.device->waitForImage(never, image)) {
                }
            });
            int value = 0;
            camera.device->getInt(format, value);
            camera.device->canSet(format, value);
            camera.device->isLost();
            camera.device->setLossListener({});
            QVERIFY(camera.device->stop());
            waiter.join();
        }
    }

    void aWaitInVainLastsItsLimit()
    {
        NEEDS(silence);
        camera.silence();
        QVERIFY(camera.device->start());
        QVERIFY(waitsInVain());
    }

    void lossAndReturn()
    {
        NEEDS(lose);
        NEEDS(comeBack);
        const auto info = camera.device->info();
        const CameraLink link = camera.device->link();
        const auto lost = camera.device->lostFrames();
        const auto entries = camera.device->enumeration(format).size();
        QVERIFY(camera.device->start());
        loseIt();
        QVERIFY(waitsInVain());
        int value = unlikely;
        QVERIFY(!camera.device->getInt(format, value));
        QCOMPARE(value, unlikely);
        QVERIFY(!camera.device->setInt(format, VN_FRM_MONO8) && !camera.device->canSet(format, VN_FRM_MONO8));
        QVERIFY(camera.device->hasParameter(format));
        QCOMPARE(camera.device->enumeration(format).size(), entries);
        QCOMPARE(camera.device->info().id, info.id);
        QCOMPARE(camera.device->info().name, info.name);
        QCOMPARE(camera.device->link().name, link.name);
        QCOMPARE(camera.device->lostFrames().has_value(), lost.has_value());

        QVERIFY(waitsInVain(camera.comeBack));
        QTRY_VERIFY(!camera.device->isLost());
        QVERIFY(waitsInVain()); // it does not acquire
        QVERIFY(camera.device->getInt(format, value));
        QVERIFY(camera.device->stop() && camera.device->start());
        DeviceImage image;
        QVERIFY(receive(image));
        loseIt();
        QVERIFY(camera.device->stop() && !camera.device->start());
    }

    void lossIsToldInOrder()
    {
        NEEDS(lose);
        NEEDS(comeBack);
        std::mutex mutex;
        QByteArray heard;
        const std::function<void(bool)> listener = [&](bool lost) {
            camera.device->isLost(); // no lock is held
            const std::lock_guard<std::mutex> lock(mutex);
            heard += lost ? '-' : '+';
        };
        const auto told = [&] {
            const std::lock_guard<std::mutex> lock(mutex);
            return heard;
        };
        const struct
        {
            bool listens;
            bool lost;
            const char* heard;
        } steps[] = {{true, true, "-"}, {true, false, "-+"}, {false, true, "-+"}, {true, false, "-++"}};
        for (const auto& step : steps) {
            camera.device->setLossListener(step.listens ? listener : nullptr);
            step.lost ? loseIt() : bringItBack();
            QTRY_COMPARE(told(), QByteArray(step.heard));
        }
    }

    void aRemovedListenerIsNotRunning()
    {
        NEEDS(lose);
        std::atomic<bool> entered{false};
        std::atomic<bool> left{false};
        camera.device->setLossListener([&](bool) {
            entered = true;
            for (const QDeadlineTimer busy(50); !busy.hasExpired();)
                std::this_thread::yield();
            left = true;
        });
        std::thread loser(camera.lose);
        while (!entered)
            std::this_thread::yield();
        camera.device->setLossListener({});
        const bool over = left;
        loser.join();
        QVERIFY(over);

        NEEDS(comeBack);
        left = false;
        camera.device->setLossListener([&](bool) {
            camera.device->setLossListener({}); // by itself
            left = true;
        });
        bringItBack();
        QTRY_VERIFY(left);
    }
};

QTEST_GUILESS_MAIN(TestDeviceContract)
#include "DeviceContract.moc"
