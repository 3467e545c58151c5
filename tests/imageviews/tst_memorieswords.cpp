// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MemoriesWords.h"

#include <QTest>

/// How memories besides the code memory are told.
class TestMemoriesWords : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English)); }
    void all_areTold_data();
    void all_areTold();
    void unreadFiles_areTold();
    void values_areWrittenOut_data();
    void values_areWrittenOut();
};

void TestMemoriesWords::all_areTold_data() {
    QTest::addColumn<int>("data");
    QTest::addColumn<int>("user");
    QTest::addColumn<QByteArray>("fuses");
    const auto row = [](const char *words, int data, int user, const QByteArray &fuses) {
        QTest::newRow(words) << data << user << fuses;
    };
    row("", 0, 0, "");
    row("512 bytes of data memory, 3 fuses", 512, 0, "a=0x1\nb=0x2\nc=0x3\n");
    row("2,048 bytes of data memory, 64 bytes of user memory, 1 fuse", 2048, 64, "a=0x1\n");
    row("1 byte of data memory, 1 byte of user memory", 1, 1, "");
    row("1 fuse, 1 line that says no fuse", 0, 0, "a=0x1\n?\n");
    row("2 lines that say no fuse", 0, 0, "?\n!\n");
}

void TestMemoriesWords::all_areTold() {
    QFETCH(int, data);
    QFETCH(int, user);
    QFETCH(QByteArray, fuses);
    OtherMemories memories;
    const auto bytes = [](int size) {
        return size == 0 ? ByteBuffer() : std::make_shared<QByteArray>(size, 'x');
    };
    memories.data = bytes(data);
    memories.user = bytes(user);
    memories.fuses = readFuseText(fuses);
    QCOMPARE(memoriesWords(memories), QString::fromLatin1(QTest::currentDataTag()));
}

void TestMemoriesWords::unreadFiles_areTold() {
    QCOMPARE(unreadWords({}), QString());
    QCOMPARE(
        unreadWords({{QStringLiteral("/a/b.user.bin"), Failure{QStringLiteral("Is a directory")}}}),
        QStringLiteral("It is not known what the Read left in /a/b.user.bin: Is a directory."));
}

void TestMemoriesWords::values_areWrittenOut_data() {
    QTest::addColumn<Fuse>("fuse");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *words, quint32 value, int digits) {
        QTest::newRow(words) << Fuse{QStringLiteral("a"), value, digits}
                             << QString::fromLatin1(words);
    };
    row("0x62 0110 0010", 0x62, 2);
    row("0x0 0000", 0, 1);
    row("0x3FFF 0011 1111 1111 1111", 0x3fff, 4);
    row("0xFFFFFFFF 1111 1111 1111 1111 1111 1111 1111 1111", 0xffffffff, 8);
}

void TestMemoriesWords::values_areWrittenOut() {
    QFETCH(Fuse, fuse);
    QFETCH(QString, words);
    QCOMPARE(hexadecimalWords(fuse) + u' ' + binaryWords(fuse), words);
}

QTEST_GUILESS_MAIN(TestMemoriesWords)
#include "tst_memorieswords.moc"
