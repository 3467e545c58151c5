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

private:
    WorkspaceLock lock() const { return {QStringLiteral("/a/b"), runtime_->path()}; }

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

QTEST_GUILESS_MAIN(TestWorkspaceLockFile)
#include "tst_workspacelockfile.moc"
