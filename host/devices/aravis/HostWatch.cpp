// SPDX-License-Identifier: GPL-3.0-or-later
// Files of /proc and /sys.
#include "HostWatch.h"

#include "SystemFile.h"

namespace aravis {

HostWatch::HostWatch(const QString& interface)
    : network(interface), dropsBefore(interfaceDrops()), timeBefore(processorTime())
{
}

std::optional<HostWatch::ProcessorTime> HostWatch::processorTime()
{
    // "cpu", then user, nice, system, idle, waiting for the disk, and others
    const QList<QByteArray> fields = firstLineOf(QStringLiteral("/proc/stat")).split(' ');
    if (fields.size() < 6)
        return std::nullopt;
    ProcessorTime time{};
    for (int i = 1; i < fields.size() && i <= 8; ++i) // guests' time is in the users'
        time.all += fields[i].toDouble();
    time.busy = time.all - fields[4].toDouble() - fields[5].toDouble();
    return time;
}

std::optional<double> HostWatch::interfaceDrops() const
{
    if (network.isEmpty())
        return std::nullopt;
    std::optional<double> sum;
    for (const char* counter : {"rx_dropped", "rx_missed_errors", "rx_fifo_errors"}) {
        const auto drops =
            numberIn(QStringLiteral("/sys/class/net/%1/statistics/%2").arg(network, QLatin1String(counter)));
        if (drops)
            sum = sum.value_or(0.0) + *drops;
    }
    return sum;
}

void HostWatch::tell(StreamConditions& conditions) const
{
    const auto time = processorTime();
    if (time && timeBefore && time->all > timeBefore->all)
        conditions.processorsBusyPercent = 100.0 * (time->busy - timeBefore->busy) / (time->all - timeBefore->all);
    if (network.isEmpty()) {
        const auto mebibytes = numberIn(QStringLiteral("/sys/module/usbcore/parameters/usbfs_memory_mb"));
        if (mebibytes.value_or(0.0) > 0.0) // 0 is no limit
            conditions.usbLimitBytes = *mebibytes * 0x100000;
        return;
    }
    conditions.interfaceMtu = numberIn(QStringLiteral("/sys/class/net/%1/mtu").arg(network));
    if (!conditions.socketLimitBytes) // what the socket was granted is nearer to the truth; a container may hide this
        conditions.socketLimitBytes = numberIn(QStringLiteral("/proc/sys/net/core/rmem_max"));
    const auto drops = interfaceDrops();
    if (drops && dropsBefore)
        conditions.interfaceDrops = *drops - *dropsBefore;
}

} // namespace aravis
