// SPDX-License-Identifier: GPL-3.0-or-later
// Figures and curves of the data throughput mode.
#include "CameraLineData.h"

#include <algorithm>

#include <QtCore/QMutexLocker>

#include "BlockModel.h"
#include "LogLine.h"
#include "PlotPoints.h"
#include "TimeMath.h"

namespace {

/// The block intervals first..first+count-1 of a frame, into arrays that may be null.
void fillIntervals(const FrameRecord& frame, quint64 first, quint64 count, quint32 period, double required,
                   double* speeds, double* deltas, quint64* offsets)
{
    const quint64* ticks = frame.blockTicks.get();
    for (quint64 i = 0; i < count; ++i) {
        const quint64 block = first + i + 1;
        const BlockInterval interval(ticks[block] - ticks[block - 1], period);
        if (speeds != nullptr)
            speeds[i] = interval.speed;
        if (deltas != nullptr)
            deltas[i] = interval.delta(required);
        if (offsets != nullptr)
            offsets[i] = (ticks[block] - ticks[0]) / ticksPerUs;
    }
}

quint64 intervalCount(const FrameRecord& frame)
{
    return frame.blockTicks && frame.blockCount >= 2 ? frame.blockCount - 1 : 0;
}

} // namespace

qint32 CxCameraLineData::calculateFrameSpeeds(const FrameRecord& frame, quint32 period, double required,
                                              double* speeds, double* deltas, quint64* offsets)
{
    const quint64 count = intervalCount(frame);
    fillIntervals(frame, 0, count, period, required, speeds, deltas, offsets);
    return static_cast<qint32>(count);
}

bool CxCameraLineData::calculateStats(QCPGraph* minGraph, QCPGraph* levelGraph, const QCPRange* keyRange,
                                      qint64 fromUs, qint64 toUs, double minKeySpacing)
{
    QMutexLocker lock(&mutex);
    if (frameList.empty())
        return false;
    const quint64 oldestBlocks = std::max<quint64>(frameList.front()->blockCount, 1);
    if (!resizeWorkArrays(static_cast<quint32>(oldestBlocks - 1))) {
        LOG_FAILURE("CxCameraLineData::calculateStats",
                    "Failed to allocate temporary buffers for internal calculations");
        return false;
    }
    maxBufferLevel = 0.0;
    bufferOverflowCount = 0;
    minThroughput = DBL_MAX;

    const qint64 rangeUs = saturatingSub(toUs, fromUs);
    const double frameTime = avgFrameTime;
    const qint64 marginUs = frameTime * 2.0 > static_cast<double>(rangeUs) ? truncatedToInt64(frameTime) : rangeUs;
    const qint64 scanFromUs = saturatingSub(fromUs, marginUs);
    const qint64 scanToUs = saturatingAdd(toUs, marginUs);

    const auto period = static_cast<quint32>(samplePeriod);
    const double required = requiredThroughput;
    const quint64 room = workArrayRoom();

    double throughputSum = 0.0;
    quint64 frameCount = 0;
    PointSpacing spacing(minKeySpacing);
    double pointMinimum = DBL_MAX;
    double pointLevel = 0.0;
    double overallLevel = 0.0;

    auto next = std::find_if(frameList.begin(), frameList.end(),
                             [scanFromUs](const auto& frame) { return frame->timestampUs >= scanFromUs; });
    for (; next != frameList.end() && (*next)->timestampUs < scanToUs; ++next) {
        const FrameRecord& frame = **next;
        BufferModel buffer(cameraBufferSize);
        bool overflow = false;
        // A frame with more blocks than the oldest one does not fit the work arrays at once.
        const quint64 intervals = intervalCount(frame);
        for (quint64 first = 0; first < intervals; first += room) {
            const quint64 count = std::min(room, intervals - first);
            fillIntervals(frame, first, count, period, required, linkSpeeds.get(), bufferDeltas.get(),
                          blockTimeOffsets.get());
            for (quint64 i = 0; i < count; ++i) {
                const double speed = linkSpeeds[i];
                if (speed < minThroughput)
                    minThroughput = speed;

                overflow |= buffer.add(bufferDeltas[i]);
                const double level = buffer.level();
                if (overflow)
                    pointLevel = 100.0; // for the rest of the frame
                if (level > pointLevel)
                    pointLevel = level;
                if (pointLevel > overallLevel)
                    overallLevel = pointLevel;

                const qint64 timeUs = saturatingAdd(frame.timestampUs, static_cast<qint64>(blockTimeOffsets[i]));
                const qint64 relUs = saturatingSub(timeUs, toUs);
                spacing.startAt(relUs);
                if (speed < pointMinimum && speed > 0)
                    pointMinimum = speed;
                if (fromUs <= timeUs && timeUs <= toUs && spacing.accepts(relUs)) {
                    spacing.accept(relUs);
                    if (keyRange != nullptr) {
                        const double key = plotKey(relUs, *keyRange);
                        addPoint(minGraph, key, pointMinimum);
                        addPoint(levelGraph, key, pointLevel);
                    }
                    pointMinimum = DBL_MAX;
                    pointLevel = 0.0;
                }
            }
        }
        if (overflow)
            ++bufferOverflowCount;
        throughputSum += frameThroughput(frame, period);
        ++frameCount;
    }
    if (frameCount == 0)
        return false;
    avgThroughput = throughputSum / static_cast<double>(frameCount);
    maxBufferLevel = overallLevel;
    return true;
}
