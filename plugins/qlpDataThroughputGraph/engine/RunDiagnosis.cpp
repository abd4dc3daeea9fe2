// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the figures of a record's run.
#include "RunDiagnosis.h"

#include <algorithm>

#include "CameraLineData.h"
#include "TimeMath.h"

namespace {

/// What the capacity still keeps of the run.
template<typename List>
void addHistory(DiagnosisInput& input, const List& kept)
{
    // Of a run that goes on there may be more by now.
    const quint64 frames = input.run.frames - input.run.skippedFrames;
    input.droppedFrames = frames > kept.size() ? frames - kept.size() : 0;
    if (!kept.empty())
        input.keptS = static_cast<double>(kept.back()->timestampUs - kept.front()->timestampUs) / double(usPerSecond);
}

} // namespace

CounterDifferences counterDifferences(const CxCameraLineData& data)
{
    const RunCounters ends = data.runCounters();
    const auto difference = [&](VN_COUNTER_SELECTOR kind, qint32 CounterSample::*value) -> std::optional<double> {
        if (!ends.first || !ends.last || !data.isCounterSupported(kind))
            return std::nullopt;
        if (ends.reset[kind])
            return std::nullopt;
        return static_cast<quint32>((*ends.last).*value) - static_cast<quint32>((*ends.first).*value); // they wrap
    };
    CounterDifferences differences;
    forSampledCounters([&](const FrameCounter& counter, std::size_t) {
        differences[counter.selector] = difference(counter.selector, counter.sample);
    });
    return differences;
}

DiagnosisInput diagnosisInput(const CxCameraLineData& record, const RunTotals& run)
{
    DiagnosisInput input;
    input.run = run;
    input.driftPpm = record.clockDriftPpm();
    const bool throughput = record.measMode == MeasModeDataThroughput;
    if (!throughput) {
        input.counters = counterDifferences(record);
        const auto reset = record.runCounters().reset;
        input.countersReset = static_cast<int>(std::count(reset.begin(), reset.end(), true));
    } else if (record.requiredThroughput > 0) {
        input.required = record.requiredThroughput;
    }
    input.bufferSize = record.bufferSizeKnown ? record.cameraBufferSize.load() : 0;
    input.samplePeriod = record.samplePeriod;
    const QMutexLocker lock(&record.mutex);
    if (throughput)
        addHistory(input, record.frameList);
    else
        addHistory(input, record.counterSampleList);
    return input;
}
