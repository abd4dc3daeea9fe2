// SPDX-License-Identifier: GPL-3.0-or-later
// The states and their symbols.
#include "CameraState.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>

#include "CameraEvents.h"
#include "CameraRegistry.h"
#include "TakeOvers.h"

namespace {

/// These texts are translated with those of the list that shows them.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(CameraList)
};

QColor colorOf(CameraState::Kind kind)
{
    switch (kind) {
    case CameraState::Closed:
        return {110, 116, 124};
    case CameraState::Open:
        return {200, 206, 212};
    case CameraState::Live:
        return {0, 200, 160};
    case CameraState::Measuring:
        return {240, 160, 50};
    case CameraState::Silent:
        return {245, 225, 90};
    case CameraState::Lost:
        return {235, 80, 70};
    }
    return {};
}

/// Around the middle of a 16 x 16 grid.
void drawSymbol(QPainter& painter, CameraState::Kind kind)
{
    const QColor color = colorOf(kind);
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (kind) {
    case CameraState::Closed:
        painter.drawEllipse(QPointF(8, 8), 3.5, 3.5);
        break;
    case CameraState::Open:
        painter.setBrush(color);
        painter.drawEllipse(QPointF(8, 8), 3.5, 3.5);
        break;
    case CameraState::Live: // play
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF({{5, 4}, {12, 8}, {5, 12}}));
        break;
    case CameraState::Measuring: // record
        painter.drawEllipse(QPointF(8, 8), 5.5, 5.5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(QPointF(8, 8), 2.5, 2.5);
        break;
    case CameraState::Silent: // an exclamation mark
        painter.setPen(QPen(color, 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(8, 3), QPointF(8, 8.5));
        painter.drawPoint(QPointF(8, 13));
        break;
    case CameraState::Lost:
        painter.drawLine(QPointF(4, 4), QPointF(12, 12));
        painter.drawLine(QPointF(4, 12), QPointF(12, 4));
        break;
    }
}

} // namespace

CameraState cameraState(int device, const TakeOvers& takeOvers, std::chrono::steady_clock::time_point now)
{
    const CameraRegistry& registry = CameraRegistry::instance();
    VNCORE_HANDLE camera = registry.openedHandle(device);
    if (registry.isDeviceLost(device))
        return {CameraState::Lost, Text::tr("lost")};
    if (!camera)
        return {CameraState::Closed, Text::tr("closed")};
    const auto silentSince = registry.silentSince(camera);
    if (silentSince && now - *silentSince >= CameraEvents::longestSilence) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - *silentSince).count();
        return {CameraState::Silent, Text::tr("silent %1 s").arg(seconds)};
    }
    if (takeOvers.isTakenOver(camera))
        return {CameraState::Measuring, Text::tr("measuring")};
    if (registry.isHostAcquiring(camera))
        return {CameraState::Live, Text::tr("live")};
    return {CameraState::Open, Text::tr("open")};
}

QIcon stateIcon(CameraState::Kind kind)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixmap.width() / 16.0, pixmap.height() / 16.0);
    drawSymbol(painter, kind);
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected); // else the colour changes in a selected row
    return icon;
}
