// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of plots.
#include "PlotLook.h"

#include <qcustomplot.h>

#include <vnCoreGui/PlotColours.h>

void applyPlotLook(QCustomPlot* plot)
{
    using namespace plotColours;
    plot->setBackground(background);
    for (QCPAxisRect* rect : plot->axisRects()) {
        for (QCPAxis* axis : rect->axes()) {
            axis->setBasePen(foreground);
            axis->setTickPen(foreground);
            axis->setSubTickPen(foreground);
            axis->setLabelColor(foreground);
            axis->setTickLabelColor(foreground);
            axis->grid()->setPen(QPen(grid, 0, Qt::DotLine));
        }
    }
}
