// SPDX-License-Identifier: GPL-3.0-or-later
// The simulation's random numbers: equal seeds give equal runs, whatever library the program is built with.
#ifndef KESTROVA_SIM_RANDOM_H
#define KESTROVA_SIM_RANDOM_H

#include <cmath>

#include <QtCore/QtGlobal>

namespace sim {

/// SplitMix64: a counter run through a mixer. Copying it copies its future.
class Random
{
public:
    explicit Random(quint64 seed) : state(seed) {}

    quint64 next()
    {
        quint64 z = (state += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }

    /// Evenly from 0 to below 1.
    double uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }

    /// Waiting time for an event that comes once in `mean` on average.
    double exponential(double mean) { return -mean * std::log1p(-uniform()); }

private:
    quint64 state;
};

} // namespace sim

#endif
