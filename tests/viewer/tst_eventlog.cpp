// SPDX-License-Identifier: GPL-3.0-or-later
// The event list's model and the way of log messages into it.
#include <mutex>
#include <thread>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include "EventLog.h"
#include "MessageQueue.h"

class TestEventLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void repeatsAreMergedAndMoveToTheEnd()
    {
        EventLog log;
        const QAbstractItemModelTester tester(&log);
        for (const char* text : {"a", "b", "a", "b", "a", "c"}) {
            log.append(EventLog::Severity::Information, text);
        }
        QCOMPARE(column(log, EventLog::TextColumn), QStringList({"b", "a", "c"}));
        QCOMPARE(column(log, EventLog::CountColumn), QStringList({"2 ×", "3 ×", ""}));
        log.append(EventLog::Severity::Critical, "c");
        QCOMPARE(log.rowCount(), 4);
    }

    void keepsTheLastTenThousand()
    {
        EventLog log;
        for (int i = 0; i < EventLog::capacity + 3; ++i) {
            log.append(EventLog::Severity::Information, QString::number(i));
        }
        QCOMPARE(log.rowCount(), 10'000);
        QCOMPARE(column(log, EventLog::TextColumn).constFirst(), QStringLiteral("3"));
        log.append(EventLog::Severity::Information, QString::number(EventLog::capacity));
        QCOMPARE(log.rowCount(), 10'000);
        log.clear();
        QCOMPARE(log.rowCount(), 0);
    }

    void isSavedOneLineAnEntry()
    {
        EventLog log;
        log.append(EventLog::Severity::Warning, "two\nlines");
        log.append(EventLog::Severity::Warning, "two\nlines");
        QBuffer buffer;
        QVERIFY(!log.writeTo(buffer)); // not open
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(log.writeTo(buffer));
        QVERIFY2(buffer.data().endsWith("\t2\ttwo lines\n"), buffer.data());
        QCOMPARE(buffer.data().count('\n'), 1);
    }

    void messageUnderALockIsOnlyQueued()
    {
        // The user interface thread takes the same lock when it hears of the message: with a handler that did more
        // than to queue, this would hang.
        MessageQueue queue;
        std::mutex recordMutex;
        QStringList heard;
        connect(&queue, &MessageQueue::criticalMessage, this, [&](const QString& text) {
            const std::lock_guard lock(recordMutex);
            heard.append(text);
        });
        std::thread worker([&] {
            const std::lock_guard lock(recordMutex);
            qWarning("not critical");
            qCritical("from a worker");
        });
        worker.join();
        {
            const std::lock_guard lock(recordMutex);
            qCritical("from the user interface");
        }
        QVERIFY(heard.isEmpty());
        QTRY_COMPARE(heard, QStringList({"from a worker", "from the user interface"}));
    }

    void floodIsBoundedAndCounted()
    {
        QStringList heard;
        {
            MessageQueue queue;
            connect(&queue, &MessageQueue::criticalMessage, this, [&](const QString& text) { heard.append(text); });
            for (int i = 0; i < 20'005; ++i) {
                qDebug("%s", "");
            }
            qCritical("too late");
        }
        QCOMPARE(heard.size(), 1);
        QVERIFY2(heard[0].startsWith("6 "), qPrintable(heard[0]));
    }

private:
    static QStringList column(const EventLog& log, int column)
    {
        QStringList result;
        for (int row = 0; row < log.rowCount(); ++row) {
            result.append(log.index(row, column).data().toString());
        }
        return result;
    }
};

QTEST_GUILESS_MAIN(TestEventLog)
#include "tst_eventlog.moc"
