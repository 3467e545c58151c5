// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <vector>

namespace {

QProcessEnvironment environmentWithoutDisplay() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(variable));
    return environment;
}

QProcessEnvironment environmentIn(const QTemporaryDir &folder, bool withDisplay) {
    QProcessEnvironment environment =
        withDisplay ? QProcessEnvironment::systemEnvironment() : environmentWithoutDisplay();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("data")));
    return environment;
}

/// How a test starts the program.
struct HowToStart {
    /// What the new process does before it becomes the program.
    std::function<void()> beforehand = {};
    bool withDisplay = true;
    QStringList words = {};
    /// Further variables of its environment.
    QMap<QString, QString> variables = {};
};

/// A started program in a folder of its own. None of the signals is ignored that a shell ignores
/// for what it starts in the background.
class Program {
public:
    explicit Program(const QTemporaryDir &folder, const HowToStart &how = {}) {
        process.setChildProcessModifier([beforehand = how.beforehand] {
            for (const int number : {SIGTERM, SIGINT, SIGHUP})
                ::signal(number, SIG_DFL);
            if (beforehand)
                beforehand();
        });
        QProcessEnvironment environment = environmentIn(folder, how.withDisplay);
        for (auto variable = how.variables.begin(); variable != how.variables.end(); ++variable)
            environment.insert(variable.key(), variable.value());
        process.setProcessEnvironment(environment);
        process.setReadChannel(QProcess::StandardError);
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral(VELM),
                      QStringList{QStringLiteral("--settings"), QStringLiteral("velm.conf"),
                                  QStringLiteral("--state"), QStringLiteral("state.conf")} +
                          how.words);
    }
    ~Program() {
        process.kill();
        process.waitForFinished();
    }

    /// Waits until the program has started up; its log tells.
    bool isUp() {
        standardError += process.readAllStandardError();
        while (!standardError.contains("inserting opened binary"))
            if (!readMore())
                return false;
        return true;
    }
    bool readMore() {
        if (!process.waitForReadyRead(int(patience.count())))
            return false;
        standardError += process.readAllStandardError();
        return true;
    }
    /// Waits for the end; the exit code, or -1 if it crashed or goes on.
    int exitCode() {
        const bool over = process.state() == QProcess::NotRunning ||
                          process.waitForFinished(int(patience.count()));
        if (!over || process.exitStatus() != QProcess::NormalExit)
            return -1;
        standardError += process.readAllStandardError();
        return process.exitCode();
    }
    void send(int signal) const { ::kill(pid_t(process.processId()), signal); }

    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(20);
    QProcess process;
    QByteArray standardError;
};

/// The data to burn of the program that works in \a folder.
QByteArray imageIn(const QTemporaryDir &folder) {
    return readWholeFile(folder.filePath(QStringLiteral("data/VELM/temp.bin")));
}

/// Waits until the program that works in \a folder can be asked for its window.
bool listens(const QTemporaryDir &folder) {
    return QTest::qWaitFor(
        [&] {
            return !QDir(folder.path())
                        .entryList({QStringLiteral("*.socket")}, QDir::System)
                        .isEmpty();
        },
        int(Program::patience.count()));
}

} // namespace

/// The program as a process.
class TestProcess : public QObject {
    Q_OBJECT

private slots:
    void aTerminateSignal_endsItProperly_data();
    void aTerminateSignal_endsItProperly();
    void anIgnoredHangup_staysIgnored();
    void aSecondStart_raisesTheFirstAndEnds();
    void aSecondStart_needsNoDisplay();
    void ofManyStartsAtOnce_oneOpensAWindow_data();
    void ofManyStartsAtOnce_oneOpensAWindow();
    void aStartFromElsewhere_handsItsFileOver();
    void aSecondStart_saysWhenTheFirstDoesNotAnswer();
    void aRuntimeFolderThatIsNotItsOwn_holdsNoLock_data();
    void aRuntimeFolderThatIsNotItsOwn_holdsNoLock();
    void afterACrash_theWorkspaceIsFree();
    void defaults_landInTheDataHome();
    void aFileThatIsNamed_isOpened();
    void aFileThatIsNamed_isOpenedByTheFirstWindow();
    void aFileSizeLimit_isAnErrorLikeAFullDisk();
    void aFileOfItsOwnThatIsNoFile_isRefusedAtOnce_data();
    void aFileOfItsOwnThatIsNoFile_isRefusedAtOnce();
    void answers_needNoDisplay_data();
    void answers_needNoDisplay();
};

void TestProcess::aTerminateSignal_endsItProperly_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestProcess::aTerminateSignal_endsItProperly() {
    QFETCH(int, number);
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program velm(folder);
    QVERIFY(velm.isUp());
    velm.send(number);
    QCOMPARE(velm.exitCode(), 0);
}

void TestProcess::anIgnoredHangup_staysIgnored() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program velm(folder, {.beforehand = [] { ::signal(SIGHUP, SIG_IGN); }});
    QVERIFY(velm.isUp());
    velm.send(SIGHUP);
    // It still answers, and would have taken a hangup before this.
    Program second(folder);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(velm.process.state(), QProcess::Running);
    velm.send(SIGTERM);
    QCOMPARE(velm.exitCode(), 0);
}

void TestProcess::aSecondStart_raisesTheFirstAndEnds() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program first(folder);
    QVERIFY(first.isUp());
    Program second(folder);
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(!second.standardError.contains("error removing"));
    first.send(SIGTERM);
    QCOMPARE(first.exitCode(), 0);
}

void TestProcess::aSecondStart_needsNoDisplay() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program first(folder);
    QVERIFY(first.isUp());
    Program second(folder, {.withDisplay = false});
    QCOMPARE(second.exitCode(), 0);
}

namespace {

using Programs = std::vector<std::unique_ptr<Program>>;

constexpr int manyStarts = 20;

/// Waits until just one of \a programs runs; null if that never is.
Program *theOneThatStays(const Programs &programs) {
    const auto runs = [](const auto &program) {
        return program->process.state() != QProcess::NotRunning;
    };
    const auto oneIsLeft = [&] {
        return std::count_if(programs.begin(), programs.end(), runs) == 1;
    };
    return QTest::qWaitFor(oneIsLeft, int(Program::patience.count()))
               ? std::find_if(programs.begin(), programs.end(), runs)->get()
               : nullptr;
}

} // namespace

void TestProcess::ofManyStartsAtOnce_oneOpensAWindow_data() {
    QTest::addColumn<QString>("runtime");
    QTest::newRow("one runtime folder") << ".";
    // Nothing joins these but the folder of the temporary files, which is not there yet.
    QTest::newRow("a runtime folder each") << "runtime-%1";
    QTest::newRow("none") << "";
}

void TestProcess::ofManyStartsAtOnce_oneOpensAWindow() {
    QFETCH(const QString, runtime);
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Programs programs;
    for (int i = 0; i < manyStarts; ++i) {
        QString path = runtime;
        if (!runtime.isEmpty())
            path = folder.filePath(runtime.contains(u'%') ? runtime.arg(i) : runtime);
        programs.push_back(std::make_unique<Program>(
            folder, HowToStart{.variables = {{QStringLiteral("XDG_RUNTIME_DIR"), path},
                                             {QStringLiteral("TMPDIR"), folder.path()}}}));
    }
    Program *first = theOneThatStays(programs);
    QVERIFY(first);
    QVERIFY(first->isUp());
    first->send(SIGTERM);
    for (const auto &program : programs) {
        QVERIFY2(program->exitCode() == 0, program->standardError.constData());
        // Nobody else has written there.
        const bool composed = program->standardError.contains("inserting opened binary");
        QCOMPARE(program->standardError.contains("error writing to temp file"),
                 composed && program.get() != first);
    }
}

void TestProcess::aStartFromElsewhere_handsItsFileOver() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    const QTemporaryDir otherRuntime;
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("other.bin")), "other"));
    Program first(folder);
    QVERIFY(first.isUp());
    Program second(folder,
                   {.words = {QStringLiteral("other.bin")},
                    .variables = {{QStringLiteral("XDG_RUNTIME_DIR"), otherRuntime.path()}}});
    QCOMPARE(second.exitCode(), 0);
    QTRY_COMPARE(imageIn(folder), QByteArray("other"));
    // A kill leaves nothing there by which another start could be misled.
    first.send(SIGKILL);
    QCOMPARE(first.exitCode(), -1);
    Program third(folder,
                  {.variables = {{QStringLiteral("XDG_RUNTIME_DIR"), otherRuntime.path()}}});
    QVERIFY(third.isUp());
}

void TestProcess::aSecondStart_saysWhenTheFirstDoesNotAnswer() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program first(folder);
    QVERIFY(first.isUp());
    QVERIFY(listens(folder));
    first.send(SIGSTOP);
    Program second(folder);
    QCOMPARE(second.exitCode(), 1);
    QVERIFY2(second.standardError.contains("velm: VELM is already running"),
             second.standardError.constData());
    first.send(SIGCONT);
}

void TestProcess::aRuntimeFolderThatIsNotItsOwn_holdsNoLock_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("a file") << "file";
    QTest::newRow("nothing that could be made") << "file/folder";
    QTest::newRow("open to others") << "open";
    QTest::newRow("somebody else's") << "foreign";
}

void TestProcess::aRuntimeFolderThatIsNotItsOwn_holdsNoLock() {
    QFETCH(const QString, name);
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("file")), {}));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("open")));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("foreign")));
    const auto encoded = [&](const char *entry) {
        return QFile::encodeName(folder.filePath(QLatin1String(entry)));
    };
    QCOMPARE(::chmod(encoded("open").constData(), 0777), 0);
    if (name == u"foreign" && ::chown(encoded("foreign").constData(), 12345, gid_t(-1)) != 0)
        QSKIP("only root can give a folder away");
    // The toolkit's own fallback stands below this one, which is none either.
    const HowToStart how{
        .variables = {{QStringLiteral("XDG_RUNTIME_DIR"), folder.filePath(name)},
                      {QStringLiteral("TMPDIR"), folder.filePath(QStringLiteral("file"))},
                      {QStringLiteral("XDG_STATE_HOME"), folder.filePath(QStringLiteral("st"))}}};
    const QStringList locks = {QStringLiteral("velm-*")};
    const QStringList inRoot = QDir::root().entryList(locks, QDir::Files | QDir::System);

    Program first(folder, how);
    QVERIFY2(first.isUp(), first.standardError.constData());
    Program second(folder, how);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(QDir::root().entryList(locks, QDir::Files | QDir::System), inRoot);
    for (const char *entry : {"open", "foreign"})
        QVERIFY(QDir(folder.filePath(QLatin1String(entry))).isEmpty());
    QCOMPARE(QDir(folder.filePath(QStringLiteral("st/velm"))).entryList(locks, QDir::Files).size(),
             1);
}

void TestProcess::afterACrash_theWorkspaceIsFree() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program first(folder);
    QVERIFY(first.isUp());
    first.send(SIGKILL);
    QCOMPARE(first.exitCode(), -1);
    Program second(folder);
    QVERIFY(second.isUp());
}

void TestProcess::defaults_landInTheDataHome() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    Program velm(folder);
    QVERIFY(velm.isUp());
    velm.send(SIGTERM);
    QCOMPARE(velm.exitCode(), 0);
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("data/VELM/temp.bin"))));
}

void TestProcess::aFileThatIsNamed_isOpened() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("before.bin")), "opened the last time"));
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("now.bin")), "named now"));
    {
        SettingsStore settings(folder.filePath(QStringLiteral("velm.conf")));
        settings.setValue(settingsKeys::binary, folder.filePath(QStringLiteral("before.bin")));
    }
    Program velm(folder, {.words = {QStringLiteral("now.bin")}});
    QTRY_COMPARE(imageIn(folder), QByteArray("named now"));
    velm.send(SIGTERM);
    QCOMPARE(velm.exitCode(), 0);
    const SettingsStore settings(folder.filePath(QStringLiteral("velm.conf")));
    QCOMPARE(settings.stringValue(settingsKeys::binary),
             folder.filePath(QStringLiteral("now.bin")));
}

void TestProcess::aFileThatIsNamed_isOpenedByTheFirstWindow() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    const QString name = QStringLiteral("two\nlines \u00e9.bin");
    QVERIFY(writeWholeFile(folder.filePath(name), "from the second start"));
    Program first(folder);
    QVERIFY(first.isUp());
    Program second(folder, {.words = {name}});
    QCOMPARE(second.exitCode(), 0);
    QTRY_COMPARE(imageIn(folder), QByteArray("from the second start"));
}

void TestProcess::aFileSizeLimit_isAnErrorLikeAFullDisk() {
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    constexpr int limit = 16 * 1024;
    QVERIFY(writeWholeFile(folder.filePath(QStringLiteral("big.bin")), QByteArray(2 * limit, 'x')));
    const auto limitFiles = [] {
        const rlimit smallFiles{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &smallFiles);
    };
    Program velm(folder, {.beforehand = limitFiles, .words = {QStringLiteral("big.bin")}});
    QVERIFY(velm.isUp());
    while (!velm.standardError.contains("error writing to temp file"))
        QVERIFY2(velm.readMore(), velm.standardError.constData());
    velm.send(SIGTERM);
    QCOMPARE(velm.exitCode(), 0);
}

void TestProcess::aFileOfItsOwnThatIsNoFile_isRefusedAtOnce_data() {
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("name");
    for (const char *option : {"--settings", "--state"})
        for (const char *name : {"fifo", "folder", "device", "link to the fifo"})
            QTest::addRow("%s %s", option, name) << option << name;
}

void TestProcess::aFileOfItsOwnThatIsNoFile_isRefusedAtOnce() {
    QFETCH(QString, option);
    QFETCH(QString, name);
    const QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    QCOMPARE(::mkfifo(qUtf8Printable(folder.filePath(QStringLiteral("fifo"))), 0600), 0);
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder")));
    // Not one of the system's own devices: whoever may make one may also spoil those.
    const QByteArray device = folder.filePath(QStringLiteral("device")).toUtf8();
    if (name == u"device" && ::mknod(device.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("this user cannot make a device");
    QVERIFY(
        QFile::link(QStringLiteral("fifo"), folder.filePath(QStringLiteral("link to the fifo"))));
    const QString path = folder.filePath(name);
    QProcess velm;
    velm.start(QStringLiteral(VELM), {option, path});
    QVERIFY(velm.waitForFinished());
    QCOMPARE(velm.exitStatus(), QProcess::NormalExit);
    QCOMPARE(velm.exitCode(), 1);
    QCOMPARE(QString::fromUtf8(velm.readAllStandardError()),
             QStringLiteral("velm: %1: %2 is not a regular file.\n").arg(option, path));
}

void TestProcess::answers_needNoDisplay_data() {
    QTest::addColumn<QString>("argument");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("error");
    QTest::newRow("help") << "--help" << 0 << "Usage: .*--settings <file>.*"
                          << "";
    QTest::newRow("version") << "--version" << 0 << "velm [0-9.]+\n"
                             << "";
    QTest::newRow("an unknown option") << "--nonsense" << 1 << ""
                                       << "velm: [^\n]*nonsense[^\n]*\n";
    QTest::newRow("no value") << "--state" << 1 << ""
                              << "velm: [^\n]*--state[^\n]*\n";
}

void TestProcess::answers_needNoDisplay() {
    QFETCH(QString, argument);
    QFETCH(QString, output);
    QFETCH(QString, error);
    QProcess velm;
    velm.setProcessEnvironment(environmentWithoutDisplay());
    velm.start(QStringLiteral(VELM), {argument});
    QVERIFY(velm.waitForFinished());
    QCOMPARE(velm.exitStatus(), QProcess::NormalExit);
    QTEST(velm.exitCode(), "status");
    const auto matches = [](const QByteArray &text, const QString &pattern) {
        const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern),
                                       QRegularExpression::DotMatchesEverythingOption);
        return whole.match(QString::fromUtf8(text)).hasMatch();
    };
    const QByteArray printed = velm.readAllStandardOutput();
    QVERIFY2(matches(printed, output), printed.constData());
    const QByteArray complaint = velm.readAllStandardError();
    QVERIFY2(matches(complaint, error), complaint.constData());
}

QTEST_GUILESS_MAIN(TestProcess)
#include "tst_process.moc"
