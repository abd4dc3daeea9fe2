// SPDX-License-Identifier: GPL-3.0-or-later
// The list.
#include "ShortcutsDialog.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeWidget>

ShortcutsDialog::ShortcutsDialog(QWidget* window) : QDialog(window)
{
    setWindowTitle(tr("Shortcuts"));
    resize(420, 560);

    auto* list = new QTreeWidget;
    list->setHeaderLabels({tr("Action"), tr("Keys")});
    list->setRootIsDecorated(false);
    list->setAccessibleName(tr("Shortcuts"));
    const auto actions = window->findChildren<QAction*>();
    for (const QAction* action : actions) {
        if (action->shortcut().isEmpty())
            continue;
        QString text = action->text();
        text.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
        new QTreeWidgetItem(list, {text, action->shortcut().toString(QKeySequence::NativeText)});
    }
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setStretchLastSection(false);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
}
