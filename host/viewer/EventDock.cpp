// SPDX-License-Identifier: GPL-3.0-or-later
// View and buttons of the event list.
#include "EventDock.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <vnCore/IxAppDelegate.h>

#include "EventLog.h"

EventDock::EventDock(EventLog& log, QWidget* parent)
    : QDockWidget(tr("Events"), parent), eventLog(log), view(new QTreeView), forgotten(new QLabel)
{
    setObjectName(QStringLiteral("dockEvents"));
    view->setModel(&log);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAlternatingRowColors(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setAccessibleName(tr("Events"));
    view->setToolTip(tr("What has happened, the newest line at the end; equal events share a line"));
    view->header()->setSectionResizeMode(EventLog::TimeColumn, QHeaderView::ResizeToContents);
    view->header()->setSectionResizeMode(EventLog::CountColumn, QHeaderView::ResizeToContents);
    view->header()->setResizeContentsPrecision(0); // what is in view; else up to 1000 rows at every event

    // The range changes once for all lines of a burst, and also when the dock changes its height.
    QScrollBar* bar = view->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar] { atEnd = bar->value() == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
        if (atEnd)
            bar->setValue(bar->maximum());
    });
    connect(&log, &QAbstractItemModel::rowsInserted, this, &EventDock::showForgotten);
    connect(&log, &QAbstractItemModel::modelReset, this, &EventDock::showForgotten);
    forgotten->setToolTip(tr("The list keeps the last 100,000 events"));
    forgotten->hide();

    auto* clear = new QPushButton(tr("C&lear"));
    clear->setToolTip(tr("Empty the list"));
    clear->setAccessibleName(tr("Clear the event list"));
    clear->setObjectName(QStringLiteral("btnClearEvents"));
    connect(clear, &QPushButton::clicked, &log, &EventLog::clear);

    auto* save = new QPushButton(tr("S&ave..."));
    save->setToolTip(tr("Write every event with its time into a text file"));
    save->setAccessibleName(tr("Save the event list"));
    connect(save, &QPushButton::clicked, this, &EventDock::save);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(view);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(forgotten);
    buttons->addStretch();
    buttons->addWidget(clear);
    buttons->addWidget(save);
    layout->addLayout(buttons);
    setWidget(content);
}

void EventDock::showForgotten()
{
    forgotten->setText(tr("No longer kept: %1").arg(eventLog.forgotten()));
    forgotten->setVisible(eventLog.forgotten() > 0);
}

void EventDock::save()
{
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save the event list"),
                                                          IxAppDelegate::instance()->lastDirectory() +
                                                              QStringLiteral("/kestrova-events.txt"),
                                                          tr("Text files (*.txt);;All files (*)"));
    if (fileName.isEmpty())
        return;
    IxAppDelegate::instance()->setLastDirectory(QFileInfo(fileName).absolutePath());
    QSaveFile file(fileName);
    // What the end of commit() cannot write it does not tell. A full disk takes a part first, then says why no more.
    const auto flushed = [&file] { return file.flush() || file.flush(); };
    if (!file.open(QIODevice::WriteOnly) || !eventLog.writeTo(file) || !flushed() || !file.commit()) {
        QMessageBox::warning(this, tr("Save the event list"),
                             tr("The list could not be saved.\n%1: %2").arg(fileName, file.errorString()));
    }
}
