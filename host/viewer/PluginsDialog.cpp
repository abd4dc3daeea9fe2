// SPDX-License-Identifier: GPL-3.0-or-later
// List and details.
#include "PluginsDialog.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTextBrowser>

#include "PluginManager.h"

namespace {

QString details(const PluginInfo& info)
{
    const std::pair<QString, QString> rows[] = {
        {PluginsDialog::tr("Not used"), info.error.toHtmlEscaped()},
        {PluginsDialog::tr("Caution"), info.warning.toHtmlEscaped()},
        {PluginsDialog::tr("Name"), info.name.toHtmlEscaped()},
        {PluginsDialog::tr("Description"), info.description.toHtmlEscaped()},
        {PluginsDialog::tr("Version"), info.version.toHtmlEscaped()},
        {PluginsDialog::tr("Author"), info.author.toHtmlEscaped()},
        {PluginsDialog::tr("Website"),
         info.website.isEmpty() ? QString()
                                : QStringLiteral("<a href=\"%1\">%1</a>").arg(info.website.toHtmlEscaped())},
        {PluginsDialog::tr("File"), info.file.toHtmlEscaped()},
    };
    QString html = QStringLiteral("<table cellpadding=3>");
    for (const auto& [caption, text] : rows) {
        if (!text.isEmpty())
            html += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>").arg(caption, text);
    }
    return html + QStringLiteral("</table>");
}

} // namespace

PluginsDialog::PluginsDialog(const std::vector<PluginInfo>& plugins, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Plug-ins"));
    resize(720, 360);

    auto* list = new QListWidget;
    list->setAccessibleName(tr("Plug-in files"));
    list->setToolTip(tr("The files that were found in the plug-in directories"));
    auto* text = new QTextBrowser;
    text->setOpenExternalLinks(true);
    text->setAccessibleName(tr("Details of the selected plug-in"));
    connect(list, &QListWidget::currentItemChanged, text, [text](const QListWidgetItem* item) {
        text->setHtml(item ? item->data(Qt::UserRole).toString() : QString());
    });
    for (const PluginInfo& info : plugins) {
        const QString name = info.name.isEmpty() ? QFileInfo(info.file).fileName() : info.name;
        auto* item = new QListWidgetItem(info.error.isEmpty() ? name : tr("%1 (not used)").arg(name), list);
        item->setData(Qt::UserRole, details(info));
    }
    list->setCurrentRow(0);
    if (plugins.empty())
        text->setPlainText(tr("No plug-in was found."));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* columns = new QHBoxLayout;
    columns->addWidget(list, 2);
    columns->addWidget(text, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addWidget(buttons);
}
