// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: worked examples and edges.
#include <limits>

#include <QtTest/QtTest>

#include "RandomRecord.h"
#include "Table.h"

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void frameSpeeds()
    {
        CxCameraLineData data;
        appendFrame(data, 0, {~quint64(0) - 99, 900, 2900}); // 1000 and 2000 ticks, the counter wraps in between
        double speeds[2];
        double deltas[2];
        quint64 offsets[2];
        QCOMPARE(data.calculateFrameSpeeds(*data.frameList[0], 4096, 1000.0, speeds, deltas, offsets), 2);
        QCOMPARE(std::tuple(speeds[0], speeds[1], deltas[0], deltas[1], offsets[0], offsets[1]),
                 std::tuple(1024.0, 512.0, -96.0, 3904.0, quint64(4), quint64(12)));
        QCOMPARE(data.calculateFrameSpeeds(*data.frameList[0], 4096, 1000.0, nullptr, nullptr, nullptr), 2);
        QCOMPARE(data.calculateFrameSpeeds(FrameRecord(), 4096, 1000.0, speeds, deltas, offsets), 0);
    }

    void figures_data()
    {
        const Table<QVector<quint64>, int, double, double, double, quint64> row("ticks", "bufferSize", "average",
                                                                                "slowest", "highest", "overflows");
        using Ticks = QVector<quint64>;
        row("example", Ticks{0, 1000, 3000}, 1000, 1024.0, 512.0, 100.0, 1);
        row("fits", Ticks{0, 1000, 3000}, 7808, 1024.0, 512.0, 50.0, 0);
        row("stays full", Ticks{0, 2000, 2500}, 1000, 3 * 4096 / 10.0, 512.0, 100.0, 1);
        row("one block", Ticks{5}, 1000, inf, DBL_MAX, 0.0, 0);
        row("standing ticks", Ticks{5, 5, 5}, 1000, inf, DBL_MAX, 0.0, 0);
        row("no buffer", Ticks{0, 1000, 3000}, 0, 1024.0, 512.0, 100.0, 1);
    }
    void figures()
    {
        QFETCH(QVector<quint64>, ticks);
        QFETCH(int, bufferSize);
        CxCameraLineData data;
        data.requiredThroughput = 1000;
        data.cameraBufferSize = bufferSize;
        appendFrame(data, 0, {ticks.begin(), ticks.end()});
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, 0, 1000, 0));
        QTEST(data.avgThroughput, "average");
        QTEST(data.minThroughput, "slowest");
        QTEST(data.maxBufferLevel, "highest");
        QTEST(data.bufferOverflowCount, "overflows");

        const EvaluationSettings settings = data.evaluationSettings();
        const FrameRecord& record = *data.frameList[0];
        const FrameFigures frame = frameFigures(record, makeAggregates(record, settings), settings);
        QTEST(frame.throughput.value_or(inf), "average");
        QTEST(frame.minThroughput.value_or(DBL_MAX), "slowest");
        QTEST(frame.maxBufferLevel.value_or(0.0), "highest");
        QTEST(quint64(frame.overflow), "overflows");
    }

    void extremeRanges()
    {
        CxCameraLineData data;
        QVERIFY(!data.calculateStats(nullptr, nullptr, nullptr, 0, 1000, 0));
        appendFrame(data, 5000, {0, 1000});
        const qint64 end = std::numeric_limits<qint64>::max();
        QVERIFY(!data.calculateStats(nullptr, nullptr, nullptr, end - 1, end, 0));
        QVERIFY(!data.calculateStats(nullptr, nullptr, nullptr, -end, -end + 5, 0));
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, -end, end, 0));
        data.avgFrameTime = 1e300; // the margin: beyond all integers
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, 100'000, 101'000, 0));
    }
};

QTEST_GUILESS_MAIN(TestStatistics)
#include "tst_statistics.moc"
