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
    FrameAggregates aggregates = makeAggregates(*record, m_settings);
    push_back(std::move(record), std::move(aggregates), m_settings);
}

void FrameList::push_back(std::unique_ptr<FrameRecord> record, FrameAggregates aggregates,
                          const EvaluationSettings& settings)
{
    makeRoom(0);
    if (settings != m_settings && empty()) {
        m_settings = settings;
        m_staleBegin = m_staleEnd = endNumber();
    }
    if (settings != m_settings) {
        m_staleBegin = m_staleBegin == m_staleEnd ? endNumber() : m_staleBegin;
        m_staleEnd = endNumber() + 1;
    }
    m_starts.push_back(record->timestampUs);
    m_ends.push_back(endOf(*record, aggregates));
    m_frames.push_back({std::move(record), std::move(aggregates)});

    quint64 complete = endNumber();
    for (std::size_t level = 0; complete % fanOut == 0; ++level) {
        complete /= fanOut;
        setNode(level, complete - 1);
    }
}

void FrameList::makeRoom(quint64 leaving)
{
    m_starts.makeRoom();
    m_ends.makeRoom();
    m_frames.makeRoom();
    quint64 complete = endNumber() + 1;
    for (std::size_t level = 0; complete % fanOut == 0; ++level) {
        complete /= fanOut;
        if (level == m_levels.size())
            m_levels.emplace_back();
        m_levels[level].makeRoom();
    }
    const std::size_t retired = m_retired.size() + leaving;
    if (m_remaking && retired > m_retired.capacity())
        m_retired.reserve(2 * retired);
}

FrameList::Frame FrameList::takeFront()
{
    Frame frame = m_frames.takeFront();
    m_starts.pop_front();
    m_ends.pop_front();
    quint64 gone = firstNumber();
    for (std::size_t level = 0; gone % fanOut == 0; ++level) {
        gone /= fanOut;
        m_levels[level].takeFront();
    }
    if (!m_remaking)
        return frame;
    m_retired.push_back(std::move(frame));
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
    const FrameAggregates& frame = m_frames[number - firstNumber()].aggregates;
    return {frame.extremes, frame.extremes.fill == Extremes::overflowed ? 1U : 0U, frame.throughput};
}

/// Level 0 are the frames themselves, level k the nodes of m_levels[k - 1].
RangeFigures FrameList::node(std::size_t level, quint64 number) const
{
    if (level == 0)
        return leaf(number);
    const Tape<RangeFigures>& nodes = m_levels[level - 1];
    return nodes[number - nodes.dropped()];
}

RangeFigures FrameList::children(std::size_t level, quint64 number) const
{
    const quint64 first = level == 0 ? firstNumber() : m_levels[level - 1].dropped();
    RangeFigures sum;
    for (quint64 child = std::max(number * fanOut, first); child < (number + 1) * fanOut; ++child)
        sum.add(node(level, child));
    return sum;
}

/// A node whose first frames are trimmed is incomplete, but never asked for.
void FrameList::setNode(std::size_t level, quint64 number)
{
    if (level == m_levels.size())
        m_levels.emplace_back();
    Tape<RangeFigures>& nodes = m_levels[level];
    const RangeFigures figures = children(level, number);
    if (number == nodes.dropped() + nodes.size())
        nodes.push_back(figures);
    else
        nodes[number - nodes.dropped()] = figures;
}

void FrameList::setNodesOver(quint64 begin, quint64 end)
{
    for (std::size_t level = 0; level < m_levels.size(); ++level) {
        const Tape<RangeFigures>& nodes = m_levels[level];
        begin = std::max(begin / fanOut, nodes.dropped());
        end = (end + fanOut - 1) / fanOut;
        for (quint64 number = begin; number < std::min(end, nodes.dropped() + nodes.size()); ++number)
            setNode(level, number);
    }
}

bool FrameList::isStale(const EvaluationSettings& settings) const
{
    return !empty() && (settings != m_settings || std::max(m_staleBegin, firstNumber()) < m_staleEnd);
}

FrameList::Remake FrameList::beginRemake(const EvaluationSettings& settings)
{
    if (settings != m_settings) {
        m_settings = settings;
        m_staleBegin = firstNumber();
        m_staleEnd = endNumber();
    }
    Remake remake;
    remake.m_settings = settings;
    remake.m_first = std::max(m_staleBegin, firstNumber());
    quint64 blocks = 0;
    const quint64 end = std::min(m_staleEnd, remake.m_first + framesPerRemake);
    remake.m_records.reserve(end - remake.m_first);
    remake.m_aggregates.reserve(end - remake.m_first);
    for (quint64 number = remake.m_first; number < end && blocks < blocksPerRemake; ++number) {
        remake.m_records.push_back(m_frames[number - firstNumber()].record.get());
        blocks += remake.m_records.back()->blockCount;
    }
    m_remaking = true;
    return remake;
}

void FrameList::Remake::run() noexcept
{
    for (const FrameRecord* record : m_records)
        m_aggregates.push_back(makeAggregates(*record, m_settings));
}

std::vector<FrameList::Frame> FrameList::endRemake(Remake& remake) noexcept
{
    m_remaking = false;
    const quint64 end = remake.m_first + remake.m_records.size();
    const quint64 begin = std::min(std::max(remake.m_first, firstNumber()), end);
    for (quint64 number = begin; number < end; ++number)
        std::swap(m_frames[number - firstNumber()].aggregates, remake.m_aggregates[number - remake.m_first]);
    setNodesOver(begin, end);
    m_staleBegin = end;
    return std::exchange(m_retired, {});
}
