// SPDX-License-Identifier: GPL-3.0-or-later
// The figures of a run as a fleet's monitoring wants them: base units, names and labels by its conventions.
#ifndef KESTROVA_MEASURE_METRICS_H
#define KESTROVA_MEASURE_METRICS_H

#include <memory>
#include <string>
#include <vector>

#include "Figures.h"

class MeasuredCamera;

/// A name under which something is measured, for every camera that has it.
struct MetricName
{
    const char* figure; ///< key of the figure that it shows
    const char* name;
    const char* help;
    bool counter;                ///< only grows as long as the program runs
    double unit;                 ///< the figure's unit in the base unit
    const char* label = nullptr; ///< that it has beside the camera's; null: none
    const char* value = nullptr; ///< of that label
};

/// Names that differ in their label alone stand next to each other.
const std::vector<MetricName>& metricNames();

/// A camera with its figures of the run so far. Never changed once it is published, so that any thread may read it.
struct CameraMetrics
{
    std::string camera; ///< the user's own name or the model's
    std::string id;
    std::string link; ///< empty: not known
    Figures figures;
};

struct MetricsSnapshot
{
    double timeS = 0.0; ///< when the figures were taken, of the calendar since 1970
    std::vector<CameraMetrics> cameras;
};

/// On the thread of the event loop.
MetricsSnapshot metricsSnapshot(const std::vector<std::unique_ptr<MeasuredCamera>>& cameras);

#endif
