// SPDX-License-Identifier: GPL-3.0-or-later
// A device's parameters as the objects that user interfaces work with.
#ifndef KESTROVA_DEVICEPARAMETERS_H
#define KESTROVA_DEVICEPARAMETERS_H

#include <functional>
#include <map>
#include <memory>

#include <QtCore/QStringList>

#include <vnCore/CxCameraParameters.h>

class CameraDevice;

/// The parameter set of one opened camera. User interface thread only; asks the device without a lock.
class DeviceParameters final : public CxCameraParameters
{
public:
    /// Writes go through `write`, which announces what must be announced.
    DeviceParameters(CameraDevice& device, std::function<bool(const char* name, int value)> write);
    ~DeviceParameters() override;

    CxCameraParam* findParam(const QString& name, bool includeHidden) override;
    SxCameraInfo cameraInfo() const override;
    void addParamCommitToBatch(const QString& name) override;
    bool endCommitBatch(ExCommitRefreshGuiMode mode) override;

private:
    CameraDevice& camera;
    const std::function<bool(const char*, int)> writeInt;
    std::map<QString, std::unique_ptr<CxCameraParam>> params; ///< those that were looked up
    QStringList pendingChanges;
};

#endif
