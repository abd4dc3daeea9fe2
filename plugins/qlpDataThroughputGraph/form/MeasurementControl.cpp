// SPDX-License-Identifier: GPL-3.0-or-later
// Starting and stopping measurements: one camera by its row's button, all of them by "Start All". Every progress box
// and every failure dialog processes events, after which each record is looked for again.
#include "DataGraphForm.h"

#include <QtCore/QPointer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>

#include <qcustomplot.h>

#include <vnCore/CxCameraManager.h>
#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "../engine/LogLine.h"
#include "Columns.h"
#include "ErrorBox.h"
#include "ProgressBox.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

void CxDataGraphForm::onBtnMeasure()
{
    const auto* button = qobject_cast<QToolButton*>(sender());
    const CxCameraLineData* pressed = button ? lineDataMap.value(cameraOf(button)) : nullptr;
    if (!pressed || postponedEvents.isHeld())
        return;
    const CameraKey camera{pressed->hCam, pressed->serial};
    const QString name = pressed->cameraName;

    ProgressBox progress(this);
    if (pressed->isMeasuring()) {
        if (!progress.show(tr("Stopping measurement"), tr("Stopping camera %1...").arg(name)))
            return;
        if (CxCameraLineData* record = FindRecord(camera)) {
            record->stopMeasurement();
            IxAppDelegate::instance()->setCameraControlEnabled(camera.hCam, true);
            UpdateMeasureControls(camera.hCam, false);
            UpdateMeasureButtonText(camera.hCam, tr("Start"));
        }
    } else {
        if (!progress.show(tr("Starting measurement"), tr("Starting camera %1...").arg(name)))
            return;
        CxCameraLineData* record = FindRecord(camera);
        if (record && (record->isMeasuring() || StartCamera(*record))) { // a program may have started it meanwhile
            UpdateMeasureControls(camera.hCam, true);
            UpdateMeasureButtonText(camera.hCam, tr("Stop"));
        } else if (record) {
            progress.close();
            if (!ReportFailedStart(name))
                return;
        }
    }
    progress.close();
    updateCameraListRow(camera.hCam);
}

void CxDataGraphForm::on_btnStartAll_clicked()
{
    if (postponedEvents.isHeld())
        return;
    if (ui->btnStartAll->text() == tr("Start All"))
        StartAll(OpenedCameras());
    else
        StopAll(OpenedCameras());
}

/// Starts what does not measure yet. One failure, and everything that measures is stopped again in the end.
void CxDataGraphForm::StartAll(const std::vector<CameraKey>& cameras)
{
    ProgressBox progress(this);
    bool failed = false;
    for (const CameraKey& camera : cameras) {
        CxCameraLineData* record = FindRecord(camera);
        if (!record || record->isMeasuring())
            continue;
        const QString name = record->cameraName;
        if (!progress.show(tr("Starting measurement"), tr("Starting camera %1...").arg(name)))
            return;
        record = FindRecord(camera);
        if (!record || record->isMeasuring())
            continue;
        if (StartCamera(*record)) {
            UpdateMeasureButtonText(camera.hCam, tr("Stop"));
            updateCameraListRow(camera.hCam);
            UpdateMeasureControls(camera.hCam, true);
        } else {
            failed = true;
            if (!ReportFailedStart(name))
                return;
        }
    }
    ui->btnStartAll->setText(tr("Stop All"));
    progress.close();
    if (failed)
        RollBackStartAll(cameras);
}

void CxDataGraphForm::RollBackStartAll(const std::vector<CameraKey>& cameras)
{
    AnnounceStops(cameras);
    for (const CameraKey& camera : cameras) {
        CxCameraLineData* record = FindRecord(camera);
        if (!record)
            continue;
        const bool measuring = record->isMeasuring();
        if (measuring) {
            record->stopMeasurement();
            IxAppDelegate::instance()->setCameraControlEnabled(camera.hCam, true);
            UpdateMeasureButtonText(camera.hCam, tr("Start"));
        }
        updateCameraListRow(camera.hCam);
        if (measuring)
            UpdateMeasureControls(camera.hCam, false);
    }
    ui->btnStartAll->setText(tr("Start All"));
}

/// Cameras that send nothing then need one image wait together, not one each.
void CxDataGraphForm::AnnounceStops(const std::vector<CameraKey>& cameras)
{
    for (const CameraKey& camera : cameras) {
        if (CxCameraLineData* record = FindRecord(camera))
            record->announceStop();
    }
}

void CxDataGraphForm::StopAll(const std::vector<CameraKey>& cameras)
{
    AnnounceStops(cameras);
    ProgressBox progress(this);
    for (const CameraKey& camera : cameras) {
        CxCameraLineData* record = FindRecord(camera);
        if (!record || !record->isMeasuring())
            continue;
        if (!progress.show(tr("Stopping measurement"), tr("Stopping camera %1...").arg(record->cameraName)))
            return;
        record = FindRecord(camera);
        if (!record)
            continue;
        if (record->stopMeasurement())
            IxAppDelegate::instance()->setCameraControlEnabled(camera.hCam, true);
        UpdateMeasureButtonText(camera.hCam, tr("Start"));
        updateCameraListRow(camera.hCam);
        UpdateMeasureControls(camera.hCam, false);
    }
    ui->btnStartAll->setText(tr("Start All"));
}

/// The opened cameras that have a record, in the host's order.
std::vector<CxDataGraphForm::CameraKey> CxDataGraphForm::OpenedCameras() const
{
    std::vector<CameraKey> cameras;
    for (const VNCORE_HANDLE hCam : CxCameraManager::instance()->openedCameras()) {
        if (const CxCameraLineData* record = lineDataMap.value(hCam))
            cameras.push_back({hCam, record->serial});
    }
    return cameras;
}

/// On success the host knows that the camera is taken over.
bool CxDataGraphForm::StartCamera(CxCameraLineData& record)
{
    RefreshRequiredThroughput(record.hCam);
    const bool started = record.startMeasurement(samplePeriod, maxSamples);
    if (started)
        IxAppDelegate::instance()->setCameraControlEnabled(record.hCam, false);
    return started;
}

/// Waits for the user. False if the form has gone meanwhile.
bool CxDataGraphForm::ReportFailedStart(const QString& cameraName)
{
    const QPointer<CxDataGraphForm> self(this);
    showError(nullptr, tr("Failed to start measurement"),
              tr("Camera %1 does not support \n data throughput analysis in Kestrova.").arg(cameraName));
    return !self.isNull();
}

void CxDataGraphForm::UpdateMeasureButtonText(VNCORE_HANDLE hCam, const QString& text)
{
    for (int row = 0; row < ui->table->rowCount(); ++row) {
        if (measureColumn(measMode) < 0) {
            LOG_FAILURE("CxDataGraphForm::UpdateMeasureButtonText", "Unknown measurement mode is selected");
            return;
        }
        auto* button = MeasureCell::at(ui->table, row, measMode).button;
        if (button && cameraOf(button) == hCam) {
            button->setText(text);
            return;
        }
    }
}

void CxDataGraphForm::UpdateMeasureControls(VNCORE_HANDLE hCam, bool measuring)
{
    for (int row = 0; row < ui->table->rowCount(); ++row) {
        auto* button = ExportCell::at(ui->table, row).button;
        if (button && cameraOf(button) == hCam)
            button->setEnabled(!measuring);
    }
    UpdateSetupButton();
}

/// A measurement that ends by itself tells nobody: it is found here.
void CxDataGraphForm::ShowEndedMeasurements()
{
    for (const CxCameraLineData* record : qAsConst(lineDataMap)) {
        const int row = rowOf(ui->table, record->hCam);
        if (row < 0 || record->isMeasuring())
            continue;
        if (auto* button = ExportCell::at(ui->table, row).button)
            button->setEnabled(true);
        const auto* status = ui->table->item(row, statusColumn);
        if (status && status->text() == tr("Testing"))
            updateCameraListRow(record->hCam);
    }
    UpdateSetupButton();
}

/// A change of period or mode clears the samples, which a running worker appends to.
void CxDataGraphForm::UpdateSetupButton()
{
    ui->btnSetup->setEnabled(!IsAnyMeasuring());
}

void CxDataGraphForm::RefreshRequiredThroughput(VNCORE_HANDLE hCam)
{
    if (measMode != MeasModeDataThroughput)
        return;
    const auto cell = cellOf<RequiredThroughputCell>(ui->table, hCam);
    CxCameraLineData* record = lineDataMap.value(hCam);
    if (!record || !cell.automatic || !cell.automatic->isChecked())
        return;
    record->readDefaultAvgTransportSpeed();
    cell.value->setText(QString::number(record->requiredThroughput));
}
