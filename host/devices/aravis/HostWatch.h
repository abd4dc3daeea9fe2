// SPDX-License-Identifier: GPL-3.0-or-later
// What the system tells of itself that may explain lost frames.
#ifndef KESTROVA_ARAVIS_HOSTWATCH_H
#define KESTROVA_ARAVIS_HOSTWATCH_H

#include <QtCore/QString>

#include "StreamConditions.h"

namespace aravis {

/// Reads files of the system, and nothing else.
class HostWatch
{
public:
    HostWatch() = default;
    /// From now on; `interface` is a network interface's name, or empty for the USB.
    explicit HostWatch(const QString& interface);

    /// Adds what is known by now.
    void tell(StreamConditions& conditions) const;

private:
    struct ProcessorTime
    {
        double busy; ///< in the system's ticks, all processors together
        double all;
    };
    static std::optional<ProcessorTime> processorTime();
    std::optional<double> interfaceDrops() const;

    QString network;
    std::optional<double> dropsBefore;
    std::optional<ProcessorTime> timeBefore;
};

} // namespace aravis

#endif
