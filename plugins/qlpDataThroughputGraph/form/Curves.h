// SPDX-License-Identifier: GPL-3.0-or-later
// The curves of both modes: names (the engine's counter names, so never translated), tool tips and colours.
#ifndef KESTROVA_CURVES_H
#define KESTROVA_CURVES_H

#include <array>

#include <QtCore/QCoreApplication>
#include <QtGui/QRgb>

#include <vnCore/vnTypes.h>

struct Curve
{
    const char* name;
    const char* toolTip;
    QRgb colour;
    VN_COUNTER_SELECTOR selector; ///< of a counter curve
};

constexpr auto noCounter = VN_COUNTER_SELECTOR(-1);

/// In the order in which CxCameraLineData::fillCounterGraphs() takes them.
constexpr std::array<Curve, 5> standardCurves{{
    {"Transport skip", QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of skipped frames on transport layer"),
     qRgb(255, 165, 0), VN_COUNTER_TRANSPORT_SKIP},
    {"API skip", QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of skipped frames on API layer"), qRgb(255, 0, 0),
     VN_COUNTER_API_SKIP},
    {"Missed trg. overlap", QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of missed triggers due to overlap"),
     qRgb(255, 255, 0), VN_COUNTER_MISSED_TRG_OVERLAP},
    {"Missed trg overflow",
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Number of missed triggers due to frame buffer full"), qRgb(0, 255, 0),
     VN_COUNTER_MISSED_TRG_OVERFLOW},
    {"Buffer overflow", QT_TRANSLATE_NOOP("CxDataGraphForm", "Frame buffer full counter"), qRgb(0, 0, 255),
     VN_COUNTER_BUFFER_OVERFLOW},
}};

constexpr Curve minThroughputCurve{"Min throughput",
                                   QT_TRANSLATE_NOOP("CxDataGraphForm", "Minimum data rate in whole data set"),
                                   qRgb(255, 165, 0), noCounter};
constexpr Curve bufferLevelCurve{"Max buffer level",
                                 QT_TRANSLATE_NOOP("CxDataGraphForm", "Internal camera buffer fill percentage"),
                                 qRgb(30, 144, 255), noCounter};
constexpr std::array<Curve, 2> throughputCurves{{minThroughputCurve, bufferLevelCurve}};

#endif
