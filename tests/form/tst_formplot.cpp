// SPDX-License-Identifier: GPL-3.0-or-later
// The plots: areas and axes, which curves there are and what they hold, scaling, the shared time range, replots.
#include <vnCoreGui/CxExportToolButton.h>

#include "form/EventShapes.h"
#include "form/Tracer.h"
#include "FormBench.h"
#include "RandomRecord.h"
#include "Table.h"

using Steps = std::vector<std::pair<const char*, std::function<void()>>>;

static QImage pictureAfterReplot(QCustomPlot& plot)
{
    plot.replot(QCustomPlot::rpImmediateRefresh);
    return plot.grab().toImage();
}

/// Around everything that the picture loses when something is hidden.
static QRect drawnBy(QCustomPlot& plot, const std::function<void()>& hide)
{
    const QImage with = pictureAfterReplot(plot);
    hide();
    const QImage without = pictureAfterReplot(plot);
    QRect around;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            if (with.pixel(x, y) != without.pixel(x, y))
                around |= QRect(x, y, 1, 1);
    return around;
}

class FormPlotTest : public QObject
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
    void curves()
    {
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - 10 * second, bench.nowUs, second, 2000);
        for (const auto& [detailLevel, names] :
             Rows<int, QStringList>{{3, {"Min throughput", "Max buffer level"}}, {2, {"Max buffer level"}}}) {
            bench.host.options.detailLevel = detailLevel;
            bench.tick();
            QCOMPARE(bench.curveNames(), names);
            QCOMPARE(bench.cell(0, ThroughputColumn::AvgThroughput), QStringLiteral("1024")); // all the same
            const auto points = bench.plot()->graph(names.size() - 1)->data();
            QCOMPARE(points->size(), 9); // all but the first and the last, which ends after now
            QCOMPARE(points->constBegin()->key, -9.0 + 8e-6);
        }
    }

    void valueAxisFollowsItsCurves()
    {
        const Rows<quint64, quint64, QString> rows{
            {1260, 276760, "3..812 3..812"},       // MB/s: 812.7 and 3.7
            {1024, 1024, "900..1100 900..1100"},   // 1000 all the time
            {2048000, 2048001, "0..0 0.45..0.55"}, // as good as the same
            {256000, 256000, "3..4 3.6..4.4"},     // 4: whole numbers would cut it off
            {1280000, 5120000, "0..0 0.2..0.8"}};
        for (const auto& [ticks, laterTicks, boxesAndAxis] : rows) {
            FormBench bench(1);
            addFrames(bench.record(0), bench.nowUs - 10 * second, bench.nowUs - 5 * second, second, ticks);
            addFrames(bench.record(0), bench.nowUs - 4 * second, bench.nowUs - 1 * second, second, laterTicks);
            bench.tick();
            const auto box = [&](int i) {
                return bench.inCell<QLineEdit>(0, ThroughputColumn::YAxisScaling, i)->text();
            };
            QCOMPARE(box(0) + ".." + box(1) + " " + rangeText(bench.area(0)->axis(QCPAxis::atLeft)), boxesAndAxis);
        }
    }

    void curveNamesCanBeRead()
    {
        const auto luminance = [](const QColor& colour) {
            const auto linear = [](double v) {
                return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
                   0.0722 * linear(colour.blueF());
        };
        for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            FormBench bench(1, mode);
            const auto* legend = bench.child<QTableWidget>("tablePlotCheck");
            for (int row = 0; row < legend->rowCount(); ++row) {
                const auto* name = legend->item(row, 1);
                const QImage cell = legend->viewport()->grab(legend->visualItemRect(name)).toImage();
                const auto [darker, lighter] =
                    std::minmax({luminance(cell.pixel(2, 2)), luminance(name->foreground().color())});
                QVERIFY2((lighter + 0.05) / (darker + 0.05) >= 4.5, qPrintable(name->text()));
            }
        }
    }

    /// However many areas share the plot's height, labels do not run into each other or into the times, and ticks do not
    /// pile up.
    void valueAxesFitTheirArea()
    {
        for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            FormBench bench(1, mode);
            for (int cameras = 1; cameras <= 5; bench.addCamera(), ++cameras) {
                for (const int height : {200, 272, 400, 900}) {
                    bench.plot()->resize(516, height);
                    const int areas = bench.plot()->axisRectCount();
                    auto* area = bench.area(areas - 1);
                    auto* values = area->axis(QCPAxis::atLeft);
                    const QRect label = drawnBy(*bench.plot(), [&] { values->setLabelColor(Qt::transparent); });
                    QVERIFY(label.height() < height / areas && (!label.isEmpty() || height / areas < 80));
                    const QRect times = drawnBy(
                        *bench.plot(), [&] { area->axis(QCPAxis::atBottom)->setTickLabelColor(Qt::transparent); });
                    QVERIFY(!label.intersects(times));
                    QVERIFY(values->ticker()->tickCount() * values->tickLabelFont().pixelSize() <=
                            std::max(11, height / areas));
                }
            }
        }
    }

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

    void marksOfWhatHappened()
    {
        FormBench bench(1);
        CxCameraLineData& record = bench.record(0);
        const auto* legend = bench.child<QLabel>("labelMarks");
        const auto look = [&] {
            bench.press("refreshGraph");
            return QTextDocumentFragment::fromHtml(legend->text())
                .toPlainText()
                .remove(QChar::ObjectReplacementCharacter);
        };
        QVERIFY(look().isEmpty() && legend->isHidden());
        record.runs.push_back({bench.nowUs - 10 * second, bench.nowUs.load()});
        for (const quint64 number : {1, 2, 5}) // the last frame of the run was six seconds before its end
            appendFrame(record, bench.nowUs - 10 * second + qint64(number) * second * 4 / 5, {0, 1000}, number);
        QCOMPARE(look().simplified(), "Start End Silence Missing frames");

        const QImage picture = bench.plot()->toPixmap().toImage();
        const QRect area = bench.area(0)->rect();
        const auto colourAt = [&](double seconds, int lane) {
            const double x = bench.area(0)->axis(QCPAxis::atBottom)->coordToPixel(seconds);
            return QColor(picture.pixel(int(x), area.top() + 1 + lane * 8 + 3));
        };
        QCOMPARE(colourAt(-6.0, 1), eventShapes::colour(EventKind::MissingFrames));
        QCOMPARE(colourAt(-3.0, 0), eventShapes::colour(EventKind::Silence));

        // The clock stands at ten. What follows the mouse draws no curve.
        const auto* tracer = bench.plot()->findChild<Tracer*>();
        const auto tell = [&](double seconds) {
            const double x = bench.area(0)->axis(QCPAxis::atBottom)->coordToPixel(seconds);
            QTest::mouseMove(bench.plot(), QPoint(qRound(x), area.center().y()));
            return tracer->lines();
        };
        QCOMPARE(tell(-6.0).last(), "Missing frames: 2");
        QCoreApplication::processEvents(); // the legend has made room for itself
        QSignalSpy replots(bench.plot(), &QCustomPlot::afterReplot);
        const QStringList lines = tell(-7.0);
        QVERIFY2(lines[0].startsWith("09:59:5") && lines[0].endsWith(" s"), qPrintable(lines[0]));
        QCOMPARE(lines.mid(1).join('|'), "Min throughput: 256 MB/s|Max buffer level: 0 %|Silence: 6.00 s");
        QCOMPARE(tell(-15.0).size(), 1);
        QCOMPARE(replots.size(), 0);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(bench.plot(), &leave);
        QVERIFY(tracer->lines().isEmpty());
    }

    void requiredThroughputIsADashedLine()
    {
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - 10 * second, bench.nowUs, second, 1024); // 1000 MB/s, 900 to 1100
        for (const auto& [required, inRange] : {std::pair{1050, true}, {2000, false}, {0, false}}) {
            bench.inCell<QLineEdit>(0, ThroughputColumn::RequiredThroughput)->setText(QString::number(required));
            bench.tick();
            const QImage with = pictureAfterReplot(*bench.plot());
            bench.plot()->item(0)->setVisible(false);
            const QImage without = pictureAfterReplot(*bench.plot());
            const QRect area = bench.area(0)->rect();
            const int y = qRound(bench.area(0)->axis(QCPAxis::atLeft)->coordToPixel(required));
            int drawn = 0;
            for (int x = area.left(); x <= area.right() && inRange; ++x)
                drawn += with.pixel(x, y) != without.pixel(x, y) || with.pixel(x, y - 1) != without.pixel(x, y - 1);
            QVERIFY2(inRange ? drawn > area.width() / 3 && drawn < area.width() * 5 / 6 : with == without,
                     qPrintable(QString::number(drawn)));
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

    void pictureIsWhatTheLayoutSays()
    {
        FormBench bench(3);
        for (int i : {0, 1})
            addFrames(bench.record(i), bench.nowUs - 10 * second, bench.nowUs, second, 2000);
        bench.tick();
        bench.child<QCheckBox>("checkBoxLiveGraph")->click();
        bench.measureButton(2)->click();
        const auto graph = [&bench](int row) { return [&bench, row] { bench.graphBox(row)->click(); }; };
        const Steps steps{{"one off", graph(0)},
                          {"all off and one on", [&] { graph(1)(), graph(2)(), graph(0)(); }},
                          {"refreshed", [&] { bench.press("refreshGraph"); }},
                          {"no data any more", [&] { bench.record(0).clearData(), bench.press("refreshGraph"); }},
                          {"all on while hidden", [&] { bench.form->hide(), graph(1)(), bench.form->show(); }},
                          {"closed", [&] { bench.close(0); }},
                          {"by hand", [&] { bench.inCell<QCheckBox>(0, ThroughputColumn::YAxisScaling)->click(); }}};
        for (const auto& [name, step] : steps) {
            step();
            const QImage shown = bench.plot()->grab().toImage();
            QVERIFY2(shown == pictureAfterReplot(*bench.plot()), name);
        }
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
