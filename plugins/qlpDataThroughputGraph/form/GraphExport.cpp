// SPDX-License-Identifier: GPL-3.0-or-later
// The two exports: the graph as a picture, a camera's measured data as a CSV report.
#include "DataGraphForm.h"

#include <qcustomplot.h>

#include <QtCore/QFileInfo>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QToolButton>

#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "ErrorBox.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

/// 24-bit, and of the plot's size in the coordinates of widgets: the screen's scale makes it no larger.
QImage pictureOf(QCustomPlot& plot)
{
    return plot.toPixmap(plot.width(), plot.height(), 1.0).toImage().convertToFormat(QImage::Format_RGB888);
}

/// Empty if the user cancels; else the host remembers the file's directory.
QString askForFile(QWidget* parent, const QString& caption, const QString& filter)
{
    auto* host = IxAppDelegate::instance();
    QString name = QFileDialog::getSaveFileName(parent, caption, host->lastDirectory(), filter);
    if (!name.isEmpty())
        host->setLastDirectory(QFileInfo(name).absolutePath());
    return name;
}

} // namespace

void CxDataGraphForm::onBtnExport(int iExportType)
{
    if (iExportType != ExportToClipboard && iExportType != ExportToFile)
        return;
    EndDrag(); // the picture has antialiasing
    const QImage picture = pictureOf(*ui->plot);
    if (iExportType == ExportToClipboard) {
        QGuiApplication::clipboard()->setImage(picture);
        return;
    }
    const QString name =
        askForFile(this, tr("Select Output File"), QStringLiteral("PNG (*.png);;JPEG (*.jpg);;BMP Bitmaps (*.bmp)"));
    if (!name.isEmpty())
        picture.save(name); // in the format that the suffix names
}

void CxDataGraphForm::onBtnCamExportData()
{
    const auto* button = qobject_cast<QToolButton*>(sender());
    CxCameraLineData* record = button ? lineDataMap.value(cameraOf(button)) : nullptr;
    if (!record || postponedEvents.isHeld())
        return;
    if (!record->hasFrames()) {
        QMessageBox::information(this, tr("Export Measured Data"), tr("No measured data to export."));
        return;
    }
    const CameraKey camera{record->hCam, record->serial};
    const QString name = askForFile(this, tr("Select Output File for Measured Data"), tr("CSV files (*.csv)"));
    record = FindRecord(camera);
    if (!name.isEmpty() && record && !record->isMeasuring()) // a program may have started it meanwhile
        WriteReport(*record, name);
}

/// The progress dialog processes events with the record's mutex held. Until the report is done nothing may delete the
/// record or take that mutex, so what the host and the timer announce is noted and handled afterwards.
void CxDataGraphForm::WriteReport(CxCameraLineData& record, const QString& fileName)
{
    postponedEvents.hold(record.hCam);
    QString reason;
    const CsvReportResult result = record.exportToCsv(fileName, this, VisibleFromUs(), VisibleToUs(), &reason);
    HandlePostponedEvents(); // the record may be gone now

    if (result == CsvReportResult::Failed)
        showError(this, tr("Export Measured Data"), tr("The report is not complete.\n%1: %2").arg(fileName, reason));
}

void CxDataGraphForm::HandlePostponedEvents()
{
    for (const auto& [kind, hCam] : postponedEvents.release()) {
        switch (kind) {
        case PostponedEvents::RefreshTimer:
            timerSignal();
            break;
        case PostponedEvents::GraphRefresh:
            updateGraph();
            break;
        case PostponedEvents::CameraOpened:
            updateCameraList();
            break;
        case PostponedEvents::CameraClosed:
            removeCameraListRow(hCam);
            break;
        case PostponedEvents::CameraAcquisition:
            updateCameraListRow(hCam);
            break;
        case PostponedEvents::CameraFormat:
            onComboboxFormatChangedExt(hCam);
            break;
        }
    }
}
