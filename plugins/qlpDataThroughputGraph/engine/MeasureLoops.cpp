// SPDX-License-Identifier: GPL-3.0-or-later
// The worker's two loops: each waits for images, makes one record of each and appends it.
#include "CameraLineData.h"

#include <algorithm>
#include <utility>

#include <QtCore/QMutexLocker>

#include <vnCore/vnApi.h>

#include "Allocation.h"
#include "BlockModel.h"
#include "BlockReader.h"
#include "ClockDrift.h"
#include "LogLine.h"
#include "MeasurementClock.h"

namespace {

constexpr const char* throughputLoop = "CxCameraLineData::runMeasureLoop";
constexpr const char* standardLoop = "CxCameraLineData::runMeasureLoopAcquisition";

constexpr unsigned int imageTimeoutMs = 5000; ///< a stop is noticed at least this often
constexpr quint32 bytesPerPixel = 2;          ///< transport data, whatever the camera says of its format

quint32 wordsPerBlock(qint32 samplePeriod)
{
    return static_cast<quint32>(samplePeriod) / wordBytes;
}

/// Whole blocks of a frame: of the size that the camera states, but only those that are really there.
quint64 wholeBlocks(const VN_IMG& image, quint32 blockWords)
{
    const quint32 statedBytes = image.width * image.height * bytesPerPixel;
    const quint64 bytes = std::min<quint64>(statedBytes, image.dataBytes);
    return bytes / wordBytes / blockWords;
}

qint64 cameraTimeUs(const VN_IMG& image)
{
    return static_cast<qint64>(image.tsSec) * 1000000 + image.tsUSec;
}

/// Unlinks the oldest records beyond the limit. The caller frees them after it has released the mutex.
template<typename List>
auto trimLocked(List& list, quint64 limit)
{
    std::vector<decltype(list.takeFront())> removed;
    const quint64 excess = list.size() > limit ? list.size() - limit : 0;
    removed.reserve(excess);
    for (quint64 i = 0; i < excess; ++i)
        removed.push_back(list.takeFront());
    return removed;
}

} // namespace

qint64 CxCameraLineData::beginLoop()
{
    const qint64 baseUs = measurementClockUs();
    avgFrameTime = 0.0;
    frameTimeCount = 0;
    minFrameTime = DBL_MAX;
    maxFrameTime = DBL_MIN;
    return baseUs;
}

void CxCameraLineData::runMeasureLoop()
{
    const qint64 baseUs = beginLoop();
    ClockDrift drift;
    bool skipLogged = false;
    while (!stopRequested) {
        VN_IMG image;
        if (!waitForImage(image, throughputLoop))
            continue;
        const qint64 nowUs = measurementClockUs();
        const quint64 blockCount = wholeBlocks(image, wordsPerBlock(samplePeriod));
        if (blockCount == 0) {
            if (!std::exchange(skipLogged, true))
                LOG_FAILURE(throughputLoop, "Frame holds no whole sample block, such frames are skipped");
            QMutexLocker lock(&mutex);
            totals.addFrame(image.frameNumber, FrameFigures(), true, nowUs);
            continue;
        }
        const qint64 stampUs = cameraTimeUs(image) + baseUs;
        const qint64 timestampUs = stampUs + drift.correctionUs(stampUs, nowUs);
        std::unique_ptr<FrameRecord> frame = makeFrameRecord(image, blockCount, timestampUs);
        if (!frame) {
            endForLackOfMemory();
            return;
        }
        const EvaluationSettings settings = evaluationSettings();
        FrameAggregates aggregates = makeAggregates(*frame, settings);
        const FrameFigures figures = frameFigures(*frame, aggregates, settings);
        const quint64 frameLimit = static_cast<quint64>(maxSamples) / blockCount + 1;

        std::vector<FrameList::Frame> removed; // outlives the lock
        QMutexLocker lock(&mutex);
        updateFrameTimeLocked(ticksToUs(frame->durationTicks));
        totals.addFrame(image.frameNumber, figures, false, nowUs);
        driftPpm = drift.ppm();
        frameList.push_back(std::move(frame), std::move(aggregates), settings);
        removed = trimLocked(frameList, frameLimit);
    }
}

void CxCameraLineData::runMeasureLoopAcquisition()
{
    const qint64 baseUs = beginLoop();
    ClockDrift drift;
    qint64 previousUs = 0;
    while (!stopRequested) {
        VN_IMG image;
        if (!waitForImage(image, standardLoop))
            continue;
        const qint64 nowUs = measurementClockUs();
        const qint64 stampUs = cameraTimeUs(image) + baseUs;
        readCounters();
        auto sample = std::make_unique<CounterSample>();
        sample->frameNumber = image.frameNumber;
        sample->timestampUs = stampUs + drift.correctionUs(stampUs, nowUs);
        sample->transportSkip = counterValue(VN_COUNTER_TRANSPORT_SKIP);
        sample->apiSkip = counterValue(VN_COUNTER_API_SKIP);
        sample->missedTrgOverlap = counterValue(VN_COUNTER_MISSED_TRG_OVERLAP);
        sample->missedTrgOverflow = counterValue(VN_COUNTER_MISSED_TRG_OVERFLOW);
        sample->bufferOverflow = counterValue(VN_COUNTER_BUFFER_OVERFLOW);

        std::vector<std::unique_ptr<CounterSample>> removed; // outlives the lock
        QMutexLocker lock(&mutex);
        totals.addFrame(image.frameNumber, FrameFigures(), false, nowUs);
        driftPpm = drift.ppm();
        if (!countersOfRun.first)
            countersOfRun.first = *sample;
        countersOfRun.last = *sample;
        counterSampleList.push_back(std::move(sample));
        if (previousUs > 0)
            updateFrameTimeLocked(static_cast<double>(stampUs) - static_cast<double>(previousUs));
        previousUs = stampUs;
        removed = trimLocked(counterSampleList, static_cast<quint64>(maxSamples) + 1);
    }
}

void CxCameraLineData::readCounters()
{
    for (const auto& counter : counterList) {
        if (!counter->supported || !vnApi_SetParamInt(hCam, VN_PRM_COUNTER_SELECTOR, counter->selector, nullptr))
            continue;
        int value = 0;
        if (vnApi_GetParamInt(hCam, VN_PRM_COUNTER_VALUE, value, nullptr))
            counter->value = value;
    }
}

bool CxCameraLineData::waitForImage(VN_IMG& image, const char* where)
{
    image = VN_IMG();
    image.size = sizeof(VN_IMG);
    if (vnApi_GetImage(hCam, imageTimeoutMs, &image, nullptr, true) && image.data != nullptr)
        return true;
    LOG_FAILURE(where, "vnApi_GetImage failed to capture image");
    QMutexLocker lock(&mutex);
    totals.addFailedWait();
    return false;
}

std::unique_ptr<FrameRecord> CxCameraLineData::makeFrameRecord(const VN_IMG& image, quint64 blockCount,
                                                               qint64 timestampUs) const
{
    auto frame = allocateOne<FrameRecord>();
    if (!frame) {
        LOG_FAILURE(throughputLoop, "Cannot allocate array for frame data");
        return nullptr;
    }
    frame->blockTicks = allocateArray<quint64>(blockCount);
    if (!frame->blockTicks) {
        LOG_FAILURE(throughputLoop, "Cannot allocate array for frame time stamps");
        return nullptr;
    }
    copyBlockTicks(image.data, wordsPerBlock(samplePeriod), blockCount, frame->blockTicks.get());
    frame->frameNumber = image.frameNumber;
    frame->timestampUs = timestampUs;
    frame->blockCount = blockCount;
    frame->durationTicks = frame->blockTicks[blockCount - 1] - frame->blockTicks[0];
    return frame;
}

void CxCameraLineData::updateFrameTimeLocked(double timeUs)
{
    const quint64 count = frameTimeCount + 1;
    const double weight = 1.0 / static_cast<double>(count);
    avgFrameTime = (1.0 - weight) * avgFrameTime + weight * timeUs;
    frameTimeCount = count;
    if (timeUs > maxFrameTime)
        maxFrameTime = timeUs;
    if (timeUs < minFrameTime)
        minFrameTime = timeUs;
}

/// Ends the measurement from inside. The thread object stays for the next start or the record's end to release.
void CxCameraLineData::endForLackOfMemory()
{
    if (stopRequested.exchange(true))
        return; // a stop is under way and does the rest
    const qint64 nowUs = measurementClockUs();
    QMutexLocker lock(&mutex);
    totals.end(nowUs);
    finishMeasurementLocked(); // the last that needs the mutex: whoever sees it idle may join this thread at once
}
