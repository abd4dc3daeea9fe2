// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the simulated cameras share: a small camera and the way a measurement prepares one.
#ifndef KESTROVA_TESTS_SIMTESTING_H
#define KESTROVA_TESTS_SIMTESTING_H

#include <chrono>
#include <utility>

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

/// Switches a camera to the counter pattern, with ticks that begin now; false if it refused anything.
template<typename Camera>
bool prepare(Camera& camera)
{
    bool taken = true;
    for (const auto& [name, value] : {std::pair("imgdataformat", 7),
                                      {"output_bit_depth", 16},
                                      {"output_bit_packing", 0},
                                      {"test_pattern_generator_selector", 1},
                                      {"test_pattern", 11},
                                      {"ts_rst_mode", 0},
                                      {"ts_rst_source", 19}})
        taken = camera.setInt(name, value) && taken;
    return taken;
}

} // namespace simtest

#endif
