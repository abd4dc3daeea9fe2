// SPDX-License-Identifier: GPL-3.0-or-later
// Where a program listens: an IPv4 address of this machine and a port.
#ifndef KESTROVA_MEASURE_LISTENADDRESS_H
#define KESTROVA_MEASURE_LISTENADDRESS_H

#include <optional>

#include <QtCore/QString>

struct ListenAddress
{
    QString address; ///< four numbers
    int port = 0;    ///< 0: a free one

    /// "127.0.0.1:9841"
    QString text() const { return QStringLiteral("%1:%2").arg(address).arg(port); }
};

/// "9841" (this machine alone), "192.168.1.5:9841" or "0.0.0.0:9841"; no names of hosts.
std::optional<ListenAddress> listenAddressFromText(const QString& text);

/// Why nobody can listen there now, in the system's words; empty if it is possible.
QString listenFault(const ListenAddress& where);

#endif
