// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/CopyAhead.h"
#include "support/AddressSpaceLimit.h"

#include <QTest>

class TestCopyAhead : public QObject {
    Q_OBJECT

private slots:
    void sharedBytes_becomeTheImagesOwn();
    void finish_needsNoTurns();
    void finish_withoutABeginning_doesNothing();
    void smallImage_staysShared();
    void ownBytes_stayWhereTheyAre();
    void noImage_isNone();
    void changeMeanwhile_isKept();
    void otherImageMeanwhile_isTheOneCopied();
    void imageThatGoes_isForgotten();
    void changeThatDoesNotCome_leavesTheBytesShared();
    void smallImageNext_endsTheCopyOfTheOther();
    void noMemory_leavesTheBytesShared();
};

/// Bytes that tell where they are, and are no whole number of pieces.
static QByteArray pattern() {
    QByteArray bytes(CopyAhead::minSize + 12345, Qt::Uninitialized);
    for (qsizetype at = 0; at < bytes.size(); ++at)
        bytes[at] = char(at * 31 + at / 4099);
    return bytes;
}

/// An image that shares the bytes of a file.
struct Opened {
    explicit Opened(const QByteArray &bytes)
        : file(bytes), image(std::make_shared<QByteArray>(file)) {}

    bool isShared() const { return image->constData() == file.constData(); }

    QByteArray file;
    ByteBuffer image;
};

void TestCopyAhead::sharedBytes_becomeTheImagesOwn() {
    Opened opened(pattern());
    CopyAhead ahead;
    ahead.begin(opened.image);
    QVERIFY(opened.isShared()); // nothing is held up
    QTRY_VERIFY(!opened.isShared());
    QVERIFY(opened.image->isDetached());
    QCOMPARE(*opened.image, opened.file);
}

void TestCopyAhead::finish_needsNoTurns() {
    Opened opened(pattern());
    CopyAhead ahead;
    ahead.begin(opened.image);
    ahead.finish();
    QVERIFY(!opened.isShared());
    QVERIFY(opened.image->isDetached());
    QCOMPARE(*opened.image, opened.file);
}

void TestCopyAhead::finish_withoutABeginning_doesNothing() {
    CopyAhead().finish();
}

void TestCopyAhead::smallImage_staysShared() {
    Opened opened(QByteArray(CopyAhead::minSize - 1, 'x'));
    CopyAhead ahead;
    ahead.begin(opened.image);
    ahead.finish();
    QVERIFY(opened.isShared());
}

void TestCopyAhead::ownBytes_stayWhereTheyAre() {
    const auto image = std::make_shared<QByteArray>(pattern());
    const char *before = image->constData();
    CopyAhead ahead;
    ahead.begin(image);
    ahead.finish();
    QCOMPARE(image->constData(), before);
}

void TestCopyAhead::noImage_isNone() {
    CopyAhead ahead;
    ahead.begin({});
    ahead.finish();
}

void TestCopyAhead::changeMeanwhile_isKept() {
    Opened opened(pattern());
    CopyAhead ahead;
    ahead.begin(opened.image);
    (*opened.image)[7] = 'Z';
    const QByteArray changed = *opened.image;
    ahead.finish();
    QCOMPARE(*opened.image, changed);
}

void TestCopyAhead::otherImageMeanwhile_isTheOneCopied() {
    Opened first(pattern());
    Opened second(pattern());
    CopyAhead ahead;
    ahead.begin(first.image);
    ahead.begin(second.image);
    ahead.finish();
    QVERIFY(first.isShared());
    QVERIFY(!second.isShared());
    QCOMPARE(*second.image, second.file);
}

void TestCopyAhead::imageThatGoes_isForgotten() {
    Opened opened(pattern());
    CopyAhead ahead;
    ahead.begin(opened.image);
    opened.image.reset();
    ahead.finish();
    QVERIFY(opened.file.isDetached()); // nobody holds the bytes any more
}

void TestCopyAhead::changeThatDoesNotCome_leavesTheBytesShared() {
    Opened opened(pattern());
    CopyAhead ahead;
    ahead.begin(opened.image);
    ahead.giveUp();
    ahead.finish();
    QCoreApplication::processEvents();
    QVERIFY(opened.isShared());
}

void TestCopyAhead::smallImageNext_endsTheCopyOfTheOther() {
    Opened large(pattern());
    Opened small(QByteArray(5, 'x'));
    CopyAhead ahead;
    ahead.begin(large.image);
    ahead.begin(small.image);
    ahead.finish();
    QVERIFY(large.isShared());
}

void TestCopyAhead::noMemory_leavesTheBytesShared() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizers take all address space");
    // More than the allocator ever keeps of what was given back.
    Opened opened(QByteArray(qsizetype(40) << 20, 'x'));
    CopyAhead ahead;
    {
        const AddressSpaceLimit limit(1 << 20);
        ahead.begin(opened.image);
    }
    ahead.finish();
    QVERIFY(opened.isShared());
}

QTEST_GUILESS_MAIN(TestCopyAhead)
#include "tst_copyahead.moc"
