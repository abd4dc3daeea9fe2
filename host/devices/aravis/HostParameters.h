// SPDX-License-Identifier: GPL-3.0-or-later
// Integer parameters that the host expects of every camera and that these cameras know nothing of.
#ifndef KESTROVA_ARAVIS_HOSTPARAMETERS_H
#define KESTROVA_ARAVIS_HOSTPARAMETERS_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "FrameTally.h"

namespace aravis {

/// Whoever calls it keeps the calls apart.
class HostParameters
{
public:
    static bool has(const std::string& name);

    /// `frames` is what the counters tell.
    std::optional<int> get(const std::string& name, const FrameTally& frames) const;
    bool canSet(const std::string& name, int value) const;
    bool set(const std::string& name, int value);

    int requiredThroughput = 0;        ///< MB/s, what a register of the camera tells of its link; 0: unknown
    std::optional<int> missedTriggers; ///< in this acquisition; none: the camera does not count them

private:
    std::map<std::string, int> values; ///< those that were set
};

} // namespace aravis

#endif
