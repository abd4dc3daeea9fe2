// SPDX-License-Identifier: GPL-3.0-or-later
// A camera's run from start to figures.
#include "MeasuredCamera.h"

#include <utility>

#include "CameraRegistry.h"
#include "MeasurementClock.h"

namespace {

/// Who the camera is where figures of this mode are told.
SxCameraInfo shownInfo(SxCameraInfo info, ExMeasMode mode)
{
    if (mode == MeasModeStandardAcq)
        info.timeSource.clear();
    info.name = withTimeSource(info.name, info);
    return info;
}

} // namespace

MeasuredCamera::MeasuredCamera(VNCORE_HANDLE camera, SxCameraInfo info, const Options& options, CameraLink link)
    : cameraInfo(shownInfo(std::move(info), options.mode)),
      cameraLink(std::move(link)),
      runVerdict(options.limits.of(cameraInfo.id))
{
    data.hCam = camera;
    data.cameraName = cameraInfo.name;
    data.measMode = options.mode;
    data.autoRequiredThroughput = !options.required.has_value();
    data.requiredThroughput = options.required.value_or(0);
    data.givenBufferSize = options.bufferSize;
}

bool MeasuredCamera::start(const Options& options)
{
    startedAt = QDateTime::currentDateTime();
    lostBefore = CameraRegistry::instance().lostFrames(data.hCam).value_or(LostFrames());
    started = data.startMeasurement(options.samplePeriod, options.capacity);
    startUs = measurementClockUs();
    return started;
}

void MeasuredCamera::announceStop()
{
    noteEnd();
    data.announceStop();
    if (started && !endedAtS)
        endedAtS = elapsedS();
}

void MeasuredCamera::stop()
{
    announceStop();
    data.stopMeasurement();
}

void MeasuredCamera::setLost()
{
    noteEnd();
    // One that is lost again before it was measured has nothing to suspend.
    if (!endedAtS && (isLost() || (started && data.suspendMeasurement())))
        presence = Presence::Lost;
}

void MeasuredCamera::setReturned()
{
    if (presence == Presence::Lost)
        presence = Presence::Returned;
}

bool MeasuredCamera::resume()
{
    if (presence != Presence::Returned || endedAtS || !data.resumeMeasurement())
        return false;
    presence = Presence::There;
    return true;
}

void MeasuredCamera::noteEnd()
{
    if (started && !endedAtS && !isLost() && !data.isMeasuring()) {
        endedItself = true;
        endedAtS = elapsedS();
    }
}

QStringList MeasuredCamera::problems() const
{
    if (!started)
        return {QStringLiteral("did not start")};
    QStringList problems;
    const RunTotals totals = data.runTotals();
    if (isLost()) // whatever number of losses is allowed: the rest of its run is missing
        problems.append(QStringLiteral("was lost and not measured again"));
    else if (totals.losses > 0 && !runVerdict.judges("losses"))
        problems.append(totals.losses == 1 ? QStringLiteral("was lost")
                                           : QStringLiteral("was lost %1 times").arg(totals.losses));
    if (endedItself)
        problems.append(QStringLiteral("measurement ended for lack of memory"));
    if (totals.frames == 0)
        problems.append(QStringLiteral("sent no frame"));
    else if (totals.skippedFrames == totals.frames)
        problems.append(QStringLiteral("no frame held a whole sample block"));
    return problems;
}

Stretch MeasuredCamera::takeTick()
{
    const RunTotals totals = data.takeIntervalTotals();
    const double endS = elapsedS();
    const double beginS = std::exchange(tickEndS, endS);
    ticks += totals;
    untilTick += totals;
    KnownLosses lost = lostInRun();
    if (lost) {
        const LostFrames until = *lost;
        lost = until.since(std::exchange(lostUntilTick, until));
    }
    return stretch(beginS, endS, totals, lost);
}

Stretch MeasuredCamera::takeInterval()
{
    const double beginS = std::exchange(intervalEndS, tickEndS);
    KnownLosses lost;
    if (lostInRun())
        lost = lostUntilTick.since(std::exchange(lostUntilInterval, lostUntilTick));
    return stretch(beginS, tickEndS, std::exchange(ticks, RunTotals()), lost);
}

Stretch MeasuredCamera::wholeRun() const
{
    return stretch(0.0, elapsedS(), data.runTotals(), lostInRun());
}

StreamConditions MeasuredCamera::conditions() const
{
    return CameraRegistry::instance().streamConditions(data.hCam);
}

KnownLosses MeasuredCamera::lostInRun() const
{
    KnownLosses lost = started ? CameraRegistry::instance().lostFrames(data.hCam) : std::nullopt;
    if (lost)
        lost = lost->since(lostBefore);
    return lost;
}

void MeasuredCamera::judge()
{
    runVerdict.look(figures(data.runTotals(), lostInRun()), elapsedS());
}

Stretch MeasuredCamera::stretch(double beginS, double endS, const RunTotals& totals, const KnownLosses& lost) const
{
    return {endS, endS - beginS, figures(totals, lost), totals.bytes, totals.elapsedUs, lost};
}

Figures MeasuredCamera::figuresUntilTick() const
{
    const qint32 required = data.measMode == MeasModeDataThroughput ? data.requiredThroughput.load() : 0;
    const auto gapMs = static_cast<double>(untilTick.presentGapUs) / 1000.0;
    Figures all = figures(untilTick, lostInRun() ? KnownLosses(lostUntilTick) : std::nullopt);
    const Figures more{
        {"measuring", nullptr, 0, isRunning() ? 1.0 : 0.0},
        {"presentGapMs", nullptr, 1, isRunning() ? std::optional<double>(gapMs) : std::nullopt},
        {"requiredThroughputMBps", nullptr, 0, required > 0 ? std::optional<double>(required) : std::nullopt},
        {"linkRateMBps", nullptr, 0, cameraLink.rate},
        {"receivedBytes", nullptr, 0, static_cast<double>(untilTick.bytes)},
    };
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

Figures MeasuredCamera::figures(const RunTotals& totals, const KnownLosses& lost) const
{
    if (data.measMode == MeasModeStandardAcq)
        return counterFigures(totals, counterDifferences(data), lost);
    return throughputFigures(totals, data.evaluationSettings().samplePeriod,
                             data.requiredThroughput > 0 && data.bufferSizeKnown, lost);
}

double MeasuredCamera::elapsedS() const
{
    if (!started)
        return 0.0;
    return endedAtS ? *endedAtS : static_cast<double>(measurementClockUs() - startUs) / 1e6;
}
