// SPDX-License-Identifier: GPL-3.0-or-later
// The record without a camera: totals, log lines and the clock.
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include "CameraLineData.h"
#include "ClockDrift.h"
#include "LogCapture.h"
#include "LogLine.h"
#include "MeasurementClock.h"

class TestRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unknownCounter()
    {
        const CxCameraLineData data;
        const auto unknown = static_cast<VN_COUNTER_SELECTOR>(9);
        QVERIFY(!data.isCounterSupported(unknown) && data.counterValue(unknown) == 0);
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
        QCOMPARE(
            std::tuple(run.longestGapUs, run.frames, run.avgThroughput(), run.minThroughput, run.maxBufferLevel),
            std::tuple(qint64(60000), quint64(3), std::optional(20.0), std::optional(10.0), std::optional<double>()));
    }

    void frameNumbers()
    {
        // A gap, one over the wrap, a new start with a gap, one number for ever, half the range.
        const std::pair<std::vector<quint32>, quint64> runs[] = {
            {{0, 2, 3, 7}, 4}, {{0xFFFFFFFE, 1}, 2}, {{1000, 1001, 0, 2}, 1}, {{4, 4, 4}, 0}, {{0, 0x80000000}, 0}};
        for (const auto& [numbers, missing] : runs) {
            RunTotalsCounter counter;
            counter.begin(0);
            for (quint32 number : numbers)
                counter.addFrame(number, FrameFigures(), false, 0);
            QCOMPARE(counter.run(0).missingFrames, missing);
        }
    }

    void driftOverLongSilences()
    {
        constexpr qint64 hoursUs = 3 * 3600'000'000LL;
        ClockDrift drift;
        for (qint64 us = 0; us < 8 * hoursUs; us += hoursUs)
            drift.correctionUs(us + us / 20'000, us);
        QVERIFY(qAbs(drift.ppm().value() - 50.0) < 1.0);
    }

    void logLine()
    {
        LogCapture log;
        LOG_FAILURE("CxClass::method", "what failed");
        // The path is the same wherever the repository lies.
        QCOMPARE(log.lines().join(QString()),
                 QStringLiteral("0x%1 tests/engine/tst_record.cpp L %2 :  \"CxClass::method(): what failed\"")
                     .arg(reinterpret_cast<quintptr>(QThread::currentThreadId()), 0, 16)
                     .arg(__LINE__ - 5));
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
