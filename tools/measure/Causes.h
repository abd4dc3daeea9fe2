// SPDX-License-Identifier: GPL-3.0-or-later
// What the diagnosis has to know of a camera's run.
#ifndef KESTROVA_MEASURE_CAUSES_H
#define KESTROVA_MEASURE_CAUSES_H

#include "Diagnosis.h"
#include "MeasuredCamera.h"

/// Of a stopped camera.
DiagnosisInput diagnosisInput(const MeasuredCamera& camera);

#endif
