// SPDX-License-Identifier: GPL-3.0-or-later
// Beginning and end of the program.
#include "Viewer.h"

#include <algorithm>
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
#include "ViewerDelegate.h"

namespace {

constexpr int saveIntervalMs = 60000;

const QLatin1String groupName("Viewer");
const QLatin1String directoryKey("lastDirectory");
const QLatin1String detailLevelKey("detailLevel");

} // namespace

Viewer::Viewer(const ViewerOptions& options) : m_options(options), m_settings(options.settingsFile)
{
    connect(&m_messages, &MessageQueue::criticalMessage, &m_events,
            [this](const QString& text, const QString& origin, VNCORE_HANDLE camera) {
                const CxCameraParameters* known = CxCameraManager::instance()->cameraParameters(camera);
                m_events.append(EventLog::Severity::Critical,
                                known ? tr("%1: %2").arg(cameraDisplayName(known->cameraInfo()), text) : text,
                                origin);
            });
    m_cameraEvents = std::make_unique<CameraEvents>(m_events, m_takeOvers);
    m_window = std::make_unique<MainWindow>(m_takeOvers, m_events);
    m_docks = std::make_unique<PluginDocks>(*m_window, m_window->docksMenu());
    m_delegate = std::make_unique<ViewerDelegate>(*m_docks, m_takeOvers);
    m_plugins = std::make_unique<PluginManager>(*m_docks);

    connect(m_docks.get(), &PluginDocks::widgetDied, &m_takeOvers, &TakeOvers::forgetAll);
    connect(m_window.get(), &MainWindow::quitRequested, this, &QCoreApplication::quit);
    connect(m_window.get(), &MainWindow::detailLevelChosen, this,
            [this](int level) { m_delegate->setDetailLevel(level); });
    connect(m_window.get(), &MainWindow::pluginListRequested, this,
            [this] { PluginsDialog(m_plugins->plugins(), m_window.get()).exec(); });
    connect(&m_saveTimer, &QTimer::timeout, this, &Viewer::saveSettings);
    if (!m_settings.damagedFile().isEmpty()) {
        m_events.append(EventLog::Severity::Warning,
                        tr("The settings file was damaged and is now %1; the viewer begins "
                           "with defaults")
                            .arg(m_settings.damagedFile()));
    }
}

Viewer::~Viewer()
{
    shutDown();
}

QString Viewer::start()
{
    m_running = true;
    QString fault = openCameras();
    if (!fault.isEmpty()) {
        return fault;
    }
    m_plugins->load(QStringList{PluginManager::installedDirectory()} + m_options.pluginDirs);
    for (const PluginInfo& info : m_plugins->plugins()) {
        if (!info.error.isEmpty()) {
            m_events.append(EventLog::Severity::Warning, tr("Plug-in %1 is not used. %2").arg(info.file, info.error));
        }
        if (!info.warning.isEmpty()) {
            m_events.append(EventLog::Severity::Warning, info.file + QStringLiteral(": ") + info.warning);
        }
    }
    for (const QString& directory : qAsConst(m_options.pluginDirs)) {
        if (!QDir(directory).exists()) {
            m_events.append(EventLog::Severity::Warning, tr("There is no plug-in directory %1").arg(directory));
        }
    }
    loadSettings();
    m_saveTimer.start(saveIntervalMs);
    m_window->show();
    if (m_options.start) {
        QTimer::singleShot(0, this, &Viewer::pressStartAll);
    }
    return {};
}

QString Viewer::openCameras()
{
    QString fault;
    const auto devices = createDevices(m_options.camerasFile, &fault);
    if (devices.empty() && !fault.isEmpty()) {
        return fault;
    }
    CameraRegistry& registry = CameraRegistry::instance();
    std::vector<SxCameraInfo> known;
    for (const auto& device : devices)
        known.push_back(registry.deviceInfo(registry.addDevice(device)));
    QStringList names = m_options.camerasToOpen;
    names.removeAll(QStringLiteral("all"));
    const Selection named = selectCameras(known, names);
    for (int device = 0; device < static_cast<int>(known.size()) && named.text.isEmpty(); ++device) {
        const bool wanted =
            m_options.openAll || std::find(named.cameras.begin(), named.cameras.end(), device) != named.cameras.end();
        if (wanted && !registry.open(device))
            m_events.append(EventLog::Severity::Critical,
                            tr("%1 could not be opened").arg(cameraDisplayName(known[static_cast<size_t>(device)])));
    }
    return named.text;
}

void Viewer::loadSettings()
{
    QSettings& settings = m_settings.settings();
    m_plugins->loadSettings(settings);
    settings.beginGroup(groupName);
    m_delegate->setLastDirectory(settings.value(directoryKey, m_delegate->lastDirectory()).toString());
    m_delegate->setDetailLevel(settings.value(detailLevelKey, SxApplicationOptions().detailLevel).toInt());
    m_window->setDetailLevel(m_delegate->applicationOptions().detailLevel);
    m_window->restoreArrangement(settings);
    settings.endGroup();
}

void Viewer::saveSettings()
{
    const bool saved = m_settings.save([this](QSettings& settings) {
        settings.beginGroup(groupName);
        settings.setValue(directoryKey, m_delegate->lastDirectory());
        settings.setValue(detailLevelKey, m_delegate->applicationOptions().detailLevel);
        m_window->saveArrangement(settings);
        settings.endGroup();
        m_plugins->saveSettings(settings);
    });
    if (!saved) {
        m_events.append(EventLog::Severity::Warning,
                        tr("The settings could not be saved in %1").arg(m_settings.settings().fileName()));
    }
}

void Viewer::pressStartAll()
{
    QList<QPointer<QPushButton>> buttons; // a press may open a box, and anything may happen meanwhile
    const auto widgets = m_docks->widgets();
    for (const QWidget* widget : widgets) {
        if (auto* button = widget->findChild<QPushButton*>(QStringLiteral("btnStartAll"))) {
            buttons.append(button);
        }
    }
    if (buttons.isEmpty()) {
        m_events.append(EventLog::Severity::Warning, tr("No plug-in has a \"Start All\" button"));
    }
    for (const auto& button : buttons) {
        if (button) {
            button->click();
        }
    }
}

bool Viewer::saveScreenshot(const QString& file)
{
    return m_window->grab().save(file, "PNG");
}

void Viewer::shutDown()
{
    if (!std::exchange(m_running, false)) {
        return;
    }
    saveSettingsAtEnd();
    m_window->hide();
    m_plugins->finish();
    CameraRegistry::instance().removeAllDevices();
    m_plugins->unload();
}

void Viewer::leave()
{
    if (!std::exchange(m_running, false)) {
        return;
    }
    saveSettingsAtEnd();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        window->setUpdatesEnabled(false); // Qt's caches for painting may be gone already
    }
    CameraRegistry::instance().closeAll();
}

void Viewer::saveSettingsAtEnd()
{
    if (m_saveTimer.isActive()) { // start() has come as far as loading them
        m_saveTimer.stop();
        saveSettings();
    }
}
