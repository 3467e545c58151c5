#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"
#include "support/Bytes.h"

#include <QMimeData>
#include <QTest>
#include <QUrl>

namespace {

const QString escape = QStringLiteral("\x1b");

/// A content of its own, shown on one tab.
struct Content {
    explicit Content(const QByteArray &bytes, const QString &identifier = readTabIdentifier())
        : tab(identifier), buffer(std::make_shared<QByteArray>(bytes)), text(buffer) {}

    ShownContent shown() const { return {tab, buffer, text, headers, rows}; }

    /// A row as it is shown: its cells separated by single blanks.
    QString row(qint64 number) const {
        QStringList cells;
        for (int column = 0; column < gridColumns; ++column)
            cells.append(cellValue(shown(), QString::number(column), number).text);
        return cells.join(QLatin1Char(' '));
    }
    CellValue cell(int column, qint64 number) const {
        return cellValue(shown(), QString::number(column), number);
    }

    QString tab;
    ByteBuffer buffer;
    DisplayText text;
    QStringList headers;
    QList<QStringList> rows;
};

Content report(const QStringList &headers, const QList<QStringList> &rows) {
    Content content({}, logicTabIdentifier());
    content.headers = headers;
    content.rows = rows;
    return content;
}

QStringList numbers(int count) {
    QStringList all;
    for (int number = 1; number <= count; ++number)
        all.append(QString::number(number));
    return all;
}

} // namespace

class TestGridPresentation : public QObject {
    Q_OBJECT

private slots:
    void rowCount_alwaysHasARowThatIsNotFull_data();
    void rowCount_alwaysHasARowThatIsNotFull();
    void absentBuffer_readsAsEmpty();
    void rows_readAs_data();
    void rows_readAs();
    void everyByteValue_showsAsTwoDigits();
    void addresses_growBeyondFourDigits();
    void characters_ofTheModeForMostTexts();
    void characters_ofTheModeForHalfAsManyUnits();
    void characters_ofUnitsOutsideTheFirstPlane();
    void anyOtherTab_isBytes();
    void logic_withoutResultsHasTheHeaderRow();
    void logic_headersAreColumnNumbersUpToTheLastColumn();
    void logic_fields_data();
    void logic_fields();
    void logic_rowsOfAnyLength_data();
    void logic_rowsOfAnyLength();
    void logic_rowsBeyondTheReportReadAsBytes();
    void editing_isForTheDataToBurn();
    void drops_ofFilesAreGeneric();
};

void TestGridPresentation::rowCount_alwaysHasARowThatIsNotFull_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<quint64>("rows");
    QTest::newRow("no bytes") << 0 << quint64(1);
    QTest::newRow("15 bytes") << 15 << quint64(1);
    QTest::newRow("16 bytes") << 16 << quint64(2);
    QTest::newRow("17 bytes") << 17 << quint64(2);
    QTest::newRow("65,536 bytes") << 65536 << quint64(4097);
}

void TestGridPresentation::rowCount_alwaysHasARowThatIsNotFull() {
    QFETCH(int, bytes);
    QTEST(rowCount(Content(QByteArray(bytes, 'x')).shown()), "rows");
}

void TestGridPresentation::absentBuffer_readsAsEmpty() {
    Content content({});
    content.buffer = nullptr;
    content.text = DisplayText();
    QCOMPARE(rowCount(content.shown()), quint64(1));
    QCOMPARE(content.row(0),
             QStringLiteral("0000 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX "));
}

void TestGridPresentation::rows_readAs_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("picture");
    const QByteArray sixteen("0123456789ABCDEF");
    QTest::newRow("an empty buffer")
        << QByteArray("") << 0
        << QStringLiteral("0000 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX ");
    QTest::newRow("a full row") << sixteen << 0
                                << QStringLiteral("0000 30 31 32 33 34 35 36 37 38 39 41 42 43 "
                                                  "44 45 46 0123456789ABCDEF");
    QTest::newRow("the row behind a full one")
        << sixteen << 1 << QStringLiteral("0010 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX ");
    QTest::newRow("the seventeenth byte")
        << sixteen + 'x' << 1
        << QStringLiteral("0010 78 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX x");
    QTest::newRow("three bytes that are two characters")
        << QByteArray("\xC3\xA9\x41") << 0
        << QStringLiteral("0000 C3 A9 XX XX XX XX XX XX XX XX XX XX XX XX XX XX \u00e9A");
    QTest::newRow("a line feed and a letter")
        << QByteArray("\n\x41") << 0
        << QStringLiteral("0000 0A 41 XX XX XX XX XX XX XX XX XX XX XX XX XX XX  A");
}

void TestGridPresentation::rows_readAs() {
    QFETCH(QByteArray, bytes);
    QFETCH(int, row);
    QTEST(Content(bytes).row(row), "picture");
}

void TestGridPresentation::everyByteValue_showsAsTwoDigits() {
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(char(value));
    const Content content(all);
    for (int value = 0; value < 256; ++value)
        QCOMPARE(content.cell(value % bytesInRow + 1, value / bytesInRow).text,
                 QString::asprintf("%02X", unsigned(value)));
}

void TestGridPresentation::addresses_growBeyondFourDigits() {
    const Content content(QByteArray(65537, 'x'));
    QCOMPARE(content.cell(0, 4095).text, QStringLiteral("FFF0"));
    QCOMPARE(content.cell(0, 4096).text, QStringLiteral("10000"));
}

void TestGridPresentation::characters_ofTheModeForMostTexts() {
    QCOMPARE(Content("\x01\x1F\x20\x7F\x80\x85\xA0\xFF").cell(17, 0).text,
             QStringLiteral("   \x7F\u0080\u0085\u00A0\u00FF"));
}

void TestGridPresentation::characters_ofTheModeForHalfAsManyUnits() {
    // Six characters of two bytes each.
    const Content content(QStringLiteral("\u0085\u00e9\u0085\u00e8\u00e9\u00e9").toUtf8());
    QCOMPARE(content.cell(17, 0).text, QStringLiteral(" \u00e9 \u00e8\u00e9\u00e9"));
    // One of three bytes and one of one, which stays the control character that it is.
    const Content control(QByteArray("\xE2\x82\xAC\x01"));
    QCOMPARE(control.cell(17, 0).text, QStringLiteral("\u20ac\x01"));
    const Content feeds(QByteArray("\xE2\x80\xA8\n"));
    QCOMPARE(feeds.cell(17, 0).text, QStringLiteral("  "));
}

void TestGridPresentation::characters_ofUnitsOutsideTheFirstPlane() {
    const Content content(QByteArray("0123456789ABCDE\xF0\x9F\x98\x80x"));
    QCOMPARE(content.cell(17, 0).text, QStringLiteral("0123456789ABCDE") + QChar(0xD83D));
    QCOMPARE(content.cell(17, 1).text, QChar(0xDE00) + QStringLiteral("x"));
}

void TestGridPresentation::anyOtherTab_isBytes() {
    QCOMPARE(Content("A", QStringLiteral("7")).cell(1, 0).text, QStringLiteral("41"));
    QCOMPARE(Content("A", burnTabIdentifier()).cell(1, 0).text, QStringLiteral("41"));
}

void TestGridPresentation::logic_withoutResultsHasTheHeaderRow() {
    const Content content = report({}, {});
    QCOMPARE(rowCount(content.shown()), quint64(1));
    QCOMPARE(content.row(0), QString(17, QLatin1Char(' ')));
    QCOMPARE(report(numbers(3), {}).row(0), QStringLiteral(" 1 2 3") + QString(14, u' '));
}

void TestGridPresentation::logic_headersAreColumnNumbersUpToTheLastColumn() {
    // What the headers say is of no account, only how many there are.
    QCOMPARE(report({QStringLiteral("A"), QStringLiteral("B")}, {}).cell(2, 0).text,
             QStringLiteral("2"));
    QCOMPARE(report(numbers(40), {}).cell(17, 0).text, QStringLiteral("17"));
}

void TestGridPresentation::logic_fields_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("failed");
    const QString red = escape + QStringLiteral("[0;91m");
    const QString reset = escape + QStringLiteral("[0m");
    QTest::newRow("plain") << QStringLiteral("H") << QStringLiteral("H") << false;
    QTest::newRow("a reset in front")
        << reset + QStringLiteral("L") << QStringLiteral("L") << false;
    QTest::newRow("red, cut before the minus sign")
        << red + QStringLiteral("H-L") << QStringLiteral("H") << true;
    QTest::newRow("red without a minus sign")
        << red + QStringLiteral("Z") << QStringLiteral("Z") << true;
    QTest::newRow("red with nothing but a minus sign")
        << red + QStringLiteral("-") << QString() << true;
    QTest::newRow("both markers: the reset wins")
        << red + QStringLiteral("H") + reset << QString() << false;
    QTest::newRow("both markers the other way round")
        << reset + red + QStringLiteral("H-") << red + QStringLiteral("H-") << false;
    QTest::newRow("text before the marker is dropped")
        << QStringLiteral("x") + red + QStringLiteral("L- ") << QStringLiteral("L") << true;
    QTest::newRow("another colour")
        << QStringLiteral("[0;92mH") << QStringLiteral("[0;92mH") << false;
}

void TestGridPresentation::logic_fields() {
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(bool, failed);
    const Content content = report(numbers(2), {{QStringLiteral("0000:"), field}});
    QCOMPARE(content.cell(1, 1), (CellValue{text, failed}));
}

void TestGridPresentation::logic_rowsOfAnyLength_data() {
    QTest::addColumn<int>("headers");
    QTest::addColumn<int>("fields");
    QTest::addColumn<int>("shown");
    QTest::newRow("no field") << 14 << 0 << 0;
    QTest::newRow("fewer fields than headers") << 14 << 5 << 5;
    QTest::newRow("more fields than headers") << 3 << 10 << 4;
    QTest::newRow("more fields than columns") << 40 << 200 << 18;
    QTest::newRow("no headers") << 0 << 10 << 1;
}

void TestGridPresentation::logic_rowsOfAnyLength() {
    QFETCH(int, headers);
    QFETCH(int, fields);
    QFETCH(int, shown);
    const Content content = report(numbers(headers), {QStringList(fields, QStringLiteral("x"))});
    QString expected;
    for (int column = 0; column < gridColumns; ++column)
        expected +=
            QLatin1String(column == 0 ? "" : " ") + QLatin1String(column < shown ? "x" : "");
    QCOMPARE(content.row(1), expected);
}

void TestGridPresentation::logic_rowsBeyondTheReportReadAsBytes() {
    Content content = report(numbers(2), {});
    content.buffer = bufferOf("41");
    content.text = DisplayText(content.buffer);
    QCOMPARE(content.row(1),
             QStringLiteral("0010 XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX XX "));
}

void TestGridPresentation::editing_isForTheDataToBurn() {
    QCOMPARE(mayEdit(readTabIdentifier()), false);
    QCOMPARE(mayEdit(burnTabIdentifier()), true);
    QCOMPARE(mayEdit(logicTabIdentifier()), false);
    QCOMPARE(mayEdit(QStringLiteral("3")), false);
}

void TestGridPresentation::drops_ofFilesAreGeneric() {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/rom.bin"))});
    QMimeData text;
    text.setText(QStringLiteral("rom.bin"));
    QCOMPARE(dropOperation(&files), DragOperation::Generic);
    QCOMPARE(dropOperation(&text), DragOperation::None);
    QCOMPARE(dropOperation(nullptr), DragOperation::None);
}

QTEST_GUILESS_MAIN(TestGridPresentation)
#include "tst_gridpresentation.moc"
