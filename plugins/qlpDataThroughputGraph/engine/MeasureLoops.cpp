// SPDX-License-Identifier: GPL-3.0-or-later
// The worker's two loops: each waits for images, makes one record of each and appends it.
#include "CameraLineData.h"

#include <algorithm>
#include <new>
#include <utility>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QMutexLocker>

#include <vnCore/vnApi.h>

#include "Allocation.h"
#include "BlockModel.h"
#include "BlockReader.h"
#include "ClockDrift.h"
#include "FrameCounters.h"
#include "IntervalHistogram.h"
#include "LogLine.h"
#include "MeasurementClock.h"
#include "TimeMath.h"

namespace {

constexpr const char* throughputLoop = "CxCameraLineData::runMeasureLoop";
constexpr const char* standardLoop = "CxCameraLineData::runMeasureLoopAcquisition";

constexpr unsigned int imageTimeoutMs = 5000; ///< a stop is noticed at least this often
constexpr qint64 imageTimeoutUs = qint64{imageTimeoutMs} * 1000;
// After waits that failed early: short at first, since one may fail only once, then longer, as for a camera that is
// gone or a host without memory.
constexpr int shortestPauseMs = 10;
constexpr int longestPauseMs = 100;
/// Kept free for what is still to be done when memory has run out: restoring the camera, telling the user.
constexpr std::size_t reserveBytes = std::size_t{4} << 20;
constexpr quint32 bytesPerPixel = 2; ///< transport data, whatever the camera says of its format

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

/// For `list` to take one more record under this limit, the oldest ones leave: how many. Afterwards all that takes no
/// memory.
template<typename List, typename Removed>
quint64 makeRoomLocked(List& list, quint64 limit, Removed& removed)
{
    const quint64 size = list.size() + 1;
    const quint64 excess = size > limit ? size - limit : 0;
    removed.reserve(excess);
    list.makeRoom(excess);
    return excess;
}

/// Unlinks the oldest records. The caller frees them after it has released the mutex.
template<typename List, typename Removed>
void trimLocked(List& list, quint64 excess, Removed& removed)
{
    for (quint64 i = 0; i < excess; ++i)
        removed.push_back(list.takeFront());
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

CxCameraLineData::FrameTimes CxCameraLineData::frameTimes(const VN_IMG& image, qint64 baseUs, ClockDrift& drift)
{
    const qint64 arrivalUs = measurementClockUs();
    const qint64 cameraUs = static_cast<qint64>(image.tsSec) * usPerSecond + image.tsUSec + baseUs;
    const qint64 timestampUs = cameraUs + drift.correctionUs(cameraUs, arrivalUs);
    return {arrivalUs, cameraUs, timestampUs, drift.ppm()};
}

void CxCameraLineData::runMeasureLoop()
{
    const qint64 baseUs = beginLoop();
    auto reserve = allocateArray<char>(reserveBytes);
    const MeasurementPlan plan = *framePlan;
    ClockDrift drift;
    FailedWaits failedWaits;
    FrameIntervalCounter intervals;
    bool skipLogged = false;
    while (goesOn()) {
        VN_IMG image;
        if (!waitForImage(image, throughputLoop, failedWaits))
            continue;
        const FrameTimes times = frameTimes(image, baseUs, drift);
        const quint64 blockCount = wholeBlocks(image, wordsPerBlock(plan.samplePeriod));
        if (blockCount == 0) {
            if (!std::exchange(skipLogged, true))
                LOG_FAILURE(throughputLoop, "Frame holds no whole sample block, such frames are skipped");
            QMutexLocker lock(&mutex);
            totals.addFrame(image.frameNumber, image.dataBytes, FrameFigures(), true, times.arrivalUs);
            continue;
        }
        if (!keepFrame(image, blockCount, times, plan, intervals)) {
            reserve.reset();
            endForLackOfMemory(image, times);
            return;
        }
    }
}

bool CxCameraLineData::keepFrame(const VN_IMG& image, quint64 blockCount, const FrameTimes& times,
                                 const MeasurementPlan& plan, FrameIntervalCounter& intervals)
{
    std::unique_ptr<FrameRecord> frame =
        makeFrameRecord(image, wordsPerBlock(plan.samplePeriod), blockCount, times.timestampUs);
    if (!frame)
        return false;
    const EvaluationSettings settings = evaluationSettings();
    FrameAggregates aggregates = makeAggregates(*frame, settings, &intervals);
    FrameFigures figures = frameFigures(*frame, aggregates, settings);
    figures.intervals = &intervals;
    const quint64 frameLimit = static_cast<quint64>(plan.maxSamples) / blockCount + 1;
    try {
        std::vector<FrameList::Frame> removed; // outlives the lock
        QMutexLocker lock(&mutex);
        const quint64 excess = makeRoomLocked(frameList, frameLimit, removed);
        updateFrameTimeLocked(ticksToUs(frame->durationTicks));
        totals.addFrame(image.frameNumber, image.dataBytes, figures, false, times.arrivalUs);
        if (times.driftPpm)
            driftPpm = times.driftPpm; // after a loss that of before counts until it is known again
        frameList.push_back(std::move(frame), std::move(aggregates), settings);
        trimLocked(frameList, excess, removed);
        return true;
    } catch (const std::bad_alloc&) {
        LOG_FAILURE(throughputLoop, "Cannot allocate array for frame data");
        return false;
    }
}

void CxCameraLineData::runMeasureLoopAcquisition()
{
    const qint64 baseUs = beginLoop();
    auto reserve = allocateArray<char>(reserveBytes);
    const quint64 sampleLimit = static_cast<quint64>(framePlan->maxSamples) + 1;
    ClockDrift drift;
    FailedWaits failedWaits;
    qint64 previousUs = 0;
    while (goesOn()) {
        VN_IMG image;
        if (!waitForImage(image, standardLoop, failedWaits))
            continue;
        const FrameTimes times = frameTimes(image, baseUs, drift);
        readCounters();
        if (!keepSample(image, times, previousUs, sampleLimit)) {
            reserve.reset();
            endForLackOfMemory(image, times);
            return;
        }
        previousUs = times.cameraUs;
    }
}

bool CxCameraLineData::keepSample(const VN_IMG& image, const FrameTimes& times, qint64 previousUs, quint64 limit)
{
    try {
        auto sample = std::make_unique<CounterSample>();
        sample->frameNumber = image.frameNumber;
        sample->timestampUs = times.timestampUs;
        forSampledCounters([&](const FrameCounter& counter, std::size_t) {
            (*sample).*counter.sample = counterValue(counter.selector);
        });

        std::vector<std::unique_ptr<CounterSample>> removed; // outlives the lock
        QMutexLocker lock(&mutex);
        const quint64 excess = makeRoomLocked(counterSampleList, limit, removed);
        totals.addFrame(image.frameNumber, image.dataBytes, FrameFigures(), false, times.arrivalUs);
        if (times.driftPpm)
            driftPpm = times.driftPpm; // after a loss that of before counts until it is known again
        addCountersLocked(*sample);
        counterSampleList.push_back(std::move(sample));
        if (previousUs > 0)
            updateFrameTimeLocked(static_cast<double>(times.cameraUs) - static_cast<double>(previousUs));
        trimLocked(counterSampleList, excess, removed);
        return true;
    } catch (const std::bad_alloc&) {
        LOG_FAILURE(standardLoop, "Cannot allocate array for frame data");
        return false;
    }
}

/// Counters of a camera that was lost may begin anew: what they grew by before moves the run's first sample back.
void CxCameraLineData::addCountersLocked(const CounterSample& sample)
{
    RunCounters& run = countersOfRun;
    const auto steps = [&](const FrameCounter& counter, const CounterSample& from, const CounterSample& to) {
        return static_cast<quint32>(to.*counter.sample) - static_cast<quint32>(from.*counter.sample); // they wrap
    };
    if (!run.first) {
        run.first = sample;
    } else if (std::exchange(countersBeginAnew, false)) {
        forSampledCounters([&](const FrameCounter& counter, std::size_t) {
            (*run.first).*counter.sample = static_cast<qint32>(static_cast<quint32>(sample.*counter.sample) -
                                                               steps(counter, *run.first, *run.last));
        });
    } else {
        forSampledCounters([&](const FrameCounter& counter, std::size_t) {
            run.reset[counter.selector] |= steps(counter, *run.last, sample) > quint32(INT32_MAX);
        });
    }
    run.last = sample;
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

bool CxCameraLineData::waitForImage(VN_IMG& image, const char* where, FailedWaits& failed)
{
    const qint64 beginUs = measurementClockUs();
    image = VN_IMG();
    image.size = sizeof(VN_IMG);
    if (vnApi_GetImage(hCam, imageTimeoutMs, &image, nullptr, true) && image.data != nullptr) {
        failed.pauseMs = 0;
        return true;
    }
    const qint64 nowUs = measurementClockUs();
    if (!failed.loggedUs || nowUs - *failed.loggedUs >= imageTimeoutUs) {
        failed.loggedUs = nowUs;
        LOG_FAILURE(where, "vnApi_GetImage failed to capture image");
    }
    QMutexLocker lock(&mutex);
    totals.addFailedWait();
    if (nowUs - beginUs >= imageTimeoutUs)
        return false;
    failed.pauseMs = std::clamp(2 * failed.pauseMs, shortestPauseMs, longestPauseMs);
    const QDeadlineTimer pauseEnd(failed.pauseMs); // by the steady clock
    while (goesOn() && stopAsked.wait(&mutex, pauseEnd)) {
    }
    return false;
}

std::unique_ptr<FrameRecord> CxCameraLineData::makeFrameRecord(const VN_IMG& image, quint32 blockWords,
                                                               quint64 blockCount, qint64 timestampUs) const
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
    copyBlockTicks(image.data, blockWords, blockCount, frame->blockTicks.get());
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

/// Ends the measurement from inside, with the frame that could not be kept. The thread object stays for the next
/// start or the record's end to release.
void CxCameraLineData::endForLackOfMemory(const VN_IMG& image, const FrameTimes& times)
{
    QMutexLocker lock(&mutex);
    totals.addFrame(image.frameNumber, image.dataBytes, FrameFigures(), true, times.arrivalUs);
    if (stopRequested.exchange(true))
        return; // a stop is under way and does the rest
    endRunLocked(times.arrivalUs);
    finishMeasurementLocked(); // the last that needs the mutex: whoever sees it idle may join this thread at once
}
