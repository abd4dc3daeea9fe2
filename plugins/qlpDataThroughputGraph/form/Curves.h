// SPDX-License-Identifier: GPL-3.0-or-later
// The curves of both modes: names (the engine's counter names, so never translated), tool tips and colours.
#ifndef KESTROVA_CURVES_H
#define KESTROVA_CURVES_H

#include <array>

#include <QtCore/QCoreApplication>
#include <QtGui/QRgb>

#include "../engine/FrameCounters.h"
#include "Columns.h"

/// Texts are literals, so curves are made at compile time and shared.
struct Curve
{
    const char* name;
    const char* toolTip;
    QRgb colour;
    VN_COUNTER_SELECTOR selector; ///< of a counter curve
};

constexpr auto noCounter = VN_COUNTER_SELECTOR(-1);

/// The curve of the counter that a column shows.
constexpr Curve counterCurve(int column, QRgb colour)
{
    const VN_COUNTER_SELECTOR selector = StandardColumn::counterOf(column);
    return {frameCounters[selector].name, StandardColumn::texts[static_cast<std::size_t>(column)].toolTip, colour,
            selector};
}

/// In the order in which CxCameraLineData::fillCounterGraphs() takes them: that of the counters.
constexpr std::array<Curve, sampledCounters> standardCurves{{
    counterCurve(StandardColumn::TransportSkip, qRgb(255, 165, 0)),
    counterCurve(StandardColumn::ApiSkip, qRgb(255, 0, 0)),
    counterCurve(StandardColumn::MissedTrgOverlap, qRgb(255, 255, 0)),
    counterCurve(StandardColumn::MissedTrgOverflow, qRgb(0, 255, 0)),
    counterCurve(StandardColumn::BufferOverflow, qRgb(0, 0, 255)),
}};

constexpr Curve minThroughputCurve{"Min throughput",
                                   QT_TRANSLATE_NOOP("CxDataGraphForm", "Minimum data rate in whole data set"),
                                   qRgb(255, 165, 0), noCounter};
constexpr Curve bufferLevelCurve{"Max buffer level",
                                 QT_TRANSLATE_NOOP("CxDataGraphForm", "Internal camera buffer fill percentage"),
                                 qRgb(30, 144, 255), noCounter};
constexpr std::array<Curve, 2> throughputCurves{{minThroughputCurve, bufferLevelCurve}};

#endif
