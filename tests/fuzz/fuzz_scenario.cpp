// SPDX-License-Identifier: GPL-3.0-or-later
// Scenario files of any content: they are read or refused with a key and a reason, and what is read makes cameras.
#include <cstdlib>
#include <set>

#include "PlainText.h"
#include "sim/CameraModel.h"
#include "sim/ScenarioReader.h"

namespace {

/// Found as a crash.
void require(bool held)
{
    if (!held)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    QString error;
    const auto cameras =
        sim::readScenario(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)), error);
    require(cameras.empty() != error.isEmpty());
    require(error == singleLine(error)); // keys of the file stand in it
    std::set<QString> ids;
    for (const sim::CameraScenario& camera : cameras) {
        require(!camera.id.isEmpty() && ids.insert(camera.id).second);
        require(camera.sensor.width >= 8 && camera.sensor.height >= 1 && camera.link.packetBytes % 8 == 0);
        require(quint64{camera.sensor.width} * camera.sensor.height * 2 / camera.link.packetBytes <= 1 << 20);
        const sim::CameraModel model(camera, nullptr, 0);
        require(!model.nextEventNs());
    }
    return 0;
}
