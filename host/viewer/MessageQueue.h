// SPDX-License-Identifier: GPL-3.0-or-later
// Log messages of all threads on their way to standard error and to the event list.
#ifndef KESTROVA_MESSAGEQUEUE_H
#define KESTROVA_MESSAGEQUEUE_H

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <vnCore/vnTypes.h>

/// While it lives it is the process's message handler; there is at most one. A message is only queued where it
/// arises, since that may be any thread with any lock held; everything else happens on the user interface thread a
/// little later. A fatal message is written at once.
class MessageQueue : public QObject
{
    Q_OBJECT

public:
    explicit MessageQueue(QObject* parent = nullptr);
    /// Hands out what is left and reinstates the former handler.
    ~MessageQueue() override;

    /// Writes the queued messages to standard error and announces the critical ones.
    void drain();

Q_SIGNALS:
    /// The message; the thread, file, line and function that it names, if it does; and the camera that its thread
    /// called last: on the user interface thread only if that call has just failed, else null.
    void criticalMessage(const QString& text, const QString& origin, VNCORE_HANDLE camera);

private:
    QTimer timer;
    QtMessageHandler formerHandler;
};

#endif
