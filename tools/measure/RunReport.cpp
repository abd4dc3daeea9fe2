// SPDX-License-Identifier: GPL-3.0-or-later
// Figures get names that need no manual; a figure without one would be shown by its key.
#include "RunReport.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QLocale>

#include "CameraNames.h"
#include "ExitCode.h"
#include "HtmlReport.h"
#include "Machine.h"
#include "WriteWhole.h"

namespace {

struct FigureName
{
    const char* key;
    const char* title;
    const char* unit;
    bool inOverview;
};

/// In the order of the report.
constexpr FigureName figureNames[] = {
    {"deliveredMBps", "Delivered throughput", "MB/s", true},
    {"framesPerSecond", "Frame rate", "1/s", false},
    {"avgThroughputMBps", "Average while frames flow", "MB/s", false},
    {"minThroughputMBps", "Lowest block throughput", "MB/s", true},
    {"maxBufferLevelPercent", "Highest buffer level", "%", true},
    {"overflows", "Buffer overflows", "", true},
    {"missingFrames", "Missing frames", "", true},
    {"transportSkips", "Lost on the link", "", false},
    {"apiSkips", "Fetched too late", "", false},
    {"skips", "Skipped in all", "", true},
    {"missedTriggersOverlap", "Triggers while busy", "", false},
    {"missedTriggersOverflow", "Triggers with a full buffer", "", false},
    {"longestGapMs", "Longest gap", "ms", true},
    {"silentMs", "Silent in all", "ms", false},
    {"losses", "Losses of the camera", "", false},
    {"lostS", "Time lost", "s", false},
    {"frames", "Frames", "", false},
    {"blocks", "Blocks", "", false},
    {"skippedFrames", "Frames without a block", "", false},
    {"failedWaits", "Failed image waits", "", false},
};

const FigureName* nameOf(const char* key)
{
    const auto* found = std::find_if(std::begin(figureNames), std::end(figureNames), [key](const FigureName& name) {
        return QLatin1String(name.key) == QLatin1String(key);
    });
    return found == std::end(figureNames) ? nullptr : found;
}

/// Digits of a large number in groups of three.
QString grouped(QString number)
{
    const int point = number.indexOf(QLatin1Char('.'));
    for (int at = (point < 0 ? number.size() : point) - 3; at > 0 && number.at(at - 1).isDigit(); at -= 3)
        number.insert(at, QChar(0x202f)); // narrow, and no line breaks there
    return number;
}

std::vector<ReportFigure> reportFigures(const Figures& figures)
{
    std::vector<ReportFigure> result;
    for (const FigureName& name : figureNames) {
        for (const Figure& figure : figures) {
            if (QLatin1String(figure.key) == QLatin1String(name.key))
                result.push_back({QLatin1String(name.title), grouped(figureText(figure)), QLatin1String(name.unit),
                                  name.inOverview});
        }
    }
    for (const Figure& figure : figures) {
        if (!nameOf(figure.key))
            result.push_back({QLatin1String(figure.key), grouped(figureText(figure)), {}, false});
    }
    return result;
}

QString withUnit(const QString& value, const char* unit)
{
    return (value + QLatin1Char(' ') + QLatin1String(unit)).trimmed();
}

ReportLimit reportLimit(const LimitVerdict& verdict, const QDateTime& start)
{
    const LimitKind& kind = *verdict.limit.kind;
    const FigureName* name = nameOf(kind.figure);
    ReportLimit limit;
    limit.text = QStringLiteral("%1 %2 %3")
                     .arg(QLatin1String(name ? name->title : kind.figure),
                          kind.isMinimum ? QStringLiteral("at least") : QStringLiteral("at most"),
                          withUnit(limitValueText(verdict.limit.value), kind.unit));
    limit.kept = verdict.kept;
    limit.measured = verdict.measured ? withUnit(limitValueText(verdict.measured), kind.unit) : limitValueText({});
    if (verdict.brokenAtS)
        limit.broken =
            QStringLiteral("since %1, after %2 s")
                .arg(start.addMSecs(qRound64(*verdict.brokenAtS * 1e3)).toString(QStringLiteral("HH:mm:ss")),
                     QString::number(*verdict.brokenAtS, 'f', 1));
    else if (!verdict.measured)
        limit.broken = QStringLiteral("not known, and so not kept");
    return limit;
}

Outcome outcomeOf(const CameraSummary& camera)
{
    if (!camera.problems.isEmpty() || !camera.verdict.passed())
        return Outcome::Fail;
    return camera.verdict.limits.empty() ? Outcome::NoLimits : Outcome::Pass;
}

Outcome outcomeOf(const Summary& summary)
{
    if (summary.exitCode != ExitSuccess)
        return Outcome::Fail;
    const auto unlimited = [](const CameraSummary& camera) { return camera.verdict.limits.empty(); };
    return std::all_of(summary.cameras.begin(), summary.cameras.end(), unlimited) ? Outcome::NoLimits : Outcome::Pass;
}

QString timeText(std::chrono::milliseconds time)
{
    return QStringLiteral("%1 s").arg(static_cast<double>(time.count()) / 1e3);
}

std::vector<ReportFact> settingFacts(const Options& options)
{
    std::vector<ReportFact> facts{
        {QStringLiteral("Command"), QCoreApplication::arguments().join(QLatin1Char(' '))},
        {QStringLiteral("Mode"),
         options.mode == MeasModeStandardAcq ? QStringLiteral("counters") : QStringLiteral("throughput")},
        {QStringLiteral("Cameras"),
         options.scenarioFile.isEmpty() ? QStringLiteral("as found on this machine") : options.scenarioFile},
        {QStringLiteral("Duration"),
         options.duration ? timeText(*options.duration) : QStringLiteral("until stopped")},
        {QStringLiteral("Interval"), timeText(options.interval)},
        {QStringLiteral("Sample period"), QStringLiteral("%1 B").arg(options.samplePeriod)},
        {QStringLiteral("Capacity"), QStringLiteral("%1 samples").arg(grouped(QString::number(options.capacity)))},
        {QStringLiteral("Required throughput"),
         options.required ? QStringLiteral("%1 MB/s").arg(*options.required) : QStringLiteral("as the camera tells")},
    };
    if (!options.csvFile.isEmpty())
        facts.push_back({QStringLiteral("All frames in"), options.csvFile});
    if (!options.logFile.isEmpty())
        facts.push_back({QStringLiteral("Interval lines in"), options.logFile});
    return facts;
}

} // namespace

ReportContent reportContent(const Options& options, const Summary& summary,
                            const std::vector<std::unique_ptr<MeasuredCamera>>& cameras, const RunRecorder& recorder)
{
    const QDateTime now = QDateTime::currentDateTime();
    ReportContent content{versionText(), outcomeOf(summary), summary.exitCode, now, now, {}, {}, {}, 0, {}, {}};
    content.events = recorder.events().list();
    content.leftOutEvents = recorder.events().leftOut();
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        const MeasuredCamera& camera = *cameras[i];
        const CameraSummary& said = summary.cameras[i];
        ReportCamera shown{cameraDisplayName(said.camera), outcomeOf(said), said.problems, {}, {}, {}, {}, {}, {}};
        shown.start = camera.startTime();
        content.start = std::min(content.start, shown.start);
        for (const LimitVerdict& limit : said.verdict.limits)
            shown.limits.push_back(reportLimit(limit, shown.start));
        shown.figures = reportFigures(said.run.figures);
        shown.course = recorder.course(camera);
        if (const qint32 required = camera.record().requiredThroughput;
            required > 0 && options.mode == MeasModeDataThroughput)
            shown.required = required;
        content.cameras.push_back(shown);
    }
    if (summary.log && summary.log->lostLines() > 0)
        content.notes.append(QStringLiteral("%1 lines of the log were lost: %2")
                                 .arg(QString::number(summary.log->lostLines()), summary.log->error()));
    content.settings = settingFacts(options);
    content.machine = machineFacts();
    return content;
}

bool writeHtmlReport(const ReportContent& content, const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) &&
        writeWhole(file, htmlReport(content)))
        return true;
    *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
    return false;
}
