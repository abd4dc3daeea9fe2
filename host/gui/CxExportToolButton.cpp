// SPDX-License-Identifier: GPL-3.0-or-later
// The export button: names, icons and the menu.
#include <vnCoreGui/CxExportToolButton.h>

#include <QtCore/QEvent>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QMenu>

#include "GuiIcons.h"

namespace {

QString typeName(ExExportType type)
{
    switch (type) {
    case ExportToClipboard:
        return CxExportToolButton::tr("Copy to clipboard");
    case ExportToFile:
        return CxExportToolButton::tr("Save to file...");
    }
    return {};
}

QIcon typeIcon(ExExportType type, const QPalette& palette)
{
    return drawnIcon(type == ExportToFile ? GuiIcon::Save : GuiIcon::Copy, palette);
}

} // namespace

CxExportToolButton::CxExportToolButton(QWidget* parent) : QToolButton(parent), types(new QActionGroup(this))
{
    setPopupMode(QToolButton::MenuButtonPopup);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setFocusPolicy(Qt::StrongFocus);
    setMenu(new QMenu(this));
    connect(this, &QToolButton::clicked, this, &CxExportToolButton::exportOrAsk);
    connect(types, &QActionGroup::triggered, this,
            [this](QAction* action) { setExportType(ExExportType(action->data().toInt())); });
}

void CxExportToolButton::addSupportedExportType(ExExportType type)
{
    const auto actions = types->actions();
    for (const QAction* action : actions) {
        if (action->data().toInt() == type)
            return;
    }
    auto* action = types->addAction(typeName(type));
    action->setCheckable(true);
    action->setData(int(type));
    menu()->addAction(action);
    if (actions.isEmpty())
        chosenType = type;
    updateAppearance();
}

void CxExportToolButton::setExportType(ExExportType type)
{
    chosenType = type;
    updateAppearance();
}

void CxExportToolButton::exportOrAsk()
{
    if (types->checkedAction())
        Q_EMIT exportClicked(chosenType);
    else
        menu()->popup(mapToGlobal(rect().bottomLeft()));
}

void CxExportToolButton::changeEvent(QEvent* event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateAppearance(); // the icons are drawn in the text colour
}

void CxExportToolButton::updateAppearance()
{
    QString selected;
    for (QAction* action : types->actions()) {
        const auto type = ExExportType(action->data().toInt());
        action->setIcon(typeIcon(type, palette()));
        action->setChecked(type == chosenType);
        if (type == chosenType)
            selected = action->text();
    }
    setIcon(typeIcon(chosenType, palette()));
    setAccessibleDescription(selected);
}
