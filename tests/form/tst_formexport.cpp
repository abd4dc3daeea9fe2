// SPDX-License-Identifier: GPL-3.0-or-later
// The exports by the real buttons: pictures, reports, dialogs, full disks.
#include <ctime>

#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "Files.h"
#include "FormBench.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Report.h"
#include "Table.h"

namespace {

double secondsSince(std::clock_t start)
{
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

const bool underValgrind = qEnvironmentVariableIsSet("KESTROVA_TEST_SCALE"); // nothing is in time there

} // namespace

class FormExportTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(dir.isValid()); }

    void picture()
    {
        // start: what the file begins with
        const Rows<int, QString, QByteArray, int> rows{{1, "", "", 0},
                                                       {2, "graph.png", "\x89PNG", 1},
                                                       {2, "graph.jpg", "\xff\xd8\xff", 1},
                                                       {2, "graph.bmp", "BM", 1},
                                                       {2, "other", "\x89PNG", 1},
                                                       {2, "graph.v2", "", 2}, // told
                                                       {3, "", "", 0}};
        for (const auto& [type, name, start, dialogs] : rows) {
            FormBench bench(1);
            bench.form->resize(803, 517);
            auto* button = bench.child<CxExportToolButton>("btnExport");
            button->setExportType(ExExportType(type == 2 ? 1 : 3));
            bench.form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(bench.form.get()));
            if (type < 3) {
                QTest::keyClick(bench.form.get(), type == 1 ? Qt::Key_C : Qt::Key_S,
                                Qt::ControlModifier | Qt::AltModifier);
            }
            QGuiApplication::clipboard()->clear();
            DialogRobot robot;
            robot.fileName = dir.filePath(name);

            QTest::keyClick(bench.form.get(), Qt::Key_E, Qt::ControlModifier);
            QCOMPARE(robot.seen.size(), dialogs);
            QCOMPARE(bench.host.directory, type == 2 ? dir.path() : QString());
            QImage image = QGuiApplication::clipboard()->image();
            QCOMPARE(image.format(), type == 1 ? QImage::Format_RGB888 : QImage::Format_Invalid);
            if (type == 2) {
                robot.fileName += QLatin1String(name.contains('.') ? "" : ".png");
                QCOMPARE(QFile::exists(robot.fileName), !start.isEmpty());
                QVERIFY(start.isEmpty() || readFile(robot.fileName).startsWith(start));
                image.load(robot.fileName);
            }
            if (type == 1 || !start.isEmpty()) {
                QCOMPARE(image.size(), bench.plot()->size());
                QVERIFY(!image.hasAlphaChannel());
                QVERIFY(image.pixelColor(1, 1).lightness() < 60); // the plot's dark ground, not nothing
            }
        }
    }

    void allAreasAreSaved()
    {
        FormBench bench(5);
        bench.form->resize(803, 460); // two areas
        QCoreApplication::processEvents();
        for (int i = 0; i < 5; ++i)
            addFrames(bench.record(i), bench.nowUs - 10 * second, bench.nowUs, second, 2000);
        bench.tick();
        const QStringList inView = bench.areas();
        QCOMPARE(inView.size(), 2);
        DialogRobot robot;
        robot.fileName = path("all.png");
        QTest::keyClick(bench.form.get(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(bench.areas(), inView);
        const QImage image(robot.fileName);
        QCOMPARE(image.height(), bench.plot()->height() / 2 * 5);
        for (int area = 0; area < 5; ++area) { // each with its curve
            const QImage part = image.copy(0, image.height() / 5 * area, image.width(), image.height() / 5);
            int orange = 0;
            for (int x = 0; x < part.width(); ++x)
                for (int y = 0; y < part.height(); ++y)
                    orange += qRed(part.pixel(x, y)) > qBlue(part.pixel(x, y)) + 100;
            QVERIFY2(orange > 50, qPrintable(QString::number(area)));
        }
    }

    void reportOfTheVisibleRange()
    {
        const QByteArray first = "7,4,4096,4000,1000,1024,0,0\n";
        const QByteArray last = "7,12,4096,12000,1000,512,1000,100\n";
        const Rows<double, double, QByteArray> rows{{-20.0, 0.0, first + last},
                                                    {-20.0, -9.999995, first}, // bounds within the frame
                                                    {-9.999995, 0.0, last},
                                                    {-9.0, 0.0, ""}}; // a frame in the margin only
        for (const auto& [lower, upper, expected] : rows) {
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
            if (expected.isEmpty()) { // it asks first
                robot.agrees = false;
                QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
                QCOMPARE(robot.seen, QStringList());
                robot.agrees = true;
            }
            QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
            QVERIFY(reported);
            QCOMPARE(readFile(robot.fileName), reportHeader + expected);
            QCOMPARE(robot.seen.value(1),
                     QStringLiteral("Data throughput monitor|Exporting <b>%1</b>, \"x\"\n&amp; (%2) data"));
            QString error; // the command line tool's report of all frames is the same
            QVERIFY(writeReport(record, path("tool.csv"), &error));
            QVERIFY(expected != first + last || readFile(path("tool.csv")) == readFile(robot.fileName));
        }
    }

    void reportThatIsNotWritten()
    {
        const QString choice = QStringLiteral("Select Output File for Measured Data|/|CSV files (*.csv)");
        const QString progress = QStringLiteral("Data throughput monitor|Exporting A (1) data");
        const Rows<bool, QString, QStringList, QStringList> rows{
            {false, "", {"Export Measured Data|No measured data to export."}, {}},
            {true, "", {choice}, {}}, // cancelled
            {true, "/no/such/directory/report.csv", {choice, progress}, {}},
            {true,
             "/dev/full",
             {choice, progress,
              "Export Measured Data|The report is not complete.\n/dev/full: No space left on device"},
             {"CsvReportWriter::write(): Cannot write the report"}}};
        for (const auto& [measured, fileName, told, logged] : rows) {
            FormBench bench(1);
            bench.host.directory = QDir::rootPath();
            if (measured)
                appendFrame(bench.record(0), bench.nowUs, {0, 1000});
            CriticalLines lines;
            DialogRobot robot;
            robot.fileName = fileName;
            QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
            QCOMPARE(robot.seen, told);
            QCOMPARE(lines.texts(), logged);
            QVERIFY(!fileName.isEmpty() || bench.host.directory == QDir::rootPath());
        }
    }

    void closingTheProgressCancels()
    {
        FormBench bench(1);
        std::vector<quint64> ticks(6000000); // half a second of writing
        for (quint64& tick : ticks)
            tick = quint64(&tick - ticks.data()) * 100;
        appendFrame(bench.record(0), bench.nowUs - 10 * second, ticks);
        DialogRobot robot;
        robot.fileName = path("cancelled.csv");
        std::clock_t since = 0; // processor time: other tests may run beside it
        int beats = 0;
        double closedAfter = 0.0;
        QTimer timer;
        robot.duringReport = [&](QProgressDialog* dialog) {
            since = std::clock();
            connect(&timer, &QTimer::timeout, dialog, [&, dialog] {
                if (++beats == 5) {
                    dialog->close();
                    closedAfter = secondsSince(std::exchange(since, std::clock()));
                }
            });
            timer.start(20);
        };
        QTest::mouseClick(bench.exportButton(0), Qt::LeftButton);
        QCOMPARE(beats, 5); // the sixth would have come had the report gone on
        QVERIFY(underValgrind || closedAfter < 0.5);
        QVERIFY(underValgrind || secondsSince(since) < 0.5);
        QVERIFY(readFile(robot.fileName).startsWith(reportHeader));
        QCOMPARE(robot.seen.size(), 2); // file dialog and progress, no complaint
    }

private:
    QString path(const char* name) const { return dir.filePath(QLatin1String(name)); }

    QTemporaryDir dir;
};

QTEST_MAIN(FormExportTest)
#include "tst_formexport.moc"
