// SPDX-License-Identifier: GPL-3.0-or-later
// The one place that knows which families of cameras there are.
#ifndef KESTROVA_DEVICEFAMILIES_H
#define KESTROVA_DEVICEFAMILIES_H

#include <memory>
#include <vector>

#include <QtCore/QString>

#include "CameraDevice.h"
#include "DeviceModule.h"

/// Creates the devices of all families that are there without being asked for. `file` describes the simulated ones (a
/// scenario, see docs/scenarios.md); empty takes the built-in default. On failure returns an empty list and a reason
/// that names file, key and fault.
std::vector<std::shared_ptr<CameraDevice>> createDevices(const QString& file, QString* error);

/// Whether this is the address of a real camera: "gev:" or "usb:" and what follows.
bool isDeviceAddress(const QString& name);

/// Takes control of the camera with this address. May take ten seconds; any thread. On failure null and the reason,
/// which is that the module is not installed where it is not.
std::shared_ptr<CameraDevice> openDevice(const QString& address, QString* error);

/// Asks on every network and bus for real cameras; takes some seconds. Any thread. Leaves `error` alone if all is well.
std::vector<FoundCamera> searchDevices(QString* error);

/// For the end of a program, when its devices are gone: waits, a quarter of a minute at most, until the cameras know.
void waitForClosedDevices();

#endif
