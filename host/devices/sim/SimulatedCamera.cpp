// SPDX-License-Identifier: GPL-3.0-or-later
// The model behind a device: calls, faults, losses and image waits.
#include "SimulatedCamera.h"

#include <algorithm>
#include <utility>

namespace sim {

SimulatedCamera::SimulatedCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link,
                                 size_t ledgerFrames, Clock clock)
    : model(scenario, std::move(link), ledgerFrames), nowLocked(std::move(clock))
{
    setFaultsLocked(scenario.faults);
}

SimulatedCamera::~SimulatedCamera() = default;

// Bringing the model up to date is no change that a caller of a const operation could see otherwise.
SimulatedCamera::Turn::Turn(const SimulatedCamera& owner)
    : lock(owner.mutex), camera(const_cast<SimulatedCamera&>(owner))
{
    camera.advanceLocked(camera.nowLocked());
}

SimulatedCamera::Turn::~Turn()
{
    lock.unlock();
    camera.notifier.tell();
}

void SimulatedCamera::Turn::tell()
{
    if (!camera.notifier.hasNews())
        return;
    lock.unlock();
    camera.notifier.tell();
    lock.lock();
}

void SimulatedCamera::advanceLocked(qint64 nowNs)
{
    while (!schedule.empty() && schedule.back().timeNs <= nowNs) {
        const Change change = schedule.back();
        schedule.pop_back();
        model.advanceTo(change.timeNs);
        setLostLocked(change.lost);
    }
    const bool hadFrame = model.hasFrame();
    model.advanceTo(nowNs);
    if (model.hasFrame() && !hadFrame)
        changed.notify_all();
}

std::optional<qint64> SimulatedCamera::nextEventLocked() const
{
    auto next = model.nextEventNs();
    if (!schedule.empty() && (!next || schedule.back().timeNs < *next))
        next = schedule.back().timeNs;
    return next;
}

void SimulatedCamera::setFaultsLocked(const Faults& faults)
{
    model.setFaults(faults);
    refusalUses.assign(faults.refuse.size(), 0);
    schedule.clear();
    for (const Window& loss : faults.loss) {
        schedule.push_back({static_cast<qint64>(loss.atMs * 1e6), true});
        if (loss.forMs > 0.0)
            schedule.push_back({static_cast<qint64>((loss.atMs + loss.forMs) * 1e6), false});
    }
    std::stable_sort(schedule.begin(), schedule.end(),
                     [](const Change& a, const Change& b) { return a.timeNs > b.timeNs; });
    changed.notify_all();
}

void SimulatedCamera::setLostLocked(bool nowLost)
{
    if (lost == nowLost)
        return;
    lost = nowLost;
    notifier.note();
    if (lost) {
        model.stop();
        if (acquisition == Acquisition::Running)
            acquisition = Acquisition::Cut;
    } else {
        model.powerUp(nowLocked());
    }
    changed.notify_all();
}

bool SimulatedCamera::refusedLocked(const HostCall& call)
{
    const std::vector<Refusal>& refusals = model.scenario().faults.refuse;
    bool refused = false;
    for (size_t i = 0; i < refusals.size(); ++i) {
        const Refusal& refusal = refusals[i];
        const bool matches = refusal.call == call.kind &&
                             (refusal.parameter.isEmpty() || refusal.parameter == call.parameter) &&
                             (!refusal.value || *refusal.value == call.value);
        if (matches && (++refusalUses[i] == refusal.nth || refusal.nth == 0))
            refused = true;
    }
    return refused;
}

SxCameraInfo SimulatedCamera::info() const
{
    const CameraScenario& scenario = model.scenario(); // these texts never change
    return {scenario.name, scenario.id, scenario.customId};
}

CameraLink SimulatedCamera::link() const
{
    const LinkScenario& link = model.linkScenario(); // nor do these
    return {link.name, link.rate};
}

bool SimulatedCamera::getInt(const char* name, int& value)
{
    const HostCall call{Call::Get, name};
    if (!admit(call))
        return false;
    const Turn turn(*this);
    return !lost && !refusedLocked(call) && model.get(QLatin1String(name), value);
}

bool SimulatedCamera::setInt(const char* name, int value)
{
    const HostCall call{Call::Set, name, value};
    if (!admit(call))
        return false;
    const Turn turn(*this);
    if (lost || refusedLocked(call) || !model.set(QLatin1String(name), value, nowLocked()))
        return false;
    changed.notify_all(); // a drive may have other things to do now
    return true;
}

bool SimulatedCamera::canSet(const char* name, int value)
{
    const HostCall call{Call::CanSet, name, value};
    if (!admit(call))
        return false;
    const Turn turn(*this);
    return !lost && !refusedLocked(call) && model.parameters().canSet(QLatin1String(name), value);
}

bool SimulatedCamera::hasParameter(const char* name) const
{
    const Turn turn(*this);
    return model.parameters().has(QLatin1String(name));
}

QList<CxCameraParam::SxEnumItem> SimulatedCamera::enumeration(const char* name) const
{
    const Turn turn(*this);
    return model.parameters().enumeration(QLatin1String(name));
}

bool SimulatedCamera::start()
{
    const HostCall call{Call::Start, {}};
    if (!admit(call))
        return false;
    const Turn turn(*this);
    if (lost || refusedLocked(call))
        return false;
    model.start(nowLocked());
    acquisition = Acquisition::Running;
    changed.notify_all();
    return true;
}

bool SimulatedCamera::stop()
{
    const HostCall call{Call::Stop, {}};
    if (!admit(call))
        return false;
    const Turn turn(*this);
    if (acquisition == Acquisition::Running && refusedLocked(call))
        return false;
    model.stop();
    acquisition = Acquisition::Idle;
    ++waitEpoch;
    changed.notify_all();
    return true;
}

bool SimulatedCamera::isLost() const
{
    const Turn turn(*this);
    return lost;
}

void SimulatedCamera::setLossListener(std::function<void(bool)> listener)
{
    notifier.setListener(std::move(listener));
}

Ledger SimulatedCamera::ledger() const
{
    const Turn turn(*this);
    return model.ledger();
}

QMap<QString, int> SimulatedCamera::parameters(bool selectors) const
{
    const Turn turn(*this);
    return model.parameters().writable(selectors);
}

Faults SimulatedCamera::faults() const
{
    const Turn turn(*this);
    return model.scenario().faults;
}

void SimulatedCamera::setFaults(const Faults& faults)
{
    const Turn turn(*this);
    setFaultsLocked(faults);
    advanceLocked(nowLocked());
}

void SimulatedCamera::lose()
{
    const Turn turn(*this);
    setLostLocked(true);
}

void SimulatedCamera::comeBack()
{
    const Turn turn(*this);
    setLostLocked(false);
}

void SimulatedCamera::handOut(const Frame& frame, const Faults& faults, DeviceImage& image)
{
    image = DeviceImage();
    VN_IMG& out = image.descriptor;
    out.size = sizeof(VN_IMG);
    out.width = frame.width;
    out.height = frame.height;
    out.frameNumber = frame.number;
    out.tsSec = static_cast<quint32>(frame.stampUs / 1000000);
    out.tsUSec = static_cast<quint32>(frame.stampUs % 1000000);
    out.dataFormat = static_cast<quint32>(frame.format);
    out.bitDepth = static_cast<quint32>(frame.bitDepth);
    if (faults.oddSize.contains(frame.index)) {
        out.width = faults.oddWidth;
        out.height = faults.oddHeight;
    }
    if (faults.nullData.contains(frame.index))
        return;
    const std::shared_ptr<quint64> memory = pool.take(frame.imageBytes);
    render(frame, memory.get());
    out.dataBytes = frame.imageBytes;
    if (faults.shortData.contains(frame.index))
        out.dataBytes = std::min(out.dataBytes, faults.shortBytes);
    out.data = memory.get();
    image.memory = memory;
}

} // namespace sim
