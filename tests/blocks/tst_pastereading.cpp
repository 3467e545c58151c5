// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/PasteReading.h"
#include "support/AddressSpaceLimit.h"

#include <QTest>

/// Reading a copied text in turns of the event loop.
class TestPasteReading : public QObject {
    Q_OBJECT

private slots:
    void init();
    void shortText_isReadAtOnce();
    void longText_isReadInTurns();
    void anotherText_takesThePlaceOfTheFirst();
    void withoutMemory_thatIsTold();

private:
    std::unique_ptr<PasteReading> reading_;
    QList<QByteArray> read_;
    int troubles_ = 0;
    int outOfMemory_ = 0;
};

namespace {

constexpr qsizetype manyBytes = qsizetype(4) << 20;

QString longText(const char *byte) {
    return QString::fromLatin1(byte).repeated(manyBytes);
}

} // namespace

void TestPasteReading::init() {
    reading_ = std::make_unique<PasteReading>();
    read_.clear();
    troubles_ = 0;
    outOfMemory_ = 0;
    connect(reading_.get(), &PasteReading::finished, this, [this](const PastedText &text) {
        const auto bytes = text.result();
        read_.append(bytes ? *bytes : QByteArray());
        troubles_ += !bytes;
    });
    connect(reading_.get(), &PasteReading::outOfMemory, this, [this] { ++outOfMemory_; });
}

void TestPasteReading::shortText_isReadAtOnce() {
    reading_->read(QStringLiteral("61 62"), PastedText::As::Bytes);
    QCOMPARE(read_, QList<QByteArray>{"ab"});
    QVERIFY(!reading_->isReading());
    reading_->read(QStringLiteral("61 62"), PastedText::As::Characters);
    QCOMPARE(read_.last(), QByteArray("61 62"));
    reading_->read(QStringLiteral("x"), PastedText::As::Bytes);
    QCOMPARE(troubles_, 1);
}

void TestPasteReading::longText_isReadInTurns() {
    reading_->read(longText("61 "), PastedText::As::Bytes);
    QVERIFY(reading_->isReading());
    QVERIFY(read_.isEmpty());
    QTRY_COMPARE(read_.size(), 1);
    QCOMPARE(read_.first(), QByteArray(manyBytes, 'a'));
    QVERIFY(!reading_->isReading());
}

void TestPasteReading::anotherText_takesThePlaceOfTheFirst() {
    reading_->read(longText("61 "), PastedText::As::Bytes);
    QVERIFY(reading_->isReading());
    reading_->read(QStringLiteral("62"), PastedText::As::Bytes);
    QVERIFY(!reading_->isReading());
    QCoreApplication::processEvents();
    QCOMPARE(read_, QList<QByteArray>{"b"});
}

void TestPasteReading::withoutMemory_thatIsTold() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    const QString text = longText("61 ").repeated(16);
    const AddressSpaceLimit limit(rlim_t(16) << 20);
    reading_->read(text, PastedText::As::Bytes);
    QTRY_COMPARE_WITH_TIMEOUT(outOfMemory_, 1, 60000);
    QVERIFY(!reading_->isReading());
    QVERIFY(read_.isEmpty());
}

QTEST_GUILESS_MAIN(TestPasteReading)
#include "tst_pastereading.moc"
