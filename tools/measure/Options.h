// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of kestrova-measure.
#ifndef KESTROVA_MEASURE_OPTIONS_H
#define KESTROVA_MEASURE_OPTIONS_H

#include <chrono>
#include <optional>
#include <vector>

#include <QtCore/QStringList>

#include "CameraLineData.h"
#include "Limits.h"
#include "ListenAddress.h"

/// What the command line asks for; every value is one that can be meant.
struct Options
{
    /// After Help, Version and Refuse there is only a text to tell.
    enum class Action
    {
        Measure,
        List,
        Search,
        Help,
        Version,
        Refuse ///< wrong usage, `text` says why
    };

    Action action = Action::Measure;
    QString text; ///< of Help, Version and Refuse

    QString scenarioFile; ///< empty: the built-in one
    QStringList cameras;  ///< names or IDs
    bool allCameras = false;

    ExMeasMode mode = MeasModeDataThroughput;
    std::optional<std::chrono::milliseconds> duration; ///< none: until stopped
    std::chrono::milliseconds interval{1000};
    qint32 samplePeriod = 4096;       ///< bytes
    qint32 capacity = 10000000;       ///< samples
    std::optional<qint32> required;   ///< MB/s; none: as the camera tells
    std::optional<qint32> bufferSize; ///< bytes, of a camera that does not tell
    std::optional<ListenAddress> metrics;

    QString csvFile;
    QString logFile;
    QString reportFile;
    bool json = false;
    bool resume = true; ///< measure a camera again that was lost and has come back
    QString limitsFile; ///< empty: none
    RigLimits limits;   ///< those of the file are not read yet
};

/// Needs a QCoreApplication. The first argument is the program's name.
Options parseOptions(const QStringList& arguments);

/// What to print after a refusal.
QString usageText();
/// "kestrova-measure 1.2.3"
QString versionText();

/// What takes the place of a camera in the name of a report.
inline const QString cameraPlaceholder = QStringLiteral("{camera}");

#endif
