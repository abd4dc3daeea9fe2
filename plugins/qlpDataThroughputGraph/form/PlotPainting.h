// SPDX-License-Identifier: GPL-3.0-or-later
// Drawing of one's own on a layer of the plot.
#ifndef KESTROVA_PLOTPAINTING_H
#define KESTROVA_PLOTPAINTING_H

#include <functional>

class QCPPainter;
class QCustomPlot;

/// Calls `paint` whenever that layer is drawn, as long as the plot lives.
void paintOnLayer(QCustomPlot* plot, const char* layer, std::function<void(QCPPainter&)> paint);

#endif
