// SPDX-License-Identifier: GPL-3.0-or-later
// What a list or table shows.
#ifndef KESTROVA_TESTS_ITEMTEXTS_H
#define KESTROVA_TESTS_ITEMTEXTS_H

#include <QtCore/QAbstractItemModel>
#include <QtCore/QStringList>

/// Of one column, from the top.
inline QStringList columnTexts(const QAbstractItemModel& model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

#endif
