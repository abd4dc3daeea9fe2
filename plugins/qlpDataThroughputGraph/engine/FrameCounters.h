// SPDX-License-Identifier: GPL-3.0-or-later
// The frame counters of a camera: what each is called, and where a sample keeps it.
#ifndef KESTROVA_FRAMECOUNTERS_H
#define KESTROVA_FRAMECOUNTERS_H

#include <array>
#include <cstddef>
#include <optional>

#include <vnCore/vnTypes.h>

#include "SampleRecords.h"

struct FrameCounter
{
    VN_COUNTER_SELECTOR selector;
    const char* name;              ///< as the log and the settings know it; a translation is its user's business
    qint32 CounterSample::*sample; ///< null: shown, but not kept
};

/// In the order of the selectors, which is that of records, curves and figures.
constexpr std::array<FrameCounter, 6> frameCounters{{
    {VN_COUNTER_TRANSPORT_SKIP, "Transport skip", &CounterSample::transportSkip},
    {VN_COUNTER_API_SKIP, "API skip", &CounterSample::apiSkip},
    {VN_COUNTER_TRANSFERRED, "Transferred", nullptr},
    {VN_COUNTER_MISSED_TRG_OVERLAP, "Missed trg. overlap", &CounterSample::missedTrgOverlap},
    {VN_COUNTER_MISSED_TRG_OVERFLOW, "Missed trg overflow", &CounterSample::missedTrgOverflow},
    {VN_COUNTER_BUFFER_OVERFLOW, "Buffer overflow", &CounterSample::bufferOverflow},
}};

/// By how much each counter grew over a run, by selector; nothing: not known.
using CounterDifferences = std::array<std::optional<double>, frameCounters.size()>;

/// Counters that samples keep.
constexpr std::size_t sampledCounters = frameCounters.size() - 1;

/// Calls `use(counter, index)` for each counter that samples keep.
template<typename Use>
void forSampledCounters(Use use)
{
    std::size_t index = 0;
    for (const FrameCounter& counter : frameCounters) {
        if (counter.sample != nullptr)
            use(counter, index++);
    }
}

#endif
