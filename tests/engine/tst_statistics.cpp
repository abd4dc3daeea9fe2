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

    void figures()
    {
        // buffer size, average, slowest, highest level, overflows
        const Rows<std::vector<quint64>, int, double, double, double, quint64> rows{
            {{0, 1000, 3000}, 1000, 1024.0, 512.0, 100.0, 1},
            {{0, 1000, 3000}, 7808, 1024.0, 512.0, 50.0, 0},           // fits
            {{0, 2000, 2500}, 1000, 3 * 4096 / 10.0, 512.0, 100.0, 1}, // stays full
            {{5}, 1000, inf, DBL_MAX, 0.0, 0},                         // one block
            {{5, 5, 5}, 1000, inf, DBL_MAX, 0.0, 0},                   // standing ticks
            {{0, 1000, 3000}, 0, 1024.0, 512.0, 100.0, 1}};            // no buffer
        for (const auto& [ticks, bufferSize, average, slowest, highest, overflows] : rows) {
            CxCameraLineData data;
            data.requiredThroughput = 1000;
            data.cameraBufferSize = bufferSize;
            appendFrame(data, 0, ticks);
            QVERIFY(data.calculateStats(nullptr, nullptr, nullptr, 0, 1000, 0));
            const auto expected = std::tuple(average, slowest, highest, overflows);
            QCOMPARE(std::tuple(data.avgThroughput, data.minThroughput, data.maxBufferLevel,
                                quint64(data.bufferOverflowCount)),
                     expected);
            const EvaluationSettings settings = data.evaluationSettings();
            const FrameRecord& record = *data.frameList[0];
            const FrameFigures frame = frameFigures(record, makeAggregates(record, settings), settings);
            QCOMPARE(std::tuple(frame.throughput.value_or(inf), frame.minThroughput.value_or(DBL_MAX),
                                frame.maxBufferLevel.value_or(0.0), quint64(frame.overflow)),
                     expected);
        }
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
