// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked of a camera before and after a measurement, call by call: lists that say what is saved, set and put
// back in which order.
#ifndef KESTROVA_CAMERASTEPS_H
#define KESTROVA_CAMERASTEPS_H

#include <vnCore/vnApi.h>

#include "CameraLineData.h"

namespace steps {

using Record = CxCameraLineData;

/// One call of the preparation or the restore.
struct Step
{
    enum Kind
    {
        Save,
        Set,
        PutBack
    };

    const char* parameter;
    qint32 Record::*saved; ///< of Save and PutBack
    const char* failure;   ///< null: the measurement does without this step; else what the log says
    Kind kind;
    qint32 value; ///< of Set
};

constexpr Step save(const char* parameter, qint32 Record::*into, const char* failure = nullptr)
{
    return {parameter, into, failure, Step::Save, 0};
}

constexpr Step set(const char* parameter, qint32 value, const char* failure = nullptr)
{
    return {parameter, nullptr, failure, Step::Set, value};
}

constexpr Step putBack(const char* parameter, qint32 Record::*from)
{
    return {parameter, from, nullptr, Step::PutBack, 0};
}

constexpr qint32 testDeviceUnit = 1;
constexpr qint32 testRegister = 55;
constexpr qint32 testRegisterMeasuring = 25000;
constexpr qint32 testRegisterNormal = 1;

// --- the data throughput mode: prepared from top to bottom, with the restore below ---
constexpr Step throughputSteps[] = {
    save(VN_PRM_IMAGE_DATA_FORMAT, &Record::savedImgDataFormat),
    save(VN_PRM_OUTPUT_DATA_BIT_DEPTH, &Record::savedOutputBitDepth),
    save(VN_PRM_OUTPUT_DATA_PACKING, &Record::savedOutputBitPacking),
    save(VN_PRM_BUFFER_POLICY, &Record::savedBufferPolicy),
    save(VN_PRM_COLUMN_FPN_CORRECTION, &Record::savedColumnFpnCorrection),
    save(VN_PRM_ROW_FPN_CORRECTION, &Record::savedRowFpnCorrection),
    save(VN_PRM_LUT_ENABLE, &Record::savedLutEnable),
    set(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE, "vnApi_SetParamInt(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE) failed"),
    set(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA,
        "vnApi_SetParamInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA) failed"),
    set(VN_PRM_OUTPUT_DATA_BIT_DEPTH, 16, "vnApi_SetParamInt(VN_PRM_OUTPUT_DATA_BIT_DEPTH) failed"),
    set(VN_PRM_OUTPUT_DATA_PACKING, 0, "vnApi_SetParamInt(VN_PRM_OUTPUT_DATA_PACKING, 0) failed"),
    set(VN_PRM_COLUMN_FPN_CORRECTION, 0),
    set(VN_PRM_ROW_FPN_CORRECTION, 0),
    set(VN_PRM_LUT_ENABLE, 0),
    // The test pattern is one of the selected generator, so each is read after the selection that it belongs to.
    save(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, &Record::savedTestPatternGenerator,
         "vnApi_GetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR) failed"),
    set(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, VN_TESTPAT_GEN_FPGA,
        "vnApi_SetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, VN_TESTPAT_GEN_FPGA) failed"),
    save(VN_PRM_TEST_PATTERN, &Record::savedTestPattern, "vnApi_GetParamInt(VN_PRM_TEST_PATTERN) failed"),
    set(VN_PRM_TEST_PATTERN, VN_TESTPAT_DEVICE_SPEC_COUNTER,
        "vnApi_SetParamInt(VN_PRM_TEST_PATTERN, VN_TESTPAT_DEVICE_SPEC_COUNTER) failed"),
};
constexpr Step frameBufferQuestions[] = {
    set(VN_PRM_DP_UNIT_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_UNIT_FPGA),
    set(VN_PRM_DP_PROC_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_PROC_FRAME_BUFFER),
    set(VN_PRM_DP_PARAM_SELECTOR VN_PRM_SUFFIX_SETTABLE, VN_DP_PARAM_FRAMEBUF_MODE),
};
constexpr Step frameBufferSteps[] = {
    set(VN_PRM_DP_UNIT_SELECTOR, VN_DP_UNIT_FPGA,
        "vnApi_SetParamInt(VN_PRM_DP_UNIT_SELECTOR, VN_DP_UNIT_FPGA) failed"),
    set(VN_PRM_DP_PROC_SELECTOR, VN_DP_PROC_FRAME_BUFFER,
        "vnApi_SetParamInt(VN_PRM_DP_PROC_SELECTOR, VN_DP_PROC_FRAME_BUFFER) failed"),
    set(VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE,
        "vnApi_SetParamInt(VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE) failed"),
    set(VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED,
        "vnApi_SetParamInt(VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED) failed"),
};
constexpr Step registerSteps[] = {
    set(VN_PRM_DEVICE_UNIT_SELECTOR, testDeviceUnit),
    set(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, testRegister),
    set(VN_PRM_DEVICE_UNIT_REGISTER_VALUE, testRegisterMeasuring),
};

constexpr Step registerRestore[] = {
    set(VN_PRM_DEVICE_UNIT_SELECTOR, testDeviceUnit),
    set(VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR, testRegister),
    set(VN_PRM_DEVICE_UNIT_REGISTER_VALUE, testRegisterNormal),
};
constexpr Step throughputRestore[] = {
    putBack(VN_PRM_TEST_PATTERN, &Record::savedTestPattern),
    putBack(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, &Record::savedTestPatternGenerator),
    putBack(VN_PRM_OUTPUT_DATA_PACKING, &Record::savedOutputBitPacking),
    putBack(VN_PRM_OUTPUT_DATA_BIT_DEPTH, &Record::savedOutputBitDepth),
    putBack(VN_PRM_IMAGE_DATA_FORMAT, &Record::savedImgDataFormat),
    putBack(VN_PRM_BUFFER_POLICY, &Record::savedBufferPolicy),
    putBack(VN_PRM_COLUMN_FPN_CORRECTION, &Record::savedColumnFpnCorrection),
    putBack(VN_PRM_ROW_FPN_CORRECTION, &Record::savedRowFpnCorrection),
    putBack(VN_PRM_LUT_ENABLE, &Record::savedLutEnable),
};
constexpr Step frameBufferRestore[] = {
    set(VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE),
    set(VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_ENABLED),
};

// --- the standard mode ---
constexpr Step standardSteps[] = {
    save(VN_PRM_BUFFER_POLICY, &Record::savedBufferPolicy),
    set(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE, "vnApi_SetParamInt(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE) failed"),
};
constexpr Step standardRestore[] = {
    putBack(VN_PRM_BUFFER_POLICY, &Record::savedBufferPolicy),
};

} // namespace steps

#endif
