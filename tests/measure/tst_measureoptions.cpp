// SPDX-License-Identifier: GPL-3.0-or-later
// The command line: what is understood and what is refused; which cameras are meant; names of reports.
#include <QtTest/QtTest>

#include "Options.h"
#include "Selection.h"

using Action = Options::Action;

namespace {

Options parse(const QString& line)
{
    return parseOptions(QStringList(QStringLiteral("kestrova-measure")) +
                        line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

SxCameraInfo info(const char* name, const char* id, const char* customId = "")
{
    return {QString::fromUtf8(name), QString::fromUtf8(id), QString::fromUtf8(customId)};
}

} // namespace

class TestMeasureOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void times_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("ms"); // -1: refused
        QTest::newRow("seconds") << "10s" << qint64(10000);
        QTest::newRow("no unit") << "10" << qint64(10000);
        QTest::newRow("fraction") << "0.25s" << qint64(250);
        QTest::newRow("milliseconds") << "1500ms" << qint64(1500);
        QTest::newRow("days, beyond 32 bits") << "100d" << qint64(8640000000);
        for (const char* bad :
             {"", "0", "0.0001s", "-1s", "ten", "1x", "1e3", "nan", "inf", "10 s", "99999999d", "1.s"})
            QTest::newRow(bad) << bad << qint64(-1);
    }

    void times()
    {
        QFETCH(QString, text);
        QFETCH(qint64, ms);
        const Options options =
            parseOptions({QStringLiteral("p"), QStringLiteral("--all"), QStringLiteral("--duration"), text});
        QCOMPARE(options.action, ms < 0 ? Action::Refuse : Action::Measure);
        QCOMPARE(options.duration ? qint64(options.duration->count()) : qint64(-1), ms);
    }

    void aWholeLine()
    {
        const Options options = parse(QStringLiteral(
            "--camera a --camera b --mode counters --interval 5s --sample-period 8 --capacity 2.5k --required 400"));
        QCOMPARE(options.cameras, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(options.mode, MeasModeStandardAcq);
        QCOMPARE(qint64(options.interval.count()), qint64(5000));
        QCOMPARE(options.samplePeriod, 8);
        QCOMPARE(options.capacity, 2500);
        QCOMPARE(options.required.value_or(0), 400);
    }

    void actions_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("action");
        QTest::newRow("unknown option") << "--help --frob" << int(Action::Refuse);
        QTest::newRow("help with others") << "--all --min-average x --help" << int(Action::Help);
        QTest::newRow("version") << "--version" << int(Action::Version);
        QTest::newRow("list") << "--list --cameras f.json" << int(Action::List);
        QTest::newRow("required auto") << "--all --required auto" << int(Action::Measure);
        for (const char* wrong :
             {"", "--all extra", "--all --camera a", "--all --mode fast", "--all --required -5",
              "--all --required 1.5", "--all --required 0", "--all --sample-period 7", "--all --capacity 0",
              "--all --capacity 3G", "--all --capacity 1.5", "--all --interval 1ms", "--all --min-average",
              "--all --min-average nan", "--all --max-overflows -1", "--all --max-skips 1",
              "--all --mode counters --max-level 5", "--all --mode counters --min-throughput 5",
              "--all --mode counters --csv f"})
            QTest::newRow(wrong) << wrong << int(Action::Refuse);
    }

    void actions()
    {
        QFETCH(QString, line);
        const Options options = parse(line);
        QTEST(int(options.action), "action");
        QCOMPARE(options.text.isEmpty(), options.action == Action::Measure || options.action == Action::List);
    }

    void camerasAreFound_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QVector<int>>("found");
        QTest::addColumn<int>("fault");
        const int none = int(Selection::Fault::None);
        QTest::newRow("by ID") << QStringList{"2"} << QVector<int>{1} << none;
        QTest::newRow("by name") << QStringList{"Other"} << QVector<int>{2} << none;
        QTest::newRow("by own name") << QStringList{"Left"} << QVector<int>{0} << none;
        QTest::newRow("an ID goes before a name") << QStringList{"3"} << QVector<int>{2} << none;
        QTest::newRow("each once, in their order") << QStringList{"3", "Left", "1"} << QVector<int>{0, 2} << none;
        QTest::newRow("missing") << QStringList{"1", "left"} << QVector<int>{} << int(Selection::Fault::Missing);
        QTest::newRow("an ID that no name is") << QStringList{"4"} << QVector<int>{3} << none;
        QTest::newRow("ambiguous") << QStringList{"Same"} << QVector<int>{} << int(Selection::Fault::Ambiguous);
    }

    void camerasAreFound()
    {
        QFETCH(QStringList, names);
        const std::vector<SxCameraInfo> known{info("Same", "1", "Left"), info("Same", "2"), info("Other", "3"),
                                              info("3", "4")};
        const Selection selection = selectCameras(known, names);
        QTEST(QVector<int>(selection.cameras.begin(), selection.cameras.end()), "found");
        QTEST(int(selection.fault), "fault");
    }

    void reportNamesAreSafeAndApart()
    {
        const QStringList files =
            reportFiles(QStringLiteral("out/{camera}.csv"),
                        {info("A/B", "1"), info("../x", "7"), info("A:B", "1"), info("é", "{camera}")});
        QCOMPARE(QSet<QString>(files.begin(), files.end()).size(), 4);
        QCOMPARE(files[0], QStringLiteral("out/A_B-1.csv"));
        for (const QString& file : files)
            QCOMPARE(file.count(QLatin1Char('/')), 1);
        QCOMPARE(reportFiles(QStringLiteral("plain.csv"), {info("A", "1")}), QStringList{"plain.csv"});
    }
};

QTEST_GUILESS_MAIN(TestMeasureOptions)
#include "tst_measureoptions.moc"
