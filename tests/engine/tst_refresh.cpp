// SPDX-License-Identifier: GPL-3.0-or-later
// Refreshes that build on what earlier ones left: records that grow, are trimmed and get other settings in between
// give what the plain formulas give at every step, also while a worker appends and trims.
#include <atomic>
#include <cmath>
#include <thread>

#include <qcustomplot.h>
#include <QtTest/QtTest>

#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "TestScale.h"

namespace {

std::vector<CurvePoint> points(const QCPGraph& graph)
{
    std::vector<CurvePoint> result;
    for (const QCPGraphData& point : *graph.data())
        result.push_back({point.key, point.value});
    return result;
}

/// As the worker appends: with aggregates for the settings of the moment.
void appendFinished(CxCameraLineData& data, std::unique_ptr<FrameRecord> frame, const EvaluationSettings& settings)
{
    FrameAggregates aggregates = makeAggregates(*frame, settings);
    QMutexLocker lock(&data.mutex);
    data.frameList.push_back(std::move(frame), std::move(aggregates), settings);
}

/// A frame in order, so large that it has block groups.
std::unique_ptr<FrameRecord> steadyFrame(Dice& dice, quint64 number, quint64 blocks)
{
    constexpr quint64 slotTicks = 1'500'000;
    CxCameraLineData maker;
    std::vector<quint64> ticks(blocks);
    quint64 tick = number * slotTicks;
    for (quint64& entry : ticks)
        entry = tick += static_cast<quint64>(dice.oneIn(100) ? dice.between(1000, 9000) : dice.between(500, 1050));
    appendFrame(maker, static_cast<qint64>(number * slotTicks / 250), ticks, number);
    return std::move(maker.frameList.takeFront().record);
}

} // namespace

class TestRefresh : public QObject
{
    Q_OBJECT

public:
    TestRefresh() : minimum(*plot.addGraph()), level(*plot.addGraph()) {}

private Q_SLOTS:
    void anyTicks() { equalAtEveryStep(false); }
    void largeFramesInOrder() { equalAtEveryStep(true); }
    void countersEqualAtEveryStep()
    {
        while (plot.graphCount() < 5)
            plot.addGraph();
        qint64 plotted = 0;
        foundMarks = 0;
        for (int seed = 0; seed < testCount(120); ++seed) {
            Dice dice(static_cast<quint64>(seed));
            CxCameraLineData data;
            data.avgFrameTime = static_cast<double>(dice.between(0, 3000)) / 3.0;
            const bool backwards = dice.oneIn(3); // now and then
            data.measMode = MeasModeStandardAcq;
            qint64 timeUs = 0;
            quint64 number = dice.bits();
            qint32 overflows = 0;
            for (int step = 0; step < 8; ++step) {
                changeRuns(data, dice, timeUs);
                for (qint64 samples = dice.between(1, 400); samples > 0; --samples) {
                    timeUs += backwards && dice.oneIn(20) ? -dice.between(0, 5000) : dice.between(0, 2000);
                    if (dice.oneIn(200))
                        timeUs += dice.between(0, 300'000);
                    number += dice.oneIn(9) ? static_cast<quint64>(dice.between(0, 4)) : 1;
                    const auto skips = static_cast<qint32>(dice.between(0, 1000));
                    const auto triggers = static_cast<qint32>(samples);
                    overflows += dice.oneIn(30) ? static_cast<qint32>(dice.between(-2, 5)) : 0;
                    appendSample(data, {number, timeUs, skips, skips, triggers, triggers, overflows});
                }
                while (data.counterSampleList.size() > 900)
                    data.counterSampleList.pop_front();
                const qint64 range = dice.between(1, 300'000);
                const qint64 toUs = timeUs - dice.between(-1000, 200'000);
                const double spacing = dice.oneIn(4) ? 0.0 : static_cast<double>(range) / 50e3;
                for (int i = 0; i < 5; ++i)
                    plot.graph(i)->data()->clear();
                const bool result =
                    data.fillCounterGraphs(plot.graph(0), plot.graph(1), plot.graph(2), plot.graph(3), plot.graph(4),
                                           QCPRange(-1.0, 0.5), toUs - range, toUs, spacing);
                const NaiveCounters naive = naiveCounters(data, 0.5, toUs - range, toUs, spacing);
                QCOMPARE(result, naive.evaluated);
                for (int i = 0; i < 5; ++i)
                    QVERIFY2(points(*plot.graph(i)) == naive.curves[i], qPrintable(QString::number(seed)));
                plotted += plot.graph(0)->dataCount();
                compareMarks(data, dice, toUs - range, toUs);
            }
        }
        QVERIFY(plotted > 10 * testCount(120));
        QVERIFY(foundMarks > 10 * testCount(120));
    }

    void remadeWhileTheWorkerTrims()
    {
        constexpr quint64 kept = 300;
        CxCameraLineData data;
        data.cameraBufferSize = 1'000'000;
        Dice dice(1);
        std::vector<std::unique_ptr<FrameRecord>> frames;
        for (quint64 number = 0; number < kept + static_cast<quint64>(testCount(3000)); ++number)
            frames.push_back(steadyFrame(dice, number, number % 7 == 0 ? 1000 : 300));
        for (quint64 number = 0; number < kept; ++number)
            appendFinished(data, std::move(frames[number]), data.evaluationSettings());

        std::atomic<bool> done{false};
        std::thread worker([&] {
            for (quint64 number = kept; number < frames.size(); ++number) {
                const EvaluationSettings settings = data.evaluationSettings();
                appendFinished(data, std::move(frames[number]), settings);
                FrameList::Frame removed; // outlives the lock
                QMutexLocker lock(&data.mutex);
                removed = data.frameList.takeFront();
            }
            done = true;
        });
        const QCPRange keys(-1.0, 0.0);
        for (int required = 500; !done; required = 500 + (required + 1) % 700) {
            data.requiredThroughput = required;
            data.calculateStats(&minimum, &level, &keys, 0, 1'000'000'000'000, 1.0);
        }
        worker.join();
        QCOMPARE(data.frameList.size(), kept);
        compare(data, 0, 1'000'000'000'000, 1.0);
    }

private:
    void equalAtEveryStep(bool large)
    {
        constexpr qint64 ranges[] = {1'000, 50'000, 1'000'000, 60'000'000, 86'400'000'000};
        const int records = testCount(large ? 120 : 400);
        plottedPoints = foundMarks = 0;
        for (int seed = 0; seed < records; ++seed) {
            Dice dice(static_cast<quint64>(seed));
            CxCameraLineData data;
            data.cameraBufferSize = 32768;
            nextFrame = 1000;
            for (int step = 0; step < 12; ++step) {
                changeRuns(data, dice, data.frameList.empty() ? 0 : data.frameList.back()->timestampUs);
                change(data, dice, large);
                data.avgFrameTime = static_cast<double>(dice.between(0, 6000)) / 3.0;
                for (int view = 0; view < 3 && !data.frameList.empty(); ++view) {
                    const qint64 range = dice.pick(ranges);
                    const qint64 anchorUs = data.frameList[dice.bits() % data.frameList.size()]->timestampUs;
                    // Now and then the view has left the frames.
                    const qint64 toUs = anchorUs + (dice.oneIn(6) ? -3 * range : dice.between(0, range));
                    compare(data, toUs - range, toUs, dice.oneIn(4) ? 0.0 : static_cast<double>(range) / 514e3);
                    compareMarks(data, dice, toUs - range, toUs);
                    if (QTest::currentTestFailed())
                        qFatal("seed %d, step %d, view %d", seed, step, view);
                }
            }
        }
        QVERIFY(plottedPoints > 100 * records); // else there was little to compare
        QVERIFY(foundMarks > 10 * records);
    }

    /// What may happen between two refreshes.
    void change(CxCameraLineData& data, Dice& dice, bool large)
    {
        const EvaluationSettings before = data.evaluationSettings();
        if (dice.oneIn(3))
            data.requiredThroughput = static_cast<qint32>(dice.between(0, 3000));
        if (dice.oneIn(4))
            data.cameraBufferSize = static_cast<qint32>(dice.oneIn(4) ? 0 : dice.between(1, 3'000'000));
        if (dice.oneIn(8))
            data.samplePeriod = static_cast<qint32>(8 * dice.between(1, 6400));
        if (large) {
            // Some of them were in the worker's hands when the settings changed.
            for (qint64 frames = dice.between(0, 40); frames > 0; --frames)
                appendFinished(
                    data,
                    steadyFrame(dice, nextFrame += dice.oneIn(9) ? static_cast<quint64>(dice.between(1, 200)) : 1,
                                static_cast<quint64>(dice.between(1, 1500))),
                    dice.oneIn(5) ? before : data.evaluationSettings());
        } else {
            appendRandomMeasurement(data, dice, static_cast<int>(dice.between(1, 40)));
        }
        const quint64 room = static_cast<quint64>(dice.between(1, 300));
        while (data.frameList.size() > room && dice.oneIn(2))
            for (quint64 i = data.frameList.size() - room; i > 0; --i)
                data.frameList.pop_front();
    }

    /// Measurements that begin and end somewhere among the records that are to come.
    void changeRuns(CxCameraLineData& data, Dice& dice, qint64 timeUs)
    {
        if (!data.runs.empty() && (dice.oneIn(2) || timeUs <= data.runs.back().startUs))
            return;
        if (!data.runs.empty() && !data.runs.back().endUs)
            data.runs.back().endUs = timeUs;
        data.runs.push_back({timeUs + dice.between(1, 50'000), std::nullopt, dice.between(1000, 400'000)});
    }

    void compareMarks(CxCameraLineData& data, Dice& dice, qint64 fromUs, qint64 toUs)
    {
        const EventRange range{fromUs, toUs, dice.oneIn(4) ? 0 : (toUs - fromUs) / dice.between(2, 300), toUs};
        const auto marks = data.measMode == MeasModeStandardAcq
                               ? findEventMarks(data.counterSampleList, data.runs, range)
                               : findEventMarks(data.frameList, data.runs, range);
        QVERIFY(marks == naiveMarks(data, range));
        foundMarks += static_cast<qint64>(marks.size());
    }

    void compare(CxCameraLineData& data, qint64 fromUs, qint64 toUs, double spacing)
    {
        minimum.data()->clear();
        level.data()->clear();
        const QCPRange keys(-1.0, spacing > 0.0 ? 0.25 : 0.0);
        const bool result = data.calculateStats(&minimum, &level, &keys, fromUs, toUs, spacing);
        const NaiveFigures naive = naiveFigures(data, keys.upper, fromUs, toUs, spacing);
        QCOMPARE(result, naive.evaluated);
        QVERIFY(hasFigures(data, naive));
        QVERIFY(points(minimum) == naive.minimum);
        QVERIFY(points(level) == naive.level);
        plottedPoints += minimum.dataCount();
    }

    QCustomPlot plot;
    QCPGraph& minimum;
    QCPGraph& level;
    quint64 nextFrame = 0;
    qint64 plottedPoints = 0;
    qint64 foundMarks = 0;
};

QTEST_MAIN(TestRefresh)
#include "tst_refresh.moc"
