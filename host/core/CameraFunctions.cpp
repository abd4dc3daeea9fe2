// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions: each looks the camera up and asks its device, with no lock held.
#include <vnCore/vnApi.h>

#include <cstring>
#include <new>
#include <optional>

#include "CameraTable.h"
#include "OpenedCamera.h"

namespace {

bool report(int* error, int code)
{
    if (error != nullptr)
        *error = code;
    return code == VN_ERR_NONE;
}

/// The outcome of a parameter call; asks the device for the reason only if somebody wants to know it.
bool reportParameter(int* error, CameraDevice& device, const char* name, bool done)
{
    if (done)
        return report(error, VN_ERR_NONE);
    const bool exists = error == nullptr || device.hasParameter(name);
    return report(error, exists ? VN_ERR_REFUSED : VN_ERR_NO_PARAM);
}

/// The name without the suffix that makes a write a question.
std::optional<QByteArray> askedParameter(const char* name)
{
    constexpr size_t suffixLength = sizeof(VN_PRM_SUFFIX_SETTABLE) - 1;
    const size_t length = std::strlen(name);
    if (length < suffixLength || std::strcmp(name + length - suffixLength, VN_PRM_SUFFIX_SETTABLE) != 0)
        return std::nullopt;
    return QByteArray(name, static_cast<int>(length - suffixLength));
}

/// Devices may run out of memory; whoever calls a camera function gets no exceptions.
template<typename Call>
bool guarded(int* error, Call call) noexcept
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return report(error, VN_ERR_NO_MEMORY);
    }
}

/// A call about a parameter of an opened camera.
template<typename Call>
bool onParameter(VNCORE_HANDLE camera, const char* name, int* error, Call call) noexcept
{
    return guarded(error, [&] {
        const auto opened = CameraTable::instance().find(camera);
        if (!opened)
            return report(error, VN_ERR_NO_CAMERA);
        if (name == nullptr)
            return report(error, VN_ERR_NO_PARAM);
        return call(*opened);
    });
}

/// What keeps the memory of this thread's last image: until its next wait, whatever becomes of the camera.
thread_local std::shared_ptr<const void> imageLease;

} // namespace

bool vnApi_GetParamInt(VNCORE_HANDLE camera, const char* name, int& value, int* error)
{
    return onParameter(camera, name, error, [&](OpenedCamera& opened) {
        return reportParameter(error, opened.device(), name, opened.device().getInt(name, value));
    });
}

bool vnApi_SetParamInt(VNCORE_HANDLE camera, const char* name, int value, int* error)
{
    return onParameter(camera, name, error, [&](OpenedCamera& opened) {
        CameraDevice& device = opened.device();
        if (const auto asked = askedParameter(name))
            return reportParameter(error, device, asked->constData(), device.canSet(asked->constData(), value));
        return reportParameter(error, device, name, opened.setInt(name, value));
    });
}

bool vnApi_GetImage(VNCORE_HANDLE camera, unsigned int timeoutMs, VN_IMG* image, int* error, bool /*newest*/)
{
    return guarded(error, [&] {
        imageLease.reset();
        const auto opened = CameraTable::instance().find(camera);
        if (!opened)
            return report(error, VN_ERR_NO_CAMERA);
        if (image == nullptr || image->size != sizeof(VN_IMG))
            return report(error, VN_ERR_REFUSED);
        if (!opened->isAcquiring(Acquirer::Plugin))
            return report(error, VN_ERR_NOT_RUNNING);
        DeviceImage received;
        if (!opened->waitForImage(Acquirer::Plugin, std::chrono::milliseconds(timeoutMs), received))
            return report(error, opened->isAcquiring(Acquirer::Plugin) ? VN_ERR_TIMEOUT : VN_ERR_NOT_RUNNING);
        *image = received.descriptor;
        image->size = sizeof(VN_IMG);
        imageLease = std::move(received.memory);
        return report(error, VN_ERR_NONE);
    });
}

bool vnApi_StartAcquisition(VNCORE_HANDLE camera)
{
    return guarded(nullptr, [&] {
        const auto opened = CameraTable::instance().find(camera);
        return opened && opened->startAcquisition(Acquirer::Plugin);
    });
}

bool vnApi_StopAcquisition(VNCORE_HANDLE camera)
{
    return guarded(nullptr, [&] {
        const auto opened = CameraTable::instance().find(camera);
        return opened && opened->stopAcquisition(Acquirer::Plugin);
    });
}
