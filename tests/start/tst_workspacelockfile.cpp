// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/WorkspaceLock.h"

#include "support/Privileges.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

/// Whether the lock's file can be opened once more, by a user without the rights of root.
class TestWorkspaceLockFile : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { user_.reset(); }
    void newFile_isItsOwnersWhateverTheUmask_data();
    void newFile_isItsOwnersWhateverTheUmask();
    void olderFile_comesToBeItsOwners_data();
    void olderFile_comesToBeItsOwners();

private:
    WorkspaceLock lock() const { return {QStringLiteral("/a/b"), runtime_->path()}; }
    QString path() const {
        return lock().address().path.chopped(QLatin1String("socket").size()) +
               QStringLiteral("lock");
    }

    std::unique_ptr<QTemporaryDir> runtime_;
    std::unique_ptr<UnprivilegedUser> user_;
};

namespace {

/// Who has \a lock once it was to be taken, or why there is none.
QString holderOf(WorkspaceLock &lock) {
    const Result<WorkspaceLock::Holder> holder = lock.take();
    if (const Failure *failure = holder.failure())
        return failure->reason;
    return *holder == WorkspaceLock::Holder::ThisProcess ? QStringLiteral("this process")
                                                         : QStringLiteral("another");
}

uint modeOf(const QString &path) {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 07777U : 0U;
}

} // namespace

void TestWorkspaceLockFile::init() {
    runtime_ = std::make_unique<QTemporaryDir>();
    if (::geteuid() == 0)
        QCOMPARE(::chown(QFile::encodeName(runtime_->path()).constData(), UnprivilegedUser::nobody,
                         gid_t(-1)),
                 0);
    user_ = std::make_unique<UnprivilegedUser>();
    QVERIFY(user_->isValid());
}

void TestWorkspaceLockFile::newFile_isItsOwnersWhateverTheUmask_data() {
    QTest::addColumn<uint>("mask");
    QTest::newRow("the owner may not write") << 0277U;
    QTest::newRow("all is taken") << 0777U;
}

void TestWorkspaceLockFile::newFile_isItsOwnersWhateverTheUmask() {
    QFETCH(uint, mask);
    WorkspaceLock second = lock();
    {
        WorkspaceLock first = lock();
        const mode_t before = ::umask(mode_t(mask));
        const QString holder = holderOf(first);
        ::umask(before);
        QCOMPARE(holder, QStringLiteral("this process"));
        QCOMPARE(holderOf(second), QStringLiteral("another"));
    }
    QCOMPARE(holderOf(second), QStringLiteral("this process"));
}

void TestWorkspaceLockFile::olderFile_comesToBeItsOwners_data() {
    QTest::addColumn<uint>("mode");
    QTest::newRow("it may not be written") << 0400U;
    QTest::newRow("nobody may do anything") << 0000U;
}

void TestWorkspaceLockFile::olderFile_comesToBeItsOwners() {
    QFETCH(uint, mode);
    WorkspaceLock second = lock();
    {
        WorkspaceLock first = lock();
        QCOMPARE(holderOf(first), QStringLiteral("this process"));
        QCOMPARE(::chmod(QFile::encodeName(path()).constData(), mode), 0);
        QCOMPARE(holderOf(second), QStringLiteral("another"));
        QCOMPARE(modeOf(path()), 0600U);
    }
    QCOMPARE(holderOf(second), QStringLiteral("this process"));
}

QTEST_GUILESS_MAIN(TestWorkspaceLockFile)
#include "tst_workspacelockfile.moc"
