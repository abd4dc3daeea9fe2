// SPDX-License-Identifier: GPL-3.0-or-later
// A record on a hand-driven camera: the worker gets as many images as the test releases.
#ifndef KESTROVA_MEASUREMENTBENCH_H
#define KESTROVA_MEASUREMENTBENCH_H

#include "CameraLineData.h"
#include "CameraRegistry.h"
#include "HandDrivenCamera.h"
#include "Scenarios.h"

/// Owns the record. After take() the worker waits in the camera, so the record may be looked at without its mutex.
class MeasurementBench
{
public:
    explicit MeasurementBench(const sim::CameraScenario& scenario = {}, qint32 mode = MeasModeDataThroughput,
                              std::shared_ptr<sim::SharedLink> link = nullptr)
        : camera(std::make_shared<sim::HandDrivenCamera>(scenario, std::move(link)))
    {
        camera->setGated(true);
        data.measMode = mode;
        CameraRegistry& registry = CameraRegistry::instance();
        data.hCam = registry.open(registry.addDevice(camera));
        own = camera->parameters();
    }
    ~MeasurementBench()
    {
        stop();
        CameraRegistry::instance().close(data.hCam);
    }

    /// Lets the worker have that many images (or failures) and waits until it is done with them.
    bool take(int images)
    {
        camera->release(images);
        return camera->settle();
    }
    bool measure(int images, qint32 period = 4096, qint32 capacity = 1000000)
    {
        return data.startMeasurement(period, capacity) && take(images);
    }
    /// The worker then takes what it finds until it sees the stop.
    bool stop()
    {
        camera->setGated(false);
        const bool stopped = data.stopMeasurement();
        camera->setGated(true);
        return stopped;
    }

    /// Gives the camera values that all differ from those of a measurement.
    void setOwnValues()
    {
        for (const auto& [name, value] : {std::pair("imgdataformat", int(VN_FRM_MONO16)),
                                          {"output_bit_depth", 12},
                                          {"output_bit_packing", 1},
                                          {"LUTEnable", 1},
                                          {"test_pattern[0]", 1},
                                          {"test_pattern[1]", 1}})
            camera->setParameter(QLatin1String(name), value);
        own = camera->parameters();
    }
    /// Whether nothing is left of a measurement: no worker, and the camera has its own values.
    bool isAtRest() const
    {
        return !data.isMeasuring() && !data.thread && !camera->isAcquiring() && camera->parameters() == own;
    }

    std::shared_ptr<sim::HandDrivenCamera> camera;
    CxCameraLineData data;
    QMap<QString, int> own; ///< the camera's values when nothing is measured
};

#endif
