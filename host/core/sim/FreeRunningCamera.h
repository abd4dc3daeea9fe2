// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated camera for people: its model time is real time.
#ifndef KESTROVA_SIM_FREERUNNINGCAMERA_H
#define KESTROVA_SIM_FREERUNNINGCAMERA_H

#include <thread>

#include "SimulatedCamera.h"

namespace sim {

/// One thread for the camera's life lets the model's events happen when they are due, on an absolute schedule.
class VNCORE_EXPORT FreeRunningCamera final : public SimulatedCamera
{
public:
    explicit FreeRunningCamera(const CameraScenario& scenario, std::shared_ptr<SharedLink> link = nullptr);
    ~FreeRunningCamera() override;

    bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) override;

protected:
    qint64 nowLocked() const override;

private:
    void run();

    const std::chrono::steady_clock::time_point origin = std::chrono::steady_clock::now();
    bool ending = false; ///< guarded by `mutex`
    std::thread thread;
};

} // namespace sim

#endif
