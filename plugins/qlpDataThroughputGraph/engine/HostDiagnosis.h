// SPDX-License-Identifier: GPL-3.0-or-later
// Where on its way to this program a camera's data suffered, for cameras that can tell.
#ifndef KESTROVA_HOSTDIAGNOSIS_H
#define KESTROVA_HOSTDIAGNOSIS_H

#include "Diagnosis.h"

/// Possible causes of lost frames, and of a lowest throughput that is this machine's. None without `input.host`.
std::vector<Finding> hostFindings(const DiagnosisInput& input);

#endif
