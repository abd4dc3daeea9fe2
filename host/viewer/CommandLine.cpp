// SPDX-License-Identifier: GPL-3.0-or-later
// Options of the viewer and what is wrong with them.
#include "CommandLine.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QRegularExpression>

#include "NumberText.h"

namespace {

CommandLine wrongUsage(const QString& reason)
{
    CommandLine result;
    result.outcome = CommandLine::Outcome::Error;
    result.text = QStringLiteral("kestrova: %1\nUsage: kestrova [OPTION...]\nTry \"kestrova --help\".\n").arg(reason);
    return result;
}

CommandLine print(const QString& text)
{
    CommandLine result;
    result.outcome = CommandLine::Outcome::Print;
    result.text = text;
    return result;
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    const QCommandLineOption cameras(
        QStringLiteral("cameras"), QStringLiteral("Simulate the cameras of this scenario."), QStringLiteral("FILE"));
    const QCommandLineOption open(
        QStringLiteral("open"),
        QStringLiteral("Which cameras to open: \"all\" (default), \"none\", or a camera's name, ID or "
                       "address; may be given several times."),
        QStringLiteral("all|none|NAME|ID|ADDRESS"));
    const QCommandLineOption pluginDir(QStringLiteral("plugin-dir"),
                                       QStringLiteral("Also look for plug-ins here; may be given several times."),
                                       QStringLiteral("DIR"));
    const QCommandLineOption settings(QStringLiteral("settings"), QStringLiteral("Keep the settings in this file."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption language(
        QStringLiteral("language"),
        QStringLiteral("Show texts in this language, \"de\", \"en\" or \"zh_CN\", instead of the locale's."),
        QStringLiteral("LANGUAGE"));
    const QCommandLineOption start(QStringLiteral("start"),
                                   QStringLiteral("Press \"Start All\" when the window is up."));
    const QCommandLineOption quitAfter(
        QStringLiteral("quit-after"),
        QStringLiteral("Quit after this time, for example 10s; units are ms, s, min, h and d."),
        QStringLiteral("TIME"));
    const QCommandLineOption windowSize(QStringLiteral("window-size"),
                                        QStringLiteral("Size of the window in pixels, for example 1280x800."),
                                        QStringLiteral("WIDTHxHEIGHT"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save a picture of the whole window just before quitting."),
                                        QStringLiteral("FILE.png"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Camera viewer with a data throughput measurement."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions({cameras, open, pluginDir, settings, language, start, quitAfter, windowSize, screenshot});

    if (!parser.parse(arguments))
        return wrongUsage(parser.errorText());
    if (parser.isSet(help))
        return print(parser.helpText());
    if (parser.isSet(version))
        return print(QStringLiteral("kestrova " KESTROVA_VERSION "\n"));
    if (!parser.positionalArguments().isEmpty()) {
        return wrongUsage(
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
    }

    CommandLine result;
    ViewerOptions& options = result.options;
    options.camerasFile = parser.value(cameras);
    options.pluginDirs = parser.values(pluginDir);
    options.settingsFile = parser.value(settings);
    options.language = parser.value(language);
    options.start = parser.isSet(start);
    options.screenshotFile = parser.value(screenshot);
    if (parser.isSet(open)) {
        options.camerasToOpen = parser.values(open);
        options.openAll = options.camerasToOpen.contains(QLatin1String("all"));
        options.camerasToOpen.removeAll(QStringLiteral("none"));
    }
    if (parser.isSet(quitAfter)) {
        options.quitAfter = timeFromText(parser.value(quitAfter));
        if (!options.quitAfter)
            return wrongUsage(
                QStringLiteral("--quit-after: \"%1\" is not %2").arg(parser.value(quitAfter), timeDescription));
    }
    if (parser.isSet(windowSize)) {
        const auto size =
            QRegularExpression(QStringLiteral("^([1-9]\\d{0,4})x([1-9]\\d{0,4})$")).match(parser.value(windowSize));
        if (!size.hasMatch())
            return wrongUsage(
                QStringLiteral("--window-size: \"%1\" is not like 1280x800").arg(parser.value(windowSize)));
        options.windowSize = {size.captured(1).toInt(), size.captured(2).toInt()};
    }
    for (const auto& option : {cameras, open, pluginDir, settings, language, screenshot}) {
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return wrongUsage(QStringLiteral("--%1 needs a value").arg(option.names().constFirst()));
    }
    return result;
}
