// SPDX-License-Identifier: GPL-3.0-or-later
// A centred table cell whose tool tip is made when somebody asks for it: what it tells changes all the time.
#ifndef KESTROVA_TOOLTIPITEM_H
#define KESTROVA_TOOLTIPITEM_H

#include <functional>
#include <utility>

#include <QtWidgets/QTableWidgetItem>

/// The table owns it. The function is called on the user interface thread, as long as the item lives.
class ToolTipItem : public QTableWidgetItem
{
public:
    explicit ToolTipItem(std::function<QString()> toolTipText) : toolTip(std::move(toolTipText))
    {
        setTextAlignment(Qt::AlignCenter);
    }

    QVariant data(int role) const override
    {
        return role == Qt::ToolTipRole ? QVariant(toolTip()) : QTableWidgetItem::data(role);
    }

private:
    std::function<QString()> toolTip;
};

#endif
