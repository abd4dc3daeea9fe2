// SPDX-License-Identifier: GPL-3.0-or-later
// Objects from what a run says.
#include "JsonObjects.h"

#include <QtCore/QJsonArray>

namespace {

QJsonValue reportObject(const std::optional<ReportSummary>& report)
{
    if (!report)
        return {};
    const bool any = report->frames > 0;
    return QJsonObject{{QStringLiteral("file"), report->file},
                       {QStringLiteral("frames"), static_cast<double>(report->frames)},
                       {QStringLiteral("droppedFrames"), static_cast<double>(report->droppedFrames)},
                       {QStringLiteral("fromUs"), any ? QJsonValue(report->fromUs) : QJsonValue()},
                       {QStringLiteral("toUs"), any ? QJsonValue(report->toUs) : QJsonValue()}};
}

} // namespace

QJsonObject cameraObject(const SxCameraInfo& camera)
{
    return {{QStringLiteral("name"), camera.name},
            {QStringLiteral("id"), camera.id},
            {QStringLiteral("customId"), camera.customId}};
}

void addFigures(QJsonObject& object, const Figures& figures)
{
    for (const Figure& figure : figures)
        object.insert(QLatin1String(figure.key), figure.value ? QJsonValue(*figure.value) : QJsonValue());
}

QJsonObject summaryObject(const Summary& summary)
{
    QJsonArray cameras;
    for (const CameraSummary& camera : summary.cameras) {
        QJsonObject object = cameraObject(camera.camera);
        object.insert(QStringLiteral("durationS"), camera.run.lengthS);
        addFigures(object, camera.run.figures);
        object.insert(QStringLiteral("clockDriftPpm"),
                      camera.clockDriftPpm ? QJsonValue(*camera.clockDriftPpm) : QJsonValue());
        object.insert(QStringLiteral("problems"), QJsonArray::fromStringList(camera.problems));
        object.insert(QStringLiteral("brokenLimits"), QJsonArray::fromStringList(camera.verdict.brokenLimits()));
        object.insert(QStringLiteral("report"), reportObject(camera.report));
        cameras.append(object);
    }
    const bool counters = summary.mode == MeasModeStandardAcq;
    return {{QStringLiteral("type"), QStringLiteral("summary")},
            {QStringLiteral("mode"), counters ? QStringLiteral("counters") : QStringLiteral("throughput")},
            {QStringLiteral("exitCode"), summary.exitCode},
            {QStringLiteral("lostLogLines"),
             summary.log ? QJsonValue(static_cast<double>(summary.log->lostLines())) : QJsonValue()},
            {QStringLiteral("cameras"), cameras}};
}
