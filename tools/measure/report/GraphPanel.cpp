// SPDX-License-Identifier: GPL-3.0-or-later
// Places labels by percentages.
#include "GraphPanel.h"

namespace {

constexpr double percent = 100.0;

Markup valueLabels(const ValueScale& scale)
{
    Markup labels;
    for (const GraphTick& tick : scale.ticks)
        labels += numbered("<span style=\"bottom:%1%\">", tick.at * percent) + plain(tick.label) + literal("</span>");
    return element("div class=\"values\"", labels);
}

} // namespace

Markup graphKey(const char* swatch, const QString& text)
{
    return element("span class=\"key\"", element(swatch, Markup()) + plain(text));
}

/// Below its tick, but at the ends inside.
Markup graphTicks(const std::vector<GraphTick>& ticks)
{
    constexpr double nearEnd = 0.06;
    Markup labels;
    for (const GraphTick& tick : ticks) {
        const char* place = tick.at < nearEnd         ? "<span class=\"first\" style=\"left:%1%\">"
                            : tick.at > 1.0 - nearEnd ? "<span class=\"last\" style=\"left:%1%\">"
                                                      : "<span style=\"left:%1%\">";
        labels += numbered(place, tick.at * percent) + plain(tick.label) + literal("</span>");
    }
    return element("div class=\"times\"", labels);
}

/// Above its height, near the upper edge below it.
Markup graphLabel(const char* tag, const QString& text, double height, int place)
{
    constexpr double width = 31.0; // percent
    constexpr double nearEdge = 0.8;
    return numbered(height > nearEdge ? "<span class=\"label below\" style=\"bottom:%1%;right:%2%\">"
                                      : "<span class=\"label\" style=\"bottom:%1%;right:%2%\">",
                    height * percent, place * width) +
           element(tag, text) + literal("</span>");
}

Markup graphPanel(const char* figure, const QString& title, const Markup& keys, const ValueScale& scale,
                  const SvgGraph& graph, const Markup& labels)
{
    return element(figure, element("figcaption", element("b", title) + keys) +
                               element("div class=\"plot\"", valueLabels(scale) + graph.drawing() + labels));
}
