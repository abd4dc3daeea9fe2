// SPDX-License-Identifier: GPL-3.0-or-later
// The editors of a camera's row: data format, required throughput, range of the value axis. They are connected after
// they have been filled, so that building a row writes nothing back.
#include "DataGraphForm.h"

#include <qcustomplot.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>
#include <vnCore/vnApi.h>

#include "../engine/CameraLineData.h"
#include "Columns.h"
#include "Numbers.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

const QLatin1String formatName(VN_PRM_IMAGE_DATA_FORMAT);

CxCameraParam* formatParameter(VNCORE_HANDLE hCam)
{
    CxCameraParameters* parameters = CxCameraManager::instance()->cameraParameters(hCam);
    return parameters ? parameters->findParam(formatName, false) : nullptr;
}

/// The entries' values need not be 0, 1, 2: a value is searched for, never taken as a position.
void selectFormat(QComboBox* formats, int value)
{
    const int entry = formats->findData(value);
    if (entry >= 0)
        formats->setCurrentIndex(entry);
}

} // namespace

void CxDataGraphForm::AddFormatComboBox(int row, VNCORE_HANDLE hCam, CxCameraParameters& parameters)
{
    auto* formats = FormatCell::build(hCam).formats;
    if (const CxCameraParam* format = parameters.findParam(formatName, false)) {
        for (const auto& entry : format->enumItems)
            formats->addItem(entry.text, entry.value);
        int value = 0;
        vnApi_GetParamInt(hCam, VN_PRM_IMAGE_DATA_FORMAT, value, nullptr);
        selectFormat(formats, value);
    }
    connect(formats, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CxDataGraphForm::onComboboxFormatChanged);
    ui->table->setCellWidget(row, StandardColumn::DataFormat, formats);
}

void CxDataGraphForm::onComboboxFormatChanged(int newSel)
{
    const auto* formats = qobject_cast<QComboBox*>(sender());
    if (!formats)
        return;
    const VNCORE_HANDLE hCam = cameraOf(formats);
    CxCameraParam* format = lineDataMap.contains(hCam) ? formatParameter(hCam) : nullptr;
    if (!format)
        return;
    format->setParamValue(CxValue(formats->itemData(newSel).toInt()));
    CxCameraParameters* parameters = CxCameraManager::instance()->cameraParameters(hCam);
    parameters->addParamCommitToBatch(formatName);
    parameters->endCommitBatch(CommitRefreshGuiChanged);
}

void CxDataGraphForm::onComboboxFormatChangedExt(VNCORE_HANDLE hCam)
{
    if (postponedEvents.postpone(PostponedEvents::CameraFormat, hCam))
        return;
    if (!lineDataMap.contains(hCam) || measMode != MeasModeStandardAcq)
        return;
    const auto cell = cellOf<FormatCell>(ui->table, hCam);
    const CxCameraParam* format = cell.formats ? formatParameter(hCam) : nullptr;
    if (format)
        selectFormat(cell.formats, format->value.toInt());
}

void CxDataGraphForm::AddRequiredThroughputCell(int row, CxCameraLineData& record)
{
    const auto cell = RequiredThroughputCell::build(record.hCam, this);
    cell.container->setToolTip(tr("The data rate of the sensor in MB/s, against which the buffer is simulated. "
                                  "Checked: as the camera tells."));
    cell.automatic->setChecked(record.autoRequiredThroughput);
    cell.value->setEnabled(!record.autoRequiredThroughput);
    if (record.autoRequiredThroughput)
        record.readDefaultAvgTransportSpeed();
    cell.value->setText(QString::number(record.requiredThroughput));
    connect(cell.automatic, &QCheckBox::clicked, this, &CxDataGraphForm::onChkCamAutoTransport);
    connect(cell.value, &QLineEdit::textChanged, this, &CxDataGraphForm::onEditCamTransportChanged);
    ui->table->setCellWidget(row, ThroughputColumn::RequiredThroughput, cell.container);
}

void CxDataGraphForm::onChkCamAutoTransport(bool state)
{
    const auto* box = qobject_cast<QCheckBox*>(sender());
    CxCameraLineData* record = box ? lineDataMap.value(cameraOf(box)) : nullptr;
    if (!record)
        return;
    record->autoRequiredThroughput = state;
    if (state)
        record->readDefaultAvgTransportSpeed();
    const auto cell = cellOf<RequiredThroughputCell>(ui->table, record->hCam);
    if (!cell.value)
        return;
    if (state)
        cell.value->setText(QString::number(record->requiredThroughput));
    cell.value->setEnabled(!state);
}

void CxDataGraphForm::onEditCamTransportChanged(QString text)
{
    const auto* edit = qobject_cast<QLineEdit*>(sender());
    if (CxCameraLineData* record = edit ? lineDataMap.value(cameraOf(edit)) : nullptr)
        record->requiredThroughput = text.toInt();
}

void CxDataGraphForm::AddYAxisScalingCell(int row, VNCORE_HANDLE hCam)
{
    const auto cell = YAxisScalingCell::build(hCam, this);
    cell.container->setToolTip(
        tr("The ends of the value axis. Checked: they follow the curve, and are empty while its "
           "plot area is out of view."));
    connect(cell.automatic, &QCheckBox::clicked, this, &CxDataGraphForm::onChkCamAutoVertAxis);
    connect(cell.minimum, &QLineEdit::textChanged, this, &CxDataGraphForm::onEditVertScaleMinChanged);
    connect(cell.maximum, &QLineEdit::textChanged, this, &CxDataGraphForm::onEditVertScaleMaxChanged);
    for (const QLineEdit* edit : {cell.minimum, cell.maximum})
        connect(edit, &QLineEdit::editingFinished, this, &CxDataGraphForm::ReplotPlot);
    ui->table->setCellWidget(row, ThroughputColumn::YAxisScaling, cell.container);
}

void CxDataGraphForm::onChkCamAutoVertAxis(bool state)
{
    auto* box = qobject_cast<QCheckBox*>(sender());
    if (!box || !lineDataMap.contains(cameraOf(box)))
        return;
    box->setChecked(state);
    const auto cell = cellOf<YAxisScalingCell>(ui->table, cameraOf(box));
    if (!cell.automatic)
        return;
    if (!FindCameraAxisRect(cameraOf(box))) {
        ForgetShownRange(cameraOf(box));
        if (!state) { // to begin typing with
            const auto [lower, upper] = valueRanges.value(cameraOf(box), {0.0, 1000.0});
            cell.minimum->setText(QString::number(truncated<qint32>(lower)));
            cell.maximum->setText(QString::number(truncated<qint32>(upper)));
        }
    }
    cell.minimum->setEnabled(!state);
    cell.maximum->setEnabled(!state);
    TakeTypedRange(cameraOf(box));
    ReplotPlot();
}

void CxDataGraphForm::onEditVertScaleMinChanged(QString text)
{
    if (QCPAxis* axis = EditedValueAxis()) {
        axis->setRange(text.toDouble(), axis->range().upper);
        TakeTypedRange(cameraOf(sender()));
    }
}

void CxDataGraphForm::onEditVertScaleMaxChanged(QString text)
{
    if (QCPAxis* axis = EditedValueAxis()) {
        axis->setRange(axis->range().lower, text.toDouble());
        TakeTypedRange(cameraOf(sender()));
    }
}

/// Boxes that follow an axis have nothing to follow while its area is out of view.
void CxDataGraphForm::ForgetShownRange(VNCORE_HANDLE hCam)
{
    const auto cell = cellOf<YAxisScalingCell>(ui->table, hCam);
    if (!cell.automatic || !cell.automatic->isChecked())
        return;
    cell.minimum->clear();
    cell.maximum->clear();
}

/// Unless the boxes follow the axis, it has what they hold, once that rises: on the way to 2000 the maximum is 2,
/// below any minimum.
void CxDataGraphForm::TakeTypedRange(VNCORE_HANDLE hCam)
{
    const auto cell = cellOf<YAxisScalingCell>(ui->table, hCam);
    const QCPAxisRect* axisRect = FindCameraAxisRect(hCam);
    if (!cell.automatic || cell.automatic->isChecked() || !axisRect)
        return;
    const int lower = cell.minimum->text().toInt();
    const int upper = cell.maximum->text().toInt();
    if (lower < upper)
        axisRect->axis(QCPAxis::atLeft)->setRange(lower, upper);
}

/// The value axis whose edit box sent the present signal, or null.
QCPAxis* CxDataGraphForm::EditedValueAxis() const
{
    const auto* edit = qobject_cast<QLineEdit*>(sender());
    const VNCORE_HANDLE hCam = edit ? cameraOf(edit) : nullptr;
    if (!lineDataMap.contains(hCam) || !cellOf<YAxisScalingCell>(ui->table, hCam).automatic)
        return nullptr;
    const QCPAxisRect* axisRect = FindCameraAxisRect(hCam);
    return axisRect ? axisRect->axis(QCPAxis::atLeft) : nullptr;
}
