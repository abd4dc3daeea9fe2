// SPDX-License-Identifier: GPL-3.0-or-later
// Adding points to graphs.
#include "PlotPoints.h"

#include <qcustomplot.h>

double plotKey(qint64 relUs, const QCPRange& keyRange)
{
    return static_cast<double>(relUs) / usPerSecond + keyRange.upper;
}

void addPoint(QCPGraph* graph, double key, double value)
{
    if (graph != nullptr)
        graph->addData(key, value);
}
