// SPDX-License-Identifier: GPL-3.0-or-later
// What a refresh does with each camera: its curves, the scale of its counter axis and its figures in the table.
#include "DataGraphForm.h"

#include <algorithm>
#include <limits>

#include <qcustomplot.h>

#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "Curves.h"
#include "Numbers.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr int minThroughputDetail = 2; // the host's detail level must be above this

} // namespace

bool CxDataGraphForm::HasPoints() const
{
    for (int i = 0; i < ui->plot->graphCount(); ++i) {
        if (!ui->plot->graph(i)->data()->isEmpty())
            return true;
    }
    return false;
}

/// True if a curve has been filled.
bool CxDataGraphForm::UpdateThroughputGraph()
{
    const bool detailed = IxAppDelegate::instance()->applicationOptions().detailLevel > minThroughputDetail;
    const auto addCurve = [this](VNCORE_HANDLE hCam, const Curve& curve) -> QCPGraph* {
        const QString name = QLatin1String(curve.name);
        return IsPlotChecked(name) ? AddThrougputPlot(hCam, name, curve.colour) : nullptr;
    };

    bool filled = false;
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        QCPAxisRect* axisRect = record->plotEnabled ? FindCameraAxisRect(record->hCam) : nullptr;
        if (!axisRect)
            continue;
        QCPGraph* minimum = detailed ? addCurve(record->hCam, minThroughputCurve) : nullptr;
        QCPGraph* level = addCurve(record->hCam, bufferLevelCurve);
        const QCPRange range = axisRect->axis(QCPAxis::atBottom)->range();
        if (EvaluateVisible(*record, minimum, level, &range, MinKeySpacing(range))) {
            updateCameraListRow(record->hCam);
            AutoScaleVertAxis(record->hCam, axisRect);
            filled = true;
        }
    }
    return filled;
}

bool CxDataGraphForm::EvaluateVisible(CxCameraLineData& record, QCPGraph* minGraph, QCPGraph* levelGraph,
                                      const QCPRange* keyRange, double minKeySpacing)
{
    return record.calculateStats(minGraph, levelGraph, keyRange, VisibleFromUs(), VisibleToUs(), minKeySpacing);
}

void CxDataGraphForm::UpdateStandardGraph()
{
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        QCPAxisRect* axisRect = record->plotEnabled ? FindCameraAxisRect(record->hCam) : nullptr;
        if (!axisRect)
            continue;
        std::array<QCPGraph*, standardCurves.size()> graphs{};
        std::transform(standardCurves.begin(), standardCurves.end(), graphs.begin(), [&](const Curve& curve) {
            const QString name = QLatin1String(curve.name);
            return IsPlotChecked(name) ? AddStandardAcqPlot(record->hCam, name, curve.selector, curve.colour)
                                       : nullptr;
        });
        const QCPRange range = axisRect->axis(QCPAxis::atBottom)->range();
        if (record->fillCounterGraphs(graphs[0], graphs[1], graphs[2], graphs[3], graphs[4], range, VisibleFromUs(),
                                      VisibleToUs(), MinKeySpacing(range))) {
            updateCameraListRow(record->hCam);
            ScaleCounterAxis(graphs, axisRect);
        }
    }
    ReplotPlot();
}

/// The counters only grow: the first points of the curves bound the values from below, the last ones from above. A
/// graph that is null belongs to a counter that is not supported or not shown.
void CxDataGraphForm::ScaleCounterAxis(const std::array<QCPGraph*, 5>& graphs, QCPAxisRect* axisRect)
{
    qint32 maximum = 1;
    qint32 minimum = std::numeric_limits<qint32>::max();
    for (const QCPGraph* graph : graphs) {
        if (!graph)
            continue;
        const auto points = graph->data();
        const bool empty = points->isEmpty();
        maximum = std::max(maximum, empty ? 0 : truncated<qint32>((points->constEnd() - 1)->value));
        minimum = std::min(minimum, empty ? 0 : truncated<qint32>(points->constBegin()->value));
    }
    if (minimum == 0)
        minimum = -1;
    axisRect->axis(QCPAxis::atLeft)->setRange(minimum * 0.8, maximum * 1.2);
}

/// The time that one pixel covers, in milliseconds.
double CxDataGraphForm::MinKeySpacing(const QCPRange& range) const
{
    return (range.upper - range.lower) * 1000.0 / std::max(1, ui->plot->width());
}
