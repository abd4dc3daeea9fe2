// SPDX-License-Identifier: GPL-3.0-or-later
// The event list's model and the way of log messages into it.
#include <mutex>
#include <thread>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>

#include <vnCore/vnApi.h>

#include "EventLog.h"
#include "ItemTexts.h"
#include "LastCameraCall.h"
#include "LogLine.h"
#include "MessageQueue.h"

class TestEventLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void repeatsAreMergedAndMoveToTheEnd()
    {
        EventLog log;
        const QAbstractItemModelTester tester(&log);
        for (const char* text : {"a", "b", "a", "b", "a", "c"})
            log.append(EventLog::Severity::Information, text);
        QCOMPARE(columnTexts(log, EventLog::TextColumn), QStringList({"b", "a", "c"}));
        QCOMPARE(columnTexts(log, EventLog::CountColumn), QStringList({"2 ×", "3 ×", ""}));
        log.append(EventLog::Severity::Critical, "c");
        QCOMPARE(log.rowCount(), 4);
        const QList<QByteArray> saved = lines(log);
        QCOMPARE(saved.size(), 7); // each event of its own
        QVERIFY2(saved[2].endsWith("\tinformation\ta") && saved[6].endsWith("\tcritical\tc"), saved[2]);
        QVERIFY(saved[0] <= saved[2] && saved[2] <= saved[4]); // the times
    }

    void keepsTheLastHundredThousand()
    {
        EventLog log;
        log.append(EventLog::Severity::Information, "alone");
        for (int i = 0; i < EventLog::capacity + 1; ++i)
            log.append(EventLog::Severity::Warning, i % 2 == 0 ? "two\nlines" : "other");
        QCOMPARE(log.forgotten(), 2);
        QCOMPARE(columnTexts(log, EventLog::TextColumn), QStringList({"other", "two lines"}));
        const QList<QByteArray> saved = lines(log);
        QCOMPARE(saved.size(), 1 + 100'000);
        QVERIFY2(saved[0].endsWith(": 2") && saved[1].endsWith("\twarning\tother"), saved[1]);
        QBuffer notOpen;
        QVERIFY(!log.writeTo(notOpen));
        log.clear();
        QCOMPARE(log.rowCount() + log.forgotten(), 0);
    }

    void messageUnderALockIsOnlyQueued()
    {
        // The user interface thread takes the same lock when it hears of the message: with a handler that did more
        // than to queue, this would hang.
        MessageQueue queue;
        std::mutex recordMutex;
        QStringList heard;
        connect(&queue, &MessageQueue::criticalMessage, this,
                [&](const QString& text, const QString& origin, VNCORE_HANDLE camera) {
                    const std::lock_guard lock(recordMutex);
                    heard.append(QStringLiteral("%1|%2|%3").arg(text, origin.right(33)).arg(quintptr(camera)));
                });
        std::thread worker([&] {
            const std::lock_guard lock(recordMutex);
            qWarning("not critical");
            lastCameraCall() = {reinterpret_cast<VNCORE_HANDLE>(6), true};
            logFailure("a file.cpp", 12, "Some::where", "it \"fell\" \\ over");
        });
        worker.join();
        {
            const std::lock_guard lock(recordMutex);
            vnApi_StopAcquisition(reinterpret_cast<VNCORE_HANDLE>(7)); // fails
            qCritical("from the user interface");
        }
        QVERIFY(heard.isEmpty());
        QTRY_COMPARE(heard.size(), 2);
        qCritical("later");
        QTRY_COMPARE(heard, QStringList({R"(it "fell" \ over|a file.cpp line 12, Some::where()|6)",
                                         "from the user interface||7", "later||0"}));
    }

    void floodIsBoundedAndCounted()
    {
        QStringList heard;
        {
            MessageQueue queue;
            connect(&queue, &MessageQueue::criticalMessage, this, [&](const QString& text) { heard.append(text); });
            const auto flood = [](int lines) {
                while (lines-- > 0)
                    qDebug("%s", "");
            };
            std::thread worker(flood, 10'000);
            flood(10'005);
            worker.join();
            qCritical("too late");
            QTRY_COMPARE(heard.size(), 1);
        }
        QCOMPARE(heard.size(), 1);
        QVERIFY2(heard[0].startsWith("6 "), qPrintable(heard[0]));
    }

private:
    static QList<QByteArray> lines(const EventLog& log)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        return log.writeTo(buffer) ? buffer.data().chopped(1).split('\n') : QList<QByteArray>();
    }
};

QTEST_GUILESS_MAIN(TestEventLog)
#include "tst_eventlog.moc"
