// SPDX-License-Identifier: GPL-3.0-or-later
// Keeping the set of taken-over cameras true.
#include "TakeOvers.h"

#include <vnCore/CxCameraManager.h>

TakeOvers::TakeOvers(QObject* parent) : QObject(parent)
{
    connect(CxCameraManager::instance(), &CxCameraManager::cameraClosed, this,
            [this](VNCORE_HANDLE camera) { setTakenOver(camera, false); });
}

void TakeOvers::setTakenOver(VNCORE_HANDLE camera, bool takenOver)
{
    if (takenOver == isTakenOver(camera))
        return;
    if (!takenOver)
        takenCameras.remove(camera);
    else if (CxCameraManager::instance()->openedCameras().contains(camera))
        takenCameras.insert(camera);
    else
        return;
    Q_EMIT changed(camera, takenOver);
}

void TakeOvers::forgetAll()
{
    const auto cameras = takenCameras;
    for (VNCORE_HANDLE camera : cameras)
        setTakenOver(camera, false);
}
