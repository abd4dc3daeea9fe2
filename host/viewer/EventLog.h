// SPDX-License-Identifier: GPL-3.0-or-later
// What has happened, as a table for the event list.
#ifndef KESTROVA_EVENTLOG_H
#define KESTROVA_EVENTLOG_H

#include <deque>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QDateTime>

class QIODevice;

/// Keeps the last 100,000 events, each with its own time. Its rows, newest at the end, fold them: an event like a
/// recent one shares its row, which moves to the end with a higher count, so that a few sources that repeat
/// themselves in turn do not flush the list. User interface thread only.
class EventLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum class Severity
    {
        Information,
        Warning,
        Critical
    };
    /// As the event list shows them from left to right.
    enum Column
    {
        TimeColumn,
        CountColumn,
        TextColumn,
        ColumnCount
    };
    static constexpr int capacity = 100000;

    using QAbstractTableModel::QAbstractTableModel;

    /// `origin` says where in the program that was noticed, for the tool tip and the file; it may be empty.
    void append(Severity severity, const QString& event, const QString& origin = {});
    void clear();
    /// How many events have gone since the list was last cleared, to make room for newer ones.
    qint64 forgotten() const { return forgottenEvents; }
    /// Writes one line of text per event, folded by nothing. False on a write error.
    bool writeTo(QIODevice& device) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// As it happened, unfolded.
    struct Event
    {
        QDateTime time;
        Severity severity;
        QString text;
        QString origin;
    };
    /// Events that share a row. Only the newest is referred to: older ones may have been forgotten.
    struct Row
    {
        qint64 newest; ///< number of its newest event
        qint64 count;
        QDateTime since; ///< of its first event
    };

    const Event& newestOf(const Row& row) const { return events[size_t(row.newest - forgottenEvents)]; }
    void eraseRow(int row);
    void forgetOldest();

    std::deque<Event> events; ///< numbered on from forgottenEvents
    std::deque<Row> rows;     ///< in the order of their newest events
    qint64 forgottenEvents = 0;
};

#endif
