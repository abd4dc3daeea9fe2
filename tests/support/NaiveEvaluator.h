// SPDX-License-Identifier: GPL-3.0-or-later
// The figures, curves and report of a throughput record straight from their formulas: every block is visited, nothing
// is kept from one call to the next. What the engine is compared with, in results and in cost.
#ifndef KESTROVA_NAIVEEVALUATOR_H
#define KESTROVA_NAIVEEVALUATOR_H

#include <limits>
#include <vector>

#include "CameraLineData.h"

constexpr qint64 always = std::numeric_limits<qint64>::max() / 4; ///< us, in both directions

struct CurvePoint
{
    double key;
    double value;
    bool operator==(const CurvePoint& other) const { return key == other.key && value == other.value; }
};

/// What a refresh with both curves has to give.
struct NaiveFigures
{
    bool evaluated = false; ///< the other figures mean something
    double avgThroughput = 0.0;
    double minThroughput = 0.0;
    double maxBufferLevel = 0.0;
    quint64 bufferOverflowCount = 0;
    std::vector<CurvePoint> minimum;
    std::vector<CurvePoint> level;
};

/// Keys are seconds relative to `toUs` plus `keyUpper`.
NaiveFigures naiveFigures(const CxCameraLineData& data, double keyUpper, qint64 fromUs, qint64 toUs,
                          double minKeySpacing);

/// Makes the record's figures, curves left out, and says whether they are the naive ones.
bool figuresAreTrue(CxCameraLineData& data, qint64 fromUs = -always, qint64 toUs = always);
/// Whether the figures last made are these; the average may be summed up in another order and stays when there is none.
bool hasFigures(const CxCameraLineData& data, const NaiveFigures& figures);

struct NaiveCounters
{
    bool evaluated = false;
    /// In the order of fillCounterGraphs().
    std::vector<CurvePoint> curves[5];
};

NaiveCounters naiveCounters(const CxCameraLineData& data, double keyUpper, qint64 fromUs, qint64 toUs,
                            double minKeySpacing);

/// What findEventMarks() has to give, for the present settings.
std::vector<EventMark> naiveMarks(const CxCameraLineData& data, const EventRange& range);

extern const char reportHeader[];
/// What the writer under test makes of a record; an error is told instead.
QByteArray writtenReport(const CxCameraLineData& data, qint64 fromUs, qint64 toUs);
/// The data lines of the report.
QByteArray naiveReport(const CxCameraLineData& data, qint64 fromUs, qint64 toUs);

#endif
