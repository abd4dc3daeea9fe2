// SPDX-License-Identifier: GPL-3.0-or-later
// Who acquires from an opened camera, and what it received last.
#include "OpenedCamera.h"

#include <cstring>
#include <exception>
#include <new>

#include <QtCore/QMetaObject>

#include <vnCore/CxCameraManager.h>

namespace {

/// How long the end of the host's acquisition may take with a camera that does not obey a stop.
constexpr std::chrono::milliseconds hostWait{200};
constexpr std::chrono::milliseconds failedWaitPause{10};

/// A device that runs out of memory has not done what it was asked for.
template<typename Call>
bool succeeds(Call call) noexcept
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// Never at once: the writer may hold a lock that a slot takes too.
void announceFormatLater(VNCORE_HANDLE camera)
{
    auto* manager = CxCameraManager::instance();
    QMetaObject::invokeMethod(
        manager,
        [manager, camera] {
            if (manager->openedCameras().contains(camera))
                Q_EMIT manager->imageFormatChanged(camera);
        },
        Qt::QueuedConnection);
}

} // namespace

OpenedCamera::OpenedCamera(VNCORE_HANDLE handle, std::shared_ptr<CameraDevice> device)
    : ownHandle(handle),
      camera(std::move(device)),
      deviceParameters(*camera, [this](const char* name, int value) { return setInt(name, value); })
{
}

OpenedCamera::~OpenedCamera()
{
    if (puller.joinable())
        puller.join();
}

bool OpenedCamera::setInt(const char* name, int value)
{
    if (!camera->setInt(name, value))
        return false;
    if (std::strcmp(name, VN_PRM_IMAGE_DATA_FORMAT) == 0)
        announceFormatLater(ownHandle);
    return true;
}

bool OpenedCamera::stopDevice()
{
    return succeeds([this] { return camera->stop(); });
}

bool OpenedCamera::startAcquisition(Acquirer acquirer)
{
    auto state = Acquirer::None;
    if (!presentAcquirer.compare_exchange_strong(state, Acquirer::Changing))
        return false;
    if (stopRefused)
        stopRefused = !stopDevice();
    {
        const std::lock_guard lock(newestMutex);
        nextFrameNumber = 0;
        ++acquisitions;
    }
    const bool started = succeeds([this] { return camera->start(); });
    if (started) {
        const std::lock_guard lock(newestMutex);
        lastImageAt = std::chrono::steady_clock::now();
    }
    state = Acquirer::Changing;
    if (presentAcquirer.compare_exchange_strong(state, started ? acquirer : Acquirer::None))
        return started;
    // Closed meanwhile, perhaps before the start took effect.
    stopDevice();
    return false;
}

bool OpenedCamera::stopAcquisition(Acquirer acquirer)
{
    auto state = acquirer;
    if (!presentAcquirer.compare_exchange_strong(state, Acquirer::Changing))
        return false;
    const bool stopped = stopDevice();
    stopRefused = !stopped;
    state = Acquirer::Changing;
    presentAcquirer.compare_exchange_strong(state, Acquirer::None);
    return stopped;
}

bool OpenedCamera::waitForImage(Acquirer acquirer, std::chrono::milliseconds limit, DeviceImage& image)
{
    const quint32 acquisition = acquisitions;
    if (presentAcquirer != acquirer || !succeeds([&] { return camera->waitForImage(limit, image); }))
        return false;
    DeviceImage latest = image;
    const std::lock_guard lock(newestMutex);
    lastImageAt = std::chrono::steady_clock::now();
    ++delivered.images;
    delivered.bytes += image.descriptor.dataBytes;
    if (acquisition == acquisitions) { // else a late one of the acquisition before
        delivered.missing += image.descriptor.frameNumber - nextFrameNumber;
        nextFrameNumber = image.descriptor.frameNumber + 1;
    }
    if (image.descriptor.data != nullptr)
        std::swap(newest, latest);
    return true;
}

bool OpenedCamera::startHostAcquisition()
{
    if (!startAcquisition(Acquirer::Host))
        return false;
    try {
        puller = std::thread(&OpenedCamera::pullImages, this);
        return true;
    } catch (const std::exception&) { // no thread can be had, or no memory for it
        stopAcquisition(Acquirer::Host);
        return false;
    }
}

bool OpenedCamera::stopHostAcquisition()
{
    const bool stopped = stopAcquisition(Acquirer::Host);
    if (puller.joinable())
        puller.join();
    return stopped;
}

void OpenedCamera::pullImages()
{
    DeviceImage image;
    while (presentAcquirer == Acquirer::Host) {
        // Without memory for an image a wait fails at once, again and again.
        if (!waitForImage(Acquirer::Host, hostWait, image) && presentAcquirer == Acquirer::Host)
            std::this_thread::sleep_for(failedWaitPause);
    }
}

DeviceImage OpenedCamera::latestImage() const
{
    const std::lock_guard lock(newestMutex);
    return newest;
}

std::optional<std::chrono::steady_clock::time_point> OpenedCamera::silentSince() const
{
    if (presentAcquirer != Acquirer::Host && presentAcquirer != Acquirer::Plugin)
        return std::nullopt;
    const std::lock_guard lock(newestMutex);
    return lastImageAt;
}

Deliveries OpenedCamera::deliveries() const
{
    const std::lock_guard lock(newestMutex);
    return delivered;
}

void OpenedCamera::close()
{
    presentAcquirer = Acquirer::Closed;
    stopDevice();
    if (puller.joinable())
        puller.join();
}
