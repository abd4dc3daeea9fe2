// SPDX-License-Identifier: GPL-3.0-or-later
// Following the mouse, and the box beside it.
#include "Tracer.h"

#include <cmath>

#include <qcustomplot.h>

#include "../engine/TimeMath.h"
#include "AreaMarks.h"
#include "EventShapes.h"
#include "Look.h"
#include "PlotPainting.h"
#include "TimeOfDay.h"

namespace {

constexpr auto overlay = "overlay"; ///< the plot draws it into a buffer of its own
constexpr int textPixels = 11;
constexpr int padding = 4;
constexpr int distance = 12; ///< of the box from the mouse

QString unitOf(const QCPGraph& graph)
{
    if (graph.valueAxis()->axisType() == QCPAxis::atRight)
        return QStringLiteral(" %");
    const bool counts = !graph.valueAxis()->axisRect()->axis(QCPAxis::atRight)->visible();
    return counts ? QString() : QStringLiteral(" MB/s");
}

/// A point stands for the time since the one before it; none where the curve is not.
std::optional<double> valueAt(const QCPGraph& graph, double key)
{
    const auto point = graph.data()->findBegin(key, false);
    if (point == graph.data()->constEnd() || graph.data()->constBegin()->key > key)
        return std::nullopt;
    return point->value;
}

} // namespace

Tracer::Tracer(QCustomPlot* plotWidget, const AreaMarks* areaMarks, std::function<qint64()> now)
    : QObject(plotWidget), plot(plotWidget), marks(areaMarks), nowUs(std::move(now))
{
    paintOnLayer(plot, overlay, [this](QCPPainter& painter) { draw(painter); });
    plot->installEventFilter(this);
}

bool Tracer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove)
        moveTo(static_cast<QMouseEvent*>(event)->pos());
    else if (event->type() == QEvent::Leave || event->type() == QEvent::Hide)
        moveTo(std::nullopt);
    return QObject::eventFilter(watched, event);
}

void Tracer::moveTo(std::optional<QPoint> place)
{
    const bool shown = area() != nullptr;
    mouse = place;
    if (shown || area() != nullptr)
        plot->layer(QLatin1String(overlay))->replot();
}

/// In which the mouse is.
const QCPAxisRect* Tracer::area() const
{
    return mouse ? plot->axisRectAt(*mouse) : nullptr;
}

QStringList Tracer::lines() const
{
    const QCPAxisRect* traced = area();
    if (traced == nullptr)
        return {};
    const double seconds = traced->axis(QCPAxis::atBottom)->pixelToCoord(mouse->x());
    const qint64 timeUs = saturatingAdd(nowUs(), truncatedToInt64(seconds * usPerSecond));
    QStringList lines{timeOfDayText(timeUs, true) + QStringLiteral("   ") +
                      tr("%1 s").arg(QString::number(seconds, 'f', 3))};
    for (const QCPGraph* graph : traced->graphs()) {
        if (const auto value = valueAt(*graph, seconds))
            lines += QCoreApplication::translate("CxDataGraphForm", graph->name().toUtf8()) + QStringLiteral(": ") +
                     QString::number(std::round(*value)) + unitOf(*graph);
    }
    for (const EventMark& mark : marks->at(*traced, *mouse))
        lines += eventShapes::text(mark);
    return lines;
}

void Tracer::draw(QCPPainter& painter) const
{
    const QStringList text = lines();
    if (text.isEmpty())
        return;
    painter.setPen(QPen(look::text, 0, Qt::DashLine));
    for (const QCPAxisRect* rect : plot->axisRects())
        painter.drawLine(QLineF(mouse->x(), rect->top(), mouse->x(), rect->bottom()));

    QFont font = plot->font();
    font.setPixelSize(textPixels);
    painter.setFont(font);
    const QString all = text.join(QLatin1Char('\n'));
    const QRect inside = plot->viewport();
    QRect box = QFontMetrics(font).boundingRect(inside, Qt::AlignLeft, all).adjusted(0, 0, 2 * padding, 2 * padding);
    box.moveTopLeft(*mouse + QPoint(distance, distance));
    if (box.right() > inside.right())
        box.moveRight(mouse->x() - distance);
    box.moveBottom(std::min(box.bottom(), inside.bottom()));
    painter.setPen(look::text);
    painter.setBrush(look::heading);
    painter.drawRect(box);
    painter.drawText(box.adjusted(padding, padding, -padding, -padding), Qt::AlignLeft, all);
}
