// SPDX-License-Identifier: GPL-3.0-or-later
// What the system tells in files of /proc and /sys.
#ifndef KESTROVA_ARAVIS_SYSTEMFILE_H
#define KESTROVA_ARAVIS_SYSTEMFILE_H

#include <optional>

#include <QtCore/QFile>

namespace aravis {

/// Empty if there is no such file.
inline QByteArray firstLineOf(const QString& file)
{
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? source.readLine().simplified() : QByteArray();
}

/// None if the file holds no number.
inline std::optional<double> numberIn(const QString& file)
{
    bool isNumber = false;
    const double value = firstLineOf(file).toDouble(&isNumber);
    return isNumber ? std::optional<double>(value) : std::nullopt;
}

} // namespace aravis

#endif
