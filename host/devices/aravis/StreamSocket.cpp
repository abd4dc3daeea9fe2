// SPDX-License-Identifier: GPL-3.0-or-later
// The library does not hand its socket out: it is the one of this process with the stream's address and port.
#include "StreamSocket.h"

#include <arpa/inet.h>
#include <dirent.h>
#include <fcntl.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>

#include <QtCore/QtGlobal>

namespace aravis {

namespace {

constexpr int leastBytes = 4 << 20;
constexpr size_t mostBytes = size_t{1} << 30;

bool isBoundTo(int descriptor, const sockaddr_in& place)
{
    sockaddr_in own{};
    socklen_t size = sizeof own;
    return ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &size) == 0 && own.sin_family == AF_INET &&
           own.sin_port == place.sin_port && own.sin_addr.s_addr == place.sin_addr.s_addr;
}

/// -1 if there is none.
int streamSocket(ArvGvStream* stream, const std::string& host)
{
    sockaddr_in place{};
    place.sin_port = htons(arv_gv_stream_get_port(stream));
    ::inet_pton(AF_INET, host.c_str(), &place.sin_addr);
    int found = -1;
    DIR* directory = ::opendir("/proc/self/fd");
    while (const dirent* entry = directory ? ::readdir(directory) : nullptr) {
        const int descriptor = std::atoi(entry->d_name); // the two dots are standard input, which is no socket
        if (isBoundTo(descriptor, place))
            found = descriptor;
    }
    if (directory)
        ::closedir(directory);
    return found;
}

qint64 steadyNs()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

std::optional<double> enlargeSocketBuffer(ArvGvStream* stream, const std::string& host, size_t payload)
{
    // Packets take more room than what is in them.
    const int wanted = std::max(leastBytes, static_cast<int>(std::min(payload * 2, mostBytes)));
    g_object_set(stream, "socket-buffer", ARV_GV_STREAM_SOCKET_BUFFER_FIXED, "socket-buffer-size", wanted, nullptr);
    const int descriptor = streamSocket(stream, host);
    if (descriptor < 0)
        return std::nullopt;
    ::setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &wanted, sizeof wanted);
    int granted = 0;
    socklen_t size = sizeof granted;
    // The system doubles what it is asked for, for its own needs.
    if (::getsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &granted, &size) != 0)
        return std::nullopt;
    if (static_cast<size_t>(granted) / 2 < payload)
        qCritical("The system lets the camera's socket hold %d bytes, a frame has %zu: frames may get lost. "
                  "sysctl net.core.rmem_max=%d helps",
                  granted / 2, payload, wanted);
    return granted / 2;
}

std::function<DropSample()> dropProbe(ArvGvStream* stream, const std::string& host)
{
    // A descriptor of its own: the library's number may be another file's as soon as it is closed.
    const int descriptor = ::fcntl(streamSocket(stream, host), F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0)
        return {};
    const std::shared_ptr<const int> own(new int(descriptor), [](const int* last) {
        ::close(*last);
        delete last;
    });
    return [own, stream = ARV_STREAM(stream)] {
        DropSample sample{};
        sample.beginNs = steadyNs();
        guint64 completed = 0;
        guint64 failed = 0;
        guint64 underruns = 0;
        arv_stream_get_statistics(stream, &completed, &failed, &underruns);
        sample.underruns = underruns;
        quint32 memory[SK_MEMINFO_VARS] = {};
        socklen_t size = sizeof memory;
        ::getsockopt(*own, SOL_SOCKET, SO_MEMINFO, memory, &size);
        sample.socketDrops = memory[SK_MEMINFO_DROPS];
        sample.queuedBytes = memory[SK_MEMINFO_RMEM_ALLOC];
        sample.endNs = steadyNs();
        return sample;
    };
}

} // namespace aravis
