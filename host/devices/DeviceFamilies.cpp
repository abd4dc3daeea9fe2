// SPDX-License-Identifier: GPL-3.0-or-later
// The families of cameras. A new one adds its files, its folder to CMakeLists.txt and a line here.
#include "DeviceFamilies.h"

#include <atomic>
#include <mutex>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLibrary>

#include "sim/SimCameras.h"

namespace {

/// The context of this file's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DeviceFamilies)
};

std::atomic<DeviceModule*> loadedModule{nullptr};

QString moduleFile()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString installed = programs.filePath(QStringLiteral("../" KESTROVA_LIBDIR "/kestrova/devices/aravis.so"));
    const QString built = programs.filePath(QStringLiteral("../lib/kestrova/devices/aravis.so"));
    return QDir::cleanPath(QFile::exists(installed) ? installed : built);
}

/// Loads it when it is first asked for.
DeviceModule* aravisModule(QString* error)
{
    static std::mutex loading;
    const std::lock_guard<std::mutex> lock(loading);
    if (loadedModule)
        return loadedModule;
    const QString file = moduleFile();
    if (!QFile::exists(file)) {
        *error = Text::tr("GigE Vision and USB3 Vision are not installed (package kestrova-aravis)");
        return nullptr;
    }
    QLibrary library(file); // stays loaded
    const auto module = reinterpret_cast<DeviceModuleFunction>(library.resolve(deviceModuleFunctionName));
    if (module)
        loadedModule = module();
    else
        *error = library.errorString();
    return loadedModule;
}

} // namespace

std::vector<std::shared_ptr<CameraDevice>> createDevices(const QString& file, QString* error)
{
    return sim::createCameras(file, error);
}

bool isDeviceAddress(const QString& name)
{
    return name.startsWith(QLatin1String("gev:")) || name.startsWith(QLatin1String("usb:"));
}

std::shared_ptr<CameraDevice> openDevice(const QString& address, QString* error)
{
    DeviceModule* module = aravisModule(error);
    return module ? module->open(address, error) : nullptr;
}

std::vector<FoundCamera> searchDevices(QString* error)
{
    DeviceModule* module = aravisModule(error);
    return module ? module->search() : std::vector<FoundCamera>();
}

void waitForClosedDevices()
{
    if (DeviceModule* module = loadedModule)
        module->waitForClosed(std::chrono::seconds(15));
}
