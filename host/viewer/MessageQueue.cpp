// SPDX-License-Identifier: GPL-3.0-or-later
// The message handler and its queue.
#include "MessageQueue.h"

#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>

#include "LastCameraCall.h"

namespace {

/// What is known where the message arises, on any thread; the rest is made when it is handed out.
struct Message
{
    QtMsgType type;
    QString text; ///< as logged
    QString line; ///< as written to standard error
    VNCORE_HANDLE camera;
};

/// A message that tells where it was written: thread, file, "L", line, ":" and, quoted, function and text.
struct PlacedMessage
{
    QString text;
    QString origin; ///< empty if the message tells nothing of the kind
};

PlacedMessage takenApart(const QString& message)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"re(^(0x[0-9a-f]+) (.+) L (\d+) : +"(?:(\S+\(\)): )?(.*)"$)re"),
        QRegularExpression::DotMatchesEverythingOption);
    const auto match = pattern.match(message);
    if (!match.hasMatch())
        return {message, {}};
    QString text = match.captured(5);
    text.replace(QLatin1String("\\\""), QLatin1String("\"")).replace(QLatin1String("\\\\"), QLatin1String("\\"));
    return {text, MessageQueue::tr("Thread %1, %2 line %3, %4")
                      .arg(match.captured(1), match.captured(2), match.captured(3), match.captured(4))};
}

/// The camera that a message of this thread is about, null if that is not known. A worker measures with one camera.
/// The user interface thread has to do with all of them, so that only a call that has just failed says something.
VNCORE_HANDLE cameraOfThisThread()
{
    const auto* application = QCoreApplication::instance();
    const bool worker = application && QThread::currentThread() != application->thread();
    const CameraCall call = lastCameraCall();
    return worker || !call.succeeded ? call.camera : nullptr;
}

constexpr size_t capacity = 20000; // messages: a flood must not eat the memory
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
    VNCORE_HANDLE camera = cameraOfThisThread();
    const std::lock_guard lock(queueMutex);
    if (queue.size() < capacity)
        queue.push_back({type, text, line, camera});
    else
        ++dropped;
}

} // namespace

MessageQueue::MessageQueue(QObject* parent) : QObject(parent), formerHandler(qInstallMessageHandler(queueMessage))
{
    connect(&timer, &QTimer::timeout, this, &MessageQueue::drain);
    timer.start(drainIntervalMs);
}

MessageQueue::~MessageQueue()
{
    qInstallMessageHandler(formerHandler);
    drain();
}

void MessageQueue::drain()
{
    lastCameraCall() = {}; // what failed before the event loop went on explains no message that comes later
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
            const PlacedMessage placed = takenApart(message.text);
            Q_EMIT criticalMessage(placed.text, placed.origin, message.camera);
        }
    }
    if (lost > 0)
        Q_EMIT criticalMessage(tr("%1 log messages were dropped").arg(lost), {}, nullptr);
}
