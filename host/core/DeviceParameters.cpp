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
    : m_device(device), m_write(std::move(write))
{
}

DeviceParameters::~DeviceParameters() = default;

CxCameraParam* DeviceParameters::findParam(const QString& name, bool /*includeHidden*/)
{
    const QByteArray key = name.toUtf8();
    if (!m_device.hasParameter(key.constData()))
        return nullptr;
    auto& param = m_params[name];
    if (!param) {
        param = std::make_unique<CxCameraParam>();
        param->name = name;
    }
    if (m_batch.contains(name))
        return param.get();
    param->enumItems = m_device.enumeration(key.constData());
    int value = 0;
    if (m_device.getInt(key.constData(), value))
        param->value = CxValue(value);
    return param.get();
}

SxCameraInfo DeviceParameters::cameraInfo() const
{
    return m_device.info();
}

void DeviceParameters::addParamCommitToBatch(const QString& name)
{
    if (!m_batch.contains(name))
        m_batch.append(name);
}

bool DeviceParameters::endCommitBatch(ExCommitRefreshGuiMode mode)
{
    const QStringList batch = std::exchange(m_batch, {});
    bool allTaken = true;
    for (const QString& name : batch) {
        const auto found = m_params.find(name);
        allTaken &= found != m_params.end() && m_write(name.toUtf8().constData(), found->second->value.toInt());
    }
    if (mode == CommitRefreshGuiChanged) {
        for (const QString& name : batch)
            findParam(name, true);
    }
    return allTaken;
}
