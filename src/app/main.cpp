#include "app/FilePanels.h"
#include "app/RaiseChannel.h"
#include "app/TerminationSignals.h"
#include "app/VelmWindow.h"
#include "app/WorkspaceLock.h"
#include "base/Log.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>

namespace {

struct Paths {
    QString settings;
    QString memory;
};

// A starter that closed the standard descriptors would have the program's own files land on
// them, and one that ignores the end of children would lose their status.
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
}

QString stateHome() {
    const QString fromEnvironment = qEnvironmentVariable("XDG_STATE_HOME");
    return fromEnvironment.startsWith(QLatin1Char('/'))
               ? fromEnvironment
               : QDir::homePath() + QStringLiteral("/.local/state");
}

Paths readCommandLine(const QApplication &application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QApplication::translate("main", "Read, write and test chips with the minipro tool."));
    const QCommandLineOption settings(
        QStringLiteral("settings"), QApplication::translate("main", "Keep the settings in <file>."),
        QStringLiteral("file"),
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
            QStringLiteral("/velm/velm.conf"));
    const QCommandLineOption state(
        QStringLiteral("state"),
        QApplication::translate("main", "Keep what the window remembers in <file>."),
        QStringLiteral("file"), stateHome() + QStringLiteral("/velm/state.conf"));
    parser.addOptions({settings, state});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    const QDir here;
    return {here.absoluteFilePath(parser.value(settings)),
            here.absoluteFilePath(parser.value(state))};
}

int say(const QString &line, int status) {
    std::fprintf(stderr, "velm: %s\n", qPrintable(line));
    return status;
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

} // namespace

int main(int argc, char *argv[]) {
    mendProcessState();
    StandardErrorLog::installForToolkit();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("velm"));
    QApplication::setApplicationDisplayName(QStringLiteral("VELM"));
    QApplication::setApplicationVersion(QStringLiteral(VELM_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("velm"));

    const Paths paths = readCommandLine(application);
    SettingsStore settings(paths.settings);
    // The folder's name is needed before anything is cleared, so before start-up registers the
    // defaults; the store may be given them more than once.
    settings.registerDefaults(settingsKeys::startupDefaults());
    WorkspaceLock lock(temporaryFolder(settings),
                       QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    switch (lock.take()) {
    case WorkspaceLock::Outcome::Taken:
        return runWindow(settings, paths.memory, lock);
    case WorkspaceLock::Outcome::HeldByAnother:
        return handOver(lock);
    case WorkspaceLock::Outcome::Unavailable:
        break;
    }
    return say(
        QApplication::translate("main", "the workspace cannot be locked: %1").arg(lock.problem()),
        EXIT_FAILURE);
}
