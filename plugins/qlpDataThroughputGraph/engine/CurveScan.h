// SPDX-License-Identifier: GPL-3.0-or-later
// Where the points of the throughput curves lie and what they show. A point stands for all intervals since the last
// one, and whether an interval makes a point depends on its time alone; so the scan leaps from point to point.
#ifndef KESTROVA_CURVESCAN_H
#define KESTROVA_CURVESCAN_H

#include <vector>

#include "FrameList.h"

/// Of the intervals since the last point.
struct ScanPoint
{
    qint64 timeUs;
    double minSpeed; ///< MB/s
    double level;    ///< highest fill of the camera's buffer, percent
};

/// The points of frames begin..end (exclusive) in fromUs..toUs, at least `stepUs` apart. The first interval only sets
/// the reference for that.
std::vector<ScanPoint> scanCurve(const FrameList& frames, quint64 begin, quint64 end,
                                 const EvaluationSettings& settings, qint64 fromUs, qint64 toUs, qint64 stepUs);

#endif
