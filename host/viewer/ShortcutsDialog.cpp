// SPDX-License-Identifier: GPL-3.0-or-later
// The list.
#include "ShortcutsDialog.h"

#include <QtCore/QRegularExpression>
#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

namespace {

/// With the menus that lead to it.
QString pathOf(const QAction& action)
{
    static const QRegularExpression marks(QStringLiteral("\\(&\\w\\)|&|\\.\\.\\.")); // "File(&F)" in Chinese
    QString text = action.text().remove(marks).simplified();
    const auto places = action.associatedWidgets();
    for (const QWidget* place : places) {
        const auto* button = qobject_cast<const QToolButton*>(place);
        if (button && button->menu() && button->menu()->menuAction() == &action)
            return button->text();
        const auto* menu = qobject_cast<const QMenu*>(place);
        const QString path = menu ? pathOf(*menu->menuAction()) : QString();
        if (!path.isEmpty()) // one without a name holds what a narrow menu bar has no room for
            return path + QStringLiteral(" > ") + text;
    }
    return text;
}

} // namespace

ShortcutsDialog::ShortcutsDialog(QWidget* window) : QDialog(window)
{
    setWindowTitle(tr("Shortcuts"));
    resize(680, 560);

    auto* list = new QTreeWidget;
    list->setHeaderLabels({tr("Action"), tr("Keys")});
    list->setRootIsDecorated(false);
    list->setAccessibleName(tr("Shortcuts"));
    const auto actions = window->findChildren<QAction*>();
    for (const QAction* action : actions) {
        if (action->shortcut().isEmpty())
            continue;
        new QTreeWidgetItem(list, {pathOf(*action), action->shortcut().toString(QKeySequence::NativeText)});
    }
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list->header()->setStretchLastSection(false);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
}
