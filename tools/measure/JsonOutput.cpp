// SPDX-License-Identifier: GPL-3.0-or-later
// Output for programs: one JSON object per line. The fields are described in docs/kestrova-measure.md.
#include "Output.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QJsonObject cameraObject(const SxCameraInfo& camera)
{
    return {{QStringLiteral("name"), camera.name},
            {QStringLiteral("id"), camera.id},
            {QStringLiteral("customId"), camera.customId}};
}

/// What is not known, or not finite, is null.
void addFigures(QJsonObject& object, const Figures& figures)
{
    for (const Figure& figure : figures)
        object.insert(QLatin1String(figure.key), figure.value ? QJsonValue(*figure.value) : QJsonValue());
}

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

/// Keeps nothing between lines: each object can be understood alone.
class JsonOutput final : public Output
{
public:
    explicit JsonOutput(LineWriter& lines) : Output(lines) {}

    void interval(const IntervalLine& line) override
    {
        QJsonObject object = cameraObject(line.camera);
        object.insert(QStringLiteral("type"), QStringLiteral("interval"));
        object.insert(QStringLiteral("time"), line.time.toUTC().toString(Qt::ISODateWithMs));
        object.insert(QStringLiteral("elapsedS"), line.stretch.endS);
        object.insert(QStringLiteral("intervalS"), line.stretch.lengthS);
        addFigures(object, line.stretch.figures);
        write(object);
    }

    void summary(const Summary& summary) override
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
        write({{QStringLiteral("type"), QStringLiteral("summary")},
               {QStringLiteral("mode"), counters ? QStringLiteral("counters") : QStringLiteral("throughput")},
               {QStringLiteral("exitCode"), summary.exitCode},
               {QStringLiteral("lostLogLines"),
                summary.log ? QJsonValue(static_cast<double>(summary.log->lostLines())) : QJsonValue()},
               {QStringLiteral("cameras"), cameras}});
    }

    void cameraList(const std::vector<SxCameraInfo>& cameras) override
    {
        for (const SxCameraInfo& camera : cameras) {
            QJsonObject object = cameraObject(camera);
            object.insert(QStringLiteral("type"), QStringLiteral("camera"));
            write(object);
        }
    }

private:
    void write(const QJsonObject& object)
    {
        writeLine(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    }
};

} // namespace

std::unique_ptr<Output> makeJsonOutput(LineWriter& lines)
{
    return std::make_unique<JsonOutput>(lines);
}
