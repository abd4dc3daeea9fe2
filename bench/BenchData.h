// SPDX-License-Identifier: GPL-3.0-or-later
// Records to measure with: a camera near 1 GB/s whose link sends packets with gaps, jitter and now and then a stall,
// and which loses frames now and then.
#ifndef KESTROVA_BENCHDATA_H
#define KESTROVA_BENCHDATA_H

#include <memory>
#include <random>

#include "CameraLineData.h"

constexpr qint32 benchPeriod = 4096;       ///< bytes
constexpr quint64 benchFrameBlocks = 2560; ///< a hundred frames a second
constexpr int benchPixels = 514;

/// Makes the frames of one camera, one after the other.
class FrameSource
{
public:
    std::unique_ptr<FrameRecord> next(quint64 blocks = benchFrameBlocks);
    /// The end of the last frame, microseconds.
    qint64 timeUs() const { return static_cast<qint64>(tick / 250); }

private:
    std::minstd_rand random{1};
    quint64 tick = 0;
    quint64 frameNumber = 0;
};

/// Sets the record up for the frames of a FrameSource and appends as many, made for these settings.
void fillRecord(CxCameraLineData& data, FrameSource& source, quint64 frames);

/// One counter sample every 100 microseconds.
void fillSamples(CxCameraLineData& data, int samples);

/// What calculateStats() is asked for: the last seconds of a record at the width of a plot.
struct View
{
    View(qint64 endUs, double seconds);
    /// As wide as a mark is drawn.
    qint64 markJoinUs() const { return static_cast<qint64>(8.0 * 1000.0 * spacingMs); }
    EventRange eventRange() const { return {fromUs, toUs, markJoinUs(), toUs}; }

    qint64 fromUs;
    qint64 toUs;
    double spacingMs;
    double keyUpper = 0.0;
};

/// Of the machine, in bytes.
quint64 availableMemory();

#endif
