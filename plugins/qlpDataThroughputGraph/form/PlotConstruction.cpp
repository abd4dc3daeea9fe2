// SPDX-License-Identifier: GPL-3.0-or-later
// Building the plot: one title and one axis rect per plotted camera, their axes, the curves, and the small table that
// switches curves on and off and is their legend.
#include "DataGraphForm.h"

#include <algorithm>
#include <optional>

#include <qcustomplot.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "Curves.h"
#include "Look.h"
#include "Numbers.h"
#include "RowCells.h"
#include "TimeOfDay.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr auto plotNameProperty = "plotName";
constexpr int levelAlpha = 150; // the area under the buffer level is translucent
constexpr int axisFontPixels = 11;
constexpr int leastFontPixels = 8;
constexpr int aroundAxesPixels = 44; ///< of an area's height: title, time axis, margins
constexpr int valueTickPixels = 20;  ///< height for each value tick
constexpr int mostValueTicks = 5;
constexpr double sameValue = 1e-3; ///< relative; what is closer is the noise of a clock
constexpr int leastLabelPadding = 10;
constexpr int mostLabelPadding = 40;
constexpr int aroundLabelPixels = 4;            ///< of an area's height: between the labels of two value axes
constexpr QMargins leastMargins(15, 8, 38, 15); // on the right half of the last time's label must fit

QPen curvePen(const QColor& colour)
{
    return QPen(QBrush(colour), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

/// The value of all points on the axis, if they are as good as the same.
std::optional<double> constantOn(const QCPAxis& axis)
{
    std::optional<QCPRange> data;
    for (const QCPGraph* graph : axis.graphs()) {
        bool found = false;
        const QCPRange values = graph->getValueRange(found);
        if (found)
            data = data ? data->expanded(values) : values;
    }
    const bool constant = data && data->size() <= sameValue * std::abs(data->center());
    return constant ? std::optional(data->center()) : std::nullopt;
}

/// A tenth of the value on either side.
QCPRange around(double value)
{
    return value == 0.0 ? QCPRange(-1.0, 1.0) : QCPRange(0.9 * value, 1.1 * value);
}

/// In pixels, of the labels that the axis draws now.
int widestTickLabel(const QCPAxis& axis)
{
    QVector<double> ticks;
    QVector<QString> labels;
    axis.ticker()->generate(axis.range(), axis.parentPlot()->locale(), QLatin1Char('g'), axis.numberPrecision(),
                            ticks, nullptr, &labels);
    int widest = 0;
    for (const QString& label : qAsConst(labels))
        widest = std::max(widest, QFontMetrics(axis.tickLabelFont()).horizontalAdvance(label));
    return widest;
}

/// A label that is longer than its axis reaches down to the times, of which the first begins left of the axis. It
/// lies beside that one, however narrow the values are.
int labelPadding(const QCPAxisRect& rect)
{
    const QCPAxis* values = rect.axis(QCPAxis::atLeft);
    const int time = widestTickLabel(*rect.axis(QCPAxis::atBottom)) / 2;
    return std::clamp(time - values->tickLabelPadding() - widestTickLabel(*values) + 2, leastLabelPadding,
                      mostLabelPadding);
}

} // namespace

bool CxDataGraphForm::AddCameraPlot(VNCORE_HANDLE hCam, int layoutRow, const QString& title)
{
    auto* axisRect = new (std::nothrow) QCPAxisRect(ui->plot);
    if (!axisRect) {
        LOG_FAILURE("CxDataGraphForm::AddCameraPlot", "Failed to allocate axis rectangle area");
        return false;
    }
    auto* heading = new QCPTextElement(ui->plot);
    heading->setText(title);
    heading->setFont(QFont(QStringLiteral("sans"), 8, QFont::Bold));
    heading->setTextColor(look::text);
    ui->plot->plotLayout()->addElement(layoutRow, 0, heading);

    setCamera(axisRect, hCam);
    axisRect->setMarginGroup(QCP::msLeft | QCP::msRight, timeAxisMargins);
    axisRect->setMinimumMargins(leastMargins);
    axisRect->setRangeZoom(Qt::Horizontal);
    ConfigurePlotAxis(axisRect, QCPAxis::atBottom, timeRangeLower, timeRangeUpper, {});
    if (measMode == MeasModeStandardAcq) {
        ConfigurePlotAxis(axisRect, QCPAxis::atLeft, -0.1, 1.0, tr("Counter value"));
    } else {
        ConfigurePlotAxis(axisRect, QCPAxis::atLeft, 0.0, 1000.0, tr("Avg. rate [MB/s]"));
        ConfigurePlotAxis(axisRect, QCPAxis::atRight, -10.0, 110.0, tr("Buffer filled [%]"));
    }
    if (valueRanges.contains(hCam)) { // the area was in view before
        const auto [lower, upper] = valueRanges.value(hCam);
        axisRect->axis(QCPAxis::atLeft)->setRange(lower, upper);
    }
    ui->plot->plotLayout()->addElement(layoutRow + 1, 0, axisRect);
    if (measMode == MeasModeDataThroughput)
        AddRequiredLine(hCam, axisRect); // items look for an area in the layout
    AutoScaleVertAxis(hCam, axisRect);
    TakeTypedRange(hCam);
    return true;
}

/// `axisType` is a QCPAxis::AxisType.
void CxDataGraphForm::ConfigurePlotAxis(QCPAxisRect* axisRect, int axisType, double lower, double upper,
                                        const QString& label)
{
    QCPAxis* axis = axisRect->axis(static_cast<QCPAxis::AxisType>(axisType));
    axis->setRange(lower, upper);
    if (!label.isEmpty())
        axis->setLabel(label);
    axis->setTickLabelColor(look::text);
    axis->setLabelColor(look::text);
    axis->setBasePen(QPen(look::text));
    axis->setTickPen(QPen(look::text));
    axis->setSubTickPen(QPen(look::text));
    axis->grid()->setPen(QPen(look::grid, 0, Qt::DotLine));
    axis->grid()->setZeroLinePen(QPen(look::grid, 0, Qt::SolidLine));
    QFont font = axis->labelFont();
    font.setPixelSize(axisFontPixels);
    axis->setLabelFont(font);
    axis->setTickLabelFont(font);
    axis->setVisible(true);
    if (axisType != QCPAxis::atBottom)
        return;

    SetTimeTicker(axis);
    connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &CxDataGraphForm::on_plotChangeZoom);
    axisRect->setRangeDragAxes(axis, nullptr);
    axisRect->setRangeZoomAxes(axis, nullptr);
}

void CxDataGraphForm::SetTimeTicker(QCPAxis* axis)
{
    if (timeOfDay) {
        axis->setTicker(timeOfDayTicker([this] { return DrawnTime(); }));
        return;
    }
    if (auto* ticker = new (std::nothrow) QCPAxisTickerTime) {
        ticker->setTimeFormat(QStringLiteral("%m:%s.%z"));
        axis->setTicker(QSharedPointer<QCPAxisTicker>(ticker));
    } else {
        LOG_FAILURE("CxDataGraphForm::ConfigurePlotAxis", "Failed to allocate QCPAxisTickerTime for time axis");
    }
}

void CxDataGraphForm::ShowTimeOfDay(bool on)
{
    timeOfDay = on;
    for (const QCPAxisRect* axisRect : ui->plot->axisRects())
        SetTimeTicker(axisRect->axis(QCPAxis::atBottom));
    ReplotPlot();
}

/// The more areas share the plot's height, the fewer ticks a value axis has and the smaller its label is, which goes
/// when it would run into the next area's.
void CxDataGraphForm::FitValueAxes(int plotHeight)
{
    const auto rects = ui->plot->axisRects();
    if (rects.isEmpty())
        return;
    const int areaHeight = plotHeight / rects.size();
    const int ticks = std::clamp((areaHeight - aroundAxesPixels) / valueTickPixels, 1, mostValueTicks);
    for (const auto side : {QCPAxis::atLeft, QCPAxis::atRight}) {
        const QString label = rects.first()->axis(side)->label(); // the same in every area
        QFont font = rects.first()->axis(side)->labelFont();
        const auto fits = [&] {
            return QFontMetrics(font).horizontalAdvance(label) <= areaHeight - aroundLabelPixels;
        };
        for (int pixels = axisFontPixels; pixels >= leastFontPixels; --pixels) {
            font.setPixelSize(pixels);
            if (fits())
                break;
        }
        const QColor colour = fits() ? look::text : QColor(Qt::transparent);
        for (QCPAxisRect* rect : rects) {
            QCPAxis* axis = rect->axis(side);
            axis->ticker()->setTickCount(ticks);
            axis->setLabelFont(font);
            axis->setLabelColor(colour);
        }
    }
    for (QCPAxisRect* rect : rects)
        rect->axis(QCPAxis::atLeft)->setLabelPadding(labelPadding(*rect));
}

QCPGraph* CxDataGraphForm::AddStandardAcqPlot(VNCORE_HANDLE hCam, const QString& curveName,
                                              VN_COUNTER_SELECTOR counterSelector, const QColor& colour)
{
    const QCPAxisRect* axisRect = FindCameraAxisRect(hCam);
    if (!lineDataMap.value(hCam)->isCounterSupported(counterSelector))
        return nullptr;
    QCPGraph* graph = ui->plot->addGraph(axisRect->axis(QCPAxis::atBottom), axisRect->axis(QCPAxis::atLeft));
    if (!graph) {
        LOG_FAILURE("CxDataGraphForm::AddStandardAcqPlot", "Failed to allocate plot");
        return nullptr;
    }
    graph->setPen(curvePen(colour));
    graph->setName(curveName);
    return graph;
}

QCPGraph* CxDataGraphForm::AddThrougputPlot(VNCORE_HANDLE hCam, const QString& curveName, const QColor& colour)
{
    const QCPAxisRect* axisRect = FindCameraAxisRect(hCam);
    QCPAxis* time = axisRect->axis(QCPAxis::atBottom);
    QCPGraph* graph = nullptr;
    if (curveName == QLatin1String(minThroughputCurve.name)) {
        graph = ui->plot->addGraph(time, axisRect->axis(QCPAxis::atLeft));
        if (!graph) {
            LOG_FAILURE("CxDataGraphForm::AddThrougputPlot", "Failed to allocate min throughput plot");
            return nullptr;
        }
        graph->setPen(curvePen(colour));
    } else if (curveName == QLatin1String(bufferLevelCurve.name)) {
        graph = ui->plot->addGraph(time, axisRect->axis(QCPAxis::atRight));
        if (!graph) {
            LOG_FAILURE("CxDataGraphForm::AddThrougputPlot", "Failed to allocate buffer fill plot");
            return nullptr;
        }
        QColor translucent = colour;
        translucent.setAlpha(levelAlpha);
        graph->setPen(curvePen(translucent));
        graph->setBrush(QBrush(translucent));
    } else {
        LOG_FAILURE("CxDataGraphForm::AddThrougputPlot", "Unknown througput plot");
        return nullptr;
    }
    graph->setName(curveName);
    return graph;
}

QCPAxisRect* CxDataGraphForm::FindCameraAxisRect(VNCORE_HANDLE hCam) const
{
    const auto rects = ui->plot->axisRects();
    const auto found = std::find_if(rects.cbegin(), rects.cend(),
                                    [hCam](const QCPAxisRect* rect) { return cameraOf(rect) == hCam; });
    return found != rects.cend() ? *found : nullptr;
}

bool CxDataGraphForm::IsPlotChecked(const QString& curveName) const
{
    const auto found = std::find_if(plotCheckBoxes.cbegin(), plotCheckBoxes.cend(), [&](const QCheckBox* box) {
        return box->property(plotNameProperty).toString() == curveName;
    });
    return found != plotCheckBoxes.cend() && (*found)->isChecked();
}

void CxDataGraphForm::AutoScaleVertAxis(VNCORE_HANDLE hCam, QCPAxisRect* axisRect)
{
    if (measMode != MeasModeDataThroughput)
        return;
    const auto cell = cellOf<YAxisScalingCell>(ui->table, hCam);
    if (!cell.automatic || !cell.automatic->isChecked())
        return;
    QCPAxis* axis = axisRect->axis(QCPAxis::atLeft);
    axis->rescale();
    const auto constant = constantOn(*axis);
    if (constant)
        axis->setRange(around(*constant));
    const QCPRange range = axis->range();
    const auto lower = truncated<qint32>(range.lower);
    const auto upper = truncated<qint32>(range.upper);
    cell.minimum->setText(QString::number(lower)); // the boxes' handlers change the axis
    cell.maximum->setText(QString::number(upper));
    if (constant || lower == upper) // whole numbers could leave the curve out
        axis->setRange(range);
}

void CxDataGraphForm::AddPlotCheckRow(int row, const Curve& curve)
{
    const auto cell = CheckBoxCell::build();
    cell.box->setProperty(plotNameProperty, QString(QLatin1String(curve.name)));
    plotCheckBoxes.append(cell.box);
    ui->tablePlotCheck->setCellWidget(row, 0, cell.container);

    auto* item = new QTableWidgetItem(tr(curve.name));
    item->setTextAlignment(Qt::AlignCenter);
    item->setForeground(QColor(curve.colour));
    item->setBackground(look::groundFor(curve.colour));
    item->setToolTip(tr(curve.toolTip));
    ui->tablePlotCheck->setItem(row, 1, item);
}
