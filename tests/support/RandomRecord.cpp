// SPDX-License-Identifier: GPL-3.0-or-later
// Random measurements.
#include "RandomRecord.h"

void appendRandomMeasurement(CxCameraLineData& data, Dice& dice, int frames)
{
    enum Ticks
    {
        Increasing,
        Standing,
        Backwards
    };
    const qint64 blocks = dice.between(1, dice.oneIn(4) ? 1400 : 60);
    const qint64 step = dice.between(200, 20000); // ticks a block
    const Ticks ticksRun = dice.oneIn(6) ? Standing : dice.oneIn(8) ? Backwards : Increasing;
    // The counter's start may lie so close to its end that it wraps in the measurement's first frames.
    quint64 tick = dice.oneIn(3) ? static_cast<quint64>(-dice.between(1, 100 * step)) : dice.bits() >> 20;
    qint64 timeUs = dice.between(0, 86'400'000'000);
    quint64 number = 0;

    for (int f = 0; f < frames; ++f) {
        std::vector<quint64> ticks(static_cast<size_t>(dice.oneIn(12) ? dice.between(1, 1800) : blocks));
        for (quint64& entry : ticks) {
            entry = tick;
            const qint64 stall = dice.oneIn(50) ? 40 * step : 0;
            const qint64 jitter = dice.between(step - step / 8, step + step / 8) + stall;
            if (ticksRun == Increasing || !dice.oneIn(3))
                tick += static_cast<quint64>(jitter);
            else if (ticksRun == Backwards)
                tick -= static_cast<quint64>(jitter);
        }
        number += dice.oneIn(12) ? static_cast<quint64>(dice.between(0, 5)) : 1;
        appendFrame(data, timeUs, ticks, number);
        timeUs += static_cast<qint64>(ticks.size()) * step / 250 + dice.between(0, 2000);
    }
}
