// SPDX-License-Identifier: GPL-3.0-or-later
// Simulated cameras, with a thread and driven by hand.
#include "DeviceContract.h"
#include "HandDrivenCamera.h"
#include "Scenarios.h"
#include "sim/FreeRunningCamera.h"

namespace {

template<typename Camera>
ContractCamera make()
{
    sim::CameraScenario scenario = smallCamera();
    scenario.queueFrames = 1000; // whatever else the machine does meanwhile
    const auto camera = std::make_shared<Camera>(scenario);
    ContractCamera made{camera};
    made.lose = [camera = camera.get()] { camera->lose(); };
    made.comeBack = [camera = camera.get()] { camera->comeBack(); };
    made.silence = [camera = camera.get()] {
        sim::Faults faults;
        faults.noImage = {{0.0, 1e9}};
        camera->setFaults(faults);
    };
    if constexpr (std::is_same_v<Camera, sim::HandDrivenCamera>)
        made.now = [camera = camera.get()] { return camera->now(); };
    return made;
}

} // namespace

std::map<const char*, std::function<ContractCamera()>> contractFamilies()
{
    return {{"free running", make<sim::FreeRunningCamera>}, {"driven by hand", make<sim::HandDrivenCamera>}};
}
