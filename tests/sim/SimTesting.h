// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the simulated cameras share: a small camera and the way a measurement prepares one.
#ifndef KESTROVA_TESTS_SIMTESTING_H
#define KESTROVA_TESTS_SIMTESTING_H

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include "sim/Scenario.h"

namespace simtest {

using namespace std::chrono_literals;

/// 64 KiB of transport data a frame in 16 packets.
inline sim::CameraScenario smallCamera()
{
    sim::CameraScenario camera;
    camera.sensor.width = 256;
    camera.sensor.height = 128;
    camera.link.rate = 350.0;
    camera.link.packetBytes = 4096;
    camera.link.gapUs = 1.0;
    return camera;
}

using Saved = std::vector<std::pair<const char*, int>>;

/// Switches a camera to the counter pattern. Returns what is to be written back, in that order; nothing if the
/// camera refused anything.
template<typename Camera>
std::optional<Saved> prepare(Camera& camera)
{
    Saved saved;
    for (const auto& [name, value] : Saved{{"buffer_policy", 0},
                                           {"imgdataformat", 7},
                                           {"output_bit_depth", 16},
                                           {"output_bit_packing", 0},
                                           {"column_fpn_correction", 0},
                                           {"row_fpn_correction", 0},
                                           {"LUTEnable", 0},
                                           {"test_pattern_generator_selector", 1},
                                           {"test_pattern", 11}}) {
        int before = 0;
        if (!camera.getInt(name, before) || !camera.setInt(name, value))
            return std::nullopt;
        saved.insert(saved.begin(), {name, before});
    }
    camera.setInt("ts_rst_mode", 0);
    camera.setInt("ts_rst_source", 19);
    return saved;
}

} // namespace simtest

#endif
