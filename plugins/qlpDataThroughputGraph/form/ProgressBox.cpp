// SPDX-License-Identifier: GPL-3.0-or-later
// A box that is painted before the work begins.
#include "ProgressBox.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMessageBox>

ProgressBox::ProgressBox(QWidget* parent) : m_box(new QMessageBox(parent))
{
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setStandardButtons(QMessageBox::NoButton);
    m_box->setWindowModality(Qt::NonModal);
    m_box->setTextFormat(Qt::PlainText); // names of cameras may hold anything
}

bool ProgressBox::show(const QString& title, const QString& text)
{
    m_box->setWindowTitle(title);
    m_box->setText(text);
    m_box->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return !m_box.isNull();
}

void ProgressBox::close()
{
    if (!m_box)
        return;
    // A message box without buttons ignores close().
    m_box->hide();
    m_box->deleteLater();
    m_box = nullptr;
}
