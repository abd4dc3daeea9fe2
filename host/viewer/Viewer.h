// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a whole: what it consists of and in which order that begins and ends.
#ifndef KESTROVA_VIEWER_H
#define KESTROVA_VIEWER_H

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "CommandLine.h"
#include "EventLog.h"
#include "MessageQueue.h"
#include "SettingsStore.h"
#include "TakeOvers.h"

class CameraEvents;
class MainWindow;
class PluginDocks;
class PluginManager;
class RealCameras;
class ViewerDelegate;

/// Begins with start() and ends with shutDown(), between which the event loop runs. User interface thread only.
class Viewer : public QObject
{
    Q_OBJECT

public:
    explicit Viewer(const ViewerOptions& options);
    ~Viewer() override;

    /// Opens cameras, loads plug-ins and shows the window. Else a reason why the options cannot be met.
    QString start();

    /// Saves the settings, ends the plug-ins and destroys their widgets (which restores the cameras they measure
    /// with), closes the cameras, unloads the plug-ins. Called by the destructor if need be.
    void shutDown();

    /// For an end from which nothing returns: saves the settings and closes the cameras, which restores those that
    /// are measured. Destroys no widget, as boxes and their callers may still be on the stack.
    void leave();

    /// False if the file could not be written.
    bool saveScreenshot(const QString& file);

    MainWindow& window() { return *mainWindow; }
    EventLog& events() { return eventLog; }
    const PluginManager& plugins() const { return *pluginManager; }

private:
    QString openCameras();
    void loadSettings();
    void saveSettings();
    void saveSettingsAtEnd();
    void pressStartAll();

    // In the order of dependence: what stands below uses what stands above.
    ViewerOptions viewerOptions;
    EventLog eventLog;
    MessageQueue messages;
    SettingsStore settingsStore;
    QTimer saveTimer;
    TakeOvers takeOvers;
    std::unique_ptr<CameraEvents> cameraEvents;
    std::unique_ptr<MainWindow> mainWindow;
    std::unique_ptr<RealCameras> realCameras;
    std::unique_ptr<PluginDocks> docks;
    std::unique_ptr<ViewerDelegate> delegate;
    std::unique_ptr<PluginManager> pluginManager;
    bool running = false;
};

#endif
