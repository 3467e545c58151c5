#include "app/FilePanels.h"
#include "app/ProgramArguments.h"
#include "app/RaiseChannel.h"
#include "app/TerminationSignals.h"
#include "app/VelmWindow.h"
#include "app/WorkspaceLock.h"
#include "base/Log.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>

namespace {

// A starter that closed the standard descriptors would have the program's own files land on
// them, and one that ignores the end of children would lose their status. A closed pipe and a
// file that may not grow any more are errors of a write like others; children get both signals
// back.
void mendProcessState() {
    while (true) {
        const int descriptor = ::open("/dev/null", O_RDWR);
        if (descriptor < 0 || descriptor > 2) {
            if (descriptor > 2)
                ::close(descriptor);
            break;
        }
    }
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

int say(const QString &line, int status) {
    std::fprintf(stderr, "velm: %s\n", qPrintable(line));
    return status;
}

// Without a display the toolkit's application for windows ends the program on the spot, so what
// needs no window is done before there is one.
ProgramArguments argumentsWithoutDisplay(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    return readArguments(QCoreApplication::arguments());
}

// The workspace is another's: its window comes to the front, and this start is over.
int handOver(const WorkspaceLock &lock) {
    if (requestRaise(lock.socketPath()))
        return EXIT_SUCCESS;
    return say(QApplication::translate("main", "VELM is already running on this workspace, but "
                                               "its window does not answer."),
               EXIT_FAILURE);
}

int runWindow(SettingsStore &settings, const QString &memoryPath, const WorkspaceLock &lock) {
    StandardErrorLog log;
    DesktopFilePanels panels;
    VelmWindow velm({settings, log, panels, [] { QApplication::beep(); }, memoryPath});
    RaiseServer raiseServer(lock.socketPath());
    TerminationSignals termination;
    QObject::connect(&raiseServer, &RaiseServer::raiseRequested, &velm, &VelmWindow::raise);
    QObject::connect(&termination, &TerminationSignals::received, &velm, &VelmWindow::askToEnd);
    velm.start();
    return QApplication::exec();
}

int openWindow(int argc, char *argv[], const ProgramOptions &options) {
    const QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("VELM"));
    QApplication::setDesktopFileName(QStringLiteral("velm"));
    SettingsStore settings(options.settings);
    // The folder's name is needed before anything is cleared, so before start-up registers the
    // defaults; the store may be given them more than once.
    settings.registerDefaults(settingsKeys::startupDefaults());
    WorkspaceLock lock(temporaryFolder(settings),
                       QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    switch (lock.take()) {
    case WorkspaceLock::Outcome::Taken:
        return runWindow(settings, options.memory, lock);
    case WorkspaceLock::Outcome::HeldByAnother:
        return handOver(lock);
    case WorkspaceLock::Outcome::Unavailable:
        break;
    }
    return say(
        QApplication::translate("main", "the workspace cannot be locked: %1").arg(lock.problem()),
        EXIT_FAILURE);
}

} // namespace

int main(int argc, char *argv[]) {
    mendProcessState();
    StandardErrorLog::installForToolkit();
    QCoreApplication::setApplicationName(QStringLiteral("velm"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELM_VERSION));

    const ProgramArguments arguments = argumentsWithoutDisplay(argc, argv);
    if (const auto *answer = std::get_if<ProgramAnswer>(&arguments)) {
        std::fputs(qPrintable(answer->text), stdout);
        return EXIT_SUCCESS;
    }
    if (const auto *refusal = std::get_if<ProgramRefusal>(&arguments))
        return say(refusal->sentence, EXIT_FAILURE);
    return openWindow(argc, argv, std::get<ProgramOptions>(arguments));
}
