// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/RawChild.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern "C" char **environ;

namespace {

using PipeEnds = std::array<int, 2>;

PipeEnds openPipe() {
    PipeEnds ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    return ends;
}

pid_t spawn(const std::vector<std::string> &words, int in, int out, int error) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error, STDERR_FILENO);
    std::vector<char *> argv;
    for (const std::string &word : words)
        argv.push_back(const_cast<char *>(word.c_str()));
    argv.push_back(nullptr);
    pid_t pid = -1;
    const int failure = posix_spawn(&pid, argv.front(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error(words.front() + ": " + std::strerror(failure));
    return pid;
}

/// Reads from both until both have ended.
void drain(int out, int error) {
    std::array<char, 64 * 1024> bin;
    std::array<pollfd, 2> streams{{{out, POLLIN, 0}, {error, POLLIN, 0}}};
    for (int open = 2; open > 0;) {
        poll(streams.data(), streams.size(), -1);
        for (pollfd &stream : streams) {
            if (stream.revents != 0 && read(stream.fd, bin.data(), bin.size()) <= 0) {
                stream.fd = -1;
                --open;
            }
        }
    }
}

} // namespace

void runRawChild(const std::vector<std::string> &words) {
    const PipeEnds in = openPipe();
    const PipeEnds out = openPipe();
    const PipeEnds error = openPipe();
    const pid_t pid = spawn(words, in[0], out[1], error[1]);
    for (const int childs : {in[0], out[1], error[1]})
        close(childs);
    drain(out[0], error[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    for (const int own : {in[1], out[0], error[0]})
        close(own);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(words.front() + " failed");
}
