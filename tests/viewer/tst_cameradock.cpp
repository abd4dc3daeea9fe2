// SPDX-License-Identifier: GPL-3.0-or-later
// Camera list, take-overs, event lines and image view on hand-driven cameras; the buttons are really pressed.
#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include <vnCore/vnCore.h>

#include "CameraDock.h"
#include "CameraEvents.h"
#include "CameraRegistry.h"
#include "EventLog.h"
#include "HandDrivenCamera.h"
#include "ImageView.h"
#include "TakeOvers.h"

class TestCameraDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char* name : {"CAM-A", "CAM-B"}) {
            sim::CameraScenario scenario;
            scenario.name = QString::fromLatin1(name);
            scenario.id = scenario.name + QStringLiteral("-1");
            m_cameras.push_back(std::make_shared<sim::HandDrivenCamera>(scenario));
            m_cameras.back()->setGated(true);
            CameraRegistry::instance().addDevice(m_cameras.back());
        }
        m_log = std::make_unique<EventLog>();
        m_takeOvers = std::make_unique<TakeOvers>();
        m_events = std::make_unique<CameraEvents>(*m_log, *m_takeOvers);
        m_dock = std::make_unique<CameraDock>(*m_takeOvers, *m_log);
        m_dock->show();
    }
    void cleanup()
    {
        m_dock.reset();
        m_events.reset();
        m_takeOvers.reset();
        CameraRegistry::instance().removeAllDevices();
        m_cameras.clear();
    }

    void opensViewsAndCloses()
    {
        QCOMPARE(states(), QStringList({"closed", "closed"}));
        QVERIFY(!button("btnViewCamera")->isEnabled());
        QSignalSpy selected(m_dock.get(), &CameraDock::selectedCameraChanged);
        press("btnOpenCamera");
        QCOMPARE(states(), QStringList({"open", "closed"}));
        QCOMPARE(selected.size(), 1);
        QCOMPARE(m_dock->selectedCamera(), opened(0));

        press("btnViewCamera");
        QCOMPARE(states(), QStringList({"live", "closed"}));
        QVERIFY(m_cameras[0]->isAcquiring());
        press("btnOpenCamera");
        QCOMPARE(states(), QStringList({"closed", "closed"}));
        QVERIFY(!m_cameras[0]->isAcquiring());
        QCOMPARE(selected.size(), 2);
        QCOMPARE(lines(), QStringList({"CAM-A (CAM-A-1) opened", "CAM-A (CAM-A-1) closed"}));
    }

    void formatIsAppliedAndFollowsTheCamera()
    {
        press("btnOpenCamera");
        auto* box = m_dock->findChild<QComboBox*>("boxCameraFormat");
        QCOMPARE(box->count(), 3);
        QCOMPARE(box->currentData().toInt(), int(VN_FRM_MONO8));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(m_cameras[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), int(VN_FRM_MONO16));
        vnApi_SetParamInt(opened(0), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA, nullptr);
        QTRY_COMPARE(box->currentData().toInt(), int(VN_FRM_TRANSPORT_DATA));

        m_cameras[0]->setHook([](const sim::HostCall& call) { return call.kind != sim::Call::Set; });
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(lines().constLast().contains("refused"), true);
        QCOMPARE(box->currentData().toInt(), int(VN_FRM_TRANSPORT_DATA));
    }

    void takenOverCameraCanOnlyBeClosed()
    {
        press("btnOpenCamera");
        VNCORE_HANDLE camera = opened(0);
        m_takeOvers->setTakenOver(camera, true);
        m_takeOvers->setTakenOver(nullptr, true); // not open
        QCOMPARE(states(), QStringList({"measuring", "closed"}));
        QVERIFY(!button("btnViewCamera")->isEnabled());
        QVERIFY(!m_dock->findChild<QComboBox*>("boxCameraFormat")->isEnabled());
        QVERIFY(button("btnOpenCamera")->isEnabled());

        press("btnOpenCamera"); // closing forgets the take-over ...
        press("btnOpenCamera"); // ... so that the camera, which has its former handle, is free again
        QCOMPARE(opened(0), camera);
        QCOMPARE(states(), QStringList({"open", "closed"}));

        m_takeOvers->setTakenOver(camera, true);
        m_takeOvers->forgetAll();
        QCOMPARE(states(), QStringList({"open", "closed"}));
        QVERIFY(button("btnViewCamera")->isEnabled());
    }

    void lossAndReturnAreShown()
    {
        press("btnOpenCamera");
        m_cameras[0]->lose();
        QTRY_COMPARE(states(), QStringList({"lost", "closed"}));
        m_cameras[0]->comeBack();
        QTRY_COMPARE(states(), QStringList({"open", "closed"}));
        QCOMPARE(lines(), QStringList({"CAM-A (CAM-A-1) opened", "CAM-A (CAM-A-1) lost", "CAM-A (CAM-A-1) is back"}));

        m_cameras[1]->lose();
        list()->setCurrentItem(list()->topLevelItem(1));
        press("btnOpenCamera");
        QCOMPARE(lines().constLast(), QStringLiteral("CAM-B (CAM-B-1) could not be opened"));
    }

    void silentMeasuredCameraIsReportedOnce()
    {
        using namespace std::chrono_literals;
        press("btnOpenCamera");
        VNCORE_HANDLE camera = opened(0);
        QVERIFY(vnApi_StartAcquisition(camera));
        m_takeOvers->setTakenOver(camera, true);
        m_log->clear();
        const auto check = [&](std::chrono::seconds silence) {
            const auto now = *CameraRegistry::instance().silentSince(camera) + silence;
            m_events->checkFrames(now);
            m_dock->refreshStates(now);
        };
        check(4s);
        QCOMPARE(states()[0], QStringLiteral("measuring"));
        QVERIFY(lines().isEmpty());
        check(5s);
        check(12s);
        QCOMPARE(states()[0], QStringLiteral("silent 12 s"));
        QCOMPARE(lines().size(), 1);
        QVERIFY(lines()[0].contains("no frame for 5 s"));

        receiveFrame(camera);
        check(1s);
        QCOMPARE(states()[0], QStringLiteral("measuring"));
        QCOMPARE(lines().size(), 2);
        check(5s);
        QCOMPARE(lines().size(), 2); // one line with the first
        QVERIFY(lines().constLast().contains("no frame"));
        m_cameras[0]->lose();
        m_cameras[0]->comeBack(); // sends nothing until it is started again
        QTRY_VERIFY(lines().constLast().contains("is back"));
        check(7s);
        QCOMPARE(states()[0], QStringLiteral("silent 7 s"));
        vnApi_StopAcquisition(camera);
    }

    void viewShowsWhatIsMeasuredButNotWhileHidden()
    {
        press("btnOpenCamera");
        VNCORE_HANDLE camera = opened(0);
        QVERIFY(vnApi_StartAcquisition(camera));
        const VN_IMG first = receiveFrame(camera);

        const auto frame = [](const VN_IMG& image) { return QStringLiteral("frame %1").arg(image.frameNumber); };
        ImageView view;
        ImageView witness; // stays visible
        for (ImageView* each : {&view, &witness}) {
            each->setCamera(camera);
            each->resize(300, 200);
            each->show();
            QTRY_VERIFY(each->caption().contains(frame(first)));
        }
        QVERIFY(view.caption().contains("Mono 8"));
        view.hide();
        const VN_IMG second = receiveFrame(camera);
        QCOMPARE(second.frameNumber, first.frameNumber + 1); // looking took none
        QTRY_VERIFY(witness.caption().contains(frame(second)));
        QVERIFY(view.caption().contains(frame(first)));
        view.show();
        QTRY_VERIFY(view.caption().contains(frame(second)));
        vnApi_StopAcquisition(camera);
    }

private:
    QTreeWidget* list() const { return m_dock->findChild<QTreeWidget*>(); }
    QPushButton* button(const char* name) const { return m_dock->findChild<QPushButton*>(QString::fromLatin1(name)); }
    void press(const char* name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    static VNCORE_HANDLE opened(int index) { return CxCameraManager::instance()->openedCameras().value(index); }

    QStringList states() const
    {
        QStringList result;
        for (int row = 0; row < list()->topLevelItemCount(); ++row) {
            result.append(list()->topLevelItem(row)->text(2));
        }
        return result;
    }

    QStringList lines() const
    {
        QStringList result;
        for (int row = 0; row < m_log->rowCount(); ++row) {
            result.append(m_log->index(row, EventLog::TextColumn).data().toString());
        }
        return result;
    }

    VN_IMG receiveFrame(VNCORE_HANDLE camera)
    {
        m_cameras[0]->release();
        VN_IMG image{};
        image.size = sizeof image;
        const bool received = vnApi_GetImage(camera, 5000, &image, nullptr, true);
        Q_ASSERT(received);
        return received ? image : VN_IMG{};
    }

    std::vector<std::shared_ptr<sim::HandDrivenCamera>> m_cameras;
    std::unique_ptr<EventLog> m_log;
    std::unique_ptr<TakeOvers> m_takeOvers;
    std::unique_ptr<CameraEvents> m_events;
    std::unique_ptr<CameraDock> m_dock;
};

QTEST_MAIN(TestCameraDock)
#include "tst_cameradock.moc"
