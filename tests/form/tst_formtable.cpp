// SPDX-License-Identifier: GPL-3.0-or-later
// The form as a whole, its settings, and the camera table: rows, captions, heights, figures, counters, rebuilds.
#include <cfloat>
#include <cmath>

#include <vnCoreGui/CxExportToolButton.h>

#include "FormBench.h"
#include "Table.h"

using namespace ThroughputColumn;

class FormTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settings()
    {
        const auto stored = [](const char* period, const char* live, const char* mode) {
            return QVariantMap{{"DTGTSamplePeriod", period},
                               {"DTGTMaxSamples", "7"},
                               {"DTGTExportType", "2"},
                               {"DTGTMeasMode", mode},
                               {"DTGTLiveGraph", live}};
        };
        // expected: period, capacity, export type, mode, live
        const Rows<QVariantMap, QString> rows{{QVariantMap(), "1024 10000000 1 0 1"},
                                              {stored("8192", "0", "1"), "8192 7 2 1 0"},
                                              {stored("8192", "-3", "1"), "8192 7 2 1 1"},     // any other is checked
                                              {stored("many", "x", "counters"), "0 7 2 0 0"}}; // no number is 0
        for (const auto& [map, expected] : rows) {
            FormBench bench(1);
            const auto inForce = [&bench] {
                return QStringLiteral("%1 %2 %3 %4 %5")
                    .arg(bench.form->samplePeriod)
                    .arg(bench.form->maxSamples)
                    .arg(bench.child<CxExportToolButton>("btnExport")->exportType())
                    .arg(bench.form->measMode)
                    .arg(int(bench.child<QCheckBox>("checkBoxLiveGraph")->isChecked()));
            };
            const QTemporaryDir dir;
            QSettings settings(dir.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
            for (auto it = map.cbegin(); it != map.cend(); ++it)
                settings.setValue(it.key(), it.value());
            bench.form->measMode = MeasModeStandardAcq; // an absent key puts it back
            bench.form->loadSettings(settings);
            QCOMPARE(inForce(), expected);
            QCOMPARE(bench.record(0).samplePeriod, bench.form->samplePeriod);
            QCOMPARE(bench.record(0).maxSamples, bench.form->maxSamples);

            settings.clear();
            bench.form->saveSettings(settings);
            bench.loadMode(MeasModeDataThroughput); // and all else as at first
            bench.form->loadSettings(settings);
            QCOMPARE(inForce(), expected);
        }
    }

    void firstSizeShowsEveryButton()
    {
        for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            FormBench bench(1, mode);
            bench.addCamera([](sim::CameraScenario& scenario) { scenario.customId = QStringLiteral("left"); });
            bench.addCamera();
            bench.addCamera();
            bench.form->resize(690, 396);
            QCOMPARE(bench.columnTexts(cameraColumn), (QStringList{"A (1)", "B (left)", "C (3)", "D (4)"}));
            for (int row = 0; row < 4; ++row)
                QVERIFY(bench.table()->viewport()->rect().contains(bench.measureButton(row)->geometry()));
        }
    }

    void figures()
    {
        const Rows<double, double, int, QString> rows{
            {812.97, 99.99, 32768, "812 812 99 % 18446744073709551615 32"},
            {0.9, 0.0, 999, "0 0 0 % 18446744073709551615 0"},
            {DBL_MAX, 0.0, 1000, "- - 0 % 18446744073709551615 1"}, // no frame in range
            {double(INFINITY), double(NAN), 1000, "- - - 18446744073709551615 1"},
            {2147483647.9, -0.5, 1000, "2147483647 2147483647 0 % 18446744073709551615 1"},
            {2147483648.0, 1e99, 1000, "- - - 18446744073709551615 1"}};
        for (const auto& [throughput, level, bufferBytes, expected] : rows) {
            FormBench bench;
            bench.addCamera([bytes = bufferBytes](sim::CameraScenario& s) { s.bufferBytes = quint32(bytes); });
            auto& record = bench.record(0);
            record.avgThroughput = record.minThroughput = throughput;
            record.maxBufferLevel = level;
            record.bufferOverflowCount = 18446744073709551615u;
            bench.form->updateCameraListRow(bench.handle(0));
            QStringList shown;
            for (const int column :
                 {AvgThroughput, MinThroughput, MaxBufferLevel, BufferOverflowCount, CameraBufferSize})
                shown.append(bench.cell(0, column));
            QCOMPARE(shown.join(QLatin1Char(' ')), expected);
        }
    }

    void counters()
    {
        FormBench bench(1, MeasModeStandardAcq);
        for (const auto& kind : bench.record(0).counterList) {
            kind->supported = kind->selector != VN_COUNTER_MISSED_TRG_OVERLAP;
            kind->value = 10 + kind->selector;
        }
        bench.record(0).counterList[VN_COUNTER_BUFFER_OVERFLOW]->value = -1;
        bench.form->updateCameraListRow(bench.handle(0));

        QStringList shown;
        for (int column = StandardColumn::Transferred; column <= StandardColumn::BufferOverflow; ++column) {
            const auto* item = bench.table()->item(0, column);
            const QString caption = bench.captions().at(column);
            shown.append(caption + ' ' + item->text() + ' ' + item->foreground().color().name());
            QCOMPARE(item->flags(), Qt::NoItemFlags);
            QCOMPARE(QString(bench.record(0).counterList[StandardColumn::counterOf(column)]->name), caption);
        }
        const QStringList expected{
            "Transferred 12 #ffffff",        "Transport skip 10 #ffffff",      "API skip 11 #ffffff",
            "Missed trg. overlap - #808080", "Missed trg overflow 14 #ffffff", "Buffer overflow 4294967295 #ffffff"};
        QCOMPARE(shown, expected);
        const auto* curves = bench.child<QTableWidget>("tablePlotCheck")->model();
        QCOMPARE(columnTexts(*curves, 1), bench.captions().mid(StandardColumn::TransportSkip, 5));
    }

    void captionsKeepTheirUnits()
    {
        FormBench bench;
        const QStringList expected = bench.captions();
        QCOMPARE(expected.at(AvgThroughput), QStringLiteral("Average\nthroughput [MB/s]"));
        bench.addCamera();
        QCOMPARE(bench.captions(), expected);
        bench.loadMode(MeasModeStandardAcq);
        QCOMPARE(bench.captions().at(StandardColumn::DataFormat), QStringLiteral("Data Format"));
        bench.loadMode(MeasModeDataThroughput);
        QCOMPARE(bench.captions(), expected);
    }

    /// A camera that opens keeps the records and what they measure, resets what belongs to the rows; one that closes
    /// leaves all others alone.
    void camerasOpenAndClose()
    {
        FormBench bench(1);
        bench.form->resize(690, 600); // room for three areas
        bench.measureButton(0)->click();
        bench.graphBox(0)->click();
        bench.inCell<QCheckBox>(0, RequiredThroughput)->click();
        bench.inCell<QLineEdit>(0, RequiredThroughput)->setText(QStringLiteral("123"));
        bench.inCell<QCheckBox>(0, YAxisScaling)->click();
        const quint64 serial = bench.record(0).serial;

        bench.addCamera();
        bench.addCamera();
        QCOMPARE(bench.record(0).serial, serial);
        QCOMPARE(bench.look(), QStringLiteral("Testing Stop|Stopped Start export|Stopped Start export|Start All"));
        QVERIFY(bench.graphBox(0)->isChecked());
        QVERIFY(!bench.inCell<QCheckBox>(0, RequiredThroughput)->isChecked());
        QVERIFY(bench.inCell<QLineEdit>(0, RequiredThroughput)->isEnabled());
        QCOMPARE(bench.inCell<QLineEdit>(0, RequiredThroughput)->text(), QStringLiteral("123"));
        QVERIFY(bench.inCell<QCheckBox>(0, YAxisScaling)->isChecked());
        QVERIFY(!bench.inCell<QLineEdit>(0, YAxisScaling)->isEnabled());

        bench.area(0)->axis(QCPAxis::atBottom)->setRange(-8, -2);
        bench.area(2)->axis(QCPAxis::atLeft)->setRange(10, 20);
        bench.tick();
        const auto* keptButton = bench.measureButton(2);
        bench.close(0);
        QCOMPARE(bench.areas(), (QStringList{"B (2):-8..-2", "C (3):-8..-2"}));
        QCOMPARE(rangeText(bench.area(1)->axis(QCPAxis::atLeft)), QStringLiteral("10..20"));
        QCOMPARE(bench.plot()->graphCount(), 4);
        QCOMPARE(bench.look(), QStringLiteral("Stopped Start export|Stopped Start export|Start All setup"));
        QCOMPARE(static_cast<const QToolButton*>(bench.measureButton(1)), keptButton);
    }

    void unknownMode()
    {
        FormBench bench(1);
        CriticalLines lines;
        bench.loadMode(7);
        QCOMPARE(bench.cell(0, cameraColumn), QStringLiteral("none"));
        bench.tick();
        bench.invoke("updateGraph");
        bench.form->updateCameraListRow(bench.handle(0));
        QStringList places;
        for (const QString& text : lines.texts())
            places.append(text.section(QLatin1String("()"), 0, 0).section(QLatin1Char(':'), -1));
        QCOMPARE(places, (QStringList{"updateCameraList", "timerSignal", "updateGraph", "updateCameraListRow"}));
        bench.loadMode(MeasModeStandardAcq);
        QCOMPARE(bench.status(0), QStringLiteral("Stopped"));
    }

    void rebuildsLeaveNothingBehind()
    {
        FormBench bench(2);
        const auto objects = [&bench] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // validators go after their boxes
            return bench.form->findChildren<QObject*>().size();
        };
        const auto before = objects();
        for (int i = 0; i < 20; ++i) {
            bench.measureButton(0)->click(); // starts or stops, behind a box
            bench.form->updateCameraList();
        }
        QCOMPARE(objects(), before);
        QCOMPARE(bench.form->plotCheckBoxes.size(), 2);
    }

    void everyControlIsReachedByTab()
    {
        for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
            FormBench bench(9, mode);
            bench.form->resize(690, 400); // not all rows and columns are in view
            bench.form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(bench.form.get()));
            bench.child("btnSetup")->setFocus();
            QSet<QWidget*> reached;
            for (auto* at = bench.child("btnSetup"); at && !reached.contains(at); at = QApplication::focusWidget()) {
                reached.insert(at);
                const auto* cells = bench.table()->viewport();
                QVERIFY2(!cells->isAncestorOf(at) ||
                             cells->rect().contains(at->mapTo(bench.table()->viewport(), at->rect().center())),
                         at->metaObject()->className());
                QTest::keyClick(at, Qt::Key_Tab);
            }
            for (auto* widget : bench.form->findChildren<QWidget*>())
                QVERIFY2(reached.contains(widget) || !(widget->focusPolicy() & Qt::TabFocus) ||
                             !widget->isEnabled() || !widget->isVisible(),
                         widget->metaObject()->className());
        }
    }

    void headingSwitchesAllGraphs()
    {
        FormBench bench(2);
        bench.graphBox(0)->click();
        auto* heading = bench.table()->horizontalHeader();
        const auto choose = [&](const char* text) {
            QTimer::singleShot(0, qApp, [text] {
                auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                for (QAction* action : menu->actions()) {
                    if (action->text() == QLatin1String(text))
                        action->trigger();
                }
                menu->close();
            });
            QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(5, 5), heading->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(heading->viewport(), &menu);
            return QStringLiteral("%1 %2 %3")
                .arg(bench.graphBox(0)->isChecked())
                .arg(bench.graphBox(1)->isChecked())
                .arg(bench.plot()->axisRectCount());
        };
        QCOMPARE(choose("Show all graphs"), QString("1 1 2"));
        QCOMPARE(choose("Hide all graphs"), QString("0 0 0"));
    }
};

QTEST_MAIN(FormTableTest)
#include "tst_formtable.moc"
