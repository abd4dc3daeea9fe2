// SPDX-License-Identifier: GPL-3.0-or-later
// Reads and tries addresses by the system's own functions.
#include "ListenAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

#include <QtCore/QRegularExpression>

namespace {

constexpr int largestPort = 65535;

bool readAddress(const QString& text, in_addr& address)
{
    return ::inet_pton(AF_INET, text.toLatin1().constData(), &address) == 1;
}

} // namespace

std::optional<ListenAddress> listenAddressFromText(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(?:([0-9.]+):)?([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QString address = match.captured(1).isEmpty() ? QStringLiteral("127.0.0.1") : match.captured(1);
    const int port = match.captured(2).toInt();
    in_addr unused = {};
    if (!match.hasMatch() || port > largestPort || !readAddress(address, unused))
        return std::nullopt;
    return ListenAddress{address, port};
}

QString listenFault(const ListenAddress& where)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<quint16>(where.port));
    readAddress(where.address, address.sin_addr);
    const int end = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int yes = 1;
    ::setsockopt(end, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    const bool possible =
        ::bind(end, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 && ::listen(end, 1) == 0;
    QString fault = possible ? QString() : qt_error_string(errno);
    ::close(end);
    return fault;
}
