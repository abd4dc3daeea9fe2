// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of a record, oldest first, with the aggregates that make a refresh cost what is new: of every frame, and
// of groups of 16, 256, 4096... frames.
#ifndef KESTROVA_FRAMELIST_H
#define KESTROVA_FRAMELIST_H

#include <memory>
#include <vector>

#include "FigureTree.h"
#include "FrameAggregates.h"
#include "SampleRecords.h"
#include "StepFigures.h"
#include "TimeIndex.h"

/// Figures of a range of frames.
struct RangeFigures
{
    Extremes extremes;
    quint64 overflows = 0;      ///< frames in which the buffer overflows
    double throughputSum = 0.0; ///< MB/s

    void add(const RangeFigures& other)
    {
        extremes.add(other.extremes);
        overflows += other.overflows;
        throughputSum += other.throughputSum;
    }
};

/// Owns the frames. Has no lock: its owner calls it under the one that guards it. The figures of groups are those of
/// the frames that the list holds, whatever has left.
class FrameList : public StepQueries<FrameList>
{
public:
    struct Frame
    {
        std::unique_ptr<FrameRecord> record;
        FrameAggregates aggregates;
        quint32 missing = 0; ///< frames between this one and the one before it
    };

    /// Aggregates being made for other settings. run() needs no lock, as between beginRemake() and endRemake() no
    /// frame is freed, and no memory that it could not do without.
    class Remake
    {
    public:
        void run() noexcept;

    private:
        friend class FrameList;
        EvaluationSettings evaluation;
        quint64 firstRecord = 0; ///< number of the first frame
        std::vector<const FrameRecord*> records;
        std::vector<FrameAggregates> remade;
    };

    using const_iterator = SubscriptIterator<FrameList>;

    bool empty() const { return size() == 0; }
    quint64 size() const { return frames.size(); }
    const std::unique_ptr<FrameRecord>& operator[](quint64 index) const { return frames[index].record; }
    const std::unique_ptr<FrameRecord>& front() const { return (*this)[0]; }
    const std::unique_ptr<FrameRecord>& back() const { return (*this)[size() - 1]; }
    const_iterator begin() const { return {*this, 0}; }
    const_iterator end() const { return {*this, size()}; }

    /// Afterwards push_back() and that many takeFront() need no memory, so that each of them happens wholly or not.
    void makeRoom(quint64 leaving);
    /// The frame does not change any more. Without given aggregates they are made here.
    void push_back(std::unique_ptr<FrameRecord> record);
    void push_back(std::unique_ptr<FrameRecord> record, FrameAggregates aggregates,
                   const EvaluationSettings& settings);
    /// Unlinks the oldest frame; the caller frees it when it has left the lock. Empty while a remake may look at it.
    Frame takeFront();
    void pop_front() { takeFront(); }
    void clear() { *this = FrameList(); }

    // What follows is for the statistics.
    const FrameAggregates& aggregates(quint64 index) const { return frames[index].aggregates; }
    const TimeIndex& starts() const { return startTimes; }
    const TimeIndex& ends() const { return endTimes; } ///< of the last interval, or later
    /// Figures of frames begin..end (exclusive), for the settings that the aggregates are made for.
    RangeFigures figures(quint64 begin, quint64 end) const;
    const TimeIndex& times() const { return startTimes; }

    /// Whether some aggregates are for other settings than these.
    bool isStale(const EvaluationSettings& settings) const;
    /// Some of the frames whose aggregates are stale.
    Remake beginRemake(const EvaluationSettings& settings);
    /// Puts the new aggregates in place. What is returned and what `remake` holds then is to be freed outside the
    /// lock.
    std::vector<Frame> endRemake(Remake& remake) noexcept;

private:
    friend class StepQueries<FrameList>;
    quint64 firstNumber() const { return frames.dropped(); }
    quint64 endNumber() const { return firstNumber() + size(); }
    // Of the frame with that number.
    RangeFigures frameFigures(quint64 number) const;
    StepFigures step(quint64 number) const;
    struct Leaf
    {
        const FrameList& list;
        RangeFigures operator()(quint64 number) const { return list.frameFigures(number); }
    };

    Tape<Frame> frames;
    TimeIndex startTimes;
    TimeIndex endTimes;
    FigureTree<RangeFigures> figureTree;

    EvaluationSettings evaluation; ///< of all aggregates but the stale ones
    quint64 staleBegin = 0;        ///< numbers
    quint64 staleEnd = 0;
    bool remaking = false;
    std::vector<Frame> retiredFrames; ///< unlinked during a remake
};

#endif
