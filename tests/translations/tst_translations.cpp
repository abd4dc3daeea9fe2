// SPDX-License-Identifier: GPL-3.0-or-later
// The files of the languages: every text of the code is in them, done, and fits its source.
#include <QtTest/QtTest>

#include "Table.h"

class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsTranslated_data()
    {
        const Table<QStringList> row("folders");
        for (const char* language : {"de", "zh_CN"}) {
            row(qPrintable(QStringLiteral("kestrova_%1.ts").arg(language)),
                {"host/app", "host/core", "host/devices", "host/gui", "host/viewer"});
            row(qPrintable(QStringLiteral("qlpDataThroughputGraph_%1.ts").arg(language)),
                {"plugins/qlpDataThroughputGraph"});
        }
    }

    void everyTextIsTranslated()
    {
        QFETCH(QStringList, folders);
        const QTemporaryDir directory;
        const QString found = directory.filePath(QStringLiteral("found.ts"));
        QProcess lupdate;
        lupdate.setWorkingDirectory(QStringLiteral(SOURCE_DIR));
        lupdate.start(QStringLiteral(LUPDATE), folders + QStringList{"-silent", "-ts", found});
        QVERIFY(lupdate.waitForFinished());
        QCOMPARE(lupdate.exitCode(), 0);

        const QStringList texts = read(found).keys();
        QVERIFY(texts.size() > 50);
        const auto translations = read(QStringLiteral(SOURCE_DIR "/translations/") + QTest::currentDataTag());
        QCOMPARE(QStringList(translations.keys()), texts);

        // Markup, placeholders, dots of "more to come" and shortcuts are what a translator easily loses.
        const QRegularExpression parts(QStringLiteral("<[^>]*>|%[0-9]|\\.\\.\\.$|&(?=\\w)"),
                                       QRegularExpression::UseUnicodePropertiesOption);
        const auto partsOf = [&parts](const QString& text) {
            QStringList inText;
            for (auto match = parts.globalMatch(text); match.hasNext();)
                inText.append(match.next().captured());
            inText.sort(); // the order may differ
            return inText;
        };
        for (auto it = translations.cbegin(); it != translations.cend(); ++it) {
            const QString source = it.key().section(QLatin1Char('|'), 1);
            QVERIFY2(!it.value().isEmpty(), qPrintable(source));
            QCOMPARE(partsOf(it.value()), partsOf(source));
            QVERIFY2(!source.contains(QLatin1String("(*.")) || it.value() == source, qPrintable(source));
        }
    }

private:
    /// The finished translations of a file; by the texts, each with its context in front.
    static QMap<QString, QString> read(const QString& path)
    {
        QMap<QString, QString> messages;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return messages;
        QXmlStreamReader xml(&file);
        QString context, source;
        while (!xml.atEnd()) {
            if (!xml.readNextStartElement())
                continue;
            if (xml.name() == QLatin1String("name")) {
                context = xml.readElementText();
            } else if (xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                const bool finished = !xml.attributes().hasAttribute(QStringLiteral("type"));
                messages[context + QLatin1Char('|') + source] =
                    finished ? xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed() : QString();
            }
        }
        return messages;
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
