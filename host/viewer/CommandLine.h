// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of `kestrova` as a value. Needs no display and no application object but for the help text.
#ifndef KESTROVA_COMMANDLINE_H
#define KESTROVA_COMMANDLINE_H

#include <chrono>
#include <optional>

#include <QtCore/QSize>
#include <QtCore/QStringList>

/// What the user asked for.
struct ViewerOptions
{
    QString camerasFile;       ///< empty: the built-in cameras
    QStringList camerasToOpen; ///< names, ids or custom ids
    bool openAll = true;       ///< open every camera, whatever camerasToOpen says
    QStringList pluginDirs;    ///< beside the installed directory
    QString settingsFile;      ///< empty: the user's
    QString language;          ///< empty: by locale
    bool start = false;        ///< press "Start All"
    std::optional<std::chrono::milliseconds> quitAfter;
    QSize windowSize;       ///< in pixels; invalid: as it was last
    QString screenshotFile; ///< empty: none
};

/// Either options to run with, or a text to print and an exit code.
struct CommandLine
{
    enum class Outcome
    {
        Run,
        Print,
        Error
    };

    Outcome outcome = Outcome::Run;
    ViewerOptions options;
    QString text; ///< of Print and Error

    static CommandLine parse(const QStringList& arguments);
};

#endif
