// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/TurnOfWork.h"
#include "base/TurnedWork.h"

#include <QSignalSpy>
#include <QTest>

#include <new>

namespace {

void workForAWholeTurn() {
    QElapsedTimer time;
    time.start();
    while (!time.hasExpired(turnOfWork.count()))
        continue;
}

/// Work of some pieces, each of which takes a turn, and what was heard of it.
struct HeardWork {
    explicit HeardWork(int pieces, int pieceWithoutMemory = 0)
        : work([=, this] {
              ++done;
              if (done == pieceWithoutMemory)
                  throw std::bad_alloc();
              workForAWholeTurn();
              return done == pieces;
          }) {}

    int done = 0;
    TurnedWork work;
    QSignalSpy turns{&work, &TurnedWork::advanced};
    QSignalSpy ends{&work, &TurnedWork::done};
    QSignalSpy outOfMemory{&work, &TurnedWork::outOfMemory};
};

} // namespace

class TestTurnedWork : public QObject {
    Q_OBJECT

private slots:
    void work_goesOnTurnByTurn();
    void aTurn_canBeTakenAtOnce();
    void wantOfMemory_endsIt();
    void wantOfMemoryOfAListener_isNotItsOwn();
    void stoppedWork_isNotDone();
    void work_canBeginAgainAtItsEnd();
};

void TestTurnedWork::work_goesOnTurnByTurn() {
    HeardWork heard(3);
    heard.work.start();
    QVERIFY(heard.work.isRunning());
    QCOMPARE(heard.done, 0);
    QTRY_COMPARE(heard.ends.size(), 1);
    QCOMPARE(heard.turns.size(), 2);
    QVERIFY(!heard.work.isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(heard.done, 3);
}

void TestTurnedWork::aTurn_canBeTakenAtOnce() {
    HeardWork heard(2);
    heard.work.start();
    heard.work.takeTurn();
    QCOMPARE(heard.turns.size(), 1);
    QVERIFY(heard.work.isRunning());
    heard.work.takeTurn();
    QCOMPARE(heard.ends.size(), 1);
    QVERIFY(!heard.work.isRunning());
}

void TestTurnedWork::wantOfMemory_endsIt() {
    HeardWork heard(3, 2);
    heard.work.start();
    QTRY_COMPARE(heard.outOfMemory.size(), 1);
    QVERIFY(!heard.work.isRunning());
    QVERIFY(heard.ends.isEmpty());
    QCOMPARE(heard.done, 2);
}

void TestTurnedWork::wantOfMemoryOfAListener_isNotItsOwn() {
    HeardWork heard(1);
    connect(&heard.work, &TurnedWork::done, this, [] { throw std::bad_alloc(); });
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, heard.work.takeTurn());
    QVERIFY(heard.outOfMemory.isEmpty());
}

void TestTurnedWork::stoppedWork_isNotDone() {
    HeardWork heard(2);
    connect(&heard.work, &TurnedWork::advanced, &heard.work, &TurnedWork::stop);
    heard.work.start();
    QTRY_COMPARE(heard.turns.size(), 1);
    QVERIFY(!heard.work.isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(heard.done, 1);
    QVERIFY(heard.ends.isEmpty());
}

void TestTurnedWork::work_canBeginAgainAtItsEnd() {
    HeardWork heard(1);
    connect(
        &heard.work, &TurnedWork::done, &heard.work,
        [&heard] {
            heard.done = 0;
            heard.work.start();
        },
        Qt::SingleShotConnection);
    heard.work.start();
    QTRY_COMPARE(heard.ends.size(), 2);
}

QTEST_GUILESS_MAIN(TestTurnedWork)
#include "tst_turnedwork.moc"
