// SPDX-License-Identifier: GPL-3.0-or-later
// All that the curves need of the plotting library, so that one file alone has to know it.
#ifndef KESTROVA_PLOTPOINTS_H
#define KESTROVA_PLOTPOINTS_H

#include <QtCore/QtGlobal>

class QCPGraph;
class QCPRange;

/// Points lie more than the spacing apart: the least whole number of microseconds that is.
qint64 smallestStepUs(double minKeySpacingMs);

/// Position on the time axis of a time relative to the end of the visible range.
double plotKey(qint64 relUs, const QCPRange& keyRange);

/// Does nothing without a graph.
void addPoint(QCPGraph* graph, double key, double value);

#endif
