// SPDX-License-Identifier: GPL-3.0-or-later
// Which language is chosen.
#include <QtTest/QtTest>

#include "Language.h"
#include "Table.h"

class TestLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void byLocale()
    {
        const Rows<QStringList, QString> rows{{{"de-AT", "de"}, "de"},
                                              {{"fr-FR", "fr", "zh-CN", "de"}, "zh_CN"},
                                              {{"en-GB", "en", "de"}, "en"},
                                              {{"zh-TW", "zh-Hant-TW", "zh"}, ""}, // traditional is another
                                              {{"fr-FR", "C"}, ""}};
        for (const auto& [wanted, chosen] : rows)
            QCOMPARE(chooseLanguage(wanted), chosen);
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
