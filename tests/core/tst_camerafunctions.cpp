// SPDX-License-Identifier: GPL-3.0-or-later
// The camera functions: dead handles, parameters, who may acquire, image memory.
#include <QtTest/QtTest>

#include <cstring>
#include <thread>

#include "CameraBench.h"
#include "Table.h"

class TestCameraFunctions : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<CameraBench> bench;
    CameraRegistry& registry = CameraRegistry::instance();
    sim::HandDrivenCamera* device = nullptr;
    VNCORE_HANDLE camera = nullptr;

private Q_SLOTS:
    void init()
    {
        bench = std::make_unique<CameraBench>(1);
        device = bench->devices[0].get();
        camera = registry.open(0);
    }
    void cleanup() { bench.reset(); }

    void deadHandles()
    {
        QVERIFY(registry.close(camera));
        for (const auto dead : {camera, VNCORE_HANDLE(nullptr), reinterpret_cast<VNCORE_HANDLE>(quint64(1) << 40)}) {
            int value = 77;
            QVERIFY(!vnApi_GetParamInt(dead, "LUTEnable", value, nullptr));
            QVERIFY(!vnApi_SetParamInt(dead, "LUTEnable:settable", 1, nullptr));
            QVERIFY(!bench->receive(dead));
            QVERIFY(!vnApi_StartAcquisition(dead) && !vnApi_StopAcquisition(dead));
            QCOMPARE(value, 77);
        }
    }

    void parameters()
    {
        // after: of LUTEnable
        const Rows<const char*, int, bool, int> rows{{"LUTEnable", 13, false, 0},
                                                     {"LUTEnabel", 1, false, 0},
                                                     {"LUTEnable:settable", 1, true, 0},
                                                     {"LUTEnable:settable", 13, false, 0},
                                                     {":settable", 1, false, 0},
                                                     {"LUTEnabel:settable", 1, false, 0},
                                                     {nullptr, 1, false, 0},
                                                     {"LUTEnable", 1, true, 1}};
        for (const auto& [name, value, accepted, after] : rows) {
            int now = -1;
            const bool taken = vnApi_SetParamInt(camera, name, value, nullptr);
            QVERIFY(vnApi_GetParamInt(camera, "LUTEnable", now, nullptr));
            QVERIFY2(taken == accepted && now == after, name);
        }
    }

    void oneSideAcquires()
    {
        QVERIFY(!vnApi_StopAcquisition(camera));
        QVERIFY(registry.startHostAcquisition(camera));
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!vnApi_StopAcquisition(camera));
        QVERIFY(!bench->receive(camera));
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
        QVector<sim::Call> calls;
        device->setHook([&calls](const sim::HostCall& call) { return calls << call.kind, true; });
        QVERIFY(vnApi_StartAcquisition(camera));
        QCOMPARE(calls, (QVector{sim::Call::Stop, sim::Call::Start})); // it may still acquire, for nobody
        device->setHook({});
    }

    void images()
    {
        sim::Faults faults;
        faults.nullData = {1, 1, 100};
        device->setFaults(faults);
        QVERIFY(!registry.silentSince(camera));
        const auto began = std::chrono::steady_clock::now();
        QVERIFY(vnApi_StartAcquisition(camera));
        VN_IMG& image = bench->image;
        QVERIFY(!vnApi_GetImage(camera, 20000, &image, nullptr, true)); // of no size
        QVERIFY(!vnApi_GetImage(camera, 20000, nullptr, nullptr, true));
        QVERIFY(bench->receive(camera));
        QCOMPARE(image.size, quint32(sizeof(VN_IMG)));
        QCOMPARE(image.frameNumber, 0u);
        const auto first = registry.silentSince(camera);
        QVERIFY(bench->receive(camera));
        QVERIFY(image.data == nullptr); // handed on, but nothing for the view
        QVERIFY(registry.latestImage(camera).descriptor.data != nullptr);

        // A silence begins with the start and with each image, goes on through a loss and ends with the stop.
        const auto second = registry.silentSince(camera);
        QVERIFY(first && second && began < *first && *first < *second);
        device->lose();
        QVERIFY(!bench->receive(camera));
        device->comeBack();
        QCOMPARE(registry.silentSince(camera), second);
        QVERIFY(vnApi_StopAcquisition(camera));
        QVERIFY(!registry.silentSince(camera));
        QVERIFY(vnApi_StartAcquisition(camera));
        QVERIFY(registry.silentSince(camera) > second);

        // The same thread's next wait ends the lease of its last image.
        QSet<const void*> memory;
        for (int i = 0; i < 20; ++i) {
            QVERIFY(bench->receive(camera));
            memory.insert(image.data);
        }
        QVERIFY(memory.size() <= 3);
    }

    void memoryOutlives()
    {
        const std::function<void()> events[] = {[this] { device->lose(); },
                                                [this] { std::thread(vnApi_StopAcquisition, camera).join(); },
                                                [this] { registry.close(camera); }};
        for (const auto& event : events) {
            cleanup(), init();
            QVERIFY(vnApi_StartAcquisition(camera) && bench->receive(camera));
            const VN_IMG& image = bench->image;
            const QByteArray former(static_cast<const char*>(image.data), static_cast<int>(image.dataBytes));
            QCOMPARE(former.size(), 64 * 64);
            event();
            QVERIFY(std::memcmp(image.data, former.constData(), image.dataBytes) == 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestCameraFunctions)
#include "tst_camerafunctions.moc"
