// SPDX-License-Identifier: GPL-3.0-or-later
// Which values the parameters take.
#include <QtTest>

#include "HandDrivenCamera.h"

using namespace sim;

class TestParameterFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesThatAreTaken()
    {
        const struct
        {
            const char* name;
            int value;
            bool plain; ///< taken by a camera without any extras
            bool full;
            int format = 0;
        } cases[] = {
            {"imgdataformat", 7, true, true},
            {"imgdataformat", 2, false, false},
            {"output_bit_depth", 16, false, false},
            {"output_bit_depth", 16, true, true, 1},
            {"output_bit_depth", 12, true, true, 7},
            {"output_bit_depth", 9, false, false, 7},
            {"output_bit_packing", 1, false, false},
            {"output_bit_packing", 1, true, true, 7},
            {"buffer_policy", 0, true, true},
            {"test_pattern", 11, false, false}, // the sensor's own generator is selected
            {"dp_param_selector", 6, false, true},
            {"dp_param_selector", 7, true, true},
            {"dp_param_value", 100, false, false}, // the size is selected
            {"device_unit_selector", 8, false, true},
            {"device_unit_selector", 3, false, false},
            {"device_unit_register_selector", 4096, false, false}, // not in the selected unit
            {"counter_selector", 3, false, true},
            {"counter_selector", 4, false, true},
            {"counter_selector", 5, true, true},
            {"counter_selector", 6, false, false},
            {"counter_value", 0, false, false},
            {"ts_rst_source", 19, true, true},
            {"no_such_parameter", 0, false, false},
            {"test_pattern[1]", 0, false, false}, // a cell's key is no name
        };
        CameraScenario plain;
        plain.frameBufferControl = plain.missedTriggerCounters = false;
        plain.transportSpeed.reset();
        for (const auto& row : cases) {
            for (const auto& [scenario, taken] : {std::pair(plain, row.plain), {CameraScenario(), row.full}}) {
                HandDrivenCamera camera(scenario);
                QVERIFY(camera.setInt("imgdataformat", row.format));
                const auto before = camera.parameters(true);
                const bool can = camera.canSet(row.name, row.value);
                const bool asked = camera.parameters(true) == before;
                const bool set = camera.setInt(row.name, row.value);
                QVERIFY2(can == taken && set == taken && asked && (taken || camera.parameters(true) == before),
                         row.name);
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestParameterFile)
#include "tst_parameterfile.moc"
