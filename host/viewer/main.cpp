// SPDX-License-Identifier: GPL-3.0-or-later
// The program `kestrova`: command line, application object, event loop.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QScopeGuard>
#include <QtCore/QTimer>
#include <QtGui/QFont>
#include <QtWidgets/QApplication>

#include "CommandLine.h"
#include "ExitCode.h"
#include "Language.h"
#include "StopSignals.h"
#include "Theme.h"
#include "Viewer.h"

namespace {

constexpr int offscreenFontSize = 9; // points

constexpr qint64 longestSleepMs = 3600000;

/// What the command line asks for is known before there is a display, which not all of it needs.
CommandLine readCommandLine(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return CommandLine::parse(QCoreApplication::arguments());
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

Viewer* runningViewer = nullptr;

/// When the display goes away, Qt ends the process by exit() from within the event loop.
void onExit()
{
    if (runningViewer)
        runningViewer->leave();
}

/// False if the user asked for a language that there is not.
bool installTexts(const QString& wanted)
{
    const QString language =
        wanted.isEmpty() ? chooseLanguage(QLocale::system().uiLanguages()) : chooseLanguage(wanted);
    installLanguage(language);
    return wanted.isEmpty() || !language.isEmpty();
}

/// A timer takes no more than 24 days at once.
void quitLater(QTimer& timer, std::chrono::milliseconds time)
{
    const auto sleep = [&timer, end = QDeadlineTimer(time)] {
        if (end.hasExpired())
            QCoreApplication::quit();
        else
            timer.start(static_cast<int>(std::min(longestSleepMs, end.remainingTime())));
    };
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, sleep);
    sleep();
}

int run(int argc, char** argv, const ViewerOptions& options)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kestrova"));
    QApplication::setApplicationVersion(QStringLiteral(KESTROVA_VERSION));
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // Nobody's desktop has chosen the font; the platform's own is so large that lists are cut.
        QFont font = QApplication::font();
        font.setPointSize(offscreenFontSize);
        QApplication::setFont(font);
    }
    QGuiApplication::setDesktopFileName(QStringLiteral("example.kestrova.Kestrova"));
    applyDarkTheme(application);
    if (!installTexts(options.language)) {
        std::fprintf(stderr, "kestrova: there is no language \"%s\"\n", qPrintable(options.language));
        return ExitWrongUsage;
    }

    const StopSignals stopSignals;
    // quit() ends every event loop of the thread, so it also gets past a box that is open.
    QObject::connect(&stopSignals, &StopSignals::received, &application, &QCoreApplication::quit);
    QTimer quitTimer;
    if (options.quitAfter)
        quitLater(quitTimer, *options.quitAfter);

    Viewer viewer(options);
    runningViewer = &viewer;
    std::atexit(onExit);
    const auto forget = qScopeGuard([] { runningViewer = nullptr; });
    const QString fault = viewer.start();
    if (!fault.isEmpty()) {
        std::fprintf(stderr, "kestrova: %s\n", qPrintable(fault));
        return ExitWrongUsage;
    }
    QApplication::exec();
    const bool pictureSaved = options.screenshotFile.isEmpty() || viewer.saveScreenshot(options.screenshotFile);
    viewer.shutDown();
    if (!pictureSaved) {
        std::fprintf(stderr, "kestrova: cannot write %s\n", qPrintable(options.screenshotFile));
        return ExitFailure;
    }
    return ExitSuccess;
}

} // namespace

int main(int argc, char** argv)
{
    const CommandLine commandLine = readCommandLine(argc, argv);
    switch (commandLine.outcome) {
    case CommandLine::Outcome::Print:
        if (std::fputs(qPrintable(commandLine.text), stdout) < 0 || std::fflush(stdout) != 0) {
            std::perror("kestrova: standard output");
            return ExitWrongUsage;
        }
        return ExitSuccess;
    case CommandLine::Outcome::Error:
        std::fputs(qPrintable(commandLine.text), stderr);
        return ExitWrongUsage;
    case CommandLine::Outcome::Run:
        break;
    }
    if (!hasDisplay()) {
        std::fputs("kestrova: no display. \"kestrova-measure\" measures without one.\n", stderr);
        return ExitFailure;
    }
    return run(argc, argv, commandLine.options);
}
