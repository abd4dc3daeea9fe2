// SPDX-License-Identifier: GPL-3.0-or-later
// Totals of a run: one frame's figures, and how they add up.
#include "RunTotals.h"

#include <algorithm>
#include <cfloat>

#include "BlockModel.h"
#include "EventMarks.h"
#include "FrameAggregates.h"
#include "SampleRecords.h"
#include "StepFigures.h"

namespace {

constexpr quint64 gapsForMean = 8; ///< a burst at the start is no mean alone
constexpr double meanGaps = 3.0;
constexpr double clockResolutionUs = 1e3; ///< of the measurement clock

template<typename Pick>
void merge(std::optional<double>& into, const std::optional<double>& value, Pick pick)
{
    if (value)
        into = into ? pick(*into, *value) : *value;
}

double lower(double a, double b)
{
    return std::min(a, b);
}

double higher(double a, double b)
{
    return std::max(a, b);
}

} // namespace

bool isLongestGapUsual(double longestGap, double elapsed, double frames)
{
    return frames > 0.0 && longestGap * frames <= meanGaps * (elapsed - longestGap);
}

FrameFigures frameFigures(const FrameRecord& frame, const FrameAggregates& aggregates,
                          const EvaluationSettings& settings)
{
    FrameFigures figures;
    figures.blocks = frame.blockCount;
    if (frame.durationTicks != 0)
        figures.throughput = aggregates.throughput;
    const double slowest = aggregates.extremes.minSpeed(settings);
    if (slowest < DBL_MAX)
        figures.minThroughput = slowest;
    figures.overflow = aggregates.extremes.fill == Extremes::overflowed;
    if (figures.overflow || (intervalCount(frame) > 0 && settings.bufferSize != 0))
        figures.maxBufferLevel = aggregates.extremes.level(settings);
    return figures;
}

std::optional<double> RunTotals::throughputQuantile(double share, quint32 samplePeriod) const
{
    const auto ticks = intervals.longest(share);
    if (!ticks)
        return std::nullopt;
    const double speed = samplePeriod / (*ticks / static_cast<double>(ticksPerUs));
    return minThroughput ? std::max(speed, *minThroughput) : speed; // a bucket is less exact than the minimum
}

RunTotals& RunTotals::operator+=(const RunTotals& later)
{
    frames += later.frames;
    skippedFrames += later.skippedFrames;
    blocks += later.blocks;
    bytes += later.bytes;
    missingFrames += later.missingFrames;
    failedWaits += later.failedWaits;
    longestGapUs = std::max(longestGapUs, later.longestGapUs);
    presentGapUs = later.presentGapUs;
    elapsedUs += later.elapsedUs;
    silentUs += later.silentUs;
    losses += later.losses;
    lostUs += later.lostUs;
    overflows += later.overflows;
    throughputSum += later.throughputSum;
    throughputFrames += later.throughputFrames;
    merge(minThroughput, later.minThroughput, lower);
    merge(maxBufferLevel, later.maxBufferLevel, higher);
    intervals += later.intervals;
    return *this;
}

void RunTotalsCounter::begin(qint64 nowUs)
{
    *this = RunTotalsCounter();
    running = true;
    openSinceUs = lastFrameUs = nowUs;
}

void RunTotalsCounter::end(qint64 nowUs)
{
    open = openInterval(nowUs);
    open.presentGapUs = 0;
    running = false;
}

void RunTotalsCounter::lose(qint64 nowUs)
{
    ++open.losses;
    lostSinceUs = nowUs;
    lossInGap = true;
}

void RunTotalsCounter::resume(qint64 nowUs)
{
    if (lostSinceUs)
        open.lostUs += nowUs - *lostSinceUs;
    lostSinceUs.reset();
    lastFrameNumber.reset();
}

void RunTotalsCounter::addFrame(quint32 frameNumber, quint64 bytes, const FrameFigures& figures, bool skipped,
                                qint64 nowUs)
{
    ++open.frames;
    open.skippedFrames += skipped ? 1 : 0;
    open.blocks += figures.blocks;
    open.bytes += bytes;
    open.overflows += figures.overflow ? 1 : 0;
    if (figures.throughput) {
        open.throughputSum += *figures.throughput;
        ++open.throughputFrames;
    }
    merge(open.minThroughput, figures.minThroughput, lower);
    merge(open.maxBufferLevel, figures.maxBufferLevel, higher);
    if (figures.intervals != nullptr)
        figures.intervals->addTo(open.intervals);

    if (running)
        endGap(nowUs);
    lastFrameUs = nowUs;
    if (lastFrameNumber)
        open.missingFrames += framesBetween(*lastFrameNumber, frameNumber);
    lastFrameNumber = frameNumber;
}

void RunTotalsCounter::endGap(qint64 nowUs)
{
    const qint64 gapUs = nowUs - lastFrameUs;
    const double limitUs = longestGapOfFramesUs();
    open.longestGapUs = std::max(open.longestGapUs, gapUs);
    if (static_cast<double>(gapUs) > limitUs)
        open.silentUs += gapUs - silenceTakenUs;
    silenceTakenUs = 0;
    lossInGap = lostSinceUs.has_value();
    if (lastFrameNumber) {
        const auto lengthUs = static_cast<double>(gapUs);
        gapSumUs += gaps > 0 ? std::min(lengthUs, limitUs) : lengthUs;
        ++gaps;
    }
}

double RunTotalsCounter::longestGapOfFramesUs() const
{
    if (lossInGap)
        return 0.0;
    const double limitUs = gaps > 0 ? meanGaps * gapSumUs / static_cast<double>(gaps) + clockResolutionUs : 0.0;
    return gaps < gapsForMean ? std::max<double>(limitUs, MeasuredRun::longestFirstGapUs) : limitUs;
}

RunTotals RunTotalsCounter::run(qint64 nowUs) const
{
    RunTotals sum = closed;
    return sum += openInterval(nowUs);
}

RunTotals RunTotalsCounter::takeInterval(qint64 nowUs)
{
    const RunTotals interval = openInterval(nowUs);
    if (running) {
        silenceTakenUs += interval.silentUs - open.silentUs;
        if (lostSinceUs)
            lostSinceUs = nowUs;
    }
    closed += interval;
    open = RunTotals();
    openSinceUs = nowUs;
    return interval;
}

/// A gap that is not over yet counts as long as it is now.
RunTotals RunTotalsCounter::openInterval(qint64 nowUs) const
{
    RunTotals interval = open;
    if (running) {
        interval.presentGapUs = nowUs - lastFrameUs;
        interval.longestGapUs = std::max(interval.longestGapUs, interval.presentGapUs);
        interval.elapsedUs += nowUs - openSinceUs;
        if (static_cast<double>(interval.presentGapUs) > longestGapOfFramesUs())
            interval.silentUs += interval.presentGapUs - silenceTakenUs;
        if (lostSinceUs)
            interval.lostUs += nowUs - *lostSinceUs;
    }
    return interval;
}
