// SPDX-License-Identifier: GPL-3.0-or-later
// What the rows of the camera table tell: state and figures of each camera.
#include "DataGraphForm.h"

#include <limits>

#include <qcustomplot.h>

#include <QtWidgets/QToolButton>

#include <vnCore/CxCameraManager.h>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "Columns.h"
#include "Look.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

void setText(const QTableWidget* table, int row, int column, const QString& text)
{
    if (auto* item = table->item(row, column))
        item->setText(text);
}

/// Truncated to a 32-bit integer, "-" outside its range and for what is no number.
QString integerText(double value, const QString& suffix = {})
{
    using Limits = std::numeric_limits<qint32>;
    const bool fits = value > double(Limits::min()) - 1.0 && value < double(Limits::max()) + 1.0;
    return fits ? QString::number(static_cast<qint32>(value)) + suffix : QStringLiteral("-");
}

} // namespace

void CxDataGraphForm::updateCameraListRow(VNCORE_HANDLE hCam)
{
    if (postponedEvents.postpone(PostponedEvents::CameraAcquisition, hCam))
        return;
    const CxCameraLineData* record = lineDataMap.value(hCam);
    if (!record)
        return;
    if (measureColumn(measMode) < 0) {
        LOG_FAILURE("CxDataGraphForm::updateCameraListRow", "Unknown measurement mode is selected");
        return;
    }
    const int row = rowOf(ui->table, hCam);
    if (row < 0)
        return;

    if (auto* status = ui->table->item(row, statusColumn)) {
        const bool hostAcquires = CxCameraManager::instance()->isCameraRunning(hCam);
        if (auto* button = MeasureCell::at(ui->table, row, measMode).button)
            button->setEnabled(!hostAcquires);
        status->setText(hostAcquires ? tr("Acq") : record->isMeasuring() ? tr("Testing") : tr("Stopped"));
    }

    if (measMode == MeasModeStandardAcq) {
        for (const auto& counter : StandardColumn::counters)
            updateTableCounterItem(hCam, row, counter.column, counter.selector);
    } else {
        using namespace ThroughputColumn;
        setText(ui->table, row, AvgThroughput, integerText(record->avgThroughput));
        setText(ui->table, row, MinThroughput, integerText(record->minThroughput));
        setText(ui->table, row, MaxBufferLevel, integerText(record->maxBufferLevel, QStringLiteral(" %")));
        setText(ui->table, row, BufferOverflowCount, QString::number(record->bufferOverflowCount));
    }
}

void CxDataGraphForm::updateTableCounterItem(VNCORE_HANDLE hCam, int row, int col, VN_COUNTER_SELECTOR sel)
{
    const CxCameraLineData* record = lineDataMap.value(hCam);
    QTableWidgetItem* item = ui->table->item(row, col);
    if (!record || !item)
        return;
    const bool supported = record->isCounterSupported(sel);
    item->setText(supported ? QString::number(static_cast<quint32>(record->counterValue(sel))) : QStringLiteral("-"));
    item->setForeground(supported ? look::text : look::disabledText);
    item->setFlags(Qt::NoItemFlags);
}

void CxDataGraphForm::updateTableItem(int row, int col, QString val)
{
    setText(ui->table, row, col, val);
}
