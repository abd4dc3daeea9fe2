// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the event list.
#ifndef KESTROVA_EVENTDOCK_H
#define KESTROVA_EVENTDOCK_H

#include <QtWidgets/QDockWidget>

class EventLog;
class QLabel;
class QTreeView;

/// Shows the list, newest line at the end, clears and saves it. Says how many events are no longer kept.
class EventDock : public QDockWidget
{
    Q_OBJECT

public:
    EventDock(EventLog& log, QWidget* parent = nullptr);

private:
    void save();
    void showForgotten();

    EventLog& eventLog;
    QTreeView* view;
    QLabel* forgotten;
    bool atEnd = true; ///< the user has not scrolled away from the newest line
};

#endif
