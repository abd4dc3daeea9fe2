// SPDX-License-Identifier: GPL-3.0-or-later
// The exports by the real buttons: pictures, reports, dialogs, full disks, and cameras that come and go meanwhile.
#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "FormBench.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Report.h"
#include "Table.h"

using Action = std::function<void(FormBench&)>;
Q_DECLARE_METATYPE(Action)

namespace {

constexpr qint64 second = 1000000; // microseconds

QByteArray contents(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// The rows of the table as "name status".
QStringList rows(const FormBench& bench)
{
    QStringList texts;
    for (int row = 0; row < bench.table()->rowCount(); ++row)
        texts.append(bench.cell(row, cameraColumn).left(1) + QLatin1Char(' ') + bench.status(row));
    return texts;
}

} // namespace

class FormExportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(m_dir.isValid()); }

    void picture_data()
    {
        // start: what the file begins with
        const Table<int, QString, QByteArray> row("type", "name", "start");
        row("clipboard", 1, {}, {});
        row("png", 2, "graph.png", "\x89PNG");
        row("jpeg", 2, "graph.jpg", "\xff\xd8\xff");
        row("bitmap", 2, "graph.bmp", "BM");
        row("no suffix", 2, "graph", {});
        row("unknown type", 3, {}, {});
    }
    void picture()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(QByteArray, start);
        FormBench bench(1);
        bench.form->resize(803, 517);
        auto* button = bench.child<CxExportToolButton>("btnExport");
        button->setExportType(ExExportType(type));
        QGuiApplication::clipboard()->clear();
        DialogRobot robot;
        robot.fileName = m_dir.filePath(name);

        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(robot.seen.size(), type == 2 ? 1 : 0);
        QCOMPARE(bench.host.directory, type == 2 ? m_dir.path() : QString());
        QImage image = QGuiApplication::clipboard()->image();
        if (type == 2) {
            QVERIFY(image.isNull());
            QCOMPARE(QFile::exists(robot.fileName), !start.isEmpty());
            QVERIFY(contents(robot.fileName).startsWith(start) || start.isEmpty());
            image.load(robot.fileName);
        }
        if (type == 1)
            QCOMPARE(image.format(), QImage::Format_RGB888);
        if (type == 1 || !start.isEmpty()) {
            QCOMPARE(image.size(), bench.plot()->size());
            QVERIFY(!image.hasAlphaChannel());
            QCOMPARE(image.pixelColor(1, 1).lightness() < 60, true); // the plot's dark ground, not nothing
        }
    }

    void reportOfTheVisibleRange_data()
    {
        const Table<double, double, QByteArray> row("lower", "upper", "lines");
        const QByteArray first = "7,4,4096,4000,1000,1024,0,0\n";
        const QByteArray second = "7,12,4096,12000,1000,512,1000,100\n";
        row("all", -20.0, 0.0, first + second);
        row("upper bound within the frame", -20.0, -9.999995, first);
        row("lower bound within the frame", -9.999995, 0.0, "7,12,4096,12000,1000,512,1000,100\n");
        row("frame in the margin only", -9.0, 0.0, {});
    }
    void reportOfTheVisibleRange()
    {
        QFETCH(double, lower);
        QFETCH(double, upper);
        QFETCH(QByteArray, lines);
        FormBench bench(1);
        CxCameraLineData& record = bench.record(0);
        record.cameraName = QStringLiteral("<b>%1</b>, \"x\"\n&amp; (%2)");
        record.samplePeriod = 4096;
        record.requiredThroughput = 1000;
        record.cameraBufferSize = 1000;
        appendFrame(record, bench.nowUs - 10 * second, {0, 1000, 3000}, 7);
        bench.area(0)->axis(QCPAxis::atBottom)->setRange(lower, upper); // as dragging and the wheel do
        DialogRobot robot;
        robot.fileName = path("report.csv");
        bool reported = false;
        robot.duringReport = [&reported](QProgressDialog* dialog) {
            reported = true;
            QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
            QVERIFY(!dialog->findChild<QPushButton*>()->isVisible());
            QCOMPARE(dialog->findChild<QLabel*>()->textFormat(), Qt::PlainText);
        };
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        QCOMPARE(contents(robot.fileName), reportHeader + lines);
        QVERIFY(reported);
        QCOMPARE(robot.seen.value(1),
                 QStringLiteral("Data throughput monitor|Exporting <b>%1</b>, \"x\"\n&amp; (%2) data"));
    }

    void nothingToExport()
    {
        FormBench bench(1);
        bench.host.directory = QDir::rootPath();
        DialogRobot robot; // cancels file dialogs
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        appendFrame(bench.record(0), bench.nowUs, {0, 1000});
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        QCOMPARE(bench.host.directory, QDir::rootPath());
        QCOMPARE(robot.seen, (QStringList{"Export Measured Data|No measured data to export.",
                                          "Select Output File for Measured Data|/|CSV files (*.csv)"}));
    }

    void eventsWhileDialogsAreOpen_data()
    {
        const Table<bool, QStringList, Action> row("recordStays", "rowsAfter", "action");
        const QStringList both{"A Stopped", "B Stopped"};
        row("timer", true, both, [](FormBench& bench) { bench.tick(); });
        row("its camera closes", false, {"B Stopped"}, [](FormBench& bench) { bench.close(0); });
        row("its camera closes and is opened again", false, {"B Stopped", "A Stopped"}, [](FormBench& bench) {
            bench.close(0);
            bench.open(0);
        });
        row("another one closes", true, {"A Stopped"}, [](FormBench& bench) { bench.close(1); });
        row("another one is opened", true, both + QStringList{"C Stopped"},
            [](FormBench& bench) { bench.addCamera(); });
        row("its camera is lost", true, both, [](FormBench& bench) { bench.cameras[0]->lose(); });
        row("the host acquires", true, {"A Acq", "B Stopped"},
            [](FormBench& bench) { CameraRegistry::instance().startHostAcquisition(bench.handle(0)); });
    }
    /// Row by row twice: while the file dialog is open, and from inside the writing of the report.
    void eventsWhileDialogsAreOpen()
    {
        QFETCH(Action, action);
        QFETCH(bool, recordStays);
        QFETCH(QStringList, rowsAfter);
        for (const bool writing : {false, true}) {
            FormBench bench(2);
            CxCameraLineData& record = bench.record(0);
            for (int i = 0; i < 100; ++i)
                appendFrame(record, bench.nowUs - second + i, {0, 1000, 3000, 3500}, quint64(i));
            const quint64 serial = record.serial;
            const QByteArray whole = writtenReport(record, bench.nowUs - 20 * second, bench.nowUs);
            QString error; // the command line tool's report of all frames is the same
            QVERIFY(writeReport(record, path("tool.csv"), &error));
            QCOMPARE(contents(path("tool.csv")), whole);
            DialogRobot robot;
            robot.fileName = path("events.csv");
            QFile::remove(robot.fileName);
            if (writing) {
                robot.duringReport = [&](QProgressDialog*) {
                    QVERIFY(!record.mutex.tryLock());
                    action(bench);
                    bench.press("btnStartAll"); // the dialog is in front of it, and a program may press all the same
                };
            } else {
                robot.inside = [&](QDialog* dialog) {
                    if (qobject_cast<QFileDialog*>(dialog))
                        action(bench);
                };
            }
            QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
            QCOMPARE(contents(robot.fileName), writing || recordStays ? whole : QByteArray("no file"));
            QCOMPARE(rows(bench), rowsAfter);
            QCOMPARE(bench.areas().size(), rowsAfter.size());
            const CxCameraLineData* now = bench.form->lineDataMap.value(bench.handle(0));
            QCOMPARE(now && now->serial == serial, recordStays);
            CameraRegistry::instance().stopHostAcquisition(bench.handle(0));
            bench.cameras[0]->comeBack();
        }
    }

    void closingTheProgressCancels()
    {
        FormBench bench(1);
        for (int i = 0; i < 200000; ++i)
            appendFrame(bench.record(0), bench.nowUs, {0, 1000, 3000});
        DialogRobot robot;
        robot.fileName = path("cancelled.csv");
        robot.duringReport = [](QProgressDialog* dialog) { dialog->close(); };
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        QCOMPARE(contents(robot.fileName), QByteArray(reportHeader));
        QCOMPARE(robot.seen.size(), 2); // file dialog and progress, no complaint
    }

    void reportThatCannotBeWritten_data()
    {
        const Table<QString, QStringList, QStringList> row("fileName", "told", "logged");
        row("full disk", "/dev/full",
            {"Export Measured Data|The report is not complete.\n"
             "/dev/full: No space left on device"},
            {"CsvReportWriter::write(): Cannot write the report"});
        row("no such directory", "/no/such/directory/report.csv", {}, {});
    }
    void reportThatCannotBeWritten()
    {
        QFETCH(QString, fileName);
        FormBench bench(1);
        appendFrame(bench.record(0), bench.nowUs, {0, 1000});
        CriticalLines lines;
        DialogRobot robot;
        robot.fileName = fileName;
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        QTEST(QStringList(robot.seen.mid(2)), "told");
        QTEST(lines.texts(), "logged");
    }

private:
    QString path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }

    QTemporaryDir m_dir;
};

QTEST_MAIN(FormExportTest)
#include "tst_formexport.moc"
