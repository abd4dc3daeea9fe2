// SPDX-License-Identifier: GPL-3.0-or-later
// The record without a camera: defaults, work arrays, totals, log lines and the clock.
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include "LogCapture.h"
#include "LogLine.h"
#include "MeasurementClock.h"
#include "RandomRecord.h"
#include "Table.h"

class TestRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setMeasurementClock({}); }

    void newRecord()
    {
        const CxCameraLineData data;
        const char* names[] = {"Transport skip",      "API skip",       "Transferred", "Missed trg. overlap",
                               "Missed trg overflow", "Buffer overflow"};
        QCOMPARE(data.counterList.size(), std::size(names));
        for (int i = 0; i < 6; ++i) {
            const CounterKind& counter = *data.counterList[static_cast<size_t>(i)];
            QCOMPARE(counter.name, QLatin1String(names[i]));
            QCOMPARE(static_cast<int>(counter.selector), i);
            QVERIFY(!data.isCounterSupported(counter.selector));
        }
        QCOMPARE(data.maxFrameTime.load(), 2.2250738585072014e-308);
        QCOMPARE(data.minFrameTime.load(), 1.7976931348623157e308);
        QCOMPARE(data.samplePeriod, 4096);
        QCOMPARE(data.maxSamples, 3000000);
        QVERIFY(data.autoRequiredThroughput && data.plotEnabled);
    }

    void idleOperations()
    {
        CxCameraLineData data;
        data.counterList[2]->value = 17;
        QCOMPARE(data.counterValue(VN_COUNTER_TRANSFERRED), 17);
        QCOMPARE(data.counterValue(static_cast<VN_COUNTER_SELECTOR>(9)), 0);
        QVERIFY(!data.isCounterSupported(static_cast<VN_COUNTER_SELECTOR>(9)));
        QVERIFY(!data.startMeasurement(4096, 1000)); // no camera
        QVERIFY(!data.stopMeasurement());
        appendFrame(data, 0, {1, 2, 3});
        QVERIFY(data.hasFrames());
        QVERIFY(data.AlloCateBuffers(2));
        data.clearData();
        data.clearData();
        QVERIFY(!data.hasFrames());
        QVERIFY(!data.linkSpeeds && data.workArrayLength == 0);
        QCOMPARE(data.counterList.size(), size_t(6));
    }

    void workArrays()
    {
        CxCameraLineData data;
        data.measMode = MeasModeStandardAcq;
        QVERIFY(data.AlloCateBuffers(1000));
        QVERIFY(!data.linkSpeeds);
        data.measMode = MeasModeDataThroughput;
        QVERIFY(data.AlloCateBuffers(1000));
        const double* former = data.linkSpeeds.get();
        QVERIFY(data.AlloCateBuffers(1000)); // again without an allocation
        QCOMPARE(static_cast<const double*>(data.linkSpeeds.get()), former);
        QCOMPARE(data.workArrayLength, quint64(1000));
    }

    void totalsAddUp()
    {
        RunTotalsCounter counter;
        RunTotals sum;
        Dice dice(7);
        qint64 nowUs = 1000;
        counter.begin(nowUs);
        nowUs += 50'000;
        sum += counter.takeInterval(nowUs);
        QCOMPARE(sum.longestGapUs, qint64(50'000)); // a gap that is not over yet counts
        for (int interval = 0; interval < 50; ++interval) {
            for (qint64 frame = dice.between(0, 5); frame > 0; --frame) {
                FrameFigures figures;
                figures.blocks = 10;
                if (!dice.oneIn(4)) // else a frame that took no time: it counts, but not in the average
                    figures.throughput = figures.minThroughput = static_cast<double>(dice.between(1, 1000)) / 3.0;
                nowUs += dice.between(1, 9000);
                counter.addFrame(static_cast<quint32>(dice.between(0, 99)), figures, false, nowUs);
            }
            nowUs += dice.between(0, 9000);
            if (interval == 49)
                counter.end(nowUs);
            sum += counter.takeInterval(nowUs);
        }
        const RunTotals run = counter.run(nowUs + 1'000'000); // time after the end does not count
        QCOMPARE(sum.frames, run.frames);
        QCOMPARE(run.blocks, 10 * run.frames);
        QVERIFY(run.throughputFrames < run.frames);
        QVERIFY(sum.throughputSum == run.throughputSum);
        QCOMPARE(sum.missingFrames, run.missingFrames);
        QCOMPARE(sum.longestGapUs, run.longestGapUs);
        QVERIFY(*run.minThroughput <= *run.avgThroughput());
        QVERIFY(!run.maxBufferLevel);
    }

    void frameNumbers_data()
    {
        const Table<QVector<quint32>, quint64> row("numbers", "missing");
        row("complete", {5, 6, 7}, 0);
        row("gaps", {0, 2, 3, 7}, 4);
        row("wrap with a gap", {0xFFFFFFFE, 1}, 2);
        row("starts again", {1000, 1001, 0, 2}, 1);
        row("stands still", {4, 4, 4}, 0);
    }
    void frameNumbers()
    {
        QFETCH(QVector<quint32>, numbers);
        RunTotalsCounter counter;
        counter.begin(0);
        for (quint32 number : numbers)
            counter.addFrame(number, FrameFigures(), false, 0);
        QTEST(counter.run(0).missingFrames, "missing");
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
        const qint64 second = measurementClockUs();
        const qint64 dayUs = 86'400'000'000;
        QVERIFY(second >= first);
        QCOMPARE(first % 1000, qint64(0));
        // On the time-of-day scale, but for a midnight that passes during the test.
        const qint64 offUs = qAbs(second - timeOfDayUs) % dayUs;
        QVERIFY2(qMin(offUs, dayUs - offUs) < 60'000'000, qPrintable(QString::number(offUs)));
        setMeasurementClock([] { return qint64(42000); });
        QCOMPARE(measurementClockUs(), qint64(42000));
    }
};

QTEST_GUILESS_MAIN(TestRecord)
#include "tst_record.moc"
