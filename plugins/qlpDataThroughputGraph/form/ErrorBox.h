// SPDX-License-Identifier: GPL-3.0-or-later
// The box that tells what went wrong.
#ifndef KESTROVA_ERRORBOX_H
#define KESTROVA_ERRORBOX_H

class QString;
class QWidget;

/// Waits for the user, so the caller's object may be gone afterwards. Names in the text may hold anything.
void showError(QWidget* parent, const QString& title, const QString& text);

#endif
