// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions: each looks the camera up and asks its device, with no lock held.
#include <vnCore/vnApi.h>

#include <cstring>
#include <new>
#include <optional>

#include "CameraTable.h"
#include "LastCameraCall.h"
#include "OpenedCamera.h"

namespace {

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
bool onCamera(VNCORE_HANDLE camera, Call call) noexcept
{
    bool done = false;
    try {
        const auto opened = CameraTable::instance().find(camera);
        done = opened && call(*opened);
    } catch (const std::bad_alloc&) {
        done = false;
    }
    lastCameraCall() = {camera, done};
    return done;
}

/// What keeps the memory of this thread's last image: until its next wait, whatever becomes of the camera.
thread_local std::shared_ptr<const void> imageLease;

} // namespace

CameraCall& lastCameraCall()
{
    thread_local CameraCall call;
    return call;
}

bool vnApi_GetParamInt(VNCORE_HANDLE camera, const char* name, int& value, int* /*reserved*/)
{
    return onCamera(camera,
                    [&](OpenedCamera& opened) { return name != nullptr && opened.device().getInt(name, value); });
}

bool vnApi_SetParamInt(VNCORE_HANDLE camera, const char* name, int value, int* /*reserved*/)
{
    return onCamera(camera, [&](OpenedCamera& opened) {
        if (name == nullptr)
            return false;
        if (const auto asked = askedParameter(name))
            return opened.device().canSet(asked->constData(), value);
        return opened.setInt(name, value);
    });
}

bool vnApi_GetImage(VNCORE_HANDLE camera, unsigned int timeoutMs, VN_IMG* image, int* /*reserved*/, bool /*newest*/)
{
    imageLease.reset();
    return onCamera(camera, [&](OpenedCamera& opened) {
        DeviceImage received;
        if (image == nullptr || image->size != sizeof(VN_IMG) ||
            !opened.waitForImage(Acquirer::Plugin, std::chrono::milliseconds(timeoutMs), received))
            return false;
        *image = received.descriptor;
        image->size = sizeof(VN_IMG);
        imageLease = std::move(received.memory);
        return true;
    });
}

bool vnApi_StartAcquisition(VNCORE_HANDLE camera)
{
    return onCamera(camera, [](OpenedCamera& opened) { return opened.startAcquisition(Acquirer::Plugin); });
}

bool vnApi_StopAcquisition(VNCORE_HANDLE camera)
{
    return onCamera(camera, [](OpenedCamera& opened) { return opened.stopAcquisition(Acquirer::Plugin); });
}
