// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/CharacterPlaces.h"
#include "support/MarksDouble.h"
#include "support/ShownGrid.h"
#include "support/Themes.h"
#include "widgets/Palette.h"

#include <QHeaderView>

#include <map>

class TestGridPainting : public QObject {
    Q_OBJECT

private slots:
    void text_canBeReadInEveryTheme_data();
    void text_canBeReadInEveryTheme();
    void markedBytes_canBeReadInEveryTheme_data();
    void markedBytes_canBeReadInEveryTheme();
    void differingByte_isBold();
    void editedByte_isBoldInItsColour();
    void foundByte_isUnderlinedOnItsGround();
    void block_isHighlightedWithItsCharacters();
    void block_canBeReadInEveryTheme_data();
    void block_canBeReadInEveryTheme();
    void block_isSeenAroundMarks();
    void failedField_isBold();
    void cursor_isFramed();
    void units_keepTheirPlaces();
    void unitsWithoutAShape_getADot();
    void narrowColumn_keepsItsTextToItself();
    void hint_isShownWhileThereIsNothingElse();
};

namespace {

/// The picture of a cell without the line at its right edge.
QImage picture(GridView &view, const QModelIndex &index) {
    const QImage whole = view.viewport()->grab().toImage();
    return whole.copy(view.visualRect(index).adjusted(0, 0, -1, 0));
}

/// The colour that covers most of a picture.
QColor background(const QImage &picture) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    return QColor(std::max_element(counts.begin(), counts.end(), [](auto &one, auto &other) {
                      return one.second < other.second;
                  })->first);
}

/// The contrast of what stands out most from the background of a picture.
double contrastOf(const QImage &picture) {
    const QColor ground = background(picture);
    double most = 1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            most = std::max(most, contrastRatio(picture.pixelColor(x, y), ground));
    return most;
}

/// Number of pixels that differ from the background.
int ink(const QImage &picture) {
    const QColor ground = background(picture);
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) != ground;
    return count;
}

/// A report of two rows of results with a failed field in each.
void fillReport(GridSourceDouble &source) {
    const CellValue failed{QStringLiteral("H"), true};
    const CellValue passed{QStringLiteral("H")};
    source.report = {{{}, {QStringLiteral("1")}, {QStringLiteral("2")}},
                     {{QStringLiteral("0000:")}, failed, passed},
                     {{QStringLiteral("0001:")}, failed, passed}};
}

} // namespace

void TestGridPainting::text_canBeReadInEveryTheme_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
    QTest::newRow("grey") << greyPalette();
}

void TestGridPainting::text_canBeReadInEveryTheme() {
    QFETCH(QPalette, palette);
    ShownGrid grid("A");
    fillReport(grid.source);
    palette.setColor(QPalette::Highlight, QColor(Qt::blue).darker());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    grid.view.setPalette(palette);
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.setCursor(0, 5);
    grid.view.selectionModel()->select(grid.cell(2, 0), QItemSelectionModel::ClearAndSelect |
                                                            QItemSelectionModel::Rows);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            if (row > 0 || column > 0)
                QVERIFY2(contrastOf(picture(grid.view, grid.cell(row, column))) >=
                             smallestTextContrast,
                         qPrintable(QStringLiteral("%1,%2").arg(row).arg(column)));
}

void TestGridPainting::markedBytes_canBeReadInEveryTheme_data() {
    text_canBeReadInEveryTheme_data();
}

void TestGridPainting::markedBytes_canBeReadInEveryTheme() {
    QFETCH(QPalette, palette);
    MarksDouble marks;
    ShownGrid grid(QByteArray(32, 'A'));
    palette.setColor(QPalette::Highlight, QColor(Qt::blue).darker());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    grid.view.setPalette(palette);
    for (const int row : {0, 1}) {
        marks.marks[row * 16] = {.differs = true};
        marks.marks[row * 16 + 1] = {.found = true};
        marks.marks[row * 16 + 2] = {.differs = true, .found = true};
        marks.marks[row * 16 + 3] = {.edited = true};
    }
    grid.view.addMarks(marks);
    grid.setCursor(1, 9);
    for (int row = 0; row < 2; ++row)
        for (int column = 1; column <= 4; ++column) {
            const QImage cell = picture(grid.view, grid.cell(row, column));
            const QImage digits = cell.copy(cell.rect().adjusted(0, 0, 0, -2));
            QVERIFY2(contrastOf(digits) >= smallestTextContrast,
                     qPrintable(QStringLiteral("%1,%2").arg(row).arg(column)));
        }
}

void TestGridPainting::differingByte_isBold() {
    MarksDouble marks;
    ShownGrid grid("AA");
    marks.marks[0].differs = true;
    grid.view.addMarks(marks);
    grid.setCursor(0, 5);
    grid.view.clearSelection();
    QVERIFY(ink(picture(grid.view, grid.cell(0, 1))) > ink(picture(grid.view, grid.cell(0, 2))));
    marks.marks.clear();
    grid.view.refreshMarks();
    QCOMPARE(ink(picture(grid.view, grid.cell(0, 1))), ink(picture(grid.view, grid.cell(0, 2))));
}

void TestGridPainting::editedByte_isBoldInItsColour() {
    MarksDouble marks;
    ShownGrid grid("AAA");
    marks.marks[0].edited = true;
    marks.marks[1].differs = true;
    grid.view.addMarks(marks);
    grid.setCursor(0, 5);
    grid.view.clearSelection();
    const auto cell = [&](int column) { return picture(grid.view, grid.cell(0, column)); };
    const auto holds = [](const QImage &picture, const QColor &color) {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y) == color)
                    return true;
        return false;
    };
    QVERIFY(ink(cell(1)) > ink(cell(3)));
    QVERIFY(cell(1) != cell(2));
    QVERIFY(holds(cell(2), differenceTextColor(grid.view.palette())));
    QVERIFY(!holds(cell(1), differenceTextColor(grid.view.palette())));
    marks.marks[1].edited = true;
    const QImage both = cell(2);
    QVERIFY(holds(both, differenceTextColor(grid.view.palette())));
    marks.marks.clear();
    grid.view.refreshMarks();
    QCOMPARE(ink(cell(1)), ink(cell(3)));
}

void TestGridPainting::foundByte_isUnderlinedOnItsGround() {
    MarksDouble marks;
    ShownGrid grid("AA");
    marks.marks[0].found = true;
    grid.view.addMarks(marks);
    grid.setCursor(0, 5);
    const QPalette &palette = grid.view.palette();
    const QImage found = picture(grid.view, grid.cell(0, 1));
    QCOMPARE(background(found), foundGroundColor(palette));
    QCOMPARE(found.pixelColor(1, found.height() - 1), warningTextColor(palette));
    QVERIFY(picture(grid.view, grid.cell(0, 2)).pixelColor(1, found.height() - 1) !=
            warningTextColor(palette));
}

void TestGridPainting::block_isHighlightedWithItsCharacters() {
    ShownGrid grid(QByteArray(64, 'A'));
    grid.view.selection().select({20, 24});
    const QColor selected = grid.view.palette().color(QPalette::Highlight);
    const auto isHighlighted = [&](int row, int column) {
        return background(picture(grid.view, grid.cell(row, column))) == selected;
    };
    QVERIFY(!isHighlighted(1, 4) && isHighlighted(1, 6) && isHighlighted(1, 16));
    QVERIFY(!isHighlighted(1, 0) && !isHighlighted(2, 0));
    QVERIFY(isHighlighted(2, 1) && isHighlighted(2, 12) && !isHighlighted(2, 13));
    const CharacterPlaces places(grid.view.font());
    const QImage whole = grid.view.viewport()->grab().toImage();
    const auto isCharacterHighlighted = [&](int row, int place) {
        const QRect cell = grid.view.visualRect(grid.cell(row, charactersColumn));
        return background(whole.copy(places.rectOf(place, 1, cell))) == selected;
    };
    QVERIFY(!isCharacterHighlighted(1, 3) && isCharacterHighlighted(1, 4));
    QVERIFY(isCharacterHighlighted(2, 11) && !isCharacterHighlighted(2, 12));
    QVERIFY(!isCharacterHighlighted(0, 4) && !isCharacterHighlighted(3, 4));
}

void TestGridPainting::block_canBeReadInEveryTheme_data() {
    text_canBeReadInEveryTheme_data();
}

void TestGridPainting::block_canBeReadInEveryTheme() {
    QFETCH(QPalette, palette);
    ShownGrid grid(QByteArray(48, 'A'));
    palette.setColor(QPalette::Highlight, QColor(Qt::blue).darker());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    grid.view.setPalette(palette);
    grid.view.selection().select({18, 24});
    const CharacterPlaces places(grid.view.font());
    const QImage whole = grid.view.viewport()->grab().toImage();
    for (int place = 0; place < 16; ++place) {
        const QImage byte = picture(grid.view, grid.cell(1, 1 + place));
        const QRect characters = grid.view.visualRect(grid.cell(1, charactersColumn));
        const QImage character = whole.copy(places.rectOf(place, 1, characters));
        QVERIFY2(contrastOf(byte) >= smallestTextContrast, qPrintable(QString::number(place)));
        QVERIFY2(contrastOf(character) >= smallestTextContrast, qPrintable(QString::number(place)));
    }
}

// Where every byte stands out by a ground of its own, the block is still to be seen.
void TestGridPainting::block_isSeenAroundMarks() {
    MarksDouble marks;
    ShownGrid grid(QByteArray(32, 'A'));
    for (int byte = 0; byte < 32; ++byte)
        marks.marks[byte] = {byte % 2 == 0, byte % 2 == 1};
    grid.view.addMarks(marks);
    grid.view.selection().select({16, 4});
    const QColor selected = grid.view.palette().color(QPalette::Highlight);
    for (const int column : {2, 3, 4}) {
        const QImage inside = picture(grid.view, grid.cell(1, column));
        QCOMPARE(inside.pixelColor(inside.width() / 2, 0), selected);
        QCOMPARE(inside.pixelColor(inside.width() / 2, inside.height() - 1), selected);
        const QImage outside = picture(grid.view, grid.cell(1, column + 5));
        QVERIFY(outside.pixelColor(outside.width() / 2, 0) != selected);
    }
    const QColor ground = selectedGroundColor(grid.view.palette());
    QCOMPARE(background(picture(grid.view, grid.cell(1, 3))), ground);
    QVERIFY(background(picture(grid.view, grid.cell(1, 5))) != ground);
}

void TestGridPainting::failedField_isBold() {
    ShownGrid grid("A");
    fillReport(grid.source);
    grid.view.setHeading(GridHeading::Pins);
    grid.view.reloadData();
    grid.view.clearSelection();
    grid.view.setCurrentIndex(QModelIndex());
    // Colour left aside, there is more of it.
    QVERIFY(ink(picture(grid.view, grid.cell(1, 1))) > ink(picture(grid.view, grid.cell(1, 2))));
}

void TestGridPainting::cursor_isFramed() {
    ShownGrid grid(QByteArray(40, 'A'));
    grid.click(1, 4);
    const QColor highlight = grid.view.palette().color(QPalette::Highlight);
    const QImage cursor = picture(grid.view, grid.cell(1, 4));
    QCOMPARE(cursor.pixelColor(0, 0), highlight);
    QCOMPARE(background(cursor), grid.view.palette().color(QPalette::Base));
    QCOMPARE(background(picture(grid.view, grid.cell(1, 5))), highlight);
}

// A character of a row stands in the same place whatever stands before it.
void TestGridPainting::units_keepTheirPlaces() {
    const auto lastCharacter = [](const QByteArray &bytes) {
        ShownGrid grid(bytes);
        grid.setCursor(0, 0);
        const QImage image = picture(grid.view, grid.cell(0, 17));
        const double width = QFontMetricsF(grid.view.font()).horizontalAdvance(u'0');
        return image.copy(qRound(15.75 * width), 0, qRound(width), image.height());
    };
    const QImage plain = lastCharacter("AAAAAAAAAAAAAAAZ");
    QVERIFY(ink(plain) > 0);
    QCOMPARE(lastCharacter("\x01\x7f\x80\xad\xe9"
                           "AAAAAAAAAAZ"),
             plain);
}

void TestGridPainting::unitsWithoutAShape_getADot() {
    const auto inkOf = [](const QByteArray &bytes) {
        ShownGrid grid(bytes);
        grid.view.clearSelection();
        grid.setCursor(0, 0);
        grid.view.clearSelection();
        return ink(picture(grid.view, grid.cell(0, 17)));
    };
    QCOMPARE(inkOf("    "), 0);
    const int dot = inkOf("\x80");
    QVERIFY(dot > 0);
    QCOMPARE(inkOf("\x80\x9f\x7f\x01"), 4 * dot);
}

void TestGridPainting::narrowColumn_keepsItsTextToItself() {
    ShownGrid grid("ABCDEFGHIJKLMNOP");
    grid.view.clearSelection();
    grid.setCursor(1, 0);
    const QImage before = picture(grid.view, grid.cell(0, 2));
    grid.view.header()->resizeSection(1, grid.view.header()->minimumSectionSize());
    QCOMPARE(picture(grid.view, grid.cell(0, 2)), before);
}

void TestGridPainting::hint_isShownWhileThereIsNothingElse() {
    ShownGrid grid("");
    const auto below = [&grid] {
        const QImage whole = grid.view.viewport()->grab().toImage();
        return whole.copy(0, grid.view.rowHeight(), whole.width(),
                          whole.height() - grid.view.rowHeight());
    };
    QCOMPARE(ink(below()), 0);
    grid.view.hint().setText(QStringLiteral("Nothing here"));
    QVERIFY(ink(below()) > 0);
    QCOMPARE(grid.view.hint().shown(), QStringLiteral("Nothing here"));
    grid.source.bytes = "A";
    grid.view.reloadData();
    QCOMPARE(ink(below()), 0);
    QCOMPARE(grid.view.hint().shown(), QString());
}

QTEST_MAIN(TestGridPainting)
#include "tst_gridpainting.moc"
