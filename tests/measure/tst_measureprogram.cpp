// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a script sees it: exit codes, standard output and error, signals. Free-running cameras, real time.
#include <QtTest/QtTest>

#include <csignal>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "Table.h"

namespace {

constexpr int longest = 60000; // ms

const char* const scenario = R"({ "cameras": [
    { "name": "Good", "id": "1", "sensor": {"width": 320, "height": 240}, "transportSpeed": 10 },
    { "name": "Plain", "id": "2", "sensor": {"width": 320, "height": 240}, "transportSpeed": null },
    { "name": "Stubborn", "id": "3", "faults": {"refuse": [{"call": "start"}]} },
    { "name": "Goes", "id": "4", "faults": {"loss": [{"atMs": 300, "forMs": 0}]} },
    { "name": "Mute", "id": "5", "faults": {"noImage": [{"atMs": 0, "forMs": 100000}]} } ] })";

struct Result
{
    int exitCode = -1;
    QByteArray out;
    QByteArray error;
};

} // namespace

class TestMeasureProgram : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    QString scenarioFile;
    QProcess lostCamera; ///< Waits for images last seconds: these two begin before the other tests.
    QProcess muteCamera;

    QStringList arguments(const QString& line) const
    {
        QStringList list{QStringLiteral("--cameras"), scenarioFile};
        for (QString word : line.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            list.append(word.replace(QLatin1String("@"), folder.path() + QLatin1Char('/')));
        return list;
    }

    void start(QProcess& process, const QString& line) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(KESTROVA_MEASURE), arguments(line));
    }

    static Result finish(QProcess& process)
    {
        if (!process.waitForFinished(longest) || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    static std::vector<QJsonObject> objects(const QByteArray& text)
    {
        std::vector<QJsonObject> list;
        for (const QByteArray& line : text.trimmed().split('\n'))
            list.push_back(QJsonDocument::fromJson(line).object());
        return list;
    }

private Q_SLOTS:
    void initTestCase()
    {
        scenarioFile = folder.filePath(QStringLiteral("scenario.json"));
        QFile file(scenarioFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(scenario);
        file.close();
        start(lostCamera, QStringLiteral("--camera 4"));
        start(muteCamera, QStringLiteral("--camera 5 --duration 300ms"));
    }

    void exitCodes_data()
    {
        const Table<QString, int, QString, QString> row("line", "exitCode", "out", "error");
        row("help", "--help", 0, "--max-overflows", "");
        row("version", "--version", 0, "^kestrova-measure \\d+\\.\\d+\\.\\d+\n$", "");
        row("list", "--list", 0, "^1 +Good\n2 +Plain\n3 +Stubborn\n4 +Goes\n5 +Mute\n$", "");
        row("within limits", "--camera 1 --duration 300ms --min-average 1 --max-level 50 --max-overflows 0", 0,
            "Summary", "");
        row("limit broken", "--camera 1 --duration 300ms --min-average 100000", 1,
            "limit broken: --min-average 100000: ", "");
        row("limit that cannot be judged", "--camera 2 --duration 300ms --max-overflows 0", 1,
            "--max-overflows 0: n/a", "");
        row("no cameras named", "", 2, "", "Usage: ");
        row("bad scenario", "--cameras @nothing.json --all", 2, "", "nothing\\.json");
        row("reports of one name", "--camera 1 --camera 2 --csv @r.csv", 2, "", "\\{camera\\}");
        row("report nowhere", "--camera 1 --csv @no/r.csv", 2, "", "no/r\\.csv");
        row("missing", "--camera Nobody --duration 300ms", 3, "", "Nobody");
        row("refused to start, worse than a broken limit",
            "--camera 1 --camera 3 --duration 300ms --min-average 100000", 3,
            "(?s)^(?=.*limit broken).*Stubborn \\(3\\): did not start", "Stubborn");
        row("refused to start alone", "--camera 3", 3, "Stubborn \\(3\\): did not start", "Stubborn");
    }

    void exitCodes()
    {
        QFETCH(QString, line);
        QFETCH(QString, out);
        QFETCH(QString, error);
        QProcess process;
        start(process, line);
        const Result result = finish(process);
        QTEST(result.exitCode, "exitCode");
        QVERIFY2(QString::fromUtf8(result.out).contains(QRegularExpression(out)), result.out.constData());
        QVERIFY2(QString::fromUtf8(result.error).contains(QRegularExpression(error)), result.error.constData());
        QCOMPARE(result.out.isEmpty(), out.isEmpty());
    }

    void outputsAgree()
    {
        QProcess process;
        start(
            process,
            QStringLiteral(
                "--camera 1 --camera 2 --duration 450ms --interval 100ms --json --log @log.csv --csv @{camera}.csv"));
        const Result result = finish(process);
        QCOMPARE(result.exitCode, 0);
        auto lines = objects(result.out);
        const QJsonObject summary = lines.back();
        lines.pop_back();
        QCOMPARE(summary.value(QStringLiteral("type")).toString(), QStringLiteral("summary"));
        QCOMPARE(summary.value(QStringLiteral("exitCode")).toInt(-1), 0);
        for (const QJsonValue camera : summary.value(QStringLiteral("cameras")).toArray()) {
            int frames = 0;
            for (const QJsonObject& line : lines) {
                QCOMPARE(line.value(QStringLiteral("type")).toString(), QStringLiteral("interval"));
                if (line.value(QStringLiteral("id")) == camera[QStringLiteral("id")])
                    frames += line.value(QStringLiteral("frames")).toInt();
            }
            QVERIFY(frames > 0);
            QCOMPARE(frames, camera[QStringLiteral("frames")].toInt());
            QVERIFY(camera[QStringLiteral("clockDriftPpm")].isNull()); // not known so soon
            const QJsonValue report = camera[QStringLiteral("report")];
            QCOMPARE(report[QStringLiteral("frames")].toInt(), frames);
            const QString file = report[QStringLiteral("file")].toString();
            QVERIFY(QFile::exists(file));
            QVERIFY(QFile::exists(file + QStringLiteral(".json")));
        }
        QFile log(folder.filePath(QStringLiteral("log.csv")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        QCOMPARE(log.readAll().count('\n'), 1 + int(lines.size()));
    }

    void signalsEndTheRun_data()
    {
        const Table<QString, int> row("trap", "signal");
        row("Ctrl-C", "", SIGINT);
        row("SIGTERM", "", SIGTERM);
        row("hang-up", "", SIGHUP);
        row("as nohup starts it", "trap '' HUP; ", SIGHUP);
    }

    void signalsEndTheRun()
    {
        QFETCH(QString, trap);
        QFETCH(int, signal);
        QProcess process;
        process.start(QStringLiteral("/bin/sh"),
                      QStringList{QStringLiteral("-c"), trap + QStringLiteral("exec \"$0\" \"$@\""),
                                  QStringLiteral(KESTROVA_MEASURE)} +
                          arguments(QStringLiteral("--camera 1 --interval 50ms --json")));
        QVERIFY(process.waitForReadyRead(longest));
        QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
        if (!trap.isEmpty()) { // it goes on
            for (int lines = 0; lines < 5; lines += process.readAllStandardOutput().count('\n'))
                QVERIFY(process.waitForReadyRead(longest));
            QCOMPARE(::kill(static_cast<pid_t>(process.processId()), SIGTERM), 0);
        }
        QVERIFY(process.waitForFinished(longest));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(objects(process.readAllStandardOutput()).back().value(QStringLiteral("type")).toString(),
                 QStringLiteral("summary"));
    }

    void resultsThatCannotBeWritten_data()
    {
        const Table<QString, int> row("line", "exitCode");
        row("help", "--help", 2);
        row("list", "--list", 2);
        row("summary", "--camera 1 --duration 200ms", 2);
        row("a broken limit is worse", "--camera 1 --duration 200ms --min-average 100000", 1);
    }

    void resultsThatCannotBeWritten()
    {
        QFETCH(QString, line);
        QProcess process;
        process.setStandardOutputFile(QStringLiteral("/dev/full"));
        start(process, line);
        const Result result = finish(process);
        QTEST(result.exitCode, "exitCode");
        QVERIFY2(result.error.contains("lost, standard output: No space left on device"), result.error);
    }

    /// The largest file that is allowed is a disk that becomes full.
    void aLogThatCannotBeWritten()
    {
        QProcess shell;
        shell.start(
            QStringLiteral("/bin/sh"),
            QStringList{QStringLiteral("-c"), QStringLiteral("ulimit -f 1; exec \"$0\" \"$@\""),
                        QStringLiteral(KESTROVA_MEASURE)} +
                arguments(QStringLiteral("--camera 1 --duration 600ms --interval 20ms --json --log @full.csv")));
        const Result result = finish(shell);
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.error.count("full.csv: File too large"), 1);
        QFile log(folder.filePath(QStringLiteral("full.csv")));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArray kept = log.readAll();
        QVERIFY(kept.endsWith('\n'));
        const auto lines = objects(result.out);
        QCOMPARE(lines.back().value(QStringLiteral("exitCode")).toInt(), 2);
        QCOMPARE(lines.back().value(QStringLiteral("lostLogLines")).toInt() + kept.count('\n'), int(lines.size()));
    }

    void aReaderThatGoesAwayEndsTheRun()
    {
        QProcess shell;
        const QString pipeline = QStringLiteral("\"$0\" \"$@\" | head -n 1");
        shell.start(QStringLiteral("/bin/sh"),
                    QStringList{QStringLiteral("-c"), pipeline, QStringLiteral(KESTROVA_MEASURE)} +
                        arguments(QStringLiteral("--camera 1 --interval 20ms")));
        QVERIFY(shell.waitForFinished(longest));
        QVERIFY(shell.readAllStandardOutput().contains("avg MB/s"));
    }

    void silenceIsAFailure()
    {
        const Result lost = finish(lostCamera);
        QCOMPARE(lost.exitCode, 3);
        QVERIFY2(lost.out.contains("Goes (4): was lost") && lost.error.contains("was lost"), lost.out + lost.error);
        const Result mute = finish(muteCamera);
        QCOMPARE(mute.exitCode, 3);
        QVERIFY2(mute.out.contains("Mute (5): sent no frame"), mute.out);
    }
};

QTEST_GUILESS_MAIN(TestMeasureProgram)
#include "tst_measureprogram.moc"
