// SPDX-License-Identifier: GPL-3.0-or-later
// kestrova-tap: tells when the packets of one camera's stream arrived at this host, by the kernel's stamps. The only
// program here that needs the right to capture; it gives all rights up before it has seen a packet.
//   kestrova-tap CAMERA HOST PORT    IPv4 addresses, and the port of this host; records to standard output
#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <utility>

#include "PacketRing.h"

namespace {

using aravis::TapRecord;

constexpr int pipeBytes = 1 << 20;
constexpr int statusMs = 10;
constexpr std::size_t recordsAtOnce = 1024;

TapRecord records[recordsAtOnce];
std::size_t recordCount = 0;

/// False if nobody reads any more; there is room for records again in any case.
bool flush()
{
    const char* at = reinterpret_cast<const char*>(records);
    std::size_t left = std::exchange(recordCount, 0) * sizeof(TapRecord);
    while (left > 0) {
        const ssize_t written = ::write(STDOUT_FILENO, at, left);
        if (written < 0 && errno != EINTR)
            return false;
        at += written > 0 ? written : 0;
        left -= written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    return true;
}

bool add(const TapRecord& record)
{
    records[recordCount++] = record;
    return recordCount < recordsAtOnce || flush();
}

std::int64_t nowNs(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

/// Of three, the one that took the shortest time to read.
std::int64_t clockOffsetNs()
{
    std::int64_t best = 0;
    std::int64_t shortest = INT64_MAX;
    for (int i = 0; i < 3; ++i) {
        const std::int64_t before = nowNs(CLOCK_MONOTONIC);
        const std::int64_t wall = nowNs(CLOCK_REALTIME);
        const std::int64_t after = nowNs(CLOCK_MONOTONIC);
        if (after - before < shortest) {
            shortest = after - before;
            best = before + shortest / 2 - wall;
        }
    }
    return best;
}

bool giveUpRights()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct nothing[2] = {};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::syscall(SYS_capset, &header, nothing) == 0;
}

[[noreturn]] void fail(aravis::TapStep step)
{
    TapRecord record{};
    record.kind = TapRecord::Fault;
    record.frameId = static_cast<std::uint64_t>(errno);
    record.packetId = step;
    add(record);
    flush();
    ::_exit(1);
}

bool readFlow(int count, char** arguments, tap::Flow& flow)
{
    if (count != 4 || ::inet_pton(AF_INET, arguments[1], &flow.camera) != 1 ||
        ::inet_pton(AF_INET, arguments[2], &flow.host) != 1)
        return false;
    const long port = std::strtol(arguments[3], nullptr, 10);
    flow.port = htons(static_cast<in_port_t>(port));
    return port > 0 && port < 65536;
}

bool addStatus(const tap::PacketRing& ring)
{
    TapRecord status{};
    status.kind = TapRecord::Status;
    status.frameId = ring.takeDrops();
    status.offsetNs = clockOffsetNs();
    return add(status) && flush();
}

} // namespace

int main(int count, char** arguments)
{
    ::signal(SIGPIPE, SIG_IGN);
    tap::Flow flow{};
    if (!readFlow(count, arguments, flow)) {
        errno = EINVAL;
        fail(aravis::TapUsage);
    }
    tap::PacketRing ring;
    const aravis::TapStep failed = ring.open(flow);
    if (failed != aravis::TapDone)
        fail(failed);
    if (!giveUpRights())
        fail(aravis::TapRights);
    ::fcntl(STDOUT_FILENO, F_SETPIPE_SZ, pipeBytes);
    TapRecord ready{};
    ready.kind = TapRecord::Ready;
    ready.offsetNs = clockOffsetNs();
    if (!add(ready) || !flush())
        return 0;

    const auto take = [](const unsigned char* packet, unsigned captured, std::int64_t stampNs) {
        TapRecord record{};
        record.stampNs = stampNs;
        if (tap::readHeaders(packet, captured, record))
            add(record); // a reader that is gone is seen below
    };
    for (;;) {
        while (ring.readBlock(take)) {
        }
        if (!addStatus(ring))
            return 0;
        pollfd sources[] = {{ring.descriptor(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}};
        ::poll(sources, 2, statusMs);
        if ((sources[1].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0)
            return 0;
    }
}
