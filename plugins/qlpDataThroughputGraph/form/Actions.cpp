// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyboard does. The form's actions carry texts and keys, by which a host can list them.
#include "DataGraphForm.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include "AreaPager.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr double keyZoom = 1.25;
constexpr double keyPan = 0.1; ///< of the visible range

} // namespace

/// Keys that other parts of a window use as well work while the form has the focus, the others everywhere in it.
void CxDataGraphForm::AddActions()
{
    const auto add = [this](const QString& text, const QKeySequence& keys, auto&& act,
                            Qt::ShortcutContext context = Qt::WindowShortcut) {
        auto* action = new QAction(text, this);
        action->setShortcut(keys);
        action->setShortcutContext(context);
        connect(action, &QAction::triggered, this, act);
        addAction(action);
        return action;
    };
    const auto press = [&](QAbstractButton* button, const QKeySequence& key) {
        add(button->text(), key, [button] { button->click(); });
    };
    press(ui->btnSetup, Qt::Key_F4);
    press(ui->refreshGraph, Qt::Key_F5);
    press(ui->checkBoxLiveGraph, Qt::Key_F6);
    press(ui->btnResetZoom, Qt::Key_F7);
    press(ui->resetPan, Qt::Key_F8);
    add(tr("Start All, Stop All"), Qt::Key_F9, [this] { ui->btnStartAll->click(); });

    add(tr("Zoom in"), QKeySequence::ZoomIn, [this] { ZoomTime(1.0 / keyZoom); });
    add(tr("Zoom out"), QKeySequence::ZoomOut, [this] { ZoomTime(keyZoom); });
    add(tr("Earlier"), Qt::ALT + Qt::Key_Left, [this] { PanTime(-keyPan); });
    add(tr("Later"), Qt::ALT + Qt::Key_Right, [this] { PanTime(keyPan); });

    const auto inForm = Qt::WidgetWithChildrenShortcut;
    add(
        tr("Previous plot areas"), Qt::Key_PageUp, [this] { pager->scrollPages(-1); }, inForm);
    add(
        tr("Next plot areas"), Qt::Key_PageDown, [this] { pager->scrollPages(1); }, inForm);
    add(
        tr("One plot area up"), Qt::CTRL + Qt::Key_PageUp, [this] { pager->scrollAreas(-1); }, inForm);
    add(
        tr("One plot area down"), Qt::CTRL + Qt::Key_PageDown, [this] { pager->scrollAreas(1); }, inForm);
    add(tr("First plot area alone, or all"), Qt::Key_F11, [this] { ToggleAlone(CameraAt({})); });
    add(
        tr("All plot areas"), Qt::Key_Escape, [this] { pager->showAlone(nullptr); }, inForm);

    auto* heading = ui->table->horizontalHeader();
    heading->setContextMenuPolicy(Qt::ActionsContextMenu);
    heading->addAction(add(tr("Show all graphs"), Qt::CTRL + Qt::Key_G, [this] { SwitchGraphs(true); }));
    heading->addAction(add(tr("Hide all graphs"), Qt::CTRL + Qt::SHIFT + Qt::Key_G, [this] { SwitchGraphs(false); }));

    ui->plot->setContextMenuPolicy(Qt::ActionsContextMenu);
    QAction* timesOfDay = add(tr("Time of day on the time axes"), Qt::CTRL + Qt::Key_T, [] {});
    timesOfDay->setCheckable(true);
    connect(timesOfDay, &QAction::toggled, this, &CxDataGraphForm::ShowTimeOfDay);
    ui->plot->addAction(timesOfDay);

    press(ui->btnExport, Qt::CTRL + Qt::Key_E);
    const auto types = ui->btnExport->menu()->actions();
    types.at(0)->setShortcut(Qt::CTRL + Qt::ALT + Qt::Key_C);
    types.at(1)->setShortcut(Qt::CTRL + Qt::ALT + Qt::Key_S);
    ui->btnExport->menu()->addSeparator();
    ui->btnExport->menu()->addAction(
        add(tr("Save all plot areas..."), Qt::CTRL + Qt::SHIFT + Qt::Key_E, [this] { SaveAllAreas(); }));
}
