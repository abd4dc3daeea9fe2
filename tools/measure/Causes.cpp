// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the figures of a run for the diagnosis.
#include "Causes.h"

#include "Figures.h"
#include "TimeMath.h"

namespace {

/// What the capacity still keeps of the run.
template<typename List>
void addHistory(DiagnosisInput& input, const List& kept)
{
    input.droppedFrames = input.run.frames - input.run.skippedFrames - kept.size();
    if (!kept.empty())
        input.keptS = static_cast<double>(kept.back()->timestampUs - kept.front()->timestampUs) / double(usPerSecond);
}

} // namespace

DiagnosisInput diagnosisInput(const CxCameraLineData& record, const RunTotals& run)
{
    DiagnosisInput input;
    input.run = run;
    input.driftPpm = record.clockDriftPpm();
    const bool throughput = record.measMode == MeasModeDataThroughput;
    if (!throughput)
        input.counters = counterDifferences(record);
    else if (record.requiredThroughput > 0)
        input.required = record.requiredThroughput;
    input.bufferSize = record.bufferSizeKnown ? record.cameraBufferSize.load() : 0;
    input.samplePeriod = record.samplePeriod;
    const QMutexLocker lock(&record.mutex);
    if (throughput)
        addHistory(input, record.frameList);
    else
        addHistory(input, record.counterSampleList);
    return input;
}

DiagnosisInput diagnosisInput(const MeasuredCamera& camera, const LinkTable& links)
{
    DiagnosisInput input = diagnosisInput(camera.record(), camera.record().runTotals());
    if (const LinkTotals* link = links.find(camera.link()))
        input.link = LinkUse{link->name,
                             link->rate,
                             link->delivered().value_or(0.0),
                             link->cameras,
                             input.run.deliveredThroughput().value_or(0.0),
                             link->busiest};
    return input;
}
