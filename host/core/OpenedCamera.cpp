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
    : m_handle(handle),
      m_device(std::move(device)),
      m_parameters(*m_device, [this](const char* name, int value) { return setInt(name, value); })
{
}

OpenedCamera::~OpenedCamera()
{
    if (m_puller.joinable())
        m_puller.join();
}

bool OpenedCamera::setInt(const char* name, int value)
{
    if (!m_device->setInt(name, value))
        return false;
    if (std::strcmp(name, VN_PRM_IMAGE_DATA_FORMAT) == 0)
        announceFormatLater(m_handle);
    return true;
}

bool OpenedCamera::stopDevice()
{
    return succeeds([this] { return m_device->stop(); });
}

bool OpenedCamera::startAcquisition(Acquirer acquirer)
{
    auto state = Acquirer::None;
    if (!m_acquirer.compare_exchange_strong(state, Acquirer::Changing))
        return false;
    if (m_stopRefused)
        m_stopRefused = !stopDevice();
    const bool started = succeeds([this] { return m_device->start(); });
    if (started) {
        const std::lock_guard lock(m_latestMutex);
        m_silentSince = std::chrono::steady_clock::now();
    }
    state = Acquirer::Changing;
    if (m_acquirer.compare_exchange_strong(state, started ? acquirer : Acquirer::None))
        return started;
    // Closed meanwhile, perhaps before the start took effect.
    stopDevice();
    return false;
}

bool OpenedCamera::stopAcquisition(Acquirer acquirer)
{
    auto state = acquirer;
    if (!m_acquirer.compare_exchange_strong(state, Acquirer::Changing))
        return false;
    const bool stopped = stopDevice();
    m_stopRefused = !stopped;
    state = Acquirer::Changing;
    m_acquirer.compare_exchange_strong(state, Acquirer::None);
    return stopped;
}

bool OpenedCamera::waitForImage(Acquirer acquirer, std::chrono::milliseconds limit, DeviceImage& image)
{
    if (m_acquirer != acquirer || !succeeds([&] { return m_device->waitForImage(limit, image); }))
        return false;
    DeviceImage latest = image;
    const std::lock_guard lock(m_latestMutex);
    m_silentSince = std::chrono::steady_clock::now();
    if (image.descriptor.data != nullptr)
        std::swap(m_latest, latest);
    return true;
}

bool OpenedCamera::startHostAcquisition()
{
    if (!startAcquisition(Acquirer::Host))
        return false;
    try {
        m_puller = std::thread(&OpenedCamera::pullImages, this);
        return true;
    } catch (const std::exception&) { // no thread can be had, or no memory for it
        stopAcquisition(Acquirer::Host);
        return false;
    }
}

bool OpenedCamera::stopHostAcquisition()
{
    const bool stopped = stopAcquisition(Acquirer::Host);
    if (m_puller.joinable())
        m_puller.join();
    return stopped;
}

void OpenedCamera::pullImages()
{
    DeviceImage image;
    while (m_acquirer == Acquirer::Host) {
        // Without memory for an image a wait fails at once, again and again.
        if (!waitForImage(Acquirer::Host, hostWait, image) && m_acquirer == Acquirer::Host)
            std::this_thread::sleep_for(failedWaitPause);
    }
}

DeviceImage OpenedCamera::latestImage() const
{
    const std::lock_guard lock(m_latestMutex);
    return m_latest;
}

std::optional<std::chrono::steady_clock::time_point> OpenedCamera::silentSince() const
{
    if (m_acquirer != Acquirer::Host && m_acquirer != Acquirer::Plugin)
        return std::nullopt;
    const std::lock_guard lock(m_latestMutex);
    return m_silentSince;
}

void OpenedCamera::close()
{
    m_acquirer = Acquirer::Closed;
    stopDevice();
    if (m_puller.joinable())
        m_puller.join();
}
