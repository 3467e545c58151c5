// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/KnownImage.h"

#include <QTest>

#include <memory>

class TestKnownImage : public QObject {
    Q_OBJECT

private slots:
    void image_isKnownByItselfAndItsState();
    void none_isKnownAsNone();
    void imageThatHasGone_isNoOther();
};

void TestKnownImage::image_isKnownByItselfAndItsState() {
    const auto image = std::make_shared<QByteArray>("abc");
    const auto equal = std::make_shared<QByteArray>("abc");
    const KnownImage known(image, 7);
    QVERIFY(known.is(image, 7));
    QVERIFY(!known.is(image, 8));
    QVERIFY(known.isOf(image));
    QVERIFY(!known.is(equal, 7));
    QVERIFY(!known.isOf(equal));
    QCOMPARE(known.bytes(), image);
}

void TestKnownImage::none_isKnownAsNone() {
    QVERIFY(KnownImage().is(nullptr, 0));
    QVERIFY(!KnownImage().isOf(std::make_shared<QByteArray>()));
    QVERIFY(!KnownImage().bytes());
}

void TestKnownImage::imageThatHasGone_isNoOther() {
    auto image = std::make_shared<QByteArray>("abc");
    const KnownImage known(image, 7);
    image.reset();
    QVERIFY(!known.bytes());
    QVERIFY(!known.isOf(nullptr));
    QVERIFY(!known.isOf(std::make_shared<QByteArray>("abc")));
}

QTEST_APPLESS_MAIN(TestKnownImage)
#include "tst_knownimage.moc"
