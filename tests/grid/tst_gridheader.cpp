// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridColumns.h"
#include "grid/GridHeader.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QStandardItemModel>
#include <QTest>

#include <memory>

class TestGridHeader : public QObject {
    Q_OBJECT

private slots:
    void init();
    void columns_haveRoomForTheirText_data();
    void columns_haveRoomForTheirText();
    void columns_areNeverNarrowerThanAByte();
    void columns_followTheFont();
    void handle_givesBackTheWidth();
    void characters_takeWhatIsLeft();
    void emptyHeader_hasNothingToFill();
    void offset_bringsAColumnIntoView();

private:
    QStandardItemModel model{1, gridColumns};
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    std::unique_ptr<GridHeader> header;
};

void TestGridHeader::init() {
    header = std::make_unique<GridHeader>(nullptr);
    header->setCellFont(font);
    header->setModel(&model);
}

void TestGridHeader::columns_haveRoomForTheirText_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::newRow("address") << addressColumn << QStringLiteral("3FFFFFF0");
    QTest::newRow("first byte") << firstByteColumn << QStringLiteral("7E");
    QTest::newRow("last byte") << lastByteColumn << QStringLiteral("XX");
    QTest::newRow("characters") << charactersColumn << QStringLiteral("ABCDEFGHIJKLMNOP");
}

void TestGridHeader::columns_haveRoomForTheirText() {
    QFETCH(const int, column);
    QFETCH(const QString, text);
    const QFontMetrics metrics(font);
    const int width = header->sectionSize(column);
    QCOMPARE(width, header->neededWidth(column));
    QVERIFY(width > metrics.horizontalAdvance(text));
    QVERIFY(width < metrics.horizontalAdvance(text + QStringLiteral("00")));
}

void TestGridHeader::columns_areNeverNarrowerThanAByte() {
    header->resizeSection(firstByteColumn, 1);
    QCOMPARE(header->sectionSize(firstByteColumn),
             QFontMetrics(font).horizontalAdvance(QStringLiteral("00")));
}

void TestGridHeader::columns_followTheFont() {
    const int width = header->sectionSize(addressColumn);
    QFont larger = font;
    larger.setPointSize(2 * font.pointSize());
    header->setCellFont(larger);
    QVERIFY(header->sectionSize(addressColumn) > width);
    QCOMPARE(header->sectionSize(addressColumn), header->neededWidth(addressColumn));
}

void TestGridHeader::handle_givesBackTheWidth() {
    const int width = header->sectionSize(firstByteColumn);
    header->resizeSection(firstByteColumn, 3 * width);
    emit header->sectionHandleDoubleClicked(firstByteColumn);
    QCOMPARE(header->sectionSize(firstByteColumn), width);
}

void TestGridHeader::characters_takeWhatIsLeft() {
    const int needed = header->neededWidth(charactersColumn);
    const int others = header->length() - needed;
    header->fill(others + needed + 100);
    QCOMPARE(header->sectionSize(charactersColumn), needed + 100);
    header->fill(others);
    QCOMPARE(header->sectionSize(charactersColumn), needed);
}

void TestGridHeader::emptyHeader_hasNothingToFill() {
    GridHeader empty(nullptr);
    empty.fill(1000);
    QCOMPARE(empty.count(), 0);
    QCOMPARE(empty.length(), 0);
}

void TestGridHeader::offset_bringsAColumnIntoView() {
    const int width = header->sectionSize(firstByteColumn);
    const int second = header->sectionPosition(firstByteColumn + 1);
    header->resize(2 * width, header->height());
    header->setOffset(second);
    QCOMPARE(header->offsetFor(firstByteColumn + 1), second);
    QCOMPARE(header->offsetFor(firstByteColumn + 2), second);
    QCOMPARE(header->offsetFor(firstByteColumn + 3), second + width);
    QCOMPARE(header->offsetFor(firstByteColumn), second - width);
    const int characters = header->sectionPosition(charactersColumn); // wider than the view
    QCOMPARE(header->offsetFor(charactersColumn), characters);
    QCOMPARE(header->offsetFor(addressColumn), 0);
}

QTEST_MAIN(TestGridHeader)
#include "tst_gridheader.moc"
