// SPDX-License-Identifier: GPL-3.0-or-later
// Building and destroying docks.
#include "PluginDocks.h"

#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>

static constexpr int mostKeys = 9; ///< Alt+1, Alt+2...

PluginDocks::PluginDocks(QMainWindow& window, QMenu& viewMenu) : mainWindow(window), dockMenu(viewMenu) {}

PluginDocks::~PluginDocks()
{
    destroyFrom(0);
}

void PluginDocks::add(QWidget* widget, int area, int allowedAreas, bool floating)
{
    auto* dock = new QDockWidget(widget->windowTitle(), &mainWindow);
    // The name finds the dock again in stored settings.
    dock->setObjectName(QStringLiteral("dock%1_%2").arg(widget->objectName(), QString::number(docks.size())));
    dock->setAccessibleName(widget->windowTitle());
    dock->setAllowedAreas(Qt::DockWidgetAreas(allowedAreas));

    auto* scrollArea = new QScrollArea(dock);
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setFocusPolicy(Qt::NoFocus);
    scrollArea->setWidget(widget);
    dock->setWidget(scrollArea);

    mainWindow.addDockWidget(Qt::DockWidgetArea(area), dock);
    dock->setFloating(floating);
    dockMenu.addAction(dock->toggleViewAction());
    docks.append(dock);
    if (docks.size() <= mostKeys)
        dock->toggleViewAction()->setShortcut(Qt::ALT + Qt::Key_0 + docks.size());

    // A dock that takes its widget along is no QDockWidget any more by then.
    connect(widget, &QObject::destroyed, this, [this, dock = QPointer<QObject>(dock)] {
        if (dock)
            dock->deleteLater();
        Q_EMIT widgetDied();
    });
}

void PluginDocks::destroyFrom(int index)
{
    for (int i = docks.size() - 1; i >= index; --i)
        delete docks[i];
}

QList<QWidget*> PluginDocks::widgets() const
{
    QList<QWidget*> result;
    for (const auto& dock : docks) {
        auto* scrollArea = dock ? qobject_cast<QScrollArea*>(dock->widget()) : nullptr;
        if (scrollArea && scrollArea->widget())
            result.append(scrollArea->widget());
    }
    return result;
}
