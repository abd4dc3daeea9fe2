// SPDX-License-Identifier: GPL-3.0-or-later
// Addresses from text, and which of the host's own reaches one.
#include "CameraAddress.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace aravis {

namespace {

constexpr in_port_t controlPort = 3956;
constexpr unsigned char whoIsThere[] = {0x42, 0x01, 0x00, 0x02, 0x00, 0x00, 0x00, 0x01}; ///< to be acknowledged
constexpr int answerMs = 500;

std::optional<in_addr> ipv4(const std::string& text)
{
    in_addr address{};
    if (::inet_pton(AF_INET, text.c_str(), &address) != 1)
        return std::nullopt;
    return address;
}

/// Sends nothing: the system only chooses the way. -1 if there is none.
int socketTowards(const std::string& target)
{
    sockaddr_in camera{};
    camera.sin_family = AF_INET;
    camera.sin_port = htons(controlPort);
    camera.sin_addr = ipv4(target).value_or(in_addr{});
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket >= 0 && ::connect(socket, reinterpret_cast<const sockaddr*>(&camera), sizeof camera) == 0)
        return socket;
    if (socket >= 0)
        ::close(socket);
    return -1;
}

} // namespace

std::optional<CameraAddress> parseAddress(const QString& name)
{
    const std::string text = name.mid(4).toStdString();
    if (text.empty())
        return std::nullopt;
    if (name.startsWith(QLatin1String("usb:")))
        return CameraAddress{CameraAddress::Kind::Usb, text};
    if (!name.startsWith(QLatin1String("gev:")))
        return std::nullopt;
    return CameraAddress{ipv4(text) ? CameraAddress::Kind::Network : CameraAddress::Kind::NetworkSerial, text};
}

std::string localAddressTowards(const std::string& target)
{
    const int socket = socketTowards(target);
    if (socket < 0)
        return {};
    sockaddr_in own{};
    socklen_t size = sizeof own;
    char text[INET_ADDRSTRLEN] = "";
    if (::getsockname(socket, reinterpret_cast<sockaddr*>(&own), &size) == 0)
        ::inet_ntop(AF_INET, &own.sin_addr, text, sizeof text);
    ::close(socket);
    return text;
}

bool answers(const std::string& target)
{
    const int socket = socketTowards(target);
    if (socket < 0)
        return false;
    bool answered = false;
    for (int attempt = 0; attempt < 3 && !answered; ++attempt) {
        pollfd answer{socket, POLLIN, 0};
        char first = 0;
        // A host on which there is no camera may answer with an error.
        answered = ::send(socket, whoIsThere, sizeof whoIsThere, 0) > 0 && ::poll(&answer, 1, answerMs) == 1 &&
                   ::recv(socket, &first, sizeof first, 0) > 0;
    }
    ::close(socket);
    return answered;
}

} // namespace aravis
