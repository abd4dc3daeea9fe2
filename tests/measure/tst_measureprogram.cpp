// SPDX-License-Identifier: GPL-3.0-or-later
// The program as a script sees it: exit codes, standard output and error, signals. Free-running cameras, real time.
#include <QtTest/QtTest>

#include <csignal>

#include "Files.h"
#include "Table.h"

namespace {

constexpr int longest = 60000; // ms
const char* const onFullDisk = "exec %1 >/dev/full";
const char* const lost = "lost, standard output: No space left on device";

const char* const scenario = R"({ "links": [{"name": "switch", "rate": 50}], "cameras": [
    { "name": "Good", "id": "1", "sensor": {"width": 320, "height": 240}, "transportSpeed": 10,
      "link": "switch" },
    { "name": "Plain", "id": "2", "sensor": {"width": 320, "height": 240}, "transportSpeed": null,
      "link": "switch" },
    { "name": "Stubborn", "id": "3", "faults": {"refuse": [{"call": "start"}]} },
    { "name": "Goes", "id": "4", "faults": {"loss": [{"atMs": 300, "forMs": 0}]} },
    { "name": "Mute", "id": "5", "faults": {"noImage": [{"atMs": 0, "forMs": 100000}]} },
    { "name": "Pauses", "id": "6", "link": {"rate": 20}, "transportSpeed": 10,
      "faults": {"noImage": [{"atMs": 200, "forMs": 1300}]} } ] })";

/// Cameras that break one limit and no other, and others that come near to it.
struct LimitedRun
{
    struct Pair
    {
        const char* limit;
        const char* breaks; ///< fields of a camera
        const char* inside;
        const char* limits = ""; ///< of these two alone
    };

    const char* mode;
    const char* limits; ///< of all cameras
    std::vector<Pair> cameras;
};

const LimitedRun throughputRun{
    "throughput",
    R"("min-throughput": 2, "min-average": 2.2, "min-delivered": 2, "min-fps": 5, "max-gap": "1s", "max-level": 40,
       "max-overflows": 0, "max-missing": 2, "max-losses": 1)",
    {{"min-throughput", R"("link": {"rate": 4, "stallEveryMs": 400, "stallUs": 3000})",
      R"("link": {"rate": 4, "stallEveryMs": 400, "stallUs": 500})"},
     {"min-average", R"("link": {"rate": 2.1})", R"("link": {"rate": 2.4})"},
     {"min-delivered", R"("link": {"rate": 4, "frameGapUs": 60000})", R"("link": {"rate": 4, "frameGapUs": 20000})"},
     {"min-fps", R"("link": {"rate": 4}, "sensor": {"width": 1024, "height": 512})",
      R"("link": {"rate": 4}, "sensor": {"width": 640, "height": 480})"},
     {"max-gap", R"("link": {"rate": 4}, "faults": {"noImage": [{"atMs": 800, "forMs": 1300}]})",
      R"("link": {"rate": 4}, "faults": {"noImage": [{"atMs": 800, "forMs": 700}]})"},
     {"max-level", R"("link": {"rate": 2.5}, "bufferBytes": 65536)",
      R"("link": {"rate": 2.5}, "bufferBytes": 131072)"},
     {"max-overflows", R"("link": {"rate": 2.5}, "sensor": {"width": 480, "height": 360}, "bufferBytes": 65536)",
      R"("link": {"rate": 2.5}, "sensor": {"width": 480, "height": 360}, "bufferBytes": 73728)",
      R"("max-level": 100)"},
     {"max-missing", R"("link": {"rate": 4}, "faults": {"numberJump": {"first": 9}, "numberJumpBy": 3})",
      R"("link": {"rate": 4}, "faults": {"numberJump": {"first": 9}, "numberJumpBy": 2})"},
     {"max-losses",
      R"("link": {"rate": 4}, "faults": {"loss": [{"atMs": 900, "forMs": 100}, {"atMs": 1800, "forMs": 100}]})",
      R"("link": {"rate": 4}, "faults": {"loss": [{"atMs": 900, "forMs": 100}]})"}}};

const LimitedRun countersRun{
    "counters",
    R"("max-overflows": 0, "max-skips": 2, "max-missing": 2, "min-delivered": 1, "min-fps": 8, "max-gap": "1s",
       "max-losses": 1)",
    {{"max-overflows", R"("link": {"rate": 4, "stallEveryMs": 900, "stallUs": 100000}, "bufferBytes": 100000)",
      R"("link": {"rate": 4, "stallEveryMs": 900, "stallUs": 10000}, "bufferBytes": 100000)",
      R"("max-missing": 1000)"},
     {"max-skips", R"("link": {"rate": 4, "frameLoss": 0.2})", R"("link": {"rate": 4, "frameLoss": 0.002})",
      R"("max-missing": 1000)"},
     {"max-missing", R"("link": {"rate": 4}, "faults": {"numberJump": {"first": 9}, "numberJumpBy": 3})",
      R"("link": {"rate": 4}, "faults": {"numberJump": {"first": 9}, "numberJumpBy": 2})"},
     {"min-delivered", R"("link": {"rate": 4}, "sensor": {"width": 160, "height": 120, "rateHz": 20})",
      R"("link": {"rate": 4}, "sensor": {"width": 320, "height": 240, "rateHz": 20})"},
     {"min-fps", R"("link": {"rate": 4}, "sensor": {"width": 640, "height": 480, "rateHz": 5})",
      R"("link": {"rate": 40}, "sensor": {"width": 640, "height": 480, "rateHz": 12})"},
     {"max-gap", R"("link": {"rate": 4}, "faults": {"noImage": [{"atMs": 800, "forMs": 1300}]})",
      R"("link": {"rate": 4}, "faults": {"noImage": [{"atMs": 800, "forMs": 700}]})"},
     {"max-losses",
      R"("link": {"rate": 4}, "faults": {"loss": [{"atMs": 900, "forMs": 100}, {"atMs": 1800, "forMs": 100}]})",
      R"("link": {"rate": 4}, "faults": {"loss": [{"atMs": 900, "forMs": 100}]})"}}};

QByteArray cameraOf(const QByteArray& kind, const QByteArray& limit, QByteArray fields)
{
    if (!fields.contains("sensor"))
        fields += R"(, "sensor": {"width": 320, "height": 240, "rateHz": 30})";
    return R"({"id": ")" + kind + ' ' + limit + R"(", "transportSpeed": 3, )" + fields + '}';
}

} // namespace

class TestMeasureProgram : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    QProcess lostCamera; ///< Waits for images last seconds: these two begin before the other tests.
    QProcess muteCamera;
    QProcess pausingCamera;
    QProcess limitedThroughput;
    QProcess limitedCounters;

    QString path(const QByteArray& name) const { return folder.filePath(QLatin1String(name)); }

    /// The program is `%1` in a line of the shell, `@` the folder in an argument.
    void start(QProcess& process, QString line, const char* shell = "exec %1") const
    {
        line.prepend(QStringLiteral("--cameras @scenario.json ")).replace('@', folder.path() + '/');
        process.start("/bin/sh", QStringList{"-c", QString(shell).arg("\"$0\" \"$@\""), KESTROVA_MEASURE} +
                                     line.split(' ', Qt::SkipEmptyParts));
    }

    void start(QProcess& process, const LimitedRun& run)
    {
        QByteArrayList cameras;
        QByteArrayList own;
        for (const auto& [limit, breaks, inside, limits] : run.cameras) {
            cameras << cameraOf("breaks", limit, breaks) << cameraOf("inside", limit, inside);
            for (const char* kind : {"breaks ", "inside "}) {
                if (*limits != '\0')
                    own << QByteArray(R"({"id": ")") + kind + limit + "\", " + limits + "}";
            }
        }
        writeFile(path(run.mode), "{\"cameras\": [" + cameras.join(", ") + "]}");
        writeFile(path(QByteArray(run.mode) + ".limits"),
                  QByteArray("{\"all\": {") + run.limits + "}, \"cameras\": [" + own.join(", ") + "]}");
        start(process,
              QString("--cameras @%1 --all --duration 3s --json --mode %1 --limits @%1.limits").arg(run.mode));
    }

    static int exitCode(QProcess& process)
    {
        return process.waitForFinished(longest) && process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                                                : -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        qunsetenv("DISPLAY");
        qunsetenv("QT_QPA_PLATFORM");
        writeFile(path("scenario.json"), scenario);
        writeFile(path("limits.json"),
                  R"({"all": {"max-gap": "60s"}, "cameras": [{"id": "1", "min-average": 1e5}]})");
        writeFile(path("other.json"), R"({"cameras": [{"id": "9", "max-level": 5}]})");
        start(limitedThroughput, throughputRun);
        start(limitedCounters, countersRun);
        start(lostCamera, "--camera 4 --no-resume --max-losses 1");
        start(muteCamera, "--camera 5 --duration 300ms");
        start(pausingCamera, "--camera 6 --duration 2s --min-average 15 --min-throughput 5 --max-overflows 0");
    }

    void exitCodes_data()
    {
        const Table<QString, QByteArray, int, QString, QString> row("line", "shell", "exitCode", "out", "error");
        const char* const plain = "exec %1";
        row("help", "--min-average x --help", plain, 0, "--max-overflows", "");
        row("version", "--version", plain, 0, "^kestrova-measure \\d+\\.\\d+\\.\\d+\n$", "");
        row("list", "--list", plain, 0, "^1 +Good\n2 +Plain\n3 +Stubborn\n4 +Goes\n5 +Mute\n6 +Pauses\n$", "");
        row("within limits", "--camera 1 --duration 300ms --min-average 1 --max-level 50 --max-overflows 0", plain, 0,
            "(?s)limit kept: --max-level 50: .*Good \\(1\\): PASS\n.*Run: PASS\n$", "");
        row("counters", "--camera 1 --duration 300ms --mode counters --max-skips 0", plain, 0, "(?s)skips.*Run: PASS",
            "");
        row("limit broken", "--camera 1 --required auto --duration 300ms --min-average 100000", plain, 1,
            "(?s)limit broken: --min-average 100000: [^\n]*MB/s, since [^\n]*T.*Run: FAIL\n$", "");
        row("limit that cannot be judged", "--camera 2 --duration 300ms --max-overflows 0", plain, 1,
            "--max-overflows 0: n/a", "");
        row("limits file, camera by camera", "--camera 1 --duration 300ms --limits @limits.json", plain, 1,
            "limit broken: --min-average 100000: ", "");
        row("limits file of another rig", "--camera 1 --limits @other.json", plain, 3, "", "other\\.json.*\"9\"");
        row("no limits file", "--camera 1 --limits @nothing.json", plain, 2, "", "nothing\\.json");
        row("bad scenario", "--cameras @nothing.json --all", plain, 2, "", "nothing\\.json");
        row("reports of one name", "--camera 1 --camera 2 --csv @r.csv", plain, 2, "", "\\{camera\\}");
        row("report nowhere", "--camera 1 --csv @no/r.csv", plain, 2, "", "no/r\\.csv");
        row("page nowhere", "--camera 1 --report @no/r.html", plain, 2, "", "no/r\\.html");
        row("page in place of the log", "--camera 1 --log @r --report @./r", plain, 2, "", "--report: ");
        QVERIFY(QFile::link(path("limits.json"), path("alias")));
        row("page in place of the limits", "--camera 1 --limits @limits.json --report @./alias", plain, 2, "",
            "--report: .* --limits");
        row("page in place of a description", "--camera 1 --csv @r --report @r.json", plain, 2, "", "--csv: ");
        row("page, lost", "--camera 1 --duration 200ms --report /dev/full", plain, 2, "Summary",
            "/dev/full: No space");
        row("metrics nowhere", "--camera 1 --metrics 192.0.2.1:9841", plain, 2, "", "--metrics: ");
        row("missing", "--camera Nobody --duration 300ms", plain, 3, "", "Nobody");
        row("refused to start, worse than a broken limit",
            "--camera 1 --camera 3 --duration 300ms --min-average 100000", plain, 3,
            "(?s)^(?=.*limit broken).*Stubborn \\(3\\): did not start", "Stubborn");
        row("refused to start alone", "--camera 3", plain, 3, "Stubborn \\(3\\): did not start", "Stubborn");
        for (const char* wrong : {"",
                                  "--help --frob",
                                  "--all extra",
                                  "--all --camera a",
                                  "--all --mode fast",
                                  "--all --required -5",
                                  "--all --required 1.5",
                                  "--all --required 0",
                                  "--all --sample-period 7",
                                  "--all --capacity 0",
                                  "--all --capacity 3G",
                                  "--all --capacity 1.5",
                                  "--all --interval 1ms",
                                  "--all --min-average",
                                  "--all --min-average nan",
                                  "--all --max-gap 0",
                                  "--all --max-overflows -1",
                                  "--all --metrics 65536",
                                  "--all --metrics 9841s",
                                  "--all --metrics localhost:9841",
                                  "--all --metrics 1.2.3:9841",
                                  "--all --max-skips 1",
                                  "--all --mode counters --max-level 5",
                                  "--all --mode counters --min-throughput 5",
                                  "--all --mode counters --csv f"})
            row(wrong, wrong, plain, 2, "", "Usage: ");
        row("help, lost", "--help", onFullDisk, 2, "", lost);
        row("list, lost", "--list", onFullDisk, 2, "", lost);
        row("summary, lost", "--camera 1 --duration 200ms", onFullDisk, 2, "", lost);
        row("lost, but a broken limit is worse", "--camera 1 --duration 200ms --min-average 100000", onFullDisk, 1,
            "", lost);
        row("the reader goes away", "--camera 1 --interval 20ms", "%1 | head -n 1", 0, "avg MB/s", "");
    }

    void exitCodes()
    {
        QFETCH(QString, line);
        QFETCH(QByteArray, shell);
        QFETCH(QString, out);
        QFETCH(QString, error);
        QProcess process;
        start(process, line, shell);
        QTEST(exitCode(process), "exitCode");
        const QByteArray written = process.readAllStandardOutput();
        QVERIFY2(QString(written).contains(QRegularExpression(out)) && written.isEmpty() == out.isEmpty(), written);
        const QByteArray told = process.readAllStandardError();
        QVERIFY2(QString(told).contains(QRegularExpression(error)), told);
    }

    void outputsAgree()
    {
        QProcess process;
        start(process, "--camera 1 --camera 2 --duration 450ms --interval 100ms --json --log @log.csv "
                       "--csv @{camera}.csv --report @run.html --sample-period 8192 --capacity 0.05k --required 400");
        QCOMPARE(exitCode(process), 0);
        auto lines = jsonLines(process.readAllStandardOutput());
        const QJsonObject summary = lines.back();
        lines.pop_back();
        std::map<QString, double> megabytes; // by the lines' types; here all cameras are on one link
        for (const QJsonObject& line : lines)
            megabytes[line["type"].toString()] += line["deliveredMBps"].toDouble() * line["intervalS"].toDouble();
        QVERIFY(megabytes["interval"] > 0 && qAbs(megabytes["link"] / megabytes["interval"] - 1) < 0.05);
        QCOMPARE(megabytes["total"], megabytes["link"]);
        const QJsonValue link = summary["links"].toArray()[0];
        QCOMPARE(link["name"].toString() + link["cameraIds"].toVariant().toStringList().join(','),
                 QString("switch1,2"));
        QCOMPARE(link["sharePercent"], link["deliveredMBps"].toDouble() / 50 * 100);
        lines.erase(
            std::remove_if(lines.begin(), lines.end(), [](const auto& line) { return line["type"] != "interval"; }),
            lines.end());
        QVERIFY(lines.size() > 2 && lines.size() <= 10);
        QCOMPARE(readFile(path("log.csv")).count('\n'), 1 + int(lines.size()));
        QVERIFY(readFile(path("run.html")).endsWith("</html>\n"));
        QCOMPARE(summary["type"].toString() + summary["exitCode"].toVariant().toString(), QString("summary0"));
        QVERIFY(summary["verdict"].isNull()); // no limits
        QCOMPARE(summary["settings"]["samplePeriodBytes"].toInt(), 8192);
        QVERIFY(summary["settings"]["allCameras"].isBool() && summary["settings"]["askedCameras"].isArray());
        QVERIFY(summary["versions"]["tool"].toString().startsWith("kestrova-measure "));
        QVERIFY(summary["startTime"].toString() < summary["endTime"].toString());
        QCOMPARE(summary["cameras"].toArray().size(), 2);
        for (const QJsonValue camera : summary["cameras"].toArray()) {
            int frames = 0;
            for (const QJsonObject& line : lines) {
                frames += line["id"] == camera["id"] ? line["frames"].toInt() : 0;
            }
            const QJsonValue report = camera["report"];
            QCOMPARE(camera["frames"].toInt(), frames);
            QCOMPARE(report["frames"].toInt() + report["droppedFrames"].toInt(), frames);
            QVERIFY(report["frames"].toInt() > 0 && report["droppedFrames"].toInt() > 0);
            QVERIFY(camera["clockDriftPpm"].isNull()); // not known so soon
            QVERIFY(QFile::exists(report["file"].toString()));
            const auto description = jsonLines(readFile(report["file"].toString() + ".json").simplified())[0];
            QCOMPARE(description["samplePeriodBytes"].toInt(), 8192);
            QCOMPARE(description["requiredThroughputMBps"].toInt(), 400);
        }
    }

    void signalsEndTheRun()
    {
        const Rows<QByteArray, int> rows{{"exec %1", SIGINT},
                                         {"exec %1", SIGTERM},
                                         {"exec %1", SIGHUP},
                                         {"trap '' HUP; exec %1", SIGHUP}}; // as nohup starts it
        for (const auto& [shell, signal] : rows) {
            QProcess process;
            start(process, "--camera 1 --interval 50ms --json", shell);
            QVERIFY(process.waitForReadyRead(longest));
            QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
            if (shell.startsWith("trap")) { // it goes on
                for (int lines = 0; lines < 5; lines += process.readAllStandardOutput().count('\n'))
                    QVERIFY(process.waitForReadyRead(longest));
                QCOMPARE(::kill(static_cast<pid_t>(process.processId()), SIGTERM), 0);
            }
            QCOMPARE(exitCode(process), 0);
            QCOMPARE(jsonLines(process.readAllStandardOutput()).back()["type"].toString(), QString("summary"));
        }
    }

    /// The largest file that is allowed is a disk that becomes full.
    void aLogThatCannotBeWritten()
    {
        QProcess process;
        start(process, "--camera 1 --duration 600ms --interval 20ms --json --log @full.csv", "ulimit -f 1; exec %1");
        QCOMPARE(exitCode(process), 2);
        QCOMPARE(process.readAllStandardError().count("full.csv: File too large"), 1);
        const QByteArray kept = readFile(path("full.csv"));
        QVERIFY(kept.endsWith('\n'));
        const auto lines = jsonLines(process.readAllStandardOutput());
        QCOMPARE(lines.back()["exitCode"].toInt(), 2);
        QCOMPARE(lines.back()["lostLogLines"].toInt() + kept.count('\n'), int(lines.size()));
    }

    /// Each camera breaks the limit that it is named after and no other, or comes near to it and none.
    void eachLimitCatchesWhatNoOtherDoes()
    {
        for (QProcess* process : {&limitedThroughput, &limitedCounters}) {
            QVERIFY2(exitCode(*process) == 1, process->readAllStandardError());
            const auto lines = jsonLines(process->readAllStandardOutput());
            for (const QJsonValue camera : lines.back()["cameras"].toArray()) {
                QString broken = "inside";
                const QString limit = camera["id"].toString().section(' ', 1);
                for (const QJsonValue judged : camera["limits"].toArray()) {
                    if (!judged["kept"].toBool())
                        broken = (broken == "inside" ? "breaks " : broken + ", ") + judged["limit"].toString();
                    QCOMPARE(judged["kept"].toBool(), judged["brokenAt"].isNull());
                }
                QCOMPARE(broken == "inside" ? "inside " + limit : broken, camera["id"].toString());
                const bool silent = camera["findings"][0]["kind"].toString() == "silence";
                QCOMPARE(silent, camera["id"].toString() == "breaks max-gap");
                QCOMPARE(camera["verdict"].toString(), QString(broken == "inside" ? "PASS" : "FAIL"));
            }
        }
    }

    void silenceIsAFailure()
    {
        QCOMPARE(exitCode(lostCamera), 3);
        QVERIFY(lostCamera.readAllStandardOutput().contains("Goes (4): was lost"));
        QVERIFY(lostCamera.readAllStandardError().contains("was lost"));
        QCOMPARE(exitCode(muteCamera), 3);
        QVERIFY(muteCamera.readAllStandardOutput().contains("Mute (5): sent no frame"));
        QCOMPARE(exitCode(pausingCamera), 0); // no limit of these sees it
        const QByteArray text = pausingCamera.readAllStandardOutput();
        QVERIFY2(text.contains("Pauses (6): sent nothing for up to 1.") && text.endsWith("Run: PASS\n"), text);
    }
};

QTEST_GUILESS_MAIN(TestMeasureProgram)
#include "tst_measureprogram.moc"
