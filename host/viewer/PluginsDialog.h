// SPDX-License-Identifier: GPL-3.0-or-later
// Help > Plug-ins: what was found and why something is not used.
#ifndef KESTROVA_PLUGINSDIALOG_H
#define KESTROVA_PLUGINSDIALOG_H

#include <vector>

#include <QtWidgets/QDialog>

struct PluginInfo;

/// A list of files and the facts about the selected one.
class PluginsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PluginsDialog(const std::vector<PluginInfo>& plugins, QWidget* parent = nullptr);
};

#endif
