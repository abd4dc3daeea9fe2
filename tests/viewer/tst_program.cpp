// SPDX-License-Identifier: GPL-3.0-or-later
// The real program: exit codes, quitting by time and by signal past an open box.
#include <csignal>

#include <QtTest/QtTest>

#include "Table.h"

class TestProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_program = std::make_unique<QProcess>();
        m_program->setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("DISPLAY");
        environment.remove("WAYLAND_DISPLAY");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        m_program->setProcessEnvironment(environment);
    }

    void exitCodes_data()
    {
        const Table<bool, QStringList, int, QString> row("display", "arguments", "exitCode", "text");
        row("help", false, {"--help"}, 0, "--screenshot");
        row("version", false, {"--version"}, 0, "kestrova ");
        row("wrong usage", false, {"--nonsense"}, 2, "nonsense");
        row("no display", false, {}, 1, "no display");
        row("no such file", true, {"--cameras", "/no/such/file.json"}, 2, "/no/such/file.json");
        row("no such camera", true, {"--open", "Nobody"}, 2, "Nobody");
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
        QProcessEnvironment environment = m_program->processEnvironment();
        if (!display)
            environment.remove("QT_QPA_PLATFORM");
        m_program->setProcessEnvironment(environment);
        m_program->setWorkingDirectory(m_directory->path());
        QFile twins(m_directory->filePath("twins.json"));
        QVERIFY(twins.open(QIODevice::WriteOnly));
        twins.write(R"({"cameras": [{"name": "Twin", "id": "1"}, {"name": "Twin", "id": "2"}]})");
        twins.close();
        run(arguments);
        QVERIFY(m_program->waitForFinished());
        QTEST(m_program->exitCode(), "exitCode");
        const QByteArray output = m_program->readAll();
        QVERIFY2(output.contains(text.toUtf8()), output);
        if (m_program->exitCode() == 2)
            QVERIFY2(!QFile::exists(settingsFile()), "what was not loaded must not be saved");
    }

    void quitsInGoodOrderPastAnOpenBox_data()
    {
        // No signal: by time.
        const Table<int> row("signal");
        row("--quit-after", 0);
        row("SIGTERM", SIGTERM);
        row("SIGINT", SIGINT);
        row("SIGHUP", SIGHUP);
    }
    void quitsInGoodOrderPastAnOpenBox()
    {
        QFETCH(int, signal);
        run(QStringList{"--start", "--open", "none"} +
            (signal == 0 ? QStringList{"--quit-after", "1s"} : QStringList()));
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += m_program->readAll()).contains("box opens") ||
                                     m_program->state() == QProcess::NotRunning,
                                 20'000);
        if (signal != 0) {
            ::kill(pid_t(m_program->processId()), signal);
        }
        QVERIFY(m_program->waitForFinished());
        QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_program->exitCode(), 0);
        output += m_program->readAll();
        QVERIFY2(output.contains("box closed"), output);
        const QSettings settings(settingsFile(), QSettings::IniFormat);
        QVERIFY(settings.contains("TestPlugin/number") && settings.contains("Viewer/geometry"));
    }

    void endsInGoodOrderWithTheDisplay()
    {
        QProcess display;
        display.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        QVERIFY(display.waitForStarted());
        while (!display.canReadLine()) {
            QVERIFY(display.waitForReadyRead());
        }
        QProcessEnvironment environment = m_program->processEnvironment();
        environment.insert("QT_QPA_PLATFORM", "xcb");
        environment.insert("DISPLAY", ":" + display.readLine().trimmed());
        m_program->setProcessEnvironment(environment);
        run({"--start"});
        QByteArray output;
        QTRY_VERIFY_WITH_TIMEOUT((output += m_program->readAll()).contains("box opens"), 20'000);
        display.kill();
        QVERIFY(display.waitForFinished());
        QVERIFY(m_program->waitForFinished());
        QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
        output += m_program->readAll();
        QCOMPARE(output.count("camera closed"), 4);
        QVERIFY(QSettings(settingsFile(), QSettings::IniFormat).contains("TestPlugin/number"));
    }

private:
    QString settingsFile() const { return m_directory->filePath("settings.ini"); }

    void run(const QStringList& arguments)
    {
        m_program->start(KESTROVA_PROGRAM,
                         QStringList{"--settings", settingsFile(), "--plugin-dir", MODULES_DIR "/good"} + arguments);
        QVERIFY(m_program->waitForStarted());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_program;
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
