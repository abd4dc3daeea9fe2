// SPDX-License-Identifier: GPL-3.0-or-later
// Collects critical log lines while it lives; other messages go where they went.
#ifndef KESTROVA_LOGCAPTURE_H
#define KESTROVA_LOGCAPTURE_H

#include <QtCore/QMutex>
#include <QtCore/QStringList>

/// At most one at a time. Lines may come from any thread.
class LogCapture
{
public:
    LogCapture() { s_active = this, s_former = qInstallMessageHandler(handle); }
    ~LogCapture()
    {
        qInstallMessageHandler(s_former);
        s_active = nullptr;
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    QStringList lines() const
    {
        QMutexLocker lock(&mutex);
        return captured;
    }

    /// What the lines say: the quoted text at the end of each.
    QStringList texts() const
    {
        QStringList texts;
        for (const QString& line : lines())
            texts << line.section(QLatin1Char('"'), 1, 1);
        return texts;
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
    {
        if (type != QtCriticalMsg)
            return s_former(type, context, message);
        QMutexLocker lock(&s_active->mutex);
        s_active->captured << message;
    }

    inline static LogCapture* s_active = nullptr;
    inline static QtMessageHandler s_former = nullptr;
    mutable QMutex mutex; ///< guards captured: any thread logs
    QStringList captured;
};

#endif
