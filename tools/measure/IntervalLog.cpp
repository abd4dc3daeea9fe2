// SPDX-License-Identifier: GPL-3.0-or-later
// Appends line by line; every line is on the disk before the next one.
#include "IntervalLog.h"

#include "PlainText.h"

namespace {

QByteArray header(ExMeasMode mode)
{
    const Figures figures = mode == MeasModeStandardAcq ? counterFigures({}, {}) : throughputFigures({}, 0, false);
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
    file.setFileName(fileName);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered)) {
        fault = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    QByteArray begin;
    if (file.isSequential() || file.size() == 0) {
        begin = header(mode) + '\n';
    } else {
        file.seek(0);
        if (file.readLine().trimmed() != header(mode)) {
            fault = QStringLiteral("%1: is there and has other columns").arg(fileName);
            return false;
        }
        // A power cut may have torn the last line; the next one begins on its own.
        char last = '\n';
        file.seek(file.size() - 1);
        file.getChar(&last);
        if (last != '\n')
            begin = "\n";
    }
    writer = std::make_unique<LineWriter>(file.handle(), fileName, LineWriter::Until::OnDisk);
    if (begin.isEmpty() || writer->write(begin))
        return true;
    fault = writer->error();
    return false;
}

bool IntervalLog::append(const IntervalLine& line)
{
    QByteArray text = line.time.toUTC().toString(Qt::ISODateWithMs).toUtf8() + ',' + quoted(line.camera.name) + ',' +
                      quoted(line.camera.id) + ',' + QByteArray::number(line.stretch.endS, 'f', 3) + ',' +
                      QByteArray::number(line.stretch.lengthS, 'f', 3);
    for (const Figure& figure : line.stretch.figures)
        text += ',' + figureText(figure).toUtf8();
    return writer->write(text + '\n');
}
