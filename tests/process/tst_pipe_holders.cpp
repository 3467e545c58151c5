// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/Pipe.h"
#include "process/PipeHolders.h"

#include <QFileInfo>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

class TestPipeHolders : public QObject {
    Q_OBJECT

private slots:
    void identity_isOfThePipeAndNotOfItsEnd();
    void whatIsNoPipe_hasNoIdentity();
    void holdersOfTheSession_areKilledAndNobodyElse();
};

namespace {

/// A process that lives until it is killed, with the ends of a pipe open or without.
class Process {
public:
    enum class Ends { Open, Closed };
    enum class Session { Same, Own };

    Process(const Pipe &pipe, Ends ends, Session session = Session::Same) : pid_(::fork()) {
        if (pid_ != 0)
            return;
        if (session == Session::Own)
            ::setsid();
        if (ends == Ends::Closed)
            for (const int end : {pipe.childEnd(), pipe.ownEnd()})
                ::close(end);
        for (;;)
            ::pause();
    }
    ~Process() {
        if (signal() == 0)
            ::kill(pid_, SIGKILL);
    }

    /// The signal that has ended it; 0 while it lives.
    int signal() {
        int status = 0;
        if (signal_ == 0 && ::waitpid(pid_, &status, WNOHANG) == pid_)
            signal_ = WTERMSIG(status);
        return signal_;
    }

    bool hasOwnSession() const { return ::getsid(pid_) == pid_; }

    /// True while it has \a descriptor open.
    bool has(int descriptor) const {
        const QString link = QStringLiteral("/proc/%1/fd/%2").arg(pid_).arg(descriptor);
        return QFileInfo(link).isSymLink();
    }

private:
    pid_t pid_;
    int signal_ = 0;
};

} // namespace

void TestPipeHolders::identity_isOfThePipeAndNotOfItsEnd() {
    Pipe first(Pipe::Direction::FromChild);
    Pipe second(Pipe::Direction::FromChild);
    QVERIFY(first.open() && second.open());
    const std::optional<PipeIdentity> identity = pipeIdentity(first.ownEnd());
    QVERIFY(identity);
    QVERIFY(pipeIdentity(first.childEnd()) == identity);
    QVERIFY(pipeIdentity(second.ownEnd()) != identity);
}

void TestPipeHolders::whatIsNoPipe_hasNoIdentity() {
    const int file = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    QVERIFY(!pipeIdentity(file));
    ::close(file);
    QVERIFY(!pipeIdentity(file));
    QVERIFY(!pipeIdentity(-1));
}

void TestPipeHolders::holdersOfTheSession_areKilledAndNobodyElse() {
    Pipe pipe(Pipe::Direction::FromChild);
    QVERIFY(pipe.open());
    Process holder(pipe, Process::Ends::Open);
    Process other(pipe, Process::Ends::Closed);
    Process stranger(pipe, Process::Ends::Open, Process::Session::Own);
    const std::optional<PipeIdentity> identity = pipeIdentity(pipe.ownEnd());
    QVERIFY(identity);
    QTRY_VERIFY(stranger.hasOwnSession());
    QTRY_VERIFY(!other.has(pipe.childEnd()) && !other.has(pipe.ownEnd()));
    // This process has both ends open as well, and lives on.
    killHoldersOf({*identity}, ::getsid(0));
    QTRY_COMPARE(holder.signal(), SIGKILL);
    QCOMPARE(other.signal(), 0);
    QCOMPARE(stranger.signal(), 0);
}

QTEST_GUILESS_MAIN(TestPipeHolders)
#include "tst_pipe_holders.moc"
