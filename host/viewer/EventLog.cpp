// SPDX-License-Identifier: GPL-3.0-or-later
// The model behind the event list.
#include "EventLog.h"

#include <algorithm>

#include <QtCore/QIODevice>
#include <QtGui/QColor>

#include "PlainText.h"

namespace {

constexpr int repeatDistance = 16; // lines: more sources than cameras that are usually measured together

} // namespace

void EventLog::append(Severity severity, const QString& event)
{
    const QString text = singleLine(event);
    int count = 1;
    const auto end = m_lines.rbegin() + std::min<std::ptrdiff_t>(repeatDistance, std::ptrdiff_t(m_lines.size()));
    const auto former = std::find_if(
        m_lines.rbegin(), end, [&](const Line& line) { return line.severity == severity && line.text == text; });
    if (former != end) {
        count = former->count + 1;
        const int row = int(m_lines.size()) - 1 - int(former - m_lines.rbegin());
        beginRemoveRows({}, row, row);
        m_lines.erase(m_lines.begin() + row);
        endRemoveRows();
    } else if (m_lines.size() >= size_t(capacity)) {
        beginRemoveRows({}, 0, 0);
        m_lines.pop_front();
        endRemoveRows();
    }
    const int row = int(m_lines.size());
    beginInsertRows({}, row, row);
    m_lines.push_back({QDateTime::currentDateTime(), severity, count, text});
    endInsertRows();
}

void EventLog::clear()
{
    beginResetModel();
    m_lines.clear();
    endResetModel();
}

bool EventLog::writeTo(QIODevice& device) const
{
    return std::all_of(m_lines.begin(), m_lines.end(), [&](const Line& line) {
        const QByteArray bytes =
            QStringLiteral("%1\t%2\t%3\n")
                .arg(line.time.toString(Qt::ISODateWithMs), QString::number(line.count), line.text)
                .toUtf8();
        return device.write(bytes) == bytes.size();
    });
}

int EventLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

int EventLog::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant EventLog::data(const QModelIndex& index, int role) const
{
    const Line& line = m_lines[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case TimeColumn:
            return line.time.toString(QStringLiteral("HH:mm:ss"));
        case CountColumn:
            return line.count > 1 ? QStringLiteral("%1 ×").arg(line.count) : QString();
        default:
            return line.text;
        }
    case Qt::ToolTipRole:
        return line.time.toString(Qt::ISODateWithMs) + QLatin1Char('\n') + line.text;
    case Qt::ForegroundRole:
        if (line.severity == Severity::Critical) {
            return QColor(255, 120, 110);
        }
        return line.severity == Severity::Warning ? QVariant(QColor(250, 190, 90)) : QVariant();
    default:
        return {};
    }
}

QVariant EventLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case CountColumn:
        return tr("Count");
    default:
        return tr("Event");
    }
}
