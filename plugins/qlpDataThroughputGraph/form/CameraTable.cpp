// SPDX-License-Identifier: GPL-3.0-or-later
// The camera table: one row and one record per opened camera, built anew whenever a camera opens.
#include "DataGraphForm.h"

#include <algorithm>

#include <qcustomplot.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QToolButton>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "AreaPager.h"
#include "Columns.h"
#include "Curves.h"
#include "Look.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr int rowPixels = 24;
constexpr int scrollBarPixels = 5;
constexpr int leastRows = 2;         ///< that the table always shows
constexpr int usualRows = 4;         ///< that it shows before all curves and marks beside the plot have room
constexpr int namesOfMarks = 3;      ///< lines
constexpr int leastCurvePixels = 38; ///< of that list: two of them
constexpr int mostCurvePixels = 140;

void setFixedRows(QTableWidget* table)
{
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowPixels);
}

} // namespace

void CxDataGraphForm::updateCameraList()
{
    if (postponedEvents.postpone(PostponedEvents::CameraOpened))
        return;
    tableMode = measMode;
    ui->table->clearContents();
    plotCheckBoxes.clear();
    ui->tablePlotCheck->clearContents();
    ui->tablePlotCheck->horizontalHeader()->hide();
    ui->tablePlotCheck->verticalHeader()->hide();

    const QList<VNCORE_HANDLE> opened = CxCameraManager::instance()->openedCameras();
    ui->btnStartAll->setEnabled(!opened.isEmpty());
    ui->table->setRowCount(opened.size());
    switch (measMode) {
    case MeasModeStandardAcq:
        BuildStandardAcqTable();
        break;
    case MeasModeDataThroughput:
        BuildThroughputTable();
        break;
    default:
        LOG_FAILURE("CxDataGraphForm::updateCameraList", "Unknown measurement mode is selected");
        return;
    }

    for (const VNCORE_HANDLE hCam : lineDataMap.keys()) {
        if (!opened.contains(hCam))
            DeleteRecord(hCam);
    }
    UpdateSetupButton();
    ui->plot->show();
    on_btnResetZoom_clicked();
    on_resetPan_clicked();
    if (unitCaptions)
        updateColumnNames();
    FixTableHeight();
}

void CxDataGraphForm::BuildStandardAcqTable()
{
    BuildTable(StandardColumn::texts, standardCurves);
}

void CxDataGraphForm::BuildThroughputTable()
{
    setFixedRows(ui->table);
    BuildTable(ThroughputColumn::texts, throughputCurves);
}

template<class Columns, class Curves>
void CxDataGraphForm::BuildTable(const Columns& columns, const Curves& curves)
{
    ui->table->setColumnCount(static_cast<int>(columns.size()));
    int column = 0;
    for (const ColumnText& text : columns)
        SetCameraTableHeader(column++, tr(text.caption), *text.toolTip ? tr(text.toolTip) : QString());

    ClearPlotAreas();
    int row = 0;
    const auto* manager = CxCameraManager::instance();
    for (const VNCORE_HANDLE hCam : manager->openedCameras()) {
        CxCameraParameters* parameters = manager->cameraParameters(hCam);
        if (!parameters)
            continue;
        CxCameraLineData* record = RecordOf(hCam, *parameters);
        record->measMode = measMode;
        if (measMode == MeasModeStandardAcq)
            FillStandardRow(row, *record, *parameters);
        else
            FillThroughputRow(row, *record);
        updateCameraListRow(hCam);
        record->plotEnabled = true;
        ++row;
    }
    ArrangeAreas();

    ui->tablePlotCheck->setColumnCount(2);
    ui->tablePlotCheck->setRowCount(static_cast<int>(curves.size()));
    setFixedRows(ui->tablePlotCheck);
    int curveRow = 0;
    for (const Curve& curve : curves)
        AddPlotCheckRow(curveRow++, curve);
    ui->tablePlotCheck->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    ui->tablePlotCheck->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    ui->tablePlotCheck->resizeRowsToContents();
    const int rowsHeight = ui->tablePlotCheck->verticalHeader()->length() + 2 * ui->tablePlotCheck->frameWidth();
    ui->tablePlotCheck->setMinimumHeight(std::min(rowsHeight, leastCurvePixels));
    ui->tablePlotCheck->setMaximumHeight(std::min(rowsHeight, mostCurvePixels));
}

/// The camera's record, made when the camera gets its first row, with its name in this mode.
CxCameraLineData* CxDataGraphForm::RecordOf(VNCORE_HANDLE hCam, const CxCameraParameters& parameters)
{
    CxCameraLineData*& record = lineDataMap[hCam];
    if (!record) {
        record = new CxCameraLineData;
        record->hCam = hCam;
        record->samplePeriod = samplePeriod;
        record->maxSamples = maxSamples;
    }
    const SxCameraInfo info = parameters.cameraInfo();
    record->cameraName = (measMode == MeasModeDataThroughput ? withTimeSource(info.name, info) : info.name) +
                         QLatin1String(" (") + (info.customId.isEmpty() ? info.id : info.customId) + QLatin1Char(')');
    return record;
}

void CxDataGraphForm::FillStandardRow(int row, CxCameraLineData& record, CxCameraParameters& parameters)
{
    auto* camera = new QTableWidgetItem(record.cameraName);
    setCamera(camera, record.hCam);
    ui->table->setItem(row, StandardColumn::Camera, camera);
    ui->table->setItem(row, StandardColumn::Status, NewFigureItem(record.hCam, StandardColumn::Status));
    AddFormatComboBox(row, record.hCam, parameters);
    AddMeasureButton(row, StandardColumn::Measure, record);
    for (const auto& counter : StandardColumn::counters) {
        auto* item = NewFigureItem(record.hCam, counter.column);
        item->setForeground(look::text);
        ui->table->setItem(row, counter.column, item);
    }
    AddGraphCell(row, record.hCam);
}

void CxDataGraphForm::FillThroughputRow(int row, CxCameraLineData& record)
{
    using namespace ThroughputColumn;
    auto* camera = new QTableWidgetItem(record.cameraName);
    setCamera(camera, record.hCam);
    ui->table->setItem(row, Camera, camera);
    ui->table->setItem(row, Status, NewFigureItem(record.hCam, Status));
    AddMeasureButton(row, Measure, record);
    for (const int column : {AvgThroughput, MinThroughput, MaxBufferLevel, BufferOverflowCount})
        ui->table->setItem(row, column, NewFigureItem(record.hCam, column));

    auto* exportButton = ExportCell::build(record.hCam, tr("Export Data...")).button;
    exportButton->setEnabled(!record.isMeasuring());
    connect(exportButton, &QToolButton::clicked, this, &CxDataGraphForm::onBtnCamExportData);
    ui->table->setCellWidget(row, ExportData, exportButton);

    AddRequiredThroughputCell(row, record);
    const qint32 bufferSize = record.readCameraBufferSize();
    record.cameraBufferSize = bufferSize;
    auto* size = NewFigureItem(record.hCam, CameraBufferSize);
    size->setText(QString::number(bufferSize / 1000));
    size->setFlags(size->flags() & ~Qt::ItemIsEditable);
    ui->table->setItem(row, CameraBufferSize, size);
    AddGraphCell(row, record.hCam);
    AddYAxisScalingCell(row, record.hCam);
}

void CxDataGraphForm::AddMeasureButton(int row, int column, const CxCameraLineData& record)
{
    auto* button = MeasureCell::build(record.hCam, record.isMeasuring() ? tr("Stop") : tr("Start")).button;
    connect(button, &QToolButton::clicked, this, &CxDataGraphForm::onBtnMeasure);
    ui->table->setCellWidget(row, column, button);
}

void CxDataGraphForm::AddGraphCell(int row, VNCORE_HANDLE hCam)
{
    const auto cell = CheckBoxCell::build();
    setCamera(cell.box, hCam);
    connect(cell.box, &QCheckBox::clicked, this, &CxDataGraphForm::onChkCamPlotData);
    ui->table->setCellWidget(row, graphColumn, cell.container);
}

void CxDataGraphForm::SetCameraTableHeader(int column, const QString& text, const QString& toolTip)
{
    auto* header = new QTableWidgetItem(text);
    if (!toolTip.isEmpty())
        header->setToolTip(toolTip);
    ui->table->setHorizontalHeaderItem(column, header);
}

/// The heading takes what the rows leave, a thin scroll bar included. Where the plot would not keep room for two areas,
/// or the buttons beside it for themselves, the table scrolls, by whole rows.
void CxDataGraphForm::FixTableHeight()
{
    if (measureColumn(measMode) < 0)
        return;
    const int rows = ui->table->rowCount();
    const bool standard = measMode == MeasModeStandardAcq;
    const int heading = standard ? 20 : 26;
    const int wholeHeight = standard ? (rows + 1) * 25 : rows * 25 + 30;
    const auto heightOf = [&](int shown) {
        return shown >= rows ? wholeHeight : heading + shown * rowPixels + scrollBarPixels;
    };
    const QMargins margins = ui->gridLayout->contentsMargins();
    const auto rowsAbove = [&](int buttonsHeight) {
        const int below = std::max(2 * AreaPager::leastAreaPixels, buttonsHeight);
        const int room = height() - margins.top() - margins.bottom() - ui->gridLayout->verticalSpacing() - below;
        return wholeHeight <= room ? rows : std::max(leastRows, (room - heading - scrollBarPixels) / rowPixels);
    };
    const int buttons = ui->verticalLayout_2->minimumSize().height();
    const int more = ui->tablePlotCheck->maximumHeight() - ui->tablePlotCheck->minimumHeight() +
                     (namesOfMarks - 1) * ui->labelMarks->fontMetrics().lineSpacing();
    const int rowsWithRoom = std::max(rowsAbove(buttons + more), std::min(usualRows, rowsAbove(buttons)));
    ui->table->horizontalHeader()->setFixedHeight(heading);
    ui->table->setVerticalScrollBarPolicy(rowsWithRoom < rows ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    ui->table->setFixedHeight(heightOf(rowsWithRoom));
    dispensableHeight = ui->table->height() - heightOf(leastRows);
    updateGeometry();
}

void CxDataGraphForm::updateColumnNames()
{
    unitCaptions = true;
    if (measMode == MeasModeDataThroughput) {
        for (const auto& [column, caption, unit] : ThroughputColumn::unitCaptions) {
            if (auto* header = ui->table->horizontalHeaderItem(column))
                header->setText(*unit ? QStringLiteral("%1 [%2]").arg(tr(caption), QLatin1String(unit))
                                      : tr(caption));
        }
    }
    ui->table->resizeColumnsToContents();
}

void CxDataGraphForm::removeCameraListRow(VNCORE_HANDLE hCam)
{
    if (!lineDataMap.contains(hCam))
        return;
    if (postponedEvents.postpone(PostponedEvents::CameraClosed, hCam)) {
        // Later its parameters can no longer be restored. Only the mutex of the record in use must not be taken.
        if (!postponedEvents.isInUse(hCam))
            lineDataMap.value(hCam)->stopMeasurement();
        return;
    }
    DeleteRecord(hCam);
    const int row = rowOf(ui->table, hCam);
    if (row >= 0)
        ui->table->removeRow(row);
    ui->btnStartAll->setEnabled(!CxCameraManager::instance()->openedCameras().isEmpty());
    UpdateSetupButton();
    FixTableHeight();
    ShowPlotIfWanted();
    ArrangeAreas();
    ReplotPlot();
}
