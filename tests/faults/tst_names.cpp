// SPDX-License-Identifier: GPL-3.0-or-later
// Cameras with names that look like something else to whoever writes them into a table, a box, a log or a file name.
#include <vnCore/vnApi.h>

#include "CameraDock.h"
#include "CameraEvents.h"
#include "DialogRobot.h"
#include "EventLog.h"
#include "FormBench.h"
#include "HtmlReport.h"
#include "IntervalLog.h"
#include "ItemTexts.h"
#include "Report.h"
#include "Table.h"
#include "TakeOvers.h"

namespace {

/// What somebody reads where markup is shown as such.
QString read(const QString& text)
{
    QTextDocument document;
    Qt::mightBeRichText(text) ? document.setHtml(text) : document.setPlainText(text);
    return document.toPlainText();
}

} // namespace

class NamesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void viewerAndForm_data() { names(); }
    void measureProgram_data() { names(); }
    /// With the same name where there is room for one line only.
    static void names()
    {
        const Table<QString, QString> row("name", "line");
        const QString breaks = QStringLiteral("a\nb\rc\td\u2028e\u001bf\u202eg");
        row("line breaks and invisible", breaks, QStringLiteral("a b c d e f g"));
        for (const char* name :
             {"a, \"b\"; 'c'", "<b>a</b><img src=x> &amp; b", "%1 %2 %3 %L1 %s %n %%", "../a/../b\\c:*?"})
            row(name, QString::fromLatin1(name), QString::fromLatin1(name));
        row("long", QString(500, QLatin1Char('x')), QString(500, QLatin1Char('x')));
    }

    void viewerAndForm()
    {
        QFETCH(QString, name);
        QFETCH(QString, line);
        FormBench bench;
        EventLog log;
        TakeOvers takeOvers;
        CameraEvents events(log, takeOvers);
        CameraDock dock(takeOvers, log);
        bench.addCamera([&](sim::CameraScenario& camera) { camera.name = name; });
        const QString displayName = name + QStringLiteral(" (1)");

        QCOMPARE(bench.columnTexts(cameraColumn), QStringList{displayName});
        QCOMPARE(bench.table()->rowHeight(0), 24);
        DialogRobot robot;
        QString told;
        robot.inside = [&](QDialog* dialog) {
            const auto* box = qobject_cast<QMessageBox*>(dialog);
            told = box->textFormat() == Qt::PlainText ? box->text() : read(box->text());
        };
        bench.failStarts(0);
        bench.measureButton(0)->click();
        QCOMPARE(told.simplified(), QStringLiteral("Camera %1 does not support data throughput analysis in Kestrova.")
                                        .arg(displayName.simplified()));

        bench.gates[0]->failing = sim::Call::Wait;
        QVERIFY(vnApi_StartAcquisition(bench.handle(0)));
        takeOvers.setTakenOver(bench.handle(0), true);
        events.checkFrames(std::chrono::steady_clock::now() + std::chrono::seconds(5));
        QCOMPARE(columnTexts(log, EventLog::TextColumn),
                 QStringList({line + " (1) opened", line + " (1) taken over by a plug-in",
                              line + " (1) is measured but has sent no frame for 5 s"}));
        const auto* listed = dock.findChild<QTreeWidget*>()->topLevelItem(0);
        QCOMPARE(listed->text(0), line);
        QCOMPARE(read(listed->toolTip(0)).simplified(), (line + QStringLiteral(" (1)")).simplified());
    }

    void measureProgram()
    {
        QFETCH(QString, name);
        QFETCH(QString, line);
        const SxCameraInfo camera{name, QStringLiteral("7"), {}};
        const Figures figures = throughputFigures({}, 4096, true);
        const IntervalLine interval{camera, QDateTime::currentDateTimeUtc(), {1.0, 1.0, figures}};

        const QTemporaryDir directory;
        QTemporaryFile text;
        QTemporaryFile json;
        QVERIFY(text.open() && json.open());
        LineWriter writer(text.handle(), text.fileName(), LineWriter::Until::Written);
        const auto output = makeTextOutput(writer);
        output->interval(interval);
        output->cameraList({camera});
        const Options options;
        Summary summary{options, nullptr, interval.time, interval.time};
        summary.cameras.push_back({camera, interval.stretch, interval.time});
        summary.cameras[0].report = ReportSummary{"f", 9, 8, 0, 1};
        output->summary(summary);
        const QString title = line + QStringLiteral(" (7)");
        QVERIFY(text.seek(0));
        const QStringList lines = QString::fromUtf8(text.readAll()).split(QLatin1Char('\n'));
        QVERIFY(lines[1].contains(title) && lines[6].contains(title)); // of the interval, of the summary
        QCOMPARE(lines[2].simplified(), QStringLiteral("7 %1").arg(line).simplified());
        QVERIFY(lines.contains(title + QStringLiteral(": report f holds 9 frames from 00:00:00.000 to 00:00:00.000 "
                                                      "(0.000 s), 8 frames dropped by the capacity")));
        QCOMPARE(lines.filter(title).size(), 4); // and its verdict

        for (int n = 1; n <= 40; ++n)
            output->interval(interval);
        QVERIFY(text.seek(0));
        QCOMPARE(text.readAll().count("time s"), 3); // above every 40 lines, and the summary's

        LineWriter jsonLines(json.handle(), json.fileName(), LineWriter::Until::Written);
        makeJsonOutput(jsonLines)->interval(interval);
        QVERIFY(json.seek(0));
        const QByteArray object = json.readAll();
        QCOMPARE(object.count('\n'), 1);
        QCOMPARE(QJsonDocument::fromJson(object)["name"].toString(), name);

        ReportContent page;
        page.cameras.resize(1);
        page.cameras[0].name = name;
        QVERIFY(read(QString::fromUtf8(htmlReport(page))).contains(line));

        IntervalLog log;
        QFile file(directory.filePath(QStringLiteral("log")));
        QVERIFY(log.open(file.fileName(), MeasModeDataThroughput) && log.append(interval));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const int columns = file.readLine().count(',');
        QString fields = QString::fromUtf8(file.readAll());
        const auto quoted = QRegularExpression(QStringLiteral("\"((?:[^\"]|\"\")*)\"")).match(fields);
        QCOMPARE(quoted.captured(1).replace(QStringLiteral("\"\""), QStringLiteral("\"")), line);
        QCOMPARE(fields.remove(quoted.capturedStart(), quoted.capturedLength()).count(QLatin1Char(',')), columns);
        QCOMPARE(fields.count(QLatin1Char('\n')), 1);

        const QString report = reportFiles(directory.filePath(QStringLiteral("{camera}.csv")), {camera}).value(0);
        QCOMPARE(QFileInfo(report).path(), directory.path());
        QVERIFY2(QFile(report).open(QIODevice::WriteOnly) && report.endsWith(QLatin1String("-7.csv")),
                 qPrintable(report));
    }
};

QTEST_MAIN(NamesTest)
#include "tst_names.moc"
