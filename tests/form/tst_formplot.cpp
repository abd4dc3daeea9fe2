// SPDX-License-Identifier: GPL-3.0-or-later
// The plots: which curves and marks there are and what they hold, their areas and value axes, replots.
#include "form/EventShapes.h"
#include "form/Tracer.h"
#include "FormBench.h"
#include "RandomRecord.h"
#include "Table.h"

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
