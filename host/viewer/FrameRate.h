// SPDX-License-Identifier: GPL-3.0-or-later
// How many frames a second arrive, from what a view happens to see of them.
#ifndef KESTROVA_FRAMERATE_H
#define KESTROVA_FRAMERATE_H

#include <chrono>
#include <optional>

#include <QtCore/qglobal.h>

/// Sees only some of the frames, so it counts by frame number, over a second at least.
class FrameRate
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    void reset()
    {
        begin.reset();
        perSecond = 0.0;
    }

    /// A frame was seen. A number that runs backwards begins anew: the acquisition was started again.
    void frameSeen(quint32 number, TimePoint now)
    {
        if (!begin || number < lastNumber) {
            reset();
            begin = now;
            beginNumber = number;
        }
        lastNumber = number;
        const std::chrono::duration<double> elapsed = now - *begin;
        if (elapsed.count() >= 1.0) {
            perSecond = double(number - beginNumber) / elapsed.count();
            begin = now;
            beginNumber = number;
        }
    }

    /// Forgets the rate when no frame has been seen for some time; true if there was one to forget.
    bool expire(TimePoint now)
    {
        if (perSecond == 0.0 || now - *begin < std::chrono::seconds(3))
            return false;
        reset();
        return true;
    }

    /// Frames per second; none during the first second.
    std::optional<double> rate() const { return perSecond > 0.0 ? std::optional<double>(perSecond) : std::nullopt; }

private:
    std::optional<TimePoint> begin;
    quint32 beginNumber = 0;
    quint32 lastNumber = 0;
    double perSecond = 0.0; ///< 0: not known
};

#endif
