// SPDX-License-Identifier: GPL-3.0-or-later
// How many bytes come at once.
#ifndef KESTROVA_ARAVIS_ARRIVALGRAIN_H
#define KESTROVA_ARAVIS_ARRIVALGRAIN_H

#include <optional>

#include "ArrivalCurve.h"

namespace aravis {

/// Packets that follow each other in far less time than is usual in their frame come at once: an interface that
/// collects packets before it interrupts makes bunches of them.
class ArrivalGrain
{
public:
    void add(const ArrivalCurve& frame);
    /// The size of the bunch that a byte is in, on average over all bytes. None without a frame.
    std::optional<double> bytes() const;

private:
    void addBunch(double bunch);

    double all = 0.0;
    double squares = 0.0;
};

} // namespace aravis

#endif
