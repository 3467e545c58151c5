// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleStorage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestConsoleStorage : public QObject {
    Q_OBJECT

private slots:
    void append_keepsEveryPieceExactly();
    void append_keepsManyPiecesInOrder();
    void trim_data();
    void trim();
    void trim_cutsAtALineBreakOnlyIfOneIsNear();
    void trim_isToldOnce();
    void defaultLimit_isSixteenMebiUnits();
};

void TestConsoleStorage::append_keepsEveryPieceExactly() {
    ConsoleStorage storage;
    const QString piece = u"\r\x1b[K 5%\r\n\ufeff\u00e9\U0001f600\u2029\0x"_s;
    storage.append(piece);
    storage.append(QString());
    storage.append(piece);
    QCOMPARE(storage.text(), piece + piece);
    QCOMPARE(storage.length(), 2 * piece.size());
}

void TestConsoleStorage::append_keepsManyPiecesInOrder() {
    ConsoleStorage storage;
    QString whole;
    for (int number = 0; number < 50000; ++number) {
        const QString piece = QString::number(number) + u' ';
        storage.append(piece);
        whole += piece;
    }
    QCOMPARE(storage.text(), whole);
}

void TestConsoleStorage::trim_data() {
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<QString>("kept");
    QTest::newRow("up to the limit nothing goes")
        << QStringList{u"12345"_s, u"67890"_s} << u"1234567890"_s;
    QTest::newRow("the oldest goes, no line break near")
        << QStringList{u"12345"_s, u"67890a"_s} << u"234567890a"_s;
    QTest::newRow("the rest of the cut line goes too")
        << QStringList{u"12\n45"_s, u"67890a"_s} << u"4567890a"_s;
    QTest::newRow("a line that fits stays whole")
        << QStringList{u"\n2345"_s, u"67890a"_s} << u"234567890a"_s;
    QTest::newRow("a character is not cut")
        << QStringList{u"\U0001f6003"_s, u"4567890a"_s} << u"34567890a"_s;
    QTest::newRow("a piece above the limit keeps its end")
        << QStringList{u"old\n"_s, u"01234567890a"_s} << u"234567890a"_s;
    QTest::newRow("a text that ends with the only break")
        << QStringList{u"0123456789\n"_s} << QString();
}

void TestConsoleStorage::trim() {
    QFETCH(QStringList, pieces);
    ConsoleStorage storage(10);
    for (const QString &piece : pieces)
        storage.append(piece);
    QTEST(storage.text(), "kept");
    QCOMPARE(storage.length(), storage.text().size());
}

void TestConsoleStorage::trim_cutsAtALineBreakOnlyIfOneIsNear() {
    const qsizetype limit = 100000;
    ConsoleStorage storage(limit);
    storage.append(QString(ConsoleStorage::nearestBreak + 1, u'x') + u'\n');
    storage.append(QString(limit, u'y'));
    QCOMPARE(storage.length(), limit);
    storage.clear();
    storage.append(QString(ConsoleStorage::nearestBreak + 1, u'x') + u'\n');
    const QString rest(limit - ConsoleStorage::nearestBreak + 1, u'y');
    storage.append(rest);
    QCOMPARE(storage.text(), rest);
}

void TestConsoleStorage::trim_isToldOnce() {
    ConsoleStorage storage(4);
    QList<bool> told;
    for (int piece = 0; piece < 4; ++piece)
        told.append(storage.append(u"ab"_s));
    QCOMPARE(told, QList<bool>({false, false, true, false}));
    storage.clear();
    QVERIFY(storage.append(u"abcde"_s));
}

void TestConsoleStorage::defaultLimit_isSixteenMebiUnits() {
    ConsoleStorage storage;
    const QString mebi = QString(1024 * 1024 - 1, u'x') + u'\n';
    for (int piece = 0; piece < 16; ++piece)
        storage.append(mebi);
    QCOMPARE(storage.length(), 16 * mebi.size());
    storage.append(u"end"_s);
    QVERIFY(storage.length() <= 16 * mebi.size());
    QVERIFY(storage.text().endsWith(u"x\nend"_s));
}

QTEST_GUILESS_MAIN(TestConsoleStorage)
#include "tst_consolestorage.moc"
