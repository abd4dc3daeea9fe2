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
    int format = 0, depth = 0, packing = 0, policy = 0, column = 0, row = 0, lut = 0, generator = 0, pattern = 0;
    const bool done = camera.getInt("imgdataformat", format) && camera.getInt("output_bit_depth", depth) &&
                      camera.getInt("output_bit_packing", packing) && camera.getInt("buffer_policy", policy) &&
                      camera.getInt("column_fpn_correction", column) && camera.getInt("row_fpn_correction", row) &&
                      camera.getInt("LUTEnable", lut) && camera.setInt("buffer_policy", 0) &&
                      camera.setInt("imgdataformat", 7) && camera.setInt("output_bit_depth", 16) &&
                      camera.setInt("output_bit_packing", 0) && camera.setInt("column_fpn_correction", 0) &&
                      camera.setInt("row_fpn_correction", 0) && camera.setInt("LUTEnable", 0) &&
                      camera.getInt("test_pattern_generator_selector", generator) &&
                      camera.setInt("test_pattern_generator_selector", 1) && camera.getInt("test_pattern", pattern) &&
                      camera.setInt("test_pattern", 11);
    if (!done)
        return std::nullopt;
    Saved saved{{"test_pattern", pattern},
                {"test_pattern_generator_selector", generator},
                {"output_bit_packing", packing},
                {"output_bit_depth", depth},
                {"imgdataformat", format},
                {"buffer_policy", policy},
                {"column_fpn_correction", column},
                {"row_fpn_correction", row},
                {"LUTEnable", lut}};
    if (camera.canSet("dp_unit_selector", 1) && camera.canSet("dp_proc_selector", 5) &&
        camera.canSet("dp_param_selector", 6)) {
        camera.setInt("dp_unit_selector", 1);
        camera.setInt("dp_proc_selector", 5);
        camera.setInt("dp_param_selector", 6);
        camera.setInt("dp_param_value", 9);
        saved.insert(saved.end(), {{"dp_param_selector", 6}, {"dp_param_value", 10}});
    }
    camera.setInt("device_unit_selector", 1);
    camera.setInt("device_unit_register_selector", 55);
    camera.setInt("device_unit_register_value", 25000);
    saved.insert(
        saved.begin(),
        {{"device_unit_selector", 1}, {"device_unit_register_selector", 55}, {"device_unit_register_value", 1}});
    camera.setInt("ts_rst_mode", 0);
    camera.setInt("ts_rst_source", 19);
    return saved;
}

template<typename Camera>
void restore(Camera& camera, const Saved& saved)
{
    for (const auto& [name, value] : saved)
        camera.setInt(name, value);
}

} // namespace simtest

#endif
