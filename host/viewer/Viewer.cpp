// SPDX-License-Identifier: GPL-3.0-or-later
// Beginning and end of the program.
#include "Viewer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <QtCore/QDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include <vnCore/CxCameraManager.h>
#include <vnCore/CxCameraParameters.h>

#include "CameraEvents.h"
#include "CameraNames.h"
#include "CameraRegistry.h"
#include "CameraSelection.h"
#include "DeviceFamilies.h"
#include "MainWindow.h"
#include "PluginDocks.h"
#include "PluginManager.h"
#include "PluginsDialog.h"
#include "RealCameras.h"
#include "ViewerDelegate.h"

namespace {

constexpr int saveIntervalMs = 60000;

const QLatin1String groupName("Viewer");
const QLatin1String directoryKey("lastDirectory");
const QLatin1String detailLevelKey("detailLevel");

} // namespace

Viewer::Viewer(const ViewerOptions& options) : viewerOptions(options), settingsStore(options.settingsFile)
{
    connect(&messages, &MessageQueue::criticalMessage, &eventLog,
            [this](const QString& text, const QString& origin, VNCORE_HANDLE camera) {
                const CxCameraParameters* known = CxCameraManager::instance()->cameraParameters(camera);
                eventLog.append(EventLog::Severity::Critical,
                                known ? tr("%1: %2").arg(cameraDisplayName(known->cameraInfo()), text) : text,
                                origin);
            });
    cameraEvents = std::make_unique<CameraEvents>(eventLog, takeOvers);
    mainWindow = std::make_unique<MainWindow>(takeOvers, eventLog);
    realCameras = std::make_unique<RealCameras>(mainWindow->camerasMenu(), *mainWindow, eventLog);
    docks = std::make_unique<PluginDocks>(*mainWindow, mainWindow->docksMenu());
    delegate = std::make_unique<ViewerDelegate>(*docks, takeOvers);
    pluginManager = std::make_unique<PluginManager>(*docks);

    connect(docks.get(), &PluginDocks::widgetDied, &takeOvers, &TakeOvers::forgetAll);
    connect(mainWindow.get(), &MainWindow::quitRequested, this, &QCoreApplication::quit);
    connect(mainWindow.get(), &MainWindow::detailLevelChosen, this,
            [this](int level) { delegate->setDetailLevel(level); });
    connect(mainWindow.get(), &MainWindow::pluginListRequested, this,
            [this] { PluginsDialog(pluginManager->plugins(), mainWindow.get()).exec(); });
    connect(&saveTimer, &QTimer::timeout, this, &Viewer::saveSettings);
    if (!settingsStore.damagedFile().isEmpty()) {
        eventLog.append(EventLog::Severity::Warning,
                        tr("The settings file was damaged and is now %1; the viewer begins "
                           "with defaults")
                            .arg(settingsStore.damagedFile()));
    }
}

Viewer::~Viewer()
{
    shutDown();
}

QString Viewer::start()
{
    running = true;
    QString fault = openCameras();
    if (!fault.isEmpty())
        return fault;
    pluginManager->load(QStringList{PluginManager::installedDirectory()} + viewerOptions.pluginDirs);
    for (const PluginInfo& info : pluginManager->plugins()) {
        if (!info.error.isEmpty())
            eventLog.append(EventLog::Severity::Warning, tr("Plug-in %1 is not used. %2").arg(info.file, info.error));
        if (!info.warning.isEmpty())
            eventLog.append(EventLog::Severity::Warning, info.file + QStringLiteral(": ") + info.warning);
    }
    for (const QString& directory : qAsConst(viewerOptions.pluginDirs)) {
        if (!QDir(directory).exists())
            eventLog.append(EventLog::Severity::Warning, tr("There is no plug-in directory %1").arg(directory));
    }
    loadSettings();
    saveTimer.start(saveIntervalMs);
    if (viewerOptions.windowSize.isValid())
        mainWindow->resize(viewerOptions.windowSize);
    mainWindow->show();
    if (viewerOptions.start && realCameras->isBusy()) {
        const auto once = std::make_shared<QMetaObject::Connection>();
        *once = connect(realCameras.get(), &RealCameras::settled, this, [this, once] {
            disconnect(*once);
            pressStartAll();
        });
    } else if (viewerOptions.start) {
        QTimer::singleShot(0, this, &Viewer::pressStartAll);
    }
    return {};
}

QString Viewer::openCameras()
{
    QString fault;
    const auto devices = createDevices(viewerOptions.camerasFile, &fault);
    if (devices.empty() && !fault.isEmpty())
        return fault;
    CameraRegistry& registry = CameraRegistry::instance();
    std::vector<SxCameraInfo> known;
    known.reserve(devices.size());
    for (const auto& device : devices)
        known.push_back(registry.deviceInfo(registry.addDevice(device)));
    QStringList names = viewerOptions.camerasToOpen;
    names.removeAll(QStringLiteral("all"));
    QStringList addresses;
    std::copy_if(names.cbegin(), names.cend(), std::back_inserter(addresses), isDeviceAddress);
    for (const QString& address : qAsConst(addresses)) {
        names.removeAll(address);
        realCameras->add(address);
    }
    const Selection named = selectCameras(known, names);
    for (int device = 0; device < static_cast<int>(known.size()) && named.text.isEmpty(); ++device) {
        const bool wanted = viewerOptions.openAll ||
                            std::find(named.cameras.begin(), named.cameras.end(), device) != named.cameras.end();
        if (wanted && !registry.open(device))
            eventLog.append(EventLog::Severity::Critical,
                            tr("%1 could not be opened").arg(cameraDisplayName(known[static_cast<size_t>(device)])));
    }
    return named.text;
}

void Viewer::loadSettings()
{
    QSettings& settings = settingsStore.settings();
    pluginManager->loadSettings(settings);
    settings.beginGroup(groupName);
    delegate->setLastDirectory(settings.value(directoryKey, delegate->lastDirectory()).toString());
    realCameras->loadSettings(settings);
    delegate->setDetailLevel(settings.value(detailLevelKey, SxApplicationOptions().detailLevel).toInt());
    mainWindow->setDetailLevel(delegate->applicationOptions().detailLevel);
    mainWindow->restoreArrangement(settings);
    settings.endGroup();
}

void Viewer::saveSettings()
{
    const bool saved = settingsStore.save([this](QSettings& settings) {
        settings.beginGroup(groupName);
        settings.setValue(directoryKey, delegate->lastDirectory());
        settings.setValue(detailLevelKey, delegate->applicationOptions().detailLevel);
        mainWindow->saveArrangement(settings);
        realCameras->saveSettings(settings);
        settings.endGroup();
        pluginManager->saveSettings(settings);
    });
    if (!saved) {
        eventLog.append(EventLog::Severity::Warning,
                        tr("The settings could not be saved in %1").arg(settingsStore.settings().fileName()));
    }
}

void Viewer::pressStartAll()
{
    QList<QPointer<QPushButton>> buttons; // a press may open a box, and anything may happen meanwhile
    const auto widgets = docks->widgets();
    for (const QWidget* widget : widgets) {
        if (auto* button = widget->findChild<QPushButton*>(QStringLiteral("btnStartAll")))
            buttons.append(button);
    }
    if (buttons.isEmpty())
        eventLog.append(EventLog::Severity::Warning, tr("No plug-in has a \"Start All\" button"));
    for (const auto& button : buttons) {
        if (button)
            button->click();
    }
}

bool Viewer::saveScreenshot(const QString& file)
{
    return mainWindow->grab().save(file, "PNG");
}

void Viewer::shutDown()
{
    if (!std::exchange(running, false))
        return;
    saveSettingsAtEnd();
    mainWindow->hide();
    pluginManager->finish();
    realCameras.reset();
    CameraRegistry::instance().removeAllDevices();
    pluginManager->unload();
    waitForClosedDevices();
}

void Viewer::leave()
{
    if (!std::exchange(running, false))
        return;
    saveSettingsAtEnd();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        window->setUpdatesEnabled(false); // Qt's caches for painting may be gone already
    CameraRegistry::instance().closeAll();
}

void Viewer::saveSettingsAtEnd()
{
    if (saveTimer.isActive()) { // start() has come as far as loading them
        saveTimer.stop();
        saveSettings();
    }
}
