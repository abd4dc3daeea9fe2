// SPDX-License-Identifier: GPL-3.0-or-later
// Puts the engine's report into a file and says what is in it.
#include "Report.h"

#include <limits>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include "CsvReportWriter.h"
#include "Options.h"
#include "WriteWhole.h"

namespace {

constexpr int longestName = 100; ///< of a camera within a file's, of which file systems take 255 bytes

ReportSummary describe(const CxCameraLineData& record, const QString& fileName)
{
    ReportSummary summary;
    summary.file = fileName;
    const RunTotals totals = record.runTotals();
    const QMutexLocker lock(&record.mutex);
    summary.frames = record.frameList.size();
    summary.droppedFrames = totals.frames - totals.skippedFrames - summary.frames;
    if (!record.frameList.empty()) {
        summary.fromUs = record.frameList.front()->timestampUs;
        summary.toUs = record.frameList.back()->timestampUs;
    }
    return summary;
}

} // namespace

QStringList reportFiles(const QString& pattern, const std::vector<SxCameraInfo>& cameras)
{
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9._-]+"));
    QStringList files;
    for (const SxCameraInfo& info : cameras) {
        const QString plain =
            QStringLiteral("%1-%2").arg(info.name, info.id).replace(unsafe, QStringLiteral("_")).right(longestName);
        const auto fileOf = [&pattern](const QString& camera) {
            return QString(pattern).replace(cameraPlaceholder, camera);
        };
        QString file = fileOf(plain);
        for (int twin = 2; files.contains(file); ++twin)
            file = fileOf(QStringLiteral("%1-%2").arg(plain).arg(twin));
        files.append(file);
    }
    return files;
}

bool canWriteReport(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        return true;
    *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
    return false;
}

std::optional<ReportSummary> writeReport(const CxCameraLineData& record, const QString& fileName, QString* error)
{
    // Unbuffered: the writer's pieces are large, and an error shows where it happens.
    QFile file(fileName);
    const bool opened = file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    CsvReportWriter writer(
        [&file](const char* text, std::size_t size) { return writeWhole(file, text, static_cast<qint64>(size)); });
    constexpr qint64 always = std::numeric_limits<qint64>::max();
    if (opened && writer.write(record, -always, always) == CsvReportResult::Written)
        return describe(record, fileName);
    *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
    return std::nullopt;
}
