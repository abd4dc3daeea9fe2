// SPDX-License-Identifier: GPL-3.0-or-later
// All that a report says, before it has a form.
#ifndef KESTROVA_MEASURE_REPORTCONTENT_H
#define KESTROVA_MEASURE_REPORTCONTENT_H

#include <optional>
#include <vector>

#include <QtCore/QStringList>

#include "Outcome.h"
#include "RunEvents.h"
#include "RunHistory.h"

/// One number, ready to be shown.
struct ReportFigure
{
    QString title;
    QString value;       ///< empty if not known
    QString unit;        ///< may be empty
    QString brief;       ///< shorter title, for the table of several cameras; empty: not in it
    bool broken = false; ///< a limit of it is
};

/// So large a share of all blocks had at most that throughput.
struct ReportQuantile
{
    double share;      ///< above 0, up to 1
    double throughput; ///< MB/s
};

/// A setting, or a fact of the machine.
struct ReportFact
{
    QString title;
    QString value;
};

struct ReportLimit
{
    QString text;     ///< "Average throughput at least 350 MB/s"
    QString measured; ///< with its unit
    QString broken;   ///< when it was broken first; may be empty
    bool kept;
    QString figure{};   ///< key of what it judges
    double value = 0.0; ///< in that figure's unit
    bool isMinimum = false;
};

/// A possible cause, and the figures behind it.
struct ReportFinding
{
    QString sentence;
    std::vector<ReportFigure> figures;
};

struct ReportCamera
{
    QString name;
    Outcome outcome = Outcome::Fail;
    QStringList problems; ///< what makes its run worthless
    QStringList warnings; ///< what no limit has seen
    std::vector<ReportLimit> limits;
    std::vector<ReportFigure> figures;
    std::vector<ReportFinding> findings;
    std::vector<ReportFigure> quantiles;      ///< of the distribution
    std::vector<ReportQuantile> distribution; ///< by ascending share; may be empty
    QDateTime start;                          ///< of its course, in local time
    std::vector<HistoryColumn> course;
    std::optional<double> required; ///< MB/s
};

/// What the cameras of a link delivered together; texts are empty if not known.
struct ReportLink
{
    QString name;
    QString cameras;
    QString delivered; ///< MB/s
    QString rate;      ///< MB/s that it can carry
    QString share;     ///< delivered, percent of the rate
};

struct ReportContent
{
    QString program; ///< with its version
    Outcome outcome = Outcome::Fail;
    int exitCode = 0;
    QDateTime start; ///< local time
    QDateTime end;
    QStringList notes; ///< what the reader has to know beside the figures
    std::vector<ReportCamera> cameras;
    std::vector<ReportLink> links; ///< and all cameras as the last one; empty for one camera
    std::vector<RunEvent> events;
    std::vector<ReportFact> settings;
    std::vector<ReportFact> machine;
};

#endif
