// SPDX-License-Identifier: GPL-3.0-or-later
// The exports by the real buttons: pictures, reports, dialogs, full disks.
#include <ctime>

#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "FormBench.h"
#include "NaiveEvaluator.h"
#include "RandomRecord.h"
#include "Report.h"
#include "Table.h"

namespace {

constexpr qint64 second = 1000000; // microseconds

QByteArray contents(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

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
        QString error; // the command line tool's report of all frames is the same
        QVERIFY(writeReport(record, path("tool.csv"), &error));
        QVERIFY(lower > -20.0 || upper < 0.0 || contents(path("tool.csv")) == contents(robot.fileName));
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
        QVERIFY(contents(robot.fileName).startsWith(reportHeader));
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
