// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter objects: looked up from the device, written back in batches.
#include "DeviceParameters.h"

#include <algorithm>

#include "CameraDevice.h"

CxCameraParameters::~CxCameraParameters() = default;

bool CxCameraParam::setParamValue(const CxValue& newValue)
{
    const bool known = std::any_of(enumItems.cbegin(), enumItems.cend(),
                                   [&newValue](const SxEnumItem& item) { return item.value == newValue.toInt(); });
    if (!enumItems.isEmpty() && !known)
        return false;
    value = newValue;
    return true;
}

DeviceParameters::DeviceParameters(CameraDevice& device, std::function<bool(const char*, int)> write)
    : camera(device), writeInt(std::move(write))
{
}

DeviceParameters::~DeviceParameters() = default;

CxCameraParam* DeviceParameters::findParam(const QString& name, bool /*includeHidden*/)
{
    const QByteArray key = name.toUtf8();
    if (!camera.hasParameter(key.constData()))
        return nullptr;
    auto& param = params[name];
    if (!param) {
        param = std::make_unique<CxCameraParam>();
        param->name = name;
    }
    if (pendingChanges.contains(name))
        return param.get();
    param->enumItems = camera.enumeration(key.constData());
    int value = 0;
    if (camera.getInt(key.constData(), value))
        param->value = CxValue(value);
    return param.get();
}

SxCameraInfo DeviceParameters::cameraInfo() const
{
    return camera.info();
}

void DeviceParameters::addParamCommitToBatch(const QString& name)
{
    if (!pendingChanges.contains(name))
        pendingChanges.append(name);
}

bool DeviceParameters::endCommitBatch(ExCommitRefreshGuiMode mode)
{
    const QStringList batch = std::exchange(pendingChanges, {});
    bool allTaken = true;
    for (const QString& name : batch) {
        const auto found = params.find(name);
        allTaken &= found != params.end() && writeInt(name.toUtf8().constData(), found->second->value.toInt());
    }
    if (mode == CommitRefreshGuiChanged) {
        for (const QString& name : batch)
            findParam(name, true);
    }
    return allTaken;
}
