// SPDX-License-Identifier: GPL-3.0-or-later
// The family against a fake camera: what the contract of devices does not say.
#include <QtTest/QtTest>

#include <dirent.h>
#include <linux/capability.h>
#include <sys/prctl.h>

#include <csignal>

#include "AravisCamera.h"
#include "CameraWorker.h"
#include "ChildPrograms.h"
#include "FakeGigeCamera.h"
#include "NetworkNamespace.h"
#include "ResidentMemory.h"
#include "TestScale.h"
#include "ThreadCount.h"

using namespace std::chrono_literals;
using aravis::AravisCamera;

namespace {

const bool inOwnNetwork = enterNetworkNamespace();

int openDescriptors()
{
    int count = 0;
    DIR* directory = ::opendir("/proc/self/fd");
    while (::readdir(directory))
        ++count;
    ::closedir(directory);
    return count;
}

quint64 nowTicks()
{
    return quint64(std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count() / 4);
}

int counter(CameraDevice& device, int selector)
{
    int value = -1;
    return device.setInt(VN_PRM_COUNTER_SELECTOR, selector) && device.getInt(VN_PRM_COUNTER_VALUE, value) ? value
                                                                                                          : -1;
}

} // namespace

class TestAravis : public QObject
{
    Q_OBJECT

private:
    FakeGigeCamera source;
    std::shared_ptr<CameraDevice> device;

    bool openIt()
    {
        QString error;
        device = AravisCamera::open(source.name(), &error);
        if (!device)
            qWarning() << error;
        return device != nullptr;
    }
    /// Opens the camera with more features in its description than the library's.
    bool openItWith(const QByteArray& features)
    {
        qputenv("FAKE_GIGE_FEATURES", features);
        const bool open = source.powerUp() && openIt();
        qunsetenv("FAKE_GIGE_FEATURES");
        return open;
    }
    /// Receives images until one has this number or a higher one.
    bool receiveUntil(quint32 number) const
    {
        DeviceImage image;
        while (device->waitForImage(5s, image)) {
            if (image.descriptor.frameNumber >= number)
                return true;
        }
        return false;
    }

private Q_SLOTS:
    void init()
    {
        source.setFrames(256, 10000, 0.0);
        QVERIFY(source.powerUp());
    }
    void cleanup()
    {
        device.reset();
        source.powerDown();
    }

    void faultsOfOpeningAreToldApart()
    {
        QVERIFY(openIt());
        FakeGigeCamera second(QStringLiteral("127.0.0.2"));
        QVERIFY(second.powerUp());
        const struct
        {
            QString name;
            const char* says;
        } rows[] = {{source.name(), "another program"},
                    {QStringLiteral("gev:127.0.0.3"), "no answer"},
                    {QStringLiteral("gev:10.1.2.3"), "no way"},
                    {QStringLiteral("gev:"), "no address"},
                    {second.name(), ""}};
        for (const auto& row : rows) {
            QString error;
            const auto camera = AravisCamera::open(row.name, &error);
            QCOMPARE(camera != nullptr, *row.says == '\0');
            QVERIFY2(error.contains(QLatin1String(row.says)), qPrintable(error));
        }
    }

    void countersAgreeWithTheFrames()
    {
        source.setFrames(256, 5000, 0.002); // a frame in ten loses a packet
        QVERIFY(source.powerUp() && openIt() && device->start());
        QVERIFY(receiveUntil(200));
        QVERIFY(device->stop());
        const int lost = counter(*device, VN_COUNTER_TRANSPORT_SKIP);
        const int delivered = counter(*device, VN_COUNTER_TRANSFERRED);
        QVERIFY2(lost > 0, qPrintable(QString::number(lost)));
        QVERIFY(lost + delivered >= 201);
        QCOMPARE(counter(*device, VN_COUNTER_API_SKIP), 0);
    }

    void whoHoldsAllBuffersLosesFramesHere()
    {
        QVERIFY(openIt() && device->start());
        std::vector<DeviceImage> held(64);
        for (DeviceImage& image : held)
            QVERIFY(device->waitForImage(5s, image));
        QTest::qWait(100); // ten frames
        held.clear();
        QVERIFY(receiveUntil(80));
        QVERIFY(counter(*device, VN_COUNTER_API_SKIP) > 0);
        QCOMPARE(counter(*device, VN_COUNTER_TRANSPORT_SKIP), 0);
    }

    void requiredThroughputAsTheCameraTells()
    {
        const QByteArray limit("<Integer Name=\"DeviceLinkThroughputLimit\"><Value>5000001</Value></Integer>"
                               "<Enumeration Name=\"DeviceLinkThroughputLimitMode\"><EnumEntry Name=\"Off\"><Value>0"
                               "</Value></EnumEntry><EnumEntry Name=\"On\"><Value>1</Value></EnumEntry><Value>");
        const std::pair<QByteArray, int> rows[] = {
            {"", 7}, // 256 * 256 bytes, 100 times a second
            {"<Float Name=\"ResultingFrameRate\"><Value>50.0</Value></Float>", 4},
            {limit + "0</Value></Enumeration>", 7},
            {limit + "1</Value></Enumeration>", 6},
        };
        for (const auto& [features, required] : rows) {
            int value = 0;
            QVERIFY(openItWith(features) && device->setInt(VN_PRM_DEVICE_UNIT_SELECTOR, 8));
            QVERIFY(device->setInt(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, 4096));
            QVERIFY(device->getInt(VN_PRM_DEVICE_UNIT_REGISTER_VALUE, value));
            QCOMPARE(value, required);
        }
    }

    void missedTriggersAsTheCameraCounts()
    {
        QVERIFY(openIt() && !device->canSet(VN_PRM_COUNTER_SELECTOR, VN_COUNTER_MISSED_TRG_OVERLAP));
        const QByteArray counters( // the second one's value is the register that "silent" sets to 1
            "<Enumeration Name='CounterSelector'><EnumEntry Name='Counter0'><Value>0</Value></EnumEntry><EnumEntry "
            "Name='Counter1'><Value>1</Value></EnumEntry><pValue>Index</pValue></Enumeration><Integer Name='Index'>"
            "<Value>0</Value></Integer><Enumeration Name='CounterEventSource'><EnumEntry Name='Off'><Value>0"
            "</Value></EnumEntry><EnumEntry Name='FrameTriggerMissed'><Value>1</Value></EnumEntry><pValue>Index"
            "</pValue></Enumeration><IntReg Name='CounterValue'><Address>0x300</Address><Length>4</Length>"
            "<AccessMode>RO</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>");
        QVERIFY(openItWith(counters) && device->start());
        QCOMPARE(counter(*device, VN_COUNTER_MISSED_TRG_OVERLAP), 0);
        source.tell("silent");
        QTRY_COMPARE(counter(*device, VN_COUNTER_MISSED_TRG_OVERLAP), 1);
        QVERIFY(device->start());
        QCOMPARE(counter(*device, VN_COUNTER_MISSED_TRG_OVERLAP), 0); // since then
    }

    void aSerialNumberIsSearchedFor()
    {
        QString error;
        QVERIFY(!AravisCamera::open(QStringLiteral("gev:SN0"), &error));
        QVERIFY2(error.contains(QLatin1String("no camera with this serial number")), qPrintable(error));
        device = AravisCamera::open(QStringLiteral("gev:SN127.0.0.1"), &error);
        QVERIFY2(device && device->start() && receiveUntil(3), qPrintable(error));
    }

    void aFormatIsRefusedWhileItAcquires()
    {
        QVERIFY(openIt() && device->start());
        QVERIFY(!device->setInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO16));
        QVERIFY(device->stop());
        QVERIFY(device->setInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO16));
    }

    void nobodyWaitsForADeadCamera()
    {
        QVERIFY(openIt() && device->start() && receiveUntil(3));
        source.powerDown();
        QElapsedTimer clock;
        clock.start();
        int format = 0;
        QVERIFY(device->getInt(VN_PRM_IMAGE_DATA_FORMAT, format));
        QVERIFY(clock.elapsed() < 100);
        QVERIFY(!device->setInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO16));
        QVERIFY(device->stop());
        device.reset();
        QVERIFY2(clock.elapsed() < 2500, qPrintable(QString::number(clock.elapsed())));
    }

    void aPauseIsNoLossAndARestartIsOne()
    {
        QVERIFY(openIt() && device->start() && receiveUntil(3));
        source.signal(SIGSTOP);
        QTest::qWait(2000);
        source.signal(SIGCONT);
        QVERIFY(receiveUntil(10));
        QVERIFY(!device->isLost());
        source.powerUp();
        QTRY_VERIFY_WITH_TIMEOUT(device->isLost(), 8000);
        QCOMPARE(device->link().name, QStringLiteral("lo"));
        QVERIFY(!device->link().rate);
        QTRY_VERIFY_WITH_TIMEOUT(!device->isLost(), 12000);
        QVERIFY(device->stop() && device->start() && receiveUntil(3));
    }

    void wordsTellWhenTheyArrived()
    {
        QVERIFY(openIt() && device->setInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA));
        const quint64 began = nowTicks();
        QVERIFY(device->start());
        quint64 last = began;
        for (int i = 0; i < 50; ++i) {
            DeviceImage image;
            QVERIFY(device->waitForImage(5s, image));
            QCOMPARE(image.descriptor.dataFormat, quint32(VN_FRM_TRANSPORT_DATA));
            QCOMPARE(image.descriptor.dataBytes, quint64(256 * 256));
            QVERIFY(image.descriptor.width * image.descriptor.height * 2 >= image.descriptor.dataBytes);
            const auto* words = static_cast<const quint64*>(image.descriptor.data);
            QVERIFY(words[0] > last);
            for (int word = 1; word < 256 * 256 / 8; ++word)
                QVERIFY(words[word] >= words[word - 1]);
            last = words[256 * 256 / 8 - 1];
            QVERIFY(last > words[0] && last < nowTicks());
        }
        // Nothing is made up when the tap is gone.
        for (const int child : childrenRunning("kestrova-tap"))
            ::kill(child, SIGKILL);
        DeviceImage image;
        QTRY_VERIFY(device->waitForImage(5s, image) && image.descriptor.dataBytes == 0);
        QVERIFY(device->stop());
    }

    void manyTimes()
    {
        const auto cycle = [&] {
            QVERIFY(openIt() && device->start() && receiveUntil(0) && device->stop());
            device.reset();
            QVERIFY(aravis::CameraWorker::waitForAll(15s));
        };
        for (int i = 0; i < 3; ++i) // what is made once
            cycle();
        const int threads = threadCount();
        const int descriptors = openDescriptors();
        [[maybe_unused]] const qint64 resident = residentBytes();
        for (int i = 0; i < testCount(25) && !QTest::currentTestFailed(); ++i)
            cycle();
        QTRY_VERIFY(threadCount() <= threads); // some may still be on their way out, then and now
        QCOMPARE(openDescriptors(), descriptors);
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed
        QVERIFY2(residentBytes() < resident + (8 << 20), qPrintable(QString::number(residentBytes() - resident)));
#endif
    }

    void withoutTheRightThereAreNoTimes() // the last one: the right does not come back
    {
        QVERIFY(openIt());
        QVERIFY(::prctl(PR_CAPBSET_DROP, CAP_NET_RAW, 0, 0, 0) == 0);
        QVERIFY(!device->canSet(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA));
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression(QStringLiteral("gev:127.0.0.1.*setcap cap_net_raw=ep")));
        QVERIFY(!device->setInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA));
        QVERIFY(device->start() && receiveUntil(3));
    }
};

QTEST_GUILESS_MAIN(TestAravis)
#include "tst_aravis.moc"
