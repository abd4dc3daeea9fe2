// SPDX-License-Identifier: GPL-3.0-or-later
// Asking who is there.
#ifndef KESTROVA_ARAVIS_CAMERASEARCH_H
#define KESTROVA_ARAVIS_CAMERASEARCH_H

#include "CameraAddress.h"
#include "DeviceModule.h"

namespace aravis {

/// Broadcasts on every network interface and looks through the USB; takes a second or more. Any thread.
std::vector<FoundCamera> searchCameras();

/// Of a camera by serial number: its network address, or for USB what the library calls it. Empty if none answers.
std::string addressOfSerial(const CameraAddress& address);

} // namespace aravis

#endif
