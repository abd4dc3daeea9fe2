// SPDX-License-Identifier: GPL-3.0-or-later
#include "RandomUser.h"

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

void RandomUser::act(const QWidget& form)
{
    if (below(4) == 0)
        return actOn(form.findChild<QWidget*>(QStringLiteral("plot")));
    if (below(8) == 0 && !QApplication::activeModalWidget()) { // else its keys are dead
        const auto actions = form.actions();
        return actions.at(below(actions.size()))->trigger();
    }
    const auto widgets = form.findChildren<QWidget*>();
    auto* widget = widgets.at(below(widgets.size()));
    if (widget->window() != form.window())
        return; // a dialog's
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->click();
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setFocus();
        QTest::keyClick(edit, char('0' + below(10)));
    } else if (auto* formats = qobject_cast<QComboBox*>(widget)) {
        formats->setCurrentIndex(below(3));
    } else if (auto* bar = qobject_cast<QScrollBar*>(widget)) {
        bar->setValue(below(3));
    }
}

void RandomUser::actOn(QWidget* plot)
{
    const QPoint at(below(400), below(300));
    if (below(2)) {
        QWheelEvent wheel(at, plot->mapToGlobal(at), {}, QPoint(0, below(2) ? 120 : -120), Qt::NoButton,
                          below(3) ? Qt::NoModifier : Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(plot, &wheel);
        return;
    }
    if (below(4) == 0)
        return QTest::mouseDClick(plot, Qt::LeftButton, {}, at);
    if (below(4) == 0)
        return QTest::mouseMove(plot, at); // the tracer follows
    QTest::mousePress(plot, Qt::LeftButton, {}, at);
    QTest::mouseMove(plot, at + QPoint(below(200) - 100, 0));
    if (below(2)) // else it is still being dragged when the next event comes
        QTest::mouseRelease(plot, Qt::LeftButton, {}, at);
}
