// SPDX-License-Identifier: GPL-3.0-or-later
// A GigE Vision or USB3 Vision camera behind the device interface.
#ifndef KESTROVA_ARAVIS_ARAVISCAMERA_H
#define KESTROVA_ARAVIS_ARAVISCAMERA_H

#include <memory>

#include "CameraAddress.h"
#include "CameraDevice.h"
#include "CameraWorker.h"

namespace aravis {

/// Any thread. What the camera is asked goes to its worker and is waited for a limited time; what the host knows of it
/// anyway comes without. A lost camera is opened anew as soon as it answers again.
class AravisCamera final : public CameraDevice
{
public:
    /// Takes control of the camera; up to ten seconds. On failure null and the reason.
    static std::shared_ptr<AravisCamera> open(const QString& name, QString* error);
    /// Gives the camera up, in the background.
    ~AravisCamera() override;

    SxCameraInfo info() const override;
    CameraLink link() const override;
    bool getInt(const char* name, int& value) override;
    bool setInt(const char* name, int value) override;
    bool canSet(const char* name, int value) override;
    bool hasParameter(const char* name) const override;
    QList<CxCameraParam::SxEnumItem> enumeration(const char* name) const override;
    bool start() override;
    bool stop() override;
    bool waitForImage(std::chrono::milliseconds limit, DeviceImage& image) override;
    bool isLost() const override;
    std::optional<LostFrames> lostFrames() const override;
    StreamConditions streamConditions() const override;
    void setLossListener(std::function<void(bool lost)> listener) override;

private:
    struct State;

    AravisCamera(std::shared_ptr<CameraWorker> worker, std::shared_ptr<State> state);
    bool setFormat(quint32 code);

    const std::shared_ptr<CameraWorker> worker;
    const std::shared_ptr<State> state; ///< the worker's tasks and the library's threads have it too
};

} // namespace aravis

#endif
