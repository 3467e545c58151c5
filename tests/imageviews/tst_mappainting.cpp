// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/MapPainting.h"
#include "support/Themes.h"
#include "widgets/Palette.h"

#include <QImage>
#include <QPainter>
#include <QSet>
#include <QTest>

/// How the pieces of the map look, measured in the pixels.
class TestMapPainting : public QObject {
    Q_OBJECT

private slots:
    void looks_differInShade_data();
    void looks_differInShade();
    void looks_differInTexture();
    void looks_differInColour_data();
    void looks_differInColour();
    void everyMark_hasContrast_data();
    void everyMark_hasContrast();
    void unknownCells_areLeftAsTheyWere();
    void differingBar_leavesTheClassBesideIt_data();
    void differingBar_leavesTheClassBesideIt();
    void flatCells_differAsWell();
    void viewFrame_isSeenOnEveryLook_data();
    void viewFrame_isSeenOnEveryLook();
};

namespace {

constexpr int side = 24;
constexpr double leastMarkContrast = 4.5;
constexpr double leastShadeContrast = 1.15;

constexpr BlockClass classes[] = {BlockClass::Blank, BlockClass::Zero, BlockClass::Text,
                                  BlockClass::Code};

MapCell cellThat(std::optional<BlockClass> looks, bool differs = false) {
    return {0, side, 0, 1, looks, differs};
}

QImage painted(const MapCell &cell, const QPalette &palette, bool mirrored = false,
               int height = side) {
    QImage image(side, height, QImage::Format_RGB32);
    image.fill(palette.color(QPalette::Window));
    QPainter painter(&image);
    paintCell(painter, image.rect(), cell, palette, mirrored);
    return image;
}

QList<QColor> pixelsOf(const QImage &image) {
    QList<QColor> pixels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            pixels.append(image.pixelColor(x, y));
    return pixels;
}

/// What the eye gets from afar: the mean light of all pixels, from 0.05 to 1.05.
double shadeOf(const QImage &image) {
    double sum = 0;
    const QList<QColor> pixels = pixelsOf(image);
    for (const QColor &pixel : pixels)
        sum += 0.05 * contrastRatio(pixel, Qt::black);
    return sum / double(pixels.size());
}

/// The bar of what differs, without what is beside it.
QImage barOf(const QPalette &palette) {
    return painted(cellThat(BlockClass::Blank, true), palette).copy(0, 0, side / 4, side);
}

QList<QImage> allLooks(const QPalette &palette) {
    QList<QImage> looks;
    for (const BlockClass found : classes)
        looks.append(painted(cellThat(found), palette));
    looks.append(barOf(palette));
    return looks;
}

/// The colours that are drawn on the ground.
QList<QColor> inksOf(const QImage &image, const QPalette &palette) {
    QList<QColor> inks;
    for (const QColor &pixel : pixelsOf(image))
        if (pixel != palette.color(QPalette::Base) && !inks.contains(pixel))
            inks.append(pixel);
    return inks;
}

/// Where there is ink: a picture of each pixel.
QString textureOf(const QImage &image, const QPalette &palette) {
    QString picture;
    for (const QColor &pixel : pixelsOf(image))
        picture += pixel == palette.color(QPalette::Base) ? u'.' : u'#';
    return picture;
}

void addThemes() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
    QTest::newRow("black and white") << themePalette(Qt::black, Qt::black, Qt::black, Qt::white);
    QTest::newRow("white and black") << themePalette(Qt::white, Qt::white, Qt::white, Qt::black);
    QTest::newRow("between light and dark") << greyPalette();
}

} // namespace

void TestMapPainting::looks_differInShade_data() {
    addThemes();
}

void TestMapPainting::looks_differInShade() {
    QFETCH(QPalette, palette);
    QList<double> shades;
    for (const QImage &look : allLooks(palette))
        shades.append(shadeOf(look));
    std::sort(shades.begin(), shades.end());
    for (qsizetype i = 1; i < shades.size(); ++i)
        QVERIFY2(shades[i] / shades[i - 1] >= leastShadeContrast,
                 qPrintable(QStringLiteral("%1 and %2").arg(shades[i - 1]).arg(shades[i])));
}

void TestMapPainting::looks_differInTexture() {
    QSet<QString> textures;
    const QList<QImage> looks = allLooks(lightPalette());
    for (const QImage &look : looks)
        textures.insert(textureOf(look.copy(0, 0, side / 4, side), lightPalette()));
    QCOMPARE(textures.size(), looks.size());
}

void TestMapPainting::looks_differInColour_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
}

void TestMapPainting::looks_differInColour() {
    QFETCH(QPalette, palette);
    QList<QColor> inks;
    for (const QImage &look : allLooks(palette))
        for (const QColor &ink : inksOf(look, palette)) {
            QVERIFY2(!inks.contains(ink), qPrintable(ink.name()));
            inks.append(ink);
        }
    QCOMPARE(inks.size(), 4); // what is blank has none
}

void TestMapPainting::everyMark_hasContrast_data() {
    addThemes();
}

void TestMapPainting::everyMark_hasContrast() {
    QFETCH(QPalette, palette);
    for (const QImage &look : allLooks(palette))
        for (const QColor &ink : inksOf(look, palette)) {
            const double ratio = contrastRatio(ink, palette.color(QPalette::Base));
            QVERIFY2(ratio >= leastMarkContrast,
                     qPrintable(QStringLiteral("%1: %2").arg(ink.name()).arg(ratio)));
        }
}

void TestMapPainting::unknownCells_areLeftAsTheyWere() {
    const QPalette palette = lightPalette();
    QCOMPARE(inksOf(painted(cellThat(std::nullopt), palette), palette),
             QList<QColor>({palette.color(QPalette::Window)}));
}

void TestMapPainting::differingBar_leavesTheClassBesideIt_data() {
    QTest::addColumn<bool>("mirrored");
    QTest::newRow("left to right") << false;
    QTest::newRow("right to left") << true;
}

void TestMapPainting::differingBar_leavesTheClassBesideIt() {
    QFETCH(bool, mirrored);
    const QPalette palette = darkPalette();
    const QColor bar = differenceTextColor(palette);
    for (const BlockClass found : classes) {
        const QImage image = painted(cellThat(found, true), palette, mirrored);
        const QImage plain = painted(cellThat(found), palette);
        const QRect rest =
            mirrored ? QRect(0, 0, side / 2, side) : QRect(side / 2, 0, side / 2, side);
        QCOMPARE(image.copy(rest), plain.copy(rest));
        for (int y = 0; y < side; ++y) {
            const auto at = [&](int x) { return image.pixelColor(mirrored ? side - 1 - x : x, y); };
            QCOMPARE(at(0), bar);
            QCOMPARE(at(side / 3 - 1), bar);
            QCOMPARE(at(side / 3), palette.color(QPalette::Base));
        }
    }
}

// The least that a piece of the map is high.
void TestMapPainting::flatCells_differAsWell() {
    const QPalette palette = lightPalette();
    QList<QColor> inks;
    for (const BlockClass found : {BlockClass::Zero, BlockClass::Text, BlockClass::Code})
        inks += inksOf(painted(cellThat(found), palette, false, minCellHeight), palette);
    QCOMPARE(inks.size(), 3);
}

void TestMapPainting::viewFrame_isSeenOnEveryLook_data() {
    addThemes();
}

void TestMapPainting::viewFrame_isSeenOnEveryLook() {
    QFETCH(QPalette, palette);
    const QColor line = palette.color(QPalette::Text);
    const QColor halo = palette.color(QPalette::Base);
    QVERIFY(contrastRatio(line, halo) >= leastMarkContrast);
    for (const BlockClass found : classes) {
        QImage image = painted(cellThat(found, true), palette);
        QPainter painter(&image);
        paintViewFrame(painter, image.rect(), palette);
        painter.end();
        const int middle = image.height() / 2;
        QCOMPARE(image.pixelColor(0, middle), halo);
        QCOMPARE(image.pixelColor(1, middle), line);
        QCOMPARE(image.pixelColor(viewFrameWidth() - 2, middle), line);
        QCOMPARE(image.pixelColor(viewFrameWidth() - 1, middle), halo);
    }
}

QTEST_MAIN(TestMapPainting)
#include "tst_mappainting.moc"
