// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleStorage.h"

#include "support/AllocatedBytes.h"

#include <QTest>

class TestConsoleStorage : public QObject {
    Q_OBJECT

private slots:
    void append_keepsEveryPieceExactly();
    void append_keepsManyPiecesInOrder();
    void append_keepsCharactersOfAnyWidth();
    void append_takesAByteForALetter();
    void trim_data();
    void trim();
    void trim_cutsAtALineBreakOnlyIfOneIsNear();
    void trim_isToldOnce();
    void defaultLimit_isSixteenMebiUnits();
};

void TestConsoleStorage::append_keepsEveryPieceExactly() {
    ConsoleStorage storage;
    const QString piece = QStringLiteral("\r\x1b[K 5%\r\n\ufeff\u00e9\U0001f600\u2029\0x");
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

// What fills a chunk is kept as narrow as its widest character lets it.
void TestConsoleStorage::append_keepsCharactersOfAnyWidth() {
    const QStringList lines = {QStringLiteral("Reading Code...\n"), QStringLiteral("\u00ff\n"),
                               QStringLiteral("\u0100\n"), QString(QChar(0xd83d)) + u'\n',
                               QStringLiteral("\U0001f600\n")};
    constexpr qsizetype moreThanAChunk = 70000;
    ConsoleStorage storage;
    QString whole;
    for (const QString &line : lines + lines) {
        const QString piece = line.repeated(moreThanAChunk / line.size());
        storage.append(piece);
        whole += piece;
    }
    QVERIFY(storage.text() == whole);
    QCOMPARE(storage.length(), whole.size());
}

void TestConsoleStorage::append_takesAByteForALetter() {
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer keeps more");
#endif
    constexpr qsizetype letters = ConsoleStorage::defaultLimit / 2;
    const QString line = QString(79, u'x') + u'\n';
    const qint64 before = allocatedBytes();
    ConsoleStorage storage;
    while (storage.length() < letters)
        storage.append(line);
    const qint64 taken = allocatedBytes() - before;
    QVERIFY2(taken < letters * 5 / 4, qPrintable(QString::number(taken)));
}

void TestConsoleStorage::trim_data() {
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<QString>("kept");
    QTest::newRow("up to the limit nothing goes")
        << QStringList{QStringLiteral("12345"), QStringLiteral("67890")}
        << QStringLiteral("1234567890");
    QTest::newRow("the oldest goes, no line break near")
        << QStringList{QStringLiteral("12345"), QStringLiteral("67890a")}
        << QStringLiteral("234567890a");
    QTest::newRow("the rest of the cut line goes too")
        << QStringList{QStringLiteral("12\n45"), QStringLiteral("67890a")}
        << QStringLiteral("4567890a");
    QTest::newRow("a line that fits stays whole")
        << QStringList{QStringLiteral("\n2345"), QStringLiteral("67890a")}
        << QStringLiteral("234567890a");
    QTest::newRow("a character is not cut")
        << QStringList{QStringLiteral("\U0001f6003"), QStringLiteral("4567890a")}
        << QStringLiteral("34567890a");
    QTest::newRow("a piece above the limit keeps its end")
        << QStringList{QStringLiteral("old\n"), QStringLiteral("01234567890a")}
        << QStringLiteral("234567890a");
    QTest::newRow("a text that ends with the only break")
        << QStringList{QStringLiteral("0123456789\n")} << QString();
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
        told.append(storage.append(QStringLiteral("ab")));
    QCOMPARE(told, QList<bool>({false, false, true, false}));
    storage.clear();
    QVERIFY(storage.append(QStringLiteral("abcde")));
}

void TestConsoleStorage::defaultLimit_isSixteenMebiUnits() {
    ConsoleStorage storage;
    const QString mebi = QString(1024 * 1024 - 1, u'x') + u'\n';
    for (int piece = 0; piece < 16; ++piece)
        storage.append(mebi);
    QCOMPARE(storage.length(), 16 * mebi.size());
    storage.append(QStringLiteral("end"));
    QVERIFY(storage.length() <= 16 * mebi.size());
    QVERIFY(storage.text().endsWith(u"x\nend"));
}

QTEST_GUILESS_MAIN(TestConsoleStorage)
#include "tst_consolestorage.moc"
