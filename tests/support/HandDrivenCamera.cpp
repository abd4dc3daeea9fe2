// SPDX-License-Identifier: GPL-3.0-or-later
// Model time that moves with the image waits, the gate before them, and the hook.
#include "HandDrivenCamera.h"

#include <algorithm>

namespace sim {

namespace {

constexpr size_t ledgerFrames = 20000; // more than a test looks at, and a bound for one that spins

} // namespace

HandDrivenCamera::HandDrivenCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link)
    : SimulatedCamera(scenario, std::move(link), ledgerFrames, [this] { return clockNs; })
{
}

HandDrivenCamera::~HandDrivenCamera() = default;

void HandDrivenCamera::setGated(bool on)
{
    const Turn turn(*this);
    gated = on;
    changed.notify_all();
}

void HandDrivenCamera::release(int waits)
{
    const Turn turn(*this);
    released += waits;
    changed.notify_all();
}

bool HandDrivenCamera::settle(std::chrono::milliseconds limit)
{
    Turn turn(*this);
    return changed.wait_until(turn.lock, std::chrono::steady_clock::now() + limit,
                              [this] { return atGate > 0 && released == 0; });
}

/// False if the wait was ended at the gate.
bool HandDrivenCamera::passGate(std::unique_lock<std::mutex>& lock)
{
    if (!gated)
        return true;
    const quint64 epoch = waitEpoch;
    ++atGate;
    changed.notify_all();
    changed.wait(lock, [&] { return !gated || released > 0 || epoch != waitEpoch; });
    --atGate;
    if (epoch != waitEpoch)
        return false;
    released = std::max(0, released - 1);
    return true;
}

std::chrono::nanoseconds HandDrivenCamera::now() const
{
    const Turn turn(*this);
    return std::chrono::nanoseconds(clockNs);
}

void HandDrivenCamera::advance(std::chrono::nanoseconds duration)
{
    Turn turn(*this);
    const qint64 target = clockNs + duration.count();
    // Step by step, so that what happens on the way finds, and is told at, the time at which it happens.
    for (auto next = nextEventLocked(); next && *next <= target; next = nextEventLocked()) {
        clockNs = std::max(clockNs, *next);
        advanceLocked(clockNs);
        turn.tell();
    }
    clockNs = std::max(clockNs, target);
}

std::optional<LostFrames> HandDrivenCamera::lostFrames() const
{
    LostFrames frames;
    frames.onTheWay = ledger().total(Fate::TransportLost).frames;
    return frames;
}

bool HandDrivenCamera::waitForImage(std::chrono::milliseconds limit, DeviceImage& image)
{
    const HostCall call{Call::Wait, {}, static_cast<int>(limit.count())};
    if (!admit(call))
        return false;
    Frame frame;
    Faults faults;
    {
        Turn turn(*this);
        if (acquisition == Acquisition::Idle || refusedLocked(call) || !passGate(turn.lock))
            return false;
        const quint64 epoch = waitEpoch;
        const qint64 limitNs = clockNs + std::chrono::nanoseconds(limit).count();
        while (!model.hasFrame()) {
            const qint64 next = std::min(limitNs, nextEventLocked().value_or(limitNs));
            clockNs = std::max(clockNs, next);
            advanceLocked(clockNs);
            turn.tell();
            if (epoch != waitEpoch || (clockNs >= limitNs && !model.hasFrame()))
                return false;
        }
        frame = model.takeFrame();
        faults = model.scenario().faults;
    }
    handOut(frame, faults, image);
    return true;
}

bool HandDrivenCamera::admit(const HostCall& call)
{
    std::shared_ptr<const Hook> present;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        present = hook;
    }
    return !present || (*present)(call);
}

void HandDrivenCamera::setHook(Hook next)
{
    const std::lock_guard<std::mutex> lock(mutex);
    hook = next ? std::make_shared<const Hook>(std::move(next)) : nullptr;
}

int HandDrivenCamera::parameter(const QString& name) const
{
    const Turn turn(*this);
    return model.parameters().value(name);
}

void HandDrivenCamera::setParameter(const QString& name, int value)
{
    const Turn turn(*this);
    model.parameters().poke(name, value);
}

bool HandDrivenCamera::isAcquiring() const
{
    const Turn turn(*this);
    return acquisition == Acquisition::Running;
}

} // namespace sim
