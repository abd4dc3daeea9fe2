// SPDX-License-Identifier: GPL-3.0-or-later
// Asks the system.
#include "HostLink.h"

#include <arpa/inet.h>
#include <ifaddrs.h>

#include "SystemFile.h"

namespace aravis {

namespace {

/// In MB/s; the system has it in Mbit/s, as the interface has agreed with its other end.
std::optional<double> rateOf(const QString& interface)
{
    constexpr double bitsPerByte = 8.0;
    const auto megabits = numberIn(QStringLiteral("/sys/class/net/%1/speed").arg(interface));
    return megabits > 0.0 ? std::optional<double>(*megabits / bitsPerByte) : std::nullopt;
}

} // namespace

CameraLink linkOfHostAddress(const std::string& address)
{
    in_addr wanted{};
    ifaddrs* found = nullptr;
    if (::inet_pton(AF_INET, address.c_str(), &wanted) != 1 || ::getifaddrs(&found) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(found, &::freeifaddrs);
    for (const ifaddrs* one = all.get(); one != nullptr; one = one->ifa_next) {
        if (one->ifa_addr == nullptr || one->ifa_addr->sa_family != AF_INET ||
            reinterpret_cast<const sockaddr_in*>(one->ifa_addr)->sin_addr.s_addr != wanted.s_addr)
            continue;
        const QString name = QString::fromLocal8Bit(one->ifa_name);
        return {name, rateOf(name)};
    }
    return {};
}

} // namespace aravis
