// SPDX-License-Identifier: GPL-3.0-or-later
// The record without a camera: totals, log lines and the clock.
#include <cmath>

#include <QtTest/QtTest>

#include "CameraLineData.h"
#include "ClockDrift.h"
#include "LogCapture.h"
#include "LogLine.h"
#include "MeasurementClock.h"
#include "RandomRecord.h"

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
        counter.addFrame(0, 1, figures, false, 60000); // it took no time: it counts, but not in the average
        for (double speed : {30.0, 10.0}) {
            figures.throughput = figures.minThroughput = speed;
            counter.addFrame(1, 1, figures, false, 70000);
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
                counter.addFrame(number, 0, FrameFigures(), false, 0);
            QCOMPARE(counter.run(0).missingFrames, missing);
        }
    }

    /// Against a plain evaluation of the list of frames; intervals are taken anywhere, also within a silence.
    void figuresOverTime()
    {
        for (quint64 seed = 1; seed <= 200; ++seed) {
            Dice dice(seed);
            RunTotalsCounter counter;
            FrameIntervalCounter frame;
            RunTotals sum;
            qint64 nowUs = dice.between(0, 1000) * 1000;
            const qint64 beginUs = nowUs;
            std::vector<qint64> arrivals;
            std::vector<quint64> intervals;
            double bytes = 0.0;
            counter.begin(nowUs);
            for (int i = 0; i < 300; ++i) {
                const bool silent = dice.oneIn(20);
                for (qint64 gapMs = silent ? dice.between(50, 5000) : dice.between(0, 30); gapMs > 0;) {
                    const qint64 partMs = dice.between(1, gapMs);
                    nowUs += partMs * 1000;
                    gapMs -= partMs;
                    if (dice.oneIn(5))
                        sum += counter.takeInterval(nowUs);
                }
                std::vector<quint64> ticks{dice.bits()};
                for (qint64 blocks = dice.between(0, 20); blocks > 0; --blocks) {
                    intervals.push_back(dice.bits() >> dice.between(20, 63));
                    ticks.push_back(ticks.back() + intervals.back());
                }
                frame.count(ticks.data(), 0, ticks.size() - 1);
                frame.endFrame();
                FrameFigures figures;
                figures.intervals = &frame;
                counter.addFrame(0, quint64(i), figures, false, nowUs);
                bytes += i;
                arrivals.push_back(nowUs);
            }
            counter.end(nowUs += dice.between(0, 2000) * 1000);
            sum += counter.takeInterval(nowUs + 1000);

            double silentUs = 0.0;
            double meanUs = 0.0;
            for (size_t i = 0; i <= arrivals.size(); ++i) {
                const double gapUs =
                    double((i < arrivals.size() ? arrivals[i] : nowUs) - (i > 0 ? arrivals[i - 1] : beginUs));
                const double ofMeanUs = i <= 1 ? 0.0 : 3 * meanUs + 1000;
                const double limitUs = i <= 8 ? std::max(1e6, ofMeanUs) : ofMeanUs;
                silentUs += gapUs > limitUs ? gapUs : 0.0;
                if (i > 0)
                    meanUs += ((i > 1 ? std::min(gapUs, limitUs) : gapUs) - meanUs) / double(i);
            }
            const RunTotals run = counter.run(nowUs + 5000);
            for (const RunTotals& totals : {run, sum}) {
                QCOMPARE(totals.elapsedUs, nowUs - beginUs);
                QCOMPARE(double(totals.silentUs), silentUs);
                QCOMPARE(totals.deliveredThroughput().value(), bytes / double(nowUs - beginUs));
                QCOMPARE(totals.framesPerSecond().value(), 300e6 / double(nowUs - beginUs));
                QCOMPARE(totals.intervals.count(), quint64(intervals.size()));
            }
            std::sort(intervals.rbegin(), intervals.rend());
            for (const double share : {0.001, 0.01, 0.1, 0.5, 1.0}) {
                const quint64 ticks = intervals[size_t(std::ceil(share * double(intervals.size()))) - 1];
                const double known = double(std::min(ticks, quint64(1) << 40));
                for (const RunTotals& totals : {run, sum})
                    QVERIFY(std::abs(totals.intervals.longest(share).value() - known) <= known / 100);
                if (ticks > 0)
                    QVERIFY(std::abs(run.throughputQuantile(share, 8).value() * known / 2000 - 1) < 0.01);
            }
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
