// SPDX-License-Identifier: GPL-3.0-or-later
// Socket, filter, ring, and the headers of a GigE Vision stream.
#include "PacketRing.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <linux/filter.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <sys/mman.h>
#include <sys/socket.h>

#include <cerrno>

namespace tap {

namespace {

using aravis::TapRecord;
using aravis::TapStep;

constexpr unsigned capturedBytes = 128;
constexpr unsigned retireMs = 10; ///< a block that is not full is handed over after this time

unsigned read16(const unsigned char* bytes)
{
    return unsigned{bytes[0]} << 8 | bytes[1];
}

std::uint32_t read32(const unsigned char* bytes)
{
    return std::uint32_t{read16(bytes)} << 16 | read16(bytes + 2);
}

template<typename Value>
bool setOption(int socket, int level, int name, const Value& value)
{
    return ::setsockopt(socket, level, name, &value, sizeof value) == 0;
}

/// The index of the interface with this address; 0 if there is none.
unsigned interfaceOf(in_addr host)
{
    ifaddrs* all = nullptr;
    if (::getifaddrs(&all) != 0)
        return 0;
    unsigned found = 0;
    for (const ifaddrs* one = all; one; one = one->ifa_next) {
        if (one->ifa_addr && one->ifa_addr->sa_family == AF_INET &&
            reinterpret_cast<const sockaddr_in*>(one->ifa_addr)->sin_addr.s_addr == host.s_addr)
            found = ::if_nametoindex(one->ifa_name);
    }
    ::freeifaddrs(all);
    return found;
}

} // namespace

/// Nothing else than this flow can ever be read, also by who takes this program over.
aravis::TapStep PacketRing::lockFilter(const Flow& flow) const
{
    // From the IPv4 header on. Each test that fails jumps to the last line, which takes nothing.
    sock_filter lines[] = {
        BPF_STMT(BPF_LD | BPF_B | BPF_ABS, 9),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, IPPROTO_UDP, 0, 10),
        BPF_STMT(BPF_LD | BPF_H | BPF_ABS, 6),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, 0x1fff, 8, 0), // a later fragment has no ports
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 12),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, ntohl(flow.camera.s_addr), 0, 6),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 16),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, ntohl(flow.host.s_addr), 0, 4),
        BPF_STMT(BPF_LDX | BPF_B | BPF_MSH, 0),
        BPF_STMT(BPF_LD | BPF_H | BPF_IND, 2),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, ntohs(flow.port), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, capturedBytes),
        BPF_STMT(BPF_RET | BPF_K, 0),
    };
    const sock_fprog program{sizeof lines / sizeof *lines, lines};
    const int yes = 1;
    return setOption(socket, SOL_SOCKET, SO_ATTACH_FILTER, program) &&
                   setOption(socket, SOL_SOCKET, SO_LOCK_FILTER, yes)
               ? TapStep::TapDone
               : TapStep::TapSocket;
}

aravis::TapStep PacketRing::mapRing()
{
    const int yes = 1;
    const int version = TPACKET_V3;
    tpacket_req3 request{};
    request.tp_block_size = blockBytes;
    request.tp_block_nr = blockCount;
    request.tp_frame_size = 2048; // only divides blocks; packets follow each other
    request.tp_frame_nr = blockBytes / request.tp_frame_size * blockCount;
    request.tp_retire_blk_tov = retireMs;
    if (!setOption(socket, SOL_PACKET, PACKET_VERSION, version) ||
        !setOption(socket, SOL_SOCKET, SO_TIMESTAMPNS, yes) ||
        !setOption(socket, SOL_PACKET, PACKET_IGNORE_OUTGOING, yes) ||
        !setOption(socket, SOL_PACKET, PACKET_RX_RING, request))
        return TapStep::TapRing;
    void* const memory = ::mmap(nullptr, static_cast<std::size_t>(blockBytes) * blockCount, PROT_READ | PROT_WRITE,
                                MAP_SHARED, socket, 0);
    ring = static_cast<unsigned char*>(memory);
    return memory == MAP_FAILED ? TapStep::TapRing : TapStep::TapDone;
}

aravis::TapStep PacketRing::open(const Flow& flow)
{
    // Without a protocol it receives nothing until it is bound, when all is set.
    socket = ::socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return TapStep::TapSocket;
    TapStep failed = lockFilter(flow);
    if (failed == TapStep::TapDone)
        failed = mapRing();
    if (failed != TapStep::TapDone)
        return failed;
    sockaddr_ll place{};
    place.sll_family = AF_PACKET;
    place.sll_protocol = htons(ETH_P_IP);
    place.sll_ifindex = static_cast<int>(interfaceOf(flow.host));
    if (place.sll_ifindex == 0)
        errno = EADDRNOTAVAIL;
    return place.sll_ifindex != 0 && ::bind(socket, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0
               ? TapStep::TapDone
               : TapStep::TapBind;
}

unsigned PacketRing::takeDrops() const
{
    tpacket_stats_v3 statistics{};
    socklen_t size = sizeof statistics;
    ::getsockopt(socket, SOL_PACKET, PACKET_STATISTICS, &statistics, &size);
    return statistics.tp_drops;
}

bool readHeaders(const unsigned char* packet, unsigned captured, TapRecord& record)
{
    constexpr unsigned udpBytes = 8;
    constexpr unsigned narrowHeader = 8;
    constexpr unsigned wideHeader = 20;
    const unsigned ipBytes = (packet[0] & 15U) * 4;
    if (captured < ipBytes + udpBytes + narrowHeader)
        return false;
    const unsigned dataBytes = read16(packet + ipBytes + 4);
    const unsigned char* stream = packet + ipBytes + udpBytes;
    const std::uint32_t information = read32(stream + 4);
    const bool wide = (information & 0x80000000U) != 0;
    const unsigned headerBytes = udpBytes + (wide ? wideHeader : narrowHeader);
    if (captured < ipBytes + headerBytes || dataBytes < headerBytes)
        return false;
    switch (information >> 24 & 0x7fU) {
    case 1:
        record.kind = TapRecord::Leader;
        break;
    case 2:
        record.kind = TapRecord::Trailer;
        break;
    case 3:
        record.kind = TapRecord::Payload;
        break;
    default:
        return false;
    }
    record.extendedIds = wide ? 1 : 0;
    record.frameId = wide ? std::uint64_t{read32(stream + 8)} << 32 | read32(stream + 12) : read16(stream + 2);
    record.packetId = wide ? read32(stream + 16) : information & 0xffffffU;
    record.bytes = static_cast<std::uint16_t>(dataBytes - headerBytes);
    return true;
}

} // namespace tap
