// SPDX-License-Identifier: GPL-3.0-or-later
// Where the model's frames come from: the sensor through the frame buffer, or the counter pattern, which the camera
// makes as fast as the link takes it.
#include <algorithm>
#include <cmath>

#include "CameraModel.h"

namespace sim {

namespace {

qint64 fromUs(double us)
{
    return static_cast<qint64>(us * 1e3);
}

} // namespace

CameraModel::Geometry CameraModel::geometry() const
{
    Geometry shape;
    const quint64 pixels = quint64{camera.sensor.width} * camera.sensor.height;
    const int depth = params.value(QStringLiteral(VN_PRM_OUTPUT_DATA_BIT_DEPTH));
    shape.format = params.value(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT));
    shape.bitDepth = shape.format == VN_FRM_MONO8 ? 8 : depth;
    const bool packed = params.value(QStringLiteral(VN_PRM_OUTPUT_DATA_PACKING)) == 1;
    const int unpackedBits = shape.bitDepth > 8 ? 16 : 8;
    const int linkBits = packed && shape.bitDepth < 16 ? shape.bitDepth : unpackedBits;
    shape.linkBytes = pixels * static_cast<quint64>(linkBits) / 8;
    shape.imageBytes = shape.format == VN_FRM_MONO16 ? pixels * 2 : shape.linkBytes;
    shape.counterPattern =
        shape.format == VN_FRM_TRANSPORT_DATA &&
        params.value(QStringLiteral(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR)) == VN_TESTPAT_GEN_FPGA &&
        params.value(QStringLiteral("test_pattern[1]")) == VN_TESTPAT_DEVICE_SPEC_COUNTER;
    return shape;
}

void CameraModel::announceDemand(const Geometry& shape)
{
    const LinkScenario& pace = link->scenario();
    const double sensorRate = static_cast<double>(shape.linkBytes) * camera.sensor.rateHz * 1e-6;
    link->setDemand(this, shape.counterPattern ? pace.rate : std::min(sensorRate, pace.rate));
}

/// When a camera that would send then may send: at the end of the silence, which may be of several windows.
qint64 CameraModel::afterPause(qint64 timeNs) const
{
    for (const Window& pause : camera.faults.noImage) {
        const qint64 begin = startNs + fromUs(pause.atMs * 1e3);
        const qint64 end = begin + fromUs(pause.forMs * 1e3);
        if (timeNs >= begin && timeNs < end)
            timeNs = end;
    }
    return timeNs;
}

qint64 CameraModel::nextSourceNs() const
{
    if (!geometry().counterPattern)
        return std::max(triggerNs, sourceNs);
    const qint64 gap = frameIndex == 0 ? 0 : fromUs(link->scenario().frameGapUs);
    return afterPause(std::max(timeline.freeNs() + gap, sourceNs));
}

void CameraModel::scheduleTrigger()
{
    const double periodNs = 1e9 / camera.sensor.rateHz;
    // Triggers that fell into a spell of counter pattern are not made up for.
    const auto due = static_cast<quint64>(static_cast<double>(sourceNs - startNs) / periodNs);
    triggerIndex = std::max(triggerIndex, due);
    const double jitterNs = camera.sensor.jitterUs > 0.0 ? random.uniform() * camera.sensor.jitterUs * 1e3 : 0.0;
    triggerNs = startNs + static_cast<qint64>(static_cast<double>(triggerIndex) * periodNs + jitterNs);
    ++triggerIndex;
}

void CameraModel::runSource(qint64 nowNs)
{
    sourceNs = nowNs;
    const Geometry shape = geometry();
    announceDemand(shape);
    if (shape.counterPattern) {
        sendPattern(nowNs, shape);
    } else {
        if (afterPause(nowNs) == nowNs)
            trigger(nowNs, shape);
        scheduleTrigger();
    }
}

quint64 CameraModel::tickAt(qint64 timeNs) const
{
    // The camera begins a packet on the next tick of its clock.
    const double rate = 1.0 + camera.faults.driftPpm * 1e-6;
    return static_cast<quint64>(std::max(0.0, std::ceil(static_cast<double>(timeNs - clockEpochNs) * rate / 4.0)));
}

std::shared_ptr<WordTimes> CameraModel::wordTimes(const Geometry& shape) const
{
    const LinkScenario& pace = link->scenario();
    auto times = std::make_shared<WordTimes>();
    const double ticksPerWord =
        2000.0 / pace.rate * (1.0 + camera.faults.driftPpm * 1e-6); // 8 bytes, 250 ticks per us
    times->step = static_cast<quint64>(ticksPerWord * 0x1p32);
    times->words = (shape.linkBytes + 7) / 8;
    times->wordsPerPacket = pace.packetBytes / 8;
    times->start = camera.faults.tickStart;
    times->mask = camera.faults.tickBits >= 64 ? ~0ULL : (1ULL << camera.faults.tickBits) - 1;
    times->direction = camera.faults.tickDirection;
    return times;
}

void CameraModel::sendPattern(qint64 nowNs, const Geometry& shape)
{
    const auto times = wordTimes(shape);
    const quint64 packetBytes = link->scenario().packetBytes;
    const double share = link->share(this);
    for (quint64 sent = 0; sent < shape.linkBytes; sent += packetBytes) {
        const quint64 bytes = std::min(packetBytes, shape.linkBytes - sent);
        times->packetTicks.push_back(tickAt(timeline.send(nowNs, bytes, share)));
    }
    dispatch(newFrame(shape), times);
}

/// Bytes of the frame buffer; switched off, two packets are left between sensor and link.
quint64 CameraModel::bufferCapacity() const
{
    const bool off =
        params.value(QStringLiteral("dp_param_value[1/5/6]")) == VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED;
    return off ? quint64{link->scenario().packetBytes} * 2 : camera.bufferBytes;
}

void CameraModel::trigger(qint64 nowNs, const Geometry& shape)
{
    const qint64 exposureNs = fromUs(camera.sensor.exposureUs);
    if (nowNs < exposureEndNs || nowNs + exposureNs < readoutEndNs) {
        count(VN_COUNTER_MISSED_TRG_OVERLAP);
        return;
    }
    while (!buffer.empty() && buffer.front().leaveNs <= nowNs)
        buffer.pop_front();
    quint64 level = 0;
    for (const Packet& packet : buffer)
        level += packet.enterNs <= nowNs ? packet.bytes : 0;
    const quint64 wanted = camera.triggerReserveBytes > 0 ? camera.triggerReserveBytes : shape.linkBytes / 4;
    if (level + std::min(wanted, bufferCapacity() / 2) > bufferCapacity()) {
        count(VN_COUNTER_MISSED_TRG_OVERFLOW);
        return;
    }

    Frame frame = newFrame(shape);
    const qint64 readoutNs = nowNs + exposureNs;
    const double bytesPerNs = camera.sensor.dataRate * 1e-3;
    const double lengthNs =
        std::max(camera.sensor.readoutUs * 1e3, static_cast<double>(shape.linkBytes) / bytesPerNs);
    exposureEndNs = readoutNs;
    readoutEndNs = readoutNs + static_cast<qint64>(lengthNs);

    // A packet leaves when it has been read out. The frame is sent on trial: what does not fit never leaves.
    const LinkTimeline before = timeline;
    const auto times = wordTimes(shape);
    const double share = link->share(this);
    const quint64 packetBytes = link->scenario().packetBytes;
    std::vector<Packet> packets;
    for (quint64 sent = 0; sent < shape.linkBytes; sent += packetBytes) {
        const quint64 bytes = std::min(packetBytes, shape.linkBytes - sent);
        const double readOut = static_cast<double>(sent + bytes) / static_cast<double>(shape.linkBytes);
        const qint64 enterNs = readoutNs + static_cast<qint64>(readOut * lengthNs);
        times->packetTicks.push_back(tickAt(timeline.send(enterNs, bytes, share)));
        packets.push_back({enterNs, timeline.endNs(), bytes});
    }
    if (const auto full = overflowNs(packets, readoutNs)) {
        timeline = before;
        events.emplace(*full, Outcome{Fate::BufferLost, std::move(frame)});
        return;
    }
    buffer.insert(buffer.end(), packets.begin(), packets.end());
    dispatch(std::move(frame), times);
}

/// When the frame buffer overflows while a frame of these packets is read out, if it does. Data enter steadily and
/// leave by whole packets, so the level peaks just before a packet has left and at the end of the readout.
std::optional<qint64> CameraModel::overflowNs(const std::vector<Packet>& packets, qint64 readoutNs) const
{
    quint64 total = 0;
    for (const Packet& packet : packets)
        total += packet.bytes;
    const auto entered = [&](qint64 timeNs) {
        const double part = static_cast<double>(timeNs - readoutNs) /
                            static_cast<double>(std::max<qint64>(1, readoutEndNs - readoutNs));
        return static_cast<quint64>(std::clamp(part, 0.0, 1.0) * static_cast<double>(total));
    };
    std::vector<Packet> leaving(buffer.begin(), buffer.end());
    leaving.insert(leaving.end(), packets.begin(), packets.end());
    quint64 earlier = 0;
    for (const Packet& packet : buffer)
        earlier += packet.bytes;

    quint64 left = 0;
    for (const Packet& packet : leaving) {
        const qint64 peakNs = std::min(packet.leaveNs, readoutEndNs);
        if (peakNs > readoutNs && earlier + entered(peakNs) > bufferCapacity() + left)
            return peakNs;
        if (packet.leaveNs > readoutEndNs)
            break;
        left += packet.bytes;
    }
    return std::nullopt;
}

void CameraModel::dispatch(Frame frame, std::shared_ptr<const WordTimes> times)
{
    const auto clockUs = static_cast<qint64>(times->packetTicks.front() * 4 / 1000);
    frame.stampUs = static_cast<quint64>(std::max<qint64>(0, clockUs + stampOffsetUs));
    frame.times = std::move(times);
    if (FrameEntry* kept = entry(frame)) {
        kept->times = frame.times;
        kept->endNs = timeline.endNs();
    }
    const Fate fate = timeline.losesFrame() ? Fate::TransportLost : Fate::UnderWay;
    events.emplace(timeline.endNs(), Outcome{fate, std::move(frame)});
}

} // namespace sim
