// SPDX-License-Identifier: GPL-3.0-or-later
// Starting and stopping by the real buttons: texts, what the host is told, roll-back.
#include "DialogRobot.h"
#include "FormBench.h"
#include "Table.h"

static QString failedText(const char* camera)
{
    return QStringLiteral(
               "Failed to start measurement|Camera %1 does not support \n data throughput analysis in Kestrova.")
        .arg(QLatin1String(camera));
}

class FormMeasurementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneCamera_data()
    {
        const Table<int> row("mode");
        row("throughput", MeasModeDataThroughput);
        row("counters", MeasModeStandardAcq);
    }
    void oneCamera()
    {
        QFETCH(int, mode);
        FormBench bench(2, mode);
        const auto before = bench.cameras[0]->parameters();
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        QCOMPARE(bench.columnTexts(statusColumn), (QStringList{"Testing", "Stopped"}));
        QCOMPARE(buttons(bench), (QStringList{"Stop", "Start"}));
        QCOMPARE(bench.hostControl(), QStringLiteral("1-"));
        QVERIFY(!bench.child("btnSetup")->isEnabled());
        QVERIFY(bench.cameras[0]->isAcquiring());
        if (mode == MeasModeDataThroughput)
            QVERIFY(!bench.exportButton(0)->isEnabled() && bench.exportButton(1)->isEnabled());

        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        QCOMPARE(bench.columnTexts(statusColumn), (QStringList{"Stopped", "Stopped"}));
        QCOMPARE(buttons(bench), (QStringList{"Start", "Start"}));
        QCOMPARE(bench.hostControl(), QStringLiteral("1- 1+"));
        QVERIFY(bench.child("btnSetup")->isEnabled());
        QCOMPARE(bench.cameras[0]->parameters(), before);
        if (mode == MeasModeDataThroughput)
            QVERIFY(bench.exportButton(0)->isEnabled());
    }

    void failedStart()
    {
        FormBench bench(1);
        bench.failStarts(0);
        DialogRobot robot;
        robot.inside = [&](QDialog* dialog) {
            for (auto* box : bench.form->findChildren<QMessageBox*>())
                QVERIFY(!box->isVisible() || box == dialog); // the progress box does not stay behind the dialog
        };
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        QCOMPARE(robot.seen, QStringList{failedText("A (1)")});
        QCOMPARE(bench.status(0), QStringLiteral("Stopped"));
        QCOMPARE(buttons(bench), QStringList{"Start"});
        QCOMPARE(bench.hostControl(), QString());
        QVERIFY(bench.child("btnSetup")->isEnabled());
    }

    void startAllRollsBack()
    {
        FormBench bench(3);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton); // measures before the click
        bench.failStarts(1);
        DialogRobot robot;
        bench.press("btnStartAll");
        QCOMPARE(robot.seen, QStringList{failedText("B (2)")});
        QCOMPARE(bench.hostControl(), QStringLiteral("1- 3- 1+ 3+"));
        QCOMPARE(bench.columnTexts(statusColumn), (QStringList{"Stopped", "Stopped", "Stopped"}));
        QCOMPARE(buttons(bench), (QStringList{"Start", "Start", "Start"}));
        QCOMPARE(startAllText(bench), QStringLiteral("Start All"));
        QVERIFY(bench.exportButton(2)->isEnabled());
        QVERIFY(bench.child("btnSetup")->isEnabled());
    }

    void startAllLeavesRunningOnesAlone()
    {
        FormBench bench(2, MeasModeStandardAcq);
        QTest::mouseClick(bench.measureButton(1), Qt::LeftButton);
        bench.press("btnStartAll");
        QCOMPARE(bench.hostControl(), QStringLiteral("2- 1-"));
        QCOMPARE(buttons(bench), (QStringList{"Stop", "Stop"}));
        QCOMPARE(startAllText(bench), QStringLiteral("Stop All"));

        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton); // its text follows only its own clicks
        QCOMPARE(startAllText(bench), QStringLiteral("Stop All"));
        bench.press("btnStartAll");
        QCOMPARE(bench.hostControl(), QStringLiteral("2- 1- 1+ 2+"));
        QCOMPARE(bench.columnTexts(statusColumn), (QStringList{"Stopped", "Stopped"}));
        QCOMPARE(startAllText(bench), QStringLiteral("Start All"));
    }

    void allLoopsEndTogether()
    {
        FormBench bench(2);
        bench.press("btnStartAll");
        std::atomic<bool> announced{false};
        bench.cameras[0]->setHook([&, gate = bench.gates[0]](const sim::HostCall& call) {
            if (call.kind == sim::Call::Stop)
                announced = bench.record(1).stopAnnounced.load();
            return gate->pass(call.kind);
        });
        bench.press("btnStartAll");
        bench.cameras[0]->setHook({});
        QVERIFY(announced);
    }

    void formGoesInTheDialog()
    {
        FormBench bench(3);
        bench.failStarts(1);
        DialogRobot robot;
        robot.inside = [&](QDialog*) { bench.form.reset(); };
        QMetaObject::invokeMethod(bench.form.get(), "on_btnStartAll_clicked");
        QVERIFY(!bench.form);
        QVERIFY(!bench.cameras[0]->isAcquiring());
    }

    void endedByItself_data()
    {
        const Table<int, bool, bool> row("mode", "live", "plotted");
        row("no frame in view", MeasModeDataThroughput, true, true);
        row("not live", MeasModeDataThroughput, false, true);
        row("not plotted", MeasModeDataThroughput, true, false);
        row("counters, not live", MeasModeStandardAcq, false, true);
    }
    void endedByItself()
    {
        QFETCH(int, mode);
        FormBench bench(1, mode);
        QFETCH(bool, live);
        QFETCH(bool, plotted);
        bench.child<QAbstractButton>("checkBoxLiveGraph")->setChecked(live);
        bench.graphBox(0)->setChecked(plotted);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        bench.record(0).stopMeasurement();
        bench.tick();
        QCOMPARE(bench.status(0), QStringLiteral("Stopped"));
        QVERIFY(bench.child("btnSetup")->isEnabled());
        QVERIFY(mode != MeasModeDataThroughput || bench.exportButton(0)->isEnabled());
        QCOMPARE(bench.measureButton(0)->text(), QStringLiteral("Stop"));
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton); // the state counts, not the text
        QCOMPARE(bench.status(0), QStringLiteral("Testing"));
    }

    void requiredThroughput()
    {
        FormBench bench(2);
        bench.inCell<QCheckBox>(1, ThroughputColumn::RequiredThroughput)->click();
        bench.inCell<QLineEdit>(1, ThroughputColumn::RequiredThroughput)->setText(QStringLiteral("250"));
        for (const auto& camera : bench.cameras)
            camera->setParameter(QStringLiteral("device_unit_register_value[8/4096]"), 222);
        bench.press("btnStartAll");
        for (const auto& [row, expected] :
             {std::pair{0, 222}, {1, 250}}) { // automatic: as it says now; manual: as typed
            QCOMPARE(int(bench.record(row).requiredThroughput), expected);
            QCOMPARE(bench.inCell<QLineEdit>(row, ThroughputColumn::RequiredThroughput)->text().toInt(), expected);
        }
    }

private:
    static QString startAllText(const FormBench& bench) { return bench.child<QPushButton>("btnStartAll")->text(); }
    static QStringList buttons(const FormBench& bench)
    {
        QStringList texts;
        for (int row = 0; row < bench.table()->rowCount(); ++row)
            texts.append(bench.measureButton(row)->text());
        return texts;
    }
};

QTEST_MAIN(FormMeasurementTest)
#include "tst_formmeasurement.moc"
