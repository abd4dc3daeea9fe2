// SPDX-License-Identifier: GPL-3.0-or-later
// The small box that tells which camera is being started or stopped while the user interface is blocked.
#ifndef KESTROVA_PROGRESSBOX_H
#define KESTROVA_PROGRESSBOX_H

#include <QtCore/QPointer>

class QMessageBox;

/// Not modal, without buttons, cannot be cancelled. On the stack of one action.
class ProgressBox
{
public:
    explicit ProgressBox(QWidget* parent);
    ~ProgressBox() { close(); }
    ProgressBox(const ProgressBox&) = delete;
    ProgressBox& operator=(const ProgressBox&) = delete;

    /// Shows the text and processes the pending events, all but the user's, so that it is painted: cameras may come
    /// and go meanwhile. False if even the parent has gone.
    [[nodiscard]] bool show(const QString& title, const QString& text);
    void close();

private:
    QPointer<QMessageBox> box;
};

#endif
