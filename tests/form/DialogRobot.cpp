// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogRobot.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

DialogRobot::DialogRobot()
{
    qApp->installEventFilter(this);
}

bool DialogRobot::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        if (auto* report = qobject_cast<QProgressDialog*>(watched))
            watchReport(report);
        else if (auto* dialog = qobject_cast<QDialog*>(watched))
            QTimer::singleShot(0, dialog, [this, dialog] { attend(dialog); });
    }
    return QObject::eventFilter(watched, event);
}

void DialogRobot::attend(QDialog* dialog)
{
    if (!dialog->isModal())
        return;
    const QPointer<QDialog> stillThere(dialog);
    if (inside)
        inside(dialog);
    if (!stillThere)
        return;
    if (auto* file = qobject_cast<QFileDialog*>(dialog))
        answerFile(file);
    else if (auto* box = qobject_cast<QMessageBox*>(dialog))
        answerBox(box);
    else if (answer)
        answer(dialog);
}

void DialogRobot::watchReport(QProgressDialog* dialog)
{
    seen.append(dialog->windowTitle() + QLatin1Char('|') + dialog->labelText());
    const auto act = [this, dialog](int value) {
        if (duringReport && value == 0)
            duringReport(dialog);
    };
    connect(dialog->findChild<QProgressBar*>(), &QProgressBar::valueChanged, dialog, act, Qt::QueuedConnection);
}

void DialogRobot::answerFile(QFileDialog* dialog)
{
    seen.append(dialog->windowTitle() + QLatin1Char('|') + dialog->directory().absolutePath() + QLatin1Char('|') +
                dialog->nameFilters().join(QLatin1String(";;")));
    const auto* buttons = dialog->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
    QTest::mouseClick(buttons->button(fileName.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Save),
                      Qt::LeftButton);
}

void DialogRobot::answerBox(QMessageBox* box)
{
    if (QAbstractButton* button = box->button(agrees ? QMessageBox::Yes : QMessageBox::No)) {
        QTest::mouseClick(button, Qt::LeftButton);
        return;
    }
    seen.append(box->windowTitle() + QLatin1Char('|') + box->text());
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
}
