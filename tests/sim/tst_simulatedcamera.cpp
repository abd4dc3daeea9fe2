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
        // results: get, set to 0, set to 1, "can set to 1", start, stop, wait; thrice
        const Table<Refusal, QByteArray> row("refusal", "results");
        row("nothing", {Call::Set, "LUTEnabled", {}, 0}, "1111111 1111111 1111111");
        row("a parameter always", {Call::Set, "LUTEnable", {}, 0}, "1001111 1001111 1001111");
        row("a value", {Call::Set, "LUTEnable", 1, 0}, "1101111 1101111 1101111");
        row("the third write", {Call::Set, "LUTEnable", {}, 3}, "1111111 1011111 1111111");
        row("the second read of anything", {Call::Get, {}, {}, 2}, "1111111 0111111 1111111");
        row("the question", {Call::CanSet, "LUTEnable", {}, 1}, "1110111 1111111 1111111");
        row("the second start", {Call::Start, {}, {}, 2}, "1111111 1111010 1111111");
        row("the first stop", {Call::Stop, {}, {}, 1}, "1111101 1111111 1111111");
        row("every wait", {Call::Wait, {}, {}, 0}, "1111110 1111110 1111110");
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
            QByteArray got;
            const auto note = [&got](bool result) { got += result ? '1' : '0'; };
            note(camera.getInt("LUTEnable", value));
            note(camera.setInt("LUTEnable", 0));
            note(camera.setInt("LUTEnable", 1));
            note(camera.canSet("LUTEnable", 1));
            const bool started = camera.start();
            const bool waited = started && camera.waitForImage(1s, image);
            note(started);
            note(camera.stop());
            note(waited);
            QCOMPARE(got, expected);
        }
    }

    void lossAndReturn()
    {
        CameraScenario scenario = smallCamera();
        scenario.faults.loss = {{50.0, 9000.0}};
        HandDrivenCamera camera(scenario);
        std::vector<std::pair<bool, std::chrono::nanoseconds>> heard;
        camera.setLossListener([&](bool lost) { heard.emplace_back(lost, camera.now()); });
        const auto fresh = camera.parameters(true);
        QVERIFY(prepare(camera));
        QVERIFY(camera.start());
        DeviceImage image;
        while (camera.waitForImage(5s, image)) {
        }
        QCOMPARE(heard.at(0).second, std::chrono::nanoseconds(50ms));
        QVERIFY(camera.isLost());
        QVERIFY(camera.now() > 5040ms && camera.now() < 5050ms + 1ms); // that wait lasted its limit

        QCOMPARE(camera.parameter("imgdataformat"), 7);

        // Waits last their limit, also the one in which it comes back.
        for (int waits = 0; waits < 2; ++waits) {
            const auto began = camera.now();
            QVERIFY(!camera.waitForImage(5s, image));
            QCOMPARE(camera.now() - began, std::chrono::nanoseconds(5s));
            QVERIFY(!camera.isLost());
        }
        QCOMPARE(heard.at(1).second, std::chrono::nanoseconds(9050ms));
        QCOMPARE(camera.parameters(true), fresh);

        QCOMPARE(heard.size(), size_t(2));
        QVERIFY(heard[0].first && !heard[1].first);
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
        QCOMPARE(image.descriptor.size, 288u);
        QCOMPARE(image.descriptor.dataFormat, quint32(format));
        QCOMPARE(image.descriptor.bitDepth, quint32(depth));
        QCOMPARE(image.descriptor.dataBytes, bytes);
        QVERIFY(std::memcmp(image.descriptor.data, next.descriptor.data, bytes) != 0); // it moves
        const quint64 onLink = camera.ledger().frames.front().bytes;
        QCOMPARE(onLink, packing ? quint64(256 * 128 * 3 / 2) : bytes);
    }

    void memoryIsUsedAgainWhenNobodyHoldsIt()
    {
        HandDrivenCamera camera(smallCamera());
        QVERIFY(camera.start());
        DeviceImage held;
        QVERIFY(camera.waitForImage(1s, held));
        const QByteArray copy(static_cast<const char*>(held.descriptor.data), int(held.descriptor.dataBytes));
        QSet<const void*> memory;
        for (int i = 0; i < 50; ++i) {
            DeviceImage image;
            QVERIFY(camera.waitForImage(1s, image));
            memory.insert(image.descriptor.data);
        }
        QVERIFY(!memory.contains(held.descriptor.data));
        QVERIFY(memory.size() <= 2);
        QVERIFY(camera.stop());
        QVERIFY(std::memcmp(copy.constData(), held.descriptor.data, size_t(copy.size())) == 0);
    }
};

QTEST_APPLESS_MAIN(TestSimulatedCamera)
#include "tst_simulatedcamera.moc"
