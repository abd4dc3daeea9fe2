// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping the plots up to date: the timer's refresh, the shared time range, zoom and pan, switching a camera's plot.
#include "DataGraphForm.h"

#include <algorithm>
#include <cmath>

#include <qcustomplot.h>

#include <QtCore/QMutexLocker>
#include <QtWidgets/QCheckBox>

#include <vnCore/CxCameraManager.h>
#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "../engine/MeasurementClock.h"
#include "../engine/TimeMath.h"
#include "Columns.h"
#include "Curves.h"
#include "Numbers.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr double smallestSpanMs = 1.0;
constexpr int minThroughputDetail = 2; // the host's detail level must be above this

/// Far beyond any sample, and small enough for the engine's sums of ranges and margins in 64 bits.
constexpr qint64 farthestUs = qint64(1) << 61;

QCPAxis* timeAxis(const QCPAxisRect* axisRect)
{
    return axisRect->axis(QCPAxis::atBottom);
}

bool isKnown(int mode)
{
    return mode == MeasModeDataThroughput || mode == MeasModeStandardAcq;
}

qint64 toMicroseconds(double seconds, qint64 reference)
{
    return truncated<qint64>(seconds * double(usPerSecond) + static_cast<double>(reference), -farthestUs, farthestUs);
}

} // namespace

void CxDataGraphForm::timerSignal()
{
    if (postponedEvents.postpone(PostponedEvents::RefreshTimer))
        return;
    bool graphWanted = false;
    for (int row = 0; row < ui->table->rowCount() && !graphWanted; ++row) {
        if (!isKnown(measMode)) {
            LOG_FAILURE("CxDataGraphForm::timerSignal", "Unknown measurement mode is selected");
            return;
        }
        const QCheckBox* box = CheckBoxCell::at(ui->table, row, graphColumn).box;
        graphWanted = box && box->isChecked();
    }
    if (graphWanted && ui->checkBoxLiveGraph->isChecked())
        updateGraph();
    else
        RefreshStatistics();
    ShowEndedMeasurements();
}

void CxDataGraphForm::on_refreshGraph_clicked()
{
    updateGraph();
}

void CxDataGraphForm::updateGraph()
{
    if (postponedEvents.postpone(PostponedEvents::GraphRefresh))
        return;
    const QMutexLocker lock(&plotMutex);
    UpdateReferenceTime();
    const bool drawn = HasPoints();
    ui->plot->clearGraphs();
    switch (measMode) {
    case MeasModeDataThroughput:
        if (UpdateThroughputGraph() || drawn) // also when nothing has come in the place of what was drawn
            ReplotPlot();
        break;
    case MeasModeStandardAcq:
        UpdateStandardGraph();
        break;
    default:
        LOG_FAILURE("CxDataGraphForm::updateGraph", "Unknown measurement mode is selected");
    }
}

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
        const QCPRange range = timeAxis(axisRect)->range();
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
        const QCPRange range = timeAxis(axisRect)->range();
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

void CxDataGraphForm::RefreshStatistics()
{
    UpdateReferenceTime();
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        if (!record->isMeasuring())
            continue;
        if (measMode == MeasModeDataThroughput)
            EvaluateVisible(*record);
        updateCameraListRow(record->hCam);
    }
}

/// The time axes follow the clock while anything measures and stand still afterwards.
void CxDataGraphForm::UpdateReferenceTime()
{
    if (IsAnyMeasuring())
        referenceTime = measurementClockUs();
}

qint64 CxDataGraphForm::VisibleFromUs() const
{
    return toMicroseconds(timeRangeLower, referenceTime);
}

qint64 CxDataGraphForm::VisibleToUs() const
{
    return toMicroseconds(timeRangeUpper, referenceTime);
}

/// The time that one pixel covers, in milliseconds.
double CxDataGraphForm::MinKeySpacing(const QCPRange& range) const
{
    return (range.upper - range.lower) * 1000.0 / std::max(1, ui->plot->width());
}

void CxDataGraphForm::on_plotChangeZoom(QCPRange range)
{
    if (range.lower == timeRangeLower && range.upper == timeRangeUpper)
        return;
    if (std::abs(range.lower - range.upper) * 1000.0 > smallestSpanMs) {
        timeRangeLower = range.lower;
        timeRangeUpper = range.upper;
    }
    SetTimeAxes(timeRangeLower, timeRangeUpper); // comes back here and returns at once
    if (postponedEvents.postpone(PostponedEvents::GraphRefresh))
        return;

    const auto opened = CxCameraManager::instance()->openedCameras();
    const bool measuring = std::any_of(opened.cbegin(), opened.cend(), [this](VNCORE_HANDLE hCam) {
        const CxCameraLineData* record = lineDataMap.value(hCam);
        return record && record->isMeasuring();
    });
    if (measuring)
        lateReplot.start(); // the next tick brings the data
    else
        updateGraph();
}

void CxDataGraphForm::SetTimeAxes(double lower, double upper)
{
    for (const QCPAxisRect* axisRect : ui->plot->axisRects())
        timeAxis(axisRect)->setRange(lower, upper);
}

void CxDataGraphForm::on_btnResetZoom_clicked()
{
    timeRangeLower = defaultRangeLower;
    timeRangeUpper = defaultRangeUpper;
    SetTimeAxes(timeRangeLower, timeRangeUpper);
    ReplotPlot();
}

/// The zoom stays, and the view ends at the reference time.
void CxDataGraphForm::on_resetPan_clicked()
{
    on_plotChangeZoom(QCPRange(timeRangeLower - timeRangeUpper, 0.0));
    ReplotPlot();
}

void CxDataGraphForm::onChkCamPlotData(bool state)
{
    if (postponedEvents.isHeld()) // a record's mutex may be held, before which this one comes
        return;
    const QMutexLocker lock(&plotMutex);
    const auto* sent = qobject_cast<QCheckBox*>(sender());
    CxCameraLineData* switched = sent ? lineDataMap.value(cameraOf(sent)) : nullptr;
    if (!switched)
        return;
    switched->plotEnabled = state;
    ClearPlotAreas();
    int layoutRow = 0;
    for (int row = 0; row < ui->table->rowCount(); ++row) {
        if (!isKnown(measMode)) {
            LOG_FAILURE("CxDataGraphForm::onChkCamPlotData", "Unknown measurement mode is selected");
            return;
        }
        const QCheckBox* box = CheckBoxCell::at(ui->table, row, graphColumn).box;
        const CxCameraLineData* record = box ? lineDataMap.value(cameraOf(box)) : nullptr;
        if (record && record->plotEnabled) {
            AddCameraPlot(record->hCam, layoutRow, record->cameraName);
            layoutRow += rowsPerArea;
        }
    }
    ShowPlotIfWanted();
    ReplotPlot();
}

/// Hides the plot while there are cameras but none is plotted.
void CxDataGraphForm::ShowPlotIfWanted()
{
    ui->plot->setVisible(lineDataMap.isEmpty() ||
                         std::any_of(lineDataMap.cbegin(), lineDataMap.cend(),
                                     [](const CxCameraLineData* record) { return record->plotEnabled; }));
}
