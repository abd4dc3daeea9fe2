// SPDX-License-Identifier: GPL-3.0-or-later
// Panels of one width, one below the other.
#include "CourseGraph.h"

#include <algorithm>

#include "GraphPanel.h"
#include "SvgGraph.h"

namespace {

constexpr double headroom = 1.02; ///< a line at the upper edge is drawn whole
constexpr double percent = 100.0;

template<typename Value>
double highestOf(const std::vector<HistoryColumn>& columns, Value value)
{
    double highest = 0.0;
    for (const HistoryColumn& column : columns)
        highest = std::max(highest, value(column));
    return highest;
}

std::optional<double> zero(const HistoryColumn&)
{
    return 0.0;
}

class Panels
{
public:
    explicit Panels(const ReportCamera& shown)
        : camera(shown),
          columns(shown.course),
          times(timeTicks(shown.start.addMSecs(qRound64(columns.front().beginS * 1e3)),
                          columns.back().endS - columns.front().beginS))
    {
    }

    Markup throughput() const
    {
        const double highest = highestOf(columns, [](const HistoryColumn& column) {
            return std::max(column.mostDelivered, column.minThroughput.value_or(0.0));
        });
        const ValueScale scale = valueScale(std::max(highest, camera.required.value_or(0.0)) * headroom);
        SvgGraph graph(columns, scale.most);
        graph.grid(scale.ticks, times);
        graph.area(
            "delivered-band", [](const HistoryColumn& column) { return column.leastDelivered; },
            [](const HistoryColumn& column) { return column.mostDelivered; });
        graph.line("delivered", [](const HistoryColumn& column) { return column.delivered(); });
        graph.line("lowest", [](const HistoryColumn& column) { return column.minThroughput; });
        Markup keys = graphKey("i class=\"delivered\"", QStringLiteral("delivered, with its extremes"));
        if (any([](const HistoryColumn& column) { return column.minThroughput.has_value(); }))
            keys += graphKey("i class=\"lowest\"", QStringLiteral("lowest of any block"));
        if (camera.required) {
            graph.level("required", *camera.required);
            keys += graphKey("i class=\"required\"", QStringLiteral("required %1").arg(*camera.required));
        }
        return graphPanel("figure class=\"panel tall\"", QStringLiteral("Throughput, MB/s"), keys, scale, graph);
    }

    /// Of 100 %: how near it came to the end.
    Markup bufferLevel() const
    {
        const auto level = [](const HistoryColumn& column) { return column.maxBufferLevel; };
        const ValueScale scale{
            percent, {{0.0, QStringLiteral("0")}, {0.5, QStringLiteral("50")}, {1.0, QStringLiteral("100")}}};
        SvgGraph graph(columns, scale.most);
        graph.grid(scale.ticks, times);
        graph.area("level-area", zero, level);
        graph.line("level", level);
        return graphPanel("figure class=\"panel\"", QStringLiteral("Highest buffer level, %"), {}, scale, graph);
    }

    Markup gaps() const
    {
        const auto gap = [](const HistoryColumn& column) { return column.longestGapMs; };
        const double highest = highestOf(columns, gap);
        const bool seconds = highest >= 1e4;
        const ValueScale scale = valueScale((seconds ? highest / 1e3 : highest) * headroom);
        SvgGraph graph(columns, seconds ? scale.most * 1e3 : scale.most);
        graph.grid(scale.ticks, times);
        graph.area("gap-area", zero, gap);
        graph.line("gap", gap);
        return graphPanel("figure class=\"panel\"",
                          seconds ? QStringLiteral("Longest time without a frame, s")
                                  : QStringLiteral("Longest time without a frame, ms"),
                          {}, scale, graph);
    }

    /// Where something was lost; empty if nothing was.
    Markup lane(const QString& title, quint64 HistoryColumn::*count) const
    {
        quint64 sum = 0;
        for (const HistoryColumn& column : columns)
            sum += column.*count;
        if (sum == 0)
            return {};
        SvgGraph graph(columns, 1.0);
        graph.strokes("loss", [count](const HistoryColumn& column) { return column.*count > 0 ? 1.0 : 0.0; });
        return element("figure class=\"panel lane\"",
                       element("figcaption", plain(title) + element("b", QString::number(sum))) +
                           element("div class=\"plot\"", graph.drawing()));
    }

    template<typename Has>
    bool any(Has has) const
    {
        return std::any_of(columns.begin(), columns.end(), has);
    }

    Markup timeAxis() const { return graphTicks(times); }

private:
    const ReportCamera& camera;
    const std::vector<HistoryColumn>& columns;
    const std::vector<GraphTick> times;
};

} // namespace

Markup courseGraphs(const ReportCamera& camera)
{
    if (camera.course.empty())
        return {};
    const Panels panels(camera);
    Markup all = panels.throughput();
    if (panels.any([](const HistoryColumn& column) { return column.maxBufferLevel.has_value(); }))
        all += panels.bufferLevel();
    all += panels.gaps() + panels.lane(QStringLiteral("Missing frames"), &HistoryColumn::missingFrames) +
           panels.lane(QStringLiteral("Skipped frames"), &HistoryColumn::skips) +
           panels.lane(QStringLiteral("Buffer overflows"), &HistoryColumn::overflows) +
           panels.lane(QStringLiteral("Losses of the camera"), &HistoryColumn::losses) + panels.timeAxis();
    return element("div class=\"course\"", all);
}
