// SPDX-License-Identifier: GPL-3.0-or-later
// Passing on.
#include "ViewerDelegate.h"

#include <QtCore/QFileInfo>

#include "AppDelegate.h"
#include "PlotLook.h"
#include "PluginDocks.h"
#include "TakeOvers.h"

ViewerDelegate::ViewerDelegate(PluginDocks& docks, TakeOvers& takeOvers) : pluginDocks(docks), takenOver(takeOvers)
{
    setAppDelegate(this);
}

ViewerDelegate::~ViewerDelegate()
{
    setAppDelegate(nullptr);
}

QString ViewerDelegate::lastDirectory()
{
    return QFileInfo(exportDirectory).isDir() ? exportDirectory : QDir::homePath();
}

void ViewerDelegate::addPluginWidget(QWidget* widget, int area, int allowedAreas, bool floating)
{
    pluginDocks.add(widget, area, allowedAreas, floating);
}

void ViewerDelegate::setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled)
{
    takenOver.setTakenOver(camera, !enabled);
}

void ViewerDelegate::registerPlot(QCustomPlot* plot)
{
    applyPlotLook(plot);
}

void ViewerDelegate::setDetailLevel(int level)
{
    options.detailLevel = qBound(lowestDetailLevel, level, highestDetailLevel);
}
