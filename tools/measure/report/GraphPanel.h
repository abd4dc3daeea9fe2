// SPDX-License-Identifier: GPL-3.0-or-later
// What stands around a drawing: its title, its keys and the numbers beside it. Text, so that it can be read at every
// width.
#ifndef KESTROVA_MEASURE_GRAPHPANEL_H
#define KESTROVA_MEASURE_GRAPHPANEL_H

#include "SvgGraph.h"

/// What something drawn is called; `swatch` has its class.
Markup graphKey(const char* swatch, const QString& text);
/// A text at a height of the drawing (0 to 1), the `place`th from the right of those that may have about one height.
Markup graphLabel(const char* tag, const QString& text, double height, int place);
/// `figure`: the element with its classes. `labels` lie over the drawing.
Markup graphPanel(const char* figure, const QString& title, const Markup& keys, const ValueScale& scale,
                  const SvgGraph& graph, const Markup& labels = {});
/// The numbers below one or several drawings.
Markup graphTicks(const std::vector<GraphTick>& ticks);

#endif
