// SPDX-License-Identifier: GPL-3.0-or-later
// How long block intervals were, of a run of any length in constant memory. One slowest interval says little; how many
// were slow says whether it matters.
#ifndef KESTROVA_INTERVALHISTOGRAM_H
#define KESTROVA_INTERVALHISTOGRAM_H

#include <array>
#include <optional>

#include <QtCore/QtGlobal>

/// Counts intervals by their tick difference, in buckets whose width grows with the length: 64 an octave, so that the
/// middle of one is off by 0.8 percent at most, below 128 ticks not at all.
class IntervalHistogram
{
public:
    static constexpr int resolutionBits = 6;
    static constexpr int longestBits = 40; ///< 73 minutes; what is longer counts as that
    static constexpr std::size_t buckets = std::size_t{longestBits - resolutionBits + 1} << resolutionBits;

    /// Which bucket a tick difference belongs to. Without a branch: it runs for every block of every frame.
    static std::size_t bucketOf(quint64 ticks)
    {
        constexpr quint64 longest = (quint64{1} << longestBits) - 1;
        constexpr quint64 finest = quint64{1} << resolutionBits;
        const quint64 length = ticks < longest ? ticks : longest;
        const int shift = 63 - resolutionBits - __builtin_clzll(length | finest);
        return (static_cast<std::size_t>(shift) << resolutionBits) + static_cast<std::size_t>(length >> shift);
    }
    /// The middle of a bucket, ticks.
    static double ticksOf(std::size_t bucket);

    void add(std::size_t bucket, quint64 intervals);
    IntervalHistogram& operator+=(const IntervalHistogram& other);

    quint64 count() const { return total; } ///< intervals
    /// The length, in ticks, that this share (above 0, up to 1) of all intervals have at least; none without an
    /// interval. The median is that of 0.5, and a tenth of a percent was at least as slow as that of 0.001.
    std::optional<double> longest(double share) const;

private:
    std::array<quint64, buckets> counts{};
    quint64 total = 0;
    // All that is not 0 lies in low..high (exclusive): frames of a link use a small part of the range.
    std::size_t low = buckets;
    std::size_t high = 0;
};

/// Counts one frame at a time where no lock is held; under the lock only its few used buckets are added.
class FrameIntervalCounter
{
public:
    /// Intervals begin..end (exclusive) between `ticks`, of a frame that goes on.
    void count(const quint64* ticks, quint64 begin, quint64 end)
    {
        for (quint64 i = begin; i < end; ++i)
            ++counts[IntervalHistogram::bucketOf(ticks[i + 1] - ticks[i])];
    }
    /// What was counted since the last call is the frame's.
    void endFrame();
    /// The last frame that was ended.
    void addTo(IntervalHistogram& histogram) const;

private:
    struct Used
    {
        quint32 bucket;
        quint32 intervals;
    };

    std::array<quint32, IntervalHistogram::buckets> counts{};
    std::array<Used, IntervalHistogram::buckets> frame;
    std::size_t usedBuckets = 0; ///< of `frame`
};

#endif
