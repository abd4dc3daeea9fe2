// SPDX-License-Identifier: GPL-3.0-or-later
// What programs read and wrote: whole files, and JSON objects one a line.
#ifndef KESTROVA_TESTS_FILES_H
#define KESTROVA_TESTS_FILES_H

#include <vector>

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

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

inline std::vector<QJsonObject> jsonLines(const QByteArray& text)
{
    std::vector<QJsonObject> objects;
    for (const QByteArray& line : text.trimmed().split('\n'))
        objects.push_back(QJsonDocument::fromJson(line).object());
    return objects;
}

#endif
