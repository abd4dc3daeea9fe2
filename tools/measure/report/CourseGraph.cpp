// SPDX-License-Identifier: GPL-3.0-or-later
// Panels of one width, one below the other.
#include "CourseGraph.h"

#include <algorithm>
#include <initializer_list>

#include "GraphPanel.h"
#include "SvgGraph.h"

namespace {

constexpr double headroom = 1.02; ///< a line at the upper edge is drawn whole
constexpr double percent = 100.0;
constexpr int fewSteps = 3; ///< of a low panel

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

/// A figure that a graph shows.
struct Shown
{
    const char* figure; ///< its key
    const char* name;   ///< in the graph
};

/// The limits of what a graph shows, as lines over it.
class Bounds
{
public:
    /// Their values are shown in `unit` of the figures' own.
    Bounds(const ReportCamera& camera, std::initializer_list<Shown> figures, double unit = 1.0) : ownUnit(unit)
    {
        for (const ReportLimit& limit : camera.limits) {
            for (const Shown& shown : figures) {
                if (limit.figure == QLatin1String(shown.figure))
                    all.push_back({limit, shown.name});
            }
        }
    }

    double highest() const
    {
        double highest = 0.0;
        for (const Bound& bound : all)
            highest = std::max(highest, bound.limit.value);
        return highest;
    }

    void drawInto(SvgGraph& graph) const
    {
        for (const Bound& bound : all)
            graph.level(bound.limit.kept ? "bound" : "bound broken", bound.limit.value);
    }

    /// `most`: the value at the upper edge.
    Markup labels(double most) const
    {
        Markup labels;
        int place = 0;
        for (const auto& [limit, name] : all) {
            const QString text = QStringLiteral("%1 %2 %3")
                                     .arg(QLatin1String(name), QChar(limit.isMinimum ? 0x2265 : 0x2264),
                                          QString::number(limit.value / ownUnit));
            labels += graphLabel(limit.kept ? "b" : "b class=\"broken\"", text, limit.value / most, place++);
        }
        return labels;
    }

private:
    struct Bound
    {
        const ReportLimit& limit;
        const char* name;
    };

    const double ownUnit;
    std::vector<Bound> all;
};

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
        const Bounds bounds(
            camera,
            {{"deliveredMBps", "delivered"}, {"minThroughputMBps", "lowest"}, {"avgThroughputMBps", "average"}});
        const ValueScale scale =
            valueScale(std::max({highest, camera.required.value_or(0.0), bounds.highest()}) * headroom);
        SvgGraph graph = ground(scale, scale.most);
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
        if (any([](const HistoryColumn& column) { return column.isLost(); }))
            keys += graphKey("i class=\"lost\"", QStringLiteral("camera lost"));
        bounds.drawInto(graph);
        return graphPanel("figure class=\"panel tall\"", QStringLiteral("Throughput, MB/s"), keys, scale, graph,
                          bounds.labels(scale.most));
    }

    /// Of 100 %: how near it came to the end.
    Markup bufferLevel() const
    {
        const auto level = [](const HistoryColumn& column) { return column.maxBufferLevel; };
        const ValueScale scale{
            percent, {{0.0, QStringLiteral("0")}, {0.5, QStringLiteral("50")}, {1.0, QStringLiteral("100")}}};
        const Bounds bounds(camera, {{"maxBufferLevelPercent", ""}});
        SvgGraph graph = ground(scale, scale.most);
        graph.area("level-area", zero, level);
        graph.line("level", level);
        bounds.drawInto(graph);
        return graphPanel("figure class=\"panel\"", QStringLiteral("Highest buffer level, %"), {}, scale, graph,
                          bounds.labels(scale.most));
    }

    Markup gaps() const
    {
        const auto gap = [](const HistoryColumn& column) { return column.longestGapMs; };
        constexpr const char* figure = "longestGapMs";
        const double highest = std::max(highestOf(columns, gap), Bounds(camera, {{figure, ""}}).highest());
        const bool seconds = highest >= 1e4;
        const double unit = seconds ? 1e3 : 1.0;
        const Bounds bounds(camera, {{figure, ""}}, unit);
        const ValueScale scale = valueScale(highest / unit * headroom, fewSteps);
        SvgGraph graph = ground(scale, scale.most * unit);
        graph.area("gap-area", zero, gap);
        graph.line("gap", gap);
        bounds.drawInto(graph);
        return graphPanel("figure class=\"panel\"",
                          seconds ? QStringLiteral("Longest time without a frame, s")
                                  : QStringLiteral("Longest time without a frame, ms"),
                          {}, scale, graph, bounds.labels(scale.most * unit));
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
        // A loss of the camera is as long as it was away.
        const bool isSpan = count == &HistoryColumn::losses;
        graph.lostSpans(isSpan ? "away" : "lost");
        graph.strokes("loss", [=](const HistoryColumn& column) {
            return column.*count > 0 && !(isSpan && column.isLost()) ? 1.0 : 0.0;
        });
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
    /// What lies below everything else.
    SvgGraph ground(const ValueScale& scale, double most) const
    {
        SvgGraph graph(columns, most);
        graph.lostSpans("lost");
        graph.grid(scale.ticks, times);
        return graph;
    }

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
