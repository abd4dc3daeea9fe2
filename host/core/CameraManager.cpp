// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins see of the registry.
#include <vnCore/CxCameraManager.h>

#include "CameraRegistry.h"
#include "CameraTable.h"
#include "OpenedCamera.h"

CxCameraManager::CxCameraManager() = default;

CxCameraManager* CxCameraManager::instance()
{
    static CxCameraManager manager;
    return &manager;
}

QList<VNCORE_HANDLE> CxCameraManager::openedCameras() const
{
    return CameraRegistry::instance().openedCameras();
}

bool CxCameraManager::isCameraRunning(VNCORE_HANDLE camera) const
{
    return CameraRegistry::instance().isHostAcquiring(camera);
}

CxCameraParameters* CxCameraManager::cameraParameters(VNCORE_HANDLE camera) const
{
    const auto opened = CameraTable::instance().find(camera);
    return opened ? opened->parameters() : nullptr;
}
