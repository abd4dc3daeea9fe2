// SPDX-License-Identifier: GPL-3.0-or-later
// Making the aggregates of a frame, and evaluating and searching parts of one.
#include "FrameAggregates.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <new>

#include "BlockModel.h"
#include "IntervalHistogram.h"
#include "SampleRecords.h"
#include "TimeMath.h"

namespace {

/// The buffer as the level sees it: once overflowed, overflowed until the frame ends.
class FillModel
{
public:
    FillModel(const EvaluationSettings& settings, double fill)
        : period(settings.samplePeriod),
          required(settings.requiredThroughput),
          size(settings.bufferSize),
          occupancy(fill)
    {
    }
    double fill() const { return occupancy; }
    bool isOverflowed() const { return occupancy == Extremes::overflowed; }

    /// Visits intervals begin..end (exclusive) and returns the highest occupancy; occupancies that are not a number
    /// do not count.
    double visit(const quint64* ticks, quint64 begin, quint64 end)
    {
        double highest = 0.0;
        // Divisions first, a group at a time: they do not depend on each other.
        std::array<double, BlockGroup::intervals> deltas;
        while (begin < end && !isOverflowed()) {
            const quint64 count = std::min<quint64>(end - begin, deltas.size());
            for (quint64 i = 0; i < count; ++i)
                deltas[i] = BlockInterval(ticks[begin + i + 1] - ticks[begin + i], period).delta(required);
            for (quint64 i = 0; i < count && !isOverflowed(); ++i) {
                add(deltas[i]);
                if (occupancy > highest)
                    highest = occupancy;
            }
            begin += count;
        }
        return isOverflowed() ? Extremes::overflowed : highest;
    }

private:
    void add(double bytes)
    {
        occupancy += bytes;
        if (occupancy < 0.0)
            occupancy = 0.0;
        else if (occupancy > size)
            occupancy = Extremes::overflowed;
    }

    quint32 period;
    double required;
    double size;
    double occupancy;
};

quint64 largestDifference(const quint64* ticks, quint64 begin, quint64 end)
{
    quint64 largest = 0;
    for (quint64 i = begin; i < end; ++i)
        largest = std::max(largest, ticks[i + 1] - ticks[i]);
    return largest;
}

/// Counted from the first tick, so that a counter that wraps within a frame is in order.
bool isIncreasing(const quint64* ticks, quint64 begin, quint64 end)
{
    bool increasing = true;
    for (quint64 i = begin; i < end; ++i)
        increasing &= ticks[i + 1] - ticks[0] > ticks[i] - ticks[0];
    return increasing;
}

} // namespace

double Extremes::minSpeed(const EvaluationSettings& settings) const
{
    const double speed = BlockInterval(ticks, settings.samplePeriod).speed;
    return speed < DBL_MAX ? speed : DBL_MAX;
}

double Extremes::level(const EvaluationSettings& settings) const
{
    if (fill == overflowed)
        return 100.0;
    const double level = fill / settings.bufferSize * 100.0;
    return level > 0.0 ? level : 0.0;
}

quint64 intervalCount(const FrameRecord& frame)
{
    return frame.blockTicks && frame.blockCount > 1 ? frame.blockCount - 1 : 0;
}

FrameAggregates makeAggregates(const FrameRecord& frame, const EvaluationSettings& settings,
                               FrameIntervalCounter* counter)
{
    FrameAggregates aggregates;
    aggregates.throughput = frameThroughput(frame, settings.samplePeriod);
    const quint64 count = intervalCount(frame);
    const quint64* ticks = frame.blockTicks.get();
    if (frame.blockCount >= FrameAggregates::blocksForGroups)
        aggregates.groups.reset(new (std::nothrow) BlockGroup[(count - 1) / BlockGroup::intervals + 1]);

    bool increasing = true;
    FillModel buffer(settings, 0.0);
    for (quint64 begin = 0; begin < count; begin += BlockGroup::intervals) {
        const quint64 end = std::min(begin + BlockGroup::intervals, count);
        BlockGroup group;
        group.fillBefore = buffer.fill();
        group.extremes.ticks = largestDifference(ticks, begin, end);
        group.extremes.fill = buffer.visit(ticks, begin, end);
        increasing &= isIncreasing(ticks, begin, end);
        if (counter != nullptr)
            counter->count(ticks, begin, end);
        aggregates.extremes.add(group.extremes);
        if (aggregates.groups)
            aggregates.groups[begin / BlockGroup::intervals] = group;
    }
    if (counter != nullptr)
        counter->endFrame();
    aggregates.increasing = increasing;
    if (!increasing)
        aggregates.groups.reset();
    return aggregates;
}

void FramePartEvaluator::add(const FrameRecord& frame, const FrameAggregates& aggregates, quint64 begin, quint64 end,
                             Extremes& into)
{
    if (begin >= end || !aggregates.extremes.exceeds(into))
        return;
    if (!aggregates.groups) {
        addPartOfGroup(frame, BlockGroup{0.0, aggregates.extremes}, 0, begin, end, into);
        return;
    }
    const quint64 firstGroup = begin / BlockGroup::intervals;
    const quint64 lastGroup = (end - 1) / BlockGroup::intervals;
    const bool cutsFirst = begin % BlockGroup::intervals != 0;
    const bool cutsLast = end % BlockGroup::intervals != 0 && end != intervalCount(frame);
    const auto addCut = [&](quint64 group) {
        const quint64 groupBegin = group * BlockGroup::intervals;
        addPartOfGroup(frame, aggregates.groups[group], groupBegin, std::max(begin, groupBegin),
                       std::min(end, groupBegin + BlockGroup::intervals), into);
    };
    // Whole groups first: often they make it needless to visit the cut ones.
    for (quint64 group = firstGroup + cutsFirst; group + cutsLast <= lastGroup; ++group)
        into.add(aggregates.groups[group].extremes);
    if (cutsFirst)
        addCut(firstGroup);
    if (cutsLast && !(cutsFirst && firstGroup == lastGroup))
        addCut(lastGroup);
}

void FramePartEvaluator::addPartOfGroup(const FrameRecord& frame, const BlockGroup& group, quint64 groupBegin,
                                        quint64 begin, quint64 end, Extremes& into)
{
    const quint64* ticks = frame.blockTicks.get();
    if (group.extremes.ticks > into.ticks)
        into.ticks = std::max(into.ticks, largestDifference(ticks, begin, end));
    if (!(group.extremes.fill > into.fill))
        return;
    const bool continues = lastFrame == &frame && next >= groupBegin && next <= begin;
    FillModel buffer(evaluation, continues ? occupancy : group.fillBefore);
    buffer.visit(ticks, continues ? next : groupBegin, begin);
    into.fill = std::max(into.fill, buffer.visit(ticks, begin, end));
    lastFrame = &frame;
    next = end;
    occupancy = buffer.fill();
}

quint64 findInterval(const FrameRecord& frame, const FrameAggregates& aggregates, quint64 begin, qint64 fromUs,
                     qint64 toUs)
{
    const quint64 count = intervalCount(frame);
    const auto isVisible = [&](quint64 i) {
        const qint64 timeUs = intervalTimeUs(frame, i);
        return fromUs <= timeUs && timeUs <= toUs;
    };
    if (begin >= count)
        return count;
    if (!aggregates.increasing) {
        while (begin < count && !isVisible(begin))
            ++begin;
        return begin;
    }

    const quint64* ends = frame.blockTicks.get() + 1;
    const quint64 origin = frame.blockTicks[0];
    const qint64 offsetUs = saturatingSub(fromUs, frame.timestampUs);
    const quint64 wanted = offsetUs > 0 ? static_cast<quint64>(offsetUs) : 0;
    if (wanted > (ends[count - 1] - origin) / ticksPerUs)
        return count;
    const quint64 target = wanted * ticksPerUs; // reached when a tick, counted from the first one, is at least this

    // Ticks are nearly evenly spaced: steps that double from the place where an even spacing puts the target.
    const auto isBefore = [&](quint64 i) { return ends[i] - origin < target; };
    const quint64 first = ends[begin] - origin;
    if (target <= first)
        return isVisible(begin) ? begin : count;
    const double share = static_cast<double>(target - first) / static_cast<double>(ends[count - 1] - origin - first);
    quint64 low = begin + 1; // everything below it is before the target
    quint64 high = count - 1;
    quint64 guess = begin + static_cast<quint64>(share * static_cast<double>(count - 1 - begin));
    guess = std::clamp(guess, low, high);
    if (isBefore(guess)) {
        for (quint64 step = 1; isBefore(guess); step *= 2) {
            low = guess + 1;
            guess = std::min(guess + step, high);
        }
        high = guess;
    } else {
        high = guess;
        for (quint64 step = 1; guess > low; step *= 2) {
            guess -= std::min(step, guess - low);
            if (isBefore(guess)) {
                low = guess + 1;
                break;
            }
            high = guess;
        }
    }
    while (low < high) {
        const quint64 middle = low + (high - low) / 2;
        if (isBefore(middle))
            low = middle + 1;
        else
            high = middle;
    }
    return isVisible(low) ? low : count;
}

void prefetchIntervals(const FrameRecord& frame, const FrameAggregates& aggregates, qint64 timeUs)
{
    constexpr quint64 lineTicks = 8;
    const quint64 offsetTicks =
        static_cast<quint64>(std::max<qint64>(saturatingSub(timeUs, frame.timestampUs), 0)) * ticksPerUs;
    const quint64 count = intervalCount(frame);
    if (!aggregates.groups || offsetTicks >= frame.durationTicks)
        return;
    // Where an even spacing puts the time.
    const double share = static_cast<double>(offsetTicks) / static_cast<double>(frame.durationTicks);
    const quint64 group = static_cast<quint64>(share * static_cast<double>(count)) / BlockGroup::intervals;
    const quint64* ticks = frame.blockTicks.get();
    __builtin_prefetch(ticks);
    __builtin_prefetch(ticks + count);
    __builtin_prefetch(&aggregates.groups[group]);
    for (quint64 i = 0; i < BlockGroup::intervals; i += lineTicks)
        __builtin_prefetch(ticks + group * BlockGroup::intervals + i);
}

qint64 intervalTimeUs(const FrameRecord& frame, quint64 interval)
{
    const quint64 offsetUs = (frame.blockTicks[interval + 1] - frame.blockTicks[0]) / ticksPerUs;
    return saturatingAdd(frame.timestampUs, static_cast<qint64>(offsetUs));
}
