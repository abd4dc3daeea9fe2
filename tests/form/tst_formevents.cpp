// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras and users that do anything at any moment, also while a box is open: nothing crashes, rows, records and plot
// areas are those of the opened cameras, and in the end every camera has its parameters back.
#include <vnCore/CxCameraManager.h>
#include <vnCore/vnApi.h>

#include "DialogRobot.h"
#include "form/RowCells.h"
#include "FormBench.h"
#include "RandomRecord.h"
#include "RandomUser.h"
#include "Table.h"

/// 10,000 events in all; KESTROVA_TEST_SCALE is a percentage.
static int eventCount()
{
    bool given = false;
    const int percent = qEnvironmentVariableIntValue("KESTROVA_TEST_SCALE", &given);
    return 2500 * (given ? percent : 100) / 100;
}

class FormEventsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anythingAtAnyTime_data()
    {
        const Table<int> row("seed");
        for (int seed = 1; seed <= 4; ++seed)
            row(QByteArray::number(seed), seed);
    }
    void anythingAtAnyTime()
    {
        QFETCH(int, seed);
        user = RandomUser(unsigned(seed));
        CriticalLines quiet;
        FormBench bench(3);
        std::vector<QMap<QString, int>> before;
        bench.form->maxSamples = 1000;
        bench.form->layout()->setSizeConstraint(QLayout::SetNoConstraint); // as narrow as a host may make it
        bench.plot()->setMinimumSize(0, 0);
        for (const auto& camera : bench.cameras)
            before.push_back(camera->parameters());
        const QTemporaryDir reports;
        DialogRobot robot;
        robot.fileName = reports.filePath(QStringLiteral("report.csv"));
        robot.inside = [&](QDialog*) { doAnything(bench); };
        robot.duringReport = [&](QProgressDialog*) {
            for (int events = below(40); events > 0; --events)
                doAnything(bench);
        };
        robot.answer = [this](QDialog* setup) { below(2) ? setup->accept() : setup->reject(); };
        for (int i = 0; i < eventCount(); ++i) {
            // Now, or inside whatever processes events next: a progress box, a dialog, the loop below.
            if (below(2))
                doAnything(bench);
            else
                QMetaObject::invokeMethod(
                    bench.form.get(), [&] { doAnything(bench); }, Qt::QueuedConnection);
            if (below(4) == 0)
                QCoreApplication::processEvents();
            checkRecords(bench);
            checkRanges(bench);
            if (QTest::currentTestFailed())
                return;
        }
        QCoreApplication::processEvents();
        for (const auto& camera : bench.cameras)
            camera->comeBack();
        for (const VNCORE_HANDLE hCam : bench.handles)
            CameraRegistry::instance().stopHostAcquisition(hCam);
        bench.form.reset();
        for (size_t i = 0; i < before.size(); ++i) {
            QVERIFY(!bench.cameras[i]->isAcquiring());
            auto now = bench.cameras[i]->parameters();
            for (auto* parameters : {&now, &before[i]})
                parameters->remove(QStringLiteral(VN_PRM_IMAGE_DATA_FORMAT)); // chosen by the user
            QCOMPARE(now, before[i]);
        }
    }

private:
    void doAnything(FormBench& bench)
    {
        const int camera = below(3);
        const VNCORE_HANDLE hCam = bench.handle(camera);
        auto& registry = CameraRegistry::instance();
        const std::function<void()> events[] = {
            [&] { bench.open(camera); },
            [&] { bench.open(camera); },
            [&] { bench.close(camera); },
            [&] { bench.cameras[size_t(camera)]->lose(); },
            [&] { bench.cameras[size_t(camera)]->comeBack(); },
            [&] { registry.startHostAcquisition(hCam); },
            [&] { registry.stopHostAcquisition(hCam); },
            [&] { vnApi_SetParamInt(hCam, VN_PRM_IMAGE_DATA_FORMAT, below(2), nullptr); },
            [&] { bench.loadMode(below(10) ? below(2) : 7); },
            [&] { bench.form->setVisible(below(2)); },
            [&] { bench.form->resize(below(1500), below(2) ? below(1000) : 0); },
            [&] { bench.host.options.detailLevel = 1 + below(5); },
            [&] { bench.nowUs += below(3000000), bench.deliverFrames(camera, below(20)); },
            [&] { bench.tick(); },
            [&] { bench.tick(); },
            [&] { openUnplotted(bench, camera); },
            [&] { exportReport(bench, camera); },
            [&] { bench.child<QPushButton>("resetPan")->click(); },
        };
        const size_t event = size_t(below(24));
        if (event < std::size(events))
            events[event]();
        else
            user.act(*bench.form);
    }

    /// A camera opens while no plot is wanted.
    static void openUnplotted(FormBench& bench, int camera)
    {
        for (int row = 0; row < bench.table()->rowCount(); ++row) {
            QCheckBox* box = bench.graphBox(row);
            if (box && box->isChecked())
                box->click();
        }
        bench.open(camera);
    }

    static void exportReport(FormBench& bench, int row)
    {
        QToolButton* button = bench.exportButton(row);
        if (!button)
            return;
        CxCameraLineData& record = *bench.form->lineDataMap[cameraOf(button)];
        if (record.mutex.tryLock()) { // else a report of it is being written
            if (!record.measuring)
                appendFrame(record, 0, {0, 1000});
            record.mutex.unlock();
        }
        button->click();
    }

    void checkRecords(const FormBench& bench)
    {
        if (measureColumn(bench.form->measMode) < 0)
            return;
        auto opened = CxCameraManager::instance()->openedCameras();
        const auto& records = bench.form->lineDataMap;
        QList<VNCORE_HANDLE> rows, plotted, areas;
        for (int row = 0; row < bench.table()->rowCount(); ++row) {
            rows.append(cameraOf(bench.graphBox(row)));
            const CxCameraLineData* record = records.value(rows.last());
            QVERIFY(record);
            if (record->plotEnabled)
                plotted.append(rows.last());
            const QString look = bench.look().section(QLatin1Char('|'), row, row);
            QVERIFY(!record->isMeasuring() || look == QStringLiteral("Testing Stop"));
            const bool hostAcquires = CxCameraManager::instance()->isCameraRunning(rows.last());
            QCOMPARE(look.startsWith(QStringLiteral("Acq")), hostAcquires);
            QCOMPARE(bench.measureButton(row)->isEnabled(), !hostAcquires);
        }
        QCOMPARE(rows, opened);
        for (const QCPAxisRect* rect : bench.plot()->axisRects())
            areas.append(cameraOf(rect));
        const int fitting = std::max(1, bench.plot()->height() / 110);
        QVERIFY(areas.size() == std::min(fitting, plotted.size()) || areas.size() == 1); // one may be alone
        QCOMPARE(areas, plotted.mid(std::max(0, plotted.indexOf(areas.value(0))), areas.size()));
        QCOMPARE(bench.plot()->plotLayout()->rowCount(), 2 * areas.size()); // no gap
        QCOMPARE(bench.plot()->isHidden(), areas.isEmpty() && !rows.isEmpty());
        QCOMPARE(bench.child("btnStartAll")->isEnabled(), !rows.isEmpty());
        const auto measures = [](const CxCameraLineData* record) { return record->isMeasuring(); };
        QVERIFY(!bench.child("btnSetup")->isEnabled() || std::none_of(records.begin(), records.end(), measures));
        std::sort(opened.begin(), opened.end());
        QCOMPARE(records.keys(), opened);
    }

    static void checkRanges(const FormBench& bench)
    {
        for (const QCPAxisRect* area : bench.plot()->axisRects())
            QCOMPARE(area->axis(QCPAxis::atBottom)->range(),
                     QCPRange(bench.form->timeRangeLower, bench.form->timeRangeUpper));
    }

    int below(int limit) { return user.below(limit); }

    RandomUser user{0};
};

QTEST_MAIN(FormEventsTest)
#include "tst_formevents.moc"
