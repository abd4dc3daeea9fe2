// SPDX-License-Identifier: GPL-3.0-or-later
// Figures and curves: worked examples and edges.
#include <limits>

#include <qcustomplot.h>
#include <QtTest/QtTest>

#include "RandomRecord.h"
#include "Table.h"

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT

public:
    TestStatistics() : minimum(*plot.addGraph()), level(*plot.addGraph())
    {
        while (plot.graphCount() < 5)
            plot.addGraph();
    }

private Q_SLOTS:
    void init()
    {
        for (int i = 0; i < plot.graphCount(); ++i)
            plot.graph(i)->data()->clear();
    }

    void frameSpeeds()
    {
        CxCameraLineData data;
        appendFrame(data, 0, {~quint64(0) - 99, 900, 2900}); // 1000 and 2000 ticks, the counter wraps in between
        double speeds[2];
        double deltas[2];
        quint64 offsets[2];
        QCOMPARE(data.calculateFrameSpeeds(*data.frameList[0], 4096, 1000.0, speeds, deltas, offsets), 2);
        QCOMPARE(speeds[0], 1024.0);
        QCOMPARE(speeds[1], 512.0);
        QCOMPARE(deltas[0], -96.0);
        QCOMPARE(deltas[1], 3904.0);
        QCOMPARE(offsets[0], quint64(4));
        QCOMPARE(offsets[1], quint64(12));
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

    void nothingToEvaluate()
    {
        CxCameraLineData data;
        QVERIFY(!data.calculateStats(nullptr, nullptr, nullptr, 0, 1000, 0));
        appendFrame(data, 5000, {0, 1000});
        data.avgThroughput = data.minThroughput = data.maxBufferLevel = 3.0;
        data.bufferOverflowCount = 3;
        const qint64 end = std::numeric_limits<qint64>::max();
        const std::pair<qint64, qint64> ranges[] = {{7000, 7500}, {0, 2000}, {end - 1, end}, {-end, -end + 5}};
        for (const auto& [fromUs, toUs] : ranges) {
            QVERIFY(!data.calculateStats(nullptr, nullptr, nullptr, fromUs, toUs, 0));
            QCOMPARE(data.minThroughput, DBL_MAX);
            QCOMPARE(data.maxBufferLevel, 0.0);
            QCOMPARE(data.bufferOverflowCount, quint64(0));
            QCOMPARE(data.avgThroughput, 3.0);
        }
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, -end, end, 0)); // a range that no sum can hold
    }

    void margins_data()
    {
        const Table<double, qint64> row("frameTime", "margin");
        row("frames longer than half the range", 800.7, 800);
        row("short frames", 400.0, 1000);
        row("beyond all integers", 1e300, std::numeric_limits<qint64>::max());
    }
    void margins()
    {
        QFETCH(double, frameTime);
        QFETCH(qint64, margin);
        constexpr qint64 fromUs = 100'000;
        constexpr qint64 toUs = 101'000;
        CxCameraLineData data;
        data.avgFrameTime = frameTime;
        const qint64 before = margin > fromUs ? 0 : fromUs - margin;
        const qint64 behind = margin > fromUs ? 0 : toUs + margin;
        appendFrame(data, before - 1, {0, 10});
        appendFrame(data, before, {0, 20});
        appendFrame(data, behind - 1, {0, 30});
        appendFrame(data, behind, {0, 40});
        QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, fromUs, toUs, 0));
        QCOMPARE(data.minThroughput, 4096 / ((margin > fromUs ? 40 : 30) / 250.0));
    }

    void counterCurves()
    {
        CxCameraLineData data;
        const auto fill = [&](qint64 fromUs, qint64 toUs) {
            return data.fillCounterGraphs(plot.graph(0), plot.graph(1), plot.graph(2), plot.graph(3), nullptr,
                                          QCPRange(-1, 0), fromUs, toUs, 1.5);
        };
        QVERIFY(!fill(0, 1000));
        for (int i = 0; i < 100; ++i)
            appendSample(data, {0, i * 1000, i, 2 * i, 3 * i, -i});
        QVERIFY(fill(1'000'000, 1'001'000)); // samples, but none there
        QCOMPARE(plot.graph(0)->dataCount(), 0);

        // Margins of ten frame times, plotted too; every second sample is far enough from the last.
        data.avgFrameTime = 1000.9;
        QVERIFY(fill(50'000, 52'000));
        QCOMPARE(plot.graph(0)->dataCount(), 10); // 40 is the reference, then 42, 44 ... 60
        QCOMPARE(plot.graph(0)->dataMainKey(0), -0.01);
        QCOMPARE(plot.graph(1)->dataMainValue(0), 84.0);
        QCOMPARE(plot.graph(2)->dataMainValue(1), 132.0);
        QCOMPARE(plot.graph(3)->dataMainValue(9), -60.0);
    }

private:
    QCustomPlot plot;
    QCPGraph& minimum;
    QCPGraph& level;
};

QTEST_MAIN(TestStatistics)
#include "tst_statistics.moc"
