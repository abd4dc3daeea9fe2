// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions: dead handles, parameters, who may acquire, image memory.
#include <QtTest/QtTest>

#include <thread>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "StubDevice.h"
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
    std::shared_ptr<StubDevice> device;
    VNCORE_HANDLE camera = nullptr;

private Q_SLOTS:
    void init()
    {
        device = std::make_shared<StubDevice>();
        camera = registry.open(registry.addDevice(device));
        QVERIFY(camera != nullptr);
    }

    void cleanup() { registry.removeAllDevices(); }

    void deadHandles()
    {
        QVERIFY(registry.close(camera));
        for (const auto dead : {camera, VNCORE_HANDLE(nullptr), reinterpret_cast<VNCORE_HANDLE>(quint64(1) << 40)}) {
            int value = 77;
            int errors[3] = {-1, -1, -1};
            VN_IMG image = emptyImage();
            QVERIFY(!vnApi_GetParamInt(dead, "gain", value, &errors[0]));
            QVERIFY(!vnApi_SetParamInt(dead, "gain:settable", 1, &errors[1]));
            QVERIFY(!vnApi_GetImage(dead, longWait, &image, &errors[2], true));
            QVERIFY(!vnApi_StartAcquisition(dead) && !vnApi_StopAcquisition(dead));
            QCOMPARE(value, 77);
            QCOMPARE(std::count(errors, errors + 3, VN_ERR_NO_CAMERA), 3);
        }
    }

    void parameters_data()
    {
        const Table<QByteArray, int, bool, int, int> row("name", "value", "accepted", "error", "gainAfter");
        row("write", "gain", 5, true, VN_ERR_NONE, 5);
        row("refused", "gain", 13, false, VN_ERR_REFUSED, 1);
        row("no such", "gian", 5, false, VN_ERR_NO_PARAM, 1);
        row("ask", "gain:settable", 5, true, VN_ERR_NONE, 1);
        row("ask refused", "gain:settable", 13, false, VN_ERR_REFUSED, 1);
        row("ask no such", "gian:settable", 5, false, VN_ERR_NO_PARAM, 1);
        row("suffix alone", ":settable", 5, false, VN_ERR_NO_PARAM, 1);
        row("no name", {}, 5, false, VN_ERR_NO_PARAM, 1);
    }

    void parameters()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, value);
        device->refusedValue = 13;
        const char* text = name.isNull() ? nullptr : name.constData();
        int error = -1;
        QTEST(vnApi_SetParamInt(camera, text, value, &error), "accepted");
        QTEST(error, "error");
        QTEST(vnApi_SetParamInt(camera, text, value, nullptr), "accepted");
        int gain = 0;
        QVERIFY(vnApi_GetParamInt(camera, "gain", gain, nullptr));
        QTEST(gain, "gainAfter");
    }

    void oneSideAcquires()
    {
        QVERIFY(!vnApi_StopAcquisition(camera));
        QVERIFY(registry.startHostAcquisition(camera));
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!vnApi_StopAcquisition(camera));
        VN_IMG image = emptyImage();
        int error = 0;
        QVERIFY(!vnApi_GetImage(camera, longWait, &image, &error, true));
        QCOMPARE(error, int(VN_ERR_NOT_RUNNING));
        QVERIFY(device->acquiring);

        QVERIFY(registry.stopHostAcquisition(camera));
        QVERIFY(vnApi_StartAcquisition(camera));
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!registry.startHostAcquisition(camera));
        QVERIFY(!registry.stopHostAcquisition(camera));
        QVERIFY(device->acquiring);
        QVERIFY(vnApi_StopAcquisition(camera));
        QVERIFY(!device->acquiring);
    }

    void refusalsOfTheCameraBlockNobody()
    {
        device->refuseStart = true;
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!registry.startHostAcquisition(camera));
        device->refuseStart = false;
        QVERIFY(vnApi_StartAcquisition(camera));
        device->refuseStop = true;
        QVERIFY(!vnApi_StopAcquisition(camera));
        QVERIFY(device->acquiring);
        device->refuseStop = false;
        QVERIFY(registry.startHostAcquisition(camera));
        device->refuseStop = true;
        QVERIFY(!registry.stopHostAcquisition(camera));
        QVERIFY(!registry.isHostAcquiring(camera));
        device->refuseStop = false;
        QVERIFY(vnApi_StartAcquisition(camera));
    }

    void images()
    {
        QVERIFY(vnApi_StartAcquisition(camera));
        device->push("image");
        VN_IMG image{};
        QVERIFY(!vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QVERIFY(!vnApi_GetImage(camera, longWait, nullptr, nullptr, true));
        image.size = sizeof(VN_IMG);
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QCOMPARE(image.size, quint32(sizeof(VN_IMG)));
        QCOMPARE(image.frameNumber, 1u);
        device->push({}); // handed on, but nothing for the view
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        QVERIFY(image.data == nullptr);
        QCOMPARE(registry.latestImage(camera).descriptor.frameNumber, 1u);
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
        const auto memory = device->push("first");
        VN_IMG image = emptyImage();
        QVERIFY(vnApi_GetImage(camera, longWait, &image, nullptr, true));
        if (event == 0)
            device->setLost(true);
        if (event == 1)
            std::thread(vnApi_StopAcquisition, camera).join();
        if (event >= 2)
            registry.close(camera);
        if (event == 3) {
            registry.removeAllDevices();
            device.reset();
        }
        QVERIFY(!memory.expired());
        QCOMPARE(QByteArray(static_cast<const char*>(image.data), static_cast<int>(image.dataBytes)),
                 QByteArray("first"));

        // The same thread's next wait ends the lease, also one that brings nothing; an opened camera keeps its
        // newest image for the view.
        vnApi_GetImage(camera, 0, &image, nullptr, true);
        QCOMPARE(memory.expired(), event >= 2);
    }
};

QTEST_GUILESS_MAIN(TestCameraFunctions)
#include "tst_camerafunctions.moc"
