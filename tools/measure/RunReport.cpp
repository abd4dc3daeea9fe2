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
    const char* brief; ///< in the table of several cameras; null: not there
};

/// In the order of the report.
constexpr FigureName figureNames[] = {
    {"deliveredMBps", "Delivered throughput", "MB/s", "Delivered"},
    {"framesPerSecond", "Frame rate", "1/s", nullptr},
    {"avgThroughputMBps", "Average while frames flow", "MB/s", nullptr},
    {"minThroughputMBps", "Lowest block throughput", "MB/s", "Lowest block"},
    {"maxBufferLevelPercent", "Highest buffer level", "%", "Level"},
    {"overflows", "Buffer overflows", "", "Overflows"},
    {"missingFrames", "Missing frames", "", "Missing"},
    {"transportSkips", "Lost on the link", "", nullptr},
    {"apiSkips", "Fetched too late", "", nullptr},
    {"skips", "Skipped in all", "", "Skipped"},
    {"missedTriggersOverlap", "Triggers while busy", "", nullptr},
    {"missedTriggersOverflow", "Triggers with a full buffer", "", nullptr},
    {"longestGapMs", "Longest gap", "ms", "Longest gap"},
    {"silentMs", "Silent in all", "ms", nullptr},
    {"losses", "Losses of the camera", "", nullptr},
    {"lostS", "Time lost", "s", nullptr},
    {"frames", "Frames", "", nullptr},
    {"blocks", "Blocks", "", nullptr},
    {"skippedFrames", "Frames without a block", "", nullptr},
    {"failedWaits", "Failed image waits", "", nullptr},
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

ReportFigure reportFigure(const Figure& figure)
{
    const FigureName* name = nameOf(figure.key);
    const QString value = figure.value ? grouped(figureText(figure)) : QString();
    if (!name)
        return {QLatin1String(figure.key), value, {}, {}};
    return {QLatin1String(name->title), value, QLatin1String(name->unit), QLatin1String(name->brief)};
}

/// Those with a name first, in the order of the names.
std::vector<ReportFigure> reportFigures(Figures figures)
{
    std::stable_sort(figures.begin(), figures.end(), [](const Figure& a, const Figure& b) {
        const auto place = [](const Figure& figure) {
            const FigureName* name = nameOf(figure.key);
            return name ? name : std::end(figureNames);
        };
        return place(a) < place(b);
    });
    std::vector<ReportFigure> result;
    std::transform(figures.begin(), figures.end(), std::back_inserter(result), reportFigure);
    return result;
}

/// With as many digits as it takes to see that a limit was missed.
QString measuredText(const LimitVerdict& verdict, int decimals)
{
    constexpr int mostDecimals = 9;
    const double bound = verdict.limit.value;
    const auto misses = [&](const QString& text) {
        return verdict.limit.kind->isMinimum ? text.toDouble() < bound : text.toDouble() > bound;
    };
    QString text = QString::number(*verdict.measured, 'f', decimals);
    while (!verdict.kept && !misses(text) && ++decimals <= mostDecimals)
        text = QString::number(*verdict.measured, 'f', decimals);
    return grouped(text);
}

QString withUnit(const QString& value, const char* unit)
{
    return (value + QChar(QChar::Nbsp) + QLatin1String(unit)).trimmed();
}

ReportLimit reportLimit(const LimitVerdict& verdict, const Figures& figures, const QDateTime& start)
{
    const LimitKind& kind = *verdict.limit.kind;
    const FigureName* name = nameOf(kind.figure);
    ReportLimit limit;
    limit.text = QStringLiteral("%1 %2 %3")
                     .arg(QLatin1String(name ? name->title : kind.figure),
                          kind.isMinimum ? QStringLiteral("at least") : QStringLiteral("at most"),
                          withUnit(limitValueText(verdict.limit.value), kind.unit));
    limit.kept = verdict.kept;
    const auto figure = std::find_if(figures.begin(), figures.end(), [&kind](const Figure& candidate) {
        return QLatin1String(candidate.key) == QLatin1String(kind.figure);
    });
    const int decimals = figure == figures.end() ? 0 : figure->decimals;
    limit.measured = verdict.measured ? withUnit(measuredText(verdict, decimals), kind.unit) : limitValueText({});
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
            shown.limits.push_back(reportLimit(limit, said.run.figures, shown.start));
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
