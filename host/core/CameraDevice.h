// SPDX-License-Identifier: GPL-3.0-or-later
// The one interface behind which every family of cameras stands. It knows no handle, no signal and no lock of the
// host: the registry adds those.
#ifndef KESTROVA_CAMERADEVICE_H
#define KESTROVA_CAMERADEVICE_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include <vnCore/CxCameraParameters.h>
#include <vnCore/vnTypes.h>

#include "LostFrames.h"
#include "StreamConditions.h"

/// One image as a device hands it out.
struct DeviceImage
{
    VN_IMG descriptor{};                ///< `data` points into what `memory` keeps alive, or is null
    std::shared_ptr<const void> memory; ///< while somebody holds this, the device does not write to it; outlives it
};

/// What carries a camera's data to the host: a cable, a network interface, a switch.
struct CameraLink
{
    QString name;               ///< cameras that tell the same one share it; empty: its own, or not known
    std::optional<double> rate; ///< MB/s that it can carry; nothing: not known
};

/// A camera that can be opened, whether or not it is at present. All operations may be called from any thread at
/// any time, also while another thread waits for an image; they report failure by their result and throw nothing
/// but std::bad_alloc. Every family passes tests/core/devicecontract, which has these sentences one by one.
class CameraDevice
{
public:
    CameraDevice() = default;
    CameraDevice(const CameraDevice&) = delete;
    CameraDevice& operator=(const CameraDevice&) = delete;
    virtual ~CameraDevice() = default;

    /// Always the same, also while the camera is lost.
    virtual SxCameraInfo info() const = 0;
    /// Always the same, too.
    virtual CameraLink link() const { return {}; }

    /// False, and `value` unchanged, if there is no such parameter, the camera refuses or is lost.
    virtual bool getInt(const char* name, int& value) = 0;
    /// False, and the camera unchanged, in the same cases.
    virtual bool setInt(const char* name, int value) = 0;
    /// Whether setInt() would succeed now; changes nothing.
    virtual bool canSet(const char* name, int value) = 0;
    /// Also of a lost camera.
    virtual bool hasParameter(const char* name) const = 0;
    /// The entries of an enumeration in the camera's order, empty for any other parameter. Also of a lost camera.
    virtual QList<CxCameraParam::SxEnumItem> enumeration(const char* name) const = 0;

    /// Starts the camera's one acquisition; one that is under way begins anew. Frame numbers begin at 0, and images
    /// from before are not handed out any more. False if the camera refuses or is lost.
    virtual bool start() = 0;
    /// Ends the acquisition and wakes waiters, whose wait then fails. True if the camera does not acquire any more,
    /// also when it did not before or is lost. False if it refuses; the acquisition then goes on.
    virtual bool stop() = 0;

    /// Waits for the next image that has not been handed out yet; frame numbers rise from image to image. False, and
    /// `image` unchanged, when the time limit passed or stop() ended the wait, and without a start() at once. From
    /// start() to stop() a wait that brings no image uses up its limit, on whatever clock the device runs, also while
    /// the camera is lost, when it comes back and as long as it then does not acquire: nobody who waits in a loop may
    /// be made to spin.
    virtual bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) = 0;

    /// Where frames were lost, in all acquisitions since the camera was opened: those before a whole one soon after that
    /// has been handed out, and those at the end after stop(), for which it may wait a tenth of a second. Nothing if
    /// the family cannot tell; then it never can.
    virtual std::optional<LostFrames> lostFrames() const { return std::nullopt; }
    /// What may explain them. Reads files of the system; after stop(), too.
    virtual StreamConditions streamConditions() const { return {}; }

    /// Whether the link to the camera is gone. The device may come back by itself; it then does not acquire, and its
    /// parameters may have other values than before.
    virtual bool isLost() const = 0;

    /// Called on any thread, without a lock held, as soon as the device knows that the camera is lost (true) or back
    /// (false): in this order, each once, one call at a time. It may call the device and must not throw. An empty
    /// function removes the listener; when that returns, no call is under way any more but the one that it may have
    /// come from.
    virtual void setLossListener(std::function<void(bool lost)> listener) = 0;
};

#endif
