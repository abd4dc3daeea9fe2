// SPDX-License-Identifier: GPL-3.0-or-later
// The host's look for plots.
#ifndef KESTROVA_PLOTLOOK_H
#define KESTROVA_PLOTLOOK_H

#include <QtCore/qglobal.h>

class QCustomPlot;

/// Near black background, light axes of what the plot holds already. What is added later keeps its own colours.
Q_DECL_EXPORT void applyPlotLook(QCustomPlot* plot);

#endif
