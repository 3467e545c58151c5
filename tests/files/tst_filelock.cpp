// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLock.h"

#include "files/FileSaving.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <thread>
#include <tuple>

using namespace std::chrono_literals;

namespace {

using Taken = Result<FileLock>;

QString outcomeOf(const Taken &taken) {
    return taken ? QStringLiteral("taken") : taken.failure()->reason;
}

uint rightsOf(const QString &path) {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 0777U : 0U;
}

/// Adds one to the number in the file at \a path, \a times times.
void count(const QString &path, int times) {
    for (int done = 0; done < times;) {
        const Taken taken = FileLock::take(path, 10s);
        if (!taken)
            return;
        const int number = readWholeFile(path).toInt();
        if (saveWholeFile(path, QByteArray::number(number + 1), Durability::ProgramEnd))
            ++done;
    }
}

} // namespace

class TestFileLock : public QObject {
    Q_OBJECT

private slots:
    void init();
    void lock_goesWithItsHolder();
    void missingFile_isMade();
    void missingFile_isMadeForItsOwnerWhateverTheUmask_data();
    void missingFile_isMadeForItsOwnerWhateverTheUmask();
    void existingFile_keepsItsRights();
    void fileMadeMeanwhile_keepsItsRights();
    void otherHolder_isWaitedForAsLongAsSaid();
    void fileReplacedMeanwhile_isLockedAnew();
    void countersAtOnce_loseNothing();
    void refused_data();
    void refused();
    void fileThatMayNotBeWritten_isRefused();
    void fileSystemWithoutLocks_letsEverybody();

private:
    QString path() const { return folder_->filePath(QStringLiteral("a.conf")); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestFileLock::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(folder_->isValid());
    QVERIFY(writeWholeFile(path(), "0"));
}

void TestFileLock::lock_goesWithItsHolder() {
    {
        const Taken first = FileLock::take(path(), 0ms);
        QCOMPARE(outcomeOf(first), QStringLiteral("taken"));
        QCOMPARE(outcomeOf(FileLock::take(path(), 0ms)),
                 QStringLiteral("Another program is changing it"));
    }
    QCOMPARE(outcomeOf(FileLock::take(path(), 0ms)), QStringLiteral("taken"));
    QCOMPARE(readWholeFile(path()), QByteArray("0"));
}

void TestFileLock::missingFile_isMade() {
    const QString missing = folder_->filePath(QStringLiteral("new.conf"));
    const Taken first = FileLock::take(missing, 0ms);
    QCOMPARE(outcomeOf(first), QStringLiteral("taken"));
    QVERIFY(QFileInfo(missing).isFile());
    QCOMPARE(outcomeOf(FileLock::take(missing, 0ms)),
             QStringLiteral("Another program is changing it"));
}

void TestFileLock::missingFile_isMadeForItsOwnerWhateverTheUmask_data() {
    QTest::addColumn<uint>("mask");
    QTest::addColumn<uint>("mode");
    QTest::newRow("nothing is taken from the owner") << 0027U << 0640U;
    QTest::newRow("the owner may not write") << 0277U << 0600U;
    QTest::newRow("all is taken") << 0777U << 0600U;
}

void TestFileLock::missingFile_isMadeForItsOwnerWhateverTheUmask() {
    QFETCH(uint, mask);
    QFETCH(uint, mode);
    const QString missing = folder_->filePath(QStringLiteral("new.conf"));
    const mode_t before = ::umask(mode_t(mask));
    const Taken taken = FileLock::take(missing, 0ms);
    QCOMPARE(::umask(before), mode_t(mask)); // as it was
    QCOMPARE(outcomeOf(taken), QStringLiteral("taken"));
    QCOMPARE(rightsOf(missing), mode);
}

void TestFileLock::existingFile_keepsItsRights() {
    QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0640), 0);
    const mode_t before = ::umask(0777);
    const Taken taken = FileLock::take(path(), 0ms);
    ::umask(before);
    QCOMPARE(outcomeOf(taken), QStringLiteral("taken"));
    QCOMPARE(rightsOf(path()), 0640U);
}

void TestFileLock::fileMadeMeanwhile_keepsItsRights() {
    const QString missing = folder_->filePath(QStringLiteral("new.conf"));
    const mode_t before = ::umask(0022);
    const auto restored = qScopeGuard([before] { ::umask(before); });
    bool struck = true;
    for (int call = 1; struck; ++call) {
        bool isOthers = false;
        {
            const FailingCalls meanwhile(call, [&] {
                isOthers = !QFile::exists(missing) && writeWholeFile(missing, "1") &&
                           ::chmod(QFile::encodeName(missing).constData(), 0200) == 0;
            });
            std::ignore = FileLock::take(missing, 0ms);
            struck = meanwhile.hasStruck();
        }
        QCOMPARE(rightsOf(missing), isOthers ? 0200U : 0644U);
        QVERIFY(QFile::remove(missing));
    }
}

void TestFileLock::otherHolder_isWaitedForAsLongAsSaid() {
    const Taken first = FileLock::take(path(), 0ms);
    const double before = millisecondsSlept();
    QVERIFY(!FileLock::take(path(), 30ms));
    const double slept = millisecondsSlept() - before;
    QVERIFY2(slept <= 30, qPrintable(QString::number(slept)));
}

// Whoever replaces the file between the opening and the locking leaves a lock that protects
// nothing.
void TestFileLock::fileReplacedMeanwhile_isLockedAnew() {
    bool struck = true;
    for (int call = 1; struck; ++call) {
        const FailingCalls calls(call, [this] {
            const Taken other = FileLock::take(path(), 0ms);
            if (other)
                QVERIFY(saveWholeFile(path(), "1", Durability::ProgramEnd));
        });
        const Taken taken = FileLock::take(path(), 10s);
        QCOMPARE(outcomeOf(taken), QStringLiteral("taken"));
        struck = calls.hasStruck();
        QCOMPARE(outcomeOf(FileLock::take(path(), 0ms)),
                 QStringLiteral("Another program is changing it"));
    }
}

void TestFileLock::countersAtOnce_loseNothing() {
    constexpr int times = 200;
    std::thread other(count, path(), times);
    count(path(), times);
    other.join();
    QCOMPARE(readWholeFile(path()), QByteArray::number(2 * times));
}

void TestFileLock::refused_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *title, const char *name, const char *reason) {
        QTest::newRow(title) << QString::fromLatin1(name) << QString::fromLatin1(reason);
    };
    row("folder", ".", "Not a regular file");
    row("below a file", "a.conf/below", "Not a directory");
    row("in no folder", "none/a.conf", "No such file or directory");
    row("FIFO", "fifo", "Not a regular file");
    row("device", "/dev/null", "Not a regular file");
    row("link to a device", "link", "Not a regular file");
    row("link to itself", "loop", "Too many levels of symbolic links");
}

void TestFileLock::refused() {
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QDir folder(folder_->path());
    QCOMPARE(mkfifo(QFile::encodeName(folder.filePath(QStringLiteral("fifo"))).constData(), 0600),
             0);
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("link"))));
    QVERIFY(QFile::link(QStringLiteral("loop"), folder.filePath(QStringLiteral("loop"))));
    QCOMPARE(outcomeOf(FileLock::take(folder.filePath(name), 0ms)), reason);
}

void TestFileLock::fileThatMayNotBeWritten_isRefused() {
    QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0444), 0);
    QCOMPARE(chmod(QFile::encodeName(folder_->path()).constData(), 0777), 0);
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    QCOMPARE(outcomeOf(FileLock::take(path(), 0ms)), QStringLiteral("Permission denied"));
}

void TestFileLock::fileSystemWithoutLocks_letsEverybody() {
    for (int call = 1;; ++call) {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, ENOLCK);
        const Taken taken = FileLock::take(path(), 0ms);
        QVERIFY(failing.hasStruck());
        if (failing.struckCall() != "flock")
            continue;
        QCOMPARE(outcomeOf(taken), QStringLiteral("taken"));
        break;
    }
}

QTEST_GUILESS_MAIN(TestFileLock)
#include "tst_filelock.moc"
