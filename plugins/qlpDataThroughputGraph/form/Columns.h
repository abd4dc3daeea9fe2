// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of the camera table in both modes. Captions and tool tips are translated in the form's context.
#ifndef KESTROVA_COLUMNS_H
#define KESTROVA_COLUMNS_H

#include <array>

#include <QtCore/QCoreApplication>

#include "../engine/CameraLineData.h"

struct ColumnText
{
    const char* caption;
    const char* toolTip;
};

namespace StandardColumn {
/// Places in the table, from left to right; the form looks for nothing by its caption.
enum : int
{
    Camera,
    Status,
    DataFormat,
    Measure,
    Transferred,
    TransportSkip,
    ApiSkip,
    MissedTrgOverlap,
    MissedTrgOverflow,
    BufferOverflow,
    Graph,
    Count
};

constexpr std::array<ColumnText, Count> texts{{
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Camera"), ""},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Status"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Data gap measurement status")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Data Format"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Output data format.")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Measure"), QT_TRANSLATE_NOOP("CxDataGraphForm", "Start/Stop Measurement")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Transferred"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of transferred frames")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Transport skip"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of skipped frames on transport layer")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "API skip"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of skipped frames on API layer")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Missed trg. overlap"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of missed triggers due to overlap")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Missed trg overflow"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of missed triggers due to frame buffer full")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Buffer overflow"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Frame buffer full counter")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Graph"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Enable/Disable plotting of measured data")},
}};

/// The counter columns are not in the order of the selectors.
struct Counter
{
    int column;
    VN_COUNTER_SELECTOR selector;
};
constexpr std::array<Counter, 6> counters{{
    {Transferred, VN_COUNTER_TRANSFERRED},
    {TransportSkip, VN_COUNTER_TRANSPORT_SKIP},
    {ApiSkip, VN_COUNTER_API_SKIP},
    {MissedTrgOverlap, VN_COUNTER_MISSED_TRG_OVERLAP},
    {MissedTrgOverflow, VN_COUNTER_MISSED_TRG_OVERFLOW},
    {BufferOverflow, VN_COUNTER_BUFFER_OVERFLOW},
}};

constexpr VN_COUNTER_SELECTOR counterOf(int column)
{
    return counters[static_cast<std::size_t>(column - Transferred)].selector;
}
} // namespace StandardColumn

namespace ThroughputColumn {
/// Places in the table, from left to right; the form looks for nothing by its caption.
enum : int
{
    Camera,
    Status,
    Measure,
    AvgThroughput,
    MinThroughput,
    MaxBufferLevel,
    BufferOverflowCount,
    ExportData,
    RequiredThroughput,
    CameraBufferSize,
    Graph,
    YAxisScaling,
    Count
};

constexpr std::array<ColumnText, Count> texts{{
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Camera"), ""},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Status"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Data gap measurement status")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Measure"), QT_TRANSLATE_NOOP("CxDataGraphForm", "Start/Stop Measurement")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Avg throughput"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Average data rate")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Min throughput"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Minimum data rate in whole data set")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Max buffer level"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Internal camera buffer fill percentage")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Buffer overflow count"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of times internal camera buffer was totally filled")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Export data"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Export data to .csv report")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Required throughput"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Expected sensor speed for evaluation")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Camera buffer size"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Size of internal camera buffer in bytes")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Graph"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Enable/Disable plotting of measured data")},
    {QT_TRANSLATE_NOOP("CxDataGraphForm", "Y Axis scaling"),
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Enable/Disable Y axis automatic scaling or set manual axis range")},
}};

/// Two-line captions with their units, which are not translated.
struct UnitCaption
{
    int column;
    const char* caption;
    const char* unit;
};
constexpr std::array<UnitCaption, 5> unitCaptions{{
    {AvgThroughput, QT_TRANSLATE_NOOP("CxDataGraphForm", "Average\nthroughput"), "MB/s"},
    {MinThroughput, QT_TRANSLATE_NOOP("CxDataGraphForm", "Minimum\nthroughput"), "MB/s"},
    {BufferOverflowCount, QT_TRANSLATE_NOOP("CxDataGraphForm", "Buffer overflow\ncount"), ""},
    {RequiredThroughput, QT_TRANSLATE_NOOP("CxDataGraphForm", "Required\nthroughput"), "MB/s"},
    {CameraBufferSize, QT_TRANSLATE_NOOP("CxDataGraphForm", "Camera buffer\nsize"), "kB"},
}};
} // namespace ThroughputColumn

/// The Measure button's column, -1 in an unknown mode.
constexpr int measureColumn(int mode)
{
    switch (mode) {
    case MeasModeDataThroughput:
        return ThroughputColumn::Measure;
    case MeasModeStandardAcq:
        return StandardColumn::Measure;
    default:
        return -1;
    }
}

/// The columns that both modes have in the same place.
constexpr int cameraColumn = 0;
constexpr int statusColumn = 1;
constexpr int graphColumn = 10;
static_assert(graphColumn == int(StandardColumn::Graph) && graphColumn == int(ThroughputColumn::Graph));

#endif
