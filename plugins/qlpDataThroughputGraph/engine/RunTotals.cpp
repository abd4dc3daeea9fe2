// SPDX-License-Identifier: GPL-3.0-or-later
// Totals of a run: one frame's figures, and how they add up.
#include "RunTotals.h"

#include <algorithm>
#include <cfloat>

#include "BlockModel.h"

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

FrameFigures evaluateFrame(const FrameRecord& frame, quint32 period, qint32 required, qint32 bufferSize)
{
    FrameFigures figures;
    figures.blocks = frame.blockCount;
    if (frame.durationTicks != 0)
        figures.throughput = frameThroughput(frame, period);

    double slowest = DBL_MAX;
    double highest = -DBL_MAX;
    BufferModel buffer(bufferSize);
    for (quint64 i = 1; i < frame.blockCount; ++i) {
        const BlockInterval interval(frame.blockTicks[i] - frame.blockTicks[i - 1], period);
        slowest = std::min(slowest, interval.speed);
        figures.overflow |= buffer.add(interval.delta(required));
        const double level = buffer.level();
        if (level > highest)
            highest = level;
    }
    if (slowest < DBL_MAX)
        figures.minThroughput = slowest;
    if (figures.overflow)
        figures.maxBufferLevel = 100.0;
    else if (highest > -DBL_MAX)
        figures.maxBufferLevel = std::max(highest, 0.0);
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
    if (m_running)
        interval.longestGapUs = std::max(interval.longestGapUs, nowUs - m_lastFrameUs);
    return interval;
}
