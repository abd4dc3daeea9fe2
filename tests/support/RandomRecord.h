// SPDX-License-Identifier: GPL-3.0-or-later
// Throughput records for tests: by hand, and at random with everything that a camera's ticks can do.
#ifndef KESTROVA_RANDOMRECORD_H
#define KESTROVA_RANDOMRECORD_H

#include <random>
#include <vector>

#include "CameraLineData.h"

inline void appendFrame(CxCameraLineData& data, qint64 timestampUs, const std::vector<quint64>& ticks,
                        quint64 frameNumber = 0)
{
    auto frame = std::make_unique<FrameRecord>();
    frame->frameNumber = frameNumber;
    frame->timestampUs = timestampUs;
    frame->blockCount = ticks.size();
    frame->blockTicks.reset(new quint64[ticks.size()]);
    std::copy(ticks.begin(), ticks.end(), frame->blockTicks.get());
    frame->durationTicks = ticks.empty() ? 0 : ticks.back() - ticks.front();
    data.frameList.push_back(std::move(frame));
}

inline void appendSample(CxCameraLineData& data, const CounterSample& sample)
{
    data.counterSampleList.push_back(std::make_unique<CounterSample>(sample));
}

/// The distributions of the standard library differ between implementations; the engine below them does not.
class Dice
{
public:
    explicit Dice(quint64 seed) : engine(seed) {}
    quint64 bits() { return engine(); }
    qint64 between(qint64 low, qint64 high)
    {
        return low + static_cast<qint64>(bits() % static_cast<quint64>(high - low + 1));
    }
    bool oneIn(quint64 n) { return bits() % n == 0; }
    template<typename T, std::size_t n>
    T pick(const T (&values)[n])
    {
        return values[bits() % n];
    }

private:
    std::mt19937_64 engine;
};

/// Appends a measurement: frames of similar size, now and then a tiny or a huge one, or none; ticks that jitter, stall, stand
/// still, run backwards or wrap.
void appendRandomMeasurement(CxCameraLineData& data, Dice& dice, int frames);

#endif
