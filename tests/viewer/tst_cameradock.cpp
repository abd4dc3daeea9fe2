// SPDX-License-Identifier: GPL-3.0-or-later
// Camera list, take-overs, event lines and image view on hand-driven cameras; the buttons are really pressed.
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "CameraBench.h"
#include "CameraDock.h"
#include "CameraEvents.h"
#include "CameraList.h"
#include "EventLog.h"
#include "ImageView.h"
#include "ItemTexts.h"
#include "TakeOvers.h"

using namespace std::chrono_literals;

namespace {

const QString closed("closed, closed, &Open");
const QString opened("open, closed, Clos&e, &Start view, Mono 8");
const QString measuring("measuring, closed, Clos&e");

/// The list of two cameras, as a person sees and uses it.
struct Desk : CameraBench
{
    Desk() : CameraBench(2)
    {
        for (const auto& each : devices)
            each->setGated(true);
        dock.show();
    }

    static VNCORE_HANDLE camera() { return CxCameraManager::instance()->openedCameras().value(0); }
    QComboBox* formats() const { return dock.findChild<QComboBox*>("boxCameraFormat"); }
    void press(const char* name) const
    {
        QTest::mouseClick(dock.findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    /// The states of the cameras, then the controls that can be used.
    QString shown() const
    {
        QStringList texts{list->topLevelItem(0)->text(1), list->topLevelItem(1)->text(1)};
        for (const auto* button : dock.findChildren<QPushButton*>())
            texts.append(button->isEnabled() ? button->text() : QString());
        texts.append(formats()->isEnabled() ? formats()->currentText() : QString());
        texts.removeAll({});
        return texts.join(QStringLiteral(", "));
    }
    QStringList lines() const { return columnTexts(log, EventLog::TextColumn); }
    void receiveFrame()
    {
        devices[0]->release();
        QVERIFY(receive(camera()));
    }

    EventLog log;
    TakeOvers takeOvers;
    CameraEvents events{log, takeOvers};
    CameraDock dock{takeOvers, log};
    CameraList* const list = dock.findChild<CameraList*>();
};

} // namespace

class TestCameraDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensViewsAndCloses()
    {
        Desk desk;
        QCOMPARE(desk.shown(), closed);
        QSignalSpy selected(&desk.dock, &CameraDock::selectedCameraChanged);
        desk.press("btnOpenCamera");
        QCOMPARE(desk.shown(), opened);
        QCOMPARE(selected.takeFirst()[0].value<VNCORE_HANDLE>(), desk.camera());
        desk.press("btnViewCamera");
        QCOMPARE(desk.shown(), QString("live, closed, Clos&e, &Stop view, Mono 8"));
        QVERIFY(desk.devices[0]->isAcquiring());
        desk.press("btnOpenCamera");
        QCOMPARE(desk.shown(), closed);
        QVERIFY(!desk.devices[0]->isAcquiring());
        QCOMPARE(selected.size(), 1);
        QCOMPARE(desk.lines(), QStringList({"A (A) opened", "A (A) closed"}));
        for (const int device : {1, 0}) { // what is opened by others is shown, but takes no other's place
            CameraRegistry::instance().open(device);
            QCOMPARE(desk.list->selectedDevice(), 1);
        }
    }

    void formatIsAppliedAndFollowsTheCamera()
    {
        Desk desk;
        desk.press("btnOpenCamera");
        QTest::keyClick(desk.formats(), Qt::Key_Down);
        QCOMPARE(desk.devices[0]->parameter(VN_PRM_IMAGE_DATA_FORMAT), int(VN_FRM_MONO16));
        vnApi_SetParamInt(desk.camera(), VN_PRM_IMAGE_DATA_FORMAT, VN_FRM_TRANSPORT_DATA, nullptr);
        QTRY_COMPARE(desk.formats()->currentData().toInt(), int(VN_FRM_TRANSPORT_DATA));
        desk.devices[0]->setHook([](const sim::HostCall& call) { return call.kind != sim::Call::Set; });
        QTest::keyClick(desk.formats(), Qt::Key_Up);
        QVERIFY(desk.lines().constLast().contains("refused"));
        QCOMPARE(desk.formats()->currentData().toInt(), int(VN_FRM_TRANSPORT_DATA));
    }

    void takenOverCameraCanOnlyBeClosed()
    {
        Desk desk;
        desk.press("btnOpenCamera");
        const VNCORE_HANDLE camera = desk.camera();
        desk.takeOvers.setTakenOver(camera, true);
        desk.takeOvers.setTakenOver(nullptr, true); // not open
        QCOMPARE(desk.shown(), measuring);
        desk.press("btnOpenCamera"); // closing forgets the take-over ...
        desk.press("btnOpenCamera"); // ... so that the camera, which has its former handle, is free again
        QCOMPARE(desk.camera(), camera);
        QCOMPARE(desk.shown(), opened);
        desk.takeOvers.setTakenOver(camera, true);
        QCOMPARE(desk.shown(), measuring);
        desk.takeOvers.forgetAll();
        QCOMPARE(desk.shown(), opened);
    }

    void lossAndReturnAreShown()
    {
        Desk desk;
        desk.press("btnOpenCamera");
        desk.devices[0]->lose();
        QTRY_VERIFY(desk.shown().startsWith("lost, closed, "));
        desk.devices[0]->comeBack();
        QTRY_COMPARE(desk.shown(), opened);
        desk.devices[1]->lose();
        desk.list->setCurrentItem(desk.list->topLevelItem(1));
        desk.press("btnOpenCamera");
        QCOMPARE(desk.lines(),
                 QStringList({"A (A) opened", "A (A) lost", "A (A) is back", "B (B) could not be opened"}));
    }

    void silentMeasuredCameraIsReportedOnce()
    {
        Desk desk;
        desk.press("btnOpenCamera");
        QVERIFY(vnApi_StartAcquisition(desk.camera()));
        desk.takeOvers.setTakenOver(desk.camera(), true);
        desk.log.clear();
        /// The state and the number of lines.
        const auto after = [&desk](std::chrono::seconds silence) {
            const auto now = *CameraRegistry::instance().silentSince(desk.camera()) + silence;
            desk.events.checkFrames(now);
            desk.list->refreshStates(now);
            return QStringLiteral("%1, %2").arg(desk.list->topLevelItem(0)->text(1)).arg(desk.lines().size());
        };
        QCOMPARE(after(4s), QString("measuring, 0"));
        QCOMPARE(after(5s), QString("silent 5 s, 1"));
        QCOMPARE(after(12s), QString("silent 12 s, 1"));
        QVERIFY(desk.lines()[0].contains("no frame for 5 s"));
        desk.receiveFrame();
        QCOMPARE(after(1s), QString("measuring, 2"));
        QCOMPARE(after(5s), QString("silent 5 s, 2")); // one line with the first
        QVERIFY(desk.lines().constLast().contains("no frame"));
        desk.devices[0]->lose();
        desk.devices[0]->comeBack(); // sends nothing until it is started again
        QTRY_VERIFY(desk.lines().constLast().contains("is back"));
        QVERIFY(after(7s).startsWith("silent 7 s"));
        QVERIFY(after(1s).startsWith("measuring"));
        desk.takeOvers.setTakenOver(desk.camera(), false);
        after(9s); // nobody watches it any more
        QVERIFY(desk.lines().constLast().contains("given back"));
    }

    void lostFramesAreToldNowAndThen()
    {
        CameraBench bench(1, 0.5);
        EventLog log;
        TakeOvers takeOvers;
        CameraEvents events(log, takeOvers);
        const VNCORE_HANDLE camera = bench.registry.open(0);
        QVERIFY(vnApi_StartAcquisition(camera));
        log.clear();
        const auto linesAfter = [&](std::chrono::seconds time) {
            for (int i = 0; i < 20; ++i)
                bench.receive(camera);
            events.checkLosses(CameraEvents::TimePoint() + time);
            return columnTexts(log, EventLog::TextColumn);
        };
        const QStringList first = linesAfter(1s);
        QCOMPARE(first.size(), 1);
        QCOMPARE(linesAfter(10s), first);
        const QStringList both = linesAfter(11s);
        QCOMPARE(both.size(), 2);
        const auto count = [](const QString& line) { return line.section(' ', 4, 4).toULongLong(); };
        QCOMPARE(count(both[0]) + count(both[1]), bench.devices[0]->lostFrames()->onTheWay);
    }

    void deliveriesAreCountedAndSorted()
    {
        Desk desk;
        const auto shown = [&desk](int row) {
            QStringList texts;
            for (const int column : {0, 2, 3, 4})
                texts.append(desk.list->topLevelItem(row)->text(column));
            return texts.join(' ');
        };
        desk.press("btnOpenCamera");
        desk.list->setCurrentItem(desk.list->topLevelItem(1));
        desk.press("btnOpenCamera");
        const VNCORE_HANDLE last = CxCameraManager::instance()->openedCameras().value(1);
        QVERIFY(vnApi_StartAcquisition(last));
        const auto begin = *CameraRegistry::instance().silentSince(last);
        desk.list->refreshStates(begin);
        desk.devices[1]->release();
        QVERIFY(desk.receive(last));
        desk.list->refreshStates(begin + 500ms); // too soon for a rate
        QCOMPARE(shown(1), QString("B   0"));
        const double rate = double(desk.image.dataBytes) / 2e6;
        desk.list->refreshStates(begin + 2s);
        QCOMPARE(shown(0), QString("A   "));
        QCOMPARE(shown(1), QStringLiteral("B %1 0.5 0").arg(std::round(rate * 10) / 10));
        desk.list->sortByColumn(3, Qt::DescendingOrder);
        QCOMPARE(shown(0).left(1), QString("B"));
        const QRect state = desk.list->visualItemRect(desk.list->currentItem())
                                .translated(desk.list->columnViewportPosition(1) + 2, 0);
        QTest::mouseClick(desk.list->viewport(), Qt::LeftButton, {}, state.topLeft() + QPoint(2, 2));
        QTest::keyClick(desk.list, Qt::Key_A); // names are searched, wherever the click was
        QCOMPARE(desk.list->currentItem()->text(0), QString("A"));
        QCOMPARE(desk.dock.selectedCamera(), desk.camera());
    }

    void viewShowsWhatIsMeasuredButNotWhileHidden()
    {
        Desk desk;
        desk.press("btnOpenCamera");
        QVERIFY(vnApi_StartAcquisition(desk.camera()));
        desk.receiveFrame();
        ImageView view;
        ImageView witness; // stays visible
        for (ImageView* each : {&view, &witness}) {
            each->setCamera(desk.camera());
            each->resize(each == &view ? QSize(300, 200) : QSize(600, 400));
            each->show();
            QTRY_VERIFY(each->caption().contains("Mono 8") && each->caption().contains("frame 0"));
        }
        view.hide();
        desk.receiveFrame();
        QCOMPARE(desk.image.frameNumber, 1U); // looking took none
        QTRY_VERIFY(witness.caption().contains("frame 1"));
        QVERIFY(view.caption().contains("frame 0"));
        view.show();
        QTRY_VERIFY(view.caption().contains("frame 1"));
        view.resize(witness.size());
        QTRY_COMPARE(view.grab().toImage(), witness.grab().toImage());
        view.setCamera(nullptr);
        ImageView unused;
        unused.resize(view.size());
        QCOMPARE(view.grab().toImage(), unused.grab().toImage()); // nothing is left of the camera
    }
};

QTEST_MAIN(TestCameraDock)
#include "tst_cameradock.moc"
