// SPDX-License-Identifier: GPL-3.0-or-later
// What a start and a stop do to the camera while nothing fails. The camera's own memory is looked at, not what its
// functions say of it.
#include <QtTest/QtTest>

#include "AcquisitionThread.h"
#include "LogCapture.h"
#include "MeasurementBench.h"

class TestPreparation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CameraRegistry::instance().removeAllDevices(); }

    void faultless()
    {
        const int bufferModes[] = {9, 10}; // by the measurement mode
        for (const auto& [mode, modeAtStop, control] :
             {std::tuple(0, 0, true), {1, 1, true}, {0, 1, true}, {1, 0, true}, {0, 0, false}}) {
            sim::CameraScenario scenario;
            scenario.frameBufferControl = control;
            MeasurementBench bench(scenario, mode);
            bench.setOwnValues();
            const LogCapture log;
            for (int run = 0; run < 2; ++run) {
                bench.data.measMode = mode;
                QVERIFY(bench.measure(3));
                QVERIFY(bench.data.isMeasuring() && bench.camera->isAcquiring());
                QCOMPARE(bench.camera->parameter("buffer_policy"), 0);
                QCOMPARE(bench.camera->parameter("dp_param_value[1/5/6]"), control ? bufferModes[mode] : -1);
                QCOMPARE(bench.data.frameBufferModeChanged, control && mode == MeasModeDataThroughput);
                QVERIFY(!bench.data.startMeasurement(8, 1));
                bench.data.measMode = modeAtStop;
                QVERIFY(bench.stop() && !bench.data.stopMeasurement() && bench.isAtRest());
            }
            QCOMPARE(log.texts(), QStringList());
        }
    }

    void onlyWhatWasChangedIsPutBack()
    {
        MeasurementBench bench;
        QVERIFY(bench.measure(1) && bench.stop());
        bench.camera->setParameter("dp_param_value[1/5/6]", 9); // the user's choice
        bench.camera->setHook([](const sim::HostCall& call) { return call.kind != sim::Call::CanSet; });
        QVERIFY(bench.measure(1) && bench.stop());
        QCOMPARE(bench.camera->parameter("dp_param_value[1/5/6]"), 9);
    }

    void unknownMode()
    {
        MeasurementBench bench({}, 5);
        const LogCapture log;
        QVERIFY(!bench.data.startMeasurement(4096, 1000));
        QCOMPARE(log.texts(), QStringList("CxCameraLineData::setupCameraParameters(): Unknown measurement mode"));
        CxAcquisitionThread worker(&bench.data, 5);
        worker.start();
        QVERIFY(worker.wait());
        QCOMPARE(log.texts().last(), QStringLiteral("CxAcquisitionThread::run(): Unknown measurement mode selected"));
    }

    void whatTheCameraTells()
    {
        sim::CameraScenario scenario;
        scenario.transportSpeed = 640;
        MeasurementBench bench(scenario);
        const auto before = bench.camera->parameters(true);
        bench.data.readDefaultAvgTransportSpeed();
        QCOMPARE(bench.data.requiredThroughput.load(), 640);
        QCOMPARE(bench.camera->parameters(true), before);
        QCOMPARE(bench.data.readCameraBufferSize(), static_cast<qint32>(scenario.bufferBytes));
        for (int speed : {0, -5}) {
            bench.camera->setParameter("device_unit_register_value[8/4096]", speed);
            bench.data.readDefaultAvgTransportSpeed();
            QCOMPARE(bench.data.requiredThroughput.load(), 640);
        }
        bench.data.autoRequiredThroughput = false;
        bench.camera->setHook([](const sim::HostCall& call) { return call.parameter != "dp_param_selector"; });
        QCOMPARE(bench.data.readCameraBufferSize(), 32768);
    }

    void settingsAreClamped()
    {
        MeasurementBench bench;
        QVERIFY(bench.measure(2, -4096, 0));
        QVERIFY(bench.data.samplePeriod == 8 && bench.data.maxSamples == 1 && bench.data.frameList.size() == 1);
        QVERIFY(bench.stop());
        QVERIFY(bench.measure(1, 7, 1));
        QCOMPARE(bench.data.samplePeriod, 8);
    }
};

QTEST_GUILESS_MAIN(TestPreparation)
#include "tst_preparation.moc"
