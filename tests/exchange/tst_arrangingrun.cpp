// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ArrangingRun.h"

#include "support/AddressSpaceLimit.h"
#include "support/FactsAtOnce.h"

#include <QSignalSpy>
#include <QTest>

/// Bytes are arranged and their checksums counted between the turns of the event loop.
class TestArrangingRun : public QObject {
    Q_OBJECT

private slots:
    void joined_hasTheChecksumsOfAll();
    void split_hasTheChecksumsOfAll();
    void unchanged_isOnlyCounted();
    void noBytes_areNoTrouble();
    void secondStart_forgetsTheFirst();
    void stop_endsIt();
    void manyBytes_leaveTheEventLoopTurning();
    void withoutMemory_isSaid();
};

namespace {

constexpr Lanes halves{2, 1};

ArrangingRun::Source wholeOf(const QByteArray &bytes) {
    return {std::make_shared<QByteArray>(bytes), {0, bytes.size()}};
}

quint32 crcOf(const QByteArray &bytes) {
    return factsOf(bytes).crc32;
}

} // namespace

void TestArrangingRun::joined_hasTheChecksumsOfAll() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({wholeOf("ace"), wholeOf("bdf")}, {halves});
    QVERIFY(!run.outcome());
    QVERIFY(done.wait());
    QCOMPARE(run.outcome()->parts, QList<QByteArray>{"abcdef"});
    QCOMPARE(run.outcome()->sourceChecksums, QList<quint32>({crcOf("ace"), crcOf("bdf")}));
    QCOMPARE(run.outcome()->checksums, QList<quint32>{crcOf("abcdef")});
    QVERIFY(!run.isRunning());
}

void TestArrangingRun::split_hasTheChecksumsOfAll() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({{std::make_shared<QByteArray>("__abcdef__"), {2, 6}}}, {{}, 1, false, halves, 6});
    QVERIFY(done.wait());
    QCOMPARE(run.outcome()->parts, QList<QByteArray>({"aceace", "bdfbdf"}));
    QCOMPARE(run.outcome()->sourceChecksums, QList<quint32>{crcOf("abcdef")});
    QCOMPARE(run.outcome()->checksums, QList<quint32>({crcOf("aceace"), crcOf("bdfbdf")}));
}

void TestArrangingRun::unchanged_isOnlyCounted() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({wholeOf("123456789")}, {});
    QVERIFY(done.wait());
    QVERIFY(run.outcome()->parts.isEmpty());
    QCOMPARE(run.outcome()->sourceChecksums, QList<quint32>{0xCBF43926});
}

void TestArrangingRun::noBytes_areNoTrouble() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({wholeOf("")}, {{}, 4, true, halves});
    QVERIFY(done.wait());
    QCOMPARE(run.outcome()->parts, QList<QByteArray>({"", ""}));
}

void TestArrangingRun::secondStart_forgetsTheFirst() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({wholeOf("abcd")}, {{}, 2});
    run.start({wholeOf("efgh")}, {{}, 4});
    QVERIFY(done.wait());
    QCOMPARE(run.outcome()->parts, QList<QByteArray>{"hgfe"});
    QCOMPARE(run.outcome()->checksums.size(), 1);
    QCOMPARE(done.size(), 1);
}

void TestArrangingRun::stop_endsIt() {
    ArrangingRun run;
    QSignalSpy done(&run, &ArrangingRun::done);
    run.start({wholeOf("abcd")}, {{}, 2});
    run.stop();
    QCoreApplication::processEvents();
    QVERIFY(!run.isRunning());
    QVERIFY(!run.outcome());
    QVERIFY(done.isEmpty());
}

void TestArrangingRun::manyBytes_leaveTheEventLoopTurning() {
    ArrangingRun run;
    run.start({wholeOf(QByteArray(1 << 28, 'x'))}, {{}, 2, true, halves});
    int turns = 0;
    while (run.isRunning()) {
        QCoreApplication::processEvents();
        ++turns;
    }
    QVERIFY2(turns > 3, qPrintable(QString::number(turns)));
    QCOMPARE(run.outcome()->parts.size(), 2);
}

void TestArrangingRun::withoutMemory_isSaid() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers need their address space");
    ArrangingRun run;
    QSignalSpy outOfMemory(&run, &ArrangingRun::outOfMemory);
    QSignalSpy done(&run, &ArrangingRun::done);
    const auto source = wholeOf("abcd");
    const AddressSpaceLimit limit(rlim_t(64) << 20);
    run.start({source}, {{}, 1, false, {}, 1 << 28});
    QTRY_COMPARE(outOfMemory.size(), 1);
    QVERIFY(!run.isRunning());
    QVERIFY(!run.outcome());
    QVERIFY(done.isEmpty());
}

QTEST_GUILESS_MAIN(TestArrangingRun)
#include "tst_arrangingrun.moc"
