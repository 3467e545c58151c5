// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/PackageView.h"

#include "support/Themes.h"
#include "widgets/Palette.h"

#include <QAccessible>
#include <QTest>

/// A chip drawn from above.
class TestPackageView : public QObject {
    Q_OBJECT

private slots:
    void states_haveTheColoursOfTheTheme_data();
    void states_haveTheColoursOfTheTheme();
    void pins_areCountedAroundTheChip();
    void marks_areNotColoursAlone();
    void counts_standBesideTheFailedPins();
    void picture_growsWithTheFont();
    void description_tellsWhatIsDrawn();
    void png_hasTheWholePicture();
};

namespace {

/// A chip of \a count pins in one state but for \a failed (its number; 0 for none).
PackagePicture chip(int count, PinState state, int failed = 0) {
    PackagePicture picture{QStringLiteral("7400, all vectors"), {}};
    for (int pin = 1; pin <= count; ++pin)
        picture.pins.append({pin, QChar(), pin == failed ? PinState::Failed : state});
    return picture;
}

/// Where \a image has \a color; an empty rectangle if nowhere.
QRect placeOf(const QImage &image, const QColor &color) {
    QRect place;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color)
                place |= QRect(x, y, 1, 1);
    return place;
}

QImage drawn(PackageView &view, const PackagePicture &picture, const QPalette &palette) {
    view.setPalette(palette);
    view.setPicture(picture, {});
    view.resize(view.sizeHint());
    return view.grab().toImage();
}

} // namespace

void TestPackageView::states_haveTheColoursOfTheTheme_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
}

void TestPackageView::states_haveTheColoursOfTheTheme() {
    QFETCH(QPalette, palette);
    PackageView view;
    const QColor red = failureTextColor(palette);
    const QColor green = successTextColor(palette);
    const QImage good = drawn(view, chip(14, PinState::Good), palette);
    QVERIFY(placeOf(good, red).isEmpty());
    QVERIFY(!placeOf(good, green).isEmpty());
    QCOMPARE(good.pixelColor(good.width() - 1, 0), palette.color(QPalette::Base));
    const QImage unchecked = drawn(view, chip(14, PinState::Unchecked, 3), palette);
    QVERIFY(!placeOf(unchecked, red).isEmpty());
    QVERIFY(placeOf(unchecked, green).isEmpty());
}

// Down on the left, up on the right.
void TestPackageView::pins_areCountedAroundTheChip() {
    constexpr int pins = 8;
    const QPalette palette = lightPalette();
    PackageView view;
    QList<QPoint> centres;
    for (int pin = 1; pin <= pins; ++pin)
        centres.append(placeOf(drawn(view, chip(pins, PinState::Good, pin), palette),
                               failureTextColor(palette))
                           .center());
    const int middle = view.width() / 2;
    for (int pin = 1; pin <= pins; ++pin)
        QCOMPARE(centres[pin - 1].x() < middle, pin <= pins / 2);
    for (int pin = 2; pin <= pins / 2; ++pin) {
        QVERIFY(centres[pin - 1].y() > centres[pin - 2].y());
        QVERIFY(centres[pins - pin].y() > centres[pins - pin + 1].y());
    }
}

void TestPackageView::marks_areNotColoursAlone() {
    QPalette palette = lightPalette();
    const QColor red = failureTextColor(palette);
    PackageView view;
    const QImage failed = drawn(view, chip(8, PinState::Failed), palette);
    const QImage good = drawn(view, chip(8, PinState::Good), palette);
    int differing = 0;
    for (int y = 0; y < failed.height(); ++y)
        for (int x = 0; x < failed.width() / 5; ++x)
            differing += (failed.pixelColor(x, y) == red) !=
                                 (good.pixelColor(x, y) == successTextColor(palette))
                             ? 1
                             : 0;
    QVERIFY(differing > 8);
}

// Pins 2 and 7 of eight face each other.
void TestPackageView::counts_standBesideTheFailedPins() {
    const QPalette palette = lightPalette();
    const QColor red = failureTextColor(palette);
    PackageView view;
    PackagePicture picture = chip(8, PinState::Good);
    picture.pins[1].state = picture.pins[6].state = PinState::Failed;
    const QRect single = placeOf(drawn(view, picture, palette), red);
    const int narrow = view.width();
    picture.plannedRuns = 100;
    const QRect signs = placeOf(drawn(view, picture, palette), red);
    QVERIFY(view.width() > narrow);
    QCOMPARE(signs.size(), single.size());
    picture.runs = 100;
    picture.failedRuns = {{2, 100}, {7, 100}};
    const QImage always = drawn(view, picture, palette);
    const QRect counts = placeOf(always, red);
    const int digits = view.fontMetrics().horizontalAdvance(QStringLiteral("100"));
    QVERIFY(counts.left() < signs.left() - digits);
    QVERIFY(counts.right() > signs.right() + digits);
    QVERIFY(counts.left() > 0 && counts.right() < view.width() - 1);
    picture.failedRuns = {{2, 20}, {7, 100}};
    QVERIFY(drawn(view, picture, palette) != always);
}

void TestPackageView::picture_growsWithTheFont() {
    PackageView view;
    view.setPicture(chip(40, PinState::Good), {});
    const QSize before = view.sizeHint();
    QVERIFY(before.height() > 20 * view.fontMetrics().height());
    QFont font = view.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    view.setFont(font);
    QVERIFY(view.sizeHint().width() > before.width() * 3 / 2);
    QVERIFY(view.sizeHint().height() > before.height() * 3 / 2);
    view.setPicture(chip(8, PinState::Good), {});
    QVERIFY(view.sizeHint().height() < before.height());
}

void TestPackageView::description_tellsWhatIsDrawn() {
    PackageView view;
    const auto description = [&view] {
        return QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Description);
    };
    view.setPicture(chip(14, PinState::Good), {});
    QCOMPARE(description(), QStringLiteral("7400, all vectors. No pin failed."));
    view.setPicture(chip(14, PinState::Failed), {QStringLiteral("One"), QStringLiteral("Two")});
    QCOMPARE(description(), QStringLiteral("7400, all vectors. One. Two."));
}

void TestPackageView::png_hasTheWholePicture() {
    PackageView view;
    view.setPalette(darkPalette());
    PackagePicture picture = chip(40, PinState::Good, 40);
    view.setPicture(picture, {});
    const QImage image = QImage::fromData(view.png(), "PNG");
    QVERIFY(image.height() >= 2 * view.sizeHint().height());
    QVERIFY(!placeOf(image, failureTextColor(darkPalette())).isEmpty());
    // A long caption is not shortened there.
    picture.caption = QString(100, u'W');
    view.setPicture(picture, {});
    const QImage wide = QImage::fromData(view.png(), "PNG");
    QVERIFY(wide.width() > 2 * view.fontMetrics().horizontalAdvance(picture.caption));
}

QTEST_MAIN(TestPackageView)
#include "tst_packageview.moc"
