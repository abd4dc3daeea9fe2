// SPDX-License-Identifier: GPL-3.0-or-later
// The ring's packets, block by block.
#ifndef KESTROVA_TAP_PACKETRINGREAD_H
#define KESTROVA_TAP_PACKETRINGREAD_H

#include <linux/if_packet.h>

namespace tap {

constexpr unsigned blockBytes = 1U << 20;
constexpr unsigned blockCount = 64;

template<typename Take>
bool PacketRing::readBlock(Take take)
{
    auto* const present = reinterpret_cast<tpacket_block_desc*>(ring + static_cast<std::size_t>(next) * blockBytes);
    auto& header = present->hdr.bh1;
    if ((__atomic_load_n(&header.block_status, __ATOMIC_ACQUIRE) & TP_STATUS_USER) == 0)
        return false;
    const auto* at = reinterpret_cast<const unsigned char*>(present) + header.offset_to_first_pkt;
    for (unsigned i = 0; i < header.num_pkts; ++i) {
        const auto* packet = reinterpret_cast<const tpacket3_hdr*>(at);
        take(at + packet->tp_net, packet->tp_snaplen, std::int64_t{packet->tp_sec} * 1000000000 + packet->tp_nsec);
        at += packet->tp_next_offset;
    }
    __atomic_store_n(&header.block_status, TP_STATUS_KERNEL, __ATOMIC_RELEASE);
    next = (next + 1) % blockCount;
    return true;
}

} // namespace tap

#endif
