// SPDX-License-Identifier: GPL-3.0-or-later
// The real program: exit codes, quitting by time and by signal past an open box.
#include <csignal>

#include <QtTest/QtTest>

#include "Files.h"
#include "Table.h"

class TestProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        program = std::make_unique<QProcess>();
        program->setProcessChannelMode(QProcess::MergedChannels);
        program->setWorkingDirectory(directory->path());
        qunsetenv("DISPLAY");
        qunsetenv("WAYLAND_DISPLAY");
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    void exitCodes_data()
    {
        const Table<bool, QStringList, int, QString> row("display", "arguments", "exitCode", "text");
        row("help", false, {"--help"}, 0, "--screenshot");
        row("version", false, {"--version"}, 0, "kestrova ");
        row("unknown option", false, {"--colour"}, 2, "colour");
        row("value missing", false, {"--cameras"}, 2, "cameras");
        row("value empty", false, {"--screenshot", ""}, 2, "screenshot");
        row("stray argument", false, {"--start", "now"}, 2, "now");
        row("no time", false, {"--quit-after", "0s"}, 2, "1ms to");
        row("no size", false, {"--window-size", "1280x"}, 2, "like 1280x800");
        row("no display", false, {}, 1, "no display");
        row("no such file", true, {"--cameras", "/no/such/file.json"}, 2, "/no/such/file.json");
        row("no such camera", true, {"--open", "Nobody", "--open=none"}, 2, "Nobody");
        row("a name of several cameras", true, {"--cameras", "twins.json", "--open", "Twin"}, 2,
            "1 = Twin (1), 2 = Twin (2)");
        row("in German", true, {"--open", "Niemand", "--language", "de"}, 2, "keine Kamera");
        row("no such language", true, {"--language", "tlh"}, 2, "no language \"tlh\"");
        row("no such place", true, {"--quit-after", "200ms", "--screenshot", "/proc/no/such.png"}, 1,
            "/proc/no/such.png");
    }
    void exitCodes()
    {
        QFETCH(bool, display);
        QFETCH(QStringList, arguments);
        QFETCH(QString, text);
        if (!display)
            qunsetenv("QT_QPA_PLATFORM");
        writeFile(directory->filePath("twins.json"),
                  R"({"cameras": [{"name": "Twin", "id": "1"}, {"name": "Twin", "id": "2"}]})");
        run(arguments);
        QVERIFY(program->waitForFinished());
        QTEST(program->exitCode(), "exitCode");
        const QByteArray output = program->readAll();
        QVERIFY2(output.contains(text.toUtf8()), output);
        QVERIFY2(program->exitCode() != 2 || !QFile::exists(settingsFile()), "what was not loaded is not saved");
    }

    void quitsInGoodOrderPastAnOpenBox()
    {
        for (const int signal : {0, SIGTERM, SIGINT, SIGHUP}) { // none: by time
            init();
            run(QStringList{"--start", "--open", "none"} +
                (signal == 0 ? QStringList{"--quit-after", "1s"} : QStringList()));
            QByteArray output = untilTheBoxOpens();
            if (signal != 0)
                ::kill(pid_t(program->processId()), signal);
            QVERIFY(program->waitForFinished());
            QCOMPARE(program->exitStatus(), QProcess::NormalExit);
            QCOMPARE(program->exitCode(), 0);
            output += program->readAll();
            QVERIFY2(output.contains("box closed") && !output.contains("camera closed"), output);
            const QSettings settings(settingsFile(), QSettings::IniFormat);
            QVERIFY(settings.contains("TestPlugin/number") && settings.contains("Viewer/geometry"));
        }
    }

    void endsInGoodOrderWithTheDisplay()
    {
        QProcess display;
        display.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        QVERIFY(display.waitForStarted());
        while (!display.canReadLine())
            QVERIFY(display.waitForReadyRead());
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("DISPLAY", ':' + display.readLine().trimmed());
        run({"--start"});
        QByteArray output = untilTheBoxOpens();
        display.kill();
        QVERIFY(display.waitForFinished());
        QVERIFY(program->waitForFinished());
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        output += program->readAll();
        QCOMPARE(output.count("camera closed"), 4);
        QVERIFY(QSettings(settingsFile(), QSettings::IniFormat).contains("TestPlugin/number"));
    }

private:
    QString settingsFile() const { return directory->filePath("settings.ini"); }

    void run(const QStringList& arguments)
    {
        program->start(KESTROVA_PROGRAM,
                       QStringList{"--settings", settingsFile(), "--plugin-dir", QString(MODULES_DIR) + "/good",
                                   "--plugin-dir", "/no/such/directory"} +
                           arguments);
        QVERIFY(program->waitForStarted());
    }

    QByteArray untilTheBoxOpens()
    {
        QByteArray output;
        [&] {
            QTRY_VERIFY_WITH_TIMEOUT((output += program->readAll()).contains("box opens") ||
                                         program->state() == QProcess::NotRunning,
                                     20'000);
        }();
        return output;
    }

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<QProcess> program;
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
