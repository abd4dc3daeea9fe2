// SPDX-License-Identifier: GPL-3.0-or-later
// The families of cameras. A new one adds its files, its folder to CMakeLists.txt and a line here.
#include "DeviceFamilies.h"

#include "sim/SimCameras.h"

std::vector<std::shared_ptr<CameraDevice>> createDevices(const QString& file, QString* error)
{
    return sim::createCameras(file, error);
}
