// SPDX-License-Identifier: GPL-3.0-or-later
// Adding points to graphs.
#include "PlotPoints.h"

#include <cmath>
#include <limits>

#include <qcustomplot.h>

#include "TimeMath.h"

qint64 smallestStepUs(double minKeySpacingMs)
{
    const double spacingUs = minKeySpacingMs * 1000.0;
    if (!(spacingUs < 9e18)) // also not a number: nothing is more
        return std::numeric_limits<qint64>::max();
    return truncatedToInt64(std::floor(spacingUs)) + 1;
}

double plotKey(qint64 relUs, const QCPRange& keyRange)
{
    return static_cast<double>(relUs) / usPerSecond + keyRange.upper;
}

void addPoint(QCPGraph* graph, double key, double value)
{
    if (graph != nullptr)
        graph->addData(key, value);
}
