// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated camera for tests: no thread and no real waiting. Time is the model's and moves only when
// somebody waits for an image or a test moves it; the test can step into every host call.
#ifndef KESTROVA_SIM_HANDDRIVENCAMERA_H
#define KESTROVA_SIM_HANDDRIVENCAMERA_H

#include <functional>

#include "sim/SimulatedCamera.h"

namespace sim {

/// All operations may be called from any thread.
class HandDrivenCamera final : public SimulatedCamera
{
public:
    /// Cameras that are given the same link share it; without one the camera has a link as in its scenario.
    explicit HandDrivenCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link = nullptr);
    ~HandDrivenCamera() override;

    // --- image waits ---
    // An image wait moves the model to the next frame or to its limit and returns without waiting (lockstep).
    // With gated waits each one first blocks until the test lets it go; a stop ends blocked ones.
    void setGated(bool gated);
    /// Lets that many waits go, blocked ones and later ones.
    void release(int waits = 1);
    /// Blocks until a wait stands at the gate with nothing released, which means that whoever waits is done
    /// with everything before. False after `limit` of real time.
    bool settle(std::chrono::milliseconds limit = std::chrono::seconds(20));

    // --- model time ---
    std::chrono::nanoseconds now() const;
    /// Lets model time pass without a wait: frames arrive and wait for the host, losses and returns happen.
    void advance(std::chrono::nanoseconds duration);

    // --- host calls ---
    /// Called at the start of each host call, on its thread, with no lock held; false makes the call fail. An
    /// empty function removes the hook.
    using Hook = std::function<bool(const HostCall&)>;
    void setHook(Hook hook);

    // --- the model itself, past hooks, faults and loss ---
    /// One of them, by the name that parameters() uses; -1 if there is none.
    int parameter(const QString& name) const;
    void setParameter(const QString& name, int value);
    bool isAcquiring() const;

    bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) override;
    /// What the ledger has as lost on the link.
    std::optional<LostFrames> lostFrames() const override;

protected:
    bool admit(const HostCall& call) override;

private:
    bool passGate(std::unique_lock<std::mutex>& lock);

    // Guarded by `mutex`.
    qint64 clockNs = 0;
    bool gated = false;
    int released = 0;
    int atGate = 0; ///< waits that stand there
    std::shared_ptr<const Hook> hook;
};

} // namespace sim

#endif
