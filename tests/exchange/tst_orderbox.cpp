// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/OrderBox.h"

#include "exchange/LanePicture.h"
#include "support/Themes.h"
#include "widgets/Palette.h"

#include "ui_OrderBox.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

/// An order is asked for and drawn.
class TestOrderBox : public QObject {
    Q_OBJECT

private slots:
    void choices_makeTheArrangement();
    void lowByte_matters_whereChipsAreSplit();
    void chipSize_isOfferedWhereItIsKnown_data();
    void chipSize_isOfferedWhereItIsKnown();
    void anotherChip_takesItsPlace();
    void numberOfKib_hasDigitsAlone();
    void picture_isDescribed();
    void picture_showsAnotherOrder();
    void picture_readsFromLeftToRight();
    void picture_hasTheInkOfEachPart_data();
    void picture_hasTheInkOfEachPart();
};

namespace {

QImage painted(LanePicture &picture) {
    return picture.grab().toImage();
}

} // namespace

void TestOrderBox::choices_makeTheArrangement() {
    OrderBox box;
    box.setUp(OrderBox::Way::Split, {});
    QVERIFY(box.arrangement().changesNothing());
    const QSignalSpy changed(&box, &OrderBox::changed);
    Ui::OrderBox &c = box.controls();
    c.chips->setCurrentIndex(2);
    c.swap->setCurrentIndex(1);
    c.bits->setChecked(true);
    QTest::keyClicks(c.filled, QStringLiteral("6x4"));
    QCOMPARE(box.arrangement(), (Arrangement{{}, 2, true, {4, 1}, 65'536}));
    QCOMPARE(changed.size(), 5);
    c.chips->setCurrentIndex(3);
    c.swap->setCurrentIndex(2);
    QCOMPARE(box.arrangement(), (Arrangement{{}, 4, true, {2, 2}, 65'536}));
    OrderBox joining;
    joining.setUp(OrderBox::Way::Join, {});
    joining.controls().chips->setCurrentIndex(1);
    QCOMPARE(joining.arrangement(), (Arrangement{{2, 1}}));
}

void TestOrderBox::lowByte_matters_whereChipsAreSplit() {
    OrderBox joining;
    joining.setUp(OrderBox::Way::Join, {});
    QVERIFY(joining.controls().lowByte->isHidden());
    OrderBox box;
    box.setUp(OrderBox::Way::Split, {});
    QVERIFY(!box.controls().lowByte->isHidden());
    QVERIFY(!box.controls().lowByte->isEnabled());
    box.controls().chips->setCurrentIndex(1);
    QVERIFY(box.controls().lowByte->isEnabled());
    QVERIFY(!box.isLowByteLast());
    box.controls().lowByte->setCurrentIndex(1);
    QVERIFY(box.isLowByteLast());
}

void TestOrderBox::chipSize_isOfferedWhereItIsKnown_data() {
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("filled");
    QTest::newRow("known") << qint64(65'536) << QStringLiteral("64");
    QTest::newRow("not known") << qint64(0) << QString();
    QTest::newRow("no whole KiB") << qint64(512) << QString();
}

void TestOrderBox::chipSize_isOfferedWhereItIsKnown() {
    QFETCH(qint64, bytes);
    QFETCH(QString, filled);
    OrderBox box;
    box.setUp(OrderBox::Way::Join, {QStringLiteral("W27C512@DIP28"), bytes});
    QCOMPARE(box.controls().chipSize->isEnabled(), !filled.isEmpty());
    QTest::mouseClick(box.controls().chipSize, Qt::LeftButton);
    QCOMPARE(box.controls().filled->text(), filled);
    QCOMPARE(box.controls().chipSize->toolTip().contains(u"W27C512@DIP28"), !filled.isEmpty());
}

void TestOrderBox::anotherChip_takesItsPlace() {
    OrderBox box;
    box.setUp(OrderBox::Way::Join, {});
    box.setChip({QStringLiteral("27C256@DIP28"), 32'768});
    QTest::mouseClick(box.controls().chipSize, Qt::LeftButton);
    QCOMPARE(box.arrangement().filled, qint64(32'768));
    box.setChip({});
    QVERIFY(!box.controls().chipSize->isEnabled());
}

void TestOrderBox::numberOfKib_hasDigitsAlone() {
    OrderBox box;
    box.setUp(OrderBox::Way::Join, {});
    QTest::keyClicks(box.controls().filled, QStringLiteral("-1,0.2 4"));
    QCOMPARE(box.controls().filled->text(), QStringLiteral("1024"));
    QCOMPARE(box.arrangement().filled, qint64(1) << 20);
}

void TestOrderBox::picture_isDescribed() {
    OrderBox box;
    box.setUp(OrderBox::Way::Split, {});
    box.controls().chips->setCurrentIndex(1);
    QCOMPARE(box.controls().picture->accessibleDescription(),
             QStringLiteral("The image begins with the bytes 0 1 2 3 4 5 6 7. Of the parts, even "
                            "has 0 2 4 6; odd has 1 3 5 7."));
}

void TestOrderBox::picture_showsAnotherOrder() {
    LanePicture picture;
    picture.resize(picture.sizeHint());
    QList<QImage> seen;
    for (const Arrangement &arrangement :
         {Arrangement(), Arrangement{{}, 2}, Arrangement{{}, 4}, Arrangement{{}, 1, false, {2, 1}},
          Arrangement{{}, 1, false, {4, 1}}, Arrangement{{}, 1, false, {2, 2}},
          Arrangement{{2, 1}}}) {
        picture.setArrangement(arrangement, partNames(arrangement.split));
        const QImage now = painted(picture);
        QVERIFY(!seen.contains(now));
        seen.append(now);
    }
}

void TestOrderBox::picture_readsFromLeftToRight() {
    LanePicture picture;
    picture.resize(picture.sizeHint());
    picture.setArrangement({{}, 1, false, {2, 1}}, partNames({2, 1}));
    const QImage usual = painted(picture);
    picture.setLayoutDirection(Qt::RightToLeft);
    QCOMPARE(painted(picture), usual);
}

void TestOrderBox::picture_hasTheInkOfEachPart_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
    QTest::newRow("grey") << greyPalette();
}

void TestOrderBox::picture_hasTheInkOfEachPart() {
    QFETCH(QPalette, palette);
    LanePicture picture;
    picture.setPalette(palette);
    picture.resize(picture.sizeHint());
    picture.setArrangement({{}, 1, false, {4, 1}}, partNames({4, 1}));
    const QImage image = painted(picture);
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    for (const QColor &ink : {codeMarkColor(palette), warningTextColor(palette),
                              textMarkColor(palette), differenceTextColor(palette)})
        QVERIFY(colours.contains(ink.rgb()));
    QVERIFY(colours.contains(palette.color(QPalette::Text).rgb()));
}

QTEST_MAIN(TestOrderBox)
#include "tst_orderbox.moc"
