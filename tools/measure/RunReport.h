// SPDX-License-Identifier: GPL-3.0-or-later
// The report of a finished run: gathers what it says and writes it.
#ifndef KESTROVA_MEASURE_RUNREPORT_H
#define KESTROVA_MEASURE_RUNREPORT_H

#include "Output.h"
#include "ReportContent.h"
#include "RunRecorder.h"

/// Cameras in the order of the summary.
ReportContent reportContent(const Summary& summary, const std::vector<std::unique_ptr<MeasuredCamera>>& cameras,
                            const RunRecorder& recorder);

/// Writes it as HTML. False, and a reason, if the file does not take all of it.
bool writeHtmlReport(const ReportContent& content, const QString& fileName, QString* error);

#endif
