// SPDX-License-Identifier: GPL-3.0-or-later
// The program's dark look.
#ifndef KESTROVA_THEME_H
#define KESTROVA_THEME_H

class QApplication;

/// Fusion style and a dark palette, the same on every desktop: images and plots are judged on it.
void applyDarkTheme(QApplication& application);

#endif
