// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/FailingCalls.h"
#include "support/WorkspaceFixture.h"

#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

using namespace settingsKeys;

namespace {

const QString removingOutput =
    QStringLiteral("error removing ~/Library/Application Support/VELM/temp.bin : ");
const QString removingRead =
    QStringLiteral("error removing ~/Library/Application Support/VELM/temp_read.bin : ");
const QString removingSearch =
    QStringLiteral("error removing ~/Library/Application Support/VELM/temp_sr.bin : ");
const QString absent = QStringLiteral("No such file or directory");

} // namespace

class TestTemporaryWorkspace : public QObject {
    Q_OBJECT

private slots:
    void init() { at = std::make_unique<WorkspaceFixture>(); }
    void clear_onAFreshAccountDoesNothing();
    void clear_deletesThreeFilesAndLeavesTheLogicReport();
    void clear_ofAnEmptyFolderLogsThreeLines();
    void clear_carriesTheFirstErrorOver();
    void clear_errorsOnlyFromTheFailureOn();
    void clear_logsWhatStaysWhateverFails();
    void clear_laterFailureReplacesTheError();
    void clear_takesTheKeysOwnPaths();
    void clear_aFileInsteadOfTheFolder();
    void clear_removesLinksAndNotTheirTargets();
    void clear_removesWhatAKilledProgramLeft_data();
    void clear_removesWhatAKilledProgramLeft();
    void clear_neverRemovesAFolder();
    void clear_neverRemovesASpecialFile();
    void clear_withoutPathsDoesNothing();
    void clear_ofAKeyWithoutAValue();
    void create_makesIntermediateFolders();
    void create_leavesWhatIsThere();
    void create_failureIsLogged_data();
    void create_failureIsLogged();
    void folderOfAnotherProgram_isLeftAlone();
    void folder_isAskedForOnceItIsThere();

private:
    void makeFiles(const QStringList &paths) const {
        QDir().mkpath(at->folder());
        for (const QString &path : paths)
            QVERIFY(writeWholeFile(path, "x"));
    }

    std::unique_ptr<WorkspaceFixture> at;
};

void TestTemporaryWorkspace::clear_onAFreshAccountDoesNothing() {
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
    QVERIFY(!QFile::exists(at->folder()));
}

void TestTemporaryWorkspace::clear_deletesThreeFilesAndLeavesTheLogicReport() {
    makeFiles({at->output(), at->read(), at->search(), at->logic()});
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
    QCOMPARE(at->names(), QStringLiteral("temp_logtest.bin"));
}

void TestTemporaryWorkspace::clear_ofAnEmptyFolderLogsThreeLines() {
    makeFiles({});
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList({removingOutput + absent, removingRead + absent,
                                         removingSearch + absent}));
}

void TestTemporaryWorkspace::clear_carriesTheFirstErrorOver() {
    makeFiles({at->read(), at->search()});
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList({removingOutput + absent, removingRead + absent,
                                         removingSearch + absent}));
    QCOMPARE(at->names(), QString());
}

void TestTemporaryWorkspace::clear_errorsOnlyFromTheFailureOn() {
    makeFiles({at->output(), at->search()});
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList({removingRead + absent, removingSearch + absent}));
    QCOMPARE(at->names(), QString());
}

void TestTemporaryWorkspace::clear_logsWhatStaysWhateverFails() {
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        makeFiles({at->output(), at->read(), at->search()});
        at->log.take();
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            at->workspace.clear_temp_files();
            hasStruck = failing.hasStruck();
            name = failing.struckCall();
        }
        QVERIFY2(at->names().isEmpty() || !at->log.lines.isEmpty(), name.constData());
    }
}

void TestTemporaryWorkspace::clear_laterFailureReplacesTheError() {
    makeFiles({at->search()});
    QVERIFY(QDir().mkpath(at->read()));
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines,
             QStringList({removingOutput + absent, removingRead + QStringLiteral("Is a directory"),
                          removingSearch + QStringLiteral("Is a directory")}));
}

void TestTemporaryWorkspace::clear_takesTheKeysOwnPaths() {
    makeFiles({at->output(), at->read(), at->search()});
    const QString elsewhere = at->home.filePath(QStringLiteral("chips"));
    at->settings.setValue(temp_output_file, QStringLiteral("~/chips/out.bin"));
    at->workspace.clear_temp_files();
    QCOMPARE(at->names(), QStringLiteral("temp.bin temp_read.bin temp_sr.bin"));

    QVERIFY(QDir().mkpath(elsewhere));
    QVERIFY(writeWholeFile(elsewhere + QStringLiteral("/out.bin"), "x"));
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
    QCOMPARE(at->names(), QStringLiteral("temp.bin"));
    QVERIFY(!QFile::exists(elsewhere + QStringLiteral("/out.bin")));
}

void TestTemporaryWorkspace::clear_aFileInsteadOfTheFolder() {
    QVERIFY(QDir().mkpath(at->home.filePath(QStringLiteral(".local/share"))));
    QVERIFY(writeWholeFile(at->folder(), "mine"));
    at->workspace.clear_temp_files();
    const QString reason = QStringLiteral("Not a directory");
    QCOMPARE(at->log.lines, QStringList({removingOutput + reason, removingRead + reason,
                                         removingSearch + reason}));
    QCOMPARE(readWholeFile(at->folder()), QByteArray("mine"));
}

void TestTemporaryWorkspace::clear_removesLinksAndNotTheirTargets() {
    const QString target = at->home.filePath(QStringLiteral("precious"));
    makeFiles({at->search(), target});
    QVERIFY(QFile::link(target, at->output()));
    QVERIFY(QFile::link(at->home.path(), at->read()));
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
    QCOMPARE(at->names(), QString());
    QCOMPARE(readWholeFile(target), QByteArray("x"));
}

void TestTemporaryWorkspace::clear_removesWhatAKilledProgramLeft_data() {
    QTest::addColumn<mode_t>("mode");
    QTest::addColumn<bool>("isForeign");
    QTest::addColumn<bool>("stays");
    QTest::newRow("in an own folder") << mode_t(0755) << false << false;
    QTest::newRow("where others may put files") << mode_t(0777) << false << true;
    QTest::newRow("where somebody else's link leads") << mode_t(0755) << true << true;
}

// It lies beside the image, which may be elsewhere than the link to it.
void TestTemporaryWorkspace::clear_removesWhatAKilledProgramLeft() {
    QFETCH(const mode_t, mode);
    QFETCH(const bool, isForeign);
    QFETCH(const bool, stays);
    if (isForeign && ::geteuid() != 0)
        QSKIP("only root can give a link away");
    const QTemporaryDir elsewhere;
    QCOMPARE(::chmod(QFile::encodeName(elsewhere.path()).constData(), mode), 0);
    const QString target = elsewhere.filePath(QStringLiteral("image"));
    const QString left = target + QStringLiteral(".velm-aside-abc123");
    makeFiles({target, left, at->output() + QStringLiteral(".velm-aside-abc123")});
    QVERIFY(QFile::link(target, at->output()));
    if (isForeign)
        QCOMPARE(::lchown(QFile::encodeName(at->output()).constData(), 12345, gid_t(-1)), 0);
    at->workspace.clear_temp_files();
    QCOMPARE(QFile::exists(left), stays);
    QCOMPARE(at->names(), QString());
    QVERIFY(QFile::exists(target));
}

void TestTemporaryWorkspace::clear_neverRemovesAFolder() {
    makeFiles({at->read(), at->search()});
    QVERIFY(QDir().mkpath(at->output() + QStringLiteral("/inside")));
    at->workspace.clear_temp_files();
    const QString reason = QStringLiteral("Is a directory");
    QCOMPARE(at->log.lines, QStringList({removingOutput + reason, removingRead + reason,
                                         removingSearch + reason}));
    QVERIFY(QFile::exists(at->output() + QStringLiteral("/inside")));
}

void TestTemporaryWorkspace::clear_neverRemovesASpecialFile() {
    makeFiles({at->output(), at->read()});
    QCOMPARE(mkfifo(QFile::encodeName(at->search()).constData(), 0600), 0);
    at->workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList({removingSearch + QStringLiteral("Not a regular file")}));
    QCOMPARE(at->names(), QStringLiteral("temp_sr.bin"));
}

void TestTemporaryWorkspace::clear_withoutPathsDoesNothing() {
    SettingsStore empty(at->home.filePath(QStringLiteral("empty.conf")));
    TemporaryWorkspace(empty, at->log).clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
}

void TestTemporaryWorkspace::clear_ofAKeyWithoutAValue() {
    SettingsStore sparse(at->home.filePath(QStringLiteral("sparse.conf")));
    sparse.registerDefaults({{temp_output_file, at->output()}});
    sparse.setValue(temp_search_results_file, QStringLiteral(""));
    makeFiles({at->output()});
    TemporaryWorkspace(sparse, at->log).clear_temp_files();
    QCOMPARE(at->log.lines, QStringList({QStringLiteral("error removing (null) : ") + absent,
                                         QStringLiteral("error removing  : ") + absent}));
}

void TestTemporaryWorkspace::create_makesIntermediateFolders() {
    at->workspace.createTempDirectory();
    QVERIFY(QFileInfo(at->folder()).isDir());
    at->workspace.createTempDirectory();
    QCOMPARE(at->log.lines, QStringList());
}

void TestTemporaryWorkspace::create_leavesWhatIsThere() {
    QVERIFY(QDir().mkpath(at->home.filePath(QStringLiteral(".local/share"))));
    QVERIFY(writeWholeFile(at->folder(), "mine"));
    at->workspace.createTempDirectory();
    QCOMPARE(at->log.lines, QStringList());
    QCOMPARE(readWholeFile(at->folder()), QByteArray("mine"));
}

void TestTemporaryWorkspace::create_failureIsLogged_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("below a file") << QStringLiteral("~/blocker/VELM/temp.bin");
    QTest::newRow("no folder in the path") << QStringLiteral("temp.bin");
    QTest::newRow("no path") << QStringLiteral("");
    QTest::newRow("below a dangling link") << QStringLiteral("~/dangling/temp.bin");
}

void TestTemporaryWorkspace::create_failureIsLogged() {
    QFETCH(QString, path);
    QVERIFY(writeWholeFile(at->home.filePath(QStringLiteral("blocker")), "x"));
    QVERIFY(QFile::link(QStringLiteral("/nowhere/at/all"),
                        at->home.filePath(QStringLiteral("dangling"))));
    at->settings.setValue(temp_output_file, path);
    at->workspace.createTempDirectory();
    QCOMPARE(at->log.lines, QStringList({QStringLiteral("error creating temp directory")}));
}

void TestTemporaryWorkspace::folderOfAnotherProgram_isLeftAlone() {
    makeFiles({at->output(), at->read(), at->search()});
    TemporaryWorkspace workspace(at->settings, at->log,
                                 FolderGuard([] { return folderOfAnotherWindow(); }));
    workspace.clear_temp_files();
    QCOMPARE(at->log.lines, QStringList());
    const ByteBuffer image = std::make_shared<QByteArray>("image");
    for (const ByteBuffer &bytes : {image, ByteBuffer()})
        QVERIFY(!workspace.write_output_data_to_temp_file(bytes));
    QCOMPARE(at->log.lines, QStringList({QStringLiteral("error writing to temp file"),
                                         QStringLiteral("error writing to temp file")}));
    for (const QString &path : {at->output(), at->read(), at->search()})
        QCOMPARE(readWholeFile(path), QByteArray("x"));
}

void TestTemporaryWorkspace::folder_isAskedForOnceItIsThere() {
    QStringList asked;
    TemporaryWorkspace workspace(at->settings, at->log, FolderGuard([&] {
                                     asked.append(at->names());
                                     return QFile::exists(at->folder()) ? FolderGuard::Answer()
                                                                        : folderOfAnotherWindow();
                                 }));
    workspace.clear_temp_files();
    QCOMPARE(asked, QStringList());
    QVERIFY(workspace.write_output_data_to_temp_file(std::make_shared<QByteArray>("image")));
    QCOMPARE(asked, QStringList(QString()));
    QCOMPARE(at->names(), QStringLiteral("temp.bin"));
}

QTEST_GUILESS_MAIN(TestTemporaryWorkspace)
#include "tst_temporaryworkspace.moc"
