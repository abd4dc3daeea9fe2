// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping aggregates of frames and of groups of frames up to date.
#include "FrameList.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "TimeMath.h"

namespace {

/// What one remake takes on: about a millisecond of work, so that few frames wait meanwhile to be freed, and so few
/// frames that putting their aggregates in place takes much less.
constexpr quint64 blocksPerRemake = 200000;
constexpr quint64 framesPerRemake = 2000;

/// A frame out of order may end anywhere.
qint64 endOf(const FrameRecord& record, const FrameAggregates& aggregates)
{
    if (!aggregates.increasing)
        return std::numeric_limits<qint64>::max();
    const quint64 count = intervalCount(record);
    return count == 0 ? record.timestampUs : intervalTimeUs(record, count - 1);
}

} // namespace

void FrameList::push_back(std::unique_ptr<FrameRecord> record)
{
    FrameAggregates aggregates = makeAggregates(*record, evaluation);
    push_back(std::move(record), std::move(aggregates), evaluation);
}

void FrameList::push_back(std::unique_ptr<FrameRecord> record, FrameAggregates aggregates,
                          const EvaluationSettings& settings)
{
    makeRoom(0);
    if (settings != evaluation && empty()) {
        evaluation = settings;
        staleBegin = staleEnd = endNumber();
    }
    if (settings != evaluation) {
        staleBegin = staleBegin == staleEnd ? endNumber() : staleBegin;
        staleEnd = endNumber() + 1;
    }
    startTimes.push_back(record->timestampUs);
    endTimes.push_back(endOf(*record, aggregates));
    const quint32 missing =
        empty() ? 0
                : framesBetween(static_cast<quint32>(back()->frameNumber), static_cast<quint32>(record->frameNumber));
    frames.push_back({std::move(record), std::move(aggregates), missing});
    figureTree.grow(endNumber(), Leaf{*this});
    stepTree.grow(endNumber(), stepLeaf());
}

void FrameList::makeRoom(quint64 leaving)
{
    startTimes.makeRoom();
    endTimes.makeRoom();
    frames.makeRoom();
    figureTree.makeRoom(endNumber());
    stepTree.makeRoom(endNumber());
    const std::size_t retired = retiredFrames.size() + leaving;
    if (remaking && retired > retiredFrames.capacity())
        retiredFrames.reserve(2 * retired);
}

FrameList::Frame FrameList::takeFront()
{
    Frame frame = frames.takeFront();
    startTimes.pop_front();
    endTimes.pop_front();
    figureTree.shrink(firstNumber());
    stepTree.shrink(firstNumber());
    if (!remaking)
        return frame;
    retiredFrames.push_back(std::move(frame));
    return {};
}

RangeFigures FrameList::figures(quint64 begin, quint64 end) const
{
    return figureTree.sum(firstNumber() + begin, firstNumber() + end, Leaf{*this});
}

RangeFigures FrameList::frameFigures(quint64 number) const
{
    const FrameAggregates& frame = frames[number - firstNumber()].aggregates;
    return {frame.extremes, frame.extremes.fill == Extremes::overflowed ? 1U : 0U, frame.throughput};
}

StepFigures FrameList::step(quint64 number) const
{
    const quint64 index = number - firstNumber();
    const qint64 gapUs = index > 0 ? saturatingSub(startTimes[index], startTimes[index - 1]) : 0;
    return {frames[index].missing, gapUs, frameFigures(number).overflows};
}

bool FrameList::isStale(const EvaluationSettings& settings) const
{
    return !empty() && (settings != evaluation || std::max(staleBegin, firstNumber()) < staleEnd);
}

FrameList::Remake FrameList::beginRemake(const EvaluationSettings& settings)
{
    if (settings != evaluation) {
        evaluation = settings;
        staleBegin = firstNumber();
        staleEnd = endNumber();
    }
    Remake remake;
    remake.evaluation = settings;
    remake.firstRecord = std::max(staleBegin, firstNumber());
    quint64 blocks = 0;
    const quint64 end = std::min(staleEnd, remake.firstRecord + framesPerRemake);
    remake.records.reserve(end - remake.firstRecord);
    remake.remade.reserve(end - remake.firstRecord);
    for (quint64 number = remake.firstRecord; number < end && blocks < blocksPerRemake; ++number) {
        remake.records.push_back(frames[number - firstNumber()].record.get());
        blocks += remake.records.back()->blockCount;
    }
    remaking = true;
    return remake;
}

void FrameList::Remake::run() noexcept
{
    for (const FrameRecord* record : records)
        remade.push_back(makeAggregates(*record, evaluation));
}

std::vector<FrameList::Frame> FrameList::endRemake(Remake& remake) noexcept
{
    remaking = false;
    const quint64 end = remake.firstRecord + remake.records.size();
    const quint64 begin = std::min(std::max(remake.firstRecord, firstNumber()), end);
    for (quint64 number = begin; number < end; ++number)
        std::swap(frames[number - firstNumber()].aggregates, remake.remade[number - remake.firstRecord]);
    figureTree.renew(begin, end, Leaf{*this});
    stepTree.renew(begin, end, stepLeaf());
    staleBegin = end;
    return std::exchange(retiredFrames, {});
}
