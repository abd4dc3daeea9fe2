// SPDX-License-Identifier: GPL-3.0-or-later
// What the user calls a camera.
#ifndef KESTROVA_ARAVIS_CAMERAADDRESS_H
#define KESTROVA_ARAVIS_CAMERAADDRESS_H

#include <optional>
#include <string>

#include <QtCore/QString>

namespace aravis {

/// "gev:192.168.0.5", "gev:SERIAL" or "usb:SERIAL".
struct CameraAddress
{
    enum class Kind
    {
        Network, ///< a GigE Vision camera by its IPv4 address: needs no search
        NetworkSerial,
        Usb
    };

    Kind kind;
    std::string text; ///< behind the colon
};

/// None if it is no such text.
std::optional<CameraAddress> parseAddress(const QString& name);

/// The address of this host from which packets to `target` (IPv4) leave, which is one of its own; empty if there is
/// no way to it.
std::string localAddressTowards(const std::string& target);

/// Whether a camera at `target` (IPv4) answers; waits a second and a half at most.
bool answers(const std::string& target);

} // namespace aravis

#endif
