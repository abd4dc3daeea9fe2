// SPDX-License-Identifier: GPL-3.0-or-later
// The report of a run: its course keeps what was bad, and its page shows texts of others as they are.
#include <numeric>
#include <set>

#include <QtTest/QtTest>

#include <QtCore/QXmlStreamReader>

#include "HtmlReport.h"
#include "RandomRecord.h"

namespace {

HistoryColumn randomTick(Dice& dice, double beginS, double lengthS)
{
    HistoryColumn tick;
    tick.beginS = beginS;
    tick.endS = beginS + lengthS;
    tick.megabytes = static_cast<double>(dice.between(0, 400));
    tick.missingFrames = dice.oneIn(500) ? 3 : 0;
    tick.overflows = dice.oneIn(900) ? 1 : 0;
    tick.skips = dice.oneIn(700) ? 2 : 0;
    tick.losses = dice.oneIn(3600) ? 1 : 0;
    if (tick.losses > 0) {
        tick.lostFromS = beginS + lengthS / 4.0;
        tick.lostToS = beginS + lengthS / 2.0;
    }
    tick.longestGapMs = static_cast<double>(dice.between(1, 50000));
    if (!dice.oneIn(10)) {
        tick.minThroughput = static_cast<double>(dice.between(1, 400000)) / 1e3;
        tick.maxBufferLevel = static_cast<double>(dice.between(0, 100));
    }
    return tick;
}

QByteArray text(const HistoryColumn& c)
{
    const auto number = [](double value) { return QByteArray::number(value, 'g', 12) + ' '; };
    return number(c.beginS) + number(c.endS) + number(c.megabytes) + number(double(c.missingFrames)) +
           number(double(c.overflows)) + number(double(c.skips)) + number(double(c.losses)) + number(c.longestGapMs) +
           number(c.lostFromS) + number(c.lostToS) + number(c.minThroughput.value_or(-1)) +
           number(c.maxBufferLevel.value_or(-1));
}

/// What ticks say together, each figure looked at by itself.
HistoryColumn naive(const HistoryColumn* begin, const HistoryColumn* end)
{
    const auto sum = [=](auto HistoryColumn::*field) {
        return std::accumulate(begin, end, decltype(begin->*field){},
                               [field](auto all, const HistoryColumn& tick) { return all + tick.*field; });
    };
    std::set<double> gaps;
    std::set<double> throughputs;
    std::set<double> levels;
    for (const HistoryColumn* tick = begin; tick != end; ++tick) {
        gaps.insert(tick->longestGapMs);
        if (tick->minThroughput)
            throughputs.insert(*tick->minThroughput);
        if (tick->maxBufferLevel)
            levels.insert(*tick->maxBufferLevel);
    }
    HistoryColumn all;
    all.beginS = begin->beginS;
    all.endS = (end - 1)->endS;
    all.megabytes = sum(&HistoryColumn::megabytes);
    all.missingFrames = sum(&HistoryColumn::missingFrames);
    all.overflows = sum(&HistoryColumn::overflows);
    all.skips = sum(&HistoryColumn::skips);
    all.losses = sum(&HistoryColumn::losses);
    all.longestGapMs = *gaps.rbegin();
    const auto isLost = [](const HistoryColumn& tick) { return tick.losses > 0; };
    const HistoryColumn* firstLost = std::find_if(begin, end, isLost);
    if (firstLost != end) {
        all.lostFromS = firstLost->lostFromS;
        all.lostToS = std::find_if(std::reverse_iterator(end), std::reverse_iterator(begin), isLost)->lostToS;
    }
    if (!throughputs.empty())
        all.minThroughput = *throughputs.begin();
    if (!levels.empty())
        all.maxBufferLevel = *levels.rbegin();
    return all;
}

/// With a course, limits, events and all else that is shown, under that name.
ReportContent contentOf(const QString& name)
{
    const QDateTime start(QDate(2026, 3, 28), QTime(22, 0));
    ReportContent content;
    content.program = name;
    content.start = content.end = start;
    content.notes = QStringList(name);
    content.links.push_back({name, name, name, name, name});
    for (int i = 0; i < 2; ++i) {
        ReportCamera camera;
        camera.name = name;
        camera.problems = camera.warnings = QStringList(name);
        camera.limits.push_back({name, name, name, false});
        camera.start = start;
        camera.findings.push_back({name, {{name, name, name, {}}}});
        camera.figures.push_back({name, name, name, name, true});
        Dice dice(1);
        for (int s = 0; s < 30; ++s)
            camera.course.push_back(randomTick(dice, s, 1.0));
        content.cameras.push_back(camera);
    }
    content.events.push_back({start, name, name, true});
    content.settings.push_back({name, name});
    content.machine.push_back({name, name});
    return content;
}

} // namespace

class TestHtmlReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// 72 hours of ticks, some late, some short. Every column is what the ticks in it say, one by one.
    void theCourseKeepsWhatWasBad()
    {
        for (const double tickS : {1.0, 0.01}) {
            Dice dice(7);
            RunHistory history(tickS);
            std::vector<HistoryColumn> ticks;
            for (double at = 0.0; ticks.size() < 259200;) {
                const HistoryColumn tick = randomTick(dice, at, tickS * double(dice.between(20, 149)) / 100.0);
                at = tick.endS;
                ticks.push_back(tick);
                history.add(tick);
            }
            const auto columns = history.columns();
            QVERIFY2(columns.size() <= RunHistory::mostColumns + 1 && columns.size() > RunHistory::mostColumns / 4,
                     QByteArray::number(int(columns.size())));
            std::size_t next = 0;
            for (const HistoryColumn& column : columns) {
                const std::size_t first = next;
                while (next < ticks.size() && ticks[next].endS <= column.endS)
                    ++next;
                QVERIFY(next > first);
                QVERIFY(column.leastDelivered <= column.delivered() && column.delivered() <= column.mostDelivered);
                QCOMPARE(text(column), text(naive(&ticks[first], ticks.data() + next)));
            }
            QCOMPARE(next, ticks.size());
        }
    }

    /// What was delivered is told of whole cells: neither of ticks with one frame nor of a piece at the end.
    void deliveredExtremes()
    {
        RunHistory history(1.0);
        HistoryColumn tick;
        for (const auto& [endS, megabytes] : {std::pair{1.0, 300}, {2.1, 110}, {3.0, 270}, {3.1, 0}}) {
            tick.beginS = tick.endS;
            tick.endS = endS;
            tick.megabytes = megabytes;
            history.add(tick);
        }
        QStringList extremes;
        for (const HistoryColumn& column : history.columns())
            extremes << QString::number(column.leastDelivered) + '-' + QString::number(column.mostDelivered);
        QCOMPARE(extremes.join(' '), QString("300-300 100-100 270-270"));
    }

    void eventsAreBounded()
    {
        RunEvents events;
        const int all = 100000;
        for (int i = 0; i < all; ++i)
            events.add({{}, {}, QString::number(i)});
        const auto kept = events.list();
        QCOMPARE(kept.size(), RunEvents::mostFirst + 1 + RunEvents::mostLatest);
        const auto text = [&kept](std::size_t i) { return kept[i].text; };
        QCOMPARE(text(399) + ' ' + text(400) + ' ' + text(401) + ' ' + text(1000),
                 QString("399 99000 events before this time not kept 99400 99999"));
    }

    void textsOfOthersAreShownAsTheyAre_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name : {"plain", "<b>a</b><img src=x> &amp; b", "a, \"b\"; 'c'", "%1 %2 %3 %L1 %s %n %%",
                                 "</style><script>alert(1)</script>", "--><!-- ]]>"})
            QTest::newRow(name) << QString(name);
    }

    /// As strictly read as XML is: the same elements whatever the name, which stands 22 times in them.
    void textsOfOthersAreShownAsTheyAre()
    {
        QFETCH(QString, name);
        const auto elements = [](const QString& of, QString* texts) {
            QXmlStreamReader reader(htmlReport(contentOf(of)));
            QStringList found;
            while (!reader.atEnd()) {
                reader.readNext();
                if (reader.isStartElement()) {
                    found << reader.name().toString();
                    for (const auto& attribute : reader.attributes())
                        found << attribute.value().toString().replace(of, "*");
                } else if (reader.isCharacters() && found.last() != "style") {
                    *texts += reader.text();
                }
            }
            return reader.hasError() ? QStringList(reader.errorString()) : found;
        };
        QString shown;
        QString usual;
        const auto found = elements(name, &shown);
        QCOMPARE(found, elements("plain", &usual));
        QVERIFY(found.contains("svg") && !found.contains("script"));
        QCOMPARE(shown.count(name), usual.count("plain"));
        QVERIFY(shown.count(name) > 15);
        const QString times = usual.mid(usual.indexOf("Longest time"));
        QVERIFY2(times.contains("22:00:0522:00:10"), qPrintable(times));
    }
};

QTEST_GUILESS_MAIN(TestHtmlReport)
#include "tst_htmlreport.moc"
