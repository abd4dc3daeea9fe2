// SPDX-License-Identifier: GPL-3.0-or-later
// Curves of the data throughput mode.
#include "CameraLineData.h"

#include <new>

#include "CurveScan.h"
#include "LogLine.h"
#include "PlotPoints.h"
#include "TimeMath.h"

bool CxCameraLineData::calculateStats(QCPGraph* minGraph, QCPGraph* levelGraph, const QCPRange* keyRange,
                                      qint64 fromUs, qint64 toUs, double minKeySpacing)
{
    const bool drawn = keyRange != nullptr && (minGraph != nullptr || levelGraph != nullptr);
    try {
        if (!drawn)
            return evaluate(fromUs, toUs, smallestStepUs(minKeySpacing), nullptr);
        std::vector<ScanPoint> points;
        if (!evaluate(fromUs, toUs, smallestStepUs(minKeySpacing), &points))
            return false;
        for (const ScanPoint& point : points) {
            const double key = plotKey(saturatingSub(point.timeUs, toUs), *keyRange);
            addPoint(minGraph, key, point.minSpeed);
            addPoint(levelGraph, key, point.level);
        }
        return true;
    } catch (const std::bad_alloc&) {
        LOG_FAILURE("CxCameraLineData::calculateStats",
                    "Failed to allocate temporary buffers for internal calculations");
        return false;
    }
}
