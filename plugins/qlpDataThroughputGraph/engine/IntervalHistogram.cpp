// SPDX-License-Identifier: GPL-3.0-or-later
// Joining histograms and reading quantiles from them.
#include "IntervalHistogram.h"

#include <algorithm>
#include <cmath>

double IntervalHistogram::ticksOf(std::size_t bucket)
{
    constexpr std::size_t exact = std::size_t{2} << resolutionBits; // from here on buckets are wider than a tick
    if (bucket < exact)
        return static_cast<double>(bucket);
    const std::size_t shift = (bucket >> resolutionBits) - 1;
    const quint64 first = quint64{bucket - (shift << resolutionBits)} << shift;
    return static_cast<double>(first) + static_cast<double>((quint64{1} << shift) - 1) / 2.0;
}

void IntervalHistogram::add(std::size_t bucket, quint64 intervals)
{
    counts[bucket] += intervals;
    total += intervals;
    low = std::min(low, bucket);
    high = std::max(high, bucket + 1);
}

IntervalHistogram& IntervalHistogram::operator+=(const IntervalHistogram& other)
{
    for (std::size_t bucket = other.low; bucket < other.high; ++bucket)
        counts[bucket] += other.counts[bucket];
    total += other.total;
    low = std::min(low, other.low);
    high = std::max(high, other.high);
    return *this;
}

std::optional<double> IntervalHistogram::longest(double share) const
{
    if (total == 0)
        return std::nullopt;
    const auto wanted = static_cast<quint64>(std::ceil(share * static_cast<double>(total)));
    std::size_t bucket = high - 1;
    for (quint64 seen = counts[bucket]; seen < wanted && bucket > low; seen += counts[bucket])
        --bucket;
    return ticksOf(bucket);
}

void FrameIntervalCounter::endFrame()
{
    usedBuckets = 0;
    for (quint32 bucket = 0; bucket < counts.size(); ++bucket) {
        if (counts[bucket] != 0)
            frame[usedBuckets++] = {bucket, counts[bucket]};
    }
    counts.fill(0);
}

void FrameIntervalCounter::addTo(IntervalHistogram& histogram) const
{
    for (std::size_t i = 0; i < usedBuckets; ++i)
        histogram.add(frame[i].bucket, frame[i].intervals);
}
