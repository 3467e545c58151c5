// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/PipeHolders.h"

#include "process/ProcessDescriptor.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// What is in \a folder, as far as that can be seen: processes come and go meanwhile.
std::vector<fs::path> entriesOf(const fs::path &folder) {
    std::vector<fs::path> paths;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure); entry != fs::directory_iterator();
         entry.increment(failure))
        paths.push_back(entry->path());
    return paths;
}

/// The pipe that the link to a descriptor stands for; nothing if it is something else. The link is
/// only read: what it leads to may be a file on a disk that does not answer.
std::optional<PipeIdentity> pipeBehind(const fs::path &link) {
    static const QRegularExpression pattern(QStringLiteral("^pipe:\\[(\\d+)\\]$"));
    std::error_code failure;
    const fs::path target = fs::read_symlink(link, failure);
    const auto match = pattern.match(QString::fromStdString(target.string()));
    return match.hasMatch() ? std::optional(PipeIdentity{match.captured(1).toULongLong()})
                            : std::nullopt;
}

bool holdsOneOf(const QList<PipeIdentity> &pipes, const fs::path &process) {
    const std::vector<fs::path> descriptors = entriesOf(process / "fd");
    return std::any_of(descriptors.begin(), descriptors.end(), [&pipes](const fs::path &link) {
        const std::optional<PipeIdentity> pipe = pipeBehind(link);
        return pipe && pipes.contains(*pipe);
    });
}

} // namespace

std::optional<PipeIdentity> pipeIdentity(int descriptor) {
    return pipeBehind(fs::path("/proc/self/fd") / std::to_string(descriptor));
}

void killHoldersOf(const QList<PipeIdentity> &pipes, pid_t session) {
    for (const fs::path &entry : entriesOf("/proc")) {
        const pid_t pid = QString::fromStdString(entry.filename().string()).toInt();
        if (pid <= 0 || pid == ::getpid())
            continue;
        // Looked at after it was opened: a number that has passed on to another process does no
        // harm then.
        const FileDescriptor process = openProcess(pid);
        if (::getsid(pid) == session && holdsOneOf(pipes, entry))
            signalProcess(process, SIGKILL);
    }
}
