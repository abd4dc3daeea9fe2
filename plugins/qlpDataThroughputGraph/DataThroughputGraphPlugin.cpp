// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-in object makes the form, hands it to the host and passes settings on.
#include "DataThroughputGraphPlugin.h"

#include <memory>
#include <new>

#include <QtCore/QSettings>

#include <vnCore/IxAppDelegate.h>
#include <vnCore/vnApi.h>

#include "form/DataGraphForm.h"

namespace {

const QLatin1String settingsGroup("DataThroughputGraphPlugin");
constexpr int dockArea = 8;          // bottom
constexpr int allowedDockAreas = 12; // top and bottom

} // namespace

bool CxDataThroughputGraphPlugin::init()
{
    IxAppDelegate* host = IxAppDelegate::instance();
    if (!host)
        return false;
    try {
        auto made = std::make_unique<CxDataGraphForm>();
        host->addPluginWidget(made.get(), dockArea, allowedDockAreas, false);
        form = made.release(); // the host's from now on
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void CxDataThroughputGraphPlugin::loadSettings(QSettings& settings)
{
    settings.beginGroup(settingsGroup);
    if (form)
        form->loadSettings(settings);
    settings.endGroup();
}

void CxDataThroughputGraphPlugin::saveSettings(QSettings& settings)
{
    settings.beginGroup(settingsGroup);
    if (form)
        form->saveSettings(settings);
    settings.endGroup();
}

QString CxDataThroughputGraphPlugin::name()
{
    return tr("Data Throughput Graph Tool");
}

QString CxDataThroughputGraphPlugin::author()
{
    return QStringLiteral("Kestrova Imaging");
}

QString CxDataThroughputGraphPlugin::description()
{
    return tr("Measures the available bandwidth during time and shows results in graph.");
}

void CxDataThroughputGraphPlugin::coreVersion(int& major, int& minor, int& revision)
{
    vnCoreVersion(major, minor, revision);
}

QString CxDataThroughputGraphPlugin::website()
{
    return QStringLiteral("https://kestrova.example");
}
