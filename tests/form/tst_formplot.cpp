// SPDX-License-Identifier: GPL-3.0-or-later
// The plots: areas and axes, which curves there are and what they hold, scaling, the shared time range, replots.
#include "FormBench.h"
#include "Table.h"

static constexpr qint64 second = 1000000;

class FormPlotTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void curves_data()
    {
        const Table<int, QStringList> row("detailLevel", "expected");
        row("both", 3, {"Min throughput", "Max buffer level"});
        row("less detail", 2, {"Max buffer level"});
    }
    void curves()
    {
        QFETCH(int, detailLevel);
        FormBench bench(1);
        bench.host.options.detailLevel = detailLevel;
        addFrames(bench.record(0), bench.nowUs - 10 * second, bench.nowUs, second, 2000);
        bench.tick();
        QTEST(bench.curveNames(), "expected");
        QCOMPARE(bench.cell(0, ThroughputColumn::AvgThroughput),
                 QStringLiteral("1024")); // the figures come all the same
        for (int i = 0; i < bench.plot()->graphCount(); ++i) {
            const auto points = bench.plot()->graph(i)->data();
            QCOMPARE(points->size(), 9); // all but the first and the last, which ends after now
            QCOMPARE(points->constBegin()->key, -9.0 + 8e-6);
        }
    }

    void valueAxisFollowsItsCurves()
    {
        FormBench bench(1);
        auto& record = bench.record(0);
        addFrames(record, bench.nowUs - 10 * second, bench.nowUs - 5 * second, second, 1260);  // 812.7 MB/s
        addFrames(record, bench.nowUs - 4 * second, bench.nowUs - 1 * second, second, 276760); // 3.7 MB/s
        bench.tick();
        QCOMPARE(bench.inCell<QLineEdit>(0, ThroughputColumn::YAxisScaling, 0)->text(), QStringLiteral("3"));
        QCOMPARE(bench.inCell<QLineEdit>(0, ThroughputColumn::YAxisScaling, 1)->text(), QStringLiteral("812"));
        QCOMPARE(rangeText(bench.area(0)->axis(QCPAxis::atLeft)), QStringLiteral("3..812"));
    }

    /// However many areas share the plot's height, labels do not run into each other and ticks do not pile up.
    void valueAxesFitTheirArea()
    {
        FormBench bench(1);
        for (int cameras = 1; cameras <= 8; bench.addCamera(), ++cameras) {
            for (const int height : {200, 400, 900}) {
                bench.plot()->resize(600, height);
                const auto* axis = bench.area(cameras - 1)->axis(QCPAxis::atLeft);
                const bool labelled = axis->labelColor() == Qt::white;
                const int labelLength = QFontMetrics(axis->labelFont()).horizontalAdvance(axis->label());
                QVERIFY(labelled ? labelLength <= height / cameras : height / cameras < 80);
                QVERIFY(axis->ticker()->tickCount() * axis->tickLabelFont().pixelSize() <=
                        std::max(11, height / cameras));
            }
        }
    }

    void timeRanges_data()
    {
        const Table<double, double, QString, QString> row("lower", "upper", "zoomed", "panReset");
        row("zoom", -8.0, -3.0, "-8..-3", "-5..0");
        row("pan", -50.0, -30.0, "-50..-30", "-20..0");
        row("2 ms", -3.002, -3.0, "-3.002..-3", "-0.002..0");
        row("too deep", -3.0005, -3.0, "-20..0", "-20..0");
        row("huge", -1e15, 1e15, "-1e+15..1e+15", "-2e+15..0");
        row("largest", -1e249, 1e249, "-1e+249..1e+249", "-2e+249..0");
    }
    void timeRanges()
    {
        QFETCH(double, lower);
        QFETCH(double, upper);
        QFETCH(QString, zoomed);
        FormBench bench(2);
        addFrames(bench.record(0), bench.nowUs - second, bench.nowUs, second / 10, 2000);
        const auto shown = [](const QString& range) { return QStringList{"A (1):" + range, "B (2):" + range}; };
        bench.area(1)->axis(QCPAxis::atBottom)->setRange(lower, upper);
        QCOMPARE(bench.areas(), shown(zoomed));
        QFETCH(QString, panReset);
        for (int presses = 0; presses < 3; ++presses) {
            bench.press("resetPan");
            QCOMPARE(bench.areas(), shown(panReset));
            QCOMPARE(bench.area(0)->axis(QCPAxis::atBottom)->range(),
                     QCPRange(bench.form->timeRangeLower, bench.form->timeRangeUpper));
        }
    }

    void wheelZoomsTimeOnly()
    {
        FormBench bench(2);
        QCoreApplication::processEvents(); // the first drawing
        const QPointF position = bench.area(1)->center();
        QWheelEvent wheel(position, bench.plot()->mapToGlobal(position.toPoint()), {}, QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        bench.record(0).measuring = true;
        QSignalSpy replots(bench.plot(), &QCustomPlot::afterReplot);
        QCoreApplication::sendEvent(bench.plot(), &wheel);
        QCoreApplication::processEvents();
        bench.record(0).measuring = false;
        QCOMPARE(replots.size(), 1);
        QVERIFY(bench.form->timeRangeUpper - bench.form->timeRangeLower < 19.0);
        QCOMPARE(rangeText(bench.area(0)->axis(QCPAxis::atBottom)),
                 rangeText(bench.area(1)->axis(QCPAxis::atBottom)));
        QCOMPARE(rangeText(bench.area(1)->axis(QCPAxis::atLeft)), QStringLiteral("0..1000"));

        bench.press("btnResetZoom");
        QCOMPARE(bench.areas(), (QStringList{"A (1):-20..0", "B (2):-20..0"}));
    }

    void deepZoomShowsEverySample()
    {
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - 4 * second, bench.nowUs - 2 * second, 100, 2000);
        bench.tick();
        QVERIFY(bench.plot()->graph(0)->data()->size() <= bench.plot()->width()); // a point per pixel at most
        bench.area(0)->axis(QCPAxis::atBottom)->setRange(-3.002, -3.0); // nothing measures: read again at once
        const auto points = bench.plot()->graph(0)->data();
        QCOMPARE(points->size(), 20);
        for (const auto& point : *points)
            QVERIFY(point.key >= -3.002 && point.key <= -3.0);
    }

    void referenceTimeFollowsMeasurements()
    {
        FormBench bench(2);
        const auto tickAt = [&bench](int seconds) {
            bench.nowUs = 36000000000 + seconds * second;
            bench.tick();
            return (bench.form->referenceTime - 36000000000) / second;
        };
        QCOMPARE(tickAt(5), 0);
        QTest::mouseClick(bench.measureButton(1), Qt::LeftButton);
        QCOMPARE(tickAt(6), 6);
        bench.child<QCheckBox>("checkBoxLiveGraph")->click();
        QCOMPARE(tickAt(7), 7);
        QTest::mouseClick(bench.measureButton(1), Qt::LeftButton);
        QCOMPARE(tickAt(8), 7);
    }

    void frozenGraph()
    {
        FormBench bench(1);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        bench.deliverFrames(0, 3);
        QTRY_COMPARE(int(bench.record(0).runTotals().frames), 3);
        bench.nowUs += second;
        bench.child<QCheckBox>("checkBoxLiveGraph")->click();
        bench.tick();
        QCOMPARE(bench.plot()->graphCount(), 0);
        QVERIFY(bench.cell(0, ThroughputColumn::AvgThroughput).toInt() > 0);
        bench.press("refreshGraph");
        QCOMPARE(bench.plot()->graphCount(), 2);
    }

    void graphBoxes()
    {
        FormBench bench(3);
        const auto click = [&bench](int row) { QTest::mouseClick(bench.graphBox(row), Qt::LeftButton); };
        bench.tick();
        click(1);
        QCOMPARE(bench.areas(), (QStringList{"A (1):-20..0", "C (3):-20..0"}));
        QCOMPARE(bench.plot()->plotLayout()->rowCount(), 4); // no gap
        bench.tick();
        QCOMPARE(bench.plot()->graphCount(), 4);
        click(0);
        click(2);
        QVERIFY(bench.plot()->isHidden());
        bench.tick(); // only statistics
        QCOMPARE(bench.plot()->graphCount(), 0);
        click(1);
        QVERIFY(bench.plot()->isVisible());
        QCOMPARE(bench.areas(), QStringList{"B (2):-20..0"});

        bench.close(1); // the last one that is plotted
        QVERIFY(bench.plot()->isHidden());
        CameraRegistry::instance().closeAll();
        QVERIFY(bench.plot()->isVisible());
    }

    void replots()
    {
        FormBench bench(2);
        for (int i : {0, 1})
            addFrames(bench.record(i), bench.nowUs - second, bench.nowUs, second / 10, 2000);
        QVERIFY(QTest::qWaitForWindowExposed(bench.form.get()));
        QCoreApplication::processEvents();
        QSignalSpy replots(bench.plot(), &QCustomPlot::afterReplot);
        bench.tick();
        QCOMPARE(replots.size(), 1);

        bench.form->hide();
        replots.clear();
        bench.tick();
        bench.tick();
        QCOMPARE(replots.size(), 0);
        QCOMPARE(bench.plot()->graph(0)->data()->size(), 9); // but the curves are there
        bench.form->show();
        QTRY_COMPARE(replots.size(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(replots.size(), 1);
    }
};

QTEST_MAIN(FormPlotTest)
#include "tst_formplot.moc"
