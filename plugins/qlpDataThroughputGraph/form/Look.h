// SPDX-License-Identifier: GPL-3.0-or-later
// Near black tables and plot, whatever the host looks like: axes, titles and counter texts are white.
#ifndef KESTROVA_LOOK_H
#define KESTROVA_LOOK_H

#include <vnCoreGui/PlotColours.h>

class QScrollBar;
class QTableWidget;
class QWidget;

namespace look {

using plotColours::background;
using plotColours::grid;
const QColor text(plotColours::foreground);
const QColor heading(34, 37, 42);
const QColor disabledText(128, 128, 128);

/// A ground on which text of that colour can be read: the dark one, or white where the contrast would be too low.
QColor groundFor(const QColor& textColour);

/// The sizes of the form's parts are pixels, so its font must not be much larger than they expect.
void limitFont(QWidget* form);

/// Dark colours, a flat heading and thin scroll bars, so that a table of one row shows its row whole.
void makeDark(QTableWidget* table);
/// As thin as that.
void makeDark(QScrollBar* bar, int pixels);

} // namespace look

#endif
