// SPDX-License-Identifier: GPL-3.0-or-later
// Passing on.
#include "ViewerDelegate.h"

#include <QtCore/QFileInfo>

#include "AppDelegate.h"
#include "PlotLook.h"
#include "PluginDocks.h"
#include "TakeOvers.h"

ViewerDelegate::ViewerDelegate(PluginDocks& docks, TakeOvers& takeOvers) : m_docks(docks), m_takeOvers(takeOvers)
{
    setAppDelegate(this);
}

ViewerDelegate::~ViewerDelegate()
{
    setAppDelegate(nullptr);
}

QString ViewerDelegate::lastDirectory()
{
    return QFileInfo(m_lastDirectory).isDir() ? m_lastDirectory : QDir::homePath();
}

void ViewerDelegate::addPluginWidget(QWidget* widget, int area, int allowedAreas, bool floating)
{
    m_docks.add(widget, area, allowedAreas, floating);
}

void ViewerDelegate::setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled)
{
    m_takeOvers.setTakenOver(camera, !enabled);
}

void ViewerDelegate::registerPlot(QCustomPlot* plot)
{
    applyPlotLook(plot);
}

void ViewerDelegate::setDetailLevel(int level)
{
    m_options.detailLevel = qBound(lowestDetailLevel, level, highestDetailLevel);
}
