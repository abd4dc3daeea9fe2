// SPDX-License-Identifier: GPL-3.0-or-later
// From JSON to scenarios, key by key, each with its range.
#include "ScenarioReader.h"

#include <QtCore/QMap>

#include "JsonFields.h"

namespace sim {

namespace {

constexpr double daysMs = 30.0 * 24 * 3600 * 1e3; ///< longest time that a scenario may name
constexpr size_t mostCameras = 1000;              ///< each has a thread
constexpr quint64 mostPackets = quint64{1} << 20; ///< of a frame: the ledger has a number for each
constexpr double manyFrames = 1e15;
constexpr double uint32Max = 4294967295.0;
constexpr double int32Max = 2147483647.0;

void readSensor(JsonFields& in, SensorScenario& sensor)
{
    in.whole("width", sensor.width, 8, 65535);
    in.whole("height", sensor.height, 1, 65535);
    in.whole("bitDepth", sensor.bitDepth, 8, 16);
    in.number("rateHz", sensor.rateHz, 0.001, 1e6);
    in.number("jitterUs", sensor.jitterUs, 0, 1e6 / sensor.rateHz);
    in.number("exposureUs", sensor.exposureUs, 0, 1e9);
    in.number("readoutUs", sensor.readoutUs, 0, 1e9);
    in.number("dataRate", sensor.dataRate, 0.1, 1e5);
    if (sensor.bitDepth != 8 && sensor.bitDepth != 10 && sensor.bitDepth != 12 && sensor.bitDepth != 16)
        in.fail("bitDepth", QStringLiteral("must be 8, 10, 12 or 16"));
    if (quint64{sensor.width} * sensor.height > 1U << 28)
        in.fail("width", QStringLiteral("more than 268435456 pixels with this height"));
}

void readLink(JsonFields& in, LinkScenario& link)
{
    in.text("name", link.name);
    in.number("rate", link.rate, 0.1, 1e5);
    in.whole("packetBytes", link.packetBytes, 8, 1 << 20);
    in.number("gapUs", link.gapUs, 0, 1e6);
    in.number("jitterUs", link.jitterUs, 0, 1e6);
    in.number("stallEveryMs", link.stallEveryMs, 0, daysMs);
    in.number("stallUs", link.stallUs, 0, 1e9);
    in.number("randomStallsPerSecond", link.randomStallsPerSecond, 0, 1e5);
    in.number("randomStallUs", link.randomStallUs, 0, 1e9);
    in.number("frameGapUs", link.frameGapUs, 0, 1e9);
    in.number("frameLoss", link.frameLoss, 0, 1);
    if (link.packetBytes % 8 != 0)
        in.fail("packetBytes", QStringLiteral("must be a multiple of 8"));
}

void readSelection(JsonFields& in, FrameSelection& frames)
{
    frames.count = 1;
    in.whole("first", frames.first, 0, manyFrames);
    in.whole("count", frames.count, 0, manyFrames);
    in.whole("every", frames.every, 0, manyFrames);
}

void readWindows(JsonFields& in, const char* key, std::vector<Window>& windows)
{
    in.list(key, [&windows](JsonFields& item) {
        Window window;
        item.number("atMs", window.atMs, 0, daysMs);
        item.number("forMs", window.forMs, 0, daysMs);
        windows.push_back(window);
    });
}

void readRefusal(JsonFields& in, Refusal& refusal)
{
    static const QMap<QString, Call> calls{
        {QStringLiteral("get"), Call::Get},         {QStringLiteral("set"), Call::Set},
        {QStringLiteral("settable"), Call::CanSet}, {QStringLiteral("start"), Call::Start},
        {QStringLiteral("stop"), Call::Stop},       {QStringLiteral("wait"), Call::Wait}};
    QString call = QStringLiteral("set");
    in.text("call", call);
    if (!calls.contains(call))
        in.fail("call", QStringLiteral("must be one of get, set, settable, start, stop, wait"));
    refusal.call = calls.value(call);
    QString parameter;
    in.text("parameter", parameter);
    refusal.parameter = parameter.toLatin1();
    int value = -1;
    in.whole("value", value, 0, int32Max);
    if (value >= 0)
        refusal.value = value;
    in.whole("nth", refusal.nth, 0, int32Max);
}

/// A JSON number does not hold 64 bits, so a text may give them, decimal or with 0x.
void readTick(JsonFields& in, const char* key, quint64& tick)
{
    const QJsonValue found = in.take(key);
    bool valid = found.isUndefined();
    if (found.isString())
        tick = found.toString().toULongLong(&valid, 0);
    if (!valid)
        in.fail(key, QStringLiteral("must be a text with a whole number of 64 bits, such as \"0xffffffff00000000\""));
}

void readFaults(JsonFields& in, Faults& faults)
{
    in.list("refuse", [&faults](JsonFields& item) { readRefusal(item, faults.refuse.emplace_back()); });
    readWindows(in, "noImage", faults.noImage);
    readWindows(in, "loss", faults.loss);
    in.object("nullData", [&faults](JsonFields& frames) { readSelection(frames, faults.nullData); });
    in.object("shortData", [&faults](JsonFields& frames) { readSelection(frames, faults.shortData); });
    in.whole("shortBytes", faults.shortBytes, 0, uint32Max);
    in.object("oddSize", [&faults](JsonFields& frames) { readSelection(frames, faults.oddSize); });
    in.whole("oddWidth", faults.oddWidth, 0, uint32Max);
    in.whole("oddHeight", faults.oddHeight, 0, uint32Max);
    readTick(in, "tickStart", faults.tickStart);
    in.whole("tickBits", faults.tickBits, 1, 64);
    in.whole("tickDirection", faults.tickDirection, -1, 1);
    in.object("numberJump", [&faults](JsonFields& frames) { readSelection(frames, faults.numberJump); });
    in.whole("numberJumpBy", faults.numberJumpBy, -int32Max, int32Max);
    in.object("stampJump", [&faults](JsonFields& frames) { readSelection(frames, faults.stampJump); });
    in.number("stampJumpMs", faults.stampJumpMs, -daysMs, daysMs);
    in.number("driftPpm", faults.driftPpm, -1e5, 1e5);
}

void readFormats(JsonFields& in, std::vector<int>& formats)
{
    static const QMap<QString, int> names{{QStringLiteral("mono8"), VN_FRM_MONO8},
                                          {QStringLiteral("mono16"), VN_FRM_MONO16},
                                          {QStringLiteral("transport"), VN_FRM_TRANSPORT_DATA}};
    const QJsonValue found = in.take("formats");
    if (found.isUndefined())
        return;
    formats.clear();
    bool known = true;
    for (const auto& item : found.toArray()) {
        known = known && names.contains(item.toString());
        formats.push_back(names.value(item.toString()));
    }
    if (formats.empty() || !known)
        in.fail("formats", QStringLiteral("must be a list of mono8, mono16, transport"));
}

/// Either the name of a link of the scenario or a link of its own.
void readCameraLink(JsonFields& in, LinkScenario& link, const QMap<QString, LinkScenario>& shared)
{
    const QJsonValue found = in.take("link");
    if (found.isString()) {
        if (!shared.contains(found.toString()))
            in.fail("link", QStringLiteral("there is no link \"%1\"").arg(singleLine(found.toString())));
        link = shared.value(found.toString());
        return;
    }
    in.object("link", [&link](JsonFields& fields) {
        readLink(fields, link);
        if (!link.name.isEmpty())
            fields.fail("name", QStringLiteral("only a link of the list \"links\" has a name"));
    });
}

void readCamera(JsonFields& in, CameraScenario& camera, const QMap<QString, LinkScenario>& links)
{
    in.text("name", camera.name);
    in.text("id", camera.id);
    in.text("customId", camera.customId);
    in.whole("seed", camera.seed, 0, manyFrames);
    in.object("sensor", [&camera](JsonFields& fields) { readSensor(fields, camera.sensor); });
    readCameraLink(in, camera.link, links);
    if (quint64{camera.sensor.width} * camera.sensor.height * 2 / camera.link.packetBytes > mostPackets)
        in.fail("link", QStringLiteral("a frame of this sensor has more than %1 packets").arg(mostPackets));
    in.whole("bufferBytes", camera.bufferBytes, camera.link.packetBytes, int32Max);
    in.whole("triggerReserveBytes", camera.triggerReserveBytes, 0, int32Max);
    in.whole("queueFrames", camera.queueFrames, 1, 1000);
    if (in.take("transportSpeed").isNull()) {
        camera.transportSpeed.reset();
    } else {
        int speed = camera.transportSpeed.value_or(0);
        in.whole("transportSpeed", speed, -int32Max, int32Max);
        camera.transportSpeed = speed;
    }
    in.flag("frameBufferControl", camera.frameBufferControl);
    in.flag("missedTriggerCounters", camera.missedTriggerCounters);
    readFormats(in, camera.formats);
    in.object("faults", [&camera](JsonFields& fields) { readFaults(fields, camera.faults); });
}

} // namespace

std::vector<CameraScenario> readScenario(const QByteArray& json, QString& error)
{
    error.clear();
    JsonFields in(jsonObject(json, error), QString(), error);
    quint64 seed = 1;
    in.whole("seed", seed, 0, manyFrames);
    QMap<QString, LinkScenario> links;
    in.list("links", [&links](JsonFields& fields) {
        LinkScenario link;
        readLink(fields, link);
        if (link.name.isEmpty() || links.contains(link.name))
            fields.fail("name", QStringLiteral("must be given and unlike that of other links"));
        links.insert(link.name, link);
    });
    std::vector<CameraScenario> cameras;
    in.list("cameras", [&](JsonFields& fields) {
        if (cameras.size() == mostCameras)
            fields.fail("id", QStringLiteral("there are more than %1 cameras").arg(mostCameras));
        CameraScenario camera;
        camera.seed = seed + cameras.size();
        camera.id.clear();
        readCamera(fields, camera, links);
        for (const CameraScenario& other : cameras) {
            if (other.id == camera.id)
                fields.fail("id", QStringLiteral("another camera has it already"));
        }
        if (camera.id.isEmpty())
            fields.fail("id", QStringLiteral("must be given"));
        cameras.push_back(camera);
    });
    in.finish();
    if (error.isEmpty() && cameras.empty())
        in.fail("cameras", QStringLiteral("there is none"));
    if (!error.isEmpty())
        cameras.clear();
    return cameras;
}

} // namespace sim
