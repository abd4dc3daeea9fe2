// SPDX-License-Identifier: GPL-3.0-or-later
// The command line: what is understood and what is refused; which cameras are meant; names of reports.
#include <QtTest/QtTest>

#include "CameraSelection.h"
#include "Options.h"
#include "Table.h"

using Action = Options::Action;
Q_DECLARE_METATYPE(Options::Action)
Q_DECLARE_METATYPE(Selection::Fault)

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
        // -1: refused
        const Table<QString, qint64> row("text", "ms");
        row("seconds", "10s", 10000);
        row("no unit", "10", 10000);
        row("fraction", "0.25s", 250);
        row("milliseconds", "1500ms", 1500);
        row("days, beyond 32 bits", "100d", 8640000000);
        for (const char* bad :
             {"", "0", "0.0001s", "-1s", "ten", "1x", "1e3", "nan", "inf", "10 s", "99999999d", "1.s"})
            row(bad, bad, -1);
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
        const Table<QString, Action> row("line", "action");
        row("unknown option", "--help --frob", Action::Refuse);
        row("help with others", "--all --min-average x --help", Action::Help);
        row("version", "--version", Action::Version);
        row("list", "--list --cameras f.json", Action::List);
        row("required auto", "--all --required auto", Action::Measure);
        for (const char* wrong :
             {"", "--all extra", "--all --camera a", "--all --mode fast", "--all --required -5",
              "--all --required 1.5", "--all --required 0", "--all --sample-period 7", "--all --capacity 0",
              "--all --capacity 3G", "--all --capacity 1.5", "--all --interval 1ms", "--all --min-average",
              "--all --min-average nan", "--all --max-overflows -1", "--all --max-skips 1",
              "--all --mode counters --max-level 5", "--all --mode counters --min-throughput 5",
              "--all --mode counters --csv f"})
            row(wrong, wrong, Action::Refuse);
    }

    void actions()
    {
        QFETCH(QString, line);
        const Options options = parse(line);
        QTEST(options.action, "action");
        QCOMPARE(options.text.isEmpty(), options.action == Action::Measure || options.action == Action::List);
    }

    void camerasAreFound_data()
    {
        const Table<QStringList, QVector<int>, Selection::Fault> row("names", "found", "fault");
        const auto none = Selection::Fault::None;
        row("by ID", {"2"}, {1}, none);
        row("by name", {"Other"}, {2}, none);
        row("by own name", {"Left"}, {0}, none);
        row("an ID goes before a name", {"3"}, {2}, none);
        row("each once, in their order", {"3", "Left", "1"}, {0, 2}, none);
        row("missing", {"1", "left"}, {}, Selection::Fault::Missing);
        row("an ID that no name is", {"4"}, {3}, none);
        row("ambiguous", {"Same"}, {}, Selection::Fault::Ambiguous);
    }

    void camerasAreFound()
    {
        QFETCH(QStringList, names);
        const std::vector<SxCameraInfo> known{info("Same", "1", "Left"), info("Same", "2"), info("Other", "3"),
                                              info("3", "4")};
        const Selection selection = selectCameras(known, names);
        QTEST(QVector<int>(selection.cameras.begin(), selection.cameras.end()), "found");
        QTEST(selection.fault, "fault");
    }
};

QTEST_GUILESS_MAIN(TestMeasureOptions)
#include "tst_measureoptions.moc"
