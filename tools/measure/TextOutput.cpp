// SPDX-License-Identifier: GPL-3.0-or-later
// Output for people: columns.
#include "Output.h"

#include <algorithm>
#include <iterator>

#include "CameraNames.h"
#include "LostFramesText.h"
#include "PlainText.h"
#include "TimeMath.h"

namespace {

constexpr int timeWidth = 9;
constexpr int leastCameraWidth = 26;
constexpr int figureWidth = 10;
constexpr int linesPerHeading = 40;
constexpr qint64 usPerMs = 1000;
constexpr qint64 msPerDay = 86400000;

/// A time stamp of the measurement clock, which runs on past midnight.
QString clockText(qint64 timestampUs)
{
    const qint64 ms = timestampUs / usPerMs;
    const QString time =
        QTime::fromMSecsSinceStartOfDay(static_cast<int>(ms % msPerDay)).toString(QStringLiteral("HH:mm:ss.zzz"));
    return ms < msPerDay ? time : QStringLiteral("%1 +%2 d").arg(time).arg(ms / msPerDay);
}

Figures shown(const Figures& figures)
{
    Figures columns;
    std::copy_if(figures.begin(), figures.end(), std::back_inserter(columns),
                 [](const Figure& figure) { return figure.title != nullptr; });
    return columns;
}

/// Counts its lines, to repeat the heading now and then.
class TextOutput final : public Output
{
public:
    explicit TextOutput(LineWriter& lines) : Output(lines) {}

    void interval(const IntervalLine& line) override
    {
        makeRoomFor(line.camera);
        if (lineCount++ % linesPerHeading == 0)
            heading(line.stretch.figures);
        row(line.camera, line.stretch);
        lossRow(line.camera, line.stretch);
    }

    void links(const LinkLine& line) override { linkRows(line.table); }

    void summary(const Summary& summary) override
    {
        if (!summary.cameras.empty()) {
            writeLine(QStringLiteral("\nSummary"));
            for (const CameraSummary& camera : summary.cameras)
                makeRoomFor(camera.camera);
            heading(summary.cameras.front().run.figures);
        }
        for (const CameraSummary& camera : summary.cameras) {
            row(camera.camera, camera.run);
            lossRow(camera.camera, camera.run);
        }
        linkRows(summary.links);
        for (const CameraSummary& camera : summary.cameras) {
            const QString title = cameraDisplayName(camera.camera);
            if (figureValue(camera.run.figures, QStringLiteral("throughputP50MBps")))
                writeLine(distributionText(title, camera.run.figures, summary.options.samplePeriod));
            if (camera.clockDriftPpm)
                writeLine(QStringLiteral("%1: clock drift %2 ppm")
                              .arg(title, QString::number(*camera.clockDriftPpm, 'f', 1)));
            if (camera.grainBytes)
                writeLine(QStringLiteral("%1: data arrived %2 bytes at a time")
                              .arg(title, QString::number(*camera.grainBytes, 'f', 0)));
            if (camera.report)
                writeLine(reportText(title, *camera.report));
            for (const QString& problem : camera.problems)
                writeLine(QStringLiteral("%1: %2").arg(title, problem));
            for (const LimitVerdict& limit : camera.verdict.limits)
                writeLine(QStringLiteral("%1: %2").arg(title, limitLine(limit, camera)));
            for (const QString& reminder : reminders(camera))
                writeLine(QStringLiteral("%1: %2").arg(title, reminder));
            const bool failed = outcomeOf(camera) == Outcome::Fail;
            for (const Finding& finding : camera.findings)
                writeLine(
                    singleLine(QStringLiteral("%1: %2: %3")
                                   .arg(title, failed ? QStringLiteral("possible cause") : QStringLiteral("noticed"),
                                        finding.sentence)));
            writeLine(QStringLiteral("%1: %2").arg(title, outcomeText(outcomeOf(camera))));
        }
        if (summary.log && summary.log->lostLines() > 0)
            writeLine(QStringLiteral("the log lost %1: %2")
                          .arg(counted(summary.log->lostLines(), "line"), singleLine(summary.log->error())));
        writeLine(QStringLiteral("%1, %2 to %3, sample period %4 bytes")
                      .arg(versionText(), summary.startTime.toString(Qt::ISODate),
                           summary.endTime.toString(Qt::ISODate), QString::number(summary.options.samplePeriod)));
        writeLine(QStringLiteral("Run: %1").arg(outcomeText(outcomeOf(summary))));
    }

    void cameraList(const std::vector<SxCameraInfo>& cameras) override
    {
        for (const SxCameraInfo& camera : cameras)
            writeLine(singleLine(camera.id.leftJustified(figureWidth) + QLatin1Char(' ') +
                                 camera.name.leftJustified(camera.customId.isEmpty() ? 0 : leastCameraWidth) +
                                 QLatin1Char(' ') + camera.customId)
                          .trimmed());
    }

private:
    void makeRoomFor(const SxCameraInfo& camera)
    {
        cameraWidth = std::max(cameraWidth, cameraDisplayName(camera).size());
    }

    void heading(const Figures& figures)
    {
        QString text = QStringLiteral("time s").rightJustified(timeWidth) + QStringLiteral("  ") +
                       QStringLiteral("camera").leftJustified(cameraWidth);
        for (const Figure& figure : shown(figures))
            text += QLatin1Char(' ') + QString::fromLatin1(figure.title).rightJustified(figureWidth);
        writeLine(text);
    }

    QString rowHead(double endS, const QString& title) const
    {
        return QString::number(endS, 'f', 1).rightJustified(timeWidth) + QStringLiteral("  ") +
               title.leftJustified(cameraWidth);
    }

    void row(const SxCameraInfo& camera, const Stretch& stretch)
    {
        QString text = rowHead(stretch.endS, cameraDisplayName(camera));
        for (const Figure& figure : shown(stretch.figures))
            text += QLatin1Char(' ') + figureText(figure).rightJustified(figureWidth);
        writeLine(text);
    }

    void lossRow(const SxCameraInfo& camera, const Stretch& stretch)
    {
        if (stretch.lost && stretch.lost->total() > 0)
            writeLine(rowHead(stretch.endS, cameraDisplayName(camera)) + QStringLiteral(" lost frames: ") +
                      lostFramesText(*stretch.lost));
    }

    void linkRows(const LinkTable& table)
    {
        for (const LinkTotals& link : table.links)
            linkRow(QStringLiteral("link ") + link.name, link);
        linkRow(QStringLiteral("all"), table.all);
    }

    void linkRow(const QString& title, const LinkTotals& link)
    {
        if (link.cameras.size() < 2)
            return;
        QString text = rowHead(link.endS, singleLine(title)) + QStringLiteral(" %1 cameras delivered %2 MB/s")
                                                                   .arg(link.cameras.size())
                                                                   .arg(link.delivered().value_or(0.0), 0, 'f', 2);
        if (const auto share = link.sharePercent())
            text += QStringLiteral(", %1 % of the link's %2 MB/s").arg(*share, 0, 'f', 1).arg(*link.rate, 0, 'f', 1);
        writeLine(text);
    }

    static QString distributionText(const QString& title, const Figures& figures, qint32 samplePeriod)
    {
        const auto text = [&figures](const char* key) {
            return QString::number(figureValue(figures, QLatin1String(key)).value_or(0.0), 'f', 2);
        };
        return QStringLiteral(
                   "%1: of the blocks of %2 bytes 0.1 % had at most %3 MB/s, 1 % %4, 10 % %5, half of them %6")
            .arg(title, QString::number(samplePeriod), text("throughputP0_1MBps"), text("throughputP1MBps"),
                 text("throughputP10MBps"), text("throughputP50MBps"));
    }

    static QString limitLine(const LimitVerdict& limit, const CameraSummary& camera)
    {
        const QString text =
            QStringLiteral("%1: %2 %3")
                .arg(limitText(limit.limit), measuredText(limit), QLatin1String(limit.limit.kind->unit))
                .trimmed();
        if (limit.kept)
            return QStringLiteral("limit kept: ") + text;
        const auto at = brokenAt(limit, camera);
        return QStringLiteral("limit broken: %1%2")
            .arg(text, at ? QStringLiteral(", since %1 s (%2)")
                                .arg(QString::number(*limit.brokenAtS, 'f', 1), at->toString(Qt::ISODate))
                          : QString());
    }

    static QString reportText(const QString& title, const ReportSummary& report)
    {
        if (report.frames == 0)
            return QStringLiteral("%1: report %2 holds no frame").arg(title, report.file);
        return QStringLiteral("%1: report %2 holds %3 from %4 to %5 (%6 s), %7 dropped by the capacity")
            .arg(title, report.file, counted(report.frames, "frame"), clockText(report.fromUs),
                 clockText(report.toUs),
                 QString::number(static_cast<double>(report.toUs - report.fromUs) / double(usPerSecond), 'f', 3),
                 counted(report.droppedFrames, "frame"));
    }

    qint64 lineCount = 0;
    int cameraWidth = leastCameraWidth; ///< of the longest name so far
};

} // namespace

std::unique_ptr<Output> makeTextOutput(LineWriter& lines)
{
    return std::make_unique<TextOutput>(lines);
}
