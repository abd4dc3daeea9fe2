// SPDX-License-Identifier: GPL-3.0-or-later
// Steps to bunches.
#include "ArrivalGrain.h"

#include <algorithm>

namespace aravis {

namespace {

constexpr double atOnce = 0.25; ///< of a frame's mean time between two steps

} // namespace

void ArrivalGrain::addBunch(double bunch)
{
    all += bunch;
    squares += bunch * bunch;
}

void ArrivalGrain::add(const ArrivalCurve& frame)
{
    const auto& points = frame.points();
    if (points.size() < 2)
        return;
    // The first step's begin is not measured.
    const auto steps = static_cast<double>(points.size() - 1);
    const double meanNs = static_cast<double>(points.back().timeNs - points[1].timeNs) / std::max(steps - 1.0, 1.0);
    auto bunch = static_cast<double>(points[1].bytes);
    for (std::size_t i = 2; i < points.size(); ++i) {
        if (static_cast<double>(points[i].timeNs - points[i - 1].timeNs) >= atOnce * meanNs) {
            addBunch(bunch);
            bunch = 0.0;
        }
        bunch += static_cast<double>(points[i].bytes - points[i - 1].bytes);
    }
    addBunch(bunch);
}

std::optional<double> ArrivalGrain::bytes() const
{
    return all > 0.0 ? std::optional<double>(squares / all) : std::nullopt;
}

} // namespace aravis
