// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "start/RaiseChannel.h"
#include "start/WorkspaceHold.h"
#include "start/WorkspaceLock.h"

#include "support/FileHelpers.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>

/// The settings file comes to name another folder while the program runs.
class TestWorkspaceHold : public QObject {
    Q_OBJECT

private slots:
    void init();
    void theFolderOfTheSettings_isThisPrograms();
    void aFolderThatAnotherHas_mayNotBeUsed();
    void otherStarts_findTheProgramWhereItIsNow();
    void aRequestThatMovesIt_isFollowed();

private:
    /// Has the settings file name a file in \a folder, as with an editor, and the store read it.
    void edit(const QTemporaryDir &folder);
    WorkspaceLock lockOf(const QTemporaryDir &folder) const {
        return {folder.path(), runtime_->path()};
    }
    /// True if a start on \a folder finds the program, and has it open \a binary.
    bool isFoundFrom(const QTemporaryDir &folder, const QString &binary);

    std::unique_ptr<QTemporaryDir> runtime_;
    std::unique_ptr<QTemporaryDir> earlier_;
    std::unique_ptr<QTemporaryDir> later_;
    std::unique_ptr<SettingsStore> settings_;
    std::unique_ptr<WorkspaceLock> lock_;
    std::unique_ptr<WorkspaceHold> hold_;
};

void TestWorkspaceHold::init() {
    hold_.reset();
    for (auto *folder : {&runtime_, &earlier_, &later_})
        *folder =
            std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/velm-XXXXXX"));
    settings_ = std::make_unique<SettingsStore>(runtime_->filePath(QStringLiteral("velm.conf")));
    edit(*earlier_);
    lock_ = std::make_unique<WorkspaceLock>(lockOf(*earlier_));
    QVERIFY(lock_->take());
    hold_ = std::make_unique<WorkspaceHold>(*lock_, *settings_);
}

void TestWorkspaceHold::edit(const QTemporaryDir &folder) {
    const QString line =
        QStringLiteral("[General]\n%1=%2\n")
            .arg(settingsKeys::temp_output_file, folder.filePath(QStringLiteral("temp.bin")));
    QVERIFY(writeWholeFile(runtime_->filePath(QStringLiteral("velm.conf")), line.toUtf8()));
    settings_->setValue(settingsKeys::device, folder.path());
}

bool TestWorkspaceHold::isFoundFrom(const QTemporaryDir &folder, const QString &binary) {
    const RaiseAddress address = lockOf(folder).address();
    std::atomic<bool> isOver = false;
    std::atomic<bool> isFound = false;
    std::thread caller([&] {
        isFound = requestRaise(address, binary) == RaiseAnswer::Raised;
        isOver = true;
    });
    const bool inTime = QTest::qWaitFor([&] { return isOver.load(); }, 20000);
    caller.join();
    return inTime && isFound;
}

void TestWorkspaceHold::theFolderOfTheSettings_isThisPrograms() {
    QVERIFY(hold_->mayUseFolder());
    edit(*later_);
    QVERIFY(hold_->mayUseFolder());
    QCOMPARE(*lockOf(*later_).take(), WorkspaceLock::Holder::Another);
    QCOMPARE(*lockOf(*earlier_).take(), WorkspaceLock::Holder::ThisProcess);
}

void TestWorkspaceHold::aFolderThatAnotherHas_mayNotBeUsed() {
    WorkspaceLock another = lockOf(*later_);
    QCOMPARE(*another.take(), WorkspaceLock::Holder::ThisProcess);
    edit(*later_);
    const FolderGuard::Answer answer = hold_->mayUseFolder();
    QVERIFY(!answer);
    QVERIFY(answer.failure()->isAnotherWindows);
    edit(*earlier_);
    QVERIFY(hold_->mayUseFolder());
}

void TestWorkspaceHold::otherStarts_findTheProgramWhereItIsNow() {
    QVERIFY(!isFoundFrom(*earlier_, QString()));
    hold_->listen();
    const QSignalSpy asked(hold_.get(), &WorkspaceHold::raiseRequested);
    const QSignalSpy opened(hold_.get(), &WorkspaceHold::openRequested);
    QVERIFY(isFoundFrom(*earlier_, QString()));
    edit(*later_);
    QVERIFY(hold_->mayUseFolder());
    QVERIFY(isFoundFrom(*later_, QStringLiteral("/a")));
    QTRY_COMPARE(opened.count(), 1);
    QCOMPARE(asked.count(), 2);
    QCOMPARE(opened.first().first().toString(), QStringLiteral("/a"));
    QVERIFY(!isFoundFrom(*earlier_, QString()));
}

void TestWorkspaceHold::aRequestThatMovesIt_isFollowed() {
    hold_->listen();
    connect(hold_.get(), &WorkspaceHold::raiseRequested, this, [this] {
        edit(*later_);
        QVERIFY(hold_->mayUseFolder());
    });
    const QSignalSpy opened(hold_.get(), &WorkspaceHold::openRequested);
    QVERIFY(isFoundFrom(*earlier_, QStringLiteral("/a")));
    QTRY_COMPARE(opened.count(), 1);
    QVERIFY(isFoundFrom(*later_, QString()));
}

QTEST_GUILESS_MAIN(TestWorkspaceHold)
#include "tst_workspacehold.moc"
