// SPDX-License-Identifier: GPL-3.0-or-later
// Dividing a link among the cameras that want it.
#include "SharedLink.h"

#include <algorithm>

namespace sim {

void SharedLink::setDemand(const void* camera, double rate)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (rate > 0.0)
        demands[camera] = rate;
    else
        demands.erase(camera);
}

double SharedLink::share(const void* camera) const
{
    std::vector<double> others;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (const auto& [member, rate] : demands) {
            if (member != camera)
                others.push_back(rate);
        }
    }
    std::sort(others.begin(), others.end());
    double left = link.rate;
    double sharers = static_cast<double>(others.size()) + 1.0;
    for (const double rate : others) {
        if (rate > left / sharers)
            break;
        left -= rate;
        sharers -= 1.0;
    }
    return left / sharers;
}

} // namespace sim
