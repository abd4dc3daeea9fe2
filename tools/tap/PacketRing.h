// SPDX-License-Identifier: GPL-3.0-or-later
// The kernel's ring of received packets, for those of one camera to one port.
#ifndef KESTROVA_TAP_PACKETRING_H
#define KESTROVA_TAP_PACKETRING_H

#include <netinet/in.h>

#include "TapRecord.h"

namespace tap {

/// Where packets come from and go to, in network byte order.
struct Flow
{
    in_addr camera;
    in_addr host;
    in_port_t port;
};

class PacketRing
{
public:
    /// Receives from now on. On failure the step, with errno set.
    aravis::TapStep open(const Flow& flow);

    int descriptor() const { return socket; }
    /// Packets that the kernel dropped since the last call.
    unsigned takeDrops() const;

    /// Hands the headers of each waiting packet to `take`, with the kernel's stamp; false when the ring is empty.
    template<typename Take>
    bool readBlock(Take take);

private:
    aravis::TapStep lockFilter(const Flow& flow) const;
    aravis::TapStep mapRing();

    int socket = -1;
    unsigned char* ring = nullptr;
    unsigned next = 0;
};

/// What a packet's headers tell, from the IPv4 header on. False if it is no packet of a frame.
bool readHeaders(const unsigned char* packet, unsigned captured, aravis::TapRecord& record);

} // namespace tap

#include "PacketRingRead.h"

#endif
