// SPDX-License-Identifier: GPL-3.0-or-later
// Writes lines where writing may fail: on a full disk, or when nobody reads any more.
#ifndef KESTROVA_MEASURE_LINEWRITER_H
#define KESTROVA_MEASURE_LINEWRITER_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Writes each line at once and keeps no text back, so that every line is a new attempt. What of a line was written
/// when it failed is taken back, as far as that can be done: a file holds whole lines.
class LineWriter
{
public:
    enum class Until
    {
        Written, ///< the system has the line
        OnDisk,  ///< a power cut no longer takes it
    };

    /// The descriptor stays the caller's and must outlive this; `name` is for messages.
    LineWriter(int descriptor, QString name, Until until);

    /// Several lines at once are whole or missing together. False if it failed.
    bool write(const QByteArray& lines);

    /// How many lines could not be written.
    quint64 lostLines() const { return lost; }
    /// The name and the system's reason of the last failure; empty if there was none.
    const QString& error() const { return reason; }
    /// Whether the last failure was that of a pipe without a reader, which stays so.
    bool readerIsGone() const { return gone; }

private:
    int tryToWrite(const QByteArray& lines) const;
    void takeBack(qint64 bytes) const;

    const int descriptor;
    const QString name;
    const Until until;
    QString reason;
    quint64 lost = 0;
    bool gone = false;
};

#endif
