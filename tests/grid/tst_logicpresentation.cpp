// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridColumns.h"
#include "grid/GridPresentation.h"

#include <QTest>

class TestLogicPresentation : public QObject {
    Q_OBJECT

private slots:
    void table_data();
    void table();
    void field_data();
    void field();
    void unknownColumn_showsNothing();
    void rowsOfALongerReport_areDrawnAsBytes();
};

namespace {

/// What the logic test's tab shows. The bytes are those of another tab and never counted.
struct Shown {
    CellValue cell(const QString &column, qint64 row) const {
        return cellValue(content(), column, row);
    }

    ShownContent content() const {
        return {logicTabIdentifier(), display_data, strData, headers, results};
    }

    /// The rows as pictures: cells between bars, a failed one in brackets.
    QStringList rows() const {
        QStringList all;
        for (qint64 row = 0; row < qint64(rowCount(content())); ++row) {
            QStringList cells;
            for (int column = 0; column < gridColumns; ++column) {
                const CellValue value = cell(columnIdentifier(column), row);
                cells.append(value.failed ? u'[' + value.text + u']' : value.text);
            }
            all.append(cells.join(u'|'));
        }
        return all;
    }

    QStringList headers;
    QList<QStringList> results;
    ByteBuffer display_data = std::make_shared<QByteArray>(QByteArray(40, 'A'));
    DisplayText strData{display_data};
};

QStringList numbers(int count) {
    QStringList texts;
    for (int number = 1; number <= count; ++number)
        texts.append(QString::number(number));
    return texts;
}

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ');
}

} // namespace

void TestLogicPresentation::table_data() {
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QList<QStringList>>("results");
    QTest::addColumn<QStringList>("rows");
    using Results = QList<QStringList>;

    QTest::newRow("no results and no headers are one empty row")
        << QStringList() << Results() << QStringList{QString(17, u'|')};
    QTest::newRow("headers show as the numbers of their columns")
        << words("A B C") << Results() << QStringList{QStringLiteral("|1|2|3||||||||||||||")};
    QTest::newRow("17 headers fill the row")
        << numbers(17) << Results()
        << QStringList{QStringLiteral("|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17")};
    QTest::newRow("more headers than columns count no further")
        << numbers(40) << Results{numbers(41)}
        << QStringList{QStringLiteral("|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17"),
                       QStringLiteral("1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17|18")};
    QTest::newRow("a row with fewer fields than headers ends early")
        << words("A B C") << Results{words("0000: L")}
        << QStringList{QStringLiteral("|1|2|3||||||||||||||"),
                       QStringLiteral("0000:|L||||||||||||||||")};
    QTest::newRow("a row with more fields than headers shows none beyond them")
        << words("A B") << Results{words("0000: L H G V")}
        << QStringList{QStringLiteral("|1|2|||||||||||||||"),
                       QStringLiteral("0000:|L|H|||||||||||||||")};
    QTest::newRow("without headers only the first field shows")
        << QStringList() << Results{words("0000: L H")}
        << QStringList{QString(17, u'|'), QStringLiteral("0000:|||||||||||||||||")};
    QTest::newRow("a failed pin is marked")
        << words("A B")
        << Results{{QStringLiteral("0003:"), QStringLiteral("\x1b[0mH"),
                    QStringLiteral("\x1b[0;91mL-")}}
        << QStringList{QStringLiteral("|1|2|||||||||||||||"),
                       QStringLiteral("0003:|H|[L]|||||||||||||||")};
}

void TestLogicPresentation::table() {
    QFETCH(QStringList, headers);
    QFETCH(QList<QStringList>, results);
    QTEST((Shown{headers, results}.rows()), "rows");
}

void TestLogicPresentation::field_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("failed");
    const auto row = [](const char *name, const char *field, const char *text, bool failed) {
        QTest::newRow(name) << QString::fromLatin1(field) << QString::fromLatin1(text) << failed;
    };
    row("a field without marks stands as it is", "H-L", "H-L", false);
    row("an empty field is empty", "", "", false);
    row("red is cut before the minus sign", "\x1b[0;91mH-L", "H", true);
    row("red is cut before the first minus sign", "\x1b[0;91mH-L-Z", "H", true);
    row("red without a minus sign stays whole", "\x1b[0;91mHL", "HL", true);
    row("red that begins with a minus sign is empty", "\x1b[0;91m-L", "", true);
    row("a reset leaves what follows it", "\x1b[0mL", "L", false);
    row("a reset leaves a minus sign", "\x1b[0mL-H", "L-H", false);
    row("a reset at the end wins over red", "\x1b[0;91mH\x1b[0m", "", false);
    row("a reset before red wins too", "\x1b[0mH\x1b[0;91mL", "H\x1b[0;91mL", false);
    row("the first of two resets counts", "x\x1b[0mH\x1b[0mL", "H\x1b[0mL", false);
    row("the first of two reds counts", "x\x1b[0;91mH\x1b[0;91mL", "H\x1b[0;91mL", true);
    row("the escape character is not needed", "[0;91mH", "H", true);
    row("another colour is no mark", "\x1b[0;92mH", "\x1b[0;92mH", false);
}

void TestLogicPresentation::field() {
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(bool, failed);
    const Shown shown{words("A B C"), {{QStringLiteral("0000:"), field}}};
    QCOMPARE(shown.cell(QStringLiteral("1"), 1), (CellValue{text, failed}));
}

void TestLogicPresentation::unknownColumn_showsNothing() {
    const Shown shown{numbers(40), {numbers(41)}};
    QCOMPARE(shown.cell(QStringLiteral("18"), 1), CellValue());
    QCOMPARE(shown.cell(QStringLiteral("-1"), 1), CellValue());
}

void TestLogicPresentation::rowsOfALongerReport_areDrawnAsBytes() {
    const Shown shown{words("A"), {words("0000: L")}};
    QCOMPARE(shown.cell(QStringLiteral("0"), 2), CellValue({QStringLiteral("0020")}));
    QCOMPARE(shown.cell(QStringLiteral("1"), 2), CellValue({QStringLiteral("41")}));
    QCOMPARE(shown.cell(QStringLiteral("17"), 2), CellValue({QString(8, u'A')}));
}

QTEST_GUILESS_MAIN(TestLogicPresentation)
#include "tst_logicpresentation.moc"
