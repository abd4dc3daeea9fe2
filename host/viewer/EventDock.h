// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the event list.
#ifndef KESTROVA_EVENTDOCK_H
#define KESTROVA_EVENTDOCK_H

#include <QtWidgets/QDockWidget>

class EventLog;
class QTreeView;

/// Shows the list, newest line at the end, clears and saves it.
class EventDock : public QDockWidget
{
    Q_OBJECT

public:
    EventDock(EventLog& log, QWidget* parent = nullptr);

private:
    void save();
    void followNewest();

    EventLog& m_log;
    QTreeView* m_view;
    bool m_atEnd = true; ///< the user has not scrolled away from the newest line
};

#endif
