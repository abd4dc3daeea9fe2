// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping the plots up to date: the timer's refresh, the shared time range, zoom and pan, switching a camera's plot.
#include "DataGraphForm.h"

#include <algorithm>
#include <cmath>

#include <qcustomplot.h>

#include <QtCore/QMutexLocker>
#include <QtWidgets/QCheckBox>

#include <vnCore/CxCameraManager.h>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "../engine/MeasurementClock.h"
#include "../engine/TimeMath.h"
#include "AreaMarks.h"
#include "Columns.h"
#include "Numbers.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr double smallestSpanMs = 1.0;
constexpr double daySeconds = 86400.0;

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
    const bool drawn = HasPoints() || !marks->isEmpty();
    ui->plot->clearGraphs();
    marks->clear();
    curvesTime = referenceTime;
    switch (measMode) {
    case MeasModeDataThroughput:
        if (UpdateThroughputGraph() || drawn ||
            !marks->isEmpty()) // also when nothing has come in the place of what was drawn
            ReplotPlot();
        break;
    case MeasModeStandardAcq:
        UpdateStandardGraph();
        break;
    default:
        LOG_FAILURE("CxDataGraphForm::updateGraph", "Unknown measurement mode is selected");
    }
}

void CxDataGraphForm::RefreshStatistics()
{
    UpdateReferenceTime();
    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        if (record->isMeasuring()) {
            RefreshFigures(*record);
            updateCameraListRow(record->hCam);
        }
    }
}

/// The time axes follow the clock while anything measures, until the last one's end, and stand still afterwards.
void CxDataGraphForm::UpdateReferenceTime()
{
    if (IsAnyMeasuring())
        referenceTime = measurementClockUs();
    for (const CxCameraLineData* record : qAsConst(lineDataMap))
        referenceTime = std::max(referenceTime, record->lastEndUs().value_or(referenceTime));
}

qint64 CxDataGraphForm::VisibleFromUs(qint64 nowUs) const
{
    return toMicroseconds(timeRangeLower, nowUs);
}

qint64 CxDataGraphForm::VisibleToUs(qint64 nowUs) const
{
    return toMicroseconds(timeRangeUpper, nowUs);
}

void CxDataGraphForm::on_plotChangeZoom(QCPRange range)
{
    if (range.lower == timeRangeLower && range.upper == timeRangeUpper)
        return;
    if (std::abs(range.lower - range.upper) * 1000.0 > smallestSpanMs) {
        if (range.size() > daySeconds && range.size() > SecondsKept()) {
            const double half = std::max(daySeconds, SecondsKept()) / 2.0;
            range = QCPRange(range.center() - half, range.center() + half);
        }
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

/// From the oldest frame or sample of all cameras to the end of the time axes, or less.
double CxDataGraphForm::SecondsKept() const
{
    if (postponedEvents.isHeld()) // a record's mutex may be held
        return 0.0;
    qint64 oldestUs = referenceTime;
    for (const CxCameraLineData* record : qAsConst(lineDataMap)) {
        const QMutexLocker lock(&record->mutex);
        if (!record->frameList.empty())
            oldestUs = std::min(oldestUs, record->frameList.front()->timestampUs);
        if (!record->counterSampleList.empty())
            oldestUs = std::min(oldestUs, record->counterSampleList.front()->timestampUs);
    }
    return static_cast<double>(referenceTime - oldestUs) / static_cast<double>(usPerSecond);
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

/// Keeps the end that follows the clock.
void CxDataGraphForm::ZoomTime(double factor)
{
    on_plotChangeZoom(QCPRange(timeRangeUpper - factor * (timeRangeUpper - timeRangeLower), timeRangeUpper));
}

/// Of the visible range, into the future.
void CxDataGraphForm::PanTime(double share)
{
    const double seconds = share * (timeRangeUpper - timeRangeLower);
    on_plotChangeZoom(QCPRange(timeRangeLower + seconds, timeRangeUpper + seconds));
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
    RebuildPlots();
}

void CxDataGraphForm::RebuildPlots()
{
    ClearPlotAreas();
    if (!isKnown(measMode)) {
        LOG_FAILURE("CxDataGraphForm::onChkCamPlotData", "Unknown measurement mode is selected");
        return;
    }
    ArrangeAreas();
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
