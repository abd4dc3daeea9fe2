// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer's command line as a value.
#include <QtTest/QtTest>

#include "CommandLine.h"
#include "Table.h"

using namespace std::chrono_literals;
using Outcome = CommandLine::Outcome;

class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyOption()
    {
        const auto line = CommandLine::parse(
            {"kestrova", "--cameras", "a.json", "--open", "B", "--open=C", "--plugin-dir", "p", "--plugin-dir", "q",
             "--settings", "s.ini", "--language", "de", "--start", "--quit-after", "1.5s", "--screenshot", "x.png"});
        QCOMPARE(line.outcome, Outcome::Run);
        QCOMPARE(line.options.camerasFile, QStringLiteral("a.json"));
        QCOMPARE(line.options.camerasToOpen, QStringList({"B", "C"}));
        QVERIFY(!line.options.openAll);
        QCOMPARE(line.options.pluginDirs, QStringList({"p", "q"}));
        QCOMPARE(line.options.language, QStringLiteral("de"));
        QVERIFY(line.options.start);
        QVERIFY(line.options.quitAfter == 1500ms);
        QCOMPARE(line.options.screenshotFile, QStringLiteral("x.png"));

        QVERIFY(CommandLine::parse({"kestrova"}).options.openAll);
        const auto none = CommandLine::parse({"kestrova", "--open", "none"});
        QVERIFY(!none.options.openAll && none.options.camerasToOpen.isEmpty());
    }

    void wrongUsageNamesTheFault_data()
    {
        const Table<QStringList, QString> row("arguments", "named");
        row("unknown option", {"--colour"}, "colour");
        row("value missing", {"--cameras"}, "cameras");
        row("value empty", {"--screenshot", ""}, "screenshot");
        row("stray argument", {"--start", "now"}, "now");
        row("no time", {"--quit-after", "soon"}, "soon");
        row("no time at all", {"--quit-after", "0s"}, "1ms to");
    }
    void wrongUsageNamesTheFault()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const auto line = CommandLine::parse(QStringList("kestrova") + arguments);
        QCOMPARE(line.outcome, Outcome::Error);
        QVERIFY2(line.text.contains(named) && line.text.contains("Usage: "), qPrintable(line.text));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
