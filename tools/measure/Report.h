// SPDX-License-Identifier: GPL-3.0-or-later
// The CSV report of a finished run.
#ifndef KESTROVA_MEASURE_REPORT_H
#define KESTROVA_MEASURE_REPORT_H

#include "Output.h"

/// The report's file of each camera. Camera texts are reduced to what is safe in a file name, and kept apart.
QStringList reportFiles(const QString& pattern, const std::vector<SxCameraInfo>& cameras);

/// Whether the report can be written there later; leaves what the file holds. A run of hours must not end with that
/// question.
bool canWriteReport(const QString& fileName, QString* error);

/// Writes every kept frame. Nothing, and a reason, if the file cannot be written.
std::optional<ReportSummary> writeReport(const CxCameraLineData& record, const QString& fileName, QString* error);

#endif
