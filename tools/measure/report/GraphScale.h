// SPDX-License-Identifier: GPL-3.0-or-later
// Where the numbers beside a graph stand: round ones, few enough to be read.
#ifndef KESTROVA_MEASURE_GRAPHSCALE_H
#define KESTROVA_MEASURE_GRAPHSCALE_H

#include <vector>

#include <QtCore/QDateTime>

/// A mark of an axis.
struct GraphTick
{
    double at;     ///< 0 to 1 of the axis' length
    QString label; ///< plain text
};

/// From 0 to a round value.
struct ValueScale
{
    double most;
    std::vector<GraphTick> ticks;
};

constexpr int mostValueSteps = 5;

/// Holds all values up to `highest`, in as many round steps as may be and half of that at least; from 0 to 1 if nothing
/// is greater than 0.
ValueScale valueScale(double highest, int mostSteps = mostValueSteps);

/// Ticks at round local times; midnights show the date. `start` in local time. Three to eight
/// of them, fewer for less than some seconds.
std::vector<GraphTick> timeTicks(const QDateTime& start, double lengthS);

#endif
