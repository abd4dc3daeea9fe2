// SPDX-License-Identifier: GPL-3.0-or-later
// The files of a run, looked at before it.
#ifndef KESTROVA_MEASURE_RUNFILES_H
#define KESTROVA_MEASURE_RUNFILES_H

#include "Options.h"

/// Why the run's files cannot be what they are meant to be: one cannot be written, or two are the same, whatever they
/// are called; empty if all is well. `reports` are the CSV reports. Leaves what the files hold; those of the reports
/// exist afterwards.
QString faultOfFiles(const Options& options, const QStringList& reports);

#endif
