// SPDX-License-Identifier: GPL-3.0-or-later
// Scenario files: what is refused and with which reason, and that the shipped ones are as they are described.
#include <QtTest>

#include "sim/ScenarioReader.h"
#include "sim/SimCameras.h"

using namespace sim;

class TestScenarioReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mistakesAreRefused()
    {
        const auto row = [](const QByteArray& json, const QString& error) {
            QString got;
            QVERIFY(readScenario(json, got).empty());
            QCOMPARE(got, error);
        };
        const auto camera = [&row](const QByteArray& fields, const char* error) {
            row("{\"cameras\": [{\"id\": \"1\"}, {\"id\": \"2\", " + fields + "}]}",
                QLatin1String("cameras[1].") + QLatin1String(error));
        };
        row("{\n\"cameras\": [}\n", "line 2: object is missing after a comma");
        row("{}", "cameras: there is none");
        row("{\": 1\\n\": []}", "unknown key \": 1 \"");
        row("{\"cameras\": {}}", "cameras: must be a list");
        row("{\"links\": [{}]}", "links[0].name: must be given and unlike that of other links");
        camera(R"("id": "1")", "id: another camera has it already");
        camera(R"("queueFrames": "8")", "queueFrames: must be a whole number from 1 to 1000");
        camera(R"("link": {"rate": 0})", "link.rate: must be a number from 0.1 to 100000");
        camera(R"("sensor": {"with": 8})", "sensor: unknown key \"with\"");
        camera(R"("sensor": {"bitDepth": 9})", "sensor.bitDepth: must be 8, 10, 12 or 16");
        camera(R"("bufferBytes": 100)", "bufferBytes: must be a whole number from 65536 to 2147483647");
        camera(R"("sensor": {"rateHz": 1000, "jitterUs": 1001})", "sensor.jitterUs: must be a number from 0 to 1000");
        camera(R"("link": "hub")", "link: there is no link \"hub\"");
        camera(R"("sensor": {"width": 8192, "height": 8192}, "link": {"packetBytes": 8})",
               "link: a frame of this sensor has more than 1048576 packets");
        camera(R"("formats": ["mono8", "rgb"])", "formats: must be a list of mono8, mono16, transport");
        camera(R"("faults": {"refuse": [{}, {"call": "sit"}]})",
               "faults.refuse[1].call: must be one of get, set, settable, start, stop, wait");
        camera(R"("faults": {"tickStart": 5})",
               "faults.tickStart: must be a text with a whole number of 64 bits, such as "
               R"("0xffffffff00000000")");
    }
    void everythingIsRead()
    {
        QString error;
        const auto cameras = readScenario(R"({"seed": 5, "links": [{"name": "hub", "rate": 77}], "cameras": [
            {"id": "a", "link": "hub"},
            {"id": "b", "transportSpeed": null, "formats": ["transport", "mono8"],
             "faults": {"refuse": [{"call": "stop", "nth": 2}, {"parameter": "x", "value": 3}],
                        "oddSize": {"first": 4, "every": 10}, "tickStart": "0xffffffffffffffff"}}]})",
                                          error);
        QCOMPARE(error, QString());
        QCOMPARE(cameras.size(), size_t(2));
        const CameraScenario& a = cameras[0];
        const CameraScenario& b = cameras[1];
        QVERIFY(a.link.rate == 77.0 && a.transportSpeed == 380 && a.seed != b.seed);
        QVERIFY(b.link.name.isEmpty() && !b.transportSpeed && b.formats == (std::vector<int>{7, 0}));
        QCOMPARE(b.faults.refuse.size(), size_t(2));
        QVERIFY(b.faults.refuse[0].call == Call::Stop && b.faults.refuse[0].nth == 2 && !b.faults.refuse[0].value);
        QVERIFY(b.faults.refuse[1].call == Call::Set && b.faults.refuse[1].value == 3);
        QVERIFY(b.faults.oddSize.contains(14) && !b.faults.oddSize.contains(15) && !b.faults.nullData.contains(0));
        QCOMPARE(b.faults.tickStart, ~0ULL);
    }

    void shippedOnesAreRead()
    {
        QString error;
        for (const QFileInfo& file : QDir(SCENARIO_DIR).entryInfoList({"*.json"})) {
            QVERIFY(!createCameras(file.filePath(), &error).empty());
            QCOMPARE(error, QString());
        }
        QCOMPARE(createCameras(QString(), &error).size(), size_t(4));
    }
};

QTEST_APPLESS_MAIN(TestScenarioReader)
#include "tst_scenarioreader.moc"
