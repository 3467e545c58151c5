// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/ImageEncoding.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <sys/mman.h>

class TestImageEncoding : public QObject {
    Q_OBJECT

private slots:
    void fileIsTakenAs_data();
    void fileIsTakenAs();
    void everyByteBehindTheMark_counts_data();
    void everyByteBehindTheMark_counts();
    void markAtEveryOtherByte_isRaw();
    void theLook_endsAtItsLimit();
    void names_areTranslated();
    void aGibibyte_isNeitherReadNorCopied();
};

namespace {

QLatin1String wordFor(ImageEncoding encoding) {
    static constexpr QLatin1String names[] = {QLatin1String("Raw"), QLatin1String("IntelHex"),
                                              QLatin1String("SRecord")};
    return names[int(encoding)];
}

/// Puts every text between brackets.
class Brackets : public QTranslator {
public:
    QString translate(const char *, const char *text, const char *, int) const override {
        return u'[' + QLatin1String(text) + u']';
    }
    bool isEmpty() const override { return false; }
};

} // namespace

void TestImageEncoding::fileIsTakenAs_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("encoding");
    const auto row = [](const char *name, const QByteArray &bytes, const char *encoding) {
        QTest::newRow(name) << bytes << QString::fromLatin1(encoding);
    };
    row("nothing", "", "Raw");
    row("one record", ":00000001FF\n", "IntelHex");
    row("lower case", ":00000001ff\r\n", "IntelHex");
    row("a carriage return alone", ":00000001FF\r", "IntelHex");
    row("an S-record", "S9030000FC\n", "SRecord");
    row("a wrong checksum still looks like a record", ":00000001AA\n", "IntelHex");
    row("S0 with text behind it", "S00600004844521B\nS9030000FC\n", "SRecord");
    row("line ends before", "\r\n\n\r:00000001FF\n", "IntelHex");
    row("only line ends", "\r\n\n", "Raw");
    row("a blank before", " :00000001FF\n", "Raw");
    row("a byte-order mark before", "\xef\xbb\xbf:00000001FF\n", "Raw");
    row("a NUL before", QByteArray("\0:00000001FF\n", 13), "Raw");
    row("a blank behind", ":00000001FF \n", "Raw");
    row("no line end", ":00000001FF", "Raw");
    row("a NUL before the line end", QByteArray(":00\0\n", 5), "Raw");
    row("the mark alone", ":", "Raw");
    row("the mark and a line end", ":\n", "IntelHex");
    row("S and a line end", "S\r", "SRecord");
    row("a small s", "s9030000FC\n", "Raw");
    row("a second mark", "::00000001FF\n", "Raw");
    row("a word that begins with S", "Some text\n", "Raw");
    row("a binary with a record further on", "\x7f:00000001FF\n", "Raw");
    row("a binary that happens to look like a record", QByteArray("\x3a\x30\x0d\xff\xfe", 5),
        "IntelHex");
    row("what follows the first line plays no part", ":00000001FF\n\xff\xff", "IntelHex");
}

void TestImageEncoding::fileIsTakenAs() {
    QFETCH(QByteArray, bytes);
    QTEST(QString(wordFor(encodingForTool(bytes))), "encoding");
}

void TestImageEncoding::everyByteBehindTheMark_counts_data() {
    QTest::addColumn<QByteArray>("mark");
    QTest::addColumn<QString>("encoding");
    QTest::newRow("Intel HEX") << QByteArray(":") << QStringLiteral("IntelHex");
    QTest::newRow("S-record") << QByteArray("S") << QStringLiteral("SRecord");
}

void TestImageEncoding::everyByteBehindTheMark_counts() {
    QFETCH(QByteArray, mark);
    QFETCH(QString, encoding);
    const QByteArray allowed = "0123456789abcdefABCDEF\r\n";
    for (int value = 0; value < 256; ++value) {
        const auto byte = char(value);
        const QString expected = allowed.contains(byte) ? encoding : QStringLiteral("Raw");
        QCOMPARE(QString(wordFor(encodingForTool(mark + "00" + byte + "\n"))), expected);
    }
}

void TestImageEncoding::markAtEveryOtherByte_isRaw() {
    for (int value = 0; value < 256; ++value) {
        const auto byte = char(value);
        if (byte == ':' || byte == 'S' || byte == '\r' || byte == '\n')
            continue;
        QCOMPARE(encodingForTool(byte + QByteArray("00\n")), ImageEncoding::Raw);
    }
}

void TestImageEncoding::theLook_endsAtItsLimit() {
    const auto record = [](qsizetype length) {
        return ':' + QByteArray(length - 2, '0') + '\n' + QByteArray(100, '\xff');
    };
    QCOMPARE(encodingForTool(record(maxEncodingBytes)), ImageEncoding::IntelHex);
    QCOMPARE(encodingForTool(record(maxEncodingBytes + 1)), ImageEncoding::Raw);
    const auto lateMark = [](qsizetype at) { return QByteArray(at, '\n') + ":\n"; };
    QCOMPARE(encodingForTool(lateMark(maxEncodingBytes - 2)), ImageEncoding::IntelHex);
    QCOMPARE(encodingForTool(lateMark(maxEncodingBytes - 1)), ImageEncoding::Raw);
}

void TestImageEncoding::names_areTranslated() {
    QCOMPARE(nameOf(ImageEncoding::IntelHex), QStringLiteral("Intel HEX"));
    QCOMPARE(nameOf(ImageEncoding::SRecord), QStringLiteral("S-record"));
    Brackets brackets;
    QCoreApplication::installTranslator(&brackets);
    QCOMPARE(nameOf(ImageEncoding::IntelHex), QStringLiteral("[Intel HEX]"));
    QCOMPARE(nameOf(ImageEncoding::SRecord), QStringLiteral("[S-record]"));
    QCOMPARE(nameOf(ImageEncoding::Raw), QString());
    QCoreApplication::removeTranslator(&brackets);
}

// Memory that cannot be read lies behind the part that may be looked at.
void TestImageEncoding::aGibibyte_isNeitherReadNorCopied() {
    constexpr size_t size = size_t(1) << 30;
    void *memory =
        mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    QVERIFY(memory != MAP_FAILED);
    QCOMPARE(mprotect(memory, maxEncodingBytes, PROT_READ | PROT_WRITE), 0);
    auto *bytes = static_cast<char *>(memory);
    memset(bytes, '0', maxEncodingBytes);
    for (const char first : {':', 'S', '\n', '0'}) {
        bytes[0] = first;
        QCOMPARE(encodingForTool(QByteArrayView(bytes, qsizetype(size))), ImageEncoding::Raw);
    }
    munmap(memory, size);
}

QTEST_GUILESS_MAIN(TestImageEncoding)
#include "tst_image_encoding.moc"
