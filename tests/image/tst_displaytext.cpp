// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/DisplayText.h"

#include "support/AddressSpaceLimit.h"
#include "support/Bytes.h"

#include <QTest>

#include <algorithm>
#include <malloc.h>
#include <random>

using namespace std::string_literals;

namespace {

/// What was freed before, or is set aside for a second thread, would be room beyond any limit.
const bool keepsNoRoom =
    ::mallopt(M_ARENA_MAX, 1) == 1 && ::mallopt(M_MMAP_THRESHOLD, 128 * 1024) == 1;

ByteBuffer buffer(const QByteArray &bytes) {
    return std::make_shared<QByteArray>(bytes);
}

QByteArray utf8(char32_t character) {
    return QString().append(QChar::fromUcs4(character)).toUtf8();
}

/// A character of each length that UTF-8 knows, the borders included, at random.
char32_t anyCharacter(std::mt19937 &random) {
    static const std::u32string samples = U"\0aZ~\u007f\u0080\u00e9\u07ff\u0800\u20ac\ud7ff\ue000"
                                          U"\ufeff\ufffd\uffff\U00010000\U0001F4BE\U0010FFFF"s;
    return samples.at(random() % samples.size());
}

QString textOf(const std::u32string &characters) {
    QString text;
    for (const char32_t character : characters)
        text.append(QChar::fromUcs4(character));
    return text;
}

} // namespace

class TestDisplayText : public QObject {
    Q_OBJECT

private slots:
    void decoding_data();
    void decoding();
    void everySingleByte();
    void everyByteAsLatin1();
    void everyCharacter();
    void multiByteText_atEveryBoundary();
    void multiByteText_overManyBlocks();
    void multiByteText_withoutMemoryIsOneByteEach();
    void validity_isThatOfTheToolkit();
    void requestsPastTheEnds();
    void requestsInsideAPair();
    void nothingIsCopied();
    void copiesShareTheBuffer();
    void editedInPlace_keepsItsLengthUntilDecodedAgain();
    void editedInPlace_isSafe_data();
    void editedInPlace_isSafe();
    void multiByteEdited_showsTheBytesAsTheyAre();
};

void TestDisplayText::decoding_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("multiByte");
    QTest::newRow("empty") << QByteArray() << QString() << false;
    QTest::newRow("0x41 0x42") << QByteArray("AB") << QStringLiteral("AB") << false;
    QTest::newRow("0xC3 0xA9 is one character")
        << QByteArray("\xc3\xa9") << QStringLiteral("\u00e9") << true;
    QTest::newRow("0xFF 0x41 is Latin-1, two characters")
        << QByteArray("\xff\x41") << QStringLiteral("\u00ffA") << false;
    QTest::newRow("NULs") << QByteArray(3, '\0') << QString(3, QChar(u'\0')) << false;
    QTest::newRow("0xFF alone") << QByteArray(4, '\xff') << QString(4, QChar(0xFF)) << false;
    QTest::newRow("cut character")
        << QByteArray("a\xe2\x82") << QStringLiteral("a\u00e2\u0082") << false;
    QTest::newRow("overlong") << QByteArray("\xc0\x80") << QStringLiteral("\u00c0\u0080") << false;
    QTest::newRow("surrogate spelt in UTF-8")
        << QByteArray("\xed\xa0\x80") << QStringLiteral("\u00ed\u00a0\u0080") << false;
    QTest::newRow("beyond the last character")
        << QByteArray("\xf4\x90\x80\x80") << QStringLiteral("\u00f4\u0090\u0080\u0080") << false;
    QTest::newRow("pair") << QByteArray("\xf0\x9f\x92\xbe") << QStringLiteral("\U0001F4BE") << true;
    QTest::newRow("byte-order mark alone")
        << QByteArray("\xef\xbb\xbf") << QString(QChar(0xFEFF)) << true;
    QTest::newRow("byte-order mark first") << QByteArray("\xef\xbb\xbf"
                                                         "A")
                                           << QString(QChar(0xFEFF) + QStringLiteral("A")) << true;
    QTest::newRow("byte-order mark twice")
        << QByteArray("\xef\xbb\xbf\xef\xbb\xbf") << QString(2, QChar(0xFEFF)) << true;
    QTest::newRow("byte-order mark before Latin-1")
        << QByteArray("\xef\xbb\xbf\xff") << QStringLiteral("\u00ef\u00bb\u00bf\u00ff") << false;
}

void TestDisplayText::decoding() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QFETCH(bool, multiByte);
    const DisplayText decoded(buffer(bytes));
    QCOMPARE(decoded.units(0, bytes.size() + 1), text);
    QCOMPARE(decoded.length(), text.size());
    QCOMPARE(decoded.byteLength(), bytes.size());
    QCOMPARE(decoded.isMultiByte(), multiByte);
}

void TestDisplayText::everySingleByte() {
    for (int byte = 0; byte < 256; ++byte) {
        const DisplayText text(buffer(QByteArray(1, char(byte))));
        QCOMPARE(text.length(), 1);
        QCOMPARE(text.units(0, 1), QString(QChar(byte)));
    }
}

void TestDisplayText::everyByteAsLatin1() {
    QByteArray bytes;
    QString expected;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.append(char(byte));
        expected.append(QChar(byte));
    }
    const DisplayText text(buffer(bytes));
    QCOMPARE(text.units(0, 256), expected);
    for (int at = 0; at < 256; at += 16)
        QCOMPARE(text.units(at, 16), expected.mid(at, 16));
}

void TestDisplayText::everyCharacter() {
    QByteArray bytes;
    QString expected;
    for (char32_t character = 1; character <= QChar::LastValidCodePoint; character += 7) {
        if (QChar::isSurrogate(character))
            continue;
        bytes.append(utf8(character));
        expected.append(QChar::fromUcs4(character));
    }
    const DisplayText text(buffer(bytes));
    QCOMPARE(text.length(), expected.size());
    QVERIFY(text.units(0, text.length()) == expected);
}

void TestDisplayText::multiByteText_atEveryBoundary() {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        std::u32string characters;
        for (int count = 0; count < 40; ++count)
            characters.push_back(anyCharacter(random));
        const QString expected = textOf(characters);
        const DisplayText text(buffer(expected.toUtf8()));
        QCOMPARE(text.length(), expected.size());
        for (qsizetype from = 0; from <= expected.size(); ++from)
            for (qsizetype count = 0; count <= expected.size() - from + 1; ++count)
                QCOMPARE(text.units(from, count), expected.mid(from, count));
    }
}

void TestDisplayText::multiByteText_overManyBlocks() {
    std::mt19937 random(2);
    for (int shift = 0; shift < 8; ++shift) {
        std::u32string characters(size_t(shift), U'a');
        while (characters.size() < 20'000)
            characters.push_back(anyCharacter(random));
        const QString expected = textOf(characters);
        const DisplayText text(buffer(expected.toUtf8()));
        QCOMPARE(text.length(), expected.size());
        QVERIFY(text.units(0, expected.size()) == expected);
        for (qsizetype at = 0; at < expected.size(); at += 3)
            QCOMPARE(text.units(at, 16), expected.mid(at, 16));
    }
}

void TestDisplayText::multiByteText_withoutMemoryIsOneByteEach() {
    if (!AddressSpaceLimit::works() || !keepsNoRoom)
        QSKIP("the sanitizer needs the address space");
    constexpr qsizetype count = qsizetype(128) << 20;
    const ByteBuffer bytes = buffer(QByteArray("\xC3\xA9").repeated(count));
    DisplayText text;
    {
        const AddressSpaceLimit limit(rlim_t(1) << 16);
        text = DisplayText(bytes);
    }
    QVERIFY(!text.isMultiByte());
    QCOMPARE(text.length(), 2 * count);
    QCOMPARE(text.units(2 * count - 2, 2), QString::fromLatin1("\xC3\xA9"));
    text.update(bytes, {0, 2});
    QVERIFY(text.isMultiByte());
    QCOMPARE(text.length(), count);
}

void TestDisplayText::validity_isThatOfTheToolkit() {
    std::mt19937 random(3);
    const QByteArray samples("a\x80\xbf\xc2\xdf\xe0\xa0\xed\x9f\xef\xf0\x90\xf4\x8f\xff", 15);
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes;
        for (int count = 0; count < 6; ++count)
            bytes.append(samples.at(qsizetype(random() % 15)));
        const QString expected =
            bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
        const DisplayText text(buffer(bytes));
        QCOMPARE(text.length(), expected.size());
        QCOMPARE(text.units(0, 6), expected);
    }
}

void TestDisplayText::requestsPastTheEnds() {
    for (const auto *bytes : {"abc", "a\xc3\xa9z"}) {
        const DisplayText text(buffer(bytes));
        QCOMPARE(text.units(2, 100), QString::fromUtf8(bytes).mid(2));
        QCOMPARE(text.units(3, 1), QString());
        QCOMPARE(text.units(-1, 2), QString());
        QCOMPARE(text.units(0, 0), QString());
        QCOMPARE(text.units(0, -1), QString());
        const qsizetype largest = std::numeric_limits<qsizetype>::max();
        QCOMPARE(text.units(largest, largest), QString());
        QCOMPARE(text.units(1, largest), QString::fromUtf8(bytes).mid(1));
    }
    QCOMPARE(DisplayText().length(), 0);
    QCOMPARE(DisplayText().units(0, 1), QString());
    QCOMPARE(DisplayText(nullptr).length(), 0);
    QCOMPARE(DisplayText(nullptr).units(0, 1), QString());
}

void TestDisplayText::requestsInsideAPair() {
    const QString pair = QStringLiteral("\U0001F4BE");
    const DisplayText text(buffer(pair.toUtf8() + pair.toUtf8()));
    QCOMPARE(text.length(), 4);
    QCOMPARE(text.units(1, 1), QString(pair.at(1)));
    QCOMPARE(text.units(1, 2), QString(QString(pair.at(1)) + pair.at(0)));
    QCOMPARE(text.units(2, 1), QString(pair.at(0)));
    QCOMPARE(text.units(3, 5), QString(pair.at(1)));
}

void TestDisplayText::nothingIsCopied() {
    const ByteBuffer bytes = buffer(QByteArray(100'000, 'a'));
    const char *place = bytes->constData();
    const DisplayText text(bytes);
    QCOMPARE(text.units(99'999, 1), QStringLiteral("a"));
    QVERIFY(bytes->isDetached());
    (*bytes)[0] = 'b';
    QCOMPARE(bytes->constData(), place);
    QCOMPARE(text.units(0, 2), QStringLiteral("ba"));
}

void TestDisplayText::copiesShareTheBuffer() {
    const ByteBuffer bytes = buffer("a\xc3\xa9");
    DisplayText text;
    text = DisplayText(bytes);
    const DisplayText copy = text;
    text = DisplayText();
    QCOMPARE(copy.units(0, 2), QStringLiteral("a\u00e9"));
    QCOMPARE(text.length(), 0);
}

void TestDisplayText::editedInPlace_keepsItsLengthUntilDecodedAgain() {
    const ByteBuffer bytes = buffer("abc");
    const DisplayText text(bytes);
    bytes->append("def");
    (*bytes)[1] = '\xe9';
    QCOMPARE(text.length(), 3);
    QCOMPARE(text.byteLength(), 3);
    QCOMPARE(text.units(0, 10), QStringLiteral("a\u00e9c"));
    QCOMPARE(DisplayText(bytes).units(0, 10), QStringLiteral("a\u00e9cdef"));
}

void TestDisplayText::editedInPlace_isSafe_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("single-byte") << QByteArray(10'000, 'a');
    QTest::newRow("two bytes") << QByteArray("\xc3\xa9").repeated(5'000);
    QTest::newRow("four bytes") << QByteArray("\xf0\x9f\x92\xbe").repeated(2'500);
}

// Whatever stands in the buffer now, and however long it is: no crash, never more units than asked
// for, and none past the length.
void TestDisplayText::editedInPlace_isSafe() {
    QFETCH(QByteArray, before);
    std::mt19937 random(4);
    const ByteBuffer bytes = buffer(before);
    const DisplayText text(bytes);
    const qsizetype length = text.length();
    for (int round = 0; round < 200; ++round) {
        bytes->resize(qsizetype(random() % 12'000));
        for (char &byte : *bytes)
            byte = round % 2 == 0 ? char(random()) : "\xf4\xf0\xe2\xc3"[random() % 4];
        for (const qsizetype at : {qsizetype(0), length / 2, length - 3}) {
            QVERIFY(text.units(at, 16).size() <= std::min(qsizetype(16), length - at));
            QVERIFY(text.units(at, length).size() <= length - at);
        }
        QCOMPARE(text.length(), length);
    }
    bytes->clear();
    QCOMPARE(text.units(0, 16), QString());
}

void TestDisplayText::multiByteEdited_showsTheBytesAsTheyAre() {
    const ByteBuffer bytes = buffer("a\xc3\xa9z");
    const DisplayText text(bytes);
    (*bytes)[0] = 'b';
    QCOMPARE(text.units(0, 9), QStringLiteral("b\u00e9z"));
    (*bytes)[2] = 'c';
    QCOMPARE(text.units(0, 9), QStringLiteral("b\ufffdc"));
}

QTEST_GUILESS_MAIN(TestDisplayText)
#include "tst_displaytext.moc"
