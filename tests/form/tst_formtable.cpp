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
    void settings_data()
    {
        // expected: period, capacity, export type, mode, live
        const Table<QVariantMap, QString> row("stored", "expected");
        const auto all = [](const char* period, const char* live, const char* mode) {
            return QVariantMap{{"DTGTSamplePeriod", period},
                               {"DTGTMaxSamples", "7"},
                               {"DTGTExportType", "2"},
                               {"DTGTMeasMode", mode},
                               {"DTGTLiveGraph", live}};
        };
        row("empty", QVariantMap(), "1024 10000000 1 0 1");
        row("all", all("8192", "0", "1"), "8192 7 2 1 0");
        row("any other number is checked", all("8192", "-3", "1"), "8192 7 2 1 1");
        row("no number counts as 0", all("many", "x", "counters"), "0 7 2 0 0");
    }
    void settings()
    {
        QFETCH(QVariantMap, stored);
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
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            settings.setValue(it.key(), it.value());
        bench.form->measMode = MeasModeStandardAcq; // an absent key puts it back
        bench.form->loadSettings(settings);
        QTEST(inForce(), "expected");
        QCOMPARE(bench.record(0).samplePeriod, bench.form->samplePeriod);
        QCOMPARE(bench.record(0).maxSamples, bench.form->maxSamples);

        settings.clear();
        bench.form->saveSettings(settings);
        bench.loadMode(MeasModeDataThroughput); // and all else as at first
        bench.form->loadSettings(settings);
        QTEST(inForce(), "expected");
    }

    void rowsFollowTheOpenedCameras_data()
    {
        const Table<int, int> row("mode", "cameras");
        row("throughput, none", MeasModeDataThroughput, 0);
        row("throughput, four", MeasModeDataThroughput, 4);
        row("counters, four", MeasModeStandardAcq, 4);
    }
    void rowsFollowTheOpenedCameras()
    {
        QFETCH(int, mode);
        QFETCH(int, cameras);
        FormBench bench(0, mode);
        for (int i = 0; i < cameras; ++i) // opened after the form has been made
            bench.addCamera(
                [i](sim::CameraScenario& s) { s.customId = i == 1 ? QStringLiteral("left") : QString(); });
        bench.form->resize(690, 396); // the first size: every button can be pressed
        const QStringList names{"A (1)", "B (left)", "C (3)", "D (4)"};
        QCOMPARE(bench.columnTexts(cameraColumn), QStringList(names.mid(0, cameras)));
        QCOMPARE(bench.areas().size(), cameras);
        QCOMPARE(bench.child("btnStartAll")->isEnabled(), cameras > 0);
        QCOMPARE(bench.form->lineDataMap.size(), cameras);
        for (int row = 0; row < cameras; ++row)
            QVERIFY(bench.table()->viewport()->rect().contains(bench.measureButton(row)->geometry()));
    }

    void figures_data()
    {
        // expected: average, minimum, level, buffer in kB
        const Table<double, double, int, QString> row("throughput", "level", "bufferBytes", "expected");
        row("truncated", 812.97, 99.99, 32768, "812 812 99 % 32");
        row("small", 0.9, 0.0, 999, "0 0 0 % 0");
        row("no frame in range", DBL_MAX, 0.0, 1000, "- - 0 % 1");
        row("infinite", double(INFINITY), double(NAN), 1000, "- - - 1");
        row("largest", 2147483647.9, -0.5, 1000, "2147483647 2147483647 0 % 1");
        row("too large", 2147483648.0, 1e99, 1000, "- - - 1");
    }
    void figures()
    {
        QFETCH(double, throughput);
        QFETCH(double, level);
        QFETCH(int, bufferBytes);
        FormBench bench;
        bench.addCamera([=](sim::CameraScenario& s) { s.bufferBytes = quint32(bufferBytes); });
        auto& record = bench.record(0);
        record.avgThroughput = record.minThroughput = throughput;
        record.maxBufferLevel = level;
        record.bufferOverflowCount = 18446744073709551615u;
        bench.form->updateCameraListRow(bench.handle(0));
        QCOMPARE(bench.cell(0, BufferOverflowCount), QStringLiteral("18446744073709551615"));
        QTEST((QStringList{bench.cell(0, AvgThroughput), bench.cell(0, MinThroughput), bench.cell(0, MaxBufferLevel),
                           bench.cell(0, CameraBufferSize)}
                   .join(QLatin1Char(' '))),
              "expected");
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
            shown.append(item->text() + QLatin1Char(' ') + item->foreground().color().name());
            QCOMPARE(item->flags(), Qt::NoItemFlags);
        }
        const QStringList expected{"12 #ffffff", "10 #ffffff", "11 #ffffff",
                                   "- #808080",  "14 #ffffff", "4294967295 #ffffff"};
        QCOMPARE(shown, expected);
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

    void rebuildKeepsRecordsAndMeasurements()
    {
        FormBench bench(1);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        QTest::mouseClick(bench.graphBox(0), Qt::LeftButton);
        QVERIFY(bench.child("plot")->isHidden());
        const quint64 serial = bench.record(0).serial;

        bench.addCamera();
        QCOMPARE(bench.record(0).serial, serial);
        QVERIFY(bench.record(0).isMeasuring());
        QCOMPARE(bench.columnTexts(statusColumn), (QStringList{"Testing", "Stopped"}));
        QCOMPARE(bench.measureButton(0)->text(), QStringLiteral("Stop"));
        QVERIFY(!bench.exportButton(0)->isEnabled());
        QVERIFY(bench.exportButton(1)->isEnabled());
        QVERIFY(!bench.child("btnSetup")->isEnabled());
        QVERIFY(bench.graphBox(0)->isChecked()); // and so the plot is back
        QVERIFY(bench.child("plot")->isVisible());
    }

    void closedCamera()
    {
        FormBench bench(3);
        bench.area(0)->axis(QCPAxis::atBottom)->setRange(-8, -2);
        bench.area(2)->axis(QCPAxis::atLeft)->setRange(10, 20);
        bench.tick();
        QTest::mouseClick(bench.measureButton(1), Qt::LeftButton);
        const auto* keptButton = bench.measureButton(2);

        bench.close(1);
        QCOMPARE(bench.columnTexts(cameraColumn), (QStringList{"A (1)", "C (3)"}));
        QCOMPARE(bench.areas(), (QStringList{"A (1):-8..-2", "C (3):-8..-2"}));
        QCOMPARE(rangeText(bench.area(1)->axis(QCPAxis::atLeft)), QStringLiteral("10..20"));
        QCOMPARE(bench.plot()->graphCount(), 4);
        QVERIFY(bench.child("btnSetup")->isEnabled());
        QCOMPARE(static_cast<const QToolButton*>(bench.measureButton(1)), keptButton);
        CameraRegistry::instance().closeAll();
        QVERIFY(!bench.child("btnStartAll")->isEnabled());
    }

    void hostAcquisition()
    {
        FormBench bench(1);
        CameraRegistry::instance().startHostAcquisition(bench.handle(0));
        QCOMPARE(bench.status(0), QStringLiteral("Acq"));
        QVERIFY(!bench.measureButton(0)->isEnabled());
        CameraRegistry::instance().stopHostAcquisition(bench.handle(0));
        QCOMPARE(bench.status(0), QStringLiteral("Stopped"));
        QVERIFY(bench.measureButton(0)->isEnabled());
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
        FormBench bench(2);
        bench.form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(bench.form.get()));
        bench.child("btnSetup")->setFocus();
        QSet<QWidget*> reached;
        for (auto* at = bench.child("btnSetup"); at && !reached.contains(at); at = QApplication::focusWidget()) {
            reached.insert(at);
            QTest::keyClick(at, Qt::Key_Tab);
        }
        for (auto* button : bench.form->findChildren<QAbstractButton*>())
            QVERIFY2(reached.contains(button) || !(button->focusPolicy() & Qt::TabFocus), qPrintable(button->text()));
    }
};

QTEST_MAIN(FormTableTest)
#include "tst_formtable.moc"
