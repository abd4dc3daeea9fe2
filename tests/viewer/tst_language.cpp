// SPDX-License-Identifier: GPL-3.0-or-later
// Which language is chosen, and that all texts are in it, Qt's own and those of plug-ins too.
#include <QtTest/QtTest>

#include "Language.h"

class TestLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void byLocale_data()
    {
        QTest::addColumn<QStringList>("wanted");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("country") << QStringList{"de-AT", "de"} << "de";
        QTest::newRow("next best") << QStringList{"fr-FR", "fr", "zh-CN", "de"} << "zh_CN";
        QTest::newRow("English before others") << QStringList{"en-GB", "en", "de"} << "en";
        QTest::newRow("traditional Chinese is another") << QStringList{"zh-TW", "zh-Hant-TW", "zh"} << "";
        QTest::newRow("none of ours") << QStringList{"fr-FR", "C"} << "";
    }
    void byLocale()
    {
        QFETCH(QStringList, wanted);
        QTEST(chooseLanguage(wanted), "chosen");
    }

    void byName_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::newRow("de") << "de";
        QTest::newRow("de_CH") << "de";
        QTest::newRow("en") << "en";
        QTest::newRow("zh") << "zh_CN";
        QTest::newRow("zh-Hans") << "zh_CN";
        QTest::newRow("fr") << "";
        QTest::newRow("nonsense") << "";
        QTest::newRow("../de") << "";
    }
    void byName() { QTEST(chooseLanguage(QString(QTest::currentDataTag())), "chosen"); }

    void everyPartIsTranslated()
    {
        const auto text = [](const char* context, const char* source) {
            return QCoreApplication::translate(context, source);
        };
        installLanguage(QString());
        QCOMPARE(text("EventDock", "Events"), QStringLiteral("Events"));
        installLanguage(QStringLiteral("de"));
        QCOMPARE(text("EventDock", "Events"), QStringLiteral("Ereignisse"));
        QCOMPARE(text("CxDataGraphForm", "Start All"), QStringLiteral("Alle starten"));
        QCOMPARE(text("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    }
};

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
