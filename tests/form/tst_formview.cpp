// SPDX-License-Identifier: GPL-3.0-or-later
// What a user sees of the plots: paging, one area alone, the shared time range, zoom, drags.
#include <vnCoreGui/CxExportToolButton.h>

#include "FormBench.h"
#include "Table.h"

class FormViewTest : public QObject
{
    Q_OBJECT

    static void wheel(const FormBench& bench, int angle, Qt::KeyboardModifiers modifiers)
    {
        const QPointF position = bench.area(bench.plot()->axisRectCount() - 1)->center();
        QWheelEvent event(position, bench.plot()->mapToGlobal(position.toPoint()), {}, QPoint(0, angle), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(bench.plot(), &event);
    }

    static void doubleClick(const FormBench& bench, int area)
    {
        QTest::mouseDClick(bench.plot(), Qt::LeftButton, {}, bench.area(area)->center());
    }

private Q_SLOTS:
    void areasPageWhereThereIsNoRoom()
    {
        FormBench bench(5);
        for (int i = 0; i < 5; ++i)
            addFrames(bench.record(i), bench.nowUs - 30 * second, bench.nowUs, second, 1000 * quint64(i + 1));
        const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(bench.plot(), pressed, modifiers);
        };
        const auto axes = [&] { // title initial, value axis
            QStringList texts;
            for (int i = 0; i < bench.areas().size(); ++i)
                texts.append(bench.areas()[i].left(1) + rangeText(bench.area(i)->axis(QCPAxis::atLeft)));
            return texts;
        };
        bench.form->resize(700, 1000);
        bench.form->activateWindow();
        bench.plot()->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(bench.form.get()));
        bench.tick();
        const QStringList all = axes();
        QCOMPARE(all.size(), 5);
        QVERIFY(bench.child("areaBar")->isHidden());

        bench.form->resize(700, 500);
        QCoreApplication::processEvents();
        const int freeze = 4;
        const Steps steps{
            {"AB", [] {}},
            {"CD", [&] { key(Qt::Key_PageDown); }},
            {"DE", [&] { key(Qt::Key_PageDown); }},
            {"CD", [&] { wheel(bench, 120, Qt::ControlModifier); }},
            {"C", [&] { doubleClick(bench, 0); }},
            {"D", [&] { key(Qt::Key_PageDown, Qt::ControlModifier); }},
            {"CD", [&] { key(Qt::Key_Escape); }},
            {"D", [&] { doubleClick(bench, 1); }},
            {"CD", [&] { doubleClick(bench, 0); }},
            {"DE", [&] { bench.child<QScrollBar>("areaBar")->setValue(4); }},
            {"AB", [&] { key(Qt::Key_PageUp), key(Qt::Key_PageUp); }},
            {"BC", [&] { bench.graphBox(0)->click(), bench.invoke("updateGraph"); }},
            {"AB", [&] { bench.graphBox(0)->click(), bench.invoke("updateGraph"), key(Qt::Key_PageUp); }}};
        int step = 0;
        for (const auto& [inView, act] : steps) {
            if (++step > freeze) // the curves of the last refresh are those of areas that come into view later
                bench.nowUs += second, bench.form->referenceTime = bench.nowUs;
            act();
            const QString context = QStringLiteral("%1: %2").arg(step).arg(axes().join(' '));
            QVERIFY2(axes() == all.filter(QRegularExpression(QStringLiteral("^[%1]").arg(inView))),
                     qPrintable(context));
            QCOMPARE(bench.plot()->graphCount(), 2 * bench.areas().size());
            for (int row = 0; row < 5; ++row) { // of what is out of view they tell nothing
                const QString inBoxes = bench.inCell<QLineEdit>(row, ThroughputColumn::YAxisScaling, 1)->text();
                QVERIFY2(inBoxes.isEmpty() != QLatin1String(inView).contains(QLatin1Char(char('A' + row))) ||
                             !bench.graphBox(row)->isChecked(),
                         qPrintable(context));
            }
            QVERIFY2(rangeText(bench.area(0)->axis(QCPAxis::atBottom)) == "-20..0", qPrintable(context));
            QVERIFY2(bench.plot()->grab().toImage() == pictureAfterReplot(*bench.plot()), qPrintable(context));
        }
        bench.tick();
        QCOMPARE(bench.columnTexts(ThroughputColumn::AvgThroughput),
                 (QStringList{"2048", "1024", "682", "512", "409"})); // in view or not

        for (const auto& [formHeight, tableHeight] : {std::pair{380, 127}, std::pair{1000, 155}}) {
            bench.form->resize(700, formHeight);
            QCoreApplication::processEvents();
            QCOMPARE(bench.table()->height(), tableHeight); // room for two areas first
        }
    }

    void timeAxesCanShowTheTimeOfDay()
    {
        FormBench bench(1);
        const auto labels = [&] {
            bench.plot()->replot();
            return bench.area(0)->axis(QCPAxis::atBottom)->tickVectorLabels().toList().join(' ');
        };
        const QString seconds = labels();
        auto* action = bench.plot()->actions().value(0);
        action->trigger();
        QVERIFY2(labels().contains("09:59:50 09:59:55 10:00:00"), qPrintable(labels()));
        action->trigger();
        QCOMPARE(labels(), seconds);
    }

    void timeRanges()
    {
        const Rows<double, double, QString, QString> rows{{-8.0, -3.0, "-8..-3", "-5..0"},
                                                          {-50.0, -30.0, "-50..-30", "-20..0"},
                                                          {-3.002, -3.0, "-3.002..-3", "-0.002..0"},
                                                          {-3.0005, -3.0, "-20..0", "-20..0"},         // too deep
                                                          {-1e15, 1e15, "-43200..43200", "-86400..0"}, // a day
                                                          {-1e249, 1e249, "-43200..43200", "-86400..0"}};
        for (const auto& [lower, upper, zoomed, panReset] : rows) {
            FormBench bench(2);
            addFrames(bench.record(0), bench.nowUs - second, bench.nowUs, second / 10, 2000);
            bench.area(1)->axis(QCPAxis::atBottom)->setRange(lower, upper);
            QCOMPARE(bench.areas(), (QStringList{"A (1):" + zoomed, "B (2):" + zoomed}));
            for (int presses = 0; presses < 3; ++presses) {
                bench.press("resetPan");
                QCOMPARE(bench.areas(), (QStringList{"A (1):" + panReset, "B (2):" + panReset}));
                QCOMPARE(bench.area(0)->axis(QCPAxis::atBottom)->range(),
                         QCPRange(bench.form->timeRangeLower, bench.form->timeRangeUpper));
            }
        }
    }

    void wheelZoomsTimeOnly()
    {
        FormBench bench(2);
        QCoreApplication::processEvents(); // the first drawing
        bench.record(0).measuring = true;
        QSignalSpy replots(bench.plot(), &QCustomPlot::afterReplot);
        wheel(bench, 120, Qt::NoModifier);
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

    void liveGraph()
    {
        FormBench bench(2);
        const auto tickAt = [&bench](int seconds) {
            bench.nowUs = 36000000000 + seconds * second;
            bench.tick();
            return int((bench.form->referenceTime - 36000000000) / second);
        };
        bench.child<QCheckBox>("checkBoxLiveGraph")->click();
        QCOMPARE(tickAt(5), 0); // the time follows measurements
        bench.measureButton(1)->click();
        bench.deliverFrames(1, 3);
        QTRY_COMPARE(int(bench.record(1).runTotals().frames), 3);
        QCOMPARE(tickAt(6), 6);
        QCOMPARE(bench.plot()->graphCount(), 0); // frozen, the figures are not
        QVERIFY(bench.cell(1, ThroughputColumn::AvgThroughput).toInt() > 0);
        bench.press("refreshGraph");
        QCOMPARE(bench.plot()->graphCount(), 4);
        bench.child<QCheckBox>("checkBoxLiveGraph")->click();
        QCOMPARE(tickAt(7), 7);
        bench.measureButton(1)->click();
        QCOMPARE(tickAt(8), 7);
    }

    void dragsEndWithAntialiasing()
    {
        FormBench bench(3);
        bench.form->resize(690, 600);
        const auto send = [&bench](QEvent::Type type, int x, Qt::MouseButton button, Qt::MouseButtons buttons) {
            QMouseEvent event(type, bench.area(0)->center() + QPointF(x, 0), button, buttons, Qt::NoModifier);
            QCoreApplication::sendEvent(bench.plot(), &event);
        };
        const Steps ends{
            {"released", [&] { send(QEvent::MouseButtonRelease, 30, Qt::LeftButton, {}); }},
            {"camera opens", [&] { bench.addCamera(); }},
            {"camera closes", [&] { bench.close(2); }},
            {"graph box", [&] { bench.graphBox(0)->click(); }},
            {"hidden", [&] { bench.form->hide(), bench.form->show(); }},
            {"lost release", [&] { send(QEvent::MouseMove, 40, Qt::NoButton, {}); }},
            {"picture", [&] { emit bench.child<CxExportToolButton>("btnExport")->exportClicked(1); }},
            {"second press", [&] { send(QEvent::MouseButtonPress, 0, Qt::RightButton, Qt::LeftButton); }}};
        for (const auto& [name, end] : ends) {
            pictureAfterReplot(*bench.plot());
            send(QEvent::MouseButtonPress, 0, Qt::LeftButton, Qt::LeftButton);
            send(QEvent::MouseMove, 30, Qt::NoButton, Qt::LeftButton);
            QVERIFY2(bench.plot()->notAntialiasedElements() == QCP::aeAll, name);
            end();
            QVERIFY2(!bench.plot()->notAntialiasedElements(), name);
            send(QEvent::MouseButtonRelease, 30, Qt::LeftButton, {});
        }
    }
};

QTEST_MAIN(FormViewTest)
#include "tst_formview.moc"
