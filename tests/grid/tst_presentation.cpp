// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "grid/ShownTab.h"

#include <QMimeData>
#include <QTest>
#include <QUrl>

class TestPresentation : public QObject {
    Q_OBJECT

private slots:
    void rowCount_data();
    void rowCount();
    void dump_data();
    void dump();
    void dump_showsEveryByteValue();
    void dump_isBoundedByTheText();
    void dump_ofAnUnknownTabOrColumnIsOfBytes();
    void dump_ofTextOfHalfTheLengthKeepsControls();
    void address_growsBeyondFourDigits();
    void tabs_areKnownByTheirIdentifiers();
    void drop_data();
    void drop();
};

namespace {

/// A buffer with its text, as a tab shows it.
struct Shown {
    explicit Shown(const QByteArray &bytes, QString tab = readTabIdentifier())
        : display_data(std::make_shared<QByteArray>(bytes)),
          strData(display_data),
          tabIdentifier(std::move(tab)) {}

    ShownContent content() const {
        return {tabIdentifier, display_data, strData, logictest_headers, logictest_rows};
    }

    CellValue cell(const QString &column, qint64 row) const {
        return cellValue(content(), column, row);
    }

    /// A row as a picture: address, bytes and characters between bars.
    QString row(qint64 number) const {
        QStringList bytes;
        for (int column = firstByteColumn; column <= lastByteColumn; ++column)
            bytes.append(cell(columnIdentifier(column), number).text);
        return cell(columnIdentifier(addressColumn), number).text + u' ' + bytes.join(u' ') +
               QStringLiteral(" |") + cell(columnIdentifier(charactersColumn), number).text + u'|';
    }

    QStringList rows() const {
        QStringList all;
        for (qint64 number = 0; number < qint64(rowCount(content())); ++number)
            all.append(row(number));
        return all;
    }

    ByteBuffer display_data;
    DisplayText strData;
    QString tabIdentifier;
    QStringList logictest_headers;
    QList<QStringList> logictest_rows;
};

} // namespace

void TestPresentation::rowCount_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<quint64>("rows");
    QTest::newRow("no byte has one row") << 0 << quint64(1);
    QTest::newRow("one byte has one row") << 1 << quint64(1);
    QTest::newRow("15 bytes have one row") << 15 << quint64(1);
    QTest::newRow("16 bytes have a row more") << 16 << quint64(2);
    QTest::newRow("17 bytes have two rows") << 17 << quint64(2);
    QTest::newRow("64 KiB have 4096 rows and one more") << 65536 << quint64(4097);
}

void TestPresentation::rowCount() {
    QFETCH(int, bytes);
    QTEST(::rowCount(Shown(QByteArray(bytes, 'A')).content()), "rows");
}

void TestPresentation::dump_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("rows");

    const auto emptyFrom = [](const QString &address) {
        return address + QStringLiteral(" XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX ||");
    };
    QTest::newRow("an empty buffer is one row of no bytes")
        << QByteArray() << QStringList{emptyFrom(QStringLiteral("0000"))};
    QTest::newRow("16 bytes are a full row and one of no bytes")
        << QByteArray("ABCDEFGHIJKLMNOP")
        << QStringList{
               QStringLiteral(
                   "0000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 |ABCDEFGHIJKLMNOP|"),
               emptyFrom(QStringLiteral("0010"))};
    QTest::newRow("the 17th byte begins a second row")
        << QByteArray("ABCDEFGHIJKLMNOPQ")
        << QStringList{
               QStringLiteral(
                   "0000 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 |ABCDEFGHIJKLMNOP|"),
               QStringLiteral("0010 51 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX |Q|")};
    QTest::newRow("a control character is a space")
        << QByteArray("A\n\x1f\x7f")
        << QStringList{
               QStringLiteral("0000 41 0A 1F 7F XX XX XX XX XX XX XX XX XX XX XX XX |A  \u007f|")};
    QTest::newRow("FF is unsigned and a character of Latin-1")
        << QByteArray("\xff\x80\x41", 3)
        << QStringList{QStringLiteral(
               "0000 FF 80 41 XX XX XX XX XX XX XX XX XX XX XX XX XX |\u00ff\u0080A|")};
    QTest::newRow("the bytes beyond the characters of UTF-8 are not shown")
        << QByteArray("\xc3\xa9\x41")
        << QStringList{
               QStringLiteral("0000 C3 A9 XX XX XX XX XX XX XX XX XX XX XX XX XX XX |\u00e9A|")};
    QTest::newRow("a pair of units takes two places")
        << QByteArray("\xf0\x9f\x98\x80\x41")
        << QStringList{QStringLiteral(
               "0000 F0 9F 98 XX XX XX XX XX XX XX XX XX XX XX XX XX |\U0001F600A|")};
}

void TestPresentation::dump() {
    QFETCH(QByteArray, bytes);
    QTEST(Shown(bytes).rows(), "rows");
    QTEST(Shown(bytes, burnTabIdentifier()).rows(), "rows");
}

void TestPresentation::dump_showsEveryByteValue() {
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(char(value));
    const Shown shown(bytes);
    for (int value = 0; value < 256; ++value) {
        const QString digits = QString::asprintf("%02X", unsigned(value));
        const QString column = columnIdentifier(value % bytesInRow + firstByteColumn);
        QCOMPARE(shown.cell(column, value / bytesInRow), CellValue({digits}));
        const QChar character = value < 32 ? u' ' : QChar(value);
        const QString characters = shown.cell(columnIdentifier(17), value / bytesInRow).text;
        QCOMPARE(characters.at(value % bytesInRow), character);
    }
}

void TestPresentation::dump_isBoundedByTheText() {
    Shown shown("ABCDEF");
    shown.strData = DisplayText(std::make_shared<QByteArray>("AB"));
    QCOMPARE(shown.rows(), QStringList{QStringLiteral(
                               "0000 41 42 XX XX XX XX XX XX XX XX XX XX XX XX XX XX |AB|")});
    shown.display_data.reset();
    QCOMPARE(shown.rows(), QStringList{QStringLiteral(
                               "0000 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX |AB|")});
    QCOMPARE(shown.row(3),
             QStringLiteral("0030 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX ||"));
}

void TestPresentation::dump_ofAnUnknownTabOrColumnIsOfBytes() {
    const Shown shown("ABCDEFGHIJKLMNOPQ", QStringLiteral("anything"));
    QCOMPARE(::rowCount(shown.content()), quint64(2));
    QCOMPARE(shown.cell(QStringLiteral("1"), 1), CellValue({QStringLiteral("51")}));
    // A column without a number stands where the address does, before the row's first byte.
    QCOMPARE(shown.cell(QStringLiteral("title"), 0),
             (CellValue{.text = QStringLiteral("XX"), .missing = true}));
    QCOMPARE(shown.cell(QStringLiteral("title"), 1), CellValue({QStringLiteral("50")}));
    QCOMPARE(shown.cell(QStringLiteral("1"), 1LL << 58),
             (CellValue{.text = QStringLiteral("XX"), .missing = true}));
}

// Text of half as many units as bytes: its controls are kept, only line breaks become spaces.
void TestPresentation::dump_ofTextOfHalfTheLengthKeepsControls() {
    const QByteArray breaks("\n\v\f\r\x01");
    // With the filler, 5 + 3 + 3 units of 5 + 8 + 9 bytes.
    const QByteArray separators("\xc2\x85\xe2\x80\xa8\xe2\x80\xa9");
    const QByteArray filler("\xe0\xa0\x80\xe0\xa0\x80\xe0\xa0\x80");
    const Shown shown(breaks + separators + filler);
    QCOMPARE(shown.strData.length(), lengthOf(shown.display_data) / 2);
    QCOMPARE(shown.cell(columnIdentifier(17), 0).text,
             QStringLiteral("    \u0001   \u0800\u0800\u0800"));

    const Shown longer(breaks + separators + filler + "zz");
    QVERIFY(longer.strData.length() != lengthOf(longer.display_data) / 2);
    QCOMPARE(longer.cell(columnIdentifier(17), 0).text,
             QStringLiteral("     \u0085\u2028\u2029\u0800\u0800\u0800zz"));
}

void TestPresentation::address_growsBeyondFourDigits() {
    const Shown shown(QByteArray(65537, 'A'));
    const auto address = [&](qint64 row) { return shown.cell(columnIdentifier(0), row).text; };
    QCOMPARE(address(4095), QStringLiteral("FFF0"));
    QCOMPARE(address(4096), QStringLiteral("10000"));
    QCOMPARE(address(67108864), QStringLiteral("40000000"));
}

void TestPresentation::tabs_areKnownByTheirIdentifiers() {
    QCOMPARE(tabOf(QStringLiteral("0")), ShownTab::Read);
    QCOMPARE(tabOf(QStringLiteral("1")), ShownTab::ToBurn);
    QCOMPARE(tabOf(QStringLiteral("2")), ShownTab::LogicTest);
    QCOMPARE(tabOf(QString()), ShownTab::None);
    QCOMPARE(tabOf(QStringLiteral("01")), ShownTab::None);
}

void TestPresentation::drop_data() {
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("operation");
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/tmp/image.bin"));
    const QUrl page(QStringLiteral("https://example.org/image.bin"));
    QTest::newRow("a file is generic") << QList<QUrl>{file} << QString() << 4;
    QTest::newRow("files with a text are generic")
        << QList<QUrl>{page, file} << QStringLiteral("image.bin") << 4;
    QTest::newRow("a plain text is refused")
        << QList<QUrl>() << QStringLiteral("/tmp/image.bin") << 0;
    QTest::newRow("an address of the web is refused") << QList<QUrl>{page} << QString() << 0;
    QTest::newRow("an empty drag is refused") << QList<QUrl>() << QString() << 0;
}

void TestPresentation::drop() {
    QFETCH(QList<QUrl>, urls);
    QFETCH(QString, text);
    QMimeData drag;
    if (!urls.isEmpty())
        drag.setUrls(urls);
    if (!text.isEmpty())
        drag.setText(text);
    QTEST(int(dropOperation(&drag)), "operation");
    QCOMPARE(dropOperation(nullptr), DragOperation::None);
}

QTEST_GUILESS_MAIN(TestPresentation)
#include "tst_presentation.moc"
