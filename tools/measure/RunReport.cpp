// SPDX-License-Identifier: GPL-3.0-or-later
// What a run, its cameras and its options say.
#include "RunReport.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QLocale>

#include "CameraNames.h"
#include "HtmlReport.h"
#include "Machine.h"
#include "ReportFigures.h"
#include "TimeText.h"
#include "WriteWhole.h"

namespace {

QString withUnit(const QString& value, const char* unit)
{
    return (value + QChar(QChar::Nbsp) + QLatin1String(unit)).trimmed();
}

ReportLimit reportLimit(const LimitVerdict& verdict, const QDateTime& start)
{
    const LimitKind& kind = *verdict.limit.kind;
    ReportLimit limit;
    limit.text =
        QStringLiteral("%1 %2 %3")
            .arg(figureTitle(kind.figure), kind.isMinimum ? QStringLiteral("at least") : QStringLiteral("at most"),
                 withUnit(groupedDigits(QString::number(verdict.limit.value, 'g', 10)), kind.unit));
    limit.kept = verdict.kept;
    limit.figure = QLatin1String(kind.figure);
    limit.value = verdict.limit.value;
    limit.isMinimum = kind.isMinimum;
    limit.measured =
        verdict.measured ? withUnit(groupedDigits(measuredText(verdict)), kind.unit) : measuredText(verdict);
    if (verdict.brokenAtS)
        limit.broken = QStringLiteral("since %1, after %2")
                           .arg(shortTimeText(start.addMSecs(qRound64(*verdict.brokenAtS * 1e3))),
                                lengthText(*verdict.brokenAtS));
    else if (!verdict.measured)
        limit.broken = QStringLiteral("not known, and so not kept");
    return limit;
}

/// Down to the slowest block of all, or one of a million.
std::vector<ReportQuantile> distributionOf(const MeasuredCamera& camera)
{
    constexpr int perDecade = 24;
    constexpr double rarest = 1e-6;
    const RunTotals totals = camera.totals();
    const quint32 samplePeriod = camera.record().evaluationSettings().samplePeriod;
    std::vector<ReportQuantile> quantiles;
    if (totals.intervals.count() == 0)
        return quantiles;
    const double lowest = std::max(rarest, 1.0 / static_cast<double>(totals.intervals.count()));
    for (int i = static_cast<int>(std::floor(std::log10(lowest) * perDecade)); i <= 0; ++i) {
        const double share = std::pow(10.0, double(i) / perDecade);
        const auto throughput = totals.throughputQuantile(share, samplePeriod);
        if (throughput && std::isfinite(*throughput))
            quantiles.push_back({share, *throughput});
    }
    return quantiles;
}

/// When each limit was broken, among the events.
void addBrokenLimits(std::vector<RunEvent>& events, const ReportCamera& camera, const Verdict& verdict)
{
    for (std::size_t i = 0; i < verdict.limits.size(); ++i) {
        if (verdict.limits[i].brokenAtS)
            events.push_back({camera.start.addMSecs(qRound64(*verdict.limits[i].brokenAtS * 1e3)), camera.name,
                              QStringLiteral("limit broken: ") + camera.limits[i].text, true});
    }
}

std::vector<ReportFact> settingFacts(const Options& options)
{
    const auto seconds = [](std::chrono::milliseconds time) { return static_cast<double>(time.count()) / 1e3; };
    std::vector<ReportFact> facts{
        {QStringLiteral("Command"), QCoreApplication::arguments().join(QLatin1Char(' '))},
        {QStringLiteral("Mode"),
         options.mode == MeasModeStandardAcq ? QStringLiteral("counters") : QStringLiteral("throughput")},
        {QStringLiteral("Cameras"),
         options.scenarioFile.isEmpty() ? QStringLiteral("as found on this machine") : options.scenarioFile},
        {QStringLiteral("Duration"),
         options.duration ? lengthText(seconds(*options.duration)) : QStringLiteral("until stopped")},
        {QStringLiteral("Interval"), lengthText(seconds(options.interval))},
        {QStringLiteral("Sample period"), QStringLiteral("%1 B").arg(options.samplePeriod)},
        {QStringLiteral("Capacity"),
         QStringLiteral("%1 samples").arg(groupedDigits(QString::number(options.capacity)))},
        {QStringLiteral("Required throughput"),
         options.required ? QStringLiteral("%1 MB/s").arg(*options.required) : QStringLiteral("as the camera tells")},
    };
    if (options.bufferSize)
        facts.push_back({QStringLiteral("Buffer size"),
                         groupedDigits(QString::number(*options.bufferSize)) + QStringLiteral(" B")});
    if (!options.resume)
        facts.push_back({QStringLiteral("Lost cameras"), QStringLiteral("are not measured again")});
    if (!options.limitsFile.isEmpty())
        facts.push_back({QStringLiteral("Limits from"), options.limitsFile});
    if (!options.csvFile.isEmpty())
        facts.push_back({QStringLiteral("All frames in"), options.csvFile});
    if (!options.logFile.isEmpty())
        facts.push_back({QStringLiteral("Interval lines in"), options.logFile});
    return facts;
}

/// Four digits, or all before the point.
QString fourDigits(double value)
{
    return std::abs(value) < 1000.0 ? QString::number(value, 'g', 4) : QString::number(value, 'f', 0);
}

ReportFinding reportFinding(const Finding& finding)
{
    ReportFinding shown{finding.sentence, {}};
    for (const NamedFigure& figure : finding.figures)
        shown.figures.push_back({figureTitle(figure.key), groupedDigits(fourDigits(figure.value)),
                                 QLatin1String(figure.unit), QString()});
    return shown;
}

ReportCamera reportCamera(const CameraSummary& said, const MeasuredCamera& camera, const RunRecorder& recorder)
{
    ReportCamera shown;
    shown.name = cameraDisplayName(said.camera);
    shown.outcome = outcomeOf(said);
    shown.problems = said.problems;
    shown.warnings = reminders(said);
    shown.start = said.startTime;
    for (const LimitVerdict& limit : said.verdict.limits)
        shown.limits.push_back(reportLimit(limit, shown.start));
    Figures figures = said.run.figures;
    if (!said.run.lost) // most cameras cannot tell
        figures.erase(std::remove_if(figures.begin(), figures.end(),
                                     [](const Figure& figure) {
                                         return QLatin1String(figure.key).startsWith(QLatin1String("lost")) &&
                                                !figure.value;
                                     }),
                      figures.end());
    if (said.clockDriftPpm)
        figures.push_back({"clockDriftPpm", nullptr, 1, said.clockDriftPpm});
    if (said.grainBytes)
        figures.push_back({"grainBytes", nullptr, 0, said.grainBytes});
    const auto quantiles = std::stable_partition(figures.begin(), figures.end(), [](const Figure& figure) {
        return !QLatin1String(figure.key).startsWith(QLatin1String("throughputP"));
    });
    shown.quantiles = reportFigures({quantiles, figures.end()}, said.verdict);
    shown.figures = reportFigures({figures.begin(), quantiles}, said.verdict);
    // It can be compared with others of the same blocks only.
    for (ReportFigure& figure : shown.figures) {
        if (figure.title == figureTitle("minThroughputMBps"))
            figure.title += QStringLiteral(" (of %1 B)").arg(camera.record().samplePeriod);
    }
    std::transform(said.findings.begin(), said.findings.end(), std::back_inserter(shown.findings), reportFinding);
    shown.course = recorder.course(camera);
    if (camera.record().measMode == MeasModeDataThroughput && said.requiredThroughput > 0)
        shown.required = said.requiredThroughput;
    shown.distribution = distributionOf(camera);
    return shown;
}

ReportLink reportLink(const LinkTotals& link)
{
    const auto text = [](const std::optional<double>& value, int decimals) {
        return value ? groupedDigits(QString::number(*value, 'f', decimals)) : QString();
    };
    if (link.name.isEmpty())
        return {
            QStringLiteral("All links"), counted(link.cameras.size(), "camera"), text(link.delivered(), 2), {}, {}};
    QStringList names;
    for (const MeasuredCamera* camera : link.cameras)
        names.append(cameraDisplayName(camera->info()));
    return {link.name, names.join(QStringLiteral(", ")), text(link.delivered(), 2), text(link.rate, 0),
            text(link.sharePercent(), 1)};
}

} // namespace

ReportContent reportContent(const Summary& summary, const std::vector<std::unique_ptr<MeasuredCamera>>& cameras,
                            const RunRecorder& recorder)
{
    ReportContent content;
    content.program = versionText();
    content.outcome = outcomeOf(summary);
    content.exitCode = summary.exitCode;
    content.start = summary.startTime;
    content.end = summary.endTime;
    content.events = recorder.events().list();
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        content.cameras.push_back(reportCamera(summary.cameras[i], *cameras[i], recorder));
        addBrokenLimits(content.events, content.cameras.back(), summary.cameras[i].verdict);
    }
    std::stable_sort(content.events.begin(), content.events.end(),
                     [](const RunEvent& a, const RunEvent& b) { return a.time < b.time; });
    if (cameras.size() > 1) {
        for (const LinkTotals& link : summary.links.links)
            content.links.push_back(reportLink(link));
        content.links.push_back(reportLink(summary.links.all));
    }
    if (summary.log && summary.log->lostLines() > 0)
        content.notes.append(QStringLiteral("the log lost %1: %2")
                                 .arg(counted(summary.log->lostLines(), "line"), summary.log->error()));
    content.settings = settingFacts(summary.options);
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
