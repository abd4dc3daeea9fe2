// SPDX-License-Identifier: GPL-3.0-or-later
// Limits: since when they are broken, and the files that hold them.
#include <QtTest/QtTest>

#include "Files.h"
#include "LimitsFile.h"
#include "Table.h"
#include "Verdict.h"

class TestLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Since when: a figure may come back.
    void limits()
    {
        const LimitKind least{"least", "", "", "value", "", true, false, true, true};
        const LimitKind most{"most", "", "", "value", "", false, false, true, true};
        Verdict verdict({{&least, 10.0}, {&most, 20.0}});
        double at = 0.0;
        const auto look = [&](std::optional<double> value) {
            verdict.look({{"value", "", 0, value}}, ++at);
            const auto since = [](const LimitVerdict& limit) {
                return limit.kept ? QStringLiteral("kept") : QString::number(limit.brokenAtS.value_or(-1.0));
            };
            return since(verdict.limits[0]) + ' ' + since(verdict.limits[1]);
        };
        QCOMPARE(look(std::nullopt), QString("-1 -1"));
        QCOMPARE(look(9.999), QString("2 kept"));
        QCOMPARE(look(10.0), QString("kept kept"));
        QCOMPARE(look(9.0), QString("4 kept"));
        QCOMPARE(look(8.0), QString("4 kept"));
        QCOMPARE(verdict.brokenLimits(), QStringList("--least 10: 8"));
        look(9.99996);
        QCOMPARE(verdict.brokenLimits(), QStringList("--least 10: 9.99996")); // as many digits as show it
        QCOMPARE(look(20.0), QString("kept kept"));
        QVERIFY(verdict.passed());
        QCOMPARE(look(20.001), QString("kept 8"));
        QCOMPARE(look(qQNaN()), QString("-1 -1"));
        QVERIFY(!verdict.passed());
    }

    void limitsFiles_data()
    {
        const Table<QByteArray, QString> row("json", "result");
        row("general, own and given", R"({"all": {"max-gap": "1.5s", "min-average": 49}, "cameras": [
            {"id": "1", "max-gap": "2s", "max-missing": 0}, {"id": "2", "max-level": 1}]})",
            "--min-average 50, --max-gap 2000ms, --max-missing 0");
        row("no JSON", "{\n]", "line 2: unterminated object");
        row("no object", "[]", "must be an object");
        row("nothing", "{}", "all: there is no limit");
        row("unknown limit", R"({"all": {"max_gap": "1s"}})", "all: unknown key \"max_gap\"");
        row("time without a unit", R"({"all": {"max-gap": 1}})",
            "all.max-gap: must be a time from 1ms to 3650d, such as 10s");
        row("number as a text", R"({"cameras": [{"id": "1", "max-level": "5"}]})",
            "cameras[0].max-level: must be a number of 0 or more");
        row("negative", R"({"all": {"max-level": -1}})", "all.max-level: must be a number of 0 or more");
        row("another mode's", R"({"all": {"max-skips": 0}})", "all.max-skips: has no meaning in this mode");
        row("twice", R"({"cameras": [{"id": "1"}, {"id": "1"}]})",
            "cameras[1].id: must be given and unlike that of other cameras");
    }

    void limitsFiles()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, result);
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("rig.json"));
        writeFile(file, json);
        RigLimits limits;
        limits.given = {{&limitKinds()[1], 50.0}};
        QString got;
        if (readLimitsFile(file, MeasModeDataThroughput, limits, got)) {
            QStringList texts;
            for (const Limit& limit : limits.of(QStringLiteral("1")))
                texts.append(limitText(limit));
            QCOMPARE(texts.join(", "), result);
        } else {
            QCOMPARE(got, file + ": " + result);
        }
    }
};

QTEST_GUILESS_MAIN(TestLimits)
#include "tst_limits.moc"
