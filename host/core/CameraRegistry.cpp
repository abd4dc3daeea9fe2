// SPDX-License-Identifier: GPL-3.0-or-later
// Known and opened cameras, and the order in which things happen when one comes or goes.
#include "CameraRegistry.h"

#include <algorithm>

#include <QtCore/QThread>

#include <vnCore/CxCameraManager.h>

#include "CameraTable.h"
#include "OpenedCamera.h"

CameraRegistry& CameraRegistry::instance()
{
    static CameraRegistry registry;
    return registry;
}

CameraRegistry::CameraRegistry()
{
    qRegisterMetaType<VNCORE_HANDLE>("VNCORE_HANDLE");
    // Both are used to the last and so must live longer.
    CxCameraManager::instance();
    CameraTable::instance();
}

CameraRegistry::~CameraRegistry()
{
    removeAllDevices();
}

int CameraRegistry::addDevice(std::shared_ptr<CameraDevice> device)
{
    Q_ASSERT(QThread::currentThread() == thread());
    device->setLossListener([this, listened = std::weak_ptr<CameraDevice>(device)](bool lost) {
        QMetaObject::invokeMethod(
            this,
            [this, listened, lost] {
                if (const auto present = listened.lock())
                    announceLoss(present, lost);
            },
            Qt::QueuedConnection);
    });
    knownDevices.push_back({std::move(device), nullptr});
    Q_EMIT devicesChanged();
    return deviceCount() - 1;
}

void CameraRegistry::removeAllDevices()
{
    // First, so that no slot can open one again.
    const auto devices = std::exchange(knownDevices, {});
    closeAll();
    for (const auto& known : devices)
        known.device->setLossListener({});
    Q_EMIT devicesChanged();
}

const CameraRegistry::KnownDevice* CameraRegistry::known(int device) const
{
    Q_ASSERT(QThread::currentThread() == thread());
    return device >= 0 && device < deviceCount() ? &knownDevices[static_cast<size_t>(device)] : nullptr;
}

std::shared_ptr<CameraDevice> CameraRegistry::device(int device) const
{
    const KnownDevice* found = known(device);
    return found ? found->device : nullptr;
}

SxCameraInfo CameraRegistry::deviceInfo(int device) const
{
    const auto* entry = known(device);
    return entry ? entry->device->info() : SxCameraInfo();
}

CameraLink CameraRegistry::deviceLink(int device) const
{
    const auto* entry = known(device);
    return entry ? entry->device->link() : CameraLink();
}

bool CameraRegistry::isDeviceLost(int device) const
{
    const auto* entry = known(device);
    return entry && entry->device->isLost();
}

VNCORE_HANDLE CameraRegistry::openedHandle(int device) const
{
    const auto* entry = known(device);
    return entry && openedHandles.contains(entry->handle) ? entry->handle : nullptr;
}

VNCORE_HANDLE CameraRegistry::open(int device)
{
    const auto* entry = known(device);
    if (!entry || entry->device->isLost() || CameraTable::instance().find(entry->handle))
        return nullptr;
    auto& handle = knownDevices[static_cast<size_t>(device)].handle;
    if (handle == nullptr)
        handle = reinterpret_cast<VNCORE_HANDLE>(++lastHandle); // NOLINT(performance-no-int-to-ptr): a number
    VNCORE_HANDLE camera = handle;
    CameraTable::instance().insert(camera, std::make_shared<OpenedCamera>(camera, entry->device));
    openedHandles.append(camera);
    Q_EMIT CxCameraManager::instance()->cameraOpened(camera);
    return camera;
}

bool CameraRegistry::close(VNCORE_HANDLE camera)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!openedHandles.removeOne(camera))
        return false;
    Q_EMIT CxCameraManager::instance()->cameraClosed(camera);
    if (const auto opened = CameraTable::instance().find(camera))
        opened->close();
    CameraTable::instance().remove(camera);
    return true;
}

void CameraRegistry::closeAll()
{
    const auto opened = openedHandles;
    std::for_each(opened.cbegin(), opened.cend(), [this](VNCORE_HANDLE camera) { close(camera); });
}

bool CameraRegistry::startHostAcquisition(VNCORE_HANDLE camera)
{
    const auto opened = CameraTable::instance().find(camera);
    if (!openedHandles.contains(camera) || !opened || !opened->startHostAcquisition())
        return false;
    Q_EMIT CxCameraManager::instance()->acquisitionStarted(camera);
    return true;
}

bool CameraRegistry::stopHostAcquisition(VNCORE_HANDLE camera)
{
    const auto opened = CameraTable::instance().find(camera);
    if (!opened || !opened->isAcquiring(Acquirer::Host))
        return false;
    const bool stopped = opened->stopHostAcquisition();
    Q_EMIT CxCameraManager::instance()->acquisitionFinished(camera);
    return stopped;
}

bool CameraRegistry::isHostAcquiring(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened && opened->isAcquiring(Acquirer::Host);
}

DeviceImage CameraRegistry::latestImage(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->latestImage() : DeviceImage();
}

std::optional<std::chrono::steady_clock::time_point> CameraRegistry::silentSince(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->silentSince() : std::nullopt;
}

std::optional<LostFrames> CameraRegistry::lostFrames(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->device().lostFrames() : std::nullopt;
}

StreamConditions CameraRegistry::streamConditions(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->device().streamConditions() : StreamConditions();
}

Deliveries CameraRegistry::deliveries(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->deliveries() : Deliveries();
}

void CameraRegistry::announceLoss(const std::shared_ptr<CameraDevice>& device, bool lost)
{
    const auto entry = std::find_if(knownDevices.cbegin(), knownDevices.cend(),
                                    [&device](const KnownDevice& known) { return known.device == device; });
    if (entry == knownDevices.cend())
        return;
    VNCORE_HANDLE camera = entry->handle;
    if (openedHandles.contains(camera)) {
        Q_EMIT lost ? cameraLost(camera) : cameraReturned(camera);
        // A camera comes back with the values of its power-up.
        if (!lost && openedHandles.contains(camera))
            Q_EMIT CxCameraManager::instance()->imageFormatChanged(camera);
    }
    Q_EMIT devicesChanged();
}
