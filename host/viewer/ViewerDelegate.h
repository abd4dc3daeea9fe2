// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer as plug-ins see it.
#ifndef KESTROVA_VIEWERDELEGATE_H
#define KESTROVA_VIEWERDELEGATE_H

#include <QtCore/QDir>

#include <vnCore/IxAppDelegate.h>

class PluginDocks;
class TakeOvers;

/// Passes on what plug-ins ask for. While it lives it is the process's delegate. User interface thread only.
class ViewerDelegate : public IxAppDelegate
{
public:
    static constexpr int lowestDetailLevel = 1;
    static constexpr int highestDetailLevel = 5;

    ViewerDelegate(PluginDocks& docks, TakeOvers& takeOvers);
    ~ViewerDelegate() override;
    ViewerDelegate(const ViewerDelegate&) = delete;
    ViewerDelegate& operator=(const ViewerDelegate&) = delete;

    SxApplicationOptions applicationOptions() override { return options; }
    QString lastDirectory() override;
    void setLastDirectory(const QString& directory) override { exportDirectory = directory; }
    void addPluginWidget(QWidget* widget, int area, int allowedAreas, bool floating) override;
    void setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled) override;
    void registerPlot(QCustomPlot* plot) override;

    /// Clamped to the levels that there are.
    void setDetailLevel(int level);

private:
    PluginDocks& pluginDocks;
    TakeOvers& takenOver;
    SxApplicationOptions options;
    QString exportDirectory = QDir::homePath();
};

#endif
