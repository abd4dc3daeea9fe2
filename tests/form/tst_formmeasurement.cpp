// SPDX-License-Identifier: GPL-3.0-or-later
// Starting and stopping by the real buttons: texts, what the host is told, roll-back.
#include "DialogRobot.h"
#include "FormBench.h"
#include "Table.h"

class FormMeasurementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clicks()
    {
        // clicks: numbers of rows, + for all; looks: after each; host: what it is told
        const Rows<int, int, int, QString, QStringList, QString> rows{
            {MeasModeDataThroughput,
             2,
             -1,
             "00",
             {"Testing Stop|Stopped Start export|Start All",
              "Stopped Start export|Stopped Start export|Start All setup"},
             "1- 1+"},
            {MeasModeStandardAcq,
             2,
             -1,
             "1+0+", // running ones are left alone
             {"Stopped Start|Testing Stop|Start All", "Testing Stop|Testing Stop|Stop All",
              "Stopped Start|Testing Stop|Stop All", // the text follows only its own clicks
              "Stopped Start|Stopped Start|Start All setup"},
             "2- 1- 1+ 2+"},
            {MeasModeDataThroughput, 1, 0, "0", {"Stopped Start export|Start All setup"}, ""},
            {MeasModeDataThroughput,
             3,
             1,
             "0+", // all are rolled back
             {"Testing Stop|Stopped Start export|Stopped Start export|Start All",
              "Stopped Start export|Stopped Start export|Stopped Start export|Start All setup"},
             "1- 3- 1+ 3+"}};
        for (const auto& [mode, cameras, failing, clicks, expected, toldHost] : rows) {
            FormBench bench(cameras, mode);
            QStringList told, looks;
            if (failing >= 0) {
                bench.failStarts(failing);
                told.append("Failed to start measurement|Camera " + bench.cell(failing, cameraColumn) +
                            " does not support \n data throughput analysis in Kestrova.");
            }
            DialogRobot robot;
            robot.inside = [&, one = clicks == "0"](QDialog* dialog) { // its progress box does not stay behind this
                for (auto* box : bench.form->findChildren<QMessageBox*>())
                    QVERIFY(!one || !box->isVisible() || box == dialog);
            };
            for (const QChar click : clicks) {
                if (click == QLatin1Char('+'))
                    bench.press("btnStartAll");
                else
                    QTest::mouseClick(bench.measureButton(click.digitValue()), Qt::LeftButton);
                looks.append(bench.look());
            }
            QCOMPARE(looks, expected);
            QCOMPARE(bench.hostControl(), toldHost);
            QCOMPARE(robot.seen, told);
        }
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

    void endedByItself()
    {
        // with no frame in view, not live, not plotted, counters that are not live
        for (const auto& [mode, live, plotted] : Rows<int, bool, bool>{{MeasModeDataThroughput, true, true},
                                                                       {MeasModeDataThroughput, false, true},
                                                                       {MeasModeDataThroughput, true, false},
                                                                       {MeasModeStandardAcq, false, true}}) {
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
