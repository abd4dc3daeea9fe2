// SPDX-License-Identifier: GPL-3.0-or-later
// How many blocks were how slow.
#ifndef KESTROVA_MEASURE_DISTRIBUTIONGRAPH_H
#define KESTROVA_MEASURE_DISTRIBUTIONGRAPH_H

#include "Markup.h"
#include "ReportContent.h"

/// Throughput over the share of blocks that had at most that, rare ones shown as wide as frequent ones; nothing without
/// a block.
Markup distributionGraph(const std::vector<ReportQuantile>& distribution);

#endif
