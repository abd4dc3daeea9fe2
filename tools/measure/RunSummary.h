// SPDX-License-Identifier: GPL-3.0-or-later
// The end of a run: what is written, what is said, and the program's exit code.
#ifndef KESTROVA_MEASURE_RUNSUMMARY_H
#define KESTROVA_MEASURE_RUNSUMMARY_H

#include "IntervalLog.h"
#include "Output.h"
#include "RunRecorder.h"

/// Writes the reports of the stopped cameras and the HTML report, and prints the summary. `reports` holds a file for
/// each camera, or nothing; `log` may be null. Returns the exit code.
int finishRun(const Options& options, const std::vector<std::unique_ptr<MeasuredCamera>>& cameras,
              const QStringList& reports, const IntervalLog* log, const RunRecorder& recorder, Output& output);

#endif
