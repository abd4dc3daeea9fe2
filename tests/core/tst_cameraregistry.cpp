// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras that come and go: handles, the order of a closing, signals, parameter sets.
#include <QtTest/QtTest>

#include <thread>

#include <vnCore/vnCore.h>

#include "CameraRegistry.h"
#include "StubDevice.h"
#include "Table.h"

class TestCameraRegistry : public QObject
{
    Q_OBJECT

private:
    CameraRegistry& registry = CameraRegistry::instance();
    CxCameraManager* const manager = CxCameraManager::instance();
    std::vector<std::shared_ptr<StubDevice>> devices;

    VNCORE_HANDLE openFirst() { return registry.open(0); }

private Q_SLOTS:
    void init()
    {
        for (const char* id : {"a", "b", "c"}) {
            devices.push_back(std::make_shared<StubDevice>(QString::fromLatin1(id)));
            registry.addDevice(devices.back());
        }
    }

    void cleanup()
    {
        registry.removeAllDevices();
        devices.clear();
        QCoreApplication::processEvents();
    }

    void handlesAreInOrderOfOpening()
    {
        const VNCORE_HANDLE c = registry.open(2);
        const VNCORE_HANDLE a = registry.open(0);
        QVERIFY(c != nullptr && c < a);
        QCOMPARE(manager->openedCameras(), (QList<VNCORE_HANDLE>{c, a}));
        QCOMPARE(manager->cameraParameters(c)->cameraInfo().id, QStringLiteral("c"));
        QVERIFY(registry.open(0) == nullptr);
        QVERIFY(registry.open(3) == nullptr);
        QVERIFY(registry.open(-1) == nullptr);

        QVERIFY(registry.close(c));
        QVERIFY(!registry.close(c));
        QVERIFY(registry.openedHandle(2) == nullptr);
        const VNCORE_HANDLE b = registry.open(1);
        QVERIFY(b > a);
        QCOMPARE(registry.open(2), c);
        QCOMPARE(manager->openedCameras(), (QList<VNCORE_HANDLE>{a, b, c}));
    }

    void closingIsAnnouncedWhileCallsWork()
    {
        const VNCORE_HANDLE camera = openFirst();
        QVERIFY(vnApi_StartAcquisition(camera));
        devices[0]->push("image");
        int calls = 0;
        const auto slot = connect(manager, &CxCameraManager::cameraClosed, this, [&](VNCORE_HANDLE closing) {
            ++calls;
            QCOMPARE(closing, camera);
            QVERIFY(!manager->openedCameras().contains(camera));
            QVERIFY(registry.open(0) == nullptr);
            QVERIFY(!registry.close(camera));
            VN_IMG image{};
            image.size = sizeof(VN_IMG);
            QVERIFY(vnApi_GetImage(camera, 1000, &image, nullptr, true));
            QVERIFY(vnApi_StopAcquisition(camera));
            QVERIFY(vnApi_SetParamInt(camera, "gain", 42, nullptr));
            QVERIFY(manager->cameraParameters(camera)->findParam(QStringLiteral("gain"), false) != nullptr);
            QVERIFY(vnApi_StartAcquisition(camera)); // left for the closing to end
        });
        QVERIFY(registry.close(camera));
        disconnect(slot);
        QCOMPARE(calls, 1);
        QCOMPARE(devices[0]->parameters.value("gain"), 42);
        QVERIFY(!devices[0]->acquiring);
        QVERIFY(manager->cameraParameters(camera) == nullptr);
    }

    void slotsMayCloseAndOpenOthers()
    {
        const VNCORE_HANDLE a = registry.open(0);
        const VNCORE_HANDLE b = registry.open(1);
        const auto slot = connect(manager, &CxCameraManager::cameraClosed, this, [&](VNCORE_HANDLE closing) {
            if (closing == a) {
                QVERIFY(registry.close(b));
                QVERIFY(registry.open(2) != nullptr);
            }
        });
        registry.close(a);
        disconnect(slot);
        QCOMPARE(registry.openedCameras(), (QList<VNCORE_HANDLE>{registry.openedHandle(2)}));
    }

    void theEndOpensNothingAgain()
    {
        registry.open(0);
        registry.open(1);
        QSignalSpy closed(manager, &CxCameraManager::cameraClosed);
        const auto slot = connect(manager, &CxCameraManager::cameraClosed, this, [this] { registry.open(2); });
        registry.removeAllDevices();
        disconnect(slot);
        QCOMPARE(closed.count(), 2);
        QVERIFY(registry.openedCameras().isEmpty());
        devices[0]->setLost(true); // nobody listens any more
        QCoreApplication::processEvents();
    }

    void formatChangesAreQueued()
    {
        const VNCORE_HANDLE camera = openFirst();
        QMutex held; // as a plug-in holds one around its calls
        int announced = 0;
        const auto slot = connect(
            manager, &CxCameraManager::imageFormatChanged, this,
            [&](VNCORE_HANDLE changed) {
                const QMutexLocker lock(&held);
                announced += changed == camera ? 1 : 100;
            },
            Qt::DirectConnection);
        {
            const QMutexLocker lock(&held);
            QVERIFY(vnApi_SetParamInt(camera, "gain", 3, nullptr));
            QVERIFY(vnApi_SetParamInt(camera, "imgdataformat:settable", VN_FRM_MONO16, nullptr));
            std::thread(vnApi_SetParamInt, camera, VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO16, nullptr).join();
        }
        QCOMPARE(announced, 0);
        QTRY_COMPARE(announced, 1);

        // Nothing is said of a camera that has been closed meanwhile.
        QVERIFY(vnApi_SetParamInt(camera, VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_MONO8, nullptr));
        registry.close(camera);
        QCoreApplication::processEvents();
        disconnect(slot);
        QCOMPARE(announced, 1);
    }

    void lossIsToldOnTheUserInterfaceThread()
    {
        const VNCORE_HANDLE camera = openFirst();
        QSignalSpy lost(&registry, &CameraRegistry::cameraLost);
        QSignalSpy returned(&registry, &CameraRegistry::cameraReturned);
        QSignalSpy changed(&registry, &CameraRegistry::devicesChanged);
        QSignalSpy format(manager, &CxCameraManager::imageFormatChanged);
        const auto setLost = [this](size_t device, bool isLost) {
            std::thread([&] { devices[device]->setLost(isLost); }).join();
        };
        setLost(0, true);
        QCOMPARE(lost.count(), 0);
        QTRY_COMPARE(lost.count(), 1);
        QCOMPARE(lost[0][0].value<VNCORE_HANDLE>(), camera);
        QVERIFY(registry.isDeviceLost(0));
        setLost(0, false);
        QTRY_COMPARE(returned.count(), 1);
        QCOMPARE(format.count(), 1); // it has its power-up values

        setLost(1, true);
        QTRY_COMPARE(changed.count(), 3);
        QCOMPARE(lost.count(), 1); // of opened cameras only
        QVERIFY(registry.open(1) == nullptr);
    }

    void aBatchIsWrittenInItsOrder()
    {
        QSignalSpy announced(manager, &CxCameraManager::imageFormatChanged);
        auto* parameters = manager->cameraParameters(openFirst());
        QVERIFY(parameters->findParam(QStringLiteral("gian"), false) == nullptr);
        auto* offset = parameters->findParam(QStringLiteral("offset"), false);
        auto* gain = parameters->findParam(QStringLiteral("gain"), false);
        QCOMPARE(gain->value.toInt(), 1);
        devices[0]->refusedValue = 13;
        QVERIFY(offset->setParamValue(CxValue(13)));
        QVERIFY(gain->setParamValue(CxValue(7)));
        auto* format = parameters->findParam(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT), false);
        QVERIFY(!format->setParamValue(CxValue(2))); // none of its values
        QVERIFY(format->setParamValue(CxValue(VN_FRM_MONO16)));
        for (const char* name : {"offset", VN_PRM_IMAGE_DATA_FORMAT, "gain", "offset", "gian"})
            parameters->addParamCommitToBatch(QString::fromLatin1(name));
        QCOMPARE(parameters->findParam(QStringLiteral("gain"), false)->value.toInt(), 7); // not lost by looking
        QVERIFY(!parameters->endCommitBatch(CommitRefreshGuiChanged));
        QCOMPARE(devices[0]->written, (QVector<QByteArray>{VN_PRM_IMAGE_DATA_FORMAT, "gain"}));
        QCOMPARE(offset->value.toInt(), 2); // what the camera has
        QVERIFY(parameters->endCommitBatch(CommitRefreshGuiNone));
        QCOMPARE(devices[0]->written.size(), 2);
        QTRY_COMPARE(announced.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestCameraRegistry)
#include "tst_cameraregistry.moc"
