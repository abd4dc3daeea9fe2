// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of the data throughput mode, and where the points of its curves lie. Nothing here visits the intervals of
// whole frames: the frame list keeps their figures.
#include "CameraLineData.h"

#include <algorithm>
#include <new>
#include <utility>

#include <QtCore/QMutexLocker>

#include "BlockModel.h"
#include "CurveScan.h"
#include "MeasurementClock.h"
#include "TimeMath.h"

namespace {

constexpr qint64 leastSilenceUs = 100000; ///< what is shorter is nothing that a person would call silence

} // namespace

qint32 CxCameraLineData::calculateFrameSpeeds(const FrameRecord& frame, quint32 period, double required,
                                              double* speeds, double* deltas, quint64* offsets)
{
    const quint64* ticks = frame.blockTicks.get();
    const quint64 count = intervalCount(frame);
    for (quint64 i = 0; i < count; ++i) {
        const BlockInterval interval(ticks[i + 1] - ticks[i], period);
        if (speeds != nullptr)
            speeds[i] = interval.speed;
        if (deltas != nullptr)
            deltas[i] = interval.delta(required);
        if (offsets != nullptr)
            offsets[i] = (ticks[i + 1] - ticks[0]) / ticksPerUs;
    }
    return static_cast<qint32>(count);
}

EvaluationSettings CxCameraLineData::evaluationSettings() const
{
    const qint32 period = framePlan ? framePlan->samplePeriod : samplePeriod;
    return {static_cast<quint32>(period), requiredThroughput, cameraBufferSize};
}

bool CxCameraLineData::evaluate(qint64 fromUs, qint64 toUs, qint64 stepUs, std::vector<ScanPoint>* points)
{
    const EvaluationSettings settings = evaluationSettings();
    FrameList::Remake remake;
    std::vector<FrameList::Frame> outdated; // as what the remake replaced, freed without the lock
    QMutexLocker lock(&mutex);
    // After a change of settings. The worker goes on meanwhile; what it appends is mostly for the new ones.
    while (frameList.isStale(settings)) {
        FrameList::Remake next = frameList.beginRemake(settings);
        lock.unlock();
        outdated.clear();
        remake = std::move(next);
        remake.run();
        lock.relock();
        outdated = frameList.endRemake(remake);
    }

    figuresRange = {fromUs, toUs, false};
    if (frameList.empty())
        return false;
    const quint64 oldestBlocks = std::max<quint64>(frameList.front()->blockCount, 1);
    if (!AlloCateBuffers(static_cast<quint32>(oldestBlocks - 1)))
        throw std::bad_alloc();
    maxBufferLevel = 0.0;
    bufferOverflowCount = 0;
    minThroughput = DBL_MAX;

    const qint64 rangeUs = saturatingSub(toUs, fromUs);
    const double frameTime = avgFrameTime;
    const qint64 marginUs = frameTime * 2.0 > static_cast<double>(rangeUs) ? truncatedToInt64(frameTime) : rangeUs;
    const quint64 begin = frameList.starts().find(0, saturatingSub(fromUs, marginUs));
    const quint64 end = frameList.starts().find(begin, saturatingAdd(toUs, marginUs));
    if (begin == end)
        return false;

    const RangeFigures figures = frameList.figures(begin, end);
    avgThroughput = figures.throughputSum / static_cast<double>(end - begin);
    minThroughput = figures.extremes.minSpeed(settings);
    maxBufferLevel = figures.extremes.level(settings);
    bufferOverflowCount = figures.overflows;
    figuresRange->anyFrame = true;

    if (points != nullptr)
        *points = scanCurve(frameList, begin, end, settings, fromUs, toUs, stepUs);
    return true;
}

std::vector<EventMark> CxCameraLineData::eventMarks(qint64 fromUs, qint64 toUs, qint64 joinUs) const
{
    const EventRange range{fromUs, toUs, joinUs, measurementClockUs()};
    QMutexLocker lock(&mutex);
    std::vector<MeasuredRun> known = runs;
    if (!known.empty() && !known.back().endUs)
        known.back().silenceLimitUs = silenceLimitUsLocked();
    return measMode == MeasModeStandardAcq ? findEventMarks(counterSampleList, known, range)
                                           : findEventMarks(frameList, known, range);
}

qint64 CxCameraLineData::silenceLimitUsLocked() const
{
    return std::max(leastSilenceUs, truncatedToInt64(totals.longestGapOfFramesUs()));
}
