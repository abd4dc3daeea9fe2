// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of a frame and of groups of its block intervals, made once and combined by every refresh. They give the
// very results that a visit of every interval gives: speed falls strictly as the tick difference grows and the buffer
// level rises with the occupancy, so the extremes are kept as these, and a group that a query cuts is visited from
// its start.
#ifndef KESTROVA_FRAMEAGGREGATES_H
#define KESTROVA_FRAMEAGGREGATES_H

#include <limits>
#include <memory>

#include <QtCore/QtGlobal>

class FrameIntervalCounter;
struct FrameRecord;

/// What aggregates depend on.
struct EvaluationSettings
{
    quint32 samplePeriod = 0;      ///< bytes
    qint32 requiredThroughput = 0; ///< MB/s
    qint32 bufferSize = 0;         ///< bytes

    bool operator==(const EvaluationSettings& other) const
    {
        return samplePeriod == other.samplePeriod && requiredThroughput == other.requiredThroughput &&
               bufferSize == other.bufferSize;
    }
    bool operator!=(const EvaluationSettings& other) const { return !(*this == other); }
};

/// The slowest and the fullest of any number of block intervals.
struct Extremes
{
    /// Occupancy from the first overflow of a frame to its end, where the level stays at 100 percent.
    static constexpr double overflowed = std::numeric_limits<double>::infinity();

    quint64 ticks = 0; ///< largest tick difference of an interval
    double fill = 0.0; ///< highest occupancy, bytes

    void add(const Extremes& other)
    {
        if (other.ticks > ticks)
            ticks = other.ticks;
        if (other.fill > fill)
            fill = other.fill;
    }
    bool exceeds(const Extremes& other) const { return ticks > other.ticks || fill > other.fill; }
    /// MB/s; the largest double if there is no interval of finite speed.
    double minSpeed(const EvaluationSettings& settings) const;
    /// Percent; 0 where a buffer of 0 bytes leaves it undefined.
    double level(const EvaluationSettings& settings) const;
};

struct BlockGroup
{
    /// More cost a refresh time, fewer memory.
    static constexpr quint64 intervals = 96;

    double fillBefore = 0.0; ///< occupancy at the group's start
    Extremes extremes;
};

/// Of one frame and one set of settings. Without groups the frame's intervals are visited instead: slower, never
/// wrong.
struct FrameAggregates
{
    /// Below this, visiting the frame costs less than the memory of groups is worth.
    static constexpr quint64 blocksForGroups = 512;

    Extremes extremes;
    double throughput = 0.0;              ///< MB/s; infinite for a frame that took no time
    bool increasing = false;              ///< every tick lies after the one before it, counted from the first
    std::unique_ptr<BlockGroup[]> groups; ///< none for small frames, disordered ones, and without memory
};

/// A frame of one block has none.
quint64 intervalCount(const FrameRecord& frame);

/// Visits every interval; for a frame that nobody changes, so without a lock. `counter` may be null, else the intervals
/// are counted in the same visit.
FrameAggregates makeAggregates(const FrameRecord& frame, const EvaluationSettings& settings,
                               FrameIntervalCounter* counter = nullptr);

/// Evaluates parts of frames. Parts that follow each other in one frame continue where the last one ended.
class FramePartEvaluator
{
public:
    explicit FramePartEvaluator(const EvaluationSettings& settings) : evaluation(settings) {}

    /// Adds intervals begin..end (exclusive) to `into`. What cannot raise it is not looked at.
    void add(const FrameRecord& frame, const FrameAggregates& aggregates, quint64 begin, quint64 end, Extremes& into);

private:
    void addPartOfGroup(const FrameRecord& frame, const BlockGroup& group, quint64 groupBegin, quint64 begin,
                        quint64 end, Extremes& into);

    EvaluationSettings evaluation;
    // Where the occupancy is known beside the starts of groups.
    const FrameRecord* lastFrame = nullptr;
    quint64 next = 0;
    double occupancy = 0.0;
};

/// The first interval from `begin` on whose end lies within fromUs..toUs; intervalCount() if there is none.
quint64 findInterval(const FrameRecord& frame, const FrameAggregates& aggregates, quint64 begin, qint64 fromUs,
                     qint64 toUs);

/// Asks the caches for what findInterval() and FramePartEvaluator will look at for that time.
void prefetchIntervals(const FrameRecord& frame, const FrameAggregates& aggregates, qint64 timeUs);

/// When an interval ends.
qint64 intervalTimeUs(const FrameRecord& frame, quint64 interval);

#endif
