// SPDX-License-Identifier: GPL-3.0-or-later
// Leaping from point to point.
#include "CurveScan.h"

#include <algorithm>
#include <limits>

#include "TimeMath.h"

namespace {

constexpr qint64 lead = 4; ///< points

struct Place
{
    quint64 frame;
    quint64 interval;
};

/// Looks for points in frames that nobody changes meanwhile: the record's mutex is held as long as it lives.
class CurveScan
{
public:
    CurveScan(const FrameList& frames, quint64 end, const EvaluationSettings& settings, qint64 toUs)
        : list(frames), parts(settings), lastUs(toUs), endNumber(end)
    {
        // Frames that begin after the range cannot hold a point.
        if (frames.starts().isOrdered() && toUs < std::numeric_limits<qint64>::max())
            endNumber = std::min(endNumber, frames.starts().find(0, toUs + 1));
    }

    bool isEnd(const Place& place) const { return place.frame >= endNumber; }

    /// The next interval that ends in fromUs..toUs.
    Place find(Place from, qint64 fromUs) const
    {
        while (!isEnd(from)) {
            const FrameRecord& frame = *list[from.frame];
            from.interval = findInterval(frame, list.aggregates(from.frame), from.interval, fromUs, lastUs);
            if (from.interval < intervalCount(frame))
                break;
            from = {list.ends().find(from.frame + 1, fromUs), 0};
        }
        return from;
    }

    /// Asks the caches for what a look at that time will need, in two steps since the second one needs the first.
    void prefetchFrame(quint64 from, qint64 timeUs) const
    {
        const quint64 frame = list.ends().find(from, timeUs);
        if (frame < endNumber)
            __builtin_prefetch(list[frame].get());
    }
    void prefetchIntervals(quint64 from, qint64 timeUs) const
    {
        const quint64 frame = list.ends().find(from, timeUs);
        if (frame < endNumber)
            ::prefetchIntervals(*list[frame], list.aggregates(frame), timeUs);
    }

    /// Of the intervals from..to, both included. Whole frames first: often they make it needless to look into the
    /// others.
    Extremes extremes(const Place& from, const Place& to)
    {
        Extremes result;
        if (from.frame == to.frame) {
            addPart(from.frame, from.interval, to.interval + 1, result);
            return result;
        }
        const quint64 firstWhole = from.interval == 0 ? from.frame : from.frame + 1;
        result = list.figures(firstWhole, to.frame).extremes;
        if (firstWhole != from.frame)
            addPart(from.frame, from.interval, intervalCount(*list[from.frame]), result);
        addPart(to.frame, 0, to.interval + 1, result);
        return result;
    }

private:
    void addPart(quint64 frame, quint64 begin, quint64 end, Extremes& into)
    {
        parts.add(*list[frame], list.aggregates(frame), begin, end, into);
    }

    const FrameList& list;
    FramePartEvaluator parts;
    qint64 lastUs;
    quint64 endNumber;
};

} // namespace

std::vector<ScanPoint> scanCurve(const FrameList& frames, quint64 begin, quint64 end,
                                 const EvaluationSettings& settings, qint64 fromUs, qint64 toUs, qint64 stepUs)
{
    std::vector<ScanPoint> points;
    CurveScan scan(frames, end, settings, toUs);
    Place from{begin, 0};
    while (from.frame < end && intervalCount(*frames[from.frame]) == 0)
        ++from.frame;
    if (scan.isEnd(from))
        return points;

    qint64 lastUs = intervalTimeUs(*frames[from.frame], 0);
    for (;;) {
        scan.prefetchFrame(from.frame, saturatingAdd(lastUs, saturatingMul(stepUs, 2 * lead)));
        scan.prefetchIntervals(from.frame, saturatingAdd(lastUs, saturatingMul(stepUs, lead)));
        const qint64 earliestUs = std::max(fromUs, saturatingAdd(lastUs, stepUs));
        if (earliestUs > toUs)
            return points;
        const Place place = scan.find(from, earliestUs);
        if (scan.isEnd(place))
            return points;
        lastUs = intervalTimeUs(*frames[place.frame], place.interval);
        const Extremes extremes = scan.extremes(from, place);
        points.push_back({lastUs, extremes.minSpeed(settings), extremes.level(settings)});
        from = {place.frame, place.interval + 1};
    }
}
