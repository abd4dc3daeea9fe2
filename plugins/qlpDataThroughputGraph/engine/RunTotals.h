// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of a whole run (or of one interval of it), kept beside the sample lists and independent of their capacity:
// every frame that an image wait returned counts once.
#ifndef KESTROVA_RUNTOTALS_H
#define KESTROVA_RUNTOTALS_H

#include <optional>

#include <QtCore/QtGlobal>

#include "IntervalHistogram.h"

struct EvaluationSettings;
struct FrameAggregates;
struct FrameRecord;

/// What one frame of the throughput mode adds to the totals.
struct FrameFigures
{
    quint64 blocks = 0;
    std::optional<double> throughput;                ///< MB/s; none if the frame took no time
    std::optional<double> minThroughput;             ///< MB/s, slowest block interval
    std::optional<double> maxBufferLevel;            ///< percent; none without an interval or a buffer
    bool overflow = false;                           ///< the camera's buffer would have overflowed
    const FrameIntervalCounter* intervals = nullptr; ///< null: none are counted
};

/// Of a run whose longest gap is within three mean times of its other frames: the camera is slow, not silent. The times
/// have one unit.
bool isLongestGapUsual(double longestGap, double elapsed, double frames);

FrameFigures frameFigures(const FrameRecord& frame, const FrameAggregates& aggregates,
                          const EvaluationSettings& settings);

/// Sums over frames. Figures that no frame has given yet are absent, never 0.
struct RunTotals
{
    quint64 frames = 0;        ///< frames kept or skipped
    quint64 skippedFrames = 0; ///< of these, frames without a whole block, and one for which there was no memory
    quint64 blocks = 0;
    quint64 bytes = 0;         ///< of all these frames, as they were handed out
    quint64 missingFrames = 0; ///< gaps of the frame number
    quint64 failedWaits = 0;   ///< image waits that failed or gave no data
    qint64 longestGapUs =
        0; ///< longest time without a frame, by the host's clock; the run's two ends count as frames
    qint64 presentGapUs = 0;    ///< time since the last frame or the run's start; 0 after its end
    qint64 elapsedUs = 0;       ///< by the host's clock, silence included
    qint64 silentUs = 0;        ///< in gaps that are silence, see RunTotalsCounter; a gap counts where it becomes one
    quint64 losses = 0;         ///< of the camera, as the owner of the run counts them
    qint64 lostUs = 0;          ///< from a loss to when the camera was measured again or the run ended
    quint64 overflows = 0;      ///< frames in which the camera's buffer would have overflowed
    double throughputSum = 0.0; ///< MB/s, over frames that took time
    quint64 throughputFrames = 0;
    std::optional<double> minThroughput;  ///< MB/s
    std::optional<double> maxBufferLevel; ///< percent
    IntervalHistogram intervals;          ///< of all blocks

    /// Mean of the frames' throughputs, MB/s.
    std::optional<double> avgThroughput() const
    {
        if (throughputFrames == 0)
            return std::nullopt;
        return throughputSum / static_cast<double>(throughputFrames);
    }

    /// Bytes received by the time that passed, MB/s.
    std::optional<double> deliveredThroughput() const { return perUs(static_cast<double>(bytes)); }
    std::optional<double> framesPerSecond() const { return perUs(static_cast<double>(frames) * 1e6); }
    /// MB/s that this share (above 0, up to 1) of all block intervals had at most, to 1 percent; `samplePeriod` in
    /// bytes. Infinite where the ticks of so many stood still.
    std::optional<double> throughputQuantile(double share, quint32 samplePeriod) const;

    /// Joins the totals of two stretches of one run.
    RunTotals& operator+=(const RunTotals& later);

private:
    std::optional<double> perUs(double amount) const
    {
        return elapsedUs > 0 ? std::optional(amount / static_cast<double>(elapsedUs)) : std::nullopt;
    }
};

/// Adds up a run in intervals. The run's totals are the sum of its intervals by construction. Has no lock: its owner
/// calls it under the one that guards it. Times are of the measurement clock.
///
/// Silence is the whole of a gap that is longer than three mean frame times and the clock's resolution; the first ones
/// must be longer than a second, too. Gaps enter the mean with the length at which they become silence at most, so that
/// a silence does not hide the next one; only the first tells how slow a camera is.
class RunTotalsCounter
{
public:
    void begin(qint64 nowUs);
    /// Ends the last gap; until the next begin() time does not count, only what still arrives.
    void end(qint64 nowUs);

    /// A frame arrived, `skipped` when it is not kept.
    void addFrame(quint32 frameNumber, quint64 bytes, const FrameFigures& figures, bool skipped, qint64 nowUs);
    /// The camera is lost: time goes on, and a gap with a loss in it is silence however short.
    void lose(qint64 nowUs);
    /// It is measured again; its frame numbers begin anew.
    void resume(qint64 nowUs);
    void addFailedWait() { ++open.failedWaits; }

    RunTotals run(qint64 nowUs) const;
    /// The totals since begin() or the last call.
    RunTotals takeInterval(qint64 nowUs);
    /// A longer gap is silence now.
    double longestGapOfFramesUs() const;

private:
    RunTotals openInterval(qint64 nowUs) const;
    void endGap(qint64 nowUs);

    RunTotals closed; ///< intervals already taken
    RunTotals open;
    bool running = false;
    qint64 openSinceUs = 0;
    qint64 lastFrameUs = 0;
    qint64 silenceTakenUs = 0; ///< of the present gap, in intervals already taken
    double gapSumUs = 0.0;     ///< of gaps between frames, as they enter the mean
    quint64 gaps = 0;
    std::optional<quint32> lastFrameNumber;
    std::optional<qint64> lostSinceUs; ///< what of it is not in an interval yet
    bool lossInGap = false;
};

#endif
