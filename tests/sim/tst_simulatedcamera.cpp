// SPDX-License-Identifier: GPL-3.0-or-later
// Faults, loss and return, and the images that a host receives.
#include <QtTest>

#include <cstring>

#include "HandDrivenCamera.h"
#include "Scenarios.h"

using namespace sim;
using namespace std::chrono_literals;

class TestSimulatedCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsAreRefused()
    {
        // results: get, set to 0, set to 1, "can set to 1", start, wait, stop; thrice
        const std::pair<Refusal, QByteArray> cases[] = {
            {{Call::Set, "LUTEnabled", {}, 0}, "1111111 1111111 1111111"}, // another parameter
            {{Call::Set, "LUTEnable", {}, 0}, "1001111 1001111 1001111"},
            {{Call::Set, "LUTEnable", 1, 0}, "1101111 1101111 1101111"},
            {{Call::Set, "LUTEnable", {}, 3}, "1111111 1011111 1111111"},
            {{Call::Get, {}, {}, 2}, "1111111 0111111 1111111"},
            {{Call::CanSet, "LUTEnable", {}, 1}, "1110111 1111111 1111111"},
            {{Call::Start, {}, {}, 2}, "1111111 1111001 1111111"},
            {{Call::Stop, {}, {}, 1}, "1111110 1111111 1111111"},
            {{Call::Wait, {}, {}, 0}, "1111101 1111101 1111101"},
        };
        for (const auto& [refusal, results] : cases) {
            CameraScenario scenario = packetCamera();
            scenario.faults.refuse = {refusal};
            HandDrivenCamera camera(scenario);
            QByteArray got;
            for (int round = 0; round < 3; ++round) {
                int value = 0;
                DeviceImage image; // initializers take their turns
                for (const bool result :
                     {camera.getInt("LUTEnable", value), camera.setInt("LUTEnable", 0), camera.setInt("LUTEnable", 1),
                      camera.canSet("LUTEnable", 1), camera.start(), camera.waitForImage(1s, image), camera.stop()})
                    got += result ? '1' : '0';
                got += ' ';
            }
            QCOMPARE(got.trimmed(), results);
        }
    }

    void lossAndReturn()
    {
        CameraScenario scenario = packetCamera();
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

    void imagesHaveTheirFormat()
    {
        constexpr quint64 pixels = 256 * 128;
        for (const auto& [format, depth, packing, bytes] : {std::tuple(0, 8, 0, pixels),
                                                            {1, 12, 0, pixels * 2},
                                                            {1, 12, 1, pixels * 2},
                                                            {7, 12, 1, pixels * 3 / 2},
                                                            {7, 8, 0, pixels}}) {
            HandDrivenCamera camera(packetCamera());
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
            QCOMPARE(camera.ledger().frames.front().bytes, packing ? pixels * 3 / 2 : bytes);
        }
    }
};

QTEST_APPLESS_MAIN(TestSimulatedCamera)
#include "tst_simulatedcamera.moc"
