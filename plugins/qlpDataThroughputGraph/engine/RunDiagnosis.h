// SPDX-License-Identifier: GPL-3.0-or-later
// What the diagnosis has to know of a record's run.
#ifndef KESTROVA_RUNDIAGNOSIS_H
#define KESTROVA_RUNDIAGNOSIS_H

#include "Diagnosis.h"

class CxCameraLineData;

/// Differences of the frame counters from a run's first sample to its last; those that the camera lacks or samples do
/// not keep are unknown.
CounterDifferences counterDifferences(const CxCameraLineData& record);

/// `run` may be longer than what the record has of it. What is not of the record alone, the link, is left out. Takes
/// the record's mutex.
DiagnosisInput diagnosisInput(const CxCameraLineData& record, const RunTotals& run);

#endif
