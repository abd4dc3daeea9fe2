// SPDX-License-Identifier: GPL-3.0-or-later
// The model behind the event list.
#include "EventLog.h"

#include <algorithm>

#include <QtCore/QIODevice>
#include <QtGui/QColor>

#include "PlainText.h"

namespace {

constexpr int foldDistance = 64; // rows: more sources than cameras that are usually measured together

const char* severityName(EventLog::Severity severity)
{
    switch (severity) {
    case EventLog::Severity::Information:
        return "information";
    case EventLog::Severity::Warning:
        return "warning";
    case EventLog::Severity::Critical:
        return "critical";
    }
    return "";
}

} // namespace

void EventLog::append(Severity severity, const QString& event, const QString& origin)
{
    Event added{QDateTime::currentDateTime(), severity, singleLine(event), origin};
    Row row{forgottenEvents + qint64(events.size()), 1, added.time};
    const auto end = rows.rbegin() + std::min<std::ptrdiff_t>(foldDistance, std::ptrdiff_t(rows.size()));
    const auto former = std::find_if(rows.rbegin(), end, [&](const Row& each) {
        return newestOf(each).severity == severity && newestOf(each).text == added.text;
    });
    if (former != end) {
        added.text = newestOf(*former).text; // one text in memory for all of them
        row.count = former->count + 1;
        row.since = former->since;
        eraseRow(int(rows.size()) - 1 - int(former - rows.rbegin()));
    }
    if (events.size() >= size_t(capacity))
        forgetOldest();
    const int last = int(rows.size());
    beginInsertRows({}, last, last);
    events.push_back(std::move(added));
    rows.push_back(row);
    endInsertRows();
}

void EventLog::eraseRow(int row)
{
    beginRemoveRows({}, row, row);
    rows.erase(rows.begin() + row);
    endRemoveRows();
}

void EventLog::forgetOldest()
{
    if (!rows.empty() && rows.front().newest == forgottenEvents)
        eraseRow(0);
    events.pop_front();
    ++forgottenEvents;
}

void EventLog::clear()
{
    beginResetModel();
    rows.clear();
    events.clear();
    forgottenEvents = 0;
    endResetModel();
}

bool EventLog::writeTo(QIODevice& device) const
{
    const auto write = [&](const QStringList& fields) {
        const QByteArray bytes = fields.join(QLatin1Char('\t')).toUtf8() + '\n';
        return device.write(bytes) == bytes.size();
    };
    if (forgottenEvents > 0 && !write({tr("Older events that are no longer kept: %1").arg(forgottenEvents)}))
        return false;
    return std::all_of(events.begin(), events.end(), [&](const Event& event) {
        QStringList fields{event.time.toString(Qt::ISODateWithMs), QLatin1String(severityName(event.severity)),
                           event.text};
        if (!event.origin.isEmpty())
            fields.append(event.origin);
        return write(fields);
    });
}

int EventLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(rows.size());
}

int EventLog::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant EventLog::data(const QModelIndex& index, int role) const
{
    const Row& row = rows[size_t(index.row())];
    const Event& newest = newestOf(row);
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case TimeColumn:
            return newest.time.toString(QStringLiteral("HH:mm:ss"));
        case CountColumn:
            return row.count > 1 ? QStringLiteral("%1 ×").arg(row.count) : QString();
        default:
            return newest.text;
        }
    case Qt::ToolTipRole: {
        QStringList lines{newest.time.toString(Qt::ISODateWithMs), newest.text};
        if (row.count > 1)
            lines.prepend(row.since.toString(Qt::ISODateWithMs) + QStringLiteral(" …"));
        if (!newest.origin.isEmpty())
            lines.append(newest.origin);
        return lines.join(QLatin1Char('\n'));
    }
    case Qt::ForegroundRole:
        if (newest.severity == Severity::Critical)
            return QColor(255, 120, 110);
        return newest.severity == Severity::Warning ? QVariant(QColor(250, 190, 90)) : QVariant();
    default:
        return {};
    }
}

QVariant EventLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TimeColumn:
        return tr("Time");
    case CountColumn:
        return tr("Count");
    default:
        return tr("Event");
    }
}
