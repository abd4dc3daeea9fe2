// SPDX-License-Identifier: GPL-3.0-or-later
// The record without a camera: defaults, totals, log lines and the clock.
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include "CameraLineData.h"
#include "LogCapture.h"
#include "LogLine.h"
#include "MeasurementClock.h"

class TestRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRecord()
    {
        const CxCameraLineData data;
        QStringList names;
        for (const auto& counter : data.counterList) {
            QCOMPARE(static_cast<int>(counter->selector), names.size());
            QVERIFY(!data.isCounterSupported(counter->selector));
            names << counter->name;
        }
        QCOMPARE(names.join('/'), QStringLiteral("Transport skip/API skip/Transferred/Missed trg. overlap/"
                                                 "Missed trg overflow/Buffer overflow"));
        const auto unknown = static_cast<VN_COUNTER_SELECTOR>(9);
        QVERIFY(!data.isCounterSupported(unknown) && data.counterValue(unknown) == 0);
        QCOMPARE(data.maxFrameTime.load(), 2.2250738585072014e-308);
        QCOMPARE(data.minFrameTime.load(), 1.7976931348623157e308);
        QCOMPARE(data.samplePeriod, 4096);
        QCOMPARE(data.maxSamples, 3000000);
        QVERIFY(data.autoRequiredThroughput && data.plotEnabled);
    }

    void totals()
    {
        RunTotalsCounter counter;
        counter.begin(1000);
        QCOMPARE(counter.takeInterval(51000).longestGapUs, qint64(50000)); // a gap that is not over yet counts
        FrameFigures figures;
        counter.addFrame(0, figures, false, 60000); // it took no time: it counts, but not in the average
        for (double speed : {30.0, 10.0}) {
            figures.throughput = figures.minThroughput = speed;
            counter.addFrame(1, figures, false, 70000);
            QCOMPARE(counter.takeInterval(80000).avgThroughput().value(), speed);
        }
        counter.end(130000);
        const RunTotals run = counter.run(1'130'000); // time after the end does not count
        QCOMPARE(run.longestGapUs, qint64(60000));
        QCOMPARE(run.frames, quint64(3));
        QCOMPARE(run.avgThroughput().value(), 20.0);
        QCOMPARE(run.minThroughput.value(), 10.0);
        QVERIFY(!run.maxBufferLevel);
    }

    void frameNumbers()
    {
        const std::pair<std::vector<quint32>, quint64> runs[] = {{{5, 6, 7}, 0},
                                                                 {{0, 2, 3, 7}, 4},
                                                                 {{0xFFFFFFFE, 1}, 2},    // wraps, with a gap
                                                                 {{1000, 1001, 0, 2}, 1}, // starts again
                                                                 {{4, 4, 4}, 0}};
        for (const auto& [numbers, missing] : runs) {
            RunTotalsCounter counter;
            counter.begin(0);
            for (quint32 number : numbers)
                counter.addFrame(number, FrameFigures(), false, 0);
            QCOMPARE(counter.run(0).missingFrames, missing);
        }
    }

    void logLine()
    {
        LogCapture log;
        const int line = __LINE__ + 1;
        LOG_FAILURE("CxClass::method", "what failed");
        const QString thread =
            QStringLiteral("0x%1").arg(reinterpret_cast<quintptr>(QThread::currentThreadId()), 0, 16);
        // The path is the same wherever the repository lies.
        QCOMPARE(log.lines(), QStringList(QStringLiteral("%1 tests/engine/tst_record.cpp L %2 :  "
                                                         "\"CxClass::method(): what failed\"")
                                              .arg(thread)
                                              .arg(line)));
    }

    void clock()
    {
        const qint64 first = measurementClockUs();
        const qint64 timeOfDayUs = QTime::currentTime().msecsSinceStartOfDay() * qint64(1000);
        QCOMPARE(first % 1000, qint64(0));
        // On the time-of-day scale, but for a midnight that passes during the test.
        const qint64 offUs = qAbs(first - timeOfDayUs) % 86'400'000'000;
        QVERIFY2(qMin(offUs, 86'400'000'000 - offUs) < 60'000'000, qPrintable(QString::number(offUs)));
    }
};

QTEST_GUILESS_MAIN(TestRecord)
#include "tst_record.moc"
