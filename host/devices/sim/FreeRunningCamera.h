// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated camera for people: its model time is real time.
#ifndef KESTROVA_SIM_FREERUNNINGCAMERA_H
#define KESTROVA_SIM_FREERUNNINGCAMERA_H

#include <thread>

#include "ModelClock.h"
#include "SimulatedCamera.h"

namespace sim {

/// One thread for the camera's life lets the model's events happen when they are due, on an absolute schedule. On a
/// computer too slow for that, the camera's time stands still now and then, lest it falls behind for ever.
class FreeRunningCamera final : public SimulatedCamera
{
public:
    explicit FreeRunningCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link = nullptr);
    ~FreeRunningCamera() override;

    bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) override;

private:
    void run();
    bool runToNextEvent();
    qint64 modelTime();

    const std::chrono::steady_clock::time_point origin = std::chrono::steady_clock::now();

    // Guarded by `mutex`.
    ModelClock clock;
    bool ending = false;

    std::thread thread;
};

} // namespace sim

#endif
