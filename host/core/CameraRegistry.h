// SPDX-License-Identifier: GPL-3.0-or-later
// Every camera the host knows, which of them are opened, and the host's own acquisition. The viewer and the command
// line tool work with this; plug-ins see of it what CxCameraManager and the camera functions show.
#ifndef KESTROVA_CAMERAREGISTRY_H
#define KESTROVA_CAMERAREGISTRY_H

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include <QtCore/QList>
#include <QtCore/QObject>

#include "CameraDevice.h"
#include "Deliveries.h"

/// Owns the devices. A known camera, opened or not, goes by its index in the order of addDevice(); an opened one also
/// by its handle, which it gets when it is first opened and has again whenever it is opened later. All operations
/// that are not marked otherwise, and all signals, belong to the user interface thread. While a signal is emitted no
/// lock of the core is held, and slots may call anything here.
class VNCORE_EXPORT CameraRegistry : public QObject
{
    Q_OBJECT

public:
    /// To be called first on the user interface thread.
    static CameraRegistry& instance();
    ~CameraRegistry() override;

    // --- known cameras ---
    /// Makes a device known, in the order in which the user sees the cameras, and returns its index.
    int addDevice(std::shared_ptr<CameraDevice> device);
    /// Closes what is open and forgets every device; for the end of the program and between tests. Handles are not
    /// given out again.
    void removeAllDevices();
    int deviceCount() const { return static_cast<int>(knownDevices.size()); }
    /// Of an unknown index: null, empty texts, no link, not lost, null.
    std::shared_ptr<CameraDevice> device(int device) const;
    SxCameraInfo deviceInfo(int device) const;
    CameraLink deviceLink(int device) const;
    bool isDeviceLost(int device) const;
    VNCORE_HANDLE openedHandle(int device) const; ///< null while the camera is not open

    // --- opened cameras ---
    /// The handle, or null if the camera is unknown, open, closing or lost.
    VNCORE_HANDLE open(int device);
    /// Takes the camera out of the opened ones, announces that while every call still works, and then ends whatever
    /// still acquires. False if the camera is not open. The handle is dead when this returns.
    bool close(VNCORE_HANDLE camera);
    void closeAll();
    QList<VNCORE_HANDLE> openedCameras() const { return openedHandles; }

    /// The host's own acquisition, for the view: pulls images on a thread of its own. Start is refused while a
    /// plug-in acquires and when no thread can be had. Stop may take a fifth of a second, and returns false if there
    /// is nothing to stop or the camera did not obey; the host has then stopped listening all the same.
    bool startHostAcquisition(VNCORE_HANDLE camera);
    bool stopHostAcquisition(VNCORE_HANDLE camera);
    bool isHostAcquiring(VNCORE_HANDLE camera) const;

    /// The newest image that anybody received from the camera, or one without memory. Takes no image from anybody.
    /// Any thread.
    DeviceImage latestImage(VNCORE_HANDLE camera) const;

    /// Since when nobody has received an image from the camera: when the last one came, or when the acquisition began
    /// if none has come since. Goes on while the camera is lost and after its return. None while nobody acquires, be
    /// it the host or a plug-in. Images that nobody waits for are not received. Any thread.
    std::optional<std::chrono::steady_clock::time_point> silentSince(VNCORE_HANDLE camera) const;

    /// What the camera has handed out since it was opened. Nothing of one that is not open. Any thread.
    Deliveries deliveries(VNCORE_HANDLE camera) const;

    /// Where its frames were lost, as the device tells. Nothing of one that is not open. Any thread.
    std::optional<LostFrames> lostFrames(VNCORE_HANDLE camera) const;
    StreamConditions streamConditions(VNCORE_HANDLE camera) const;

Q_SIGNALS:
    /// An opened camera's link is gone, or there again. Whatever acquired gets no image any more, also after the
    /// return, until it is stopped and started.
    void cameraLost(VNCORE_HANDLE camera);
    void cameraReturned(VNCORE_HANDLE camera);
    /// A device was added, removed, lost or has returned.
    void devicesChanged();

private:
    struct KnownDevice
    {
        std::shared_ptr<CameraDevice> device;
        VNCORE_HANDLE handle = nullptr; ///< null until first opened
    };

    CameraRegistry();
    const KnownDevice* known(int device) const;
    void announceLoss(const std::shared_ptr<CameraDevice>& device, bool lost);

    std::vector<KnownDevice> knownDevices;
    QList<VNCORE_HANDLE> openedHandles; ///< in the order of opening
    quintptr lastHandle = 0;
};

#endif
