// SPDX-License-Identifier: GPL-3.0-or-later
// Where marks are drawn, and their legend.
#include "AreaMarks.h"

#include <algorithm>
#include <array>

#include <qcustomplot.h>

#include "../engine/TimeMath.h"
#include "EventShapes.h"
#include "PlotPainting.h"
#include "RowCells.h"

namespace {

constexpr int legendFontPixels = 11; ///< as of the axes
constexpr int legendPixels = 150;    ///< as wide as the curves' list above it
constexpr int lanePixels = eventShapes::pixels + 1;
constexpr std::array<EventKind, eventKinds> kinds{EventKind::Start, EventKind::End, EventKind::Silence,
                                                  EventKind::MissingFrames, EventKind::BufferOverflow};

int laneOf(EventKind kind)
{
    switch (kind) {
    case EventKind::MissingFrames:
        return 1;
    case EventKind::BufferOverflow:
        return 2;
    default:
        return 0;
    }
}

} // namespace

AreaMarks::AreaMarks(QCustomPlot* plotWidget, QLabel* kindsLegend)
    : QObject(plotWidget), plot(plotWidget), legend(kindsLegend)
{
    paintOnLayer(plot, "legend", [this](QCPPainter& painter) { draw(painter); }); // above the curves
    legend->hide();
    QFont font = legend->font();
    font.setPixelSize(legendFontPixels);
    legend->setFont(font);
    legend->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    legend->setMinimumHeight(QFontMetrics(font).lineSpacing() + 2);
    QSizePolicy always(QSizePolicy::Preferred, QSizePolicy::Ignored); // nothing moves when marks come and go
    always.setRetainSizeWhenHidden(true);
    legend->setSizePolicy(always);
    connect(plot, &QCustomPlot::beforeReplot, this, &AreaMarks::updateLegend);
}

void AreaMarks::show(VNCORE_HANDLE hCam, std::vector<EventMark> marks, qint64 nowUs)
{
    if (marks.empty())
        cameras.remove(hCam);
    else
        cameras[hCam] = {std::move(marks), nowUs};
}

void AreaMarks::clear()
{
    cameras.clear();
}

std::vector<EventMark> AreaMarks::at(const QCPAxisRect& area, const QPointF& point) const
{
    std::vector<EventMark> found;
    const Shown shown = cameras.value(cameraOf(&area));
    std::copy_if(shown.marks.begin(), shown.marks.end(), std::back_inserter(found), [&](const EventMark& mark) {
        const QRectF rect = place(area, mark, shown.nowUs);
        return rect.left() <= point.x() && point.x() <= rect.right();
    });
    return found;
}

/// Whole within the area, also at its ends.
QRectF AreaMarks::place(const QCPAxisRect& area, const EventMark& mark, qint64 nowUs)
{
    const QRectF inside = QRectF(area.rect()).adjusted(1.0, 1.0, -1.0, 0.0);
    const double half = eventShapes::pixels / 2.0;
    const auto pixel = [&](qint64 timeUs) {
        const double key = static_cast<double>(saturatingSub(timeUs, nowUs)) / usPerSecond;
        return std::clamp(area.axis(QCPAxis::atBottom)->coordToPixel(key), inside.left() + half,
                          std::max(inside.left(), inside.right() - 2.0 * half) + half);
    };
    const double from = pixel(mark.fromUs) - half;
    return {from, inside.top() + laneOf(mark.kind) * lanePixels, pixel(mark.toUs) + half - from,
            double(eventShapes::pixels)};
}

void AreaMarks::draw(QCPPainter& painter) const
{
    for (const QCPAxisRect* area : plot->axisRects()) {
        const Shown shown = cameras.value(cameraOf(area));
        for (auto mark = shown.marks.rbegin(); mark != shown.marks.rend(); ++mark) // silence below its run's ends
            eventShapes::draw(painter, mark->kind, place(*area, *mark, shown.nowUs));
    }
}

/// Names the kinds that are there; where there is no room for all names, the tool tip does.
void AreaMarks::updateLegend()
{
    std::vector<EventKind> present;
    std::copy_if(kinds.begin(), kinds.end(), std::back_inserter(present), [this](EventKind kind) {
        return std::any_of(cameras.cbegin(), cameras.cend(), [kind](const Shown& shown) {
            return std::any_of(shown.marks.begin(), shown.marks.end(),
                               [kind](const EventMark& mark) { return mark.kind == kind; });
        });
    });
    const QFontMetrics metrics(legend->font());
    const int room = legend->height() / metrics.lineSpacing();
    if (present == named && room == roomLines)
        return;
    named = std::move(present);
    roomLines = room;
    QString symbols;
    QString text;
    int lines = 0;
    int width = legendPixels;
    for (const EventKind kind : named) { // short names share a line
        const QString name = eventShapes::name(kind);
        const int entry = metrics.horizontalAdvance(name) + 2 * lanePixels;
        const bool joins = width + entry <= legendPixels;
        lines += joins ? 0 : 1;
        width = joins ? width + entry : entry;
        const QString symbol = eventShapes::symbol(kind);
        symbols += symbol;
        text += QLatin1String(joins       ? " &nbsp;"
                              : lines > 1 ? "<br/>"
                                          : "") +
                symbol + QLatin1Char(' ') + name.toHtmlEscaped();
    }
    legend->setText(lines > room ? symbols : text);
    legend->setToolTip(text);
    legend->setVisible(!named.empty());
}
