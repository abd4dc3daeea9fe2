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

static QComboBox* formats(const FormBench& bench)
{
    return qobject_cast<QComboBox*>(bench.table()->cellWidget(0, StandardColumn::DataFormat));
}

class FormEditorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatIsFoundByItsValue()
    {
        // an unreadable value counts as 0
        for (const auto& [value, readable, entry] : Rows<int, bool, int>{{0, true, 2}, {7, true, 1}, {7, false, 2}}) {
            FormBench bench(0, MeasModeStandardAcq);
            bench.addCamera(oddFormats);
            bench.cameras[0]->setInt(VN_PRM_IMAGE_DATA_FORMAT, value);
            if (!readable)
                bench.failReads(0);
            bench.form->updateCameraList();
            QCOMPARE(formats(bench)->count(), 3);
            QCOMPARE(formats(bench)->currentIndex(), entry);
            QCOMPARE(bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), value); // building writes nothing
        }
    }

    void formatFollowsBothWays()
    {
        FormBench bench(0, MeasModeStandardAcq);
        bench.addCamera(oddFormats);
        const auto format = [&bench] { return bench.cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT); };
        QTest::keyClick(formats(bench), Qt::Key_End);
        QCOMPARE(format(), int(VN_FRM_MONO8));
        QTest::keyClick(formats(bench), Qt::Key_Home);
        QCOMPARE(format(), int(VN_FRM_MONO16));
        vnApi_SetParamInt(bench.handle(0), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA, nullptr);
        QTRY_COMPARE(formats(bench)->currentIndex(), 1);

        bench.loadMode(MeasModeDataThroughput); // column 2 holds the Measure button then
        vnApi_SetParamInt(bench.handle(0), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO8, nullptr);
        QCoreApplication::processEvents();
        QCOMPARE(format(), int(VN_FRM_MONO8));
    }

    void typedThroughput()
    {
        FormBench bench(1);
        bench.inCell<QCheckBox>(0, RequiredThroughput)->click();
        QVERIFY(!bench.record(0).autoRequiredThroughput);
        auto* edit = bench.inCell<QLineEdit>(0, RequiredThroughput);
        QVERIFY(edit->isEnabled());
        const Rows<QString, QString> rows{{"250", "2 25 250"},
                                          {"7\b", "7 0"}, // empty counts as 0
                                          {"1x-.2", "1 1 1 1 12"},
                                          {"100009", "1 10 100 1000 10000 10000"}};
        for (const auto& [keys, expected] : rows) {
            edit->clear();
            QStringList values;
            for (const QChar key : keys) {
                QTest::keyClick(edit, key.toLatin1());
                values.append(QString::number(bench.record(0).requiredThroughput));
            }
            QCOMPARE(values.join(QLatin1Char(' ')), expected);
        }
    }

    void automaticThroughput()
    {
        // as the camera reports; one that reports none keeps what was typed
        for (const auto& [reported, expected] : Rows<std::optional<int>, int>{{380, 380}, {std::nullopt, 44}}) {
            FormBench bench;
            bench.addCamera([speed = reported](sim::CameraScenario& s) { s.transportSpeed = speed; });
            auto* automatic = bench.inCell<QCheckBox>(0, RequiredThroughput);
            auto* edit = bench.inCell<QLineEdit>(0, RequiredThroughput);
            QVERIFY(automatic->isChecked() && !edit->isEnabled());
            automatic->click();
            edit->setText(QStringLiteral("44"));
            automatic->click();
            QCOMPARE(int(bench.record(0).requiredThroughput), expected);
            QVERIFY(edit->text().toInt() == expected && !edit->isEnabled());
        }
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
        const Rows<QLineEdit*, QString, QString> rows{
            {maximum, "500", "0..500"}, {minimum, "90", "90..500"}, {maximum, "4,50", "90..450"}}; // 4 is below 90
        for (const auto& [box, keys, expected] : rows) {
            box->selectAll();
            QTest::keyClicks(box, keys);
            QCOMPARE(range(1), expected);
        }
        bench.graphBox(0)->click(); // builds the areas anew
        bench.graphBox(0)->click();
        QCOMPARE(range(1), QStringLiteral("90..450"));
        minimum->clear();
        QCOMPARE(range(1), QStringLiteral("0..450"));
        QCOMPARE(range(0), QStringLiteral("0..1000"));
        bench.tick();
        QCOMPARE(range(1), QStringLiteral("0..450"));
    }
};

QTEST_MAIN(FormEditorsTest)
#include "tst_formeditors.moc"
