// SPDX-License-Identifier: GPL-3.0-or-later
// Programs that this one has started.
#ifndef KESTROVA_TESTS_CHILDPROGRAMS_H
#define KESTROVA_TESTS_CHILDPROGRAMS_H

#include <vector>

#include <QtCore/QDir>
#include <QtCore/QFile>

/// This process' children that run the program.
inline std::vector<int> childrenRunning(const char* program)
{
    std::vector<int> found;
    for (const QString& task : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile list(QStringLiteral("/proc/self/task/%1/children").arg(task));
        if (!list.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& child : list.readAll().simplified().split(' ')) {
            QFile name(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child)));
            if (name.open(QIODevice::ReadOnly) && name.readAll().trimmed() == program)
                found.push_back(child.toInt());
        }
    }
    return found;
}

#endif
