// SPDX-License-Identifier: GPL-3.0-or-later
// The editors of a row, worked by keystrokes: data format, required throughput, range of the value axis.
#include <vnCore/vnApi.h>

#include "FormBench.h"
#include "Table.h"

using ThroughputColumn::RequiredThroughput;
using ThroughputColumn::YAxisScaling;

/// Formats with the values 1, 7, 0 in this order; more than the cameras' default list would show.
static void oddFormats(sim::CameraScenario& scenario)
{
    scenario.formats = {VN_FRM_MONO16, VN_FRM_TRANSPORT_DATA, VN_FRM_MONO8};
}

class FormEditorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatIsFoundByItsValue_data()
    {
        const Table<int, bool, int> row("value", "readable", "entry");
        row("0 is the last entry", 0, true, 2);
        row("7 is the second entry", 7, true, 1);
        row("an unreadable value counts as 0", 7, false, 2);
    }
    void formatIsFoundByItsValue()
    {
        QFETCH(int, value);
        QFETCH(bool, readable);
        FormBench bench(0, MeasModeStandardAcq);
        bench.addCamera(oddFormats);
        bench.cameras[0]->setInt(VN_PRM_IMAGE_DATA_FORMAT, value);
        if (!readable)
            bench.failReads(0);
        bench.form->updateCameraList();
        const auto* formats = qobject_cast<QComboBox*>(bench.table()->cellWidget(0, StandardColumn::DataFormat));
        QCOMPARE(formats->count(), 3);
        QTEST(formats->currentIndex(), "entry");
        QCOMPARE(bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), value); // building writes nothing
    }

    void formatFollowsBothWays()
    {
        FormBench bench(0, MeasModeStandardAcq);
        bench.addCamera(oddFormats);
        auto* formats = qobject_cast<QComboBox*>(bench.table()->cellWidget(0, StandardColumn::DataFormat));
        QTest::keyClick(formats, Qt::Key_End);
        QCOMPARE(bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), int(VN_FRM_MONO8));
        QTest::keyClick(formats, Qt::Key_Home);
        QCOMPARE(bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), int(VN_FRM_MONO16));
        vnApi_SetParamInt(bench.handle(0), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA, nullptr);
        QTRY_COMPARE(formats->currentIndex(), 1);

        bench.loadMode(MeasModeDataThroughput); // column 2 holds the Measure button then
        vnApi_SetParamInt(bench.handle(0), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO8, nullptr);
        QCoreApplication::processEvents();
        QCOMPARE(bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), int(VN_FRM_MONO8));
    }

    void typedThroughput_data()
    {
        // In the keys, < is the backspace key.
        const Table<QString, QString> row("keys", "values");
        row("every keystroke counts", "250", "2 25 250");
        row("empty counts as 0", "7<", "7 0");
        row("only whole numbers", "1x-.2", "1 1 1 1 12");
        row("up to 10000", "100009", "1 10 100 1000 10000 10000");
    }
    void typedThroughput()
    {
        QFETCH(QString, keys);
        FormBench bench(1);
        bench.inCell<QCheckBox>(0, RequiredThroughput)->click();
        QVERIFY(!bench.record(0).autoRequiredThroughput);
        auto* edit = bench.inCell<QLineEdit>(0, RequiredThroughput);
        QVERIFY(edit->isEnabled());
        edit->clear();
        QStringList values;
        for (const QChar key : keys) {
            if (key == QLatin1Char('<'))
                QTest::keyClick(edit, Qt::Key_Backspace);
            else
                QTest::keyClick(edit, key.toLatin1());
            values.append(QString::number(bench.record(0).requiredThroughput));
        }
        QTEST(values.join(QLatin1Char(' ')), "values");
    }

    void automaticThroughput_data()
    {
        // 0: the camera has no such register
        const Table<int, int> row("reported", "expected");
        row("as the camera reports", 380, 380);
        row("a camera that reports none keeps it", 0, 44);
    }
    void automaticThroughput()
    {
        QFETCH(int, reported);
        FormBench bench;
        bench.addCamera([reported](sim::CameraScenario& s) {
            s.transportSpeed = reported ? std::optional<int>(reported) : std::nullopt;
        });
        auto* automatic = bench.inCell<QCheckBox>(0, RequiredThroughput);
        auto* edit = bench.inCell<QLineEdit>(0, RequiredThroughput);
        QVERIFY(automatic->isChecked() && !edit->isEnabled());
        automatic->click();
        edit->setText(QStringLiteral("44"));
        automatic->click();
        QTEST(int(bench.record(0).requiredThroughput), "expected");
        QCOMPARE(edit->text().toInt(), int(bench.record(0).requiredThroughput));
        QVERIFY(!edit->isEnabled());
    }

    void valueAxisByHand()
    {
        FormBench bench(2);
        auto* automatic = bench.inCell<QCheckBox>(1, YAxisScaling);
        auto* minimum = bench.inCell<QLineEdit>(1, YAxisScaling, 0);
        auto* maximum = bench.inCell<QLineEdit>(1, YAxisScaling, 1);
        const auto range = [&bench](int area) { return rangeText(bench.area(area)->axis(QCPAxis::atLeft)); };
        QVERIFY(automatic->isChecked() && !minimum->isEnabled() && !maximum->isEnabled());
        automatic->click();
        QVERIFY(minimum->isEnabled() && maximum->isEnabled());
        maximum->selectAll();
        QTest::keyClicks(maximum, QStringLiteral("500"));
        QCOMPARE(range(1), QStringLiteral("0..500"));
        minimum->selectAll();
        QTest::keyClicks(minimum, QStringLiteral("90"));
        QCOMPARE(range(1), QStringLiteral("90..500"));
        maximum->selectAll();
        QTest::keyClicks(maximum, QStringLiteral("4,50")); // below the minimum at first
        QCOMPARE(range(1), QStringLiteral("90..450"));
        bench.graphBox(0)->click(); // builds the areas anew
        bench.graphBox(0)->click();
        QCOMPARE(range(1), QStringLiteral("90..450"));
        minimum->clear();
        QCOMPARE(range(1), QStringLiteral("0..450"));
        QCOMPARE(range(0), QStringLiteral("0..1000"));
        bench.tick();
        QCOMPARE(range(1), QStringLiteral("0..450"));
    }

    void rebuildResetsScalingOnly()
    {
        FormBench bench(1);
        bench.inCell<QCheckBox>(0, RequiredThroughput)->click();
        bench.inCell<QLineEdit>(0, RequiredThroughput)->setText(QStringLiteral("123"));
        bench.inCell<QCheckBox>(0, YAxisScaling)->click();
        bench.addCamera();
        QVERIFY(!bench.inCell<QCheckBox>(0, RequiredThroughput)->isChecked());
        QVERIFY(bench.inCell<QLineEdit>(0, RequiredThroughput)->isEnabled());
        QCOMPARE(bench.inCell<QLineEdit>(0, RequiredThroughput)->text(), QStringLiteral("123"));
        QVERIFY(bench.inCell<QCheckBox>(0, YAxisScaling)->isChecked());
        QVERIFY(!bench.inCell<QLineEdit>(0, YAxisScaling)->isEnabled());
    }
};

QTEST_MAIN(FormEditorsTest)
#include "tst_formeditors.moc"
