// SPDX-License-Identifier: GPL-3.0-or-later
// The registry with hand-driven cameras "A", "B"..., as long as this lives.
#ifndef KESTROVA_TESTS_CAMERABENCH_H
#define KESTROVA_TESTS_CAMERABENCH_H

#include <vector>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "HandDrivenCamera.h"
#include "Scenarios.h"

struct CameraBench
{
    /// `loss`: share of the frames that are lost on the link.
    explicit CameraBench(int cameras, double loss = 0.0)
    {
        for (int i = 0; i < cameras; ++i) {
            sim::CameraScenario scenario = smallCamera();
            scenario.link.frameLoss = loss;
            scenario.name = scenario.id = QChar('A' + i);
            devices.push_back(std::make_shared<sim::HandDrivenCamera>(scenario));
            registry.addDevice(devices.back());
        }
    }
    ~CameraBench() { registry.removeAllDevices(); }

    /// False if no image came.
    bool receive(VNCORE_HANDLE camera)
    {
        image.size = sizeof image;
        return vnApi_GetImage(camera, 20000, &image, nullptr, true); // ended by what a test does
    }

    CameraRegistry& registry = CameraRegistry::instance();
    std::vector<std::shared_ptr<sim::HandDrivenCamera>> devices;
    VN_IMG image{}; ///< what was received last
};

#endif
