// SPDX-License-Identifier: GPL-3.0-or-later
// The report as the user gets it: into a file, behind a progress dialog.
#include "CameraLineData.h"

#include <algorithm>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QMutexLocker>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include "TimeMath.h"

namespace {

constexpr int firstPaintMs = 1000; ///< longest time that the dialog gets to appear

/// Frames that the progress counts: those near the range, up to the first one behind it.
qint32 countFrames(const CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    const qint64 rangeUs = saturatingSub(toUs, fromUs);
    const double frameTime = data.minFrameTime;
    const qint64 marginUs = frameTime > static_cast<double>(rangeUs) ? truncatedToInt64(frameTime) : rangeUs / 2;
    const qint64 firstUs = saturatingSub(fromUs, marginUs);
    const qint64 lastUs = saturatingAdd(toUs, marginUs);

    QMutexLocker lock(&data.mutex);
    const auto end = std::find_if(data.frameList.begin(), data.frameList.end(),
                                  [lastUs](const auto& frame) { return frame->timestampUs > lastUs; });
    return static_cast<qint32>(std::count_if(data.frameList.begin(), end,
                                             [firstUs](const auto& frame) { return frame->timestampUs >= firstUs; }));
}

} // namespace

CsvReportResult CxCameraLineData::exportToCsv(const QString& fileName, QWidget* parent, qint64 fromUs, qint64 toUs)
{
    if (measMode != MeasModeDataThroughput)
        return CsvReportResult::NoReport;

    const auto text = [](const char* source) { return QCoreApplication::translate("CxCameraLineData", source); };
    QProgressDialog dialog(text("Exporting %1 data").arg(cameraName), text("Cancel"), 0,
                           countFrames(*this, fromUs, toUs), parent, Qt::WindowFlags());
    dialog.setWindowTitle(text("Data throughput monitor"));
    dialog.resize(300, 100);
    if (auto* cancel = dialog.findChild<QPushButton*>())
        cancel->hide(); // closing the dialog cancels
    dialog.show();
    QCoreApplication::processEvents(QEventLoop::AllEvents, firstPaintMs);

    // Unbuffered: the writer's pieces are large, and an error shows where it happens.
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return CsvReportResult::NotOpened;

    CsvReportWriter writer(
        [&file](const char* data, std::size_t size) {
            return file.write(data, static_cast<qint64>(size)) == static_cast<qint64>(size);
        },
        [&dialog](qint32 visited) {
            dialog.setValue(visited);
            return !dialog.wasCanceled();
        });
    return writer.write(*this, fromUs, toUs);
}
