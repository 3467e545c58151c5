// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ShownImageReader.h"

#include "base/TurnOfWork.h"
#include "support/FactsAtOnce.h"

#include <QCryptographicHash>
#include <QTest>

/// Reading the facts of whatever image is shown, turn by turn.
class TestShownImageReader : public QObject {
    Q_OBJECT

private slots:
    void facts_areKnownAfterTheLastTurn();
    void sameImage_isNotReadAgain();
    void otherImage_isReadFromItsBeginning_data();
    void otherImage_isReadFromItsBeginning();
    void imageThatIsGone_isNotTheAbsentOne();
    void noImageIsKeptAlive();
    void sha256_isKnownAfterTheLastTurn();
    void sha256_isForgottenWithItsImage();
};

namespace {

constexpr qsizetype turnsOfLarge = 3;

ByteBuffer bufferOf(qsizetype size, char byte) {
    return std::make_shared<QByteArray>(size, byte);
}

ByteBuffer large(char byte = 'A') {
    return bufferOf(turnsOfLarge * maxBytesInTurn, byte);
}

void finish(ShownImageReader &reader, const ShownImage &image) {
    while (reader.readOn(image)) {
    }
}

QString sha256Of(const QByteArray &bytes) {
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

} // namespace

void TestShownImageReader::facts_areKnownAfterTheLastTurn() {
    const ShownImage image{.bytes = large(), .origin = {}};
    ShownImageReader reader;
    for (qsizetype turn = 1; turn < turnsOfLarge; ++turn) {
        QVERIFY(reader.readOn(image));
        QVERIFY(!reader.facts());
    }
    QVERIFY(!reader.readOn(image));
    QVERIFY(reader.facts() == factsOf(*image.bytes));
}

void TestShownImageReader::sameImage_isNotReadAgain() {
    const ShownImage image{.bytes = large(), .revision = 7, .origin = {}};
    ShownImageReader reader;
    finish(reader, image);
    // Whose bytes it says they are is no matter of the bytes.
    QVERIFY(!reader.readOn({.bytes = image.bytes, .revision = 7, .origin = QStringLiteral("x")}));
    QVERIFY(reader.facts() == factsOf(*image.bytes));
}

void TestShownImageReader::otherImage_isReadFromItsBeginning_data() {
    QTest::addColumn<bool>("isFinished");
    QTest::newRow("in the middle") << false;
    QTest::newRow("at the end") << true;
}

void TestShownImageReader::otherImage_isReadFromItsBeginning() {
    QFETCH(bool, isFinished);
    ShownImage image{.bytes = large(), .revision = 1, .origin = {}};
    ShownImageReader reader;
    reader.readOn(image);
    if (isFinished)
        finish(reader, image);
    (*image.bytes)[0] = 'B';
    image.revision = 2;
    QVERIFY(reader.readOn(image));
    QVERIFY(!reader.facts());
    finish(reader, image);
    QVERIFY(reader.facts() == factsOf(*image.bytes));

    image.bytes = bufferOf(10, 'C'); // another buffer with the same number
    QVERIFY(!reader.readOn(image));
    QVERIFY(reader.facts() == factsOf(*image.bytes));
}

void TestShownImageReader::imageThatIsGone_isNotTheAbsentOne() {
    ShownImageReader reader;
    finish(reader, {.bytes = bufferOf(10, 'A'), .origin = {}});
    QCOMPARE(reader.facts()->size, 10);
    finish(reader, {});
    QCOMPARE(reader.facts()->size, 0);
}

void TestShownImageReader::noImageIsKeptAlive() {
    ShownImage image{.bytes = large(), .origin = {}};
    ShownImageReader reader;
    reader.askForSha256(image);
    QVERIFY(reader.readOn(image));
    QVERIFY(reader.isReadingSha256());
    QCOMPARE(image.bytes.use_count(), 1L);
}

void TestShownImageReader::sha256_isKnownAfterTheLastTurn() {
    const ShownImage image{.bytes = large(), .origin = {}};
    ShownImageReader reader;
    finish(reader, image);
    QCOMPARE(reader.sha256(), QString());
    QVERIFY(!reader.isReadingSha256());
    reader.askForSha256(image);
    QVERIFY(reader.isReadingSha256());
    QVERIFY(reader.readOn(image));
    QCOMPARE(reader.sha256(), QString());
    finish(reader, image);
    QCOMPARE(reader.sha256(), sha256Of(*image.bytes));
    QVERIFY(!reader.isReadingSha256());
    QVERIFY(reader.facts() == factsOf(*image.bytes));
}

void TestShownImageReader::sha256_isForgottenWithItsImage() {
    ShownImage image{.bytes = bufferOf(10, 'A'), .origin = {}};
    ShownImageReader reader;
    finish(reader, image);
    reader.askForSha256(image);
    finish(reader, image);
    QCOMPARE(reader.sha256(), sha256Of(*image.bytes));
    image.revision = 1;
    finish(reader, image);
    QCOMPARE(reader.sha256(), QString());
    reader.askForSha256(image);
    image.revision = 2;
    finish(reader, image);
    QVERIFY(!reader.isReadingSha256());
}

QTEST_GUILESS_MAIN(TestShownImageReader)
#include "tst_shownimagereader.moc"
