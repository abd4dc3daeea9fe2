// SPDX-License-Identifier: GPL-3.0-or-later
// The description as JSON. Its fields are described in docs/kestrova-measure.md.
#include "ReportDescription.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "CsvReportWriter.h"
#include "Options.h"
#include "WriteWhole.h"

namespace {

struct Column
{
    const char* meaning;
    const char* unit; ///< the true one, whatever the heading says; null: none
};

constexpr Column columns[] = {
    {"the camera's number of the frame", nullptr},
    {"time of the block after the first block of its frame", "us"},
    {"sample period, the same on every line", "B"},
    {"time stamp of the block", "ns"},
    {"required throughput", "MB/s"},
    {"throughput of the link from the block before to this one", "MB/s"},
    {"simulated content of the camera's buffer", "B"},
    {"simulated content of the camera's buffer, of its size", "%"},
};

QJsonArray describeColumns()
{
    const QStringList headings = QString::fromLatin1(csvReportHeader).split(QLatin1Char(','));
    QJsonArray result;
    for (const Column& column : columns) {
        result.append(QJsonObject{
            {QStringLiteral("heading"), headings.value(result.size()).trimmed()},
            {QStringLiteral("meaning"), QLatin1String(column.meaning)},
            {QStringLiteral("unit"), column.unit ? QJsonValue(QLatin1String(column.unit)) : QJsonValue()}});
    }
    return result;
}

/// ISO 8601 with the zone's offset.
QString withZone(const QDateTime& time)
{
    return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

} // namespace

QString descriptionFile(const QString& reportFile)
{
    return reportFile + QStringLiteral(".json");
}

bool writeDescription(const MeasuredCamera& camera, const ReportSummary& report, QString* error)
{
    const CxCameraLineData& record = camera.record();
    const QJsonObject description{
        {QStringLiteral("tool"), versionText()},
        {QStringLiteral("report"), QFileInfo(report.file).fileName()},
        {QStringLiteral("startTime"), withZone(camera.startTime())},
        {QStringLiteral("camera"), QJsonObject{{QStringLiteral("name"), camera.info().name},
                                               {QStringLiteral("id"), camera.info().id},
                                               {QStringLiteral("customId"), camera.info().customId}}},
        {QStringLiteral("mode"), QStringLiteral("throughput")}, // the other one has no report
        {QStringLiteral("samplePeriodBytes"), record.samplePeriod},
        {QStringLiteral("requiredThroughputMBps"), record.requiredThroughput.load()},
        {QStringLiteral("bufferSizeBytes"),
         record.bufferSizeKnown ? QJsonValue(record.cameraBufferSize.load()) : QJsonValue()},
        {QStringLiteral("frames"), static_cast<double>(report.frames)},
        {QStringLiteral("droppedFrames"), static_cast<double>(report.droppedFrames)},
        {QStringLiteral("columns"), describeColumns()},
    };
    const QByteArray text = QJsonDocument(description).toJson();
    QFile file(descriptionFile(report.file));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) && writeWhole(file, text))
        return true;
    *error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return false;
}
