// SPDX-License-Identifier: GPL-3.0-or-later
// One opened camera: its device, who acquires from it, and the newest image. It announces nothing; the registry and
// the camera functions do.
#ifndef KESTROVA_OPENEDCAMERA_H
#define KESTROVA_OPENEDCAMERA_H

#include <atomic>
#include <mutex>
#include <optional>
#include <thread>

#include "CameraDevice.h"
#include "Deliveries.h"
#include "DeviceParameters.h"

/// Who acquires. There is one acquisition at a time, and only its owner may wait and stop.
enum class Acquirer
{
    None,
    Host,     ///< the host's own, for the view
    Plugin,   ///< one through the camera functions
    Changing, ///< a start or stop is under way
    Closed,   ///< the camera is closed: nobody any more
};

/// Any thread, but for the host's acquisition, close() and the parameter set, which belong to the user interface
/// thread. The device is never called with a lock of this class held, so that a device may call back.
class OpenedCamera
{
public:
    OpenedCamera(VNCORE_HANDLE handle, std::shared_ptr<CameraDevice> device);
    ~OpenedCamera();

    CameraDevice& device() { return *camera; }
    CxCameraParameters* parameters() { return &deviceParameters; }

    /// Writes a parameter for whoever asks; a new image format is announced, queued.
    bool setInt(const char* name, int value);

    bool startAcquisition(Acquirer acquirer);
    /// False if `acquirer` has no acquisition or the camera did not obey; the acquisition is over in any case.
    bool stopAcquisition(Acquirer acquirer);
    bool isAcquiring(Acquirer acquirer) const { return presentAcquirer == acquirer; }
    /// False at once if `acquirer` has no acquisition.
    bool waitForImage(Acquirer acquirer, std::chrono::milliseconds limit, DeviceImage& image);

    /// The acquisition for the view, with the thread that pulls its images.
    bool startHostAcquisition();
    bool stopHostAcquisition();

    DeviceImage latestImage() const;
    /// When the last image came, or the acquisition began if none has come since; none while nobody acquires.
    std::optional<std::chrono::steady_clock::time_point> silentSince() const;
    Deliveries deliveries() const;

    /// Ends every acquisition, wakes waiters and refuses whatever comes later.
    void close();

private:
    bool stopDevice();
    void pullImages();

    VNCORE_HANDLE ownHandle;
    const std::shared_ptr<CameraDevice> camera;
    DeviceParameters deviceParameters;
    std::atomic<Acquirer> presentAcquirer{Acquirer::None};
    std::atomic<quint32> acquisitions{0};
    std::atomic<bool> stopRefused{false}; ///< the camera may still acquire, for nobody
    std::thread puller;

    /// Guards what follows; nothing is called under it.
    mutable std::mutex newestMutex;
    DeviceImage newest;
    std::chrono::steady_clock::time_point lastImageAt;
    Deliveries delivered;
    quint32 nextFrameNumber = 0; ///< of the present acquisition, if none is missing
};

#endif
