// SPDX-License-Identifier: GPL-3.0-or-later
// Handles, the image descriptor and the numbers that the camera API's integer parameters use.
#ifndef VNCORE_VNTYPES_H
#define VNCORE_VNTYPES_H

#include <QtCore/QMetaType>
#include <QtCore/QtGlobal>

#define VNCORE_EXPORT Q_DECL_EXPORT

/// An opened camera. Values are small ascending numbers in the order in which cameras are first opened, which is then
/// the order of a map keyed by them. A camera that is closed and opened again gets its former value, and with it its
/// former place. Never dereferenced; null is no camera.
using VNCORE_HANDLE = struct VnCoreCamera*;
Q_DECLARE_OPAQUE_POINTER(VNCORE_HANDLE)
Q_DECLARE_METATYPE(VNCORE_HANDLE)

/// Descriptor of one received image. The caller zeroes it and sets `size`; vnApi_GetImage() fills the rest.
struct VN_IMG
{
    quint32 size;        ///< bytes of this record, always 288
    quint32 width;       ///< pixels
    quint32 height;      ///< pixels
    quint32 frameNumber; ///< counts every frame of the sensor since the acquisition began: losses leave gaps
    quint32 tsSec;       ///< camera time stamp of the frame's first word, whole seconds
    quint32 tsUSec;      ///< its microseconds, 0 to 999999
    quint32 dataFormat;  ///< value of "imgdataformat" that the data has (VN_FRM_...)
    quint32 bitDepth;    ///< significant bits per pixel
    quint64 dataBytes;   ///< bytes that are readable behind `data`; may be fewer than width x height suggests
    const void* data;    ///< owned by the host: readable until the same thread's next vnApi_GetImage() or the stop
                         ///< of the acquisition, also when the camera is lost or closed meanwhile
    quint8 reserved[240];
};
static_assert(sizeof(VN_IMG) == 288, "the descriptor's size is part of the interface");

/// Frame counters of a camera, values of "counter_selector".
enum VN_COUNTER_SELECTOR : qint32
{
    VN_COUNTER_TRANSPORT_SKIP = 0,      ///< frames lost on the link
    VN_COUNTER_API_SKIP = 1,            ///< frames fetched too late and dropped by the acquisition library
    VN_COUNTER_TRANSFERRED = 2,         ///< frames handed out
    VN_COUNTER_MISSED_TRG_OVERLAP = 3,  ///< triggers that came while the sensor was busy
    VN_COUNTER_MISSED_TRG_OVERFLOW = 4, ///< triggers that found the frame buffer full
    VN_COUNTER_BUFFER_OVERFLOW = 5,     ///< times the frame buffer overflowed
};

/// Values of "imgdataformat". From 2^24 on: the code of a pixel format by the industry's naming convention.
enum VN_IMAGE_DATA_FORMAT : qint32
{
    VN_FRM_MONO8 = 0,
    VN_FRM_MONO16 = 1,
    VN_FRM_TRANSPORT_DATA = 7, ///< the data as they come over the link, two bytes a pixel
};

/// Value of "buffer_policy": images are handed out without a copy.
constexpr qint32 VN_BP_UNSAFE = 0;

constexpr qint32 VN_TESTPAT_GEN_FPGA = 1;             ///< "test_pattern_generator_selector"
constexpr qint32 VN_TESTPAT_DEVICE_SPEC_COUNTER = 11; ///< "test_pattern": 4 ns counter in every 64-bit word

constexpr qint32 VN_DP_UNIT_FPGA = 1;                          ///< "dp_unit_selector"
constexpr qint32 VN_DP_PROC_FRAME_BUFFER = 5;                  ///< "dp_proc_selector"
constexpr qint32 VN_DP_PARAM_FRAMEBUF_MODE = 6;                ///< "dp_param_selector"
constexpr qint32 VN_DP_PARAM_FRAMEBUF_SIZE = 7;                ///< "dp_param_selector": bytes, read only
constexpr qint32 VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED = 9; ///< "dp_param_value" of the mode
constexpr qint32 VN_DP_PARAM_VALUE_FRAMEBUF_MODE_ENABLED = 10; ///< the mode after power-up

// Names of the integer parameters.
#define VN_PRM_BUFFER_POLICY "buffer_policy"
#define VN_PRM_IMAGE_DATA_FORMAT "imgdataformat"
#define VN_PRM_OUTPUT_DATA_BIT_DEPTH "output_bit_depth"
#define VN_PRM_OUTPUT_DATA_PACKING "output_bit_packing"
#define VN_PRM_COLUMN_FPN_CORRECTION "column_fpn_correction"
#define VN_PRM_ROW_FPN_CORRECTION "row_fpn_correction"
#define VN_PRM_LUT_ENABLE "LUTEnable"
#define VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR "test_pattern_generator_selector"
#define VN_PRM_TEST_PATTERN "test_pattern"
#define VN_PRM_DP_UNIT_SELECTOR "dp_unit_selector"
#define VN_PRM_DP_PROC_SELECTOR "dp_proc_selector"
#define VN_PRM_DP_PARAM_SELECTOR "dp_param_selector"
#define VN_PRM_DP_PARAM_VALUE "dp_param_value"
#define VN_PRM_DEVICE_UNIT_SELECTOR "device_unit_selector"
#define VN_PRM_DEVICE_UNIT_REGISTER_SELECTOR "device_unit_register_selector"
#define VN_PRM_DEVICE_UNIT_REGISTER_VALUE "device_unit_register_value"
#define VN_PRM_TS_RST_MODE "ts_rst_mode"
#define VN_PRM_TS_RST_SOURCE "ts_rst_source"
#define VN_PRM_COUNTER_SELECTOR "counter_selector"
#define VN_PRM_COUNTER_VALUE "counter_value"

/// Appended to a name in vnApi_SetParamInt(): asks whether the parameter can take the value and changes nothing.
#define VN_PRM_SUFFIX_SETTABLE ":settable"

#endif
