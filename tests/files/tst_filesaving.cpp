// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileSaving.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <sys/stat.h>

namespace {

const QByteArray oldBytes(9000, 'o');
const QByteArray newBytes(70000, 'n');

QString outcomeOf(const Result<void> &saved) {
    return saved ? QStringLiteral("saved") : QStringLiteral("failed: ") + saved.failure()->reason;
}

} // namespace

class TestFileSaving : public QObject {
    Q_OBJECT

private slots:
    void init();
    void newFile_hasTheUsualPermissions_data() { durabilities(); }
    void newFile_hasTheUsualPermissions();
    void oldFile_keepsItsPermissionsAndLinks_data() { durabilities(); }
    void oldFile_keepsItsPermissionsAndLinks();
    void protectedFile_isRefused();
    void protectedFile_staysWhateverFails();
    void fifo_staysWhateverFails_data() { durabilities(); }
    void fifo_staysWhateverFails();
    void linkToNothing_leadsToTheNewFile_data() { durabilities(); }
    void linkToNothing_leadsToTheNewFile();
    void link_staysWhateverFails_data() { durabilities(); }
    void link_staysWhateverFails();
    void pathThatIsTooLong_replacesNothing_data() { durabilities(); }
    void pathThatIsTooLong_replacesNothing();
    void privateFile_staysPrivateWhateverFails_data() { durabilities(); }
    void privateFile_staysPrivateWhateverFails();
    void folder_staysWhereItIs_data() { durabilities(); }
    void folder_staysWhereItIs();
    void folder_thatComesMeanwhileStays();
    void oneCallFails_data() { durabilities(); }
    void oneCallFails();
    void killedAtAnyCall_data() { durabilities(); }
    void killedAtAnyCall();
    void killed_leavesHardlyEverAnything();
    void withoutUnnamedFiles_itIsTheSame();
    void withoutExchange_itIsTheSame();
    void diskThatDoesNotConfirm_isAFailure();
    void fileSystemWithoutConfirmation_isNoFailure();
    void name_isConfirmedByTheDiskAsWell();
    void nameThatTheDiskRefuses_isGivenBack_data();
    void nameThatTheDiskRefuses_isGivenBack();
    void nameThatCannotBeGivenBack_isToldWithTheOlderFile();
    void nameThatTheDiskRefusesWithoutExchange_leavesTheNewFile();
    void nameThatTheDiskRefusesWithoutALook_leavesTheNewFile();
    void fileSystemWithoutConfirmationOfNames_isNoFailure();
    void folderThatCannotBeOpened_leavesTheOldFile();
    void folderThatMayNotBeRead_isWrittenToAllTheSame();

private:
    static void durabilities();
    QString path() const { return folder_->filePath(QStringLiteral("a.bin")); }
    QStringList filesLeft() const { return QDir(folder_->path()).entryList(QDir::Files); }
    bool holdsOneOfBoth() const {
        const QByteArray bytes = readWholeFile(path());
        return bytes == oldBytes || bytes == newBytes;
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileSaving::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
}

void TestFileSaving::durabilities() {
    QTest::addColumn<Durability>("durability");
    QTest::newRow("until the power fails") << Durability::PowerFailure;
    QTest::newRow("until the program ends") << Durability::ProgramEnd;
}

void TestFileSaving::newFile_hasTheUsualPermissions() {
    QFETCH(Durability, durability);
    const mode_t before = ::umask(027);
    const auto saved = saveWholeFile(path(), newBytes, durability);
    ::umask(before);
    QCOMPARE(outcomeOf(saved), QStringLiteral("saved"));
    struct stat facts = {};
    QCOMPARE(::stat(QFile::encodeName(path()).constData(), &facts), 0);
    QCOMPARE(facts.st_mode & 0777u, 0640u);
    QCOMPARE(readWholeFile(path()), newBytes);
}

void TestFileSaving::oldFile_keepsItsPermissionsAndLinks() {
    QFETCH(Durability, durability);
    QVERIFY(writeWholeFile(path(), oldBytes));
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0604), 0);
    const QString link = folder_->filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path(), link));
    QCOMPARE(outcomeOf(saveWholeFile(link, newBytes, durability)), QStringLiteral("saved"));
    QCOMPARE(QFileInfo(link).symLinkTarget(), path());
    struct stat facts = {};
    QCOMPARE(::stat(QFile::encodeName(path()).constData(), &facts), 0);
    QCOMPARE(facts.st_mode & 0777u, 0604u);
    QCOMPARE(readWholeFile(path()), newBytes);
}

void TestFileSaving::protectedFile_isRefused() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0444), 0);
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)),
                 QStringLiteral("failed: Permission denied"));
    }
    QCOMPARE(readWholeFile(path()), oldBytes);
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
}

// A toolkit that looks in two ways has both fail.
void TestFileSaving::protectedFile_staysWhateverFails() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0444), 0);
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    for (const int later : {0, 1, 2}) {
        bool struck = true;
        for (int call = 1; struck; ++call) {
            FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            failing.failAgain(later);
            QVERIFY2(!saveWholeFile(path(), newBytes), failing.struckCall().constData());
            struck = failing.hasStruck();
        }
    }
    QCOMPARE(readWholeFile(path()), oldBytes);
}

void TestFileSaving::fifo_staysWhateverFails() {
    QFETCH(Durability, durability);
    QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            QVERIFY2(!saveWholeFile(path(), newBytes, durability),
                     failing.struckCall().constData());
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        struct stat facts = {};
        QCOMPARE(::stat(QFile::encodeName(path()).constData(), &facts), 0);
        QVERIFY2(S_ISFIFO(facts.st_mode), name.constData());
    }
}

void TestFileSaving::linkToNothing_leadsToTheNewFile() {
    QFETCH(Durability, durability);
    const QString link = folder_->filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path(), link));
    QCOMPARE(outcomeOf(saveWholeFile(link, newBytes, durability)), QStringLiteral("saved"));
    QCOMPARE(QFileInfo(link).symLinkTarget(), path());
    QCOMPARE(readWholeFile(path()), newBytes);
}

void TestFileSaving::link_staysWhateverFails() {
    QFETCH(Durability, durability);
    const QString link = folder_->filePath(QStringLiteral("link"));
    const QString between = folder_->filePath(QStringLiteral("between"));
    QVERIFY(QFile::link(path(), between));
    QVERIFY(QFile::link(QStringLiteral("between"), link));
    for (const int later : {0, 1}) {
        bool struck = true;
        for (int call = 1; struck; ++call) {
            QFile::remove(path());
            QByteArray name;
            bool isSaved = false;
            {
                FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
                failing.failAgain(later);
                isSaved = bool(saveWholeFile(link, newBytes, durability));
                struck = failing.hasStruck();
                name = failing.struckCall();
            }
            QVERIFY2(QFileInfo(link).isSymLink(), name.constData());
            QVERIFY2(QFileInfo(between).isSymLink(), name.constData());
            QVERIFY(!isSaved || readWholeFile(path()) == newBytes);
        }
    }
}

// The shorter path that it comes to is the one that is written to.
void TestFileSaving::pathThatIsTooLong_replacesNothing() {
    QFETCH(Durability, durability);
    QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    const QString longPath =
        folder_->filePath(QStringLiteral("./").repeated(2100) + QStringLiteral("a.bin"));
    for (const Links links : {Links::Followed, Links::Replaced})
        QVERIFY(!saveWholeFile(longPath, newBytes, durability, links));
    struct stat facts = {};
    QCOMPARE(::stat(QFile::encodeName(path()).constData(), &facts), 0);
    QVERIFY(S_ISFIFO(facts.st_mode));
}

void TestFileSaving::privateFile_staysPrivateWhateverFails() {
    QFETCH(Durability, durability);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), oldBytes));
        QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0600), 0);
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EACCES);
            const Result<void> saved = saveWholeFile(path(), newBytes, durability);
            Q_UNUSED(saved)
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        struct stat facts = {};
        QCOMPARE(::stat(QFile::encodeName(path()).constData(), &facts), 0);
        QVERIFY2((facts.st_mode & 0777u) == 0600u, name.constData());
    }
}

void TestFileSaving::folder_staysWhereItIs() {
    QFETCH(Durability, durability);
    QVERIFY(QDir().mkpath(path()));
    const QString inside = path() + QStringLiteral("/inside");
    QVERIFY(writeWholeFile(inside, oldBytes));
    QVERIFY(outcomeOf(saveWholeFile(path(), newBytes, durability)) != QStringLiteral("saved"));
    QVERIFY(QFileInfo(path()).isDir());
    QCOMPARE(readWholeFile(inside), oldBytes);
    QCOMPARE(
        QDir(folder_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("a.bin")});
}

void TestFileSaving::folder_thatComesMeanwhileStays() {
    const QString inside = path() + QStringLiteral("/inside");
    {
        auto file = UnfinishedFile::beside(QFile::encodeName(path()));
        QVERIFY(file);
        QVERIFY(QDir().mkpath(path()));
        QVERIFY(writeWholeFile(inside, oldBytes));
        QVERIFY(!file->takePlace());
    }
    QCOMPARE(readWholeFile(inside), oldBytes);
    QCOMPARE(
        QDir(folder_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("a.bin")});
}

void TestFileSaving::oneCallFails() {
    QFETCH(Durability, durability);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        QVERIFY(writeWholeFile(path(), oldBytes));
        Result<void> saved;
        QByteArray name;
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, ENOSPC);
            saved = saveWholeFile(path(), newBytes, durability);
            struck = failing.hasStruck();
            name = failing.struckCall();
        }
        QVERIFY2(readWholeFile(path()) == (saved ? newBytes : oldBytes), name.constData());
        QVERIFY2(saved || !saved.failure()->reason.isEmpty(), name.constData());
        // The older file is still there, and known for what it is.
        if (saved && name == "unlink")
            removeUnfinished(path());
        QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
    }
}

void TestFileSaving::killedAtAnyCall() {
    QFETCH(Durability, durability);
    bool struck = true;
    for (int call = 1; struck; ++call) {
        QVERIFY(writeWholeFile(path(), oldBytes));
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            [[maybe_unused]] const auto saved = saveWholeFile(path(), newBytes, durability);
            struck = killing.hasStruck();
        }
        QVERIFY(holdsOneOfBoth());
        removeUnfinished(path());
        QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
    }
}

// A killed program leaves something behind in the one moment between two names, and nowhere else.
void TestFileSaving::killed_leavesHardlyEverAnything() {
    int leavings = 0;
    bool struck = true;
    for (int call = 1; struck; ++call) {
        {
            const FailingCalls killing(call, FailingCalls::Mishap::Kills, EIO);
            [[maybe_unused]] const auto saved = saveWholeFile(path(), newBytes);
            struck = killing.hasStruck();
        }
        QFile::remove(path());
        leavings += int(filesLeft().size());
        removeUnfinished(path());
    }
    QVERIFY2(leavings <= 1, qPrintable(QString::number(leavings)));
}

void TestFileSaving::withoutUnnamedFiles_itIsTheSame() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    bool struck = true;
    for (int call = 1; struck; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EOPNOTSUPP);
        const auto saved = saveWholeFile(path(), newBytes);
        struck = failing.hasStruck();
        if (failing.struckCall().startsWith("open")) {
            QVERIFY(saved);
            QCOMPARE(readWholeFile(path()), newBytes);
            QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
            return;
        }
    }
    QFAIL("no file was opened");
}

void TestFileSaving::withoutExchange_itIsTheSame() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    const FailingCalls failing("renameat2", 1, EINVAL);
    QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes, Durability::ProgramEnd)),
             QStringLiteral("saved"));
    QVERIFY(failing.hasStruck());
    QCOMPARE(readWholeFile(path()), newBytes);
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
}

/// What saving came to when the disk answered the question whether it has the bytes with \a error.
static QString outcomeWithUnconfirmed(const QString &path, int error) {
    for (int call = 1;; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, error);
        const auto saved = saveWholeFile(path, newBytes);
        if (failing.struckCall() == "fdatasync")
            return outcomeOf(saved);
        if (!failing.hasStruck())
            return QStringLiteral("never asked");
    }
}

void TestFileSaving::diskThatDoesNotConfirm_isAFailure() {
    QCOMPARE(outcomeWithUnconfirmed(path(), EIO), QStringLiteral("failed: Input/output error"));
}

void TestFileSaving::fileSystemWithoutConfirmation_isNoFailure() {
    QCOMPARE(outcomeWithUnconfirmed(path(), EINVAL), QStringLiteral("saved"));
}

void TestFileSaving::name_isConfirmedByTheDiskAsWell() {
    for (const Durability durability : {Durability::PowerFailure, Durability::ProgramEnd}) {
        const FailingCalls counting("nothing", 1, EIO);
        QVERIFY(saveWholeFile(path(), newBytes, durability));
        const int expected = durability == Durability::PowerFailure ? 1 : 0;
        QCOMPARE(counting.callsMade().value("fdatasync"), expected);
        QCOMPARE(counting.callsMade().value("fsync"), expected);
    }
}

void TestFileSaving::nameThatTheDiskRefuses_isGivenBack_data() {
    QTest::addColumn<bool>("isThere");
    QTest::newRow("an older file") << true;
    QTest::newRow("none") << false;
}

void TestFileSaving::nameThatTheDiskRefuses_isGivenBack() {
    QFETCH(bool, isThere);
    if (isThere)
        QVERIFY(writeWholeFile(path(), oldBytes));
    const FailingCalls failing("fsync", 1, EIO);
    QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)),
             QStringLiteral("failed: Input/output error"));
    QVERIFY(failing.hasStruck());
    QCOMPARE(filesLeft(), isThere ? QStringList(QStringLiteral("a.bin")) : QStringList());
    QCOMPARE(readWholeFile(path()), isThere ? oldBytes : QByteArray());
}

// As when the system makes a disk that fails read-only.
void TestFileSaving::nameThatCannotBeGivenBack_isToldWithTheOlderFile() {
    QString outcome;
    QByteArray firstToFail;
    for (int call = 1; firstToFail != "fsync"; ++call) {
        init();
        QVERIFY(writeWholeFile(path(), oldBytes));
        const FailingCalls failing(call, FailingCalls::Mishap::Kills, EIO);
        outcome = outcomeOf(saveWholeFile(path(), newBytes));
        QVERIFY(failing.hasStruck());
        firstToFail = failing.struckCall();
    }
    QCOMPARE(readWholeFile(path()), newBytes);
    const QStringList left = filesLeft();
    QCOMPARE(left.size(), 2);
    QCOMPARE(readWholeFile(folder_->filePath(left.last())), oldBytes);
    QCOMPARE(
        outcome,
        QStringLiteral("failed: Input/output error. What it held is now in %1").arg(left.last()));
}

// The older file is gone by then, and none would be worse than the new one.
void TestFileSaving::nameThatTheDiskRefusesWithoutExchange_leavesTheNewFile() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    FailingCalls failing("renameat2", 1, EIO);
    failing.failAgain(3); // the renaming works, and the flushing behind it does not
    QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)),
             QStringLiteral("failed: Input/output error"));
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
    QCOMPARE(readWholeFile(path()), newBytes);
}

void TestFileSaving::nameThatTheDiskRefusesWithoutALook_leavesTheNewFile() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    FailingCalls failing("renameat2", 1, EIO);
    failing.failAgain(1); // whether there is an older file is not known then
    failing.failAgain(3);
    QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)),
             QStringLiteral("failed: Input/output error"));
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
    QCOMPARE(readWholeFile(path()), newBytes);
}

void TestFileSaving::fileSystemWithoutConfirmationOfNames_isNoFailure() {
    for (const int error : {EINVAL, ENOTSUP, ENOSYS}) {
        const FailingCalls failing("fsync", 1, error);
        QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)), QStringLiteral("saved"));
        QVERIFY(failing.hasStruck());
    }
}

void TestFileSaving::folderThatCannotBeOpened_leavesTheOldFile() {
    QVERIFY(writeWholeFile(path(), oldBytes));
    int calls = 0;
    {
        const FailingCalls counting("nothing", 1, EIO);
        QVERIFY(saveWholeFile(path(), oldBytes));
        for (const char *name : {"open", "open64"})
            calls += counting.callsMade().value(name);
    }
    const FailingCalls failing("open", calls, EMFILE);
    QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)),
             QStringLiteral("failed: Too many open files"));
    QCOMPARE(readWholeFile(path()), oldBytes);
    QCOMPARE(filesLeft(), QStringList(QStringLiteral("a.bin")));
}

void TestFileSaving::folderThatMayNotBeRead_isWrittenToAllTheSame() {
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0333), 0);
    {
        const UnprivilegedUser user;
        QVERIFY(user.isValid());
        QCOMPARE(outcomeOf(saveWholeFile(path(), newBytes)), QStringLiteral("saved"));
    }
    QCOMPARE(::chmod(QFile::encodeName(folder_->path()).constData(), 0700), 0);
    QCOMPARE(readWholeFile(path()), newBytes);
}

QTEST_GUILESS_MAIN(TestFileSaving)
#include "tst_filesaving.moc"
