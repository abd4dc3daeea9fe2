// SPDX-License-Identifier: GPL-3.0-or-later
// Finding and loading the files of a language.
#include "Language.h"

#include <algorithm>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

namespace {

const QLatin1String languageOfTheCode("en");

void installFile(const QString& file)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(file))
        QCoreApplication::installTranslator(translator);
}

} // namespace

QString translationsDirectory()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(programs.filePath(QStringLiteral("../" KESTROVA_DATADIR "/kestrova/translations")));
}

QString chooseLanguage(const QStringList& wanted)
{
    const QDir directory(translationsDirectory());
    for (QString name : wanted) {
        name.replace(QLatin1Char('-'), QLatin1Char('_'));
        for (; !name.isEmpty(); name.truncate(std::max(0, name.lastIndexOf(QLatin1Char('_'))))) {
            if (name == languageOfTheCode || directory.exists(QStringLiteral("kestrova_%1.qm").arg(name)))
                return name;
        }
    }
    return {};
}

QString chooseLanguage(const QString& name)
{
    return chooseLanguage(QStringList{name} + QLocale(name).uiLanguages());
}

void installLanguage(const QString& language)
{
    if (language.isEmpty() || language == languageOfTheCode)
        return;
    const QString qt = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    installFile(QStringLiteral("%1/qtbase_%2.qm").arg(qt, language));
    const QDir directory(translationsDirectory());
    const auto files = directory.entryList({QStringLiteral("*_%1.qm").arg(language)}, QDir::Files, QDir::Name);
    for (const QString& file : files)
        installFile(directory.filePath(file));
}
