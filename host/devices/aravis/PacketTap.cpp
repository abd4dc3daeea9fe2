// SPDX-License-Identifier: GPL-3.0-or-later
// Start, reading and end of the tap.
#include "PacketTap.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <exception>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace aravis {

namespace {

/// The context of this file's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PacketTap)
};

constexpr int startLimitMs = 2000;
constexpr int probeMs = 3;
constexpr std::size_t recordsAtOnce = 4096;

QString program()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("kestrova-tap"));
}

void end(int process)
{
    ::kill(process, SIGKILL);
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

QString faultText(const TapRecord& fault)
{
    if (fault.packetId == TapSocket && (fault.frameId == EPERM || fault.frameId == EACCES))
        return Text::tr("the times of arrival need the right to capture packets. As root: setcap cap_net_raw=ep %1")
            .arg(program());
    return Text::tr("kestrova-tap failed in step %1: %2")
        .arg(fault.packetId)
        .arg(QString::fromLocal8Bit(std::strerror(static_cast<int>(fault.frameId))));
}

/// Reads the first record; what it says if it is not good news.
QString readFirst(int pipe)
{
    TapRecord first{};
    pollfd source{pipe, POLLIN, 0};
    if (::poll(&source, 1, startLimitMs) != 1)
        return Text::tr("kestrova-tap does not answer");
    if (::read(pipe, &first, sizeof first) != sizeof first)
        return Text::tr("kestrova-tap ended at once");
    return first.kind == TapRecord::Ready ? QString() : faultText(first);
}

/// The process, and the end of the pipe to read from; -1 if it could not be started.
int spawn(std::vector<std::string> texts, int& pipe)
{
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    // Keys that end this program are for this program; it ends the tap when it is done.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t process = -1;
    const int fault = ::posix_spawn(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    pipe = ends[0];
    if (fault == 0)
        return process;
    ::close(pipe);
    return -1;
}

} // namespace

std::unique_ptr<PacketTap> PacketTap::start(const Flow& flow, std::function<void()> onNews,
                                            std::function<DropSample()> probe, QString* error)
{
    int pipe = -1;
    const int process = spawn({program().toStdString(), flow.camera, flow.host, std::to_string(flow.port)}, pipe);
    if (process < 0) {
        *error = Text::tr("the program %1, which tells times of arrival, cannot be started").arg(program());
        return nullptr;
    }
    *error = readFirst(pipe);
    if (error->isEmpty()) {
        try {
            return std::unique_ptr<PacketTap>(new PacketTap(process, pipe, std::move(onNews), std::move(probe)));
        } catch (const std::exception& fault) { // no thread can be had
            *error = QString::fromLocal8Bit(fault.what());
        }
    }
    end(process);
    ::close(pipe);
    return nullptr;
}

PacketTap::PacketTap(int ownProcess, int ownPipe, std::function<void()> news, std::function<DropSample()> ownProbe)
    : process(ownProcess), pipe(ownPipe), onNews(std::move(news)), probe(std::move(ownProbe)), reader([this] {
          run();
      })
{
}

PacketTap::~PacketTap()
{
    end(process);
    reader.join();
    ::close(pipe);
}

/// False when the tap has ended.
bool PacketTap::read(std::vector<char>& bytes, std::size_t& held)
{
    const ssize_t got = ::read(pipe, bytes.data() + held, bytes.size() - held);
    if (got < 0 && errno == EINTR)
        return true;
    if (got <= 0)
        return false;
    held += static_cast<std::size_t>(got);
    const std::size_t whole = held - held % sizeof(TapRecord);
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (std::size_t at = 0; at < whole; at += sizeof(TapRecord)) {
            TapRecord record{};
            std::memcpy(&record, bytes.data() + at, sizeof record);
            book.add(record);
        }
    }
    held -= whole;
    std::memmove(bytes.data(), bytes.data() + whole, held);
    onNews();
    return true;
}

void PacketTap::run()
{
    using Clock = std::chrono::steady_clock;
    std::vector<char> bytes(recordsAtOnce * sizeof(TapRecord));
    std::size_t held = 0;
    auto nextProbe = Clock::now();
    for (;;) {
        pollfd source{pipe, POLLIN, 0};
        const int ready = ::poll(&source, 1, probe ? probeMs : -1);
        if (probe && Clock::now() >= nextProbe) {
            const DropSample sample = probe();
            nextProbe = Clock::now() + std::chrono::milliseconds(probeMs);
            const std::lock_guard<std::mutex> lock(mutex);
            drops.add(sample);
        }
        if (ready > 0 && !read(bytes, held))
            break;
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        book.end();
    }
    onNews();
}

ArrivalBook::Known PacketTap::find(quint64 id, quint64 bytes, ArrivalCurve& curve) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return book.find(id, bytes, curve);
}

std::optional<PacketTap::Span> PacketTap::seen() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto first = book.firstId();
    const auto last = book.newestEnded();
    return first && last ? std::optional<Span>({*first, *last}) : std::nullopt;
}

std::optional<LossCause> PacketTap::lossOf(quint64 id, quint64 next, bool atOnce) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return lossCause(book.passage(id, next), drops, atOnce);
}

} // namespace aravis
