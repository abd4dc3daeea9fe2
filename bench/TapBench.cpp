// SPDX-License-Identifier: GPL-3.0-or-later
// What kestrova-tap costs, without a camera: packets of its form, sent over loopback at 400 MB/s.
#include <arpa/inet.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include <benchmark/benchmark.h>

#include "TapRecord.h"

namespace {

using namespace std::chrono_literals;
using aravis::TapRecord;
using Clock = std::chrono::steady_clock;

constexpr double bytesPerUs = 400.0;
constexpr double leastBytesPerUs = 300.0; ///< below that nothing is said about the tap
constexpr auto lasting = 3s;
constexpr std::size_t frameBytes = std::size_t{2048} * 2048;
constexpr std::size_t packetBytes = 9000 - 36; ///< without headers
constexpr std::size_t headerBytes = 8;
constexpr const char* cameraAddress = "127.0.0.2";
constexpr const char* hostAddress = "127.0.0.1";

void require(int result, const char* call)
{
    if (result != 0)
        throw std::system_error(errno, std::generic_category(), call);
}

sockaddr_in boundTo(int socket, const char* address)
{
    sockaddr_in own{};
    own.sin_family = AF_INET;
    ::inet_pton(AF_INET, address, &own.sin_addr);
    socklen_t size = sizeof own;
    require(::bind(socket, reinterpret_cast<const sockaddr*>(&own), size), "bind");
    require(::getsockname(socket, reinterpret_cast<sockaddr*>(&own), &size), "getsockname");
    return own;
}

/// Frames of 2048 x 2048 from the camera's address to a port of this host, evenly, until it is told to stop.
class Sender
{
public:
    Sender() : receiver(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        const sockaddr_in target = boundTo(receiver, hostAddress);
        port = ntohs(target.sin_port);
        socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        boundTo(socket, cameraAddress);
        require(::connect(socket, reinterpret_cast<const sockaddr*>(&target), sizeof target), "connect");
        thread = std::thread([this] { run(); });
    }
    ~Sender()
    {
        stop();
        ::close(socket);
        ::close(receiver);
    }
    void stop()
    {
        stopped = true;
        if (thread.joinable())
            thread.join();
    }
    unsigned ownPort() const { return port; }
    std::uint64_t sentPackets() const { return packets; }

private:
    void send(unsigned kind, unsigned frame, unsigned packet, std::size_t bytes)
    {
        std::array<unsigned char, headerBytes + packetBytes> data{};
        data[2] = static_cast<unsigned char>(frame >> 8);
        data[3] = static_cast<unsigned char>(frame);
        data[4] = static_cast<unsigned char>(kind);
        data[6] = static_cast<unsigned char>(packet >> 8);
        data[7] = static_cast<unsigned char>(packet);
        packets = packets + (::send(socket, data.data(), headerBytes + bytes, 0) > 0 ? 1 : 0);
    }
    void run()
    {
        const auto began = Clock::now();
        double sent = 0;
        for (unsigned frame = 1; !stopped; frame = frame % 65535 + 1) {
            unsigned packet = 0;
            send(1, frame, packet++, headerBytes);
            for (std::size_t bytes = 0; bytes < frameBytes && !stopped; bytes += packetBytes) {
                send(3, frame, packet++, packetBytes);
                sent += packetBytes;
                const std::chrono::duration<double, std::micro> due(sent / bytesPerUs);
                if (due > Clock::now() - began + 1ms)
                    std::this_thread::sleep_until(began + due);
            }
            send(2, frame, packet, headerBytes);
        }
    }

    const int receiver; ///< that nobody reads: what a tap sees it has seen before
    int socket = -1;
    unsigned port = 0;
    std::atomic<std::uint64_t> packets{0};
    std::atomic<bool> stopped{false};
    std::thread thread;
};

/// The program as a child, and what it tells.
class Tap
{
public:
    explicit Tap(unsigned port)
    {
        std::string number = std::to_string(port);
        const std::array<const char*, 5> arguments{KESTROVA_TAP, cameraAddress, hostAddress, number.c_str(), nullptr};
        std::array<int, 2> ends{};
        require(::pipe2(ends.data(), O_CLOEXEC), "pipe2");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        ::posix_spawn(&process, KESTROVA_TAP, &actions, nullptr, const_cast<char* const*>(arguments.data()), environ);
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        records = ::fdopen(ends[0], "r");
    }
    ~Tap()
    {
        std::fclose(records);
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
    /// Waits for the next record and counts it. False at the end.
    bool read()
    {
        TapRecord record{};
        if (std::fread(&record, sizeof record, 1, records) != 1)
            return false;
        drops += record.kind == TapRecord::Status ? record.frameId : 0;
        ready |= record.kind == TapRecord::Ready;
        return true;
    }
    double processorSeconds() const
    {
        double nanoseconds = 0;
        std::ifstream("/proc/" + std::to_string(process) + "/schedstat") >> nanoseconds;
        return nanoseconds * 1e-9;
    }

    std::uint64_t drops = 0;
    bool ready = false;

private:
    pid_t process = -1;
    std::FILE* records = nullptr;
};

void tap(benchmark::State& state)
{
    Sender sender;
    Tap tap(sender.ownPort());
    if (!tap.read() || !tap.ready) {
        state.SkipWithError("skipped: kestrova-tap needs the right to capture packets");
        return;
    }
    for (auto _ : state) {
        const auto began = Clock::now();
        const double used = tap.processorSeconds();
        const std::uint64_t before = sender.sentPackets();
        while (Clock::now() < began + lasting)
            tap.read();
        const std::chrono::duration<double> took = Clock::now() - began;
        const double rate = static_cast<double>((sender.sentPackets() - before) * packetBytes) / took.count() * 1e-6;
        state.SetIterationTime(tap.processorSeconds() - used);
        state.counters["MB/s"] = rate;
        state.counters["core%"] = (tap.processorSeconds() - used) / took.count() * 100;
        state.counters["drops"] = static_cast<double>(tap.drops);
        if (rate < leastBytesPerUs)
            state.SkipWithError("skipped: the sender does not reach 300 MB/s");
        else if (tap.drops > 0)
            state.SkipWithError("the tap has dropped packets");
    }
}

} // namespace

void registerTapBenchmarks()
{
    benchmark::RegisterBenchmark("tap/400MBps", tap)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}
