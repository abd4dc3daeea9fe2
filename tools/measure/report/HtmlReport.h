// SPDX-License-Identifier: GPL-3.0-or-later
// A run's report as one HTML file that needs nothing else: for a ticket, a screen without a network, or paper.
#ifndef KESTROVA_MEASURE_HTMLREPORT_H
#define KESTROVA_MEASURE_HTMLREPORT_H

#include "ReportContent.h"

/// UTF-8. Loads nothing, runs nothing; texts of the content are shown as they are.
QByteArray htmlReport(const ReportContent& content);

#endif
