// SPDX-License-Identifier: GPL-3.0-or-later
// Whole files in one call.
#ifndef KESTROVA_TESTS_FILES_H
#define KESTROVA_TESTS_FILES_H

#include <QtCore/QFile>

/// Empty if it cannot be read.
inline QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the name.
inline QString writeFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s: %s", qPrintable(name), qPrintable(file.errorString()));
    return name;
}

#endif
