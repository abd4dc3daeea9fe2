// SPDX-License-Identifier: GPL-3.0-or-later
// Curves of the standard acquisition mode.
#include "CameraLineData.h"

#include <algorithm>

#include <QtCore/QMutexLocker>

#include "PlotPoints.h"
#include "TimeMath.h"

bool CxCameraLineData::fillCounterGraphs(QCPGraph* transportSkip, QCPGraph* apiSkip, QCPGraph* missedTrgOverlap,
                                         QCPGraph* missedTrgOverflow, QCPGraph* bufferOverflow,
                                         const QCPRange& keyRange, qint64 fromUs, qint64 toUs, double minKeySpacing)
{
    QMutexLocker lock(&mutex);
    if (counterSampleList.empty())
        return false;

    const qint64 rangeUs = saturatingSub(toUs, fromUs);
    const double frameTime = avgFrameTime;
    const qint64 marginUs = frameTime * 10.0 > static_cast<double>(rangeUs)
                                ? truncatedToInt64(static_cast<double>(truncatedToInt64(frameTime)) * 10.0)
                                : rangeUs;
    const qint64 scanFromUs = saturatingSub(fromUs, marginUs);
    const qint64 scanToUs = saturatingAdd(toUs, marginUs);

    PointSpacing spacing(minKeySpacing);
    auto next = std::find_if(counterSampleList.begin(), counterSampleList.end(),
                             [scanFromUs](const auto& sample) { return sample->timestampUs >= scanFromUs; });
    for (; next != counterSampleList.end() && (*next)->timestampUs < scanToUs; ++next) {
        const CounterSample& sample = **next;
        const qint64 relUs = saturatingSub(sample.timestampUs, toUs);
        spacing.startAt(relUs);
        if (!spacing.accepts(relUs))
            continue;
        spacing.accept(relUs);
        const double key = plotKey(relUs, keyRange);
        addPoint(transportSkip, key, sample.transportSkip);
        addPoint(apiSkip, key, sample.apiSkip);
        addPoint(missedTrgOverlap, key, sample.missedTrgOverlap);
        addPoint(missedTrgOverflow, key, sample.missedTrgOverflow);
        addPoint(bufferOverflow, key, sample.bufferOverflow);
    }
    return true;
}
