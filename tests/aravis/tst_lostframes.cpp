// SPDX-License-Identifier: GPL-3.0-or-later
// Where frames are lost, one cause at a time and all together, with a fake camera that loses packets by itself.
#include <QtTest/QtTest>

#include <netinet/in.h>
#include <sys/socket.h>

#include "AravisCamera.h"
#include "FakeGigeCamera.h"
#include "NetworkNamespace.h"

using namespace std::chrono_literals;
using aravis::AravisCamera;

namespace {

const bool inOwnNetwork = enterNetworkNamespace();

/// Of all sockets of this process that are open for a stream, which is every one that has been given a large buffer.
void setSocketBuffers(int bytes)
{
    for (int descriptor = 3; descriptor < 200; ++descriptor) {
        int kind = 0;
        socklen_t size = sizeof kind;
        if (::getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &kind, &size) == 0 && kind == SOCK_DGRAM)
            ::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
    }
}

} // namespace

class TestLostFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void attribution_data()
    {
        QTest::addColumn<double>("loss"); // of packets, by the camera
        QTest::addColumn<bool>("smallSocket");
        QTest::addColumn<bool>("noBuffers");
        QTest::newRow("none") << 0.0 << false << false;
        QTest::newRow("on the way") << 0.004 << false << false;
        QTest::newRow("socket") << 0.0 << true << false;
        QTest::newRow("buffers") << 0.0 << false << true;
        QTest::newRow("all") << 0.004 << true << true;
    }
    void attribution()
    {
        QFETCH(double, loss);
        QFETCH(bool, smallSocket);
        QFETCH(bool, noBuffers);
        FakeGigeCamera source;
        source.setFrames(256, 5000, loss);
        QVERIFY(source.powerUp());
        QString error;
        const auto device = AravisCamera::open(source.name(), &error);
        QVERIFY2(device && device->start(), qPrintable(error));
        quint32 received = 0;
        const auto receive = [&](quint32 count, std::vector<DeviceImage>* held) {
            DeviceImage image;
            for (const quint32 end = received + count; received < end && device->waitForImage(5s, image);
                 ++received) {
                if (held)
                    held->push_back(image);
            }
        };
        receive(50, nullptr);
        if (smallSocket) {
            setSocketBuffers(0);
            DeviceImage image;
            for (const QDeadlineTimer end(500); !end.hasExpired();) // 100 frames, of which some squeeze through
                received += device->waitForImage(50ms, image) ? 1 : 0;
            setSocketBuffers(1 << 20);
            receive(20, nullptr);
        }
        if (noBuffers) {
            std::vector<DeviceImage> held;
            receive(64, &held);
            QTest::qWait(200);
            held.clear();
            receive(100, nullptr);
        }
        receive(100, nullptr);
        source.tell("silent");
        for (DeviceImage rest; device->waitForImage(300ms, rest);)
            ++received;
        QVERIFY(device->stop());
        const LostFrames lost = *device->lostFrames();
        int whole = 0;
        QVERIFY(device->setInt(VN_PRM_COUNTER_SELECTOR, VN_COUNTER_TRANSFERRED));
        QVERIFY(device->getInt(VN_PRM_COUNTER_VALUE, whole));
        const quint64 unseen = source.framesSent() - lost.total() - quint64(whole);
        const QByteArray told = QStringLiteral("unknown %1, on the way %2, socket %3, buffer %4, late %5, else %6")
                                    .arg(lost.unknown)
                                    .arg(lost.onTheWay)
                                    .arg(lost.socket)
                                    .arg(lost.noBuffer)
                                    .arg(lost.late)
                                    .arg(lost.notAttributable)
                                    .toUtf8();
        QVERIFY2(unseen == 0 || (loss > 0.0 && unseen == 1), told); // the last one's end may be lost
        QVERIFY2((lost.onTheWay > 0) == (loss > 0.0), told);
        QVERIFY2((lost.socket > 10) == smallSocket, told);
        QVERIFY2((lost.noBuffer > 10) == noBuffers, told);
        QVERIFY2(lost.onTheWay + lost.socket + lost.noBuffer == lost.total(), told);
        qInfo("%s", told.data());
        const StreamConditions met = device->streamConditions();
        QCOMPARE(met.frameBytes.value_or(0.0), 65536.0);
        QCOMPARE(met.packetBytes.value_or(0.0), 1400.0);
        QVERIFY(met.socketLimitBytes && met.interfaceMtu && met.interfaceDrops);
        QVERIFY(met.processorsBusyPercent > 0.0 && met.processorsBusyPercent <= 100.0);
        QVERIFY(!met.usbLimitBytes && !met.usbBufferBytes && !met.grainBytes);
    }

    void theEndIsWaitedFor()
    {
        FakeGigeCamera source;
        source.setFrames(256, 5000, 0.5); // of 47 packets each: none gets through
        QVERIFY(source.powerUp());
        QString error;
        const auto device = AravisCamera::open(source.name(), &error);
        QVERIFY2(device && device->start(), qPrintable(error));
        DeviceImage image;
        QVERIFY(!device->waitForImage(500ms, image) && device->stop());
        QVERIFY(device->lostFrames()->onTheWay > 10);
    }
};

QTEST_GUILESS_MAIN(TestLostFrames)
#include "tst_lostframes.moc"
