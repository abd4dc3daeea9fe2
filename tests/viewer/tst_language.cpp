// SPDX-License-Identifier: GPL-3.0-or-later
// Which language is chosen.
#include <QtTest/QtTest>

#include "Language.h"
#include "Table.h"

class TestLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void byLocale_data()
    {
        const Table<QStringList, QString> row("wanted", "chosen");
        row("country", {"de-AT", "de"}, "de");
        row("next best", {"fr-FR", "fr", "zh-CN", "de"}, "zh_CN");
        row("English before others", {"en-GB", "en", "de"}, "en");
        row("traditional Chinese is another", {"zh-TW", "zh-Hant-TW", "zh"}, "");
        row("none of ours", {"fr-FR", "C"}, "");
    }
    void byLocale()
    {
        QFETCH(QStringList, wanted);
        QTEST(chooseLanguage(wanted), "chosen");
    }

    void byName_data()
    {
        const Table<QString> row("chosen");
        row("de", "de");
        row("de_CH", "de");
        row("en", "en");
        row("zh", "zh_CN");
        row("zh-Hans", "zh_CN");
        row("fr", "");
        row("nonsense", "");
        row("../de", "");
    }
    void byName() { QTEST(chooseLanguage(QString(QTest::currentDataTag())), "chosen"); }
};

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
