// SPDX-License-Identifier: GPL-3.0-or-later
// What a report does not say about itself: a JSON file beside it, for those who find both a year later.
#ifndef KESTROVA_MEASURE_REPORTDESCRIPTION_H
#define KESTROVA_MEASURE_REPORTDESCRIPTION_H

#include "Output.h"

/// report.csv.json
QString descriptionFile(const QString& reportFile);

/// False, and a reason, if the file cannot be written. After the camera's measurement.
bool writeDescription(const MeasuredCamera& camera, const ReportSummary& report, QString* error);

#endif
