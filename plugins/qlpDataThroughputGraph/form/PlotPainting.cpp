// SPDX-License-Identifier: GPL-3.0-or-later
// What the plot knows of the drawing.
#include "PlotPainting.h"

#include <utility>

#include <qcustomplot.h>

namespace {

class Painted : public QCPLayerable
{
public:
    Painted(QCustomPlot* plot, const char* layer, std::function<void(QCPPainter&)> paint)
        : QCPLayerable(plot, QLatin1String(layer)), paintIt(std::move(paint))
    {
    }

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }
    void draw(QCPPainter* painter) override { paintIt(*painter); }

private:
    std::function<void(QCPPainter&)> paintIt;
};

} // namespace

void paintOnLayer(QCustomPlot* plot, const char* layer, std::function<void(QCPPainter&)> paint)
{
    new Painted(plot, layer, std::move(paint)); // the plot owns it
}
