// SPDX-License-Identifier: GPL-3.0-or-later
// What a module exports that brings a family of cameras with a library behind it which not everybody has.
#ifndef KESTROVA_DEVICEMODULE_H
#define KESTROVA_DEVICEMODULE_H

#include <chrono>
#include <memory>
#include <vector>

#include <QtCore/QString>

#include "CameraDevice.h"

/// A camera that answered a search.
struct FoundCamera
{
    QString address; ///< what opens it
    QString name;    ///< maker and model
    QString serial;
};

/// One for each module, for ever: a module is never unloaded. Any thread.
class DeviceModule
{
public:
    DeviceModule() = default;
    DeviceModule(const DeviceModule&) = delete;
    DeviceModule& operator=(const DeviceModule&) = delete;
    virtual ~DeviceModule() = default;

    /// Takes control of the camera with this address, which may take ten seconds. If that fails null and the reason,
    /// in the program's language. The camera is given up when the last owner of the device is gone.
    virtual std::shared_ptr<CameraDevice> open(const QString& address, QString* error) = 0;
    /// Asks on every network and bus; takes some seconds.
    virtual std::vector<FoundCamera> search() = 0;
    /// Waits for the cameras that are being given up, which goes on after the last owner is gone. False if the limit
    /// passed before.
    virtual bool waitForClosed(std::chrono::milliseconds limit) = 0;
};

/// The exported function, without C++'s decoration of names.
using DeviceModuleFunction = DeviceModule* (*)();
constexpr const char* deviceModuleFunctionName = "kestrovaDeviceModule";

#endif
