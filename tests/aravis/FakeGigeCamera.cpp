// SPDX-License-Identifier: GPL-3.0-or-later
// Start and end of the process.
#include "FakeGigeCamera.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

FakeGigeCamera::FakeGigeCamera(QString address) : ownAddress(std::move(address)) {}

FakeGigeCamera::~FakeGigeCamera()
{
    powerDown();
}

void FakeGigeCamera::setFrames(int size, int periodUs, double loss)
{
    frames = QStringList{QString::number(size), QString::number(periodUs), QString::number(loss)};
}

bool FakeGigeCamera::powerUp()
{
    powerDown();
    std::vector<std::string> texts{FAKE_GIGE_CAMERA, ownAddress.toStdString()};
    for (const QString& text : frames)
        texts.push_back(text.toStdString());
    std::vector<char*> arguments;
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);

    int in[2];
    int out[2];
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0)
        return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    pid_t pid = -1;
    const int failure = ::posix_spawn(&pid, FAKE_GIGE_CAMERA, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);
    input = in[1];
    char ready[8];
    const bool started = failure == 0 && ::read(out[0], ready, sizeof ready) > 0; // waits until the camera is there
    output = out[0];
    process = failure == 0 ? pid : -1;
    return started;
}

void FakeGigeCamera::powerDown()
{
    if (process > 0) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
        ::close(input);
        ::close(output);
    }
    process = -1;
}

void FakeGigeCamera::signal(int number) const
{
    ::kill(process, number);
}

void FakeGigeCamera::tell(const char* command)
{
    const std::string line = std::string(command) + '\n';
    [[maybe_unused]] const auto written = ::write(input, line.data(), line.size());
}

unsigned FakeGigeCamera::framesSent()
{
    tell("count");
    char line[32] = {};
    [[maybe_unused]] const auto got = ::read(output, line, sizeof line - 1);
    return unsigned(std::atoi(line));
}
