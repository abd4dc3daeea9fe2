// SPDX-License-Identifier: GPL-3.0-or-later
// A curve over a logarithmic axis.
#include "DistributionGraph.h"

#include <algorithm>
#include <cmath>

#include "GraphPanel.h"

namespace {

constexpr double headroom = 1.15;
constexpr int fewSteps = 3;

/// "0.1 %", "100 %"
QString shareText(int decade)
{
    return QString::number(std::pow(10.0, decade + 2), 'f', std::max(0, -decade - 2)) + QChar(QChar::Nbsp) +
           QLatin1Char('%');
}

} // namespace

Markup distributionGraph(const std::vector<ReportQuantile>& distribution)
{
    if (distribution.empty())
        return {};
    const int lowest = static_cast<int>(std::floor(std::log10(distribution.front().share) + 1e-9));
    const auto at = [lowest](double share) { return lowest == 0 ? 1.0 : 1.0 - std::log10(share) / lowest; };
    std::vector<GraphTick> decades;
    for (int decade = lowest; decade <= 0; ++decade)
        decades.push_back({at(std::pow(10.0, decade)), shareText(decade)});

    // The fastest blocks may have taken no time at all: they do not set the scale.
    const auto median = std::find_if(distribution.begin(), distribution.end(),
                                     [](const ReportQuantile& quantile) { return quantile.share >= 0.5; });
    const ValueScale scale =
        valueScale((median == distribution.end() ? distribution.back() : *median).throughput * headroom, fewSteps);
    std::vector<GraphPoint> points;
    points.reserve(distribution.size());
    for (const ReportQuantile& quantile : distribution)
        points.push_back({at(quantile.share), quantile.throughput});
    SvgGraph graph({}, scale.most);
    graph.grid(scale.ticks, decades);
    graph.curve("lowest", points);
    return element("div class=\"course\"",
                   graphPanel("figure class=\"panel\"", QStringLiteral("Block throughput, MB/s"),
                              plain(QStringLiteral("that so many blocks had at most")), scale, graph) +
                       graphTicks(decades));
}
