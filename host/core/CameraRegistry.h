// SPDX-License-Identifier: GPL-3.0-or-later
// Every camera the host knows, which of them are opened, and the host's own acquisition. The viewer and the command
// line tool work with this; plug-ins see of it what CxCameraManager and the camera functions show.
#ifndef KESTROVA_CAMERAREGISTRY_H
#define KESTROVA_CAMERAREGISTRY_H

#include <memory>
#include <vector>

#include <QtCore/QObject>

#include "CameraDevice.h"

/// Owns the devices. All operations that are not marked otherwise, and all signals, belong to the user interface
/// thread. While a signal is emitted no lock of the core is held.
class VNCORE_EXPORT CameraRegistry : public QObject
{
    Q_OBJECT

public:
    static CameraRegistry& instance();

    /// Makes a device known, in the order in which the user sees the cameras. Returns the handle that it has
    /// whenever it is opened.
    VNCORE_HANDLE addDevice(std::shared_ptr<CameraDevice> device);

    /// Closes what is open and forgets every device; for the end of the program and between tests.
    void removeAllDevices();

    /// The known cameras, opened or not, in the order of addDevice().
    QList<VNCORE_HANDLE> knownCameras() const;
    SxCameraInfo cameraInfo(VNCORE_HANDLE camera) const;
    bool isLost(VNCORE_HANDLE camera) const;

    bool isOpen(VNCORE_HANDLE camera) const;
    /// False if the camera is unknown, open or lost.
    bool open(VNCORE_HANDLE camera);
    /// Takes the camera out of the opened ones, announces that while every call still works, and then ends whatever
    /// still acquires. False if the camera is not open. The handle is dead when this returns.
    bool close(VNCORE_HANDLE camera);
    void closeAll();

    /// The host's own acquisition, for the view: pulls images on a thread of its own. Start is refused while a
    /// plug-in acquires.
    bool startHostAcquisition(VNCORE_HANDLE camera);
    bool stopHostAcquisition(VNCORE_HANDLE camera);
    bool isHostAcquiring(VNCORE_HANDLE camera) const;

    /// The newest image that anybody received from the camera, or one without memory. Takes no image from anybody.
    /// Any thread.
    DeviceImage latestImage(VNCORE_HANDLE camera) const;

Q_SIGNALS:
    void cameraLost(VNCORE_HANDLE camera);
    void cameraReturned(VNCORE_HANDLE camera);
    void devicesChanged();

private:
    CameraRegistry();
    ~CameraRegistry() override;
};

#endif
