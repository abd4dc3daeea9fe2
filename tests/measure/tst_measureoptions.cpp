// SPDX-License-Identifier: GPL-3.0-or-later
// The command line: what is understood and what is refused.
#include <QtTest/QtTest>

#include "Options.h"
#include "Table.h"

using Action = Options::Action;
Q_DECLARE_METATYPE(Options::Action)

namespace {

Options parse(const QString& line)
{
    return parseOptions(QStringList(QStringLiteral("kestrova-measure")) +
                        line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

} // namespace

class TestMeasureOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_GUILESS_MAIN(TestMeasureOptions)
#include "tst_measureoptions.moc"
