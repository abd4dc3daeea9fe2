// SPDX-License-Identifier: GPL-3.0-or-later
// Start and stop of a measurement: the camera is switched into the state that it needs and given back afterwards as
// the user had it.
#include "CameraLineData.h"

#include <algorithm>
#include <new>
#include <utility>

#include <QtCore/QMutexLocker>

#include <vnCore/vnApi.h>

#include "AcquisitionThread.h"
#include "LogLine.h"
#include "MeasurementClock.h"

namespace {

// The log knows all steps of a start and a stop by the preparation's name.
constexpr const char* setupName = "CxCameraLineData::setupCameraParameters";

constexpr qint32 smallestPeriod = 8; ///< bytes, one counter word
constexpr qint32 defaultCameraBufferSize = 32768;

constexpr qint32 testDeviceUnit = 1;
constexpr qint32 testRegister = 55;
constexpr qint32 testRegisterMeasuring = 25000;
constexpr qint32 testRegisterNormal = 1;

constexpr qint32 transportSpeedUnit = 8;
constexpr qint32 transportSpeedRegister = 4096; ///< MB/s

constexpr qint32 timeStampResetMode = 0;
constexpr qint32 timeStampResetSource = 19;

bool setParam(VNCORE_HANDLE camera, const char* name, qint32 value)
{
    return vnApi_SetParamInt(camera, name, value, nullptr);
}

bool getParam(VNCORE_HANDLE camera, const char* name, qint32& value)
{
    return vnApi_GetParamInt(camera, name, value, nullptr);
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
    if (!setupCameraParameters()) {
        restoreCameraParameters();
        return false;
    }
    samplePeriod = std::max(period, smallestPeriod);
    maxSamples = std::max(capacity, 1);
    framePlan = MeasurementPlan{samplePeriod, maxSamples};
    setParam(hCam, VN_PRM_TS_RST_MODE, timeStampResetMode);
    setParam(hCam, VN_PRM_TS_RST_SOURCE, timeStampResetSource);
    if (!vnApi_StartAcquisition(hCam)) {
        LOG_FAILURE(setupName, "vnApi_StartAcquisition failed");
        restoreCameraParameters();
        return false;
    }
    measuring = true;
    stopRequested = false;
    stopAnnounced = false;
    totals.begin(measurementClockUs()); // preparing a camera may take seconds, in which it owes no frame
    countersOfRun = RunCounters();
    driftPpm.reset();
    return startWorkerLocked();
}

/// The system may have no room for one more thread.
bool CxCameraLineData::startWorkerLocked()
{
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
    totals = RunTotalsCounter();
    finishMeasurementLocked();
    return false;
}

void CxCameraLineData::announceStop()
{
    const qint64 nowUs = measurementClockUs();
    QMutexLocker lock(&mutex);
    totals.end(nowUs);
    stopAnnounced = true;
    stopAsked.wakeAll();
}

bool CxCameraLineData::stopMeasurement()
{
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
    getParam(hCam, VN_PRM_IMAGE_DATA_FORMAT, savedImgDataFormat);
    getParam(hCam, VN_PRM_OUTPUT_DATA_BIT_DEPTH, savedOutputBitDepth);
    getParam(hCam, VN_PRM_OUTPUT_DATA_PACKING, savedOutputBitPacking);
    getParam(hCam, VN_PRM_BUFFER_POLICY, savedBufferPolicy);
    getParam(hCam, VN_PRM_COLUMN_FPN_CORRECTION, savedColumnFpnCorrection);
    getParam(hCam, VN_PRM_ROW_FPN_CORRECTION, savedRowFpnCorrection);
    getParam(hCam, VN_PRM_LUT_ENABLE, savedLutEnable);

    if (!setParam(hCam, VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_OUTPUT_DATA_BIT_DEPTH, 16)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_OUTPUT_DATA_BIT_DEPTH) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_OUTPUT_DATA_PACKING, 0)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_OUTPUT_DATA_PACKING, 0) failed");
        return false;
    }
    setParam(hCam, VN_PRM_COLUMN_FPN_CORRECTION, 0);
    setParam(hCam, VN_PRM_ROW_FPN_CORRECTION, 0);
    setParam(hCam, VN_PRM_LUT_ENABLE, 0);

    // The test pattern is one of the selected generator, so each is read after the selection that it belongs to.
    if (!getParam(hCam, VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, savedTestPatternGenerator)) {
        LOG_FAILURE(setupName, "vnApi_GetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, VN_TESTPAT_GEN_FPGA)) {
        LOG_FAILURE(setupName,
                    "vnApi_SetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, VN_TESTPAT_GEN_FPGA) failed");
        return false;
    }
    if (!getParam(hCam, VN_PRM_TEST_PATTERN, savedTestPattern)) {
        LOG_FAILURE(setupName, "vnApi_GetParamInt(VN_PRM_TEST_PATTERN) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_TEST_PATTERN, VN_TESTPAT_DEVICE_SPEC_COUNTER)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_TEST_PATTERN, VN_TESTPAT_DEVICE_SPEC_COUNTER) failed");
        return false;
    }

    if (!switchFrameBufferOff())
        return false;
    if (setParam(hCam, VN_PRM_DEVICE_UNIT_SELECTOR, testDeviceUnit) &&
        setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, testRegister) &&
        setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_VALUE, testRegisterMeasuring))
        deviceRegisterChanged = true;
    cameraBufferSize = readCameraBufferSize();
    return true;
}

bool CxCameraLineData::switchFrameBufferOff()
{
    frameBufferModeChanged = false;
    // Not short-circuited: all three are asked.
    const bool unitSettable = setParam(hCam, VN_PRM_DP_UNIT_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_UNIT_FPGA);
    const bool procSettable = setParam(hCam, VN_PRM_DP_PROC_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_PROC_FRAME_BUFFER);
    const bool paramSettable =
        setParam(hCam, VN_PRM_DP_PARAM_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_PARAM_FRAMEBUF_MODE);
    if (!unitSettable || !procSettable || !paramSettable)
        return true; // the camera keeps its frame buffer; the measurement works with it

    if (!setParam(hCam, VN_PRM_DP_UNIT_SELECTOR, VN_DP_UNIT_FPGA)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_DP_UNIT_SELECTOR, VN_DP_UNIT_FPGA) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_DP_PROC_SELECTOR, VN_DP_PROC_FRAME_BUFFER)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_DP_PROC_SELECTOR, VN_DP_PROC_FRAME_BUFFER) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE) failed");
        return false;
    }
    if (!setParam(hCam, VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED)) {
        LOG_FAILURE(setupName,
                    "vnApi_SetParamInt(VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED) failed");
        return false;
    }
    frameBufferModeChanged = true;
    return true;
}

bool CxCameraLineData::setupStandardAcq()
{
    for (const auto& counter : counterList)
        counter->supported = setParam(hCam, VN_PRM_COUNTER_SELECTOR VN_PRM_SUFFIX_SETTABLE, counter->selector);
    getParam(hCam, VN_PRM_BUFFER_POLICY, savedBufferPolicy);
    if (!setParam(hCam, VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE)) {
        LOG_FAILURE(setupName, "vnApi_SetParamInt(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE) failed");
        return false;
    }
    return true;
}

void CxCameraLineData::restoreCameraParameters()
{
    // `measMode` is the user's choice for the next start and may have changed since this one.
    const qint32 mode = std::exchange(preparedMode, std::nullopt).value_or(measMode);
    if (mode == MeasModeDataThroughput) {
        if (deviceRegisterChanged) {
            setParam(hCam, VN_PRM_DEVICE_UNIT_SELECTOR, testDeviceUnit);
            setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, testRegister);
            setParam(hCam, VN_PRM_DEVICE_UNIT_REGISTER_VALUE, testRegisterNormal);
        }
        setParam(hCam, VN_PRM_TEST_PATTERN, savedTestPattern);
        setParam(hCam, VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, savedTestPatternGenerator);
        setParam(hCam, VN_PRM_OUTPUT_DATA_PACKING, savedOutputBitPacking);
        setParam(hCam, VN_PRM_OUTPUT_DATA_BIT_DEPTH, savedOutputBitDepth);
        setParam(hCam, VN_PRM_IMAGE_DATA_FORMAT, savedImgDataFormat);
        setParam(hCam, VN_PRM_BUFFER_POLICY, savedBufferPolicy);
        setParam(hCam, VN_PRM_COLUMN_FPN_CORRECTION, savedColumnFpnCorrection);
        setParam(hCam, VN_PRM_ROW_FPN_CORRECTION, savedRowFpnCorrection);
        setParam(hCam, VN_PRM_LUT_ENABLE, savedLutEnable);
        if (frameBufferModeChanged) {
            setParam(hCam, VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE);
            setParam(hCam, VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_ENABLED);
        }
    } else if (mode == MeasModeStandardAcq) {
        setParam(hCam, VN_PRM_BUFFER_POLICY, savedBufferPolicy);
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
    return known ? size : defaultCameraBufferSize;
}
