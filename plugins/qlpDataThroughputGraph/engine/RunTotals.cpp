// SPDX-License-Identifier: GPL-3.0-or-later
// Totals of a run: one frame's figures, and how they add up.
#include "RunTotals.h"

#include <algorithm>
#include <cfloat>

#include "FrameAggregates.h"
#include "SampleRecords.h"

namespace {

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

/// Frames between two frame numbers of a counter of 32 bits. A step backwards (half the range or more) or on the
/// spot is a counter that started again, not two thousand million lost frames.
quint64 framesBetween(quint32 earlier, quint32 later)
{
    const quint32 step = later - earlier;
    return step == 0 || step >= 0x80000000U ? 0 : step - 1;
}

} // namespace

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

RunTotals& RunTotals::operator+=(const RunTotals& later)
{
    frames += later.frames;
    skippedFrames += later.skippedFrames;
    blocks += later.blocks;
    missingFrames += later.missingFrames;
    failedWaits += later.failedWaits;
    longestGapUs = std::max(longestGapUs, later.longestGapUs);
    presentGapUs = later.presentGapUs;
    overflows += later.overflows;
    throughputSum += later.throughputSum;
    throughputFrames += later.throughputFrames;
    merge(minThroughput, later.minThroughput, lower);
    merge(maxBufferLevel, later.maxBufferLevel, higher);
    return *this;
}

void RunTotalsCounter::begin(qint64 nowUs)
{
    *this = RunTotalsCounter();
    m_running = true;
    m_lastFrameUs = nowUs;
}

void RunTotalsCounter::end(qint64 nowUs)
{
    m_open = openInterval(nowUs);
    m_open.presentGapUs = 0;
    m_running = false;
}

void RunTotalsCounter::addFrame(quint32 frameNumber, const FrameFigures& figures, bool skipped, qint64 nowUs)
{
    ++m_open.frames;
    m_open.skippedFrames += skipped ? 1 : 0;
    m_open.blocks += figures.blocks;
    m_open.overflows += figures.overflow ? 1 : 0;
    if (figures.throughput) {
        m_open.throughputSum += *figures.throughput;
        ++m_open.throughputFrames;
    }
    merge(m_open.minThroughput, figures.minThroughput, lower);
    merge(m_open.maxBufferLevel, figures.maxBufferLevel, higher);

    if (m_lastFrameNumber)
        m_open.missingFrames += framesBetween(*m_lastFrameNumber, frameNumber);
    m_lastFrameNumber = frameNumber;
    if (m_running)
        m_open.longestGapUs = std::max(m_open.longestGapUs, nowUs - m_lastFrameUs);
    m_lastFrameUs = nowUs;
}

RunTotals RunTotalsCounter::run(qint64 nowUs) const
{
    RunTotals sum = m_closed;
    return sum += openInterval(nowUs);
}

RunTotals RunTotalsCounter::takeInterval(qint64 nowUs)
{
    const RunTotals interval = openInterval(nowUs);
    m_closed += interval;
    m_open = RunTotals();
    return interval;
}

/// A gap that is not over yet counts as long as it is now.
RunTotals RunTotalsCounter::openInterval(qint64 nowUs) const
{
    RunTotals interval = m_open;
    if (m_running) {
        interval.presentGapUs = nowUs - m_lastFrameUs;
        interval.longestGapUs = std::max(interval.longestGapUs, interval.presentGapUs);
    }
    return interval;
}
