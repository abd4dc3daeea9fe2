// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated camera that loses frames in every way there is.
#ifndef KESTROVA_LOSSYCAMERA_H
#define KESTROVA_LOSSYCAMERA_H

#include "sim/Scenario.h"

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
    return scenario;
}

#endif
