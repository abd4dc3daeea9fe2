// SPDX-License-Identifier: GPL-3.0-or-later
// What the diagnosis has to know of a camera's run.
#ifndef KESTROVA_MEASURE_CAUSES_H
#define KESTROVA_MEASURE_CAUSES_H

#include "Diagnosis.h"
#include "LinkTotals.h"

/// `run` may be longer than what the record has of it. What is not of the record alone, the link, is left out.
DiagnosisInput diagnosisInput(const CxCameraLineData& record, const RunTotals& run);

/// Of a stopped camera; `links` of the whole run.
DiagnosisInput diagnosisInput(const MeasuredCamera& camera, const LinkTable& links);

#endif
