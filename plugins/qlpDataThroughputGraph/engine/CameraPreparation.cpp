// SPDX-License-Identifier: GPL-3.0-or-later
// Start and stop of a measurement: the camera is switched into the state that it needs and given back afterwards as
// the user had it.
#include "CameraLineData.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <utility>

#include <QtCore/QMutexLocker>

#include <vnCore/vnApi.h>

#include "AcquisitionThread.h"
#include "CameraSteps.h"
#include "LogLine.h"
#include "MeasurementClock.h"

namespace {

// The log knows all steps of a start and a stop by the preparation's name.
constexpr const char* setupName = "CxCameraLineData::setupCameraParameters";

constexpr std::size_t mostRuns = 1000; ///< that a record knows

constexpr qint32 defaultCameraBufferSize = 32768;

constexpr qint32 transportSpeedUnit = 8;
constexpr qint32 transportSpeedRegister = 4096; ///< MB/s

constexpr qint32 timeStampResetMode = 0;
constexpr qint32 timeStampResetSource = 19;

using namespace steps;

bool setParam(VNCORE_HANDLE camera, const char* name, qint32 value)
{
    return vnApi_SetParamInt(camera, name, value, nullptr);
}

bool getParam(VNCORE_HANDLE camera, const char* name, qint32& value)
{
    return vnApi_GetParamInt(camera, name, value, nullptr);
}

bool take(Record& record, const Step& step)
{
    switch (step.kind) {
    case Step::Save:
        return getParam(record.hCam, step.parameter, record.*step.saved);
    case Step::Set:
        return setParam(record.hCam, step.parameter, step.value);
    case Step::PutBack:
        return setParam(record.hCam, step.parameter, record.*step.saved);
    }
    return false;
}

/// Ends at the first required step that fails, and logs it.
template<std::size_t count>
bool prepare(Record& record, const Step (&steps)[count])
{
    for (const Step& step : steps) {
        if (take(record, step) || step.failure == nullptr)
            continue;
        LOG_FAILURE(setupName, step.failure);
        return false;
    }
    return true;
}

/// Takes every step, whatever fails. True if none did.
template<std::size_t count>
bool takeAll(Record& record, const Step (&steps)[count])
{
    return std::count_if(std::begin(steps), std::end(steps), [&](const Step& step) { return take(record, step); }) ==
           static_cast<std::ptrdiff_t>(count);
}

} // namespace

bool CxCameraLineData::startMeasurement(qint32 period, qint32 capacity)
{
    QMutexLocker lock(&mutex);
    if (hCam == nullptr || measuring)
        return false;
    if (thread) { // its loop ended by itself, after it cleared `measuring` it takes no lock
        thread->wait();
        thread.reset();
    }
    if (autoRequiredThroughput)
        readDefaultAvgTransportSpeed();
    if (!prepareCamera())
        return false;
    samplePeriod = std::max(period, smallestSamplePeriod);
    maxSamples = std::max(capacity, 1);
    framePlan = MeasurementPlan{samplePeriod, maxSamples};
    if (!startAcquisition())
        return false;
    const qint64 nowUs = measurementClockUs(); // preparing a camera may take seconds, in which it owes no frame
    totals.begin(nowUs);
    if (runs.size() == mostRuns)
        runs.erase(runs.begin());
    runs.push_back({nowUs, std::nullopt});
    countersOfRun = RunCounters();
    countersBeginAnew = false;
    driftPpm.reset();
    suspended = false;
    if (startWorkerLocked())
        return true;
    totals = RunTotalsCounter();
    runs.pop_back();
    return false;
}

/// On false the camera is restored.
bool CxCameraLineData::prepareCamera()
{
    if (setupCameraParameters())
        return true;
    restoreCameraParameters();
    return false;
}

/// Of a prepared camera; on false it is restored.
bool CxCameraLineData::startAcquisition()
{
    setParam(hCam, VN_PRM_TS_RST_MODE, timeStampResetMode);
    setParam(hCam, VN_PRM_TS_RST_SOURCE, timeStampResetSource);
    if (vnApi_StartAcquisition(hCam))
        return true;
    LOG_FAILURE(setupName, "vnApi_StartAcquisition failed");
    restoreCameraParameters();
    return false;
}

/// The system may have no room for one more thread.
bool CxCameraLineData::startWorkerLocked()
{
    measuring = true;
    stopRequested = false;
    stopAnnounced = false;
    try {
        thread = std::make_unique<CxAcquisitionThread>(this, measMode);
        thread->start();
    } catch (const std::bad_alloc&) {
        thread.reset();
    }
    if (thread && (thread->isRunning() || thread->isFinished()))
        return true;
    LOG_FAILURE(setupName, "Cannot start the acquisition thread");
    thread.reset();
    stopRequested = true;
    finishMeasurementLocked();
    return false;
}

/// A second end of the same run changes nothing.
void CxCameraLineData::endRunLocked(qint64 nowUs)
{
    totals.end(nowUs);
    if (runs.empty() || runs.back().endUs)
        return;
    runs.back().endUs = nowUs;
    runs.back().silenceLimitUs = silenceLimitUsLocked();
}

void CxCameraLineData::announceStop()
{
    const qint64 nowUs = measurementClockUs();
    QMutexLocker lock(&mutex);
    endRunLocked(nowUs);
    stopAnnounced = true;
    stopAsked.wakeAll();
}

bool CxCameraLineData::stopMeasurement()
{
    if (suspended)
        return endSuspension();
    // Only the one that sets the flag ends the measurement: never both this thread and a worker out of memory.
    if (!isMeasuring() || stopRequested.exchange(true))
        return false;
    announceStop();
    if (thread) {
        thread->wait(); // without the mutex: the worker takes it for its last frame
        thread.reset();
    }
    QMutexLocker lock(&mutex);
    finishMeasurementLocked();
    return true;
}

void CxCameraLineData::finishMeasurementLocked()
{
    if (!vnApi_StopAcquisition(hCam))
        LOG_FAILURE(setupName, "vnApi_StopAcquisition failed");
    restoreCameraParameters();
    measuring = false;
}

bool CxCameraLineData::setupCameraParameters()
{
    preparedMode = measMode;
    switch (measMode) {
    case MeasModeDataThroughput:
        return setupDataThroughput();
    case MeasModeStandardAcq:
        return setupStandardAcq();
    default:
        LOG_FAILURE(setupName, "Unknown measurement mode");
        return false;
    }
}

bool CxCameraLineData::setupDataThroughput()
{
    if (!prepare(*this, throughputSteps))
        return false;
    frameBufferModeChanged = false;
    // A camera that cannot switch its frame buffer off keeps it; the measurement works with it.
    if (takeAll(*this, frameBufferQuestions)) {
        if (!prepare(*this, frameBufferSteps))
            return false;
        frameBufferModeChanged = true;
    }
    if (std::all_of(std::begin(registerSteps), std::end(registerSteps),
                    [this](const Step& step) { return take(*this, step); }))
        deviceRegisterChanged = true;
    cameraBufferSize = readCameraBufferSize();
    return true;
}

bool CxCameraLineData::setupStandardAcq()
{
    for (const auto& counter : counterList)
        counter->supported = setParam(hCam, VN_PRM_COUNTER_SELECTOR VN_PRM_SUFFIX_SETTABLE, counter->selector);
    return prepare(*this, standardSteps);
}

void CxCameraLineData::restoreCameraParameters()
{
    // `measMode` is the user's choice for the next start and may have changed since this one.
    const qint32 mode = std::exchange(preparedMode, std::nullopt).value_or(measMode);
    if (mode == MeasModeDataThroughput) {
        if (deviceRegisterChanged)
            takeAll(*this, registerRestore);
        takeAll(*this, throughputRestore);
        if (frameBufferModeChanged)
            takeAll(*this, frameBufferRestore);
    } else if (mode == MeasModeStandardAcq) {
        takeAll(*this, standardRestore);
    }
}

void CxCameraLineData::readDefaultAvgTransportSpeed()
{
    constexpr const char* name = "CxCameraLineData::readDefaultAvgTransportSpeed";
    qint32 unit = 0;
    qint32 unitRegister = 0;
    if (!getParam(hCam, VN_PRM_DEVICE_UNIT_SELECTOR, unit) ||
        !getParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, unitRegister))
        LOG_FAILURE(name, "Failed to read current device unit confiuration");

    qint32 speed = -1;
    if (setParam(hCam, VN_PRM_DEVICE_UNIT_SELECTOR, transportSpeedUnit) &&
        setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, transportSpeedRegister) &&
        getParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_VALUE, speed) && speed > 0)
        requiredThroughput = speed;

    const bool unitBack = setParam(hCam, VN_PRM_DEVICE_UNIT_SELECTOR, unit);
    const bool registerBack = setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, unitRegister);
    if (!unitBack || !registerBack)
        LOG_FAILURE(name, "Failed to change back current device unit configuration");
}

qint32 CxCameraLineData::readCameraBufferSize()
{
    qint32 size = 0;
    const bool known = setParam(hCam, VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_SIZE) &&
                       getParam(hCam, VN_PRM_DP_PARAM_VALUE, size);
    bufferSizeKnown = known || givenBufferSize;
    return known ? size : givenBufferSize.value_or(defaultCameraBufferSize);
}
