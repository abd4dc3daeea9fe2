// SPDX-License-Identifier: GPL-3.0-or-later
// The two exports: the graph as a picture, a camera's measured data as a CSV report.
#include "DataGraphForm.h"

#include <algorithm>

#include <qcustomplot.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QImageWriter>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QToolButton>

#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "../presentation/CsvReport.h"
#include "ErrorBox.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr int largestPicture = 32000; ///< pixels; a painter knows no larger ones

/// 24-bit, and of the plot's size in the coordinates of widgets: the screen's scale makes it no larger.
QImage pictureOf(QCustomPlot& plot, int height)
{
    return plot.toPixmap(plot.width(), height, 1.0).toImage().convertToFormat(QImage::Format_RGB888);
}

bool askToReplace(QWidget* parent, const QString& title, const QString& name)
{
    return QMessageBox::question(
               parent, title,
               CxDataGraphForm::tr("%1 exists already. Replace it?").arg(QFileInfo(name).fileName())) ==
           QMessageBox::Yes;
}

/// Empty if the user cancels; else the host remembers the file's directory. A new file without a suffix gets that
/// of the chosen filter.
QString askForFile(QWidget* parent, const QString& caption, const QString& filters)
{
    auto* host = IxAppDelegate::instance();
    QString filter;
    QString name = QFileDialog::getSaveFileName(parent, caption, host->lastDirectory(), filters, &filter);
    if (name.isEmpty())
        return {};
    host->setLastDirectory(QFileInfo(name).absolutePath());
    if (!QFileInfo(name).suffix().isEmpty() || QFileInfo::exists(name))
        return name;
    name += QRegularExpression(QStringLiteral("\\.\\w+")).match(filter.isEmpty() ? filters : filter).captured();
    // The dialog has asked for the name without its suffix only.
    const bool replaces = QFileInfo::exists(name);
    return replaces && !askToReplace(parent, caption, name) ? QString() : name;
}

} // namespace

void CxDataGraphForm::onBtnExport(int iExportType)
{
    if (iExportType != ExportToClipboard && iExportType != ExportToFile)
        return;
    EndDrag(); // the picture has antialiasing
    const QImage picture = pictureOf(*ui->plot, ui->plot->height());
    if (iExportType == ExportToClipboard) {
        QGuiApplication::clipboard()->setImage(picture);
        return;
    }
    SavePicture(picture);
}

void CxDataGraphForm::SavePicture(const QImage& picture)
{
    const QString name =
        askForFile(this, tr("Select Output File"), QStringLiteral("PNG (*.png);;JPEG (*.jpg);;BMP Bitmaps (*.bmp)"));
    QImageWriter writer(name); // the suffix names the format
    if (!name.isEmpty() && !writer.write(picture))
        showError(this, ui->btnExport->text(),
                  tr("The image cannot be written.\n%1: %2").arg(name, writer.errorString()));
}

void CxDataGraphForm::SaveAllAreas()
{
    if (postponedEvents.isHeld() || PlottedCameras().isEmpty())
        return;
    SavePicture(PictureOfAllAreas());
}

/// Each as high as those in view. Nothing else is seen of it: events are not processed.
QImage CxDataGraphForm::PictureOfAllAreas()
{
    const int areaHeight = ui->plot->height() / std::max(1, ui->plot->axisRectCount());
    const QList<VNCORE_HANDLE> cameras = PlottedCameras();
    const int height = std::min(areaHeight * cameras.size(), largestPicture);
    BuildAreas(cameras);
    FillNewAreas();
    FitValueAxes(height);
    QImage picture = pictureOf(*ui->plot, height);
    ArrangeAreas();
    ReplotPlot();
    return picture;
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
    if (!reportHasLines(*record, VisibleFromUs(referenceTime), VisibleToUs(referenceTime)) &&
        QMessageBox::question(this, tr("Export Measured Data"),
                              tr("The visible time range holds no measured data. Write a report without a line?")) !=
            QMessageBox::Yes)
        return;
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
    const CsvReportResult result =
        record.exportToCsv(fileName, this, VisibleFromUs(referenceTime), VisibleToUs(referenceTime), &reason);
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
        case PostponedEvents::AreasInView:
            ArrangeAreas();
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
