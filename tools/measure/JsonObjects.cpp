// SPDX-License-Identifier: GPL-3.0-or-later
// Objects from what a run says.
#include "JsonObjects.h"

#include <QtCore/QJsonArray>

namespace {

QString utc(const QDateTime& time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QString modeName(const Options& options)
{
    return options.mode == MeasModeStandardAcq ? QStringLiteral("counters") : QStringLiteral("throughput");
}

QJsonValue orNull(const std::optional<double>& value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

QJsonValue known(qint32 value)
{
    return value > 0 ? QJsonValue(value) : QJsonValue();
}

QJsonValue fileValue(const QString& file)
{
    return file.isEmpty() ? QJsonValue() : QJsonValue(file);
}

QJsonValue verdictValue(Outcome outcome)
{
    return outcome == Outcome::NoLimits ? QJsonValue() : QJsonValue(outcomeText(outcome));
}

QJsonArray limitObjects(const CameraSummary& camera)
{
    QJsonArray limits;
    for (const LimitVerdict& limit : camera.verdict.limits) {
        const LimitKind& kind = *limit.limit.kind;
        const auto at = brokenAt(limit, camera);
        limits.append(QJsonObject{{QStringLiteral("limit"), QLatin1String(kind.name)},
                                  {QStringLiteral("figure"), QLatin1String(kind.figure)},
                                  {QStringLiteral("value"), limit.limit.value},
                                  {QStringLiteral("measured"), orNull(limit.measured)},
                                  {QStringLiteral("kept"), limit.kept},
                                  {QStringLiteral("brokenAtS"), orNull(limit.brokenAtS)},
                                  {QStringLiteral("brokenAt"), at ? QJsonValue(utc(*at)) : QJsonValue()}});
    }
    return limits;
}

QJsonArray findingObjects(const std::vector<Finding>& findings)
{
    QJsonArray objects;
    for (const Finding& finding : findings) {
        QJsonObject figures;
        for (const NamedFigure& figure : finding.figures)
            figures.insert(QLatin1String(figure.key), figure.value);
        objects.append(QJsonObject{{QStringLiteral("kind"), QLatin1String(findingName(finding.kind))},
                                   {QStringLiteral("sentence"), finding.sentence},
                                   {QStringLiteral("figures"), figures}});
    }
    return objects;
}

QJsonObject versionsObject()
{
    return {{QStringLiteral("tool"), versionText()},
            {QStringLiteral("qt"), QLatin1String(qVersion())},
            {QStringLiteral("system"), QSysInfo::prettyProductName()},
            {QStringLiteral("kernel"), QSysInfo::kernelVersion()}};
}

QJsonObject settingsObject(const Options& options)
{
    const auto seconds = [](std::chrono::milliseconds time) { return static_cast<double>(time.count()) / 1e3; };
    return {
        {QStringLiteral("mode"), modeName(options)},
        {QStringLiteral("scenarioFile"), fileValue(options.scenarioFile)},
        {QStringLiteral("limitsFile"), fileValue(options.limitsFile)},
        {QStringLiteral("durationS"), options.duration ? QJsonValue(seconds(*options.duration)) : QJsonValue()},
        {QStringLiteral("intervalS"), seconds(options.interval)},
        {QStringLiteral("samplePeriodBytes"), options.samplePeriod},
        {QStringLiteral("capacitySamples"), options.capacity},
        {QStringLiteral("requiredMBps"), options.required ? QJsonValue(*options.required) : QJsonValue()},
        {QStringLiteral("bufferSizeBytes"), options.bufferSize ? QJsonValue(*options.bufferSize) : QJsonValue()},
        {QStringLiteral("resume"), options.resume},
        {QStringLiteral("csvFile"), fileValue(options.csvFile)},
        {QStringLiteral("logFile"), fileValue(options.logFile)},
        {QStringLiteral("reportFile"), fileValue(options.reportFile)},
        {QStringLiteral("metrics"), options.metrics ? QJsonValue(options.metrics->text()) : QJsonValue()},
        {QStringLiteral("allCameras"), options.allCameras},
        {QStringLiteral("askedCameras"), QJsonArray::fromStringList(options.cameras)},
    };
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
        object.insert(QLatin1String(figure.key), orNull(figure.value));
}

QJsonObject linkObject(const LinkTotals& link)
{
    QJsonArray ids;
    for (const MeasuredCamera* camera : link.cameras)
        ids.append(camera->info().id);
    const auto number = [](const std::optional<double>& value) { return value ? QJsonValue(*value) : QJsonValue(); };
    return {{QStringLiteral("name"), link.name.isEmpty() ? QJsonValue() : QJsonValue(link.name)},
            {QStringLiteral("cameras"), ids.size()},
            {QStringLiteral("cameraIds"), ids},
            {QStringLiteral("intervalS"), static_cast<double>(link.elapsedUs) / 1e6},
            {QStringLiteral("deliveredMBps"), number(link.delivered())},
            {QStringLiteral("rateMBps"), number(link.rate)},
            {QStringLiteral("sharePercent"), number(link.sharePercent())}};
}

QJsonObject summaryObject(const Summary& summary)
{
    QJsonArray cameras;
    for (const CameraSummary& camera : summary.cameras) {
        QJsonObject object = cameraObject(camera.camera);
        object.insert(QStringLiteral("durationS"), camera.run.lengthS);
        addFigures(object, camera.run.figures);
        object.insert(QStringLiteral("clockDriftPpm"), orNull(camera.clockDriftPpm));
        object.insert(QStringLiteral("grainBytes"), orNull(camera.grainBytes));
        object.insert(QStringLiteral("problems"), QJsonArray::fromStringList(camera.problems));
        object.insert(QStringLiteral("brokenLimits"), QJsonArray::fromStringList(camera.verdict.brokenLimits()));
        object.insert(QStringLiteral("startTime"), utc(camera.startTime));
        object.insert(QStringLiteral("requiredThroughputMBps"), known(camera.requiredThroughput));
        object.insert(QStringLiteral("bufferSizeBytes"), known(camera.bufferSize));
        object.insert(QStringLiteral("verdict"), verdictValue(outcomeOf(camera)));
        object.insert(QStringLiteral("limits"), limitObjects(camera));
        object.insert(QStringLiteral("reminders"), QJsonArray::fromStringList(reminders(camera)));
        object.insert(QStringLiteral("findings"), findingObjects(camera.findings));
        object.insert(QStringLiteral("report"), reportObject(camera.report));
        cameras.append(object);
    }
    QJsonArray links;
    for (const LinkTotals& link : summary.links.links)
        links.append(linkObject(link));
    return {{QStringLiteral("type"), QStringLiteral("summary")},
            {QStringLiteral("mode"), modeName(summary.options)},
            {QStringLiteral("startTime"), utc(summary.startTime)},
            {QStringLiteral("endTime"), utc(summary.endTime)},
            {QStringLiteral("versions"), versionsObject()},
            {QStringLiteral("settings"), settingsObject(summary.options)},
            {QStringLiteral("verdict"), verdictValue(outcomeOf(summary))},
            {QStringLiteral("exitCode"), summary.exitCode},
            {QStringLiteral("lostLogLines"),
             summary.log ? QJsonValue(static_cast<double>(summary.log->lostLines())) : QJsonValue()},
            {QStringLiteral("links"), links},
            {QStringLiteral("total"), linkObject(summary.links.all)},
            {QStringLiteral("cameras"), cameras}};
}
