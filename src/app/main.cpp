// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ProgramArguments.h"
#include "app/TerminationSignals.h"
#include "app/VelmWindow.h"
#include "app/WorkspaceEntry.h"
#include "app/WorkspaceHold.h"
#include "app/WorkspaceLock.h"
#include "base/FileDescriptor.h"
#include "base/Log.h"
#include "base/Result.h"
#include "control/FilePanels.h"
#include "files/FolderGuard.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "views/HelpWindows.h"

#include <QApplication>
#include <QIcon>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <unistd.h>
#include <utility>
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

int say(const QString &line, int status) {
    std::fprintf(stderr, "velm: %s\n", qPrintable(line));
    return status;
}

/// What a start has when its window may open. The settings were opened before there was an
/// application with a window and must not need its event loop until it runs.
struct Start {
    ProgramOptions options;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<WorkspaceLock> lock;
};

/// Locks the workspace that the settings name now. Gives the exit status if it is another
/// process's, or cannot be locked.
std::optional<int> enter(Start &start) {
    start.lock = std::make_unique<WorkspaceLock>(
        temporaryFolder(*start.settings),
        folderForLocks(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
                       stateFolder()));
    const Result<WorkspaceEntry> entry = enterWorkspace(*start.lock, start.options.binary);
    if (const Failure *failure = entry.failure())
        return say(QCoreApplication::translate("main", "the workspace cannot be locked: %1")
                       .arg(failure->reason),
                   EXIT_FAILURE);
    switch (*entry) {
    case WorkspaceEntry::First:
        return std::nullopt;
    case WorkspaceEntry::Raised:
        return EXIT_SUCCESS;
    case WorkspaceEntry::Silent:
        break;
    }
    return say(QCoreApplication::translate("main", "VELM is already running on this workspace, but "
                                                   "its window does not answer."),
               EXIT_FAILURE);
}

/// Without a display the toolkit's application for windows ends the program on the spot, so what
/// needs no window comes before it. Gives the exit status if the program ends here.
std::variant<Start, int> prepare(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    const ProgramArguments arguments = readArguments(QCoreApplication::arguments());
    if (const auto *answer = std::get_if<ProgramAnswer>(&arguments)) {
        std::fputs(qPrintable(answer->text), stdout);
        return EXIT_SUCCESS;
    }
    if (const auto *refusal = std::get_if<ProgramRefusal>(&arguments))
        return say(refusal->sentence, EXIT_FAILURE);

    Start start{std::get<ProgramOptions>(arguments), nullptr, nullptr};
    start.settings = std::make_unique<SettingsStore>(start.options.settings);
    // The folder's name is needed before anything is cleared, so before start-up registers the
    // defaults; the store may be given them more than once.
    start.settings->registerDefaults(settingsKeys::startupDefaults());
    if (const std::optional<int> status = enter(start))
        return *status;
    return start;
}

/// The exit status; nothing if another start has made the folder of temporary files its own first.
std::optional<int> runWindow(const Start &start) {
    StandardErrorLog log;
    DesktopFilePanels panels;
    WorkspaceHold hold(*start.lock, *start.settings);
    VelmWindow velm({*start.settings, log, panels, [] { QApplication::beep(); },
                     start.options.memory, FolderGuard([&hold] { return hold.mayUseFolder(); })});
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::received, &velm, &VelmWindow::askToEnd);
    if (!velm.start())
        return std::nullopt;
    if (!start.options.binary.isEmpty())
        velm.openFile(start.options.binary);
    QObject::connect(&hold, &WorkspaceHold::raiseRequested, &velm, &VelmWindow::raise);
    QObject::connect(&hold, &WorkspaceHold::openRequested, &velm, &VelmWindow::openFile);
    // Not earlier: a start that finds it listening expects an answer soon.
    hold.listen();
    return QApplication::exec();
}

/// Whoever was first may have ended by the time it is asked.
int runUntilTheEnd(Start &start) {
    while (true) {
        if (const std::optional<int> status = runWindow(start))
            return *status;
        if (const std::optional<int> status = enter(start))
            return *status;
    }
}

} // namespace

int main(int argc, char *argv[]) {
    mendProcessState();
    StandardErrorLog::installForToolkit();
    QCoreApplication::setApplicationName(QStringLiteral("velm"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELM_VERSION));
    std::variant<Start, int> preparation = prepare(argc, argv);
    if (const int *status = std::get_if<int>(&preparation))
        return *status;

    const QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("VELM"));
    QApplication::setWindowIcon(programIcon());
    QApplication::setDesktopFileName(QStringLiteral("velm"));
    return runUntilTheEnd(std::get<Start>(preparation));
}
