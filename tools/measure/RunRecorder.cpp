// SPDX-License-Identifier: GPL-3.0-or-later
// Ticks into courses and events.
#include "RunRecorder.h"

#include <algorithm>

#include "CameraNames.h"
#include "LostFramesText.h"

namespace {

constexpr double msPerS = 1000.0;
constexpr double silenceMs = 1000.0; ///< a longer silence is an event

quint64 countOf(const Figures& figures, const char* key)
{
    return static_cast<quint64>(figureValue(figures, QLatin1String(key)).value_or(0.0));
}

HistoryColumn column(const Stretch& tick)
{
    const Figures& figures = tick.figures;
    HistoryColumn column;
    column.beginS = tick.endS - tick.lengthS;
    column.endS = tick.endS;
    column.megabytes = figureValue(figures, QStringLiteral("deliveredMBps")).value_or(0.0) * tick.lengthS;
    column.missingFrames = countOf(figures, "missingFrames");
    column.overflows = countOf(figures, "overflows");
    column.losses = countOf(figures, "losses");
    column.longestGapMs = figureValue(figures, QStringLiteral("longestGapMs")).value_or(0.0);
    column.minThroughput = figureValue(figures, QStringLiteral("minThroughputMBps"));
    column.maxBufferLevel = figureValue(figures, QStringLiteral("maxBufferLevelPercent"));
    return column;
}

} // namespace

RunRecorder::RunRecorder(std::chrono::milliseconds tick) : tickS(static_cast<double>(tick.count()) / msPerS) {}

void RunRecorder::add(const MeasuredCamera& camera, const Stretch& tick)
{
    HistoryColumn next = column(tick);
    const double lostS = std::min(figureValue(tick.figures, QStringLiteral("lostS")).value_or(0.0), tick.lengthS);
    if (lostS > 0.0) { // since a time in this tick, or until one
        next.lostFromS = camera.isLost() ? next.endS - lostS : next.beginS;
        next.lostToS = next.lostFromS + lostS;
    }
    Course& course = courses.try_emplace(&camera, Course{RunHistory(tickS)}).first->second;
    if (camera.record().measMode == MeasModeStandardAcq) {
        next.overflows = course.overflows.step(countOf(tick.figures, "overflows"));
        next.skips = course.skips.step(countOf(tick.figures, "skips"));
    }
    course.history.add(next);

    const double gapMs = figureValue(tick.figures, QStringLiteral("longestGapMs")).value_or(0.0);
    const bool isSilence = figureValue(tick.figures, QStringLiteral("silentMs")).value_or(0.0) > 0.0;
    const bool anyFrame = countOf(tick.figures, "frames") > 0;
    const bool tellIt = isSilence && gapMs > silenceMs;
    if (tellIt && anyFrame)
        note(camera, QStringLiteral("frames again, after %1 s without one").arg(gapMs / msPerS, 0, 'f', 1));
    else if (tellIt && !course.silent)
        note(camera, QStringLiteral("no frame for more than a second"), true);
    course.silent = tellIt && !anyFrame;
    if (tick.lost && tick.lost->total() > 0)
        note(camera, QStringLiteral("lost frames: ") + lostFramesText(*tick.lost), true);
}

void RunRecorder::note(const MeasuredCamera& camera, const QString& text, bool bad)
{
    allEvents.add({QDateTime::currentDateTime(), cameraDisplayName(camera.info()), text, bad});
}

std::vector<HistoryColumn> RunRecorder::course(const MeasuredCamera& camera) const
{
    const auto found = courses.find(&camera);
    return found == courses.end() ? std::vector<HistoryColumn>() : found->second.history.columns();
}
