// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "process/OutputDecoder.h"

#include <QRandomGenerator>
#include <QTest>

class TestOutputDecoder : public QObject {
    Q_OBJECT

private slots:
    void decode_givesTheTextOfThePieces_data();
    void decode_givesTheTextOfThePieces();
    void decode_givesTheSameHoweverTheBytesAreCut();
    void decode_shownBytesStayPutWhenMoreArrive();
    void flush_makesTheDecoderAsNew();
    void decode_isFastOnMegabytesWithoutLineBreaks_data();
    void decode_isFastOnMegabytesWithoutLineBreaks();
};

namespace {

QString decodedInPieces(const QByteArrayList &pieces) {
    OutputDecoder decoder;
    QString text;
    for (const QByteArray &piece : pieces)
        text += decoder.decode(piece);
    return text + decoder.flush();
}

/// U+FFFD reads better as a question mark.
QString picture(QString text) {
    return text.replace(QChar(QChar::ReplacementCharacter), u'?');
}

} // namespace

void TestOutputDecoder::decode_givesTheTextOfThePieces_data() {
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArrayList &pieces, const QString &expected) {
        QTest::newRow(name) << pieces << expected;
    };
    row("nothing", {}, QString());
    row("an empty piece", {""}, QString());
    row("plain text", {"Chip ID: 0x1FDC  OK\n"}, QStringLiteral("Chip ID: 0x1FDC  OK\n"));
    row("control characters and escapes stay", {QByteArray("\0\r\x1b[K", 5)},
        QString::fromLatin1("\0\r\x1b[K", 5));
    row("two bytes cut in the middle", {"caf\xc3", "\xa9"}, QStringLiteral("caf\u00e9"));
    row("three bytes, each a piece", {"\xe2", "\x82", "\xac"}, QStringLiteral("\u20ac"));
    row("four bytes, each a piece", {"\xf0", "\x9f", "\x98", "\x80"}, QStringLiteral("\U0001F600"));
    row("a byte-order mark is a character", {"\xef\xbb\xbfx"}, QStringLiteral("\ufeffx"));
    row("a byte-order mark cut in two", {"\xef\xbb", "\xbfx"}, QStringLiteral("\ufeffx"));
    row("bytes that begin no character", {"a\xff\xfe\xc0\x80z"}, QStringLiteral("a????z"));
    row("a lone continuation", {"a\x80z"}, QStringLiteral("a?z"));
    row("a beginning that does not go on is one", {"\xe2\x82z"}, QStringLiteral("?z"));
    row("the same, cut", {"\xe2\x82", "z"}, QStringLiteral("?z"));
    row("a beginning at the end", {"z\xf0\x9f\x98"}, QStringLiteral("z?"));
    row("a beginning behind a beginning", {"\xe2\xe2\x82\xac"}, QStringLiteral("?\u20ac"));
    row("overlong forms", {"\xc1\xbf|\xe0\x80\x80|\xf0\x80\x80\x80"},
        QStringLiteral("??|???|????"));
    row("surrogates", {"\xed\xa0\x80"}, QStringLiteral("???"));
    row("beyond the last character", {"\xf4\x90\x80\x80"}, QStringLiteral("????"));
    row("the last character", {"\xf4\x8f\xbf\xbf"}, QStringLiteral("\U0010FFFF"));
    row("the last before and the first behind the surrogates", {"\xed\x9f\xbf\xee\x80\x80"},
        QStringLiteral("\ud7ff\ue000"));
}

void TestOutputDecoder::decode_givesTheTextOfThePieces() {
    QFETCH(QByteArrayList, pieces);
    QFETCH(QString, expected);
    QCOMPARE(picture(decodedInPieces(pieces)), expected);
}

void TestOutputDecoder::decode_givesTheSameHoweverTheBytesAreCut() {
    const QByteArray bytes =
        "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xff\xe2\x82q\xed\xa0\x80\xf0\x9f";
    const QString whole = decodedInPieces({bytes});
    QCOMPARE(picture(whole), QStringLiteral("a\u00e9\u20ac\U0001F600??q????"));
    for (qsizetype first = 0; first <= bytes.size(); ++first)
        for (qsizetype second = first; second <= bytes.size(); ++second)
            QCOMPARE(decodedInPieces({bytes.first(first), bytes.sliced(first, second - first),
                                      bytes.sliced(second)}),
                     whole);
}

void TestOutputDecoder::decode_shownBytesStayPutWhenMoreArrive() {
    OutputDecoder decoder;
    QCOMPARE(decoder.decode("x\xc3"), QStringLiteral("x"));
    QCOMPARE(decoder.decode(""), QString());
    QCOMPARE(decoder.decode("\xa9y"), QStringLiteral("\u00e9y"));
    QCOMPARE(decoder.flush(), QString());
}

void TestOutputDecoder::flush_makesTheDecoderAsNew() {
    OutputDecoder decoder;
    decoder.decode("\xe0");
    QCOMPARE(picture(decoder.flush()), QStringLiteral("?"));
    QCOMPARE(decoder.flush(), QString());
    QCOMPARE(decoder.decode("\xc2\x80"), QStringLiteral("\u0080"));
}

void TestOutputDecoder::decode_isFastOnMegabytesWithoutLineBreaks_data() {
    QTest::addColumn<QByteArray>("bytes");
    QByteArray noise(8 * 1024 * 1024, Qt::Uninitialized);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
    QTest::newRow("plain") << QByteArray(8 * 1024 * 1024, 'x');
    QTest::newRow("noise") << noise;
}

void TestOutputDecoder::decode_isFastOnMegabytesWithoutLineBreaks() {
    QFETCH(QByteArray, bytes);
    OutputDecoder decoder;
    qsizetype length = 0;
    QBENCHMARK_ONCE {
        length = decoder.decode(bytes).size();
    }
    QVERIFY(length > bytes.size() / 2);
}

QTEST_GUILESS_MAIN(TestOutputDecoder)
#include "tst_output_decoder.moc"
