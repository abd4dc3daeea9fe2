// SPDX-License-Identifier: GPL-3.0-or-later
// What a block interval tells: the link's speed, and how the camera's buffer fills when the sensor produces more than
// the link takes away. The order of operations is fixed: results are compared bit for bit.
#ifndef KESTROVA_BLOCKMODEL_H
#define KESTROVA_BLOCKMODEL_H

#include <QtCore/QtGlobal>

#include "SampleRecords.h"

constexpr quint64 ticksPerUs = 250; ///< the camera's counter runs with 4 ns

inline double ticksToUs(quint64 ticks)
{
    return static_cast<double>(ticks) / static_cast<double>(ticksPerUs);
}

/// The time between two blocks. Ticks that stand still give an infinite speed.
struct BlockInterval
{
    BlockInterval(quint64 ticks, quint32 period) : dt(ticksToUs(ticks)), speed(period / dt) {}

    /// Bytes that stayed in the camera; negative when the link was faster than the sensor.
    double delta(double required) const { return (required - speed) * dt; }

    double dt;    ///< microseconds
    double speed; ///< MB/s
};

/// MB/s of a whole frame; infinite for one that took no time.
inline double frameThroughput(const FrameRecord& frame, quint32 period)
{
    return static_cast<double>(frame.blockCount * period) / static_cast<double>(frame.durationTicks) *
           static_cast<double>(ticksPerUs);
}

/// The camera's frame buffer: cannot hold less than nothing nor more than its size.
class BufferModel
{
public:
    explicit BufferModel(qint32 size) : capacity(size) {}

    /// True if the bytes did not fit.
    bool add(double bytes)
    {
        bytesHeld += bytes;
        if (bytesHeld < 0) {
            bytesHeld = 0;
        } else if (bytesHeld > capacity) {
            bytesHeld = capacity;
            return true;
        }
        return false;
    }

    double occupancy() const { return bytesHeld; }                ///< bytes
    double level() const { return bytesHeld / capacity * 100.0; } ///< percent; not a number for a buffer of 0 bytes

private:
    double capacity;
    double bytesHeld = 0.0;
};

#endif
