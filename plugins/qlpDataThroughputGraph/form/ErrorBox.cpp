// SPDX-License-Identifier: GPL-3.0-or-later
// A message box that takes nothing for markup.
#include "ErrorBox.h"

#include <QtWidgets/QMessageBox>

void showError(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}
