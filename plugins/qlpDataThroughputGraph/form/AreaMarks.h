// SPDX-License-Identifier: GPL-3.0-or-later
// What happened when, at the top edges of the plot areas: a lane for measurements and silence, one for missing frames and
// one for overflows, so that none hides another.
#ifndef KESTROVA_AREAMARKS_H
#define KESTROVA_AREAMARKS_H

#include <vector>

#include <QtCore/QMap>
#include <QtCore/QObject>

#include <vnCore/vnTypes.h>

#include "../engine/EventMarks.h"

class QCPAxisRect;
class QCPPainter;
class QCustomPlot;
class QLabel;

/// Marks of areas in view, and the lines of the legend that name their kinds. User interface thread only.
class AreaMarks : public QObject
{
public:
    /// The plot owns it. `legend` lives as long.
    AreaMarks(QCustomPlot* plot, QLabel* legend);

    /// Of one camera, whose time axis has that time at 0. Drawn with the next replot.
    void show(VNCORE_HANDLE hCam, std::vector<EventMark> marks, qint64 nowUs);
    void clear();
    bool isEmpty() const { return cameras.isEmpty(); }
    /// Under that point of the plot.
    std::vector<EventMark> at(const QCPAxisRect& area, const QPointF& point) const;

private:
    struct Shown
    {
        std::vector<EventMark> marks;
        qint64 nowUs;
    };

    static QRectF place(const QCPAxisRect& area, const EventMark& mark, qint64 nowUs);
    void draw(QCPPainter& painter) const;
    void updateLegend();

    QCustomPlot* plot;
    QLabel* legend;
    QMap<VNCORE_HANDLE, Shown> cameras; ///< with marks
    std::vector<EventKind> named;       ///< in the legend
    int roomLines = 0;                  ///< that the legend had then
};

#endif
