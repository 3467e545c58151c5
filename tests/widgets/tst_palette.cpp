// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/Themes.h"
#include "widgets/Palette.h"

#include <QTest>

class TestPalette : public QObject {
    Q_OBJECT

private slots:
    void contrastRatio_data();
    void contrastRatio();
    void mixed_goesTheShareOfTheWay_data();
    void mixed_goesTheShareOfTheWay();
    void textColors_areReadable_data();
    void textColors_areReadable();
    void foundGround_leavesTextReadable_data();
    void foundGround_leavesTextReadable();
    void selectedGround_leavesTextReadable_data();
    void selectedGround_leavesTextReadable();
    void textColors_keepTheirHue_data();
    void textColors_keepTheirHue();
};

using TextColor = QColor (*)(const QPalette &);

static QString hueWord(const QColor &color) {
    const int hue = color.hue();
    if (hue < 15 || hue > 345)
        return QStringLiteral("red");
    if (hue > 25 && hue < 60)
        return QStringLiteral("amber");
    if (hue > 270 && hue < 310)
        return QStringLiteral("violet");
    return hue > 100 && hue < 160 ? QStringLiteral("green") : QStringLiteral("other");
}

void TestPalette::contrastRatio_data() {
    QTest::addColumn<QColor>("one");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<QString>("ratio");
    const auto row = [](const char *name, QRgb one, QRgb other, const char *ratio) {
        QTest::newRow(name) << QColor(one) << QColor(other) << QString::fromLatin1(ratio);
    };
    row("black on white", 0xff000000, 0xffffffff, "21.00");
    row("white on black", 0xffffffff, 0xff000000, "21.00");
    row("the same colour", 0xff336699, 0xff336699, "1.00");
    row("plain red on white is too faint", 0xffff0000, 0xffffffff, "4.00");
    row("mid grey on white", 0xff767676, 0xffffffff, "4.54");
}

void TestPalette::contrastRatio() {
    QFETCH(QColor, one);
    QFETCH(QColor, other);
    QTEST(QString::number(::contrastRatio(one, other), 'f', 2), "ratio");
}

void TestPalette::mixed_goesTheShareOfTheWay_data() {
    QTest::addColumn<double>("share");
    QTest::addColumn<QColor>("color");
    QTest::newRow("nothing") << 0.0 << QColor(0, 100, 255);
    QTest::newRow("a quarter") << 0.25 << QColor(50, 100, 192);
    QTest::newRow("all") << 1.0 << QColor(200, 100, 1);
}

void TestPalette::mixed_goesTheShareOfTheWay() {
    QFETCH(double, share);
    QTEST(mixed(QColor(0, 100, 255), QColor(200, 100, 1), share), "color");
}

static void addThemes() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
    QTest::newRow("black and white") << themePalette(Qt::black, Qt::black, Qt::black, Qt::white);
}

void TestPalette::textColors_areReadable_data() {
    addThemes();
    QTest::newRow("between light and dark") << greyPalette();
}

void TestPalette::textColors_areReadable() {
    QFETCH(QPalette, palette);
    for (const TextColor color :
         {failureTextColor, warningTextColor, successTextColor, differenceTextColor, faintMarkColor,
          textMarkColor, codeMarkColor, focusLineColor})
        for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::Window}) {
            const double ratio = ::contrastRatio(color(palette), palette.color(role));
            QVERIFY2(ratio >= 4.5,
                     qPrintable(QStringLiteral("%1 on %2: %3")
                                    .arg(color(palette).name(), palette.color(role).name())
                                    .arg(ratio)));
        }
}

void TestPalette::foundGround_leavesTextReadable_data() {
    addThemes();
}

void TestPalette::foundGround_leavesTextReadable() {
    QFETCH(QPalette, palette);
    const QColor ground = foundGroundColor(palette);
    QVERIFY(ground != palette.color(QPalette::Base));
    QVERIFY(::contrastRatio(ground, palette.color(QPalette::Text)) >= 4.5);
    QVERIFY(::contrastRatio(ground, differenceTextColor(palette)) >= 4.5);
}

void TestPalette::selectedGround_leavesTextReadable_data() {
    addThemes();
}

void TestPalette::selectedGround_leavesTextReadable() {
    QFETCH(QPalette, palette);
    const QColor ground = selectedGroundColor(palette);
    QVERIFY(ground != palette.color(QPalette::Base));
    for (const QColor &text :
         {palette.color(QPalette::Text), differenceTextColor(palette), failureTextColor(palette)})
        QVERIFY(::contrastRatio(ground, text) >= 4.5);
}

void TestPalette::textColors_keepTheirHue_data() {
    addThemes();
}

void TestPalette::textColors_keepTheirHue() {
    QFETCH(QPalette, palette);
    const QStringList words = {
        hueWord(failureTextColor(palette)), hueWord(warningTextColor(palette)),
        hueWord(successTextColor(palette)), hueWord(differenceTextColor(palette))};
    QCOMPARE(words, QStringList({QStringLiteral("red"), QStringLiteral("amber"),
                                 QStringLiteral("green"), QStringLiteral("violet")}));
}

QTEST_MAIN(TestPalette)
#include "tst_palette.moc"
