// SPDX-License-Identifier: GPL-3.0-or-later
// The module's entry.
#include <new>

#include "AravisCamera.h"
#include "CameraSearch.h"
#include "DeviceModule.h"

namespace {

class AravisModule final : public DeviceModule
{
public:
    std::shared_ptr<CameraDevice> open(const QString& address, QString* error) override
    {
        return aravis::AravisCamera::open(address, error);
    }
    std::vector<FoundCamera> search() override { return aravis::searchCameras(); }
    bool waitForClosed(std::chrono::milliseconds limit) override { return aravis::CameraWorker::waitForAll(limit); }
};

} // namespace

extern "C" Q_DECL_EXPORT DeviceModule* kestrovaDeviceModule()
{
    static auto* const module = new AravisModule; // as long as the program
    return module;
}
