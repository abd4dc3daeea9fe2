// SPDX-License-Identifier: GPL-3.0-or-later
// The link of a camera in a network, as this host knows it.
#ifndef KESTROVA_ARAVIS_HOSTLINK_H
#define KESTROVA_ARAVIS_HOSTLINK_H

#include <string>

#include "CameraDevice.h"

namespace aravis {

/// The network interface with this IPv4 address, and its speed where it tells one: loopback and interfaces without a
/// cable do not. Without a name if there is none.
CameraLink linkOfHostAddress(const std::string& address);

} // namespace aravis

#endif
