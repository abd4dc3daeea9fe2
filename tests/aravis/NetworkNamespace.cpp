// SPDX-License-Identifier: GPL-3.0-or-later
// By system calls, so that no program is needed.
#include "NetworkNamespace.h"

#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void require(bool done, const char* step)
{
    if (done)
        return;
    std::printf("SKIP   : no network of the test's own: %s: %s\n", step, std::strerror(errno));
    std::fflush(stdout);
    ::_exit(77);
}

bool write(const char* file, const std::string& text)
{
    const int descriptor = ::open(file, O_WRONLY | O_CLOEXEC);
    const bool written = ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(descriptor);
    return written;
}

void setUpLoopback()
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    require(::ioctl(socket, SIOCSIFFLAGS, &request) == 0, "loopback");
    for (unsigned last = 2; last <= 4; ++last) {
        ifreq alias{};
        std::snprintf(alias.ifr_name, sizeof alias.ifr_name, "lo:%u", last);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK - 1 + last);
        std::memcpy(&alias.ifr_addr, &address, sizeof address);
        require(::ioctl(socket, SIOCSIFADDR, &alias) == 0, "second address");
    }
    ::close(socket);
}

} // namespace

bool enterNetworkNamespace()
{
    const std::string user = "0 " + std::to_string(::geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getegid()) + " 1";
    require(::unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0, "unshare");
    require(write("/proc/self/uid_map", user) && write("/proc/self/setgroups", "deny") &&
                write("/proc/self/gid_map", group),
            "user");
    setUpLoopback();
    return true;
}
