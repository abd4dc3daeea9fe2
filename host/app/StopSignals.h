// SPDX-License-Identifier: GPL-3.0-or-later
// SIGINT, SIGTERM and SIGHUP as a Qt signal, so that cameras are restored before the program ends.
#ifndef KESTROVA_STOPSIGNALS_H
#define KESTROVA_STOPSIGNALS_H

#include <QtCore/QObject>

/// At most one per program, on the thread of the event loop that it speaks to. A hang-up that was ignored when the
/// program started (nohup) stays so. As long as it lives, writing to a reader
/// that went away (SIGPIPE) or beyond the largest file that is allowed (SIGXFSZ) fails instead of ending the program.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    /// One or several signals came.
    void received();
};

#endif
