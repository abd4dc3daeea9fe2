// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions: dead handles, parameters, who may acquire, image memory.
#include <QtTest/QtTest>

#include <cstring>
#include <thread>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "HandDrivenCamera.h"
#include "Table.h"

namespace {

constexpr unsigned int longWait = 20000; // ms; ended by what the test does

VN_IMG emptyImage()
{
    VN_IMG image{};
    image.size = sizeof(VN_IMG);
    return image;
}

} // namespace

class TestCameraFunctions : public QObject
{
    Q_OBJECT

private:
    CameraRegistry& registry = CameraRegistry::instance();
    std::shared_ptr<sim::HandDrivenCamera> device;
    VNCORE_HANDLE camera = nullptr;

private Q_SLOTS:
    void init()
    {
        sim::CameraScenario scenario;
        scenario.sensor.width = scenario.sensor.height = 64;
        device = std::make_shared<sim::HandDrivenCamera>(scenario);
        camera = registry.open(registry.addDevice(device));
        QVERIFY(camera != nullptr);
    }

    void cleanup() { registry.removeAllDevices(); }

    void deadHandles()
    {
        QVERIFY(registry.close(camera));
        for (const auto dead : {camera, VNCORE_HANDLE(nullptr), reinterpret_cast<VNCORE_HANDLE>(quint64(1) << 40)}) {
            int value = 77;
            VN_IMG image = emptyImage();
            QVERIFY(!vnApi_GetParamInt(dead, "LUTEnable", value, nullptr));
            QVERIFY(!vnApi_SetParamInt(dead, "LUTEnable:settable", 1, nullptr));
            QVERIFY(!vnApi_GetImage(dead, longWait, &image, nullptr, true));
            QVERIFY(!vnApi_StartAcquisition(dead) && !vnApi_StopAcquisition(dead));
            QCOMPARE(value, 77);
        }
    }

    void parameters_data()
    {
        const Table<QByteArray, int, bool, int> row("name", "value", "accepted", "after");
        row("write", "LUTEnable", 1, true, 1);
        row("refused", "LUTEnable", 13, false, 0);
        row("no such", "LUTEnabel", 1, false, 0);
        row("ask", "LUTEnable:settable", 1, true, 0);
        row("ask refused", "LUTEnable:settable", 13, false, 0);
        row("ask no such", "LUTEnabel:settable", 1, false, 0);
        row("suffix alone", ":settable", 1, false, 0);
        row("no name", {}, 1, false, 0);
    }

    void parameters()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, value);
        const char* text = name.isNull() ? nullptr : name.constData();
        QTEST(vnApi_SetParamInt(camera, text, value, nullptr), "accepted");
        int now = -1;
        QVERIFY(vnApi_GetParamInt(camera, "LUTEnable", now, nullptr));
        QTEST(now, "after");
    }

    void oneSideAcquires()
    {
        QVERIFY(!vnApi_StopAcquisition(camera));
        QVERIFY(registry.startHostAcquisition(camera));
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!vnApi_StopAcquisition(camera));
        VN_IMG image = emptyImage();
        QVERIFY(!vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QVERIFY(device->isAcquiring());

        QVERIFY(registry.stopHostAcquisition(camera));
        QVERIFY(vnApi_StartAcquisition(camera));
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!registry.startHostAcquisition(camera));
        QVERIFY(!registry.stopHostAcquisition(camera));
        QVERIFY(device->isAcquiring());
        QVERIFY(vnApi_StopAcquisition(camera));
        QVERIFY(!device->isAcquiring());
    }

    void refusalsOfTheCameraBlockNobody()
    {
        const auto refuse = [this](sim::Call refused) {
            device->setHook([refused](const sim::HostCall& call) { return call.kind != refused; });
        };
        refuse(sim::Call::Start);
        QVERIFY(!registry.startHostAcquisition(camera));
        refuse(sim::Call::Stop);
        QVERIFY(registry.startHostAcquisition(camera));
        QVERIFY(!registry.stopHostAcquisition(camera));
        QVERIFY(!registry.isHostAcquiring(camera));
        QVERIFY(vnApi_StartAcquisition(camera));
    }

    void images()
    {
        sim::Faults faults;
        faults.nullData = {1, 1, 100};
        device->setFaults(faults);
        QVERIFY(!registry.silentSince(camera));
        const auto began = std::chrono::steady_clock::now();
        QVERIFY(vnApi_StartAcquisition(camera));
        VN_IMG image{};
        QVERIFY(!vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QVERIFY(!vnApi_GetImage(camera, longWait, nullptr, nullptr, true));
        image.size = sizeof(VN_IMG);
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QCOMPARE(image.size, quint32(sizeof(VN_IMG)));
        QCOMPARE(image.frameNumber, 0u);
        const auto first = registry.silentSince(camera);
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QVERIFY(image.data == nullptr); // handed on, but nothing for the view
        QVERIFY(registry.latestImage(camera).descriptor.data != nullptr);

        // A silence begins with the start and with each image, goes on through a loss and ends with the stop.
        const auto second = registry.silentSince(camera);
        QVERIFY(first && second && began < *first && *first < *second);
        device->lose();
        QVERIFY(!vnApi_GetImage(camera, longWait, &image, nullptr, true));
        device->comeBack();
        QCOMPARE(registry.silentSince(camera), second);
        QVERIFY(vnApi_StopAcquisition(camera));
        QVERIFY(!registry.silentSince(camera));
        QVERIFY(vnApi_StartAcquisition(camera));
        QVERIFY(registry.silentSince(camera) > second);

        // The same thread's next wait ends the lease of its last image.
        QSet<const void*> memory;
        for (int i = 0; i < 20; ++i) {
            QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
            memory.insert(image.data);
        }
        QVERIFY(memory.size() <= 3);
    }

    void memoryOutlives_data()
    {
        const Table<int> row("event");
        row("loss", 0);
        row("stop by another thread", 1);
        row("close", 2);
        row("the device itself", 3);
    }

    void memoryOutlives()
    {
        QFETCH(int, event);
        QVERIFY(vnApi_StartAcquisition(camera));
        VN_IMG image = emptyImage();
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        const QByteArray former(static_cast<const char*>(image.data), static_cast<int>(image.dataBytes));
        QCOMPARE(former.size(), 64 * 64);
        if (event == 0)
            device->lose();
        if (event == 1)
            std::thread(vnApi_StopAcquisition, camera).join();
        if (event >= 2)
            registry.close(camera);
        if (event == 3) {
            registry.removeAllDevices();
            device.reset();
        }
        QVERIFY(std::memcmp(image.data, former.constData(), image.dataBytes) == 0);
    }
};

QTEST_GUILESS_MAIN(TestCameraFunctions)
#include "tst_camerafunctions.moc"
