// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/Pipe.h"
#include "process/ReadHandle.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <tuple>
#include <unistd.h>

class TestReadHandle : public QObject {
    Q_OBJECT

private slots:
    void arming_twiceGivesOneSignal();
    void arming_isRememberedUntilThePipeIsOpen();
    void dataAvailable_comesOnceForEachArming();
    void dataAvailable_isNotGivenForBytesThatSomebodyElseTook();
    void endOfFile_isNoticedOnceUntilMoreIsAllowed();
    void pace_keepsSignalsApart();
    void pace_doesNotKeepTheEndApart();
    void availableData_tellsWhatHappened();
    void availableData_takesNoMoreThanAsked();
    void detached_noSignal();
    void pipe_isCloseOnExecAndAboveTheStandardStreams();
    void pipe_holdsNoDescriptorUntilOpened();
};

namespace {

class OpenPipe : public Pipe {
public:
    OpenPipe() : Pipe(Direction::FromChild) { QVERIFY(open()); }
    ReadHandle &reader() { return *fileHandleForReading(); }
    void put(const QByteArray &bytes) const {
        QCOMPARE(::write(childEnd(), bytes.constData(), size_t(bytes.size())), bytes.size());
    }
};

/// Lets everything happen that is ready to.
void settle() {
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
}

QString nameOf(const ReadOutcome &outcome) {
    if (const Failure *failure = outcome.failure())
        return QStringLiteral("<error %1>").arg(failure->systemError);
    if (const auto *bytes = std::get_if<QByteArray>(&*outcome))
        return QString::fromUtf8(*bytes);
    return std::holds_alternative<EndOfFile>(*outcome) ? QStringLiteral("<end>")
                                                       : QStringLiteral("<interrupted>");
}

} // namespace

void TestReadHandle::arming_twiceGivesOneSignal() {
    OpenPipe pipe;
    QSignalSpy given(&pipe.reader(), &ReadHandle::dataAvailable);
    pipe.reader().waitForDataInBackgroundAndNotify();
    pipe.reader().waitForDataInBackgroundAndNotify();
    settle();
    QCOMPARE(given.size(), 0);
    pipe.put("x");
    settle();
    QCOMPARE(given.size(), 1);
}

void TestReadHandle::arming_isRememberedUntilThePipeIsOpen() {
    Pipe pipe(Pipe::Direction::FromChild);
    QSignalSpy given(pipe.fileHandleForReading(), &ReadHandle::dataAvailable);
    pipe.fileHandleForReading()->waitForDataInBackgroundAndNotify();
    QVERIFY(pipe.open());
    QCOMPARE(::write(pipe.childEnd(), "x", 1), 1);
    settle();
    QCOMPARE(given.size(), 1);
}

void TestReadHandle::dataAvailable_comesOnceForEachArming() {
    OpenPipe pipe;
    pipe.put("abc");
    QSignalSpy given(&pipe.reader(), &ReadHandle::dataAvailable);
    settle();
    QCOMPARE(given.size(), 0);
    for (int arming = 1; arming <= 3; ++arming) {
        pipe.reader().waitForDataInBackgroundAndNotify();
        settle();
        QCOMPARE(given.size(), arming);
    }
}

void TestReadHandle::dataAvailable_isNotGivenForBytesThatSomebodyElseTook() {
    OpenPipe first;
    OpenPipe second;
    // Whichever comes first takes both pipes' bytes; the other's event has been found already.
    const auto takeBoth = [&](ReadHandle *) {
        std::ignore = first.reader().availableData();
        std::ignore = second.reader().availableData();
    };
    connect(&first.reader(), &ReadHandle::dataAvailable, this, takeBoth);
    connect(&second.reader(), &ReadHandle::dataAvailable, this, takeBoth);
    QSignalSpy fromFirst(&first.reader(), &ReadHandle::dataAvailable);
    QSignalSpy fromSecond(&second.reader(), &ReadHandle::dataAvailable);
    for (OpenPipe *pipe : {&first, &second}) {
        pipe->put("x");
        pipe->reader().waitForDataInBackgroundAndNotify();
    }
    settle();
    QCOMPARE(fromFirst.size() + fromSecond.size(), 1);
}

void TestReadHandle::endOfFile_isNoticedOnceUntilMoreIsAllowed() {
    OpenPipe pipe;
    int given = 0;
    connect(&pipe.reader(), &ReadHandle::dataAvailable, this, [&](ReadHandle *handle) {
        ++given;
        QCOMPARE(nameOf(handle->availableData()), QStringLiteral("<end>"));
        handle->waitForDataInBackgroundAndNotify();
    });
    pipe.reader().waitForDataInBackgroundAndNotify();
    pipe.closeChildEnd();
    settle();
    QCOMPARE(given, 1);
    pipe.reader().allowRepeatedEnd();
    QTRY_VERIFY(given > 10);
}

void TestReadHandle::pace_keepsSignalsApart() {
    OpenPipe pipe;
    pipe.put("abc");
    QSignalSpy given(&pipe.reader(), &ReadHandle::dataAvailable);
    pipe.reader().setPace(std::chrono::hours(1));
    pipe.reader().waitForDataInBackgroundAndNotify();
    settle();
    QCOMPARE(given.size(), 1);
    pipe.reader().waitForDataInBackgroundAndNotify();
    settle();
    QCOMPARE(given.size(), 1);
    pipe.reader().setPace(std::chrono::milliseconds(1));
    QTRY_COMPARE(given.size(), 2);
}

void TestReadHandle::pace_doesNotKeepTheEndApart() {
    OpenPipe pipe;
    QSignalSpy given(&pipe.reader(), &ReadHandle::dataAvailable);
    pipe.reader().setPace(std::chrono::hours(1));
    pipe.reader().allowRepeatedEnd();
    pipe.closeChildEnd();
    for (int arming = 1; arming <= 3; ++arming) {
        pipe.reader().waitForDataInBackgroundAndNotify();
        settle();
        QCOMPARE(given.size(), arming);
        std::ignore = pipe.reader().availableData();
    }
}

void TestReadHandle::availableData_tellsWhatHappened() {
    OpenPipe pipe;
    QCOMPARE(nameOf(pipe.reader().availableData()), QStringLiteral("<error %1>").arg(EAGAIN));
    pipe.put("bytes");
    QCOMPARE(pipe.reader().bytesAvailable(), 5);
    QCOMPARE(nameOf(pipe.reader().availableData()), QStringLiteral("bytes"));
    pipe.closeChildEnd();
    QVERIFY(!pipe.reader().endSeen());
    QCOMPARE(nameOf(pipe.reader().availableData()), QStringLiteral("<end>"));
    QVERIFY(pipe.reader().endSeen());
    for (const int error : {EINTR, EIO}) {
        pipe.reader().setReadFunction([error](int, void *, size_t) -> ssize_t {
            errno = error;
            return -1;
        });
        QCOMPARE(nameOf(pipe.reader().availableData()),
                 error == EINTR ? QStringLiteral("<interrupted>")
                                : QStringLiteral("<error %1>").arg(EIO));
    }
}

void TestReadHandle::availableData_takesNoMoreThanAsked() {
    OpenPipe pipe;
    pipe.put("abcdef");
    QCOMPARE(nameOf(pipe.reader().availableData(2)), QStringLiteral("ab"));
    QCOMPARE(nameOf(pipe.reader().availableData()), QStringLiteral("cdef"));
}

void TestReadHandle::detached_noSignal() {
    OpenPipe pipe;
    QSignalSpy given(&pipe.reader(), &ReadHandle::dataAvailable);
    pipe.put("x");
    pipe.reader().waitForDataInBackgroundAndNotify();
    pipe.closeOwnEnd();
    settle();
    QCOMPARE(given.size(), 0);
    QCOMPARE(pipe.reader().bytesAvailable(), 0);
}

void TestReadHandle::pipe_isCloseOnExecAndAboveTheStandardStreams() {
    const int savedInput = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 100);
    ::close(STDIN_FILENO);
    OpenPipe pipe;
    ::dup2(savedInput, STDIN_FILENO);
    ::close(savedInput);
    for (const int end : {pipe.childEnd(), pipe.ownEnd()}) {
        QVERIFY(end > STDERR_FILENO);
        QCOMPARE(::fcntl(end, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    }
    // Only this program's end: the child's descriptor must block, as programs expect.
    QCOMPARE(::fcntl(pipe.ownEnd(), F_GETFL) & O_NONBLOCK, O_NONBLOCK);
    QCOMPARE(::fcntl(pipe.childEnd(), F_GETFL) & O_NONBLOCK, 0);
}

void TestReadHandle::pipe_holdsNoDescriptorUntilOpened() {
    Pipe pipe(Pipe::Direction::ToChild);
    QCOMPARE(pipe.childEnd(), -1);
    QCOMPARE(pipe.ownEnd(), -1);
    QVERIFY(pipe.open());
    const int end = pipe.ownEnd();
    QVERIFY(pipe.open());
    QCOMPARE(pipe.ownEnd(), end);
}

QTEST_GUILESS_MAIN(TestReadHandle)
#include "tst_read_handle.moc"
