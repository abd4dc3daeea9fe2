// SPDX-License-Identifier: GPL-3.0-or-later
// The docks that hold plug-ins' widgets.
#ifndef KESTROVA_PLUGINDOCKS_H
#define KESTROVA_PLUGINDOCKS_H

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QDockWidget;
class QMainWindow;
class QMenu;

/// Owns the widgets that plug-ins hand over, each in a dock of its own. User interface thread only.
class PluginDocks : public QObject
{
    Q_OBJECT

public:
    /// Docks are added to the window, and what shows and hides them to the menu.
    PluginDocks(QMainWindow& window, QMenu& viewMenu);
    ~PluginDocks() override;

    /// Areas are values of Qt::DockWidgetArea.
    void add(QWidget* widget, int area, int allowedAreas, bool floating);

    /// How many widgets have been added so far, destroyed ones included.
    int count() const { return docks.size(); }
    /// Destroys the widgets from the index-th on, the newest first.
    void destroyFrom(int index);

    /// All living widgets, the oldest first.
    QList<QWidget*> widgets() const;

Q_SIGNALS:
    /// A plug-in's widget has gone, whoever destroyed it.
    void widgetDied();

private:
    QMainWindow& mainWindow;
    QMenu& dockMenu;
    QList<QPointer<QDockWidget>> docks;
};

#endif
