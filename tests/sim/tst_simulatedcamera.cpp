// SPDX-License-Identifier: GPL-3.0-or-later
// Faults, loss and return, and the images that a host receives.
#include <QtTest>

#include <cstring>

#include "HandDrivenCamera.h"
#include "SimTesting.h"
#include "Table.h"

using namespace sim;
using namespace simtest;

Q_DECLARE_METATYPE(sim::Refusal)

class TestSimulatedCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsAreRefused_data()
    {
        // results: get, set to 0, set to 1, "can set to 1", start, wait, stop; thrice
        const Table<Refusal, QByteArray> row("refusal", "results");
        row("nothing", {Call::Set, "LUTEnabled", {}, 0}, "1111111 1111111 1111111");
        row("a parameter always", {Call::Set, "LUTEnable", {}, 0}, "1001111 1001111 1001111");
        row("a value", {Call::Set, "LUTEnable", 1, 0}, "1101111 1101111 1101111");
        row("the third write", {Call::Set, "LUTEnable", {}, 3}, "1111111 1011111 1111111");
        row("the second read of anything", {Call::Get, {}, {}, 2}, "1111111 0111111 1111111");
        row("the question", {Call::CanSet, "LUTEnable", {}, 1}, "1110111 1111111 1111111");
        row("the second start", {Call::Start, {}, {}, 2}, "1111111 1111001 1111111");
        row("the first stop", {Call::Stop, {}, {}, 1}, "1111110 1111111 1111111");
        row("every wait", {Call::Wait, {}, {}, 0}, "1111101 1111101 1111101");
    }
    void callsAreRefused()
    {
        QFETCH(Refusal, refusal);
        QFETCH(QByteArray, results);
        CameraScenario scenario = smallCamera();
        scenario.faults.refuse = {refusal};
        HandDrivenCamera camera(scenario);
        for (const QByteArray& expected : results.split(' ')) {
            int value = 0;
            DeviceImage image;
            QByteArray got; // initializers take their turns
            for (const bool result :
                 {camera.getInt("LUTEnable", value), camera.setInt("LUTEnable", 0), camera.setInt("LUTEnable", 1),
                  camera.canSet("LUTEnable", 1), camera.start(), camera.waitForImage(1s, image), camera.stop()})
                got += result ? '1' : '0';
            QCOMPARE(got, expected);
        }
    }

    void lossAndReturn()
    {
        CameraScenario scenario = smallCamera();
        scenario.faults.loss = {{50.0, 9000.0}};
        HandDrivenCamera camera(scenario);
        QStringList heard;
        camera.setLossListener([&](bool lost) {
            heard << QStringLiteral("%1 %2").arg(QLatin1String(lost ? "lost" : "back")).arg(camera.now() / 1us);
        });
        const auto fresh = camera.parameters(true);
        QVERIFY(prepare(camera) && camera.start());
        DeviceImage image;
        while (camera.waitForImage(5s, image)) {
        }
        QVERIFY(camera.isLost() && camera.parameter("imgdataformat") == 7);
        QVERIFY(!camera.waitForImage(5s, image) && !camera.isLost());
        QCOMPARE(heard.join(','), QStringLiteral("lost 50000,back 9050000"));
        QCOMPARE(camera.parameters(true), fresh);
    }

    void imagesHaveTheirFormat_data()
    {
        const Table<int, int, int, quint64> row("format", "depth", "packing", "bytes");
        row("mono 8", 0, 8, 0, quint64(256 * 128));
        row("mono 16, 12 bit", 1, 12, 0, quint64(256 * 128 * 2));
        row("mono 16, packed on the link", 1, 12, 1, quint64(256 * 128 * 2));
        row("transport data, packed", 7, 12, 1, quint64(256 * 128 * 3 / 2));
        row("transport data, 8 bit", 7, 8, 0, quint64(256 * 128));
    }
    void imagesHaveTheirFormat()
    {
        QFETCH(int, format);
        QFETCH(int, depth);
        QFETCH(int, packing);
        QFETCH(quint64, bytes);
        HandDrivenCamera camera(smallCamera());
        QVERIFY(camera.setInt("imgdataformat", format) && camera.setInt("output_bit_depth", depth) &&
                camera.setInt("output_bit_packing", packing));
        QVERIFY(camera.start());
        DeviceImage image;
        DeviceImage next;
        QVERIFY(camera.waitForImage(1s, image) && camera.waitForImage(1s, next));
        const VN_IMG& got = image.descriptor;
        QCOMPARE(std::tuple(got.dataFormat, got.bitDepth, got.dataBytes),
                 std::tuple(quint32(format), quint32(depth), bytes));
        QVERIFY(std::memcmp(image.descriptor.data, next.descriptor.data, bytes) != 0); // it moves
        QCOMPARE(camera.ledger().frames.front().bytes, packing ? quint64(256 * 128 * 3 / 2) : bytes);
    }
};

QTEST_APPLESS_MAIN(TestSimulatedCamera)
#include "tst_simulatedcamera.moc"
