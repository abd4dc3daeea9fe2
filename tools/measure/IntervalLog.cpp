// SPDX-License-Identifier: GPL-3.0-or-later
// Appends line by line; every line is on the disk before the next one.
#include "IntervalLog.h"

#include <unistd.h>

#include <cmath>

#include "PlainText.h"

namespace {

QByteArray header(ExMeasMode mode)
{
    const Figures figures = mode == MeasModeStandardAcq ? counterFigures({}, {}) : throughputFigures({}, false);
    QByteArray text = "time,name,id,elapsedS,intervalS";
    for (const Figure& figure : figures)
        text += QByteArray(",") + figure.key;
    return text;
}

/// A camera's text as a field: nothing is promised about its characters.
QByteArray quoted(QString text)
{
    return '"' + singleLine(text.replace(QLatin1Char('"'), QStringLiteral("\"\""))).toUtf8() + '"';
}

} // namespace

bool IntervalLog::open(const QString& fileName, ExMeasMode mode)
{
    m_file.setFileName(fileName);
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered)) {
        m_error = QStringLiteral("%1: %2").arg(fileName, m_file.errorString());
        return false;
    }
    if (m_file.isSequential() || m_file.size() == 0)
        return write(header(mode) + '\n');
    m_file.seek(0);
    if (m_file.readLine().trimmed() != header(mode)) {
        m_error = QStringLiteral("%1: is there and has other columns").arg(fileName);
        return false;
    }
    // A power cut may have torn the last line; the next one begins on its own.
    char last = '\n';
    m_file.seek(m_file.size() - 1);
    m_file.getChar(&last);
    return last == '\n' || write("\n");
}

bool IntervalLog::append(const IntervalLine& line)
{
    QByteArray text = line.time.toUTC().toString(Qt::ISODateWithMs).toUtf8() + ',' + quoted(line.camera.name) + ',' +
                      quoted(line.camera.id) + ',' + QByteArray::number(line.stretch.endS, 'f', 3) + ',' +
                      QByteArray::number(line.stretch.lengthS, 'f', 3);
    for (const Figure& figure : line.stretch.figures)
        text += ',' + figureText(figure).toUtf8();
    return write(text + '\n');
}

bool IntervalLog::write(const QByteArray& text)
{
    if (m_file.write(text) == text.size()) {
        ::fdatasync(m_file.handle()); // fails on pipes, which have nothing to lose
        return true;
    }
    m_error = QStringLiteral("%1: %2").arg(m_file.fileName(), m_file.errorString());
    return false;
}
