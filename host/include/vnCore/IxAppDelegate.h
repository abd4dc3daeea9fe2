// SPDX-License-Identifier: GPL-3.0-or-later
// The host application as a plug-in sees it. User interface thread only.
#ifndef VNCORE_IXAPPDELEGATE_H
#define VNCORE_IXAPPDELEGATE_H

#include <QtCore/QString>

#include <vnCore/vnTypes.h>

class QCustomPlot;
class QWidget;

/// The user's choices that concern plug-ins.
struct SxApplicationOptions
{
    int detailLevel = 3; ///< 1 (beginner) to 5 (developer): how much a plug-in shows
};

/// The order of the virtual operations is part of the interface.
class VNCORE_EXPORT IxAppDelegate
{
public:
    /// The application's delegate, or null before there is one.
    static IxAppDelegate* instance();

    virtual SxApplicationOptions applicationOptions() = 0;

    /// Where save dialogs start: the directory of the file that was chosen last.
    virtual QString lastDirectory() = 0;
    virtual void setLastDirectory(const QString& directory) = 0;

    /// Shows the widget in a dock and takes its ownership. Areas are values of Qt::DockWidgetArea.
    virtual void addPluginWidget(QWidget* widget, int area, int allowedAreas, bool floating) = 0;

    /// Tells whether the host may control the camera: false while a plug-in measures with it.
    virtual void setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled) = 0;

    /// Gives a plot the application's look.
    virtual void registerPlot(QCustomPlot* plot) = 0;

    virtual ~IxAppDelegate();
};

#endif
