// SPDX-License-Identifier: GPL-3.0-or-later
// What the acquisition thread makes of an image, one record type per measurement mode.
#ifndef KESTROVA_SAMPLERECORDS_H
#define KESTROVA_SAMPLERECORDS_H

#include <memory>

#include <QtCore/QtGlobal>

/// One frame of the data throughput mode.
struct FrameRecord
{
    quint64 frameNumber = 0;
    qint64 timestampUs = 0; ///< camera time stamp plus the clock's time when the loop began, drift corrected
    std::unique_ptr<quint64[]> blockTicks; ///< first word of every block, in ticks of 4 ns
    quint64 blockCount = 0;
    quint64 durationTicks = 0; ///< last entry minus first, modulo 2^64
};

/// One frame of the standard acquisition mode; counter values are the camera's running counts.
struct CounterSample
{
    quint64 frameNumber = 0;
    qint64 timestampUs = 0;
    qint32 transportSkip = 0;
    qint32 apiSkip = 0;
    qint32 missedTrgOverlap = 0;
    qint32 missedTrgOverflow = 0;
    qint32 bufferOverflow = 0;
};

#endif
