// SPDX-License-Identifier: GPL-3.0-or-later
// Icons as vector drawings on a 16 x 16 grid.
#include "GuiIcons.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace {

void drawCopy(QPainter& painter)
{
    painter.drawRoundedRect(QRectF(2, 1.5, 8, 10), 1, 1); // the sheet behind ...
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(QRectF(5, 3.5, 9.5, 11.5), Qt::black);
    painter.restore();
    painter.drawRoundedRect(QRectF(6, 4.5, 8, 10), 1, 1); // ... and the one before it
}

void drawSave(QPainter& painter)
{
    painter.drawLine(QPointF(8, 1.5), QPointF(8, 10)); // an arrow down ...
    painter.drawPolyline(QPolygonF({{4.5, 6.5}, {8, 10}, {11.5, 6.5}}));
    painter.drawPolyline(QPolygonF({{2, 10}, {2, 14}, {14, 14}, {14, 10}})); // ... into a tray
}

void drawApplication(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(24, 28, 34));
    painter.drawRoundedRect(QRectF(0, 0, 16, 16), 3, 3);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 196, 160), 1.4));
    painter.drawPolyline(QPolygonF({{2, 11}, {5, 6}, {7, 9}, {10, 3.5}, {14, 8}}));
    painter.setPen(QPen(QColor(240, 150, 40), 1.4));
    painter.drawPolyline(QPolygonF({{2, 13.5}, {8, 12}, {14, 13}}));
}

QPixmap render(GuiIcon icon, const QColor& color, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 16.0, size / 16.0);
    painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (icon) {
    case GuiIcon::Copy:
        drawCopy(painter);
        break;
    case GuiIcon::Save:
        drawSave(painter);
        break;
    case GuiIcon::Application:
        drawApplication(painter);
        break;
    }
    return pixmap;
}

} // namespace

QIcon drawnIcon(GuiIcon icon, const QPalette& palette)
{
    QIcon result;
    for (const int size : {16, 32, 64, 128}) {
        result.addPixmap(render(icon, palette.color(QPalette::Active, QPalette::ButtonText), size));
        result.addPixmap(render(icon, palette.color(QPalette::Disabled, QPalette::ButtonText), size),
                         QIcon::Disabled);
    }
    return result;
}
