// SPDX-License-Identifier: GPL-3.0-or-later
// What programs read and wrote: whole files, and JSON objects one a line; and disks that become full.
#ifndef KESTROVA_TESTS_FILES_H
#define KESTROVA_TESTS_FILES_H

#include <sys/resource.h>

#include <algorithm>
#include <csignal>
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

/// While it lives no file grows beyond a size.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &former);
        const rlimit limit{std::min(bytes, former.rlim_max), former.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &former); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit former{};
};

#endif
