// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/Peers.h"

#include "instruments/Stopwatch.h"

#include <QStandardPaths>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern "C" char **environ;

namespace {

constexpr std::chrono::seconds graceTime(1);
constexpr std::chrono::milliseconds pollInterval(10);

double cpuMilliseconds(const rusage &usage) {
    const auto ms = [](const timeval &time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

bool isReplaced(const std::string &entry, const std::vector<std::string> &variables) {
    const std::string name = entry.substr(0, entry.find('='));
    for (const std::string &variable : variables)
        if (variable.substr(0, variable.find('=')) == name)
            return true;
    return false;
}

std::vector<std::string> changedEnvironment(const std::vector<std::string> &variables) {
    std::vector<std::string> entries;
    for (char **entry = environ; *entry != nullptr; ++entry)
        if (!isReplaced(*entry, variables))
            entries.emplace_back(*entry);
    for (const std::string &variable : variables)
        if (variable.find('=') != std::string::npos)
            entries.push_back(variable);
    return entries;
}

std::vector<char *> pointersTo(std::vector<std::string> &words) {
    std::vector<char *> pointers;
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

int spawn(std::vector<std::string> words, std::vector<std::string> environment) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int error = posix_spawn(&pid, words.front().c_str(), &actions, nullptr,
                                  pointersTo(words).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error(words.front() + ": " + std::strerror(error));
    return pid;
}

bool endsWithin(int pid, std::chrono::milliseconds time) {
    const Stopwatch stopwatch;
    while (!stopwatch.isBeyond(time)) {
        if (waitpid(pid, nullptr, WNOHANG) != 0)
            return true;
        std::this_thread::sleep_for(pollInterval);
    }
    return false;
}

} // namespace

double ownCpuMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return cpuMilliseconds(usage);
}

std::string findProgram(const std::string &program) {
    return QStandardPaths::findExecutable(QString::fromStdString(program)).toStdString();
}

CommandCost runCommand(const std::vector<std::string> &words) {
    const Stopwatch stopwatch;
    const int pid = spawn(words, changedEnvironment({}));
    int status = 0;
    rusage usage{};
    while (wait4(pid, &status, 0, &usage) < 0 && errno == EINTR)
        continue;
    const double wall = stopwatch.milliseconds();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(words.front() + " failed");
    return {wall, cpuMilliseconds(usage)};
}

int startCommand(const std::vector<std::string> &words, const std::vector<std::string> &variables) {
    return spawn(words, changedEnvironment(variables));
}

void endCommand(int pid) {
    kill(pid, SIGTERM);
    if (endsWithin(pid, graceTime))
        return;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}
