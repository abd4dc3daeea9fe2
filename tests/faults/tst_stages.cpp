// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras that are lost, closed, opened anew under their handle, added or started by a program at every stage of a
// measurement and in every box and dialog: table and records agree with the opened cameras afterwards, every camera has
// its parameters back, no worker is left and the form measures again. A report that is being written gets complete.
#include <vnCore/CxCameraManager.h>
#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "form/RowCells.h"
#include "FormBench.h"
#include "NaiveEvaluator.h"
#include "Table.h"

namespace {

using Event = void (*)(FormBench&);
void lose(FormBench& bench)
{
    bench.cameras[0]->lose();
}
const std::pair<const char*, Event> events[] = {
    {"lost", lose},
    {"lost and back", [](FormBench& bench) { lose(bench), bench.cameras[0]->comeBack(); }},
    {"closed", [](FormBench& bench) { bench.close(0); }},
    {"all closed", [](FormBench& bench) { bench.close(0), bench.close(1); }},
    {"lost and closed", [](FormBench& bench) { lose(bench), bench.close(0); }},
    {"opened anew", [](FormBench& bench) { bench.close(0), bench.open(0); }},
    {"all opened anew", [](FormBench& bench) { bench.close(0), bench.close(1), bench.open(0), bench.open(1); }},
    {"started or stopped", [](FormBench& bench) { bench.measureButton(0)->click(); }},
    {"another opened", [](FormBench& bench) { bench.addCamera(); }},
    {"acquiring for the host",
     [](FormBench& bench) { CameraRegistry::instance().startHostAcquisition(bench.handle(0)); }},
    {"there at a tick", [](FormBench& bench) { bench.tick(); }},
};

/// Threads of this process that are workers of a measurement.
int workers()
{
    int count = 0;
    for (const QString& task : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile name(QStringLiteral("/proc/self/task/%1/comm").arg(task));
        count += name.open(QIODevice::ReadOnly) && name.readAll().startsWith("CxAcquisition");
    }
    return count;
}

} // namespace

class StagesTest : public QObject
{
    Q_OBJECT

public:
    enum Stage
    {
        BeforeFirstFrame,
        InImageWait,
        WhileStopping, ///< the worker has been told to end and has not yet
        StartingBox,
        StoppingBox,
        FailureBox,
        FailureBoxOfAnother,
        ReportDialog,
        GraphDialog,
        SetupDialog,
        WritingReport
    };
    Q_ENUM(Stage)

private Q_SLOTS:
    void cameraEvents_data()
    {
        const Table<int, int, int> row("stage", "event", "mode");
        const auto stages = QMetaEnum::fromType<Stage>();
        for (int stage = 0; stage < stages.keyCount(); ++stage) {
            for (int event = 0; event < int(std::size(events)); ++event) {
                for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
                    if (mode == MeasModeDataThroughput || (stage != ReportDialog && stage != WritingReport))
                        row(QByteArray(stages.key(stage)) + ", " + events[event].first + ", mode " +
                                QByteArray::number(mode),
                            stage, event, mode);
                }
            }
        }
    }

    void cameraEvents()
    {
        QFETCH(int, stage);
        QFETCH(int, event);
        QFETCH(int, mode);
        const CriticalLines quiet;
        FormBench bench(2, mode);
        bench.form->resize(690, 900);                       // room for an area of each camera
        const auto before = bench.cameras[0]->parameters(); // all cameras are of one kind
        const QTemporaryDir directory;
        bool struck = false;
        {
            DialogRobot robot;
            robot.fileName = directory.filePath(QStringLiteral("file.png"));
            robot.answer = [](QDialog* setup) {
                auto* modes = setup->findChild<QComboBox*>();
                modes->setCurrentIndex(1 - modes->currentIndex());
                setup->accept();
            };
            reach(Stage(stage), bench, robot, [&] {
                if (!std::exchange(struck, true))
                    events[event].second(bench);
            });
            const QByteArray name = events[event].first;
            QVERIFY(stage != SetupDialog || (bench.form->measMode == mode) == name.startsWith("started"));
            if (stage == StartingBox && name.endsWith("anew"))
                QVERIFY(!bench.cameras[0]->isAcquiring()); // the one that was to be started is gone
            stopAll(bench);
            if (stage == StartingBox && name.startsWith("started"))
                QCOMPARE(robot.seen, QStringList()); // that it measures already is no failure
        }
        QVERIFY(struck);
        CameraRegistry::instance().stopHostAcquisition(bench.handle(0));
        bench.cameras[0]->comeBack();
        bench.tick();
        checkAtRest(bench);

        bench.cameras[0]->setHook([gate = std::make_shared<FormBench::Gate>()](const sim::HostCall& call) {
            return gate->pass(call.kind);
        });
        for (const char* status : {"Testing", "Stopped"}) {
            bench.press("btnStartAll");
            QStringList texts = bench.columnTexts(statusColumn);
            texts.removeDuplicates();
            QCOMPARE(texts, bench.table()->rowCount() > 0 ? QStringList(status) : QStringList());
        }
        checkAtRest(bench);
        for (const auto& camera : bench.cameras)
            QCOMPARE(camera->parameters(), before);
    }

private:
    /// Makes the form get there and strikes.
    static void reach(Stage stage, FormBench& bench, DialogRobot& robot, const std::function<void()>& strike)
    {
        const auto strikeSoon = [&] { QMetaObject::invokeMethod(bench.form.get(), strike, Qt::QueuedConnection); };
        if (stage >= FailureBox && stage <= SetupDialog)
            robot.inside = [&](QDialog*) { strike(); };
        std::atomic<bool> waiting{false};
        const auto waitUntilStopped = [&, record = &bench.record(0)](const sim::HostCall& call) {
            if (call.kind != sim::Call::Wait)
                return true;
            for (waiting = true; !record->stopRequested;)
                QThread::msleep(1);
            if (stage == WhileStopping) { // no other thread can do more than that before the stop is over
                lose(bench);
                strikeSoon();
            }
            return false;
        };

        switch (stage) {
        case BeforeFirstFrame:
            bench.press("btnStartAll");
            strike();
            break;
        case InImageWait:
        case WhileStopping:
            bench.cameras[0]->setHook(waitUntilStopped);
            bench.press("btnStartAll");
            QTRY_VERIFY(waiting);
            if (stage == InImageWait)
                strike();
            stopAll(bench);
            break;
        case StoppingBox:
            bench.measureButton(0)->click();
            [[fallthrough]];
        case StartingBox:
            strikeSoon();
            bench.measureButton(0)->click();
            break;
        case FailureBox:
        case FailureBoxOfAnother:
            bench.failStarts(stage == FailureBox ? 0 : 1);
            bench.press("btnStartAll");
            bench.gates[stage == FailureBox ? 0 : 1]->failing = sim::Call::Wait;
            break;
        case GraphDialog:
            QMetaObject::invokeMethod(bench.form.get(), "onBtnExport", Q_ARG(int, ExportToFile));
            break;
        case SetupDialog:
            bench.press("btnSetup");
            break;
        case WritingReport:
            bench.measureButton(1)->click();
            robot.duringReport = [&](QProgressDialog*) {
                QVERIFY(!bench.record(0).mutex.tryLock());
                strike();
            };
            [[fallthrough]];
        case ReportDialog:
            addFrames(bench.record(0), bench.nowUs - 1000, bench.nowUs, 10, 1000);
            const QByteArray whole = writtenReport(bench.record(0), bench.nowUs - 20000000, bench.nowUs);
            bench.exportButton(0)->click();
            QFile report(robot.fileName);
            QVERIFY(report.open(QIODevice::ReadOnly) || stage == ReportDialog); // its camera may be gone
            QVERIFY(stage == ReportDialog || report.readAll() == whole);
            QVERIFY(stage != ReportDialog || !report.isOpen() || !bench.record(0).isMeasuring());
        }
        QCoreApplication::processEvents();
    }

    static void stopAll(FormBench& bench)
    {
        for (int row = 0; row < bench.table()->rowCount(); ++row) {
            if (bench.form->lineDataMap[cameraOf(bench.measureButton(row))]->isMeasuring())
                bench.measureButton(row)->click();
        }
        if (bench.child<QPushButton>("btnStartAll")->text() == QLatin1String("Stop All"))
            bench.press("btnStartAll");
    }

    static void checkAtRest(const FormBench& bench)
    {
        QTRY_COMPARE(workers(), 0); // a joined thread may still be on its way out
        auto opened = CxCameraManager::instance()->openedCameras();
        QList<VNCORE_HANDLE> rows;
        for (int row = 0; row < bench.table()->rowCount(); ++row)
            rows.append(cameraOf(bench.measureButton(row)));
        QCOMPARE(rows, opened);
        QCOMPARE(bench.areas().size(), opened.size());
        std::sort(opened.begin(), opened.end());
        QCOMPARE(bench.form->lineDataMap.keys(), opened);
        for (const CxCameraLineData* record : qAsConst(bench.form->lineDataMap))
            QVERIFY(!record->isMeasuring());
    }
};

QTEST_MAIN(StagesTest)
#include "tst_stages.moc"
