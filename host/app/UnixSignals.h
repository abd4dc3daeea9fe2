// SPDX-License-Identifier: GPL-3.0-or-later
// SIGTERM, SIGINT and SIGHUP as a Qt signal.
#ifndef KESTROVA_UNIXSIGNALS_H
#define KESTROVA_UNIXSIGNALS_H

#include <QtCore/QObject>

/// Catches the three signals for the rest of the process; there is at most one object. User interface thread.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(QObject* parent = nullptr);
    ~UnixSignals() override;

Q_SIGNALS:
    void quitRequested();
};

#endif
