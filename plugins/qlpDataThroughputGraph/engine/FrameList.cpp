// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping aggregates of frames and of groups of frames up to date.
#include "FrameList.h"

#include <algorithm>
#include <limits>
#include <utility>

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
    frames.push_back({std::move(record), std::move(aggregates)});

    quint64 complete = endNumber();
    for (std::size_t level = 0; complete % fanOut == 0; ++level) {
        complete /= fanOut;
        setNode(level, complete - 1);
    }
}

void FrameList::makeRoom(quint64 leaving)
{
    startTimes.makeRoom();
    endTimes.makeRoom();
    frames.makeRoom();
    quint64 complete = endNumber() + 1;
    for (std::size_t level = 0; complete % fanOut == 0; ++level) {
        complete /= fanOut;
        if (level == levels.size())
            levels.emplace_back();
        levels[level].makeRoom();
    }
    const std::size_t retired = retiredFrames.size() + leaving;
    if (remaking && retired > retiredFrames.capacity())
        retiredFrames.reserve(2 * retired);
}

FrameList::Frame FrameList::takeFront()
{
    Frame frame = frames.takeFront();
    startTimes.pop_front();
    endTimes.pop_front();
    quint64 gone = firstNumber();
    for (std::size_t level = 0; gone % fanOut == 0; ++level) {
        gone /= fanOut;
        levels[level].takeFront();
    }
    if (!remaking)
        return frame;
    retiredFrames.push_back(std::move(frame));
    return {};
}

RangeFigures FrameList::figures(quint64 begin, quint64 end) const
{
    RangeFigures sum;
    begin += firstNumber();
    end += firstNumber();
    // From the ends to where the next level has whole nodes, then on there.
    for (std::size_t level = 0; begin < end; ++level) {
        while (begin < end && begin % fanOut != 0)
            sum.add(node(level, begin++));
        while (begin < end && end % fanOut != 0)
            sum.add(node(level, --end));
        begin /= fanOut;
        end /= fanOut;
    }
    return sum;
}

RangeFigures FrameList::leaf(quint64 number) const
{
    const FrameAggregates& frame = frames[number - firstNumber()].aggregates;
    return {frame.extremes, frame.extremes.fill == Extremes::overflowed ? 1U : 0U, frame.throughput};
}

/// Level 0 are the frames themselves, level k the nodes of levels[k - 1].
RangeFigures FrameList::node(std::size_t level, quint64 number) const
{
    if (level == 0)
        return leaf(number);
    const Tape<RangeFigures>& nodes = levels[level - 1];
    return nodes[number - nodes.dropped()];
}

RangeFigures FrameList::children(std::size_t level, quint64 number) const
{
    const quint64 first = level == 0 ? firstNumber() : levels[level - 1].dropped();
    RangeFigures sum;
    for (quint64 child = std::max(number * fanOut, first); child < (number + 1) * fanOut; ++child)
        sum.add(node(level, child));
    return sum;
}

/// A node whose first frames are trimmed is incomplete, but never asked for.
void FrameList::setNode(std::size_t level, quint64 number)
{
    if (level == levels.size())
        levels.emplace_back();
    Tape<RangeFigures>& nodes = levels[level];
    const RangeFigures figures = children(level, number);
    if (number == nodes.dropped() + nodes.size())
        nodes.push_back(figures);
    else
        nodes[number - nodes.dropped()] = figures;
}

void FrameList::setNodesOver(quint64 begin, quint64 end)
{
    for (std::size_t level = 0; level < levels.size(); ++level) {
        const Tape<RangeFigures>& nodes = levels[level];
        begin = std::max(begin / fanOut, nodes.dropped());
        end = (end + fanOut - 1) / fanOut;
        for (quint64 number = begin; number < std::min(end, nodes.dropped() + nodes.size()); ++number)
            setNode(level, number);
    }
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
    setNodesOver(begin, end);
    staleBegin = end;
    return std::exchange(retiredFrames, {});
}
