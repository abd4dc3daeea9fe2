// SPDX-License-Identifier: GPL-3.0-or-later
// The thread that drives a camera in real time.
#include "FreeRunningCamera.h"

#include <new>

namespace sim {

namespace {

constexpr size_t ledgerFrames = 256; // totals are what matters in a run of days

} // namespace

FreeRunningCamera::FreeRunningCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link)
    : SimulatedCamera(scenario, std::move(link), ledgerFrames, [this] { return modelTime(); }),
      thread([this] { run(); })
{
}

FreeRunningCamera::~FreeRunningCamera()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ending = true;
        ++waitEpoch;
        changed.notify_all();
    }
    thread.join();
}

qint64 FreeRunningCamera::modelTime()
{
    const std::chrono::nanoseconds real = std::chrono::steady_clock::now() - origin;
    return clock.at(real.count(), model.acquiring() ? nextEventLocked() : std::nullopt);
}

void FreeRunningCamera::run()
{
    for (bool over = false; !over;) {
        try {
            over = runToNextEvent();
        } catch (const std::bad_alloc&) {
            std::this_thread::yield(); // the frame is lost, the camera goes on
        }
    }
}

/// True at the camera's end.
bool FreeRunningCamera::runToNextEvent()
{
    Turn turn(*this);
    if (ending)
        return true;
    if (notifier.hasNews())
        return false; // told at the turn's end, before anything is waited for
    if (const auto next = nextEventLocked())
        changed.wait_until(turn.lock, origin + std::chrono::nanoseconds(clock.realNs(*next)));
    else
        changed.wait(turn.lock);
    return false;
}

bool FreeRunningCamera::waitForImage(std::chrono::milliseconds limit, DeviceImage& image)
{
    const HostCall call{Call::Wait, {}, static_cast<int>(limit.count())};
    const auto deadline = std::chrono::steady_clock::now() + limit;
    Frame frame;
    Faults faults;
    {
        Turn turn(*this);
        if (acquisition == Acquisition::Idle || refusedLocked(call))
            return false;
        const quint64 epoch = waitEpoch;
        changed.wait_until(turn.lock, deadline, [&] { return epoch != waitEpoch || model.hasFrame(); });
        if (epoch != waitEpoch || !model.hasFrame())
            return false;
        frame = model.takeFrame();
        faults = model.scenario().faults;
    }
    handOut(frame, faults, image);
    return true;
}

} // namespace sim
