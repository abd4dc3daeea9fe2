// SPDX-License-Identifier: GPL-3.0-or-later
// The one interface behind which every family of cameras stands. It knows no handle, no signal and no lock of the
// host: the registry adds those.
#ifndef KESTROVA_CAMERADEVICE_H
#define KESTROVA_CAMERADEVICE_H

#include <chrono>
#include <functional>
#include <memory>

#include <QtCore/QList>
#include <QtCore/QString>

#include <vnCore/CxCameraParameters.h>
#include <vnCore/vnTypes.h>

/// One image as a device hands it out.
struct DeviceImage
{
    VN_IMG descriptor{};                ///< `data` points into what `memory` keeps alive
    std::shared_ptr<const void> memory; ///< the device does not write to it while somebody holds this
};

/// A camera that can be opened, whether or not it is at present. All operations may be called from any thread at
/// any time and report failure by their result; none throws.
class CameraDevice
{
public:
    CameraDevice() = default;
    CameraDevice(const CameraDevice&) = delete;
    CameraDevice& operator=(const CameraDevice&) = delete;
    virtual ~CameraDevice() = default;

    virtual SxCameraInfo info() const = 0;

    /// False, and `value` unchanged, if there is no such parameter or the camera refuses.
    virtual bool getInt(const char* name, int& value) = 0;
    virtual bool setInt(const char* name, int value) = 0;
    /// Whether setInt() would succeed now; changes nothing.
    virtual bool canSet(const char* name, int value) = 0;
    virtual bool hasParameter(const char* name) const = 0;
    /// The entries of an enumeration in the camera's order, empty for any other parameter.
    virtual QList<CxCameraParam::SxEnumItem> enumeration(const char* name) const = 0;

    /// Starts the camera's one acquisition; false if the camera refuses or acquires already.
    virtual bool start() = 0;
    /// Ends the acquisition and wakes waiters, whose wait then fails. True if the camera does not acquire any more,
    /// also when it did not before or is lost.
    virtual bool stop() = 0;

    /// Waits for the next image that has not been handed out yet. False when the time limit passed or stop() ended
    /// the wait, and without a start() at once. From start() to stop() a wait that brings no image uses up its limit,
    /// on whatever clock the device runs, also while the camera is lost and after it has come back without
    /// acquiring: nobody who waits in a loop may be made to spin.
    virtual bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) = 0;

    /// Whether the link to the camera is gone. Parameters then fail; the device may come back by itself.
    virtual bool isLost() const = 0;

    /// Called on any thread, without a lock held, when the camera is lost (true) or comes back (false). An empty
    /// function removes the listener; when that returns, no call is under way any more.
    virtual void setLossListener(std::function<void(bool lost)> listener) = 0;
};

#endif
