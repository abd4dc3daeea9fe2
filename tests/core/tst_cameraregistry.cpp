// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras that come and go: handles, the order of a closing, signals, parameter sets.
#include <QtTest/QtTest>

#include <thread>

#include "CameraBench.h"

class TestCameraRegistry : public QObject
{
    Q_OBJECT

private:
    CameraRegistry& registry = CameraRegistry::instance();
    CxCameraManager* const manager = CxCameraManager::instance();
    std::unique_ptr<CameraBench> bench;

private Q_SLOTS:
    void init() { bench = std::make_unique<CameraBench>(3); }
    void cleanup()
    {
        bench.reset();
        QCoreApplication::processEvents();
    }

    void handlesAreInOrderOfOpening()
    {
        const VNCORE_HANDLE c = registry.open(2);
        const VNCORE_HANDLE a = registry.open(0);
        QVERIFY(c != nullptr && c < a);
        QCOMPARE(manager->openedCameras(), (QList<VNCORE_HANDLE>{c, a}));
        QCOMPARE(manager->cameraParameters(c)->cameraInfo().id, QStringLiteral("C"));
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
        bench->devices[0]->lose(); // nobody listens any more
        QCoreApplication::processEvents();
    }

    void aClosingIsAnnouncedBeforeAnythingEnds()
    {
        const VNCORE_HANDLE camera = registry.open(0);
        QVERIFY(vnApi_StartAcquisition(camera));
        bool received = false;
        const auto slot = connect(manager, &CxCameraManager::cameraClosed, this, [&] {
            VN_IMG image{};
            image.size = sizeof image;
            received = vnApi_GetImage(camera, 1000, &image, nullptr, true);
        });
        bool startedAnew = false;
        bench->devices[0]->setHook([&](const sim::HostCall& call) {
            startedAnew |= call.kind == sim::Call::Stop && vnApi_StartAcquisition(camera);
            return true;
        });
        QVERIFY(registry.close(camera));
        disconnect(slot);
        QVERIFY(received && !startedAnew);

        bench->devices[0]->setHook([&](const sim::HostCall& call) {
            return call.kind != sim::Call::Start || registry.close(camera); // while it starts
        });
        QCOMPARE(registry.open(0), camera);
        QVERIFY(!vnApi_StartAcquisition(camera));
        QVERIFY(!bench->devices[0]->isAcquiring());
    }

    void formatChangesAreQueued()
    {
        const VNCORE_HANDLE camera = registry.open(0);
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
            QVERIFY(vnApi_SetParamInt(camera, "LUTEnable", 1, nullptr));
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
        const VNCORE_HANDLE camera = registry.open(0);
        QSignalSpy lost(&registry, &CameraRegistry::cameraLost);
        QSignalSpy returned(&registry, &CameraRegistry::cameraReturned);
        QSignalSpy changed(&registry, &CameraRegistry::devicesChanged);
        QSignalSpy format(manager, &CxCameraManager::imageFormatChanged);
        const auto setLost = [this](size_t device, bool isLost) {
            std::thread([&] { isLost ? bench->devices[device]->lose() : bench->devices[device]->comeBack(); }).join();
        };
        setLost(0, true);
        QCOMPARE(lost.count(), 0);
        QTRY_COMPARE(lost.count(), 1);
        QCOMPARE(lost[0][0].value<VNCORE_HANDLE>(), camera);
        QVERIFY(registry.isDeviceLost(0));
        QCOMPARE(format.count(), 0);
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
        auto* parameters = manager->cameraParameters(registry.open(0));
        QVERIFY(parameters->findParam(QStringLiteral("LUTEnabel"), false) == nullptr);
        auto* table = parameters->findParam(QStringLiteral("LUTEnable"), false);
        auto* policy = parameters->findParam(QStringLiteral("buffer_policy"), false);
        auto* format = parameters->findParam(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT), false);
        QCOMPARE(table->value.toInt(), 0);
        QCOMPARE(policy->value.toInt(), 1);
        QVERIFY(!format->setParamValue(CxValue(2))); // none of its values
        QVERIFY(format->setParamValue(CxValue(VN_FRM_MONO16)));
        QVERIFY(table->setParamValue(CxValue(1)));
        QVERIFY(policy->setParamValue(CxValue(0)));
        QVector<QByteArray> written;
        bench->devices[0]->setHook([&written](const sim::HostCall& call) {
            if (call.kind == sim::Call::Set && call.parameter != "buffer_policy")
                written << call.parameter;
            return call.kind != sim::Call::Set || call.parameter != "buffer_policy";
        });
        for (const char* name :
             {"buffer_policy", VN_PRM_IMAGE_DATA_FORMAT, "LUTEnable", "buffer_policy", "LUTEnabel"})
            parameters->addParamCommitToBatch(QString::fromLatin1(name));
        QCOMPARE(parameters->findParam(QStringLiteral("LUTEnable"), false)->value.toInt(), 1); // not lost by looking
        QVERIFY(!parameters->endCommitBatch(CommitRefreshGuiChanged));
        QCOMPARE(written, (QVector<QByteArray>{VN_PRM_IMAGE_DATA_FORMAT, "LUTEnable"}));
        QCOMPARE(policy->value.toInt(), 1); // what the camera has
        QVERIFY(parameters->endCommitBatch(CommitRefreshGuiNone));
        QCOMPARE(written.size(), 2);
        bench->devices[0]->setHook({});
        QTRY_COMPARE(announced.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestCameraRegistry)
#include "tst_cameraregistry.moc"
