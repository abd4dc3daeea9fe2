// SPDX-License-Identifier: GPL-3.0-or-later
// A box that is painted before the work begins.
#include "ProgressBox.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMessageBox>

ProgressBox::ProgressBox(QWidget* parent) : box(new QMessageBox(parent))
{
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setStandardButtons(QMessageBox::NoButton);
    box->setWindowModality(Qt::NonModal);
    box->setTextFormat(Qt::PlainText); // names of cameras may hold anything
}

bool ProgressBox::show(const QString& title, const QString& text)
{
    box->setWindowTitle(title);
    box->setText(text);
    box->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return !box.isNull();
}

void ProgressBox::close()
{
    if (!box)
        return;
    // A message box without buttons ignores close().
    box->hide();
    box->deleteLater();
    box = nullptr;
}
