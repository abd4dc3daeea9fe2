// SPDX-License-Identifier: GPL-3.0-or-later
// The library's one list of devices.
#include "CameraSearch.h"

#include <mutex>

#include <arv.h>

namespace aravis {

namespace {

struct Listed
{
    FoundCamera camera;
    CameraAddress::Kind kind;
    std::string libraryId;
    std::string networkAddress;
};

std::vector<Listed> list()
{
    static std::mutex mutex; // the library has one list
    const std::lock_guard<std::mutex> lock(mutex);
    arv_update_device_list();
    std::vector<Listed> devices;
    for (unsigned i = 0; i < arv_get_n_devices(); ++i) {
        const std::string protocol = arv_get_device_protocol(i);
        const bool usb = protocol == "USB3Vision";
        if (!usb && protocol != "GigEVision")
            continue;
        const auto text = [](const char* said) { return QString::fromUtf8(said); };
        const QString serial = text(arv_get_device_serial_nbr(i));
        const QString address = text(arv_get_device_address(i));
        const QString name = text(arv_get_device_vendor(i)) + QLatin1Char(' ') + text(arv_get_device_model(i));
        devices.push_back({{usb ? QStringLiteral("usb:") + serial : QStringLiteral("gev:") + address, name, serial},
                           usb ? CameraAddress::Kind::Usb : CameraAddress::Kind::NetworkSerial,
                           arv_get_device_id(i),
                           address.toStdString()});
    }
    return devices;
}

} // namespace

std::vector<FoundCamera> searchCameras()
{
    std::vector<FoundCamera> found;
    for (const Listed& device : list())
        found.push_back(device.camera);
    return found;
}

std::string addressOfSerial(const CameraAddress& address)
{
    for (const Listed& device : list()) {
        if (device.kind == address.kind && device.camera.serial.toStdString() == address.text)
            return device.kind == CameraAddress::Kind::Usb ? device.libraryId : device.networkAddress;
    }
    return {};
}

} // namespace aravis
