// SPDX-License-Identifier: GPL-3.0-or-later
// What the diagnosis has to know of a camera's run.
#ifndef KESTROVA_MEASURE_CAUSES_H
#define KESTROVA_MEASURE_CAUSES_H

#include "LinkTotals.h"
#include "RunDiagnosis.h"

/// Of a stopped camera; `links` of the whole run.
DiagnosisInput diagnosisInput(const MeasuredCamera& camera, const LinkTable& links);

#endif
