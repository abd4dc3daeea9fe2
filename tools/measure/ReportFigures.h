// SPDX-License-Identifier: GPL-3.0-or-later
// Figures with names that need no manual.
#ifndef KESTROVA_MEASURE_REPORTFIGURES_H
#define KESTROVA_MEASURE_REPORTFIGURES_H

#include "ReportContent.h"
#include "Verdict.h"

/// "Longest gap"; a figure without a name is called by its key.
QString figureTitle(const char* key);

/// A number's digits in groups of three.
QString groupedDigits(QString number);

/// In an order for readers. Those whose limits are broken say so.
std::vector<ReportFigure> reportFigures(const Figures& figures, const Verdict& verdict);

#endif
