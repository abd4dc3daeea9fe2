// SPDX-License-Identifier: GPL-3.0-or-later
// Curves of the standard acquisition mode.
#include "CameraLineData.h"

#include <array>
#include <new>

#include <QtCore/QMutexLocker>

#include "FrameCounters.h"
#include "LogLine.h"
#include "PlotPoints.h"
#include "TimeMath.h"

bool CxCameraLineData::fillCounterGraphs(QCPGraph* transportSkip, QCPGraph* apiSkip, QCPGraph* missedTrgOverlap,
                                         QCPGraph* missedTrgOverflow, QCPGraph* bufferOverflow,
                                         const QCPRange& keyRange, qint64 fromUs, qint64 toUs, double minKeySpacing)
{
    try {
        return fillGraphs({transportSkip, apiSkip, missedTrgOverlap, missedTrgOverflow, bufferOverflow}, keyRange,
                          fromUs, toUs, minKeySpacing);
    } catch (const std::bad_alloc&) {
        LOG_FAILURE("CxCameraLineData::fillCounterGraphs", "Failed to allocate points of the graphs");
        return false;
    }
}

bool CxCameraLineData::fillGraphs(const std::array<QCPGraph*, 5>& graphs, const QCPRange& keyRange, qint64 fromUs,
                                  qint64 toUs, double minKeySpacing)
{
    QMutexLocker lock(&mutex);
    if (counterSampleList.empty())
        return false;

    const qint64 rangeUs = saturatingSub(toUs, fromUs);
    const double frameTime = avgFrameTime;
    const qint64 marginUs = frameTime * 10.0 > static_cast<double>(rangeUs)
                                ? truncatedToInt64(static_cast<double>(truncatedToInt64(frameTime)) * 10.0)
                                : rangeUs;
    const TimeIndex& times = counterSampleList.times();
    quint64 next = times.find(0, saturatingSub(fromUs, marginUs));
    const quint64 end = times.find(next, saturatingAdd(toUs, marginUs));
    if (next == end)
        return true;

    // Whether a sample makes a point depends on its time alone, so this leaps from point to point.
    const qint64 stepUs = smallestStepUs(minKeySpacing);
    qint64 lastUs = times[next]; // the first one only sets the reference
    for (;;) {
        next = times.find(next, saturatingAdd(lastUs, stepUs));
        if (next >= end)
            return true;
        lastUs = times[next];
        const CounterSample& sample = *counterSampleList[next];
        const double key = plotKey(saturatingSub(lastUs, toUs), keyRange);
        forSampledCounters(
            [&](const FrameCounter& counter, std::size_t i) { addPoint(graphs[i], key, sample.*counter.sample); });
        ++next;
    }
}
