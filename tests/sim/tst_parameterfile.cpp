// SPDX-License-Identifier: GPL-3.0-or-later
// Which values the parameters take.
#include <QtTest>

#include "HandDrivenCamera.h"
#include "Table.h"

using namespace sim;

class TestParameterFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesThatAreTaken_data()
    {
        // plain: on a camera without any extras
        const Table<QByteArray, int, int, bool, bool> table("name", "value", "format", "plain", "full");
        const auto row = [&table](const char* name, int value, bool plain, bool full, int format = 0) {
            const QByteArray key = name;
            table(key + '=' + QByteArray::number(value) + " in format " + QByteArray::number(format), key, value,
                  format, plain, full);
        };
        row("imgdataformat", 7, true, true);
        row("imgdataformat", 2, false, false);
        row("output_bit_depth", 16, false, false);
        row("output_bit_depth", 16, true, true, 1);
        row("output_bit_depth", 12, true, true, 7);
        row("output_bit_depth", 9, false, false, 7);
        row("output_bit_packing", 1, false, false);
        row("output_bit_packing", 1, true, true, 7);
        row("buffer_policy", 0, true, true);
        row("test_pattern", 11, false, false); // the sensor's own generator is selected
        row("dp_param_selector", 6, false, true);
        row("dp_param_selector", 7, true, true);
        row("dp_param_value", 100, false, false); // the size is selected
        row("device_unit_selector", 8, false, true);
        row("device_unit_selector", 3, false, false);
        row("device_unit_register_selector", 4096, false, false); // not in the selected unit
        row("counter_selector", 3, false, true);
        row("counter_selector", 4, false, true);
        row("counter_selector", 5, true, true);
        row("counter_selector", 6, false, false);
        row("counter_value", 0, false, false);
        row("ts_rst_source", 19, true, true);
        row("no_such_parameter", 0, false, false);
        row("test_pattern[1]", 0, false, false); // a cell's key is no name
    }
    void valuesThatAreTaken()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, value);
        QFETCH(int, format);
        QFETCH(bool, plain);
        QFETCH(bool, full);
        CameraScenario scenario;
        HandDrivenCamera fullCamera(scenario);
        scenario.frameBufferControl = false;
        scenario.missedTriggerCounters = false;
        scenario.transportSpeed.reset();
        HandDrivenCamera plainCamera(scenario);
        for (const auto& [camera, taken] : {std::pair(&plainCamera, plain), std::pair(&fullCamera, full)}) {
            QVERIFY(camera->setInt("imgdataformat", format));
            const auto before = camera->parameters(true);
            QCOMPARE(camera->canSet(name, value), taken);
            QCOMPARE(camera->parameters(true), before);
            QCOMPARE(camera->setInt(name, value), taken);
            if (!taken)
                QCOMPARE(camera->parameters(true), before);
        }
    }
};

QTEST_APPLESS_MAIN(TestParameterFile)
#include "tst_parameterfile.moc"
