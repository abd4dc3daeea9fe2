// SPDX-License-Identifier: GPL-3.0-or-later
// What a family of cameras supplies to have its keeping of the device contract tested.
#ifndef KESTROVA_TESTS_DEVICECONTRACT_H
#define KESTROVA_TESTS_DEVICECONTRACT_H

#include <functional>
#include <map>

#include "CameraDevice.h"

/// A camera that sends at least ten frames a second once it is started. What needs a hook that a family does not have
/// is skipped. A hook may take effect later than it returns.
struct ContractCamera
{
    std::shared_ptr<CameraDevice> device;
    std::function<void()> lose{};
    std::function<void()> comeBack{};
    std::function<void()> silence{}; ///< from now on it sends nothing, although it acquires
    /// The clock whose time an image wait uses up.
    std::function<std::chrono::nanoseconds()> now = [] {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch());
    };
};

/// Makers of a new camera, by name of the family. Each program of the suite has its own.
std::map<const char*, std::function<ContractCamera()>> contractFamilies();

#endif
