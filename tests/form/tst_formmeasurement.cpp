// SPDX-License-Identifier: GPL-3.0-or-later
// Starting and stopping by the real buttons: texts, what the host is told, roll-back.
#include "DialogRobot.h"
#include "FormBench.h"
#include "Table.h"

class FormMeasurementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicks_data()
    {
        // clicks: numbers of rows, + for all; looks: after each; host: what it is told
        const Table<int, int, int, QString, QStringList, QString> row("mode", "cameras", "failing", "clicks", "looks",
                                                                      "host");
        row("one of two", MeasModeDataThroughput, 2, -1, "00",
            {"Testing Stop|Stopped Start export|Start All",
             "Stopped Start export|Stopped Start export|Start All setup"},
            "1- 1+");
        row("running ones are left alone", MeasModeStandardAcq, 2, -1, "1+0+",
            {"Stopped Start|Testing Stop|Start All", "Testing Stop|Testing Stop|Stop All",
             "Stopped Start|Testing Stop|Stop All", // the text follows only its own clicks
             "Stopped Start|Stopped Start|Start All setup"},
            "2- 1- 1+ 2+");
        row("fails", MeasModeDataThroughput, 1, 0, "0", {"Stopped Start export|Start All setup"}, "");
        row("all are rolled back", MeasModeDataThroughput, 3, 1, "0+",
            {"Testing Stop|Stopped Start export|Stopped Start export|Start All",
             "Stopped Start export|Stopped Start export|Stopped Start export|Start All setup"},
            "1- 3- 1+ 3+");
    }
    void clicks()
    {
        QFETCH(int, mode);
        QFETCH(int, cameras);
        QFETCH(int, failing);
        QFETCH(QString, clicks);
        FormBench bench(cameras, mode);
        QStringList told, looks;
        if (failing >= 0) {
            bench.failStarts(failing);
            told.append("Failed to start measurement|Camera " + bench.cell(failing, cameraColumn) +
                        " does not support \n data throughput analysis in Kestrova.");
        }
        DialogRobot robot;
        robot.inside = [&](QDialog* dialog) { // the progress box of a row's button does not stay behind the dialog
            for (auto* box : bench.form->findChildren<QMessageBox*>())
                QVERIFY(clicks != QStringLiteral("0") || !box->isVisible() || box == dialog);
        };
        for (const QChar click : clicks) {
            if (click == QLatin1Char('+'))
                bench.press("btnStartAll");
            else
                QTest::mouseClick(bench.measureButton(click.digitValue()), Qt::LeftButton);
            looks.append(bench.look());
        }
        QTEST(looks, "looks");
        QTEST(bench.hostControl(), "host");
        QCOMPARE(robot.seen, told);
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
        QFETCH(bool, live);
        QFETCH(bool, plotted);
        FormBench bench(1, mode);
        bench.child<QAbstractButton>("checkBoxLiveGraph")->setChecked(live);
        bench.graphBox(0)->setChecked(plotted);
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton);
        bench.record(0).stopMeasurement();
        bench.tick();
        const QString exports = mode == MeasModeDataThroughput ? QStringLiteral(" export") : QString();
        QCOMPARE(bench.look(), QStringLiteral("Stopped Stop%1|Start All setup").arg(exports));
        QTest::mouseClick(bench.measureButton(0), Qt::LeftButton); // the state counts, not the text
        QCOMPARE(bench.look(), QStringLiteral("Testing Stop|Start All"));
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
};

QTEST_MAIN(FormMeasurementTest)
#include "tst_formmeasurement.moc"
