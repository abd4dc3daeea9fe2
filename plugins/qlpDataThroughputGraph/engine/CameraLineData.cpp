// SPDX-License-Identifier: GPL-3.0-or-later
// The record itself: construction and end, work arrays, and what others may ask of it.
#include "CameraLineData.h"

#include <algorithm>

#include <QtCore/QMutexLocker>

#include "AcquisitionThread.h"
#include "Allocation.h"
#include "FrameCounters.h"
#include "LogLine.h"
#include "MeasurementClock.h"

namespace {

const CounterKind* findCounter(const std::vector<std::unique_ptr<CounterKind>>& counters, VN_COUNTER_SELECTOR kind)
{
    const auto found = std::find_if(counters.begin(), counters.end(),
                                    [kind](const auto& counter) { return counter->selector == kind; });
    return found == counters.end() ? nullptr : found->get();
}

std::atomic<quint64> lastSerial{0};

} // namespace

CxCameraLineData::CxCameraLineData() : serial(++lastSerial)
{
    for (const FrameCounter& counter : frameCounters)
        counterList.push_back(std::make_unique<CounterKind>(counter.selector, QLatin1String(counter.name)));
}

CxCameraLineData::~CxCameraLineData()
{
    if (thread) {
        {
            const QMutexLocker lock(&mutex);
            stopRequested = true; // the loops have no event loop that quit() could end
            stopAsked.wakeAll();
        }
        thread->quit();
        thread->wait();
    }
}

void CxCameraLineData::clearData()
{
    frameList.clear();
    counterSampleList.clear();
    runs.clear();
    linkSpeeds.reset();
    bufferDeltas.reset();
    blockTimeOffsets.reset();
    workArrayLength = 0;
    framePlan.reset();
    if (figuresRange)
        figuresRange->anyFrame = false;
}

bool CxCameraLineData::AlloCateBuffers(quint32 count)
{
    if (measMode != MeasModeDataThroughput)
        return true;
    // A missing array is what an earlier failure left; none of no elements is missing.
    if (workArrayLength == count && (count == 0 || (linkSpeeds && bufferDeltas && blockTimeOffsets)))
        return true;

    const auto replace = [count](auto& array) {
        using Element = typename std::remove_reference_t<decltype(array)>::element_type;
        array.reset();
        array = allocateArray<Element>(count);
        return array != nullptr;
    };
    if (!replace(linkSpeeds)) {
        LOG_FAILURE("CxCameraLineData::AlloCateBuffers", "Cannot allocate frame speeds array");
        return false;
    }
    if (!replace(bufferDeltas)) {
        LOG_FAILURE("CxCameraLineData::AlloCateBuffers", "Cannot allocate buffer occupancy array");
        return false;
    }
    if (!replace(blockTimeOffsets)) {
        LOG_FAILURE("CxCameraLineData::AlloCateBuffers", "Cannot allocate time stamp difference array");
        return false;
    }
    workArrayLength = count;
    return true;
}

bool CxCameraLineData::isMeasuring() const
{
    QMutexLocker lock(&mutex);
    return measuring;
}

bool CxCameraLineData::hasFrames() const
{
    QMutexLocker lock(&mutex);
    return !frameList.empty();
}

qint32 CxCameraLineData::counterValue(VN_COUNTER_SELECTOR kind) const
{
    QMutexLocker lock(&mutex);
    const CounterKind* counter = findCounter(counterList, kind);
    return counter != nullptr ? counter->value.load() : 0;
}

bool CxCameraLineData::isCounterSupported(VN_COUNTER_SELECTOR kind) const
{
    const CounterKind* counter = findCounter(counterList, kind);
    return counter != nullptr && counter->supported;
}

RunTotals CxCameraLineData::runTotals() const
{
    const qint64 nowUs = measurementClockUs();
    QMutexLocker lock(&mutex);
    return totals.run(nowUs);
}

RunTotals CxCameraLineData::takeIntervalTotals()
{
    const qint64 nowUs = measurementClockUs();
    QMutexLocker lock(&mutex);
    return totals.takeInterval(nowUs);
}

RunCounters CxCameraLineData::runCounters() const
{
    QMutexLocker lock(&mutex);
    return countersOfRun;
}

std::optional<qint64> CxCameraLineData::lastEndUs() const
{
    QMutexLocker lock(&mutex);
    return runs.empty() ? std::nullopt : runs.back().endUs;
}

std::optional<double> CxCameraLineData::clockDriftPpm() const
{
    QMutexLocker lock(&mutex);
    return driftPpm;
}
