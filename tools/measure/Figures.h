// SPDX-License-Identifier: GPL-3.0-or-later
// The figures of a run or of an interval as one list: every output and every limit works on it, so that they speak of
// the same numbers.
#ifndef KESTROVA_MEASURE_FIGURES_H
#define KESTROVA_MEASURE_FIGURES_H

#include <optional>
#include <vector>

#include <QtCore/QString>

#include "CameraLineData.h"
#include "LostFrames.h"
#include "RunDiagnosis.h"

/// One number with all that an output has to know of it.
struct Figure
{
    const char* key;             ///< in JSON and the log; ends in its unit unless it is a count
    const char* title;           ///< heading of its column in text; null: not shown there
    int decimals;                ///< shown in text and the log
    std::optional<double> value; ///< nothing: not known
};

using Figures = std::vector<Figure>;

/// Where frames were lost; nothing: the camera cannot tell.
using KnownLosses = std::optional<LostFrames>;

/// `samplePeriod` in bytes; `bufferKnown`: whether there is a required throughput to simulate the buffer with.
Figures throughputFigures(const RunTotals& totals, quint32 samplePeriod, bool bufferKnown,
                          const KnownLosses& lost = {});

Figures counterFigures(const RunTotals& totals, const CounterDifferences& counters, const KnownLosses& lost = {});

/// The figure of that key; null if there is none.
const Figure* findFigure(const Figures& figures, const QString& key);
/// The value of that key; nothing if there is none or it is not known.
std::optional<double> figureValue(const Figures& figures, const QString& key);

/// The rounded value, or "n/a".
QString figureText(const Figure& figure);

#endif
