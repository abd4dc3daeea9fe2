// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras that several tests simulate.
#ifndef KESTROVA_TESTS_SCENARIOS_H
#define KESTROVA_TESTS_SCENARIOS_H

#include <utility>

#include "sim/Scenario.h"

/// Of two blocks a frame unless told otherwise.
inline sim::CameraScenario smallCamera(quint32 size = 64)
{
    sim::CameraScenario scenario;
    scenario.sensor.width = scenario.sensor.height = size;
    return scenario;
}

/// 64 KiB of transport data a frame in 16 packets.
inline sim::CameraScenario packetCamera()
{
    sim::CameraScenario scenario;
    scenario.sensor.width = 256;
    scenario.sensor.height = 128;
    scenario.link.rate = 350.0;
    scenario.link.packetBytes = 4096;
    return scenario;
}

/// Loses frames in every way there is.
inline sim::CameraScenario lossyCamera()
{
    sim::CameraScenario scenario;
    scenario.bufferBytes = 1 << 20;
    scenario.queueFrames = 2;
    scenario.sensor.rateHz = 900; // 472 MB/s of images that the link cannot take
    scenario.sensor.jitterUs = 400;
    scenario.sensor.readoutUs = 1000;
    scenario.sensor.dataRate = 2000;
    scenario.link.rate = 200;
    scenario.link.frameLoss = 0.1;
    scenario.link.jitterUs = 50;
    scenario.link.stallEveryMs = 5;
    scenario.link.stallUs = 700;
    scenario.link.randomStallsPerSecond = 20;
    scenario.link.randomStallUs = 500;
    return scenario;
}

/// Switches a camera to the counter pattern, as a measurement does; false if it refused anything.
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

#endif
