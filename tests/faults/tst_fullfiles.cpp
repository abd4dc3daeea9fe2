// SPDX-License-Identifier: GPL-3.0-or-later
// Files that cannot be written to their end, as on a full disk: wherever that is, whoever asked for one is told which
// and why; and nothing is told of one that just fits.
#include "DialogRobot.h"
#include "EventDock.h"
#include "EventLog.h"
#include "Files.h"
#include "FormBench.h"
#include "IntervalLog.h"
#include "MeasuredCamera.h"
#include "RandomRecord.h"
#include "Report.h"
#include "ReportDescription.h"

class FullFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toldIfNotWhole()
    {
        FormBench bench(1);
        addFrames(bench.record(0), bench.nowUs - 1000, bench.nowUs, 10, 1000);
        // Each writer returns what was told.
        const std::pair<const char*, std::function<QString(const QString&)>> files[] = {
            {"report.csv", [&](const QString& file) { return press(bench.exportButton(0), file); }},
            {"events.txt",
             [](const QString& file) {
                 EventLog log;
                 EventDock dock(log);
                 log.append(EventLog::Severity::Warning, QString(300, 'x'));
                 return press(dock.findChildren<QPushButton*>().constLast(), file);
             }},
            {"lines.csv",
             [](const QString& file) {
                 IntervalLog log;
                 const SxCameraInfo camera{QString(300, 'x'), "1", {}};
                 return log.open(file, MeasModeDataThroughput) && log.append({camera, {}, {}})
                            ? QString()
                            : log.error() + log.lines().error();
             }},
            {"report of the program.csv",
             [&](const QString& file) {
                 QString error;
                 return writeReport(bench.record(0), file, &error) ? QString() : error;
             }},
            {"its description.csv.json", [](const QString& file) {
                 QString error;
                 const MeasuredCamera camera(nullptr, {}, {});
                 return writeDescription(camera, {file.chopped(5), 0, 0, 0, 0}, &error) ? QString() : error;
             }}};
        for (const auto& [name, write] : files) {
            const QTemporaryDir whole;
            QCOMPARE(write(whole.filePath(name)), QString());
            const auto size = rlim_t(QFileInfo(whole.filePath(name)).size());
            QVERIFY2(size > 300, name);
            const CriticalLines quiet;
            for (const rlim_t fits : {rlim_t(0), rlim_t(200), size - 1, size}) {
                const QTemporaryDir directory;
                const QString path = directory.filePath(name);
                const FullDisk disk(fits);
                const QString told = write(path);
                QVERIFY2(fits == size ? told.isEmpty() : told.contains(path + ": File too large"), qPrintable(told));
            }
        }
    }

private:
    /// What a box says after that button; nothing beside file dialogs and progress.
    static QString press(QAbstractButton* button, const QString& file)
    {
        DialogRobot robot;
        robot.fileName = file;
        button->click();
        return robot.seen.filter(": ").join(QString());
    }
};

QTEST_MAIN(FullFilesTest)
#include "tst_fullfiles.moc"
