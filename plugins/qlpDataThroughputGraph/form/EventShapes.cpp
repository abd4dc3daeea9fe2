// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes, colours and texts of events.
#include "EventShapes.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "Look.h"

namespace {

constexpr double bandShare = 0.35; ///< of a shape's height: the line that joins the ends of a band
constexpr double usPerS = 1e6;

class EventTexts
{
    Q_DECLARE_TR_FUNCTIONS(EventTexts)
};

/// The shape of one event, or of an end of a band.
QPolygonF shapeOf(EventKind kind, const QRectF& rect)
{
    const QPointF middle = rect.center();
    switch (kind) {
    case EventKind::Start:
        return {{rect.topLeft(), {rect.right(), middle.y()}, rect.bottomLeft()}};
    case EventKind::MissingFrames:
        return {{rect.topLeft(), rect.topRight(), {middle.x(), rect.bottom()}}};
    case EventKind::BufferOverflow:
        return {{{middle.x(), rect.top()},
                 {rect.right(), middle.y()},
                 {middle.x(), rect.bottom()},
                 {rect.left(), middle.y()}}};
    case EventKind::Silence: // an upright line
        return QPolygonF(QRectF(middle.x() - 1.0, rect.top(), 2.0, rect.height()));
    case EventKind::End:
        break;
    }
    return QPolygonF(rect);
}

} // namespace

QColor eventShapes::colour(EventKind kind)
{
    switch (kind) {
    case EventKind::Start:
        return {120, 230, 120};
    case EventKind::End:
        return {150, 205, 255};
    case EventKind::Silence:
        return {225, 225, 225};
    case EventKind::MissingFrames:
        return {255, 110, 110};
    case EventKind::BufferOverflow:
        return {240, 140, 255};
    }
    return Qt::white;
}

QString eventShapes::name(EventKind kind)
{
    switch (kind) {
    case EventKind::Start:
        return EventTexts::tr("Start");
    case EventKind::End:
        return EventTexts::tr("End");
    case EventKind::Silence:
        return EventTexts::tr("Silence");
    case EventKind::MissingFrames:
        return EventTexts::tr("Missing frames");
    case EventKind::BufferOverflow:
        return EventTexts::tr("Buffer overflow");
    }
    return {};
}

QString eventShapes::text(const EventMark& mark)
{
    const auto amount = static_cast<double>(mark.amount);
    if (mark.kind == EventKind::Silence)
        return EventTexts::tr("%1: %2 s").arg(name(mark.kind), QString::number(amount / usPerS, 'f', 2));
    return mark.amount == 1 ? name(mark.kind)
                            : EventTexts::tr("%1: %2").arg(name(mark.kind), QString::number(mark.amount));
}

QString eventShapes::symbol(EventKind kind)
{
    const int width = kind == EventKind::Silence ? pixels + 4 : pixels;
    QImage picture(pixels + 4, pixels + 2, QImage::Format_ARGB32_Premultiplied);
    picture.fill(look::background);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, kind, QRectF((picture.width() - width) / 2.0, 1.0, width, pixels));
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "PNG");
    return QStringLiteral("<img src=\"data:image/png;base64,%1\"/>").arg(QString::fromLatin1(png.toBase64()));
}

void eventShapes::draw(QPainter& painter, EventKind kind, const QRectF& rect)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour(kind));
    const double side = rect.height();
    const QRectF first(rect.topLeft(), QSizeF(side, side));
    const QRectF last(QPointF(rect.right() - side, rect.top()), first.size());
    if (rect.width() > side || kind == EventKind::Silence) {
        const double line = bandShare * side;
        painter.drawRect(
            QRectF(first.center().x(), rect.center().y() - line / 2.0, last.center().x() - first.center().x(), line));
    }
    painter.drawPolygon(shapeOf(kind, first));
    if (rect.width() > side)
        painter.drawPolygon(shapeOf(kind, last));
}
