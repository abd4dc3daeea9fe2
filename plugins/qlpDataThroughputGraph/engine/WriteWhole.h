// SPDX-License-Identifier: GPL-3.0-or-later
// Writing to the end or telling why not.
#ifndef KESTROVA_WRITEWHOLE_H
#define KESTROVA_WRITEWHOLE_H

#include <QtCore/QFile>

/// False if the file does not take all, with the reason in its errorString(). For unbuffered files: a disk that gets
/// full takes a part, and why it takes no more shows only at the next try.
inline bool writeWhole(QFile& file, const char* data, qint64 size)
{
    while (size > 0) {
        const qint64 written = file.write(data, size);
        if (written <= 0)
            return false;
        data += written;
        size -= written;
    }
    return true;
}

inline bool writeWhole(QFile& file, const QByteArray& data)
{
    return writeWhole(file, data.constData(), data.size());
}

#endif
