// SPDX-License-Identifier: GPL-3.0-or-later
// The report as the user gets it: into a file, behind a progress dialog.
#include "CsvReport.h"

#include <algorithm>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QMutexLocker>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include "BlockModel.h"
#include "CameraLineData.h"
#include "TimeMath.h"
#include "WriteWhole.h"

namespace {

constexpr int firstPaintMs = 1000; ///< longest time that the dialog gets to appear
constexpr int paintEveryMs = 34;   ///< 30 times a second: more would cost more than the report

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

/// The dialog that shows how far the report is. It blocks the rest of the program; closing it cancels.
class ReportProgress
{
    Q_DECLARE_TR_FUNCTIONS(CxCameraLineData)

public:
    /// Returns when the dialog has been painted. Processes events.
    ReportProgress(const QString& cameraName, qint32 frames, QWidget* parent)
        : dialog(QString(), tr("Cancel"), 0, frames, parent, Qt::WindowFlags())
    {
        auto* label = new QLabel(tr("Exporting %1 data").arg(cameraName), &dialog);
        label->setTextFormat(Qt::PlainText); // names of cameras may hold anything
        label->setAlignment(Qt::AlignCenter);
        dialog.setLabel(label);
        dialog.setWindowTitle(tr("Data throughput monitor"));
        dialog.setWindowModality(Qt::ApplicationModal);
        // More frames may be visited than were counted: reaching the end must neither reset nor close the dialog.
        dialog.setAutoReset(false);
        dialog.setAutoClose(false);
        dialog.resize(300, 100);
        if (auto* cancel = dialog.findChild<QPushButton*>())
            cancel->hide();
        dialog.show();
        QCoreApplication::processEvents(QEventLoop::AllEvents, firstPaintMs);
    }

    /// Paints the progress and processes events when it is time to: the dialog itself does so only when it has been
    /// open for some seconds.
    bool goOn(qint32 visited)
    {
        if (!dialog.wasCanceled() && (!sincePaint.isValid() || sincePaint.hasExpired(paintEveryMs))) {
            dialog.setValue(visited);
            QCoreApplication::processEvents();
            sincePaint.start();
        }
        return !dialog.wasCanceled();
    }

private:
    QProgressDialog dialog;
    QElapsedTimer sincePaint;
};

} // namespace

bool reportHasLines(const CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    QMutexLocker lock(&data.mutex);
    return std::any_of(data.frameList.begin(), data.frameList.end(), [fromUs, toUs](const auto& frame) {
        const quint64 intervals = intervalCount(*frame);
        if (intervals == 0 || frame->timestampUs > toUs || intervalTimeUs(*frame, intervals - 1) < fromUs)
            return false;
        for (quint64 i = 0; i < intervals; ++i) {
            const qint64 timeUs = intervalTimeUs(*frame, i);
            if (timeUs >= fromUs)
                return timeUs <= toUs;
        }
        return false;
    });
}

CsvReportResult CxCameraLineData::exportToCsv(const QString& fileName, QWidget* parent, qint64 fromUs, qint64 toUs,
                                              QString* reason)
{
    if (measMode != MeasModeDataThroughput)
        return CsvReportResult::NoReport;

    ReportProgress progress(cameraName, countFrames(*this, fromUs, toUs), parent);

    // Unbuffered: the writer's pieces are large, and an error shows where it happens.
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return CsvReportResult::NotOpened;

    CsvReportWriter writer(
        [&file](const char* data, std::size_t size) { return writeWhole(file, data, static_cast<qint64>(size)); },
        [&progress](qint32 visited) { return progress.goOn(visited); });
    const CsvReportResult result = writer.write(*this, fromUs, toUs);
    if (result == CsvReportResult::Failed && reason)
        *reason = file.errorString();
    return result;
}
