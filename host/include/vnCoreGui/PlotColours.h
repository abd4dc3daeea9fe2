// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of plots and of what stands beside them.
#ifndef VNCOREGUI_PLOTCOLOURS_H
#define VNCOREGUI_PLOTCOLOURS_H

#include <QtGui/QColor>

namespace plotColours {

const QColor background(16, 18, 21); ///< near black
const QColor foreground(Qt::white);  ///< axes and texts
const QColor grid(58, 62, 68);

} // namespace plotColours

#endif
