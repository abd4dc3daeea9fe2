// SPDX-License-Identifier: GPL-3.0-or-later
// The few icons of the host, drawn at any pixel density. All but the application's have the palette's text colour, so
// that they suit light and dark surroundings.
#ifndef KESTROVA_GUIICONS_H
#define KESTROVA_GUIICONS_H

#include <QtGui/QIcon>
#include <QtGui/QPalette>

enum class GuiIcon
{
    Copy,
    Save,
    Application
};

Q_DECL_EXPORT QIcon drawnIcon(GuiIcon icon, const QPalette& palette);

#endif
