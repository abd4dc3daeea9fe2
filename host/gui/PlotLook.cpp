// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of plots.
#include "PlotLook.h"

#include <qcustomplot.h>

void applyPlotLook(QCustomPlot* plot)
{
    const QColor background(16, 18, 21);
    const QColor foreground(Qt::white);
    const QColor grid(58, 62, 68);
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
