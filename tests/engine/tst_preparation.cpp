// SPDX-License-Identifier: GPL-3.0-or-later
// What a start and a stop do to the camera, whichever of their calls fails. The camera's own memory is looked at, not
// what its functions say of it.
#include <QtCore/QThread>
#include <QtTest/QtTest>

#include "AcquisitionThread.h"
#include "LogCapture.h"
#include "MeasurementBench.h"

namespace {

using Values = QMap<QString, int>;

/// A camera whose values all differ from those of a measurement.
void prepare(sim::HandDrivenCamera& camera)
{
    const Values own{{"imgdataformat", VN_FRM_MONO16}, {"output_bit_depth", 12},
                     {"output_bit_packing", 1},        {"LUTEnable", 1},
                     {"test_pattern[0]", 1},           {"test_pattern[1]", 1}};
    for (auto value = own.begin(); value != own.end(); ++value)
        camera.setParameter(value.key(), value.value());
}

/// "set name=value", "get name", "ask name=value", "start", "stop".
QString describe(const sim::HostCall& call)
{
    const QString name = QString::fromLatin1(call.parameter);
    switch (call.kind) {
    case sim::Call::Get:
        return QStringLiteral("get %1").arg(name);
    case sim::Call::Set:
        return QStringLiteral("set %1=%2").arg(name).arg(call.value);
    case sim::Call::CanSet:
        return QStringLiteral("ask %1=%2").arg(name).arg(call.value);
    case sim::Call::Start:
        return QStringLiteral("start");
    case sim::Call::Stop:
        return QStringLiteral("stop");
    default:
        return QString();
    }
}

/// Lists this thread's calls of a camera and makes one of them fail.
class CallList
{
public:
    CallList(sim::HandDrivenCamera& camera, int failing) : m_camera(camera)
    {
        camera.setHook([this, failing, user = QThread::currentThread()](const sim::HostCall& call) {
            if (QThread::currentThread() != user)
                return true;
            calls << describe(call);
            return calls.size() != failing;
        });
    }
    ~CallList() { m_camera.setHook({}); }

    QStringList calls;

private:
    sim::HandDrivenCamera& m_camera;
};

/// Without these calls there is no measurement.
const QStringList throughputNeeds{
    "set buffer_policy=0",
    "set imgdataformat=7",
    "set output_bit_depth=16",
    "set output_bit_packing=0",
    "get test_pattern",
    "get test_pattern_generator_selector",
    "set test_pattern=11",
    "set test_pattern_generator_selector=1",
    "set dp_unit_selector=1",
    "set dp_proc_selector=5",
    "set dp_param_selector=6",
    "set dp_param_value=9",
    "start",
};
const QStringList standardNeeds{"set buffer_policy=0", "start"};

/// What a start whose call failed leaves changed in the end: a value that it could not read is given back as 0, if the
/// camera takes that; with a test pattern unknown that is the pattern of the generator selected by then.
const QMap<QString, Values> changedByStart{
    {"get imgdataformat", {{"imgdataformat", 0}}},
    {"get output_bit_depth", {{"output_bit_depth", 16}}},
    {"get output_bit_packing", {{"output_bit_packing", 0}}},
    {"get buffer_policy", {{"buffer_policy", 0}}},
    {"get column_fpn_correction", {{"column_fpn_correction", 0}}},
    {"get row_fpn_correction", {{"row_fpn_correction", 0}}},
    {"get LUTEnable", {{"LUTEnable", 0}}},
    {"set buffer_policy=0", {{"test_pattern[0]", 0}}},
    {"set imgdataformat=7", {{"test_pattern[0]", 0}}},
    {"set output_bit_depth=16", {{"test_pattern[0]", 0}}},
    {"set output_bit_packing=0", {{"test_pattern[0]", 0}}},
    {"get test_pattern_generator_selector", {{"test_pattern[0]", 0}}},
    {"set test_pattern_generator_selector=1", {{"test_pattern[0]", 0}}},
    {"get test_pattern", {{"test_pattern[1]", 0}}},
};

/// What a stop whose call failed leaves as the measurement had it.
const QMap<QString, Values> changedByStop{
    {"set test_pattern=1", {{"test_pattern[1]", 11}}},
    {"set test_pattern_generator_selector=0", {{"test_pattern_generator_selector", 1}}},
    {"set output_bit_packing=1", {{"output_bit_packing", 0}}},
    {"set output_bit_depth=12", {{"output_bit_depth", 16}}},
    {"set imgdataformat=1", {{"imgdataformat", 7}}},
    {"set buffer_policy=1", {{"buffer_policy", 0}}},
    {"set column_fpn_correction=1", {{"column_fpn_correction", 0}}},
    {"set row_fpn_correction=1", {{"row_fpn_correction", 0}}},
    {"set LUTEnable=1", {{"LUTEnable", 0}}},
    {"set dp_param_selector=6", {{"dp_param_value[1/5/6]", 9}}},
    {"set dp_param_value=10", {{"dp_param_value[1/5/6]", 9}}},
    {"set device_unit_register_value=1", {{"device_unit_register_value[1/55]", 25000}}},
};

Values changed(Values values, const Values& changes)
{
    for (auto change = changes.begin(); change != changes.end(); ++change)
        values[change.key()] = change.value();
    return values;
}

} // namespace

class TestPreparation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CameraRegistry::instance().removeAllDevices(); }
    void faultless_data();
    void faultless();
    void everyCallOfAStartFails_data() { modes(); }
    void everyCallOfAStartFails();
    void everyCallOfAStopFails_data() { modes(); }
    void everyCallOfAStopFails();
    void messages_data();
    void messages();
    void whatTheCameraTells();
    void settingsAreClamped();

private:
    static void modes();
};

void TestPreparation::modes()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("throughput") << int(MeasModeDataThroughput);
    QTest::newRow("standard") << int(MeasModeStandardAcq);
}

void TestPreparation::faultless_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("modeAtStop");
    QTest::addColumn<int>("bufferMode");
    QTest::addColumn<bool>("control");
    QTest::newRow("throughput") << 0 << 0 << 9 << true;
    QTest::newRow("standard") << 1 << 1 << 10 << true;
    QTest::newRow("throughput, mode changed meanwhile") << 0 << 1 << 9 << true;
    QTest::newRow("standard, mode changed meanwhile") << 1 << 0 << 10 << true;
    QTest::newRow("no frame-buffer control") << 0 << 0 << -1 << false;
}

void TestPreparation::faultless()
{
    QFETCH(int, mode);
    QFETCH(int, modeAtStop);
    QFETCH(int, bufferMode);
    QFETCH(bool, control);
    sim::CameraScenario scenario;
    scenario.frameBufferControl = control;
    MeasurementBench bench(scenario, mode);
    prepare(*bench.camera);
    const Values before = bench.camera->parameters();

    LogCapture log;
    for (int run = 0; run < 2; ++run) {
        bench.data.measMode = mode;
        QVERIFY(bench.measure(3));
        QVERIFY(bench.data.isMeasuring() && bench.camera->isAcquiring());
        QCOMPARE(bench.camera->parameter("buffer_policy"), 0);
        QCOMPARE(bench.camera->parameter("dp_param_value[1/5/6]"), bufferMode);
        QCOMPARE(bench.data.frameBufferModeChanged, control && mode == MeasModeDataThroughput);
        {
            const CallList untouched(*bench.camera, 0);
            QVERIFY(!bench.data.startMeasurement(8, 1));
            QCOMPARE(untouched.calls, QStringList());
        }
        bench.data.measMode = modeAtStop;
        QVERIFY(bench.stop());
        QVERIFY(!bench.data.stopMeasurement());
        QVERIFY(!bench.data.isMeasuring() && !bench.data.thread && !bench.camera->isAcquiring());
        QCOMPARE(bench.camera->parameters(), before);
    }
    QCOMPARE(log.texts(), QStringList());
}

void TestPreparation::everyCallOfAStartFails()
{
    QFETCH(int, mode);
    const bool throughput = mode == MeasModeDataThroughput;
    const LogCapture log; // what it says is tested with the messages
    bool failed = true;
    for (int k = 1; failed; ++k) {
        MeasurementBench bench({}, mode);
        prepare(*bench.camera);
        const Values before = bench.camera->parameters();
        bool started = false;
        QString call = QStringLiteral("none");
        {
            const CallList list(*bench.camera, k);
            started = bench.data.startMeasurement(4096, 1000);
            failed = list.calls.size() >= k;
            if (failed)
                call = list.calls[k - 1];
        }
        const QByteArray where = call.toLatin1();
        QVERIFY2(started != (throughput ? throughputNeeds : standardNeeds).contains(call), where);
        QVERIFY2(bench.data.isMeasuring() == started && bool(bench.data.thread) == started, where);
        QVERIFY2(bench.camera->isAcquiring() == started, where);
        QVERIFY2(bench.stop() == started, where);
        QVERIFY2(!bench.data.thread && !bench.camera->isAcquiring(), where);
        Values changes = changedByStart.value(call);
        if (!throughput && call.startsWith("set"))
            changes.clear();
        const Values after = bench.camera->parameters();
        QVERIFY2(after == changed(before, changes), where);
        QVERIFY2(failed || k > (throughput ? 30 : 12), where); // all were there
    }
}

void TestPreparation::everyCallOfAStopFails()
{
    QFETCH(int, mode);
    const LogCapture log; // what it says is tested with the messages
    bool failed = true;
    for (int k = 1; failed; ++k) {
        MeasurementBench bench({}, mode);
        prepare(*bench.camera);
        const Values before = bench.camera->parameters();
        QVERIFY(bench.measure(1));
        CallList list(*bench.camera, k);
        QVERIFY(bench.stop());
        failed = list.calls.size() >= k;
        const QString call = failed ? list.calls[k - 1] : QStringLiteral("none");
        const QByteArray where = call.toLatin1();
        QVERIFY2(!bench.data.isMeasuring() && !bench.data.thread, where);
        QVERIFY2(bench.camera->parameters() == changed(before, changedByStop.value(call)), where);
        QVERIFY2(failed || k > (mode == MeasModeDataThroughput ? 14 : 2), where);
    }
}

void TestPreparation::messages_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("message");
    const QString setup = QStringLiteral("CxCameraLineData::setupCameraParameters(): vnApi_%1 failed");
    const QString speed = QStringLiteral("CxCameraLineData::readDefaultAvgTransportSpeed(): Failed to %1");
    const auto row = [](const QString& failing, const QString& message) {
        QTest::newRow(qPrintable(failing)) << failing << message;
    };
    row("set buffer_policy=0", setup.arg("SetParamInt(VN_PRM_BUFFER_POLICY, VN_BP_UNSAFE)"));
    row("set imgdataformat=7", setup.arg("SetParamInt(VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA)"));
    row("set output_bit_depth=16", setup.arg("SetParamInt(VN_PRM_OUTPUT_DATA_BIT_DEPTH)"));
    row("set output_bit_packing=0", setup.arg("SetParamInt(VN_PRM_OUTPUT_DATA_PACKING, 0)"));
    row("get test_pattern_generator_selector", setup.arg("GetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR)"));
    row("set test_pattern_generator_selector=1",
        setup.arg("SetParamInt(VN_PRM_TEST_PATTERN_GENERATOR_SELECTOR, VN_TESTPAT_GEN_FPGA)"));
    row("get test_pattern", setup.arg("GetParamInt(VN_PRM_TEST_PATTERN)"));
    row("set test_pattern=11", setup.arg("SetParamInt(VN_PRM_TEST_PATTERN, VN_TESTPAT_DEVICE_SPEC_COUNTER)"));
    row("set dp_unit_selector=1", setup.arg("SetParamInt(VN_PRM_DP_UNIT_SELECTOR, VN_DP_UNIT_FPGA)"));
    row("set dp_proc_selector=5", setup.arg("SetParamInt(VN_PRM_DP_PROC_SELECTOR, VN_DP_PROC_FRAME_BUFFER)"));
    row("set dp_param_selector=6", setup.arg("SetParamInt(VN_PRM_DP_PARAM_SELECTOR, VN_DP_PARAM_FRAMEBUF_MODE)"));
    row("set dp_param_value=9",
        setup.arg("SetParamInt(VN_PRM_DP_PARAM_VALUE, VN_DP_PARAM_VALUE_FRAMEBUF_MODE_DISABLED)"));
    row("start", setup.arg("StartAcquisition"));
    row("stop", setup.arg("StopAcquisition"));
    row("get device_unit_selector", speed.arg("read current device unit confiuration"));
    row("set device_unit_register_selector=55", speed.arg("change back current device unit configuration"));
    row("mode 5", "CxCameraLineData::setupCameraParameters(): Unknown measurement mode");
}

void TestPreparation::messages()
{
    QFETCH(QString, failing);
    MeasurementBench bench;
    if (failing == "mode 5")
        bench.data.measMode = 5;
    bool done = false; // only the first use
    bench.camera->setHook(
        [&](const sim::HostCall& call) { return done || describe(call) != failing || !(done = true); });
    LogCapture log;
    if (bench.data.startMeasurement(4096, 1000))
        bench.stop();
    bench.camera->setHook({});
    QFETCH(QString, message);
    QCOMPARE(log.texts(), QStringList(message));
}

void TestPreparation::whatTheCameraTells()
{
    sim::CameraScenario scenario;
    scenario.transportSpeed = 640;
    MeasurementBench bench(scenario);
    const Values before = bench.camera->parameters(true);
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

void TestPreparation::settingsAreClamped()
{
    MeasurementBench bench;
    QVERIFY(bench.measure(2, -4096, 0));
    QCOMPARE(bench.data.samplePeriod, 8);
    QCOMPARE(bench.data.maxSamples, 1);
    QCOMPARE(bench.data.frameList.size(), size_t(1));
    QVERIFY(bench.stop());
    QVERIFY(bench.measure(1, 7, 1));
    QCOMPARE(bench.data.samplePeriod, 8);
}

QTEST_GUILESS_MAIN(TestPreparation)
#include "tst_preparation.moc"
