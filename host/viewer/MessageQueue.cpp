// SPDX-License-Identifier: GPL-3.0-or-later
// The message handler and its queue.
#include "MessageQueue.h"

#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Message
{
    QtMsgType type;
    QString text; ///< as logged
    QString line; ///< as written to standard error
};

constexpr size_t capacity = 20'000; // messages: a flood must not eat the memory
constexpr int drainIntervalMs = 100;

// Guards the two below. Inside it nothing is called but the containers' own operations.
std::mutex queueMutex;
std::vector<Message> queue;
size_t dropped = 0;

void writeLine(const QString& line)
{
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

void queueMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QString line = qFormatLogMessage(type, context, text);
    if (type == QtFatalMsg) {
        writeLine(line); // the process ends when this returns
        return;
    }
    const std::lock_guard lock(queueMutex);
    if (queue.size() < capacity) {
        queue.push_back({type, text, line});
    } else {
        ++dropped;
    }
}

} // namespace

MessageQueue::MessageQueue(QObject* parent) : QObject(parent), m_formerHandler(qInstallMessageHandler(queueMessage))
{
    connect(&m_timer, &QTimer::timeout, this, &MessageQueue::drain);
    m_timer.start(drainIntervalMs);
}

MessageQueue::~MessageQueue()
{
    qInstallMessageHandler(m_formerHandler);
    drain();
}

void MessageQueue::drain()
{
    std::vector<Message> messages;
    size_t lost = 0;
    {
        const std::lock_guard lock(queueMutex);
        messages.swap(queue);
        lost = std::exchange(dropped, 0);
    }
    for (const Message& message : messages) {
        writeLine(message.line);
        if (message.type == QtCriticalMsg) {
            Q_EMIT criticalMessage(message.text);
        }
    }
    if (lost > 0) {
        Q_EMIT criticalMessage(tr("%1 log messages were dropped").arg(lost));
    }
}
