// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of a whole run (or of one interval of it), kept beside the sample lists and independent of their capacity:
// every frame that an image wait returned counts once.
#ifndef KESTROVA_RUNTOTALS_H
#define KESTROVA_RUNTOTALS_H

#include <optional>

#include <QtCore/QtGlobal>

/// Sums over frames. Figures that no frame has given yet are absent, never 0.
struct RunTotals
{
    quint64 frames = 0;        ///< frames kept or skipped
    quint64 skippedFrames = 0; ///< of these, frames without a whole block
    quint64 blocks = 0;
    quint64 missingFrames = 0;   ///< gaps of the frame number
    quint64 failedWaits = 0;     ///< image waits that failed or gave no data
    qint64 longestGapUs = 0;     ///< longest time without a frame, by the host's clock, the run's start included
    quint64 overflows = 0;       ///< frames in which the camera's buffer would have overflowed
    double throughputSum = 0.0;  ///< MB/s, over frames that took time
    quint64 throughputFrames = 0;
    std::optional<double> minThroughput;  ///< MB/s
    std::optional<double> maxBufferLevel; ///< percent

    /// Mean of the frames' throughputs, MB/s.
    std::optional<double> avgThroughput() const
    {
        if (throughputFrames == 0)
            return std::nullopt;
        return throughputSum / static_cast<double>(throughputFrames);
    }
};

#endif
