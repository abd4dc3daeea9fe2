// SPDX-License-Identifier: GPL-3.0-or-later
// Files that cannot be written to their end, as on a full disk: wherever that is, whoever asked for one is told which
// and why; and nothing is told of one that just fits.
#include <sys/resource.h>

#include <csignal>

#include "DialogRobot.h"
#include "EventDock.h"
#include "EventLog.h"
#include "FormBench.h"
#include "IntervalLog.h"
#include "MeasuredCamera.h"
#include "RandomRecord.h"
#include "Report.h"
#include "ReportDescription.h"
#include "Table.h"

using Write = std::function<QString(const QString& file)>; ///< returns what was told
Q_DECLARE_METATYPE(Write)

static void limitFiles(rlim_t bytes)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

class FullFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { std::signal(SIGXFSZ, SIG_IGN); }
    void toldIfNotWhole_data()
    {
        const Table<Write, QString> row("write", "file");
        row(
            "report", [this](const QString& file) { return press(bench->exportButton(0), file); }, "r.csv");
        row(
            "event list",
            [this](const QString& file) {
                EventLog log;
                EventDock dock(log);
                log.append(EventLog::Severity::Warning, QString(300, 'x'));
                return press(dock.findChildren<QPushButton*>().constLast(), file);
            },
            "e.txt");
        row(
            "interval lines",
            [](const QString& file) {
                IntervalLog log;
                const SxCameraInfo camera{QString(300, 'x'), "1", {}};
                return log.open(file, MeasModeDataThroughput) && log.append({camera, {}, {}})
                           ? QString()
                           : log.error() + log.lines().error();
            },
            "l.csv");
        row(
            "report of the program",
            [this](const QString& file) {
                QString error;
                return writeReport(bench->record(0), file, &error) ? QString() : error;
            },
            "p.csv");
        row(
            "its description",
            [](const QString& file) {
                QString error;
                const MeasuredCamera camera(nullptr, {}, {});
                return writeDescription(camera, {file.chopped(5), 0, 0, 0, 0}, &error) ? QString() : error;
            },
            "p.csv.json");
    }
    void toldIfNotWhole()
    {
        QFETCH(Write, write);
        QFETCH(QString, file);
        bench = std::make_unique<FormBench>(1);
        addFrames(bench->record(0), bench->nowUs - 1000, bench->nowUs, 10, 1000);
        const QTemporaryDir whole;
        QCOMPARE(write(whole.filePath(file)), QString());
        const auto size = rlim_t(QFileInfo(whole.filePath(file)).size());
        QVERIFY(size > 300);
        const CriticalLines quiet;
        for (const rlim_t fits : {rlim_t(0), rlim_t(200), size - 1, size}) {
            const QTemporaryDir directory;
            const QString path = directory.filePath(file);
            limitFiles(fits);
            const QString told = write(path);
            limitFiles(RLIM_INFINITY);
            QVERIFY2(fits == size ? told.isEmpty() : told.contains(path + ": File too large"), qPrintable(told));
        }
    }
    void cleanup() { bench.reset(); }

private:
    /// What a box says after that button; nothing beside file dialogs and progress.
    static QString press(QAbstractButton* button, const QString& file)
    {
        DialogRobot robot;
        robot.fileName = file;
        button->click();
        return robot.seen.filter(": ").join(QString());
    }

    std::unique_ptr<FormBench> bench;
};

QTEST_MAIN(FullFilesTest)
#include "tst_fullfiles.moc"
