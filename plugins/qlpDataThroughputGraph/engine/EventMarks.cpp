// SPDX-License-Identifier: GPL-3.0-or-later
// Finding events by leaping from mark to mark, however many events one joins.
#include "EventMarks.h"

#include <algorithm>

#include "FrameList.h"
#include "SampleList.h"
#include "TimeMath.h"

namespace {

/// The overflow of a frame is its own; that of a sample is the growth of a counter.
constexpr bool overflowIsStep(const FrameList&)
{
    return false;
}
constexpr bool overflowIsStep(const SampleList&)
{
    return true;
}

/// Collects the marks of one kind.
class MarkRow
{
public:
    MarkRow(EventKind eventKind, const EventRange& range, std::vector<EventMark>& all)
        : looked(range), kind(eventKind), marks(all), first(all.size())
    {
    }

    /// An event, or several that are one mark.
    void add(qint64 fromUs, qint64 toUs, quint64 amount)
    {
        if (toUs < looked.fromUs || fromUs > looked.toUs)
            return;
        if (marks.size() > first && saturatingSub(fromUs, marks.back().toUs) <= looked.joinUs) {
            EventMark& mark = marks.back();
            mark.fromUs = std::min(mark.fromUs, fromUs);
            mark.toUs = std::max(mark.toUs, toUs);
            mark.amount = kind == EventKind::Silence ? std::max(mark.amount, amount) : mark.amount + amount;
        } else {
            marks.push_back({kind, fromUs, toUs, amount});
        }
    }

private:
    const EventRange& looked;
    EventKind kind;
    std::vector<EventMark>& marks;
    std::size_t first; ///< of this kind
};

/// The events of one kind among the records of one run.
template<typename List>
class RunEvents
{
public:
    RunEvents(const List& records, EventKind eventKind, qint64 silenceLimitUs)
        : list(records), times(records.times()), kind(eventKind), limitUs(silenceLimitUs)
    {
    }

    /// Among begin..end (exclusive), which is all of the run.
    void addTo(MarkRow& row, quint64 begin, quint64 end, const EventRange& range) const
    {
        const bool isStep = kind != EventKind::BufferOverflow || overflowIsStep(list);
        begin += isStep;
        if (times.isOrdered()) {
            begin = std::max(begin, times.find(0, range.fromUs));
            end = std::min(end, after(begin, range.toUs));
        }
        for (quint64 first = find(begin, end); first < end;) {
            const quint64 next = times.isOrdered() ? endOfMark(first, end, range.joinUs) : first + 1;
            row.add(times[first - lead()], times[next - 1], amount(list.steps(first, next)));
            first = find(next, end);
        }
    }

private:
    /// A silence begins where the record before it is.
    quint64 lead() const { return kind == EventKind::Silence ? 1 : 0; }
    /// Where events begin later than that.
    quint64 after(quint64 from, qint64 timeUs) const
    {
        const qint64 laterUs = saturatingAdd(timeUs, 1);
        return (laterUs == timeUs ? list.size() : times.find(from, laterUs)) + lead();
    }

    bool isIn(const StepFigures& figures) const { return amount(figures) > (lead() ? quint64(limitUs) : 0); }
    quint64 amount(const StepFigures& figures) const
    {
        switch (kind) {
        case EventKind::Silence:
            return static_cast<quint64>(std::max<qint64>(figures.longestGapUs, 0));
        case EventKind::MissingFrames:
            return figures.missing;
        default:
            return figures.overflows;
        }
    }

    quint64 find(quint64 begin, quint64 end) const
    {
        return list.firstStep(begin, end, [this](const StepFigures& figures) { return isIn(figures); });
    }
    /// Behind the last event that is one mark with this one.
    quint64 endOfMark(quint64 first, quint64 end, qint64 joinUs) const
    {
        for (;;) {
            const quint64 near = std::min(end, after(first + 1, saturatingAdd(times[first], joinUs)));
            const quint64 last =
                list.lastStep(first + 1, near, [this](const StepFigures& figures) { return isIn(figures); });
            if (last >= near)
                return first + 1;
            first = last;
        }
    }

    const List& list;
    const TimeIndex& times;
    EventKind kind;
    qint64 limitUs;
};

void addSilence(MarkRow& row, qint64 fromUs, qint64 toUs, qint64 limitUs)
{
    const qint64 gapUs = saturatingSub(toUs, fromUs);
    if (gapUs > limitUs)
        row.add(fromUs, toUs, static_cast<quint64>(gapUs));
}

template<typename List>
std::vector<EventMark> findMarks(const List& list, const std::vector<MeasuredRun>& runs, const EventRange& range)
{
    std::vector<EventMark> marks;
    MarkRow starts(EventKind::Start, range, marks);
    for (const MeasuredRun& run : runs)
        starts.add(run.startUs, run.startUs, 1);
    MarkRow ends(EventKind::End, range, marks);
    for (const MeasuredRun& run : runs) {
        if (run.endUs)
            ends.add(*run.endUs, *run.endUs, 1);
    }

    const TimeIndex& times = list.times();
    std::vector<quint64> begins; // the first records of all runs
    begins.reserve(runs.size() + 1);
    for (const MeasuredRun& run : runs)
        begins.push_back(times.find(begins.empty() ? 0 : begins.back(), run.startUs));
    begins.push_back(list.size());
    for (const EventKind kind : {EventKind::Silence, EventKind::MissingFrames, EventKind::BufferOverflow}) {
        MarkRow row(kind, range, marks);
        RunEvents(list, kind, MeasuredRun::longestFirstGapUs).addTo(row, 0, begins[0], range); // of no known run
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const MeasuredRun& run = runs[i];
            const quint64 begin = begins[i];
            const quint64 end = begins[i + 1];
            const bool isSilence = kind == EventKind::Silence; // for which the ends of a run count as frames
            const qint64 endUs = run.endUs.value_or(range.nowUs);
            if (isSilence && (begin > 0 || list.isComplete()))
                addSilence(row, run.startUs, begin < end ? times[begin] : endUs,
                           std::max(run.silenceLimitUs, MeasuredRun::longestFirstGapUs));
            RunEvents(list, kind, run.silenceLimitUs).addTo(row, begin, end, range);
            if (isSilence && begin < end)
                addSilence(row, times[end - 1], endUs, run.silenceLimitUs);
        }
    }
    return marks;
}

} // namespace

std::vector<EventMark> findEventMarks(const FrameList& frames, const std::vector<MeasuredRun>& runs,
                                      const EventRange& range)
{
    return findMarks(frames, runs, range);
}

std::vector<EventMark> findEventMarks(const SampleList& samples, const std::vector<MeasuredRun>& runs,
                                      const EventRange& range)
{
    return findMarks(samples, runs, range);
}
