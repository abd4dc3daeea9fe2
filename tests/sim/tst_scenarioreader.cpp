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
    void mistakesAreRefused_data();
    void mistakesAreRefused();
    void everythingIsRead();
    void filesAreNamed();
    void shippedCamerasDiffer();
    void shippedFaultsAreRead();
};

void TestScenarioReader::mistakesAreRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& json, const char* error) {
        QTest::newRow(name) << json << QString(error);
    };
    const auto camera = [&row](const char* name, const QByteArray& fields, const char* error) {
        row(name, "{\"cameras\": [{\"id\": \"1\"}, {\"id\": \"2\", " + fields + "}]}", error);
    };
    row("no JSON", "{\n\"cameras\": [}\n", "line 2: object is missing after a comma");
    row("no object", "[]", "scenario: must be an object");
    row("no cameras", "{}", "cameras: there is none");
    row("unknown key", "{\"camera\": []}", "camera: unknown key");
    row("cameras is no list", "{\"cameras\": {}}", "cameras: must be a list");
    row("no id", "{\"cameras\": [{}]}", "cameras[0].id: must be given");
    row("link without a name", "{\"links\": [{}]}", "links[0].name: must be given and unlike that of other links");
    camera("same id", "\"id\": \"1\"", "cameras[1].id: another camera has it already");
    camera("text for a number", "\"queueFrames\": \"8\"",
           "cameras[1].queueFrames: must be a whole number from 1 to 1000");
    camera("fraction", "\"sensor\": {\"width\": 8.5}",
           "cameras[1].sensor.width: must be a whole number from 8 to 65535");
    camera("out of range", "\"link\": {\"rate\": 0}", "cameras[1].link.rate: must be a number from 0.1 to 100000");
    camera("unknown inside", "\"sensor\": {\"with\": 8}", "cameras[1].sensor.with: unknown key");
    camera("sensor is no object", "\"sensor\": 5", "cameras[1].sensor: must be an object");
    camera("bit depth between", "\"sensor\": {\"bitDepth\": 9}",
           "cameras[1].sensor.bitDepth: must be 8, 10, 12 or 16");
    camera("packet of odd size", "\"link\": {\"packetBytes\": 12}",
           "cameras[1].link.packetBytes: must be a multiple of 8");
    camera("buffer below a packet", "\"bufferBytes\": 100",
           "cameras[1].bufferBytes: must be a whole number from 65536 to 2147483647");
    camera("jitter beyond the period", "\"sensor\": {\"rateHz\": 1000, \"jitterUs\": 1001}",
           "cameras[1].sensor.jitterUs: must be a number from 0 to 1000");
    camera("link that is not there", "\"link\": \"hub\"", "cameras[1].link: there is no link \"hub\"");
    camera("format", "\"formats\": [\"mono8\", \"rgb\"]",
           "cameras[1].formats: must be a list of mono8, mono16, transport");
    camera("flag", "\"frameBufferControl\": 1", "cameras[1].frameBufferControl: must be true or false");
    camera("call", "\"faults\": {\"refuse\": [{}, {\"call\": \"sit\"}]}",
           "cameras[1].faults.refuse[1].call: must be one of get, set, settable, start, stop, wait");
    camera("tick as a number", "\"faults\": {\"tickStart\": 5}",
           "cameras[1].faults.tickStart: must be a text with a whole number of 64 bits, such as "
           "\"0xffffffff00000000\"");
}

void TestScenarioReader::mistakesAreRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, error);
    QString got;
    QVERIFY(readScenario(json, got).empty());
    QCOMPARE(got, error);
}

void TestScenarioReader::everythingIsRead()
{
    QString error;
    const auto cameras = readScenario(R"({"seed": 5, "links": [{"name": "hub", "rate": 77}], "cameras": [
        {"id": "a", "link": "hub"},
        {"id": "b", "name": "B", "customId": "c", "transportSpeed": null, "formats": ["transport", "mono8"],
         "sensor": {"bitDepth": 12, "readoutUs": 3.5},
         "faults": {"refuse": [{"call": "stop", "nth": 2}, {"parameter": "x", "value": 3}],
                    "noImage": [{"atMs": 1, "forMs": 2}], "loss": [{"atMs": 3}],
                    "oddSize": {"first": 4, "every": 10}, "oddWidth": 65535, "tickStart": "0xffffffffffffffff",
                    "tickDirection": -1, "numberJumpBy": -7, "driftPpm": 1.5}}]})",
                                      error);
    QCOMPARE(error, QString());
    QCOMPARE(cameras.size(), size_t(2));
    const CameraScenario& a = cameras[0];
    QCOMPARE(a.link.name, QString("hub"));
    QCOMPARE(a.link.rate, 77.0);
    QCOMPARE(a.transportSpeed.value_or(-1), 380);
    const CameraScenario& b = cameras[1];
    QVERIFY(a.seed != b.seed);
    QCOMPARE(b.name + b.customId, QString("Bc"));
    QVERIFY(b.link.name.isEmpty());
    QVERIFY(!b.transportSpeed);
    QCOMPARE(b.formats, (std::vector<int>{7, 0}));
    QCOMPARE(b.sensor.bitDepth, 12);
    QCOMPARE(b.sensor.readoutUs, 3.5);
    QCOMPARE(b.faults.refuse.size(), size_t(2));
    QVERIFY(b.faults.refuse[0].call == Call::Stop && b.faults.refuse[0].nth == 2 && !b.faults.refuse[0].value);
    QVERIFY(b.faults.refuse[1].call == Call::Set && b.faults.refuse[1].value == 3);
    QCOMPARE(b.faults.noImage.at(0).forMs, 2.0);
    QCOMPARE(b.faults.loss.at(0).atMs, 3.0);
    QVERIFY(b.faults.oddSize.contains(14) && !b.faults.oddSize.contains(15));
    QVERIFY(!b.faults.nullData.contains(0));
    QCOMPARE(b.faults.tickStart, ~0ULL);
    QCOMPARE(b.faults.tickDirection, -1);
    QCOMPARE(b.faults.numberJumpBy, -7);
}

void TestScenarioReader::filesAreNamed()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("bad.json");
    QString error;
    QVERIFY(createCameras(path, &error).empty());
    QVERIFY2(error.startsWith(path + ": "), qPrintable(error));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"cameras\": 1}");
    file.close();
    QVERIFY(createCameras(path, &error).empty());
    QCOMPARE(error, path + ": cameras: must be a list");
}

void TestScenarioReader::shippedCamerasDiffer()
{
    QString error;
    const auto cameras = createCameras(QString(), &error);
    QCOMPARE(error, QString());
    QCOMPARE(cameras.size(), size_t(4));
    int plain = 0;
    for (const auto& camera : cameras) {
        const bool speed = camera->canSet("device_unit_selector", 8);
        const bool control = camera->canSet("dp_param_selector", 6);
        const bool triggers = camera->canSet("counter_selector", 3) && camera->canSet("counter_selector", 4);
        const bool custom = !camera->info().customId.isEmpty();
        QCOMPARE(speed && control && triggers, !custom);
        QCOMPARE(speed || control || triggers, !custom);
        QCOMPARE(camera->enumeration("imgdataformat").front().value != 0, custom);
        QVERIFY(camera->start()); // and frames come
        DeviceImage image;
        QVERIFY(camera->waitForImage(std::chrono::seconds(20), image));
        plain += custom;
    }
    QCOMPARE(plain, 1);
}

void TestScenarioReader::shippedFaultsAreRead()
{
    QString error;
    QVERIFY(!createCameras(QStringLiteral(SCENARIO_DIR "/faults.json"), &error).empty());
    QCOMPARE(error, QString());
}

QTEST_APPLESS_MAIN(TestScenarioReader)
#include "tst_scenarioreader.moc"
