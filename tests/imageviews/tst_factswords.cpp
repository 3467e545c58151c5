// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/FactsWords.h"

#include "base/ShownName.h"
#include "image/BlockWords.h"
#include "support/FactsAtOnce.h"

#include <QTest>

/// What the facts line says of an image.
class TestFactsWords : public QObject {
    Q_OBJECT

private slots:
    void readOrigin_namesDeviceAndTime();
    void burnOrigin_data();
    void burnOrigin();
    void burnOrigin_saysHowTheFileIsByNow();
    void size_data();
    void size();
    void checksums_haveAllTheirDigits();
    void checksums_areLeftOpenUntilTheyAreKnown();
    void differences_data();
    void differences();
    void erasure_data();
    void erasure();
    void blankRemark_data();
    void blankRemark();
    void byte_data();
    void byte();
};

namespace {

constexpr int noSource = -1;

QString text(const char16_t *words) {
    return QStringView(words).toString();
}

} // namespace

void TestFactsWords::readOrigin_namesDeviceAndTime() {
    const QDateTime when(QDate(2026, 3, 4), QTime(9, 5));
    const QString device = QStringLiteral("W27C512@DIP28");
    QCOMPARE(readOriginWords(device, when, when.date()),
             QStringLiteral("W27C512@DIP28, read at 09:05"));
    QCOMPARE(readOriginWords(QStringLiteral("A%2"), when, when.date()),
             QStringLiteral("A%2, read at 09:05"));
    QCOMPARE(readOriginWords(QString(longestShownName + 1, u'x'), when, when.date()),
             QString(longestShownName, u'x') + QStringLiteral("\u2026, read at 09:05"));
    const QString dayAfter = readOriginWords(device, when, when.date().addDays(1));
    QVERIFY2(dayAfter.contains(QLocale().toString(when, QLocale::ShortFormat)),
             qPrintable(dayAfter));
}

void TestFactsWords::burnOrigin_data() {
    QTest::addColumn<int>("source");
    QTest::addColumn<int>("edits");
    QTest::addColumn<QString>("words");
    const int file = int(CompositionSource::OpenedBinary);
    const int chip = int(CompositionSource::ReadData);
    QTest::newRow("a file") << file << 0 << text(u"rom 1.bin");
    QTest::newRow("a file with an edit") << file << 1 << text(u"rom 1.bin, with 1 edit");
    QTest::newRow("a chip") << chip << 0 << text(u"data read from chip");
    QTest::newRow("a chip with edits")
        << chip << 1234 << text(u"data read from chip, with 1,234 edits");
    QTest::newRow("padding") << noSource << 0 << QString();
    QTest::newRow("padding with edits") << noSource << 2 << text(u"with 2 edits");
}

void TestFactsWords::burnOrigin() {
    QFETCH(int, source);
    QFETCH(int, edits);
    QFETCH(QString, words);
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(burnOriginWords(
                 source == noSource ? std::nullopt : std::optional(CompositionSource(source)),
                 QStringLiteral("/home/me/rom 1.bin"), OpenedFileWatch::State::AsOpened, edits),
             words);
    QLocale::setDefault(before);
}

void TestFactsWords::burnOrigin_saysHowTheFileIsByNow() {
    const auto origin = [](CompositionSource source, OpenedFileWatch::State onDisk) {
        return burnOriginWords(source, QStringLiteral("/a/%1.bin"), onDisk, 1);
    };
    QCOMPARE(origin(CompositionSource::OpenedBinary, OpenedFileWatch::State::Changed),
             QStringLiteral("%1.bin (changed on the disk since), with 1 edit"));
    QCOMPARE(origin(CompositionSource::OpenedBinary, OpenedFileWatch::State::Gone),
             QStringLiteral("%1.bin (no longer on the disk), with 1 edit"));
    QCOMPARE(origin(CompositionSource::ReadData, OpenedFileWatch::State::Changed),
             QStringLiteral("data read from chip, with 1 edit"));
}

void TestFactsWords::size_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("words");
    QTest::newRow("none") << qint64(0) << text(u"no bytes");
    QTest::newRow("one") << qint64(1) << text(u"1 byte");
    QTest::newRow("many") << (qint64(1) << 30)
                          << QLocale().toString(qint64(1) << 30) + text(u" bytes");
}

void TestFactsWords::size() {
    QFETCH(qint64, size);
    QFETCH(QString, words);
    QCOMPARE(sizeWords(size), words);
}

void TestFactsWords::checksums_haveAllTheirDigits() {
    QCOMPARE(checksumWords(ImageFacts{.size = 1, .crc32 = 0xABC, .sum = 0xF, .onlyByte = {}}),
             text(u"CRC-32 00000ABC, sum 000F"));
}

void TestFactsWords::checksums_areLeftOpenUntilTheyAreKnown() {
    QCOMPARE(checksumWords(std::nullopt), text(u"CRC-32 \u2026, sum \u2026"));
}

void TestFactsWords::differences_data() {
    QTest::addColumn<qint64>("bytes"); // -1: not known yet
    QTest::addColumn<qint64>("extra");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, qint64 bytes, qint64 extra, const char16_t *words) {
        QTest::newRow(name) << bytes << extra << text(words);
    };
    row("not known", -1, 0, u"\u2026 differences");
    row("none", 0, 0, u"no differences");
    row("one", 1, 0, u"1 difference");
    row("some", 1234, 0, u"1,234 differences");
    row("one longer", 0, 1, u"no differences, 1 byte longer");
    row("shorter", 2, -1024, u"2 differences, 1,024 bytes shorter");
}

void TestFactsWords::differences() {
    QFETCH(const qint64, bytes);
    QFETCH(const qint64, extra);
    QLocale::setDefault(QLocale(QLocale::English));
    std::optional<ImageDifferences> found;
    if (bytes >= 0)
        found = ImageDifferences{.bytes = bytes};
    QTEST(differenceWords(found, extra), "words");
}

void TestFactsWords::erasure_data() {
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("bits");
    QTest::addColumn<bool>("isWhole");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, qint64 bytes, qint64 bits, bool isWhole,
                        const char16_t *words) {
        QTest::newRow(name) << bytes << bits << isWhole << text(words);
    };
    row("nothing to burn", 0, 0, true, u"");
    row("bits only fall", 5, 0, true, u"can be burned on top");
    row("bits only fall, as far as is known", 5, 0, false, u"");
    row("a bit rises", 1, 1, true, u"needs erasing: 1 bit");
    row("bits rise, whatever is not known", 90, 113, false, u"needs erasing: 113 bits");
}

void TestFactsWords::erasure() {
    QFETCH(const qint64, bytes);
    QFETCH(const qint64, bits);
    QFETCH(const bool, isWhole);
    QTEST(erasureWords({.bytes = bytes, .bitsToErase = bits}, isWhole), "words");
}

void TestFactsWords::blankRemark_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<QString>("remark");
    QTest::newRow("read, all FF") << QByteArray(9, '\xFF') << true
                                  << text(u"all 0xFF: blank, or no contact?");
    QTest::newRow("read, all 00") << QByteArray(9, '\0') << true
                                  << text(u"all 0x00: blank, or no contact?");
    QTest::newRow("read, another byte") << QByteArray(9, 'A') << true << QString();
    QTest::newRow("read, nothing") << QByteArray() << true << QString();
    QTest::newRow("read, all but one FF") << QByteArray(9, '\xFF') + 'A' << true << QString();
    QTest::newRow("to burn, all FF") << QByteArray(9, '\xFF') << false << text(u"all 0xFF");
    QTest::newRow("to burn, data") << QByteArray("data") << false << QString();
}

void TestFactsWords::blankRemark() {
    QFETCH(QByteArray, image);
    QFETCH(bool, isRead);
    QFETCH(QString, remark);
    QCOMPARE(::blankRemark(factsOf(image), isRead), remark);
}

void TestFactsWords::byte_data() {
    QTest::addColumn<quint64>("address");
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, quint64 address, int byte, const char16_t *words) {
        QTest::newRow(name) << address << byte << text(words);
    };
    row("a letter", 0x10, 'A', u"at 0010: 0x41, 65, 0b01000001, \u201cA\u201d");
    row("the first that is seen", 0, '!', u"at 0000: 0x21, 33, 0b00100001, \u201c!\u201d");
    row("a per cent sign", 0, '%', u"at 0000: 0x25, 37, 0b00100101, \u201c%\u201d");
    row("the last that is seen", 0, '~', u"at 0000: 0x7E, 126, 0b01111110, \u201c~\u201d");
    row("a blank", 0, ' ', u"at 0000: 0x20, 32, 0b00100000");
    row("a control character", 0, 0x7F, u"at 0000: 0x7F, 127, 0b01111111");
    row("nothing", 0xABCDEF0, 0, u"at ABCDEF0: 0x00, 0, 0b00000000");
    row("beyond ASCII", 0xFFFF, 0xFF, u"at FFFF: 0xFF, 255, 0b11111111");
}

void TestFactsWords::byte() {
    QFETCH(quint64, address);
    QFETCH(int, byte);
    QFETCH(QString, words);
    QCOMPARE(byteWords(address, quint8(byte)), words);
}

QTEST_GUILESS_MAIN(TestFactsWords)
#include "tst_factswords.moc"
