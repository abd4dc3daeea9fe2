// SPDX-License-Identifier: GPL-3.0-or-later
// What a refresh does with each camera: its curves, the scale of its counter axis and its figures in the table.
#include "DataGraphForm.h"

#include <algorithm>
#include <limits>

#include <qcustomplot.h>

#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "../engine/TimeMath.h"
#include "AreaMarks.h"
#include "Curves.h"
#include "EventShapes.h"
#include "Numbers.h"
#include "RowCells.h"
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

/// The figures of all cameras that are plotted, the curves of those in view; true if one of these has been filled.
bool CxDataGraphForm::UpdateThroughputGraph()
{
    bool filled = false;
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        if (!record->plotEnabled)
            continue;
        QCPAxisRect* axisRect = FindCameraAxisRect(record->hCam);
        if (axisRect ? FillThroughputArea(*record, axisRect, referenceTime) : RefreshFigures(*record)) {
            updateCameraListRow(record->hCam);
            filled |= axisRect != nullptr;
        }
    }
    return filled;
}

bool CxDataGraphForm::FillThroughputArea(CxCameraLineData& record, QCPAxisRect* axisRect, qint64 nowUs)
{
    const auto addCurve = [&](const Curve& curve) -> QCPGraph* {
        const QString name = QLatin1String(curve.name);
        return IsPlotChecked(name) ? AddThrougputPlot(record.hCam, name, curve.colour) : nullptr;
    };
    const bool detailed = IxAppDelegate::instance()->applicationOptions().detailLevel > minThroughputDetail;
    QCPGraph* minimum = detailed ? addCurve(minThroughputCurve) : nullptr;
    QCPGraph* level = addCurve(bufferLevelCurve);
    const QCPRange range = axisRect->axis(QCPAxis::atBottom)->range();
    const bool evaluated =
        record.calculateStats(minimum, level, &range, VisibleFromUs(nowUs), VisibleToUs(nowUs), MinKeySpacing(range));
    ShowMarks(record, *axisRect, nowUs);
    if (!evaluated)
        return false;
    AutoScaleVertAxis(record.hCam, axisRect);
    return true;
}

void CxDataGraphForm::UpdateStandardGraph()
{
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        QCPAxisRect* axisRect = FindCameraAxisRect(record->hCam);
        if (record->plotEnabled && (!axisRect || FillStandardArea(*record, axisRect, referenceTime)))
            updateCameraListRow(record->hCam);
    }
    ReplotPlot();
}

bool CxDataGraphForm::FillStandardArea(CxCameraLineData& record, QCPAxisRect* axisRect, qint64 nowUs)
{
    std::array<QCPGraph*, standardCurves.size()> graphs{};
    std::transform(standardCurves.begin(), standardCurves.end(), graphs.begin(), [&](const Curve& curve) {
        const QString name = QLatin1String(curve.name);
        return IsPlotChecked(name) ? AddStandardAcqPlot(record.hCam, name, curve.selector, curve.colour) : nullptr;
    });
    ShowMarks(record, *axisRect, nowUs);
    const QCPRange range = axisRect->axis(QCPAxis::atBottom)->range();
    if (!record.fillCounterGraphs(graphs[0], graphs[1], graphs[2], graphs[3], graphs[4], range, VisibleFromUs(nowUs),
                                  VisibleToUs(nowUs), MinKeySpacing(range)))
        return false;
    ScaleCounterAxis(graphs, axisRect);
    return true;
}

/// Also where there is no frame: then it is silent.
void CxDataGraphForm::ShowMarks(const CxCameraLineData& record, const QCPAxisRect& axisRect, qint64 nowUs)
{
    const double joinMs = eventShapes::pixels * MinKeySpacing(axisRect.axis(QCPAxis::atBottom)->range());
    marks->show(record.hCam,
                record.eventMarks(VisibleFromUs(nowUs), VisibleToUs(nowUs), truncatedToInt64(joinMs * 1000.0)),
                nowUs);
}

/// What the last refresh would have drawn in areas that were not in view then.
void CxDataGraphForm::FillNewAreas()
{
    if (!curvesTime)
        return;
    for (QCPAxisRect* axisRect : ui->plot->axisRects()) {
        CxCameraLineData& record = *lineDataMap.value(cameraOf(axisRect));
        if (measMode == MeasModeStandardAcq)
            FillStandardArea(record, axisRect, *curvesTime);
        else if (FillThroughputArea(record, axisRect, *curvesTime) && *curvesTime != referenceTime)
            RefreshFigures(record); // those in the table are of the present time
    }
}

/// What a refresh tells of a camera without its curves; true if there is anything new.
bool CxDataGraphForm::RefreshFigures(CxCameraLineData& record)
{
    return measMode == MeasModeDataThroughput &&
           record.calculateStats(nullptr, nullptr, nullptr, VisibleFromUs(referenceTime), VisibleToUs(referenceTime),
                                 0.0);
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
