// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/VelmWindow.h"
#include "base/FileDescriptor.h"
#include "base/Log.h"
#include "base/Result.h"
#include "control/FilePanels.h"
#include "files/FolderGuard.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "start/ProgramArguments.h"
#include "start/TerminationSignals.h"
#include "start/WorkspaceEntry.h"
#include "start/WorkspaceHold.h"
#include "start/WorkspaceLock.h"
#include "widgets/Icons.h"

#include <QApplication>
#include <QIcon>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <variant>

namespace {

/// A starter that closed the standard descriptors would have the program's own files land on
/// them, and one that ignores the end of children would lose their status. A closed pipe and a
/// file that may not grow any more are errors of a write like others; children get both signals
/// back.
void mendProcessState() {
    while (true) {
        FileDescriptor descriptor(::open("/dev/null", O_RDWR));
        if (!descriptor.isOpen() || descriptor.get() > STDERR_FILENO)
            break;
        descriptor.release();
    }
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

/// What a start has when its window may open. The settings were opened before there was an
/// application with a window and must not need its event loop until it runs.
struct Start {
    ProgramOptions options;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<WorkspaceLock> lock;
};

/// The program ends with a status, and opens no window.
struct Ended {
    int status;
};

Ended failed(const QString &line) {
    std::fprintf(stderr, "velm: %s\n", qPrintable(line));
    return Ended{EXIT_FAILURE};
}

/// Locks the workspace that the settings name now, unless it is another process's or cannot be
/// locked.
Result<void, Ended> enter(Start &start) {
    start.lock = std::make_unique<WorkspaceLock>(
        temporaryFolder(*start.settings),
        folderForLocks(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
                       stateFolder()));
    const Result<WorkspaceEntry> entry = enterWorkspace(*start.lock, start.options.binary);
    if (const Failure *failure = entry.failure())
        return failed(QCoreApplication::translate("main", "the workspace cannot be locked: %1")
                          .arg(failure->reason));
    switch (*entry) {
    case WorkspaceEntry::First:
        return {};
    case WorkspaceEntry::Raised:
        return Ended{EXIT_SUCCESS};
    case WorkspaceEntry::Silent:
        break;
    }
    return failed(QCoreApplication::translate(
        "main", "VELM is already running on this workspace, but its window does not answer."));
}

/// Without a display the toolkit's application for windows ends the program on the spot, so what
/// needs no window comes before it.
Result<Start, Ended> prepare(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    const auto request = readArguments(QCoreApplication::arguments());
    if (const ProgramRefusal *refusal = request.failure())
        return failed(refusal->sentence);
    if (const auto *answer = std::get_if<ProgramAnswer>(&*request)) {
        std::fputs(qPrintable(answer->text), stdout);
        return Ended{EXIT_SUCCESS};
    }

    Start start{std::get<ProgramOptions>(*request), nullptr, nullptr};
    start.settings = std::make_unique<SettingsStore>(start.options.settings);
    // The folder's name is needed before anything is cleared, so before start-up registers the
    // defaults; the store may be given them more than once.
    start.settings->registerDefaults(settingsKeys::startupDefaults());
    const auto entered = enter(start);
    if (const Ended *ended = entered.failure())
        return *ended;
    return start;
}

/// Another start has made the folder of temporary files its own first.
struct FolderTaken {};

/// The status that the program ends with, once the window is closed.
Result<Ended, FolderTaken> runWindow(const Start &start) {
    StandardErrorLog log;
    DesktopFilePanels panels;
    WorkspaceHold hold(*start.lock, *start.settings);
    VelmWindow velm({*start.settings, log, panels, [] { QApplication::beep(); },
                     start.options.memory, FolderGuard([&hold] { return hold.mayUseFolder(); })});
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &velm, &VelmWindow::askToEnd);
    if (!velm.start())
        return FolderTaken();
    if (!start.options.binary.isEmpty())
        velm.openFile(start.options.binary);
    QObject::connect(&hold, &WorkspaceHold::raiseRequested, &velm, &VelmWindow::raise);
    QObject::connect(&hold, &WorkspaceHold::openRequested, &velm, &VelmWindow::openFile);
    // Not earlier: a start that finds it listening expects an answer soon.
    hold.listen();
    return Ended{QApplication::exec()};
}

/// Whoever was first may have ended by the time it is asked.
int runUntilTheEnd(Start &start) {
    while (true) {
        if (const auto ended = runWindow(start))
            return ended->status;
        const auto entered = enter(start);
        if (const Ended *ended = entered.failure())
            return ended->status;
    }
}

} // namespace

int main(int argc, char *argv[]) {
    mendProcessState();
    StandardErrorLog::installForToolkit();
    QCoreApplication::setApplicationName(QStringLiteral("velm"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELM_VERSION));
    Result<Start, Ended> start = prepare(argc, argv);
    if (const Ended *ended = start.failure())
        return ended->status;

    const QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("VELM"));
    QApplication::setWindowIcon(programIcon());
    QApplication::setDesktopFileName(QStringLiteral("velm"));
    return runUntilTheEnd(*start);
}
