// SPDX-License-Identifier: GPL-3.0-or-later
// GigE Vision cameras, with Aravis' fake one in the place of a real one.
#include "AravisCamera.h"
#include "DeviceContract.h"
#include "FakeGigeCamera.h"
#include "NetworkNamespace.h"

#include <thread>

namespace {

const bool inOwnNetwork = enterNetworkNamespace();

void waitUntil(const CameraDevice& device, bool lost)
{
    using namespace std::chrono_literals;
    for (const auto end = std::chrono::steady_clock::now() + 30s;
         device.isLost() != lost && std::chrono::steady_clock::now() < end;)
        std::this_thread::sleep_for(1ms);
}

ContractCamera make()
{
    const auto source = std::make_shared<FakeGigeCamera>();
    source->powerUp();
    QString error;
    ContractCamera made{aravis::AravisCamera::open(source->name(), &error)};
    auto* device = made.device.get();
    // A camera that dies is missed only after six seconds; one that has forgotten who controls it, at once.
    made.lose = [source, device] {
        source->tell("drop");
        waitUntil(*device, true);
        source->powerDown();
    };
    made.comeBack = [source, device] {
        source->powerUp();
        waitUntil(*device, false);
    };
    made.silence = [source] { source->tell("silent"); };
    return made;
}

} // namespace

std::map<const char*, std::function<ContractCamera()>> contractFamilies()
{
    return {{"GigE Vision", make}};
}
