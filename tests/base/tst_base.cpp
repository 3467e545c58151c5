// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/FileDescriptor.h"
#include "base/JoinedWords.h"
#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/Utf8.h"
#include "base/VisibleText.h"
#include "base/WorkState.h"

#include <QSignalSpy>
#include <QTest>

#include <fcntl.h>
#include <thread>
#include <unistd.h>

class TestBase : public QObject {
    Q_OBJECT

private slots:
    void log_writesTheTextAsItStandsAndOneLineFeed();
    void descriptor_isClosedWithItsOwner();
    void descriptor_releasedStaysOpen();
    void mainQueue_runsWorkLaterAndInOrder();
    void mainQueue_takesWorkFromAnotherThread();
    void mainQueue_workOfADestroyedQueueNeverRuns();
    void workState_letsOneThingBeginAtATime();
    void workState_stopsWhatGoesOnAndNothingElse();
    void workState_saysWhatIsRunning();
    void textOnOneLine_hasBlanksForWhatBreaksIt();
    void printableAscii_isFromBlankToTilde();
    void joinedWords_leaveOutTheEmptyOnes();
    void listWords_haveAnAndBeforeTheLast();
    void utf8_characterBeginsWithItsHighestBits();
};

void TestBase::log_writesTheTextAsItStandsAndOneLineFeed() {
    int ends[2] = {-1, -1};
    QCOMPARE(pipe(ends), 0);
    const int saved = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);

    StandardErrorLog log;
    log.write(QStringLiteral("| \r\x1b[K 5% of caf\u00e9\n"));

    dup2(saved, STDERR_FILENO);
    close(saved);
    close(ends[1]);
    char text[100] = {};
    const ssize_t length = read(ends[0], text, sizeof text);
    close(ends[0]);
    QCOMPARE(QByteArray(text, length), QByteArray("| \r\x1b[K 5% of caf\xc3\xa9\n\n"));
}

static bool isOpen(int descriptor) {
    return ::fcntl(descriptor, F_GETFD) != -1;
}

void TestBase::descriptor_isClosedWithItsOwner() {
    int number = -1;
    {
        FileDescriptor first(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        QVERIFY(first.isOpen());
        number = first.get();
        const FileDescriptor second(std::move(first));
        QCOMPARE(second.get(), number);
        QVERIFY(isOpen(number));
    }
    QVERIFY(!isOpen(number));
}

void TestBase::descriptor_releasedStaysOpen() {
    FileDescriptor descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const int number = descriptor.get();
    descriptor.release();
    QVERIFY(!descriptor.isOpen());
    descriptor.close();
    QVERIFY(isOpen(number));
    ::close(number);
}

void TestBase::mainQueue_runsWorkLaterAndInOrder() {
    MainQueue queue;
    QStringList done;
    queue.async([&] { done.append(QStringLiteral("first")); });
    queue.async([&] { done.append(QStringLiteral("second")); });
    QCOMPARE(done, QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(done, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

void TestBase::mainQueue_takesWorkFromAnotherThread() {
    MainQueue queue;
    std::thread::id where;
    std::thread([&] { queue.async([&] { where = std::this_thread::get_id(); }); }).join();
    QCoreApplication::processEvents();
    QCOMPARE(where, std::this_thread::get_id());
}

void TestBase::mainQueue_workOfADestroyedQueueNeverRuns() {
    bool ran = false;
    {
        MainQueue queue;
        queue.async([&] { ran = true; });
    }
    QCoreApplication::processEvents();
    QVERIFY(!ran);
}

void TestBase::workState_letsOneThingBeginAtATime() {
    WorkState work;
    QVERIFY(work.begin(Work::Running));
    QVERIFY(!work.begin(Work::Searching));
    QCOMPARE(work.now(), Work::Running);
    work.stop();
    QVERIFY(!work.begin(Work::Running));
    work.end();
    QVERIFY(work.begin(Work::Searching));
}

void TestBase::workState_stopsWhatGoesOnAndNothingElse() {
    WorkState work;
    QSignalSpy changed(&work, &WorkState::changed);
    work.stop();
    QVERIFY(work.isIdle());
    work.begin(Work::Searching);
    work.stop();
    work.stop();
    work.end();
    work.end();
    QList<Work> states;
    for (const QList<QVariant> &arguments : changed)
        states.append(arguments.first().value<Work>());
    QCOMPARE(states, QList<Work>({Work::Searching, Work::Stopping, Work::Idle}));
}

void TestBase::workState_saysWhatIsRunning() {
    QCOMPARE(whatIsRunning(Work::Searching), QStringLiteral("A search is running"));
    QCOMPARE(whatIsRunning(Work::Running), QStringLiteral("The programmer tool is running"));
    QCOMPARE(whatIsRunning(Work::Idle), QStringLiteral("The programmer tool is running"));
    QCOMPARE(whatIsRunning(Work::Stopping), QStringLiteral("The programmer tool is running"));
}

void TestBase::textOnOneLine_hasBlanksForWhatBreaksIt() {
    QCOMPARE(onOneLine(QStringLiteral("a\r\n\u0085\u009b\u2028\u2029\x7f\u00a0\u202e.")),
             QStringLiteral("a       \u00a0\u202e."));
}

void TestBase::printableAscii_isFromBlankToTilde() {
    for (char16_t unit = 0; unit < 0xFFFF; ++unit)
        QCOMPARE(isPrintableAscii(unit), unit >= 0x20 && unit <= 0x7E);
}

void TestBase::joinedWords_leaveOutTheEmptyOnes() {
    const QString one = QStringLiteral("one");
    const QString two = QStringLiteral("two");
    QCOMPARE(joinedWords({QString(), one, QStringLiteral(""), two, QString()}, u", "),
             QStringLiteral("one, two"));
    QCOMPARE(joinedWords({one, QString(), two}, u"\n"), QStringLiteral("one\ntwo"));
    QCOMPARE(joinedWords({QString()}, u", "), QString());
}

void TestBase::listWords_haveAnAndBeforeTheLast() {
    QCOMPARE(listWords({QStringLiteral("a")}), QStringLiteral("a"));
    QCOMPARE(listWords({QStringLiteral("a"), QStringLiteral("b")}), QStringLiteral("a and b"));
    QCOMPARE(listWords({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}),
             QStringLiteral("a, b and c"));
}

void TestBase::utf8_characterBeginsWithItsHighestBits() {
    for (const char32_t character : {U'\u0080', U'\u07FF', U'\u0800', U'\uFFFD', U'\U0010FFFF'}) {
        const QByteArray bytes = QString::fromUcs4(&character, 1).toUtf8();
        const auto first = quint8(bytes.at(0));
        const int length = utf8::lengthOfCharacter(first);
        QCOMPARE(length, bytes.size());
        QCOMPARE(utf8::bitsOfFirst(first, length),
                 character >> (utf8::bitsPerContinuation * (length - 1)));
    }
}

QTEST_GUILESS_MAIN(TestBase)
#include "tst_base.moc"
