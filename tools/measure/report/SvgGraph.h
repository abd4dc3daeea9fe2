// SPDX-License-Identifier: GPL-3.0-or-later
// Draws columns of a course into one SVG drawing that takes any width: lines keep their thickness.
#ifndef KESTROVA_MEASURE_SVGGRAPH_H
#define KESTROVA_MEASURE_SVGGRAPH_H

#include <functional>
#include <optional>
#include <vector>

#include "GraphScale.h"
#include "Markup.h"
#include "RunHistory.h"

/// A value of a column; nothing where it has none.
using ColumnValue = std::function<std::optional<double>(const HistoryColumn&)>;

struct GraphPoint
{
    double at; ///< 0 to 1 of the width
    double value;
};

/// Adds its parts one over the other. Classes are names of the style sheet.
class SvgGraph
{
public:
    /// `highest`: the value at the upper edge.
    SvgGraph(std::vector<HistoryColumn> columns, double highest);

    void grid(const std::vector<GraphTick>& values, const std::vector<GraphTick>& times);
    /// A line of steps, broken where there is no value.
    void line(const char* cssClass, const ColumnValue& value);
    /// Filled from one value to the other.
    void area(const char* cssClass, const ColumnValue& from, const ColumnValue& to);
    /// All of the height wherever the camera was lost.
    void lostSpans(const char* cssClass);
    /// An upright stroke for each column with a value above 0, however narrow the column.
    void strokes(const char* cssClass, const ColumnValue& value);
    void curve(const char* cssClass, const std::vector<GraphPoint>& points);
    /// A horizontal line through everything.
    void level(const char* cssClass, double value);

    /// The drawing, which the style sheet has to give a size.
    Markup drawing() const;

private:
    double x(double s) const;
    double y(double value) const;
    void path(const char* cssClass, const QString& points);

    const std::vector<HistoryColumn> columns;
    const double highest;
    double beginS = 0.0;
    double lengthS = 0.0;
    QString parts;
};

#endif
