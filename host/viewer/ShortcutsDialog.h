// SPDX-License-Identifier: GPL-3.0-or-later
// Help > Shortcuts: what the keyboard does, here and in plug-ins.
#ifndef KESTROVA_SHORTCUTSDIALOG_H
#define KESTROVA_SHORTCUTSDIALOG_H

#include <QtWidgets/QDialog>

/// Lists the actions anywhere in a window that have keys.
class ShortcutsDialog : public QDialog
{
    Q_OBJECT

public:
    /// For that window and over it.
    explicit ShortcutsDialog(QWidget* window);
};

#endif
