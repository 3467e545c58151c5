// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/OpenedFileWatch.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"
#include "support/Privileges.h"

#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <sys/stat.h>
#include <tuple>

/// A file that changes on the disk after it was opened.
class TestOpenedFileWatch : public QObject {
    Q_OBJECT

private slots:
    void init();
    void inPlace_isNoticed();
    void replacing_isNoticedTwice();
    void writingTwice_isNoticedTwice();
    void goingAndComing_isNoticed();
    void fileThatCannotBeSeenJustNow_hasNotGone_data();
    void fileThatCannotBeSeenJustNow_hasNotGone();
    void fileThatCannotBeSeenAtFirst_isWatchedAllTheSame_data();
    void fileThatCannotBeSeenAtFirst_isWatchedAllTheSame();
    void writingSinceAnEarlierStamp_isNoticed();
    void busyFolder_hidesNothing();
    void fileInAFolderThatMayNotBeRead_isNoticedToComeBack();
    void systemThatRefusesToWatch_isNotAskedForEver();
    void anotherFile_isWatchedInstead();
    void aFileThatIsMissing_isNotWatched();

private:
    QString path(const QString &name = QStringLiteral("rom.bin")) const {
        return folder_->filePath(name);
    }
    /// Waits for the next state.
    OpenedFileWatch::State next();
    void replaceBy(const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<OpenedFileWatch> watch_;
    std::unique_ptr<QSignalSpy> states_;
};

using State = OpenedFileWatch::State;

void TestOpenedFileWatch::init() {
    qRegisterMetaType<State>();
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(writeWholeFile(path(), "first"));
    watch_ = std::make_unique<OpenedFileWatch>();
    watch_->watch(path());
    states_ = std::make_unique<QSignalSpy>(watch_.get(), &OpenedFileWatch::stateChanged);
}

State TestOpenedFileWatch::next() {
    if (states_->isEmpty() && !states_->wait())
        qFatal("no other state");
    return states_->takeFirst().first().value<State>();
}

void TestOpenedFileWatch::replaceBy(const QByteArray &bytes) {
    QVERIFY(writeWholeFile(path(QStringLiteral("new")), bytes));
    QCOMPARE(std::rename(QFile::encodeName(path(QStringLiteral("new"))).constData(),
                         QFile::encodeName(path()).constData()),
             0);
}

void TestOpenedFileWatch::inPlace_isNoticed() {
    QVERIFY(writeWholeFile(path(), "second"));
    QCOMPARE(next(), State::Changed);
}

void TestOpenedFileWatch::replacing_isNoticedTwice() {
    replaceBy("second");
    QCOMPARE(next(), State::Changed);
    watch_->watch(path());
    replaceBy("third!");
    QCOMPARE(next(), State::Changed);
}

void TestOpenedFileWatch::writingSinceAnEarlierStamp_isNoticed() {
    const std::optional<FileStamp> before = FileStamp::of(path());
    watch_->watch({});
    QVERIFY(writeWholeFile(path(), "second"));
    watch_->watch(path(), before);
    QCOMPARE(next(), State::Changed);
}

// Somebody who builds in it, say.
void TestOpenedFileWatch::busyFolder_hidesNothing() {
    constexpr std::chrono::milliseconds pause(20);
    QTimer others;
    connect(&others, &QTimer::timeout, this, [this, isThere = false]() mutable {
        const QString other = path(QStringLiteral("other.o"));
        isThere = isThere ? !QFile::remove(other) : writeWholeFile(other, "object");
    });
    others.start(pause);
    QVERIFY(writeWholeFile(path(), "second"));
    QCOMPARE(next(), State::Changed);
    QVERIFY(others.isActive());
}

// What was written first may have been the same bytes.
void TestOpenedFileWatch::writingTwice_isNoticedTwice() {
    for (const char *bytes : {"second", "third, longer"}) {
        replaceBy(bytes);
        QCOMPARE(next(), State::Changed);
    }
}

void TestOpenedFileWatch::goingAndComing_isNoticed() {
    QVERIFY(QFile::rename(path(), path(QStringLiteral("aside"))));
    QCOMPARE(next(), State::Gone);
    QVERIFY(QFile::rename(path(QStringLiteral("aside")), path()));
    QCOMPARE(next(), State::AsOpened);
}

void TestOpenedFileWatch::fileThatCannotBeSeenJustNow_hasNotGone_data() {
    QTest::addColumn<int>("call");
    for (int call = 1; call <= 3; ++call)
        QTest::addRow("look %d", call) << call;
}

// Nor is what happens to it lost, then or later.
void TestOpenedFileWatch::fileThatCannotBeSeenJustNow_hasNotGone() {
    QFETCH(int, call);
    replaceBy("second");
    {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        QTRY_VERIFY(failing.hasStruck());
    }
    QCOMPARE(next(), State::Changed);
    QVERIFY(writeWholeFile(path(), "third, in place"));
    QCOMPARE(next(), State::Changed);
    QVERIFY(states_->isEmpty());
}

void TestOpenedFileWatch::fileThatCannotBeSeenAtFirst_isWatchedAllTheSame_data() {
    QTest::addColumn<int>("call");
    for (int call = 1; call <= 4; ++call)
        QTest::addRow("call %d", call) << call;
}

void TestOpenedFileWatch::fileThatCannotBeSeenAtFirst_isWatchedAllTheSame() {
    QFETCH(int, call);
    {
        const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
        watch_->watch(path());
        QVERIFY(failing.hasStruck());
        const int looks = failing.callsMade().value("stat");
        QTRY_VERIFY(failing.callsMade().value("stat") > looks);
    }
    QCOMPARE(watch_->path(), path());
    QVERIFY(writeWholeFile(path(), "second"));
    QCOMPARE(next(), State::Changed);
}

// Its user may enter it all the same.
void TestOpenedFileWatch::fileInAFolderThatMayNotBeRead_isNoticedToComeBack() {
    QCOMPARE(::chmod(QFile::encodeName(path({})).constData(), 0333), 0);
    const auto removable = qScopeGuard(
        [this] { std::ignore = ::chmod(QFile::encodeName(path({})).constData(), 0700); });
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    watch_->watch(path());
    QVERIFY(QFile::rename(path(), path(QStringLiteral("aside"))));
    QCOMPARE(next(), State::Gone);
    QVERIFY(QFile::rename(path(QStringLiteral("aside")), path()));
    QCOMPARE(next(), State::AsOpened);
}

namespace {

int refusals = 0;

void countRefusals(QtMsgType, const QMessageLogContext &, const QString &text) {
    if (text.startsWith(u"inotify_add_watch"))
        ++refusals;
}

} // namespace

// As where the system has no room for one more.
void TestOpenedFileWatch::systemThatRefusesToWatch_isNotAskedForEver() {
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), 0), 0);
    QCOMPARE(::chmod(QFile::encodeName(path({})).constData(), 0755), 0);
    refusals = 0;
    const QtMessageHandler before = qInstallMessageHandler(countRefusals);
    const auto restored = qScopeGuard([before] { qInstallMessageHandler(before); });
    const UnprivilegedUser user;
    QVERIFY(user.isValid());
    const FailingCalls counting("nothing", 1, EIO);
    watch_->watch(path());
    // Some looks later.
    QTRY_VERIFY_WITH_TIMEOUT(counting.callsMade().value("stat") > 5, 20'000);
    QVERIFY2(refusals <= 4, qPrintable(QString::number(refusals)));
}

void TestOpenedFileWatch::anotherFile_isWatchedInstead() {
    QVERIFY(writeWholeFile(path(QStringLiteral("other.bin")), "other"));
    watch_->watch(path(QStringLiteral("other.bin")));
    QVERIFY(writeWholeFile(path(), "nobody looks"));
    QVERIFY(writeWholeFile(path(QStringLiteral("other.bin")), "other one"));
    QCOMPARE(next(), State::Changed);
    QVERIFY(states_->isEmpty());
}

void TestOpenedFileWatch::aFileThatIsMissing_isNotWatched() {
    watch_->watch(path(QStringLiteral("none.bin")));
    QCOMPARE(watch_->path(), QString());
    watch_->watch(QString());
    QCOMPARE(watch_->path(), QString());
}

QTEST_GUILESS_MAIN(TestOpenedFileWatch)
#include "tst_openedfilewatch.moc"
