// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/FilePaths.h"

#include "support/Bytes.h"
#include "support/FailingCalls.h"
#include "support/Privileges.h"
#include "support/WorkspaceFixture.h"

#include <QTest>

#include <cerrno>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

using namespace settingsKeys;

namespace {

const QString writeError = QStringLiteral("error writing to temp file");

} // namespace

class TestTemporaryWorkspaceWriting : public QObject {
    Q_OBJECT

private slots:
    void init() { at = std::make_unique<WorkspaceFixture>(); }
    void write_makesTheFolderAndTheWholeFile();
    void write_replacesAnOlderImage();
    void write_newFileHasTheUsualPermissions();
    void write_emptyBufferIsAnEmptyFile();
    void write_withoutABufferRemovesTheOldImage();
    void write_fullDiskRemovesTheOldImage();
    void write_aFileInsteadOfTheFolder();
    void write_folderThatCannotBeMade();
    void write_aFolderInsteadOfTheFileStays();
    void write_unchangeableFolderEmptiesTheOldImage();
    void write_withoutAPathFails();
    void write_oldImageIsNeverHalfReplaced();
    void write_successForgetsTheProblem();
    void write_replacesTheTargetOfALinkAndKeepsPermissions();
    void write_failureLeavesALinkOfTheUsers();
    void write_leavesALinkOfTheUsersWhateverFails();
    void write_followsNoLinkOfSomebodyElse_data();
    void write_followsNoLinkOfSomebodyElse();
    void write_followsNoLinkThatComesMeanwhile();
    void edit_isWrittenInPlace();
    void edit_ofAFileThatIsAnotherWritesTheWhole();
    void edit_atAnotherPathWritesTheWhole();
    void edit_behindALinkIsWrittenInPlace();
    void edit_followsNoLinkOfSomebodyElse();
    void outputFileHolds_data();
    void outputFileHolds();
    void outputFileHolds_askedThroughALinkOfOthers();
    void outputFileHolds_askedWhenNothingIsKnown();

private:
    QByteArray image() const { return readWholeFile(at->output()); }
    QStringList takeLog() const { return at->log.take(); }
    QString problem() const {
        const Failure *failure = at->workspace.lastWrite().failure();
        return failure ? failure->reason : QString();
    }

    std::unique_ptr<WorkspaceFixture> at;
};

void TestTemporaryWorkspaceWriting::write_makesTheFolderAndTheWholeFile() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("00 0A FF")));
    QCOMPARE(image(), QByteArray("\0\n\xff", 3));
    QCOMPARE(at->names(), QStringLiteral("temp.bin"));
    QCOMPARE(takeLog(), QStringList());
    QCOMPARE(problem(), QString());
}

void TestTemporaryWorkspaceWriting::write_replacesAnOlderImage() {
    const auto large = std::make_shared<QByteArray>(5'000'000, 'a');
    QVERIFY(at->workspace.write_output_data_to_temp_file(large));
    QCOMPARE(image(), *large);
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("62")));
    QCOMPARE(image(), QByteArray("b"));
    QCOMPARE(at->names(), QStringLiteral("temp.bin"));
}

void TestTemporaryWorkspaceWriting::write_newFileHasTheUsualPermissions() {
    const mode_t before = ::umask(0027);
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    ::umask(before);
    struct stat status = {};
    QCOMPARE(::stat(qPrintable(at->output()), &status), 0);
    QCOMPARE(int(status.st_mode & 0777), 0640);
}

void TestTemporaryWorkspaceWriting::write_emptyBufferIsAnEmptyFile() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("")));
    QVERIFY(QFile::exists(at->output()));
    QCOMPARE(image(), QByteArray());
    QCOMPARE(takeLog(), QStringList());
}

void TestTemporaryWorkspaceWriting::write_withoutABufferRemovesTheOldImage() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(nullptr));
    QCOMPARE(takeLog(), QStringList({writeError}));
    QCOMPARE(at->names(), QString());
    QCOMPARE(problem(), QStringLiteral("There is no image"));
}

void TestTemporaryWorkspaceWriting::write_fullDiskRemovesTheOldImage() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    {
        const FileSizeLimit full(1000);
        QVERIFY(!at->workspace.write_output_data_to_temp_file(
            std::make_shared<QByteArray>(100'000, 'b')));
    }
    QCOMPARE(takeLog(), QStringList({writeError}));
    QCOMPARE(at->names(), QString());
    QCOMPARE(problem(), QStringLiteral("File too large"));
}

void TestTemporaryWorkspaceWriting::write_aFileInsteadOfTheFolder() {
    QVERIFY(QDir().mkpath(at->home.filePath(QStringLiteral(".local/share"))));
    QVERIFY(writeWholeFile(at->folder(), "mine"));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(takeLog(), QStringList({writeError}));
    QCOMPARE(readWholeFile(at->folder()), QByteArray("mine"));
    QCOMPARE(problem(), QStringLiteral("Not a directory"));
}

void TestTemporaryWorkspaceWriting::write_folderThatCannotBeMade() {
    const FailingCalls full("mkdir", 1, ENOSPC);
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(takeLog(), QStringList({QStringLiteral("error creating temp directory"), writeError}));
    QCOMPARE(problem(), QStringLiteral("No space left on device"));
}

void TestTemporaryWorkspaceWriting::write_aFolderInsteadOfTheFileStays() {
    QVERIFY(QDir().mkpath(at->output() + QStringLiteral("/inside")));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(takeLog(), QStringList({writeError}));
    QVERIFY(QFile::exists(at->output() + QStringLiteral("/inside")));
    QVERIFY(!problem().isEmpty());
}

void TestTemporaryWorkspaceWriting::write_unchangeableFolderEmptiesTheOldImage() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    for (const char *above : {"", "/.local", "/.local/share"})
        QCOMPARE(chmod((QFile::encodeName(at->home.path()) + above).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(at->folder()).constData(), 0555), 0);
    QCOMPARE(chmod(QFile::encodeName(at->output()).constData(), 0666), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("62")));
    }
    QCOMPARE(chmod(QFile::encodeName(at->folder()).constData(), 0755), 0);
    QCOMPARE(takeLog(), QStringList({writeError}));
    QCOMPARE(image(), QByteArray());
    QCOMPARE(problem(), QStringLiteral("Permission denied"));
}

void TestTemporaryWorkspaceWriting::write_withoutAPathFails() {
    at->settings.setValue(temp_output_file, QStringLiteral(""));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(takeLog(), QStringList({QStringLiteral("error creating temp directory"), writeError}));
    QVERIFY(!problem().isEmpty());
}

// Whoever has the old file open goes on reading the old image.
void TestTemporaryWorkspaceWriting::write_oldImageIsNeverHalfReplaced() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61 61 61")));
    QFile reader(at->output());
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("62")));
    QCOMPARE(reader.readAll(), QByteArray("aaa"));
}

void TestTemporaryWorkspaceWriting::write_successForgetsTheProblem() {
    QVERIFY(!at->workspace.write_output_data_to_temp_file(nullptr));
    QVERIFY(!problem().isEmpty());
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(problem(), QString());
}

void TestTemporaryWorkspaceWriting::write_replacesTheTargetOfALinkAndKeepsPermissions() {
    const QString target = at->folder() + QStringLiteral("/elsewhere.bin");
    at->workspace.createTempDirectory();
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QVERIFY(QFile::rename(at->output(), target));
    const QString between = at->folder() + QStringLiteral("/between");
    QVERIFY(QFile::link(target, between));
    QVERIFY(QFile::link(between, at->output()));
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther;
    QVERIFY(QFile::setPermissions(target, permissions));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("62")));
    QVERIFY(QFileInfo(at->output()).isSymLink());
    QCOMPARE(readWholeFile(target), QByteArray("b"));
    QCOMPARE(QFile::permissions(target) & ~(QFile::ReadUser | QFile::WriteUser), permissions);
    QVERIFY(QFileInfo(between).isSymLink());
    QCOMPARE(at->names(), QStringLiteral("between elsewhere.bin temp.bin"));
}

void TestTemporaryWorkspaceWriting::write_failureLeavesALinkOfTheUsers() {
    at->workspace.createTempDirectory();
    const QString target = at->home.filePath(QStringLiteral("elsewhere.bin"));
    const QString between = at->home.filePath(QStringLiteral("between"));
    QVERIFY(writeWholeFile(target, "older"));
    QVERIFY(QFile::link(target, between));
    QVERIFY(QFile::link(between, at->output()));
    {
        const FileSizeLimit full(0);
        QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    }
    QVERIFY(!QFile::exists(target));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("62")));
    QVERIFY(QFileInfo(at->output()).isSymLink());
    QVERIFY(QFileInfo(between).isSymLink());
    QCOMPARE(readWholeFile(target), QByteArray("b"));
}

void TestTemporaryWorkspaceWriting::write_leavesALinkOfTheUsersWhateverFails() {
    at->workspace.createTempDirectory();
    const QString target = at->home.filePath(QStringLiteral("elsewhere.bin"));
    QVERIFY(QFile::link(target, at->output()));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            std::ignore = at->workspace.write_output_data_to_temp_file(bufferOf("61"));
            hasStruck = failing.hasStruck();
            name = failing.struckCall();
        }
        QVERIFY2(QFileInfo(at->output()).isSymLink(), name.constData());
    }
    QCOMPARE(readWholeFile(target), QByteArray("a"));
}

void TestTemporaryWorkspaceWriting::write_followsNoLinkOfSomebodyElse_data() {
    QTest::addColumn<bool>("comesSecond");
    QTest::newRow("at the path") << false;
    QTest::newRow("behind a link of the user's") << true;
}

void TestTemporaryWorkspaceWriting::write_followsNoLinkOfSomebodyElse() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    QFETCH(const bool, comesSecond);
    at->workspace.createTempDirectory();
    const QString victim = at->home.filePath(QStringLiteral("victim"));
    QVERIFY(writeWholeFile(victim, "precious"));
    const QString link = comesSecond ? at->home.filePath(QStringLiteral("cur")) : at->output();
    QVERIFY(QFile::link(victim, link));
    QCOMPARE(::lchown(QFile::encodeName(link).constData(), 12345, gid_t(-1)), 0);
    if (comesSecond)
        QVERIFY(QFile::link(link, at->output()));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    QCOMPARE(problem(), QStringLiteral("It is a link that belongs to somebody else"));
    QCOMPARE(readWholeFile(victim), QByteArray("precious"));
    QCOMPARE(takeLog(), QStringList({writeError}));
}

void TestTemporaryWorkspaceWriting::write_followsNoLinkThatComesMeanwhile() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const QString victim = at->home.filePath(QStringLiteral("victim"));
    QVERIFY(writeWholeFile(victim, "precious"));
    at->workspace.createTempDirectory();
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        QFile::remove(at->output());
        const FailingCalls failing(call, [&] {
            QFile::remove(at->output());
            QFile::link(victim, at->output());
            std::ignore = ::lchown(QFile::encodeName(at->output()).constData(), 12345, gid_t(-1));
        });
        std::ignore = at->workspace.write_output_data_to_temp_file(bufferOf("61"));
        hasStruck = failing.hasStruck();
        QCOMPARE(readWholeFile(victim), QByteArray("precious"));
    }
}

void TestTemporaryWorkspaceWriting::edit_isWrittenInPlace() {
    const auto bytes = std::make_shared<QByteArray>("0123456789");
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    const quint64 inode = FileStamp::of(at->output())->inode;
    for (const char *edited : {"x123456789", "xy23456789", "xy23456789abc", "xy2"}) {
        *bytes = edited;
        QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {0, bytes->size()}));
        QCOMPARE(image(), *bytes);
        QCOMPARE(FileStamp::of(at->output())->inode, inode);
    }
    QVERIFY(*at->workspace.outputFileHolds(bytes));
}

void TestTemporaryWorkspaceWriting::edit_ofAFileThatIsAnotherWritesTheWhole() {
    const auto bytes = std::make_shared<QByteArray>("0123456789");
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    QVERIFY(writeWholeFile(at->output(), "something else"));
    bytes->data()[0] = 'x';
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {0, 1}));
    QCOMPARE(image(), QByteArray("x123456789"));
    QVERIFY(QFile::remove(at->output()));
    bytes->data()[1] = 'y';
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {1, 1}));
    QCOMPARE(image(), QByteArray("xy23456789"));
    QVERIFY(!at->workspace.write_output_data_to_temp_file(nullptr));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {1, 1}));
    QCOMPARE(image(), QByteArray("xy23456789"));
}

void TestTemporaryWorkspaceWriting::edit_atAnotherPathWritesTheWhole() {
    const auto bytes = std::make_shared<QByteArray>("0123456789");
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    at->settings.setValue(temp_output_file, at->home.filePath(QStringLiteral("elsewhere.bin")));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {0, 1}));
    QCOMPARE(readWholeFile(at->home.filePath(QStringLiteral("elsewhere.bin"))), *bytes);
}

void TestTemporaryWorkspaceWriting::edit_behindALinkIsWrittenInPlace() {
    at->workspace.createTempDirectory();
    const QString first = at->home.filePath(QStringLiteral("first.bin"));
    const QString second = at->home.filePath(QStringLiteral("second.bin"));
    const QString between = at->home.filePath(QStringLiteral("between"));
    QVERIFY(QFile::link(first, between));
    QVERIFY(QFile::link(between, at->output()));
    const auto bytes = std::make_shared<QByteArray>("0123456789");
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    const quint64 inode = FileStamp::of(first)->inode;
    bytes->data()[0] = 'x';
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {0, 1}));
    QCOMPARE(readWholeFile(first), QByteArray("x123456789"));
    QCOMPARE(FileStamp::of(first)->inode, inode);
    QVERIFY(QFile::remove(between));
    QVERIFY(QFile::link(second, between));
    bytes->data()[1] = 'y';
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes, {1, 1}));
    QCOMPARE(readWholeFile(first), QByteArray("x123456789"));
    QCOMPARE(readWholeFile(second), QByteArray("xy23456789"));
}

void TestTemporaryWorkspaceWriting::edit_followsNoLinkOfSomebodyElse() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const auto bytes = std::make_shared<QByteArray>("0123456789");
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    const QString moved = at->home.filePath(QStringLiteral("moved.bin"));
    QVERIFY(QFile::rename(at->output(), moved));
    QVERIFY(QFile::link(moved, at->output()));
    QVERIFY(at->workspace.write_output_data_to_temp_file(bytes));
    QCOMPARE(::lchown(QFile::encodeName(at->output()).constData(), 12345, gid_t(-1)), 0);
    bytes->data()[0] = 'x';
    QVERIFY(!at->workspace.write_output_data_to_temp_file(bytes, {0, 1}));
    QCOMPARE(readWholeFile(moved), QByteArray("0123456789"));
}

void TestTemporaryWorkspaceWriting::outputFileHolds_data() {
    using Meddle = std::function<void(WorkspaceFixture &)>;
    QTest::addColumn<Meddle>("meddle");
    QTest::addColumn<bool>("holds");
    const auto row = [](const char *name, bool holds, const Meddle &meddle) {
        QTest::newRow(name) << meddle << holds;
    };
    row("untouched", true, [](WorkspaceFixture &) {});
    row("gone", false, [](WorkspaceFixture &w) { QFile::remove(w.output()); });
    row("written again with the same bytes", true,
        [](WorkspaceFixture &w) { writeWholeFile(w.output(), "abc"); });
    row("other bytes", false, [](WorkspaceFixture &w) { writeWholeFile(w.output(), "abd"); });
    row("more bytes", false, [](WorkspaceFixture &w) { writeWholeFile(w.output(), "abcd"); });
    row("another name without a file", false, [](WorkspaceFixture &w) {
        w.settings.setValue(temp_output_file, w.output() + QStringLiteral("2"));
    });
    row("a name that is too long", false,
        [](WorkspaceFixture &w) { w.settings.setValue(temp_output_file, QString(256, u'x')); });
    row("another name with an old image", false, [](WorkspaceFixture &w) {
        w.settings.setValue(temp_output_file, w.output() + QStringLiteral("2"));
        writeWholeFile(w.output() + QStringLiteral("2"), "abd");
    });
    row("another name with the same bytes", true, [](WorkspaceFixture &w) {
        w.settings.setValue(temp_output_file, w.output() + QStringLiteral("2"));
        writeWholeFile(w.output() + QStringLiteral("2"), "abc");
    });
}

void TestTemporaryWorkspaceWriting::outputFileHolds() {
    QFETCH(std::function<void(WorkspaceFixture &)>, meddle);
    QFETCH(bool, holds);
    const ByteBuffer abc = bufferOf("61 62 63");
    QVERIFY(at->workspace.write_output_data_to_temp_file(abc));
    meddle(*at);
    QCOMPARE(*at->workspace.outputFileHolds(abc), holds);
    const QString path = resolvedPathOf(at->settings, temp_output_file);
    QCOMPARE(*at->workspace.outputFileHolds(nullptr), !QFile::exists(path));
}

void TestTemporaryWorkspaceWriting::outputFileHolds_askedThroughALinkOfOthers() {
    if (::geteuid() != 0)
        QSKIP("only root can give a link away");
    const ByteBuffer abc = bufferOf("61 62 63");
    QVERIFY(at->workspace.write_output_data_to_temp_file(abc));
    const QString theirs = at->home.filePath(QStringLiteral("theirs"));
    QVERIFY(QFile::rename(at->output(), theirs));
    QVERIFY(QFile::link(theirs, at->output()));
    QVERIFY(*at->workspace.outputFileHolds(abc));
    QCOMPARE(::lchown(QFile::encodeName(at->output()).constData(), 12345, gid_t(-1)), 0);
    const Result<bool> holds = at->workspace.outputFileHolds(abc);
    QVERIFY(!holds);
    QCOMPARE(holds.failure()->reason, QStringLiteral("It is a link that belongs to somebody else"));
    QVERIFY(!at->workspace.outputFileHolds(nullptr));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        QVERIFY2(!at->workspace.outputFileHolds(abc), failing.struckCall().constData());
        hasStruck = failing.hasStruck();
    }
}

void TestTemporaryWorkspaceWriting::outputFileHolds_askedWhenNothingIsKnown() {
    QVERIFY(at->workspace.write_output_data_to_temp_file(bufferOf("61")));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        const Result<bool> isMissing = at->workspace.outputFileHolds(nullptr);
        QVERIFY(!isMissing || !*isMissing);
        hasStruck = failing.hasStruck();
    }
}

QTEST_GUILESS_MAIN(TestTemporaryWorkspaceWriting)
#include "tst_temporaryworkspace_writing.moc"
