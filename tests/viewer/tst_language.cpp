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

    void byName()
    {
        const QStringList names{"de", "de_CH", "en", "zh", "zh-Hans", "fr", "nonsense", "../de"};
        QStringList chosen;
        for (const QString& name : names)
            chosen.append(chooseLanguage(name));
        QCOMPARE(chosen, QStringList({"de", "de", "en", "zh_CN", "zh_CN", "", "", ""}));
    }
};

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
