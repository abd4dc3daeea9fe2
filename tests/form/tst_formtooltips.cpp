// SPDX-License-Identifier: GPL-3.0-or-later
// What the cells of the camera table tell when a person points at them.
#include "FormBench.h"
#include "Table.h"

namespace {

/// The lines behind the definition, as a person reads them.
QStringList told(const FormBench& bench, int row, int column)
{
    QTextDocument text;
    text.setHtml(bench.table()->item(row, column)->toolTip());
    return text.toPlainText().split(QLatin1Char('\n')).mid(1);
}

} // namespace

class FormToolTipsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void range()
    {
        const Rows<double, double, double, QString> rows{
            {-20.0, 0.0, 400.0, "-40 s to 20 s: the visible -20 s to 0 s and a margin of 20"},
            {-0.003, -0.001, 400.0, "-0.005 s to 0.001 s: the visible -0.003 s to -0.001 s and a margin of 0.002"},
            {-0.0021, -0.001, 800.0,
             "-0.0029 s to -0.0002 s: the visible -0.0021 s to -0.001 s and a margin of 0.0008"}};
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - 2000, bench.nowUs, 100, 1000);
        for (const auto& [lower, upper, avgFrameTime, expected] : rows) {
            bench.record(0).avgFrameTime = avgFrameTime;
            bench.area(0)->axis(QCPAxis::atBottom)->setRange(lower, upper);
            bench.invoke("updateGraph");
            QCOMPARE(told(bench, 0, ThroughputColumn::AvgThroughput).value(0),
                     QStringLiteral("Frames from %1 s on either side.").arg(expected));
            QCOMPARE(told(bench, 0, ThroughputColumn::CameraBufferSize), QStringList());
        }
        bench.record(0).bufferSizeKnown = false;
        bench.record(0).cameraBufferSize = 32768;
        QCOMPARE(told(bench, 0, ThroughputColumn::CameraBufferSize),
                 QStringList("This camera does not tell: 32768 bytes are assumed."));
    }

    /// The average stays on screen when the view has left the frames: its tool tip must not pass it off as theirs.
    void noFrameInRange()
    {
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - second, bench.nowUs, 1000, 1000);
        const auto noFrame = [&] {
            return told(bench, 0, ThroughputColumn::AvgThroughput).contains(QStringLiteral("no frame in this range"));
        };
        bench.invoke("updateGraph");
        const QString average = bench.cell(0, ThroughputColumn::AvgThroughput);
        QVERIFY(!noFrame());
        bench.area(0)->axis(QCPAxis::atBottom)->setRange(-120.0, -110.0);
        QCOMPARE(bench.cell(0, ThroughputColumn::AvgThroughput), average);
        QVERIFY(noFrame());
    }

    void everyFigureHasItsOwnDefinition()
    {
        for (const auto& [mode, figures] : {std::pair{MeasModeDataThroughput, 6}, {MeasModeStandardAcq, 7}}) {
            FormBench bench(1, mode);
            QSet<QString> definitions;
            for (int column = 0; column < bench.table()->columnCount(); ++column) {
                const auto* item = bench.table()->item(0, column);
                definitions << (item ? item->toolTip() : QString());
            }
            QCOMPARE(definitions.size(), figures + 1); // and none of what is no figure
        }
    }

    void silentAndMissingFrames()
    {
        FormBench bench;
        bench.addCamera([](sim::CameraScenario& scenario) {
            scenario.faults.numberJump = {2, 1, 0};
            scenario.faults.numberJumpBy = 5;
        });
        bench.addCamera();
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        QTRY_VERIFY(bench.record(0).runTotals().failedWaits > 0); // its loop has begun
        bench.nowUs += 7 * second + 900000;
        const QStringList silent{"This measurement: 0 missing frames, longest time without a frame 7.9 s.",
                                 "no frame for 7 s"};
        const auto status = [&bench] { return told(bench, 0, statusColumn).mid(0, 2); };
        const auto causes = [&bench](int from) { return told(bench, 0, statusColumn).mid(from); };
        QCOMPARE(status(), silent);
        QCOMPARE(causes(2).size(), 1);
        QVERIFY(causes(2)[0].startsWith("No frame came for up to 7.9 s"));
        const QStringList slowest = told(bench, 0, ThroughputColumn::MinThroughput);
        QVERIFY(slowest[0].startsWith("Blocks of 1024 bytes"));
        QCOMPARE(slowest.mid(1, 2), silent);
        QCOMPARE(told(bench, 1, statusColumn), QStringList()); // has not been measured

        bench.deliverFrames(0, 4);
        QTRY_COMPARE(bench.record(0).runTotals().frames, quint64(4));
        const QStringList back{"This measurement: 5 missing frames, longest time without a frame 7.9 s."};
        QCOMPARE(status().mid(0, 1), back);
        QCOMPARE(causes(1).filter("5 frames are missing").size(), 1);
        QCOMPARE(causes(0).last(), "Kept are the last 10,000,000 samples."); // all came at the same time
        QCOMPARE(told(bench, 0, ThroughputColumn::BufferOverflowCount).mid(0, 1), back);
        bench.nowUs += 2 * second;
        QCOMPARE(told(bench, 0, statusColumn).value(1), QStringLiteral("no frame for 2 s"));
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        bench.nowUs += 30 * second;
        QCOMPARE(status().mid(0, 1), back);
    }

    void clockDrift()
    {
        FormBench bench(1);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        for (quint64 frames = 1; frames <= 3; ++frames) { // known when the second minute with a frame is over
            QCOMPARE(told(bench, 0, statusColumn).filter("clock"), QStringList());
            bench.nowUs += 700 * second;
            bench.deliverFrames(0, 1);
            QTRY_COMPARE(bench.record(0).runTotals().frames, frames);
        }
        QCOMPARE(told(bench, 0, statusColumn).filter("clock"),
                 QStringList("The camera's clock is 0.0 ppm fast against this computer's."));
        for (int click = 0; click < 2; ++click)
            QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        bench.nowUs += second;
        QCOMPARE(told(bench, 0, statusColumn).filter("clock"), QStringList()); // the next run's is not known
    }
};

QTEST_MAIN(FormToolTipsTest)
#include "tst_formtooltips.moc"
