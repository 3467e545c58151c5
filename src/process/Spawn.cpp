// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/Spawn.h"

#include <QByteArrayList>
#include <QFile>

#include <csignal>
#include <spawn.h>
#include <unistd.h>
#include <vector>

extern "C" char **environ;

namespace {

/// Owns what the child does between its birth and its program.
class FileActions {
public:
    FileActions() { ::posix_spawn_file_actions_init(&actions_); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }

    void giveStream(int descriptor, int stream) {
        ::posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
    }

    void enterFolder([[maybe_unused]] const QByteArray &path) {
#ifdef VELM_HAVE_SPAWN_CHDIR
        // Up to a null character it would name another folder.
        const bool isName = !path.isEmpty() && !path.contains('\0');
        if (isName && ::access(path.constData(), X_OK) == 0)
            ::posix_spawn_file_actions_addchdir_np(&actions_, path.constData());
#endif
    }

    /// Close-on-exec covers what this program opened, but not what it inherited.
    void closeEverythingElse() {
#ifdef VELM_HAVE_SPAWN_CLOSEFROM
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
#endif
    }

    const posix_spawn_file_actions_t *get() const {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_;
};

/// A session of its own, and signals as a freshly started program expects them: a background
/// group of the terminal's session could be stopped by a login profile that talks to the
/// terminal, and an inherited blocked or ignored signal would make the child deaf.
class Attributes {
public:
    Attributes() {
        ::posix_spawnattr_init(&attributes_);
        short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
#ifdef POSIX_SPAWN_SETSID
        flags |= POSIX_SPAWN_SETSID;
#else
        flags |= POSIX_SPAWN_SETPGROUP;
#endif
        ::posix_spawnattr_setflags(&attributes_, flags);
        sigset_t signalSet;
        sigemptyset(&signalSet);
        ::posix_spawnattr_setsigmask(&attributes_, &signalSet);
        sigfillset(&signalSet);
        sigdelset(&signalSet, SIGKILL);
        sigdelset(&signalSet, SIGSTOP);
        ::posix_spawnattr_setsigdefault(&attributes_, &signalSet);
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() {
        ::posix_spawnattr_destroy(&attributes_);
    }

    const posix_spawnattr_t *get() const {
        return &attributes_;
    }

private:
    posix_spawnattr_t attributes_;
};

QByteArrayList encodedWords(const SpawnRequest &request) {
    QByteArrayList words{QFile::encodeName(request.program)};
    for (const QString &word : request.arguments)
        words.append(word.toLocal8Bit());
    return words;
}

} // namespace

Result<pid_t> spawnChild(const SpawnRequest &request) {
    FileActions actions;
    actions.giveStream(request.input, STDIN_FILENO);
    actions.giveStream(request.output, STDOUT_FILENO);
    actions.giveStream(request.error, STDERR_FILENO);
    actions.closeEverythingElse();
    actions.enterFolder(QFile::encodeName(request.workingFolder));

    QByteArrayList words = encodedWords(request);
    std::vector<char *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    const Attributes attributes;
    pid_t child = -1;
    const int error =
        ::posix_spawn(&child, argv.front(), actions.get(), attributes.get(), argv.data(), environ);
    if (error != 0)
        return Failure::ofSystem(error);
    return child;
}
