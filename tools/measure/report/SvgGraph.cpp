// SPDX-License-Identifier: GPL-3.0-or-later
// Paths of a drawing of 1000 by 100 units.
#include "SvgGraph.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double width = 1000.0;
constexpr double height = 100.0;

/// Short: a tenth of a unit is less than a pixel.
QString unit(double value)
{
    QString text = QString::number(value, 'f', 1);
    if (text.endsWith(QLatin1String(".0")))
        text.chop(2);
    return text;
}

} // namespace

SvgGraph::SvgGraph(std::vector<HistoryColumn> shown, double highestValue)
    : columns(std::move(shown)), highest(highestValue)
{
    if (columns.empty())
        return;
    beginS = columns.front().beginS;
    lengthS = columns.back().endS - beginS;
}

double SvgGraph::x(double s) const
{
    return lengthS > 0.0 ? (s - beginS) / lengthS * width : 0.0;
}

double SvgGraph::y(double value) const
{
    return height * (1.0 - std::clamp(value / highest, 0.0, 1.0));
}

void SvgGraph::path(const char* cssClass, const QString& points)
{
    if (!points.isEmpty())
        parts += QStringLiteral("<path class=\"%1\" d=\"%2\"/>").arg(QLatin1String(cssClass), points);
}

void SvgGraph::grid(const std::vector<GraphTick>& values, const std::vector<GraphTick>& times)
{
    QString points;
    for (const GraphTick& tick : values)
        points += QStringLiteral("M0 %1H1000").arg(unit(height * (1.0 - tick.at)));
    for (const GraphTick& tick : times)
        points += QStringLiteral("M%1 0V100").arg(unit(width * tick.at));
    path("grid", points);
}

void SvgGraph::line(const char* cssClass, const ColumnValue& value)
{
    QString points;
    bool drawing = false;
    for (const HistoryColumn& column : columns) {
        const auto found = value(column);
        if (found) {
            const QString atY = unit(y(*found));
            points += drawing ? QLatin1Char('V') + atY : QStringLiteral("M%1 %2").arg(unit(x(column.beginS)), atY);
            points += QLatin1Char('H') + unit(x(column.endS));
        }
        drawing = found.has_value();
    }
    path(cssClass, points);
}

void SvgGraph::area(const char* cssClass, const ColumnValue& from, const ColumnValue& to)
{
    QString points;
    QString back; // along the lower edge
    for (const HistoryColumn& column : columns) {
        const auto low = from(column);
        const auto high = to(column);
        const bool known = low && high;
        if (!known && !back.isEmpty())
            points += std::exchange(back, {}) + QLatin1Char('z');
        if (!known)
            continue;
        if (back.isEmpty())
            points += QStringLiteral("M%1 %2").arg(unit(x(column.beginS)), unit(y(*high)));
        points += QStringLiteral("V%1H%2").arg(unit(y(*high)), unit(x(column.endS)));
        back.prepend(QStringLiteral("V%1H%2").arg(unit(y(*low)), unit(x(column.beginS))));
    }
    path(cssClass, back.isEmpty() ? points : points + back + QLatin1Char('z'));
}

void SvgGraph::lostSpans(const char* cssClass)
{
    constexpr double roundingS = 1e-3; // of spans that go on in the next column
    const HistoryColumn* open = nullptr;
    QString points;
    const auto close = [&] {
        if (open != nullptr)
            points += QStringLiteral("H%1V100z").arg(unit(x(open->lostToS)));
    };
    for (const HistoryColumn& column : columns) {
        if (!column.isLost())
            continue;
        if (open == nullptr || column.lostFromS > open->lostToS + roundingS) {
            close();
            points += QStringLiteral("M%1 100V0").arg(unit(x(column.lostFromS)));
        }
        open = &column;
    }
    close();
    path(cssClass, points);
}

void SvgGraph::strokes(const char* cssClass, const ColumnValue& value)
{
    QString points;
    for (const HistoryColumn& column : columns) {
        const double found = value(column).value_or(0.0);
        if (found > 0.0)
            points += QStringLiteral("M%1 100V%2").arg(unit(x((column.beginS + column.endS) / 2.0)), unit(y(found)));
    }
    path(cssClass, points);
}

void SvgGraph::curve(const char* cssClass, const std::vector<GraphPoint>& curvePoints)
{
    QString points;
    for (const GraphPoint& point : curvePoints)
        points += QStringLiteral("%1%2 %3")
                      .arg(points.isEmpty() ? QLatin1Char('M') : QLatin1Char('L'))
                      .arg(unit(point.at * width), unit(y(point.value)));
    path(cssClass, points);
}

void SvgGraph::level(const char* cssClass, double value)
{
    path(cssClass, QStringLiteral("M0 %1H1000").arg(unit(y(value))));
}

Markup SvgGraph::drawing() const
{
    return {QStringLiteral("<svg viewBox=\"0 0 1000 100\" preserveAspectRatio=\"none\" aria-hidden=\"true\">") +
            parts + QStringLiteral("</svg>")};
}
