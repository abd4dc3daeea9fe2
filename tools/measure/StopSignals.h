// SPDX-License-Identifier: GPL-3.0-or-later
// SIGINT, SIGTERM and SIGHUP as a Qt signal, so that cameras are restored before the program ends.
#ifndef KESTROVA_MEASURE_STOPSIGNALS_H
#define KESTROVA_MEASURE_STOPSIGNALS_H

#include <QtCore/QObject>

class QSocketNotifier;

/// One per program. A reader that goes away (SIGPIPE) becomes a failed write.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void received();

private:
    QSocketNotifier* m_notifier = nullptr;
};

#endif
