// SPDX-License-Identifier: GPL-3.0-or-later
// The course of a camera's run as graphs over one time axis, in SVG without a script.
#ifndef KESTROVA_MEASURE_COURSEGRAPH_H
#define KESTROVA_MEASURE_COURSEGRAPH_H

#include "Markup.h"
#include "ReportContent.h"

/// Throughput, buffer level, gaps, and a lane for each kind of loss; nothing for a camera without a course. Numbers
/// and names stand beside the drawings as text, so that they stay readable at every width.
Markup courseGraphs(const ReportCamera& camera);

#endif
