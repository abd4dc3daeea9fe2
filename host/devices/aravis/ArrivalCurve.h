// SPDX-License-Identifier: GPL-3.0-or-later
// When each byte of a frame arrived at this host.
#ifndef KESTROVA_ARAVIS_ARRIVALCURVE_H
#define KESTROVA_ARAVIS_ARRIVALCURVE_H

#include <cstddef>
#include <vector>

#include <QtCore/QtGlobal>

namespace aravis {

/// A packet's data, in the order of the packets' ids.
struct PacketArrival
{
    quint32 bytes;
    qint64 stampNs; ///< of the first copy
};

/// Bytes against time: straight between two points, both rising. With two points at least, or none.
class ArrivalCurve
{
public:
    struct Point
    {
        quint64 bytes; ///< that had arrived
        qint64 timeNs; ///< of the steady clock
    };

    ArrivalCurve() = default;
    /// The curve goes through every packet's last byte. A packet that did not arrive later than one before it is
    /// joined with that one to one step. The first step is as steep as the next one but does not begin before
    /// `leaderNs`, which is also its begin if there is no other. All stamps plus `offsetNs` are of the steady clock.
    /// Empty if nothing tells how long a frame took.
    ArrivalCurve(const std::vector<PacketArrival>& packets, qint64 leaderNs, qint64 offsetNs);

    const std::vector<Point>& points() const { return curve; }

    /// Writes into each whole 64-bit word of `data` when its last byte arrived, in ticks of 4 ns.
    void writeTicks(void* data, std::size_t bytes) const;

private:
    std::vector<Point> curve;
};

} // namespace aravis

#endif
