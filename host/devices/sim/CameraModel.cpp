// SPDX-License-Identifier: GPL-3.0-or-later
// Acquisition, clock, queue and ledger of the model; what sensor and pattern generator do is in CameraSource.cpp.
#include "CameraModel.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

constexpr int resetNow = 19; ///< "ts_rst_source"
constexpr int resetOnce = 0; ///< "ts_rst_mode"
constexpr int resetAtStart = 1;

} // namespace

CameraModel::CameraModel(const CameraScenario& scenario, std::shared_ptr<SharedLink> sharedLink, size_t ledgerFrames)
    : camera(scenario),
      link(sharedLink ? std::move(sharedLink) : std::make_shared<SharedLink>(scenario.link)),
      ledgerLimit(ledgerFrames),
      params(scenario),
      timeline(link->scenario(), scenario.seed),
      random(~scenario.seed)
{
    setFaults(scenario.faults);
}

CameraModel::~CameraModel()
{
    link->setDemand(this, 0.0);
}

void CameraModel::setFaults(const Faults& faults)
{
    camera.faults = faults;
    std::sort(camera.faults.noImage.begin(), camera.faults.noImage.end(),
              [](const Window& a, const Window& b) { return a.atMs < b.atMs; });
}

void CameraModel::powerUp(qint64 nowNs)
{
    stop();
    params = ParameterFile(camera);
    book = Ledger();
    nextSerial = 0;
    clockEpochNs = nowNs;
}

bool CameraModel::get(const QString& name, int& value)
{
    for (size_t i = 0; i < book.counters.size(); ++i)
        params.poke(QStringLiteral("counter_value[%1]").arg(i), book.counters[i]);
    return params.get(name, value);
}

bool CameraModel::set(const QString& name, int value, qint64 nowNs)
{
    if (!params.set(name, value))
        return false;
    const QString source = QStringLiteral(VN_PRM_TS_RST_SOURCE);
    if (name == source && value == resetNow && params.value(QStringLiteral(VN_PRM_TS_RST_MODE)) == resetOnce) {
        clockEpochNs = nowNs;
        params.poke(source, 0); // done; the next write resets again
    }
    return true;
}

void CameraModel::start(qint64 nowNs)
{
    stop();
    running = true;
    startNs = nowNs;
    if (params.value(QStringLiteral(VN_PRM_TS_RST_MODE)) == resetAtStart &&
        params.value(QStringLiteral(VN_PRM_TS_RST_SOURCE)) == resetNow)
        clockEpochNs = nowNs;
    frameIndex = 0;
    numberOffset = 0;
    stampOffsetUs = 0;
    triggerIndex = 0;
    sourceNs = nowNs;
    exposureEndNs = readoutEndNs = nowNs;
    book.frames.clear();
    timeline.restart(nowNs);
    scheduleTrigger();
    announceDemand(geometry());
}

void CameraModel::stop()
{
    running = false;
    link->setDemand(this, 0.0);
    for (const auto& [time, outcome] : std::exchange(events, {}))
        settle(outcome.frame, Fate::Discarded);
    for (const Frame& frame : std::exchange(queue, {}))
        settle(frame, Fate::Discarded);
    buffer.clear();
}

std::optional<qint64> CameraModel::nextEventNs() const
{
    if (!running)
        return std::nullopt;
    const qint64 source = nextSourceNs();
    return events.empty() ? source : std::min(source, events.begin()->first);
}

void CameraModel::advanceTo(qint64 nowNs)
{
    while (running) {
        const qint64 source = nextSourceNs();
        const qint64 outcome = events.empty() ? source : events.begin()->first;
        if (std::min(source, outcome) > nowNs)
            return;
        if (source < outcome || events.empty()) {
            runSource(source);
            continue;
        }
        auto [fate, frame] = std::move(events.extract(events.begin()).mapped());
        if (fate == Fate::BufferLost)
            count(VN_COUNTER_BUFFER_OVERFLOW);
        else if (fate == Fate::TransportLost)
            count(VN_COUNTER_TRANSPORT_SKIP);
        if (fate == Fate::UnderWay)
            arrive(std::move(frame));
        else
            settle(frame, fate);
    }
}

void CameraModel::arrive(Frame frame)
{
    if (queue.size() == camera.queueFrames) {
        count(VN_COUNTER_API_SKIP);
        settle(queue.front(), Fate::ApiLost);
        queue.pop_front();
    }
    queue.push_back(std::move(frame));
}

Frame CameraModel::takeFrame()
{
    Frame frame = std::move(queue.front());
    queue.pop_front();
    count(VN_COUNTER_TRANSFERRED);
    settle(frame, Fate::Received);
    return frame;
}

Frame CameraModel::newFrame(const Geometry& shape)
{
    Frame frame;
    frame.serial = nextSerial++;
    frame.index = frameIndex++;
    if (camera.faults.numberJump.contains(frame.index))
        numberOffset += static_cast<quint32>(camera.faults.numberJumpBy);
    frame.number = static_cast<quint32>(frame.index) + numberOffset;
    if (camera.faults.stampJump.contains(frame.index))
        stampOffsetUs += static_cast<qint64>(camera.faults.stampJumpMs * 1e3);
    frame.width = camera.sensor.width;
    frame.height = camera.sensor.height;
    frame.format = shape.format;
    frame.bitDepth = shape.bitDepth;
    frame.imageBytes = shape.imageBytes;
    frame.linkBytes = shape.linkBytes;
    frame.counterPattern = shape.counterPattern;

    for (Ledger::Total* total : {&book.produced, &book.fates[static_cast<size_t>(Fate::UnderWay)]}) {
        total->frames += 1;
        total->bytes += frame.linkBytes;
    }
    FrameEntry entry;
    entry.number = static_cast<quint32>(frame.index);
    entry.bytes = frame.linkBytes;
    entry.counterPattern = frame.counterPattern;
    book.frames.push_back(std::move(entry));
    while (book.frames.size() > ledgerLimit)
        book.frames.pop_front();
    return frame;
}

FrameEntry* CameraModel::entry(const Frame& frame)
{
    const quint64 age = nextSerial - frame.serial; // 1 for the newest
    return age <= book.frames.size() ? &book.frames[book.frames.size() - age] : nullptr;
}

void CameraModel::settle(const Frame& frame, Fate fate)
{
    Ledger::Total& before = book.fates[static_cast<size_t>(Fate::UnderWay)];
    Ledger::Total& after = book.fates[static_cast<size_t>(fate)];
    before.frames -= 1;
    before.bytes -= frame.linkBytes;
    after.frames += 1;
    after.bytes += frame.linkBytes;
    if (FrameEntry* kept = entry(frame))
        kept->fate = fate;
}

} // namespace sim
