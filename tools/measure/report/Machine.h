// SPDX-License-Identifier: GPL-3.0-or-later
// The machine that a run was made on: throughput depends on it.
#ifndef KESTROVA_MEASURE_MACHINE_H
#define KESTROVA_MEASURE_MACHINE_H

#include "ReportContent.h"

/// System, kernel, processors and memory, and the load of the last minutes. What the system does not tell is left out.
std::vector<ReportFact> machineFacts();

#endif
