// SPDX-License-Identifier: GPL-3.0-or-later
// How each kind of event looks: its shape tells it, and its colour once more.
#ifndef KESTROVA_EVENTSHAPES_H
#define KESTROVA_EVENTSHAPES_H

#include <QtCore/QString>
#include <QtGui/QColor>

#include "../engine/EventMarks.h"

class QPainter;
class QRectF;

namespace eventShapes {

constexpr int pixels = 7; ///< height of a shape, and width of one event's

/// On near black.
QColor colour(EventKind kind);
/// In the user's language, as in a legend.
QString name(EventKind kind);
/// What a mark stands for, such as "12 missing frames".
QString text(const EventMark& mark);
/// Rich text: its picture.
QString symbol(EventKind kind);
/// A rectangle as wide as a shape is high is one event. A wider one is a band of them, of a silence the time that it
/// lasted.
void draw(QPainter& painter, EventKind kind, const QRectF& rect);

} // namespace eventShapes

#endif
