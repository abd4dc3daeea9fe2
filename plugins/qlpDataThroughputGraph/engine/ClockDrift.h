// SPDX-License-Identifier: GPL-3.0-or-later
// How far a camera's clock has run away from the host's, and what to add to its time stamps so that they stay near
// the host's time over days. Pure: times in, a correction out.
#ifndef KESTROVA_CLOCKDRIFT_H
#define KESTROVA_CLOCKDRIFT_H

#include <optional>

#include <QtCore/QtGlobal>

/// One measurement's. A frame arrives later than its time stamp by the way through link and queues, of which only
/// the shortest of a minute counts: what delays frames is no drift. Neither is a clock that jumps.
class ClockDrift
{
public:
    /// Drifts up to this are left alone, so that nothing is corrected in the first quarter of an hour.
    static constexpr qint64 deadBandUs = 100000;
    /// The correction changes by at most this much of the camera's time, so that distances of frames change by no
    /// more and their order is kept. The clocks of cameras drift by less than 100.
    static constexpr qint64 slewPpm = 500;

    /// What is to be added to the time stamp of the next frame, microseconds. Both times are of one scale.
    qint64 correctionUs(qint64 stampUs, qint64 arrivalUs);
    /// By how much the camera's clock is fast; unknown in the first ten minutes.
    std::optional<double> ppm() const;

private:
    struct Delay
    {
        qint64 us = 0; ///< arrival minus time stamp
        qint64 arrivalUs = 0;
    };

    void endMinute();

    std::optional<Delay> shortest; ///< of the present minute
    qint64 minuteEndUs = 0;
    std::optional<Delay> reference; ///< of the first minute, moved by the jumps since then
    Delay latest;                   ///< of the last whole minute
    qint64 previousStampUs = 0;
    qint64 correctionNs = 0;
};

#endif
