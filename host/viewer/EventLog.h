// SPDX-License-Identifier: GPL-3.0-or-later
// What has happened, as a table for the event list.
#ifndef KESTROVA_EVENTLOG_H
#define KESTROVA_EVENTLOG_H

#include <deque>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QDateTime>

class QIODevice;

/// The last 10,000 lines, newest at the end. A line that repeats a recent one takes its place with a higher count
/// instead, so that a few sources that repeat themselves in turn do not flush the list. User interface thread only.
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
    enum Column
    {
        TimeColumn,
        CountColumn,
        TextColumn,
        ColumnCount
    };
    static constexpr int capacity = 10'000;

    using QAbstractTableModel::QAbstractTableModel;

    void append(Severity severity, const QString& event);
    void clear();
    /// Writes one line of text per entry. False on a write error.
    bool writeTo(QIODevice& device) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Line
    {
        QDateTime time; ///< of the latest occurrence
        Severity severity;
        int count;
        QString text;
    };

    std::deque<Line> m_lines;
};

#endif
