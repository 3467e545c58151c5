// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "inspect/HitIndex.h"

#include <QTest>

/// Where a pattern hits, how often, and in what order.
class TestHitIndex : public QObject {
    Q_OBJECT

private slots:
    void hits_data();
    void hits();
    void hits_areFoundWhereverTheyBegin();
    void hits_ofEveryKindAreThoseOfAPlainSearch_data();
    void hits_ofEveryKindAreThoseOfAPlainSearch();
    void partOfHit_isEveryByteOfIt();
    void aTurn_countsNoMoreThanItMay();
    void answers_waitForWhatIsNotCounted();
    void change_isCountedAnew_data();
    void change_isCountedAnew();
    void anotherLength_isCountedAnew_data();
    void anotherLength_isCountedAnew();
};

namespace {

constexpr qsizetype block = HitIndex::blockSize;

BytePattern hex(const char *typed) {
    return *patternFromHex(QString::fromLatin1(typed));
}

QList<qsizetype> plainSearch(const QByteArray &image, const BytePattern &pattern) {
    QList<qsizetype> hits;
    for (qsizetype offset = 0; offset + pattern.size() <= image.size(); ++offset)
        if (!pattern.isEmpty() &&
            pattern.hits(reinterpret_cast<const uchar *>(image.data()) + offset))
            hits << offset;
    return hits;
}

void countAll(HitIndex &index, const QByteArray &image) {
    while (!index.advance(image, 1)) {
    }
}

QList<qsizetype> forwards(const HitIndex &index, const QByteArray &image) {
    QList<qsizetype> hits;
    HitAnswer answer = index.firstFrom(image, 0);
    for (; answer.kind == HitAnswer::Kind::Hit; answer = index.firstFrom(image, answer.offset + 1))
        hits << answer.offset;
    return hits;
}

QList<qsizetype> backwards(const HitIndex &index, const QByteArray &image) {
    QList<qsizetype> hits;
    HitAnswer answer = index.lastBefore(image, image.size());
    for (; answer.kind == HitAnswer::Kind::Hit; answer = index.lastBefore(image, answer.offset))
        hits.prepend(answer.offset);
    return hits;
}

void compareWithPlainSearch(const HitIndex &index, const QByteArray &image) {
    const QList<qsizetype> expected = plainSearch(image, index.pattern());
    QCOMPARE(index.total(), std::optional(expected.size()));
    QCOMPARE(forwards(index, image), expected);
    QCOMPARE(backwards(index, image), expected);
    for (qsizetype i = 0; i < expected.size(); i += 1 + i / 4)
        QCOMPARE(index.hitsBefore(image, expected[i]), i);
    QCOMPARE(index.hitsBefore(image, image.size()), expected.size());
}

/// Bytes of which few are alike, but of the values 0 to 3 alone: every short pattern hits often.
QByteArray noise(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = char(state >> 30);
    }
    return bytes;
}

} // namespace

void TestHitIndex::hits_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<qsizetype>>("expected");
    const auto row = [](const char *name, const QByteArray &image, const char *typed,
                        const QList<qsizetype> &expected) {
        QTest::newRow(name) << image << QString::fromLatin1(typed) << expected;
    };
    row("no bytes", QByteArray(), "41", {});
    row("no pattern", QByteArray("AAA"), "", {});
    row("an image that is shorter", QByteArray("AB"), "41 42 43", {});
    row("the whole image", QByteArray("ABC"), "41 42 43", {0});
    row("the first and the last byte", QByteArray("ABCA"), "41", {0, 3});
    row("hits that overlap", QByteArray("AAAA"), "41 41", {0, 1, 2});
    row("hits that overlap in part", QByteArray("ABABABA"), "41 42 41", {0, 2, 4});
    row("anything in between", QByteArray("A1BA2CA3B"), "41 ?? 42", {0, 6});
    row("anything before the end", QByteArray("xAA"), "?? 41", {0, 1});
    row("anything behind the end", QByteArray("xAA"), "41 ??", {1});
    row("half a byte", QByteArray("0123@A"), "3?", {0, 1, 2, 3});
    row("a hit that goes beyond the end", QByteArray("ABAB"), "41 42 41 42 41", {});
}

void TestHitIndex::hits() {
    QFETCH(QByteArray, image);
    QFETCH(QString, typed);
    QFETCH(QList<qsizetype>, expected);
    HitIndex index(hex(typed.toLatin1().constData()));
    countAll(index, image);
    QCOMPARE(forwards(index, image), expected);
    compareWithPlainSearch(index, image);
}

void TestHitIndex::hits_areFoundWhereverTheyBegin() {
    const QByteArray needle("needle");
    const BytePattern pattern = hex("6E 65 65 64 6C 65");
    const QByteArray blank(2 * block + 100, '\xFF');
    QList<qsizetype> places{0, 1, 127, 128, 129, blank.size() - needle.size()};
    for (qsizetype place = block - 8; place < block + 8; ++place)
        places << place;
    for (const qsizetype place : places) {
        QByteArray image = blank;
        image.replace(place, needle.size(), needle);
        HitIndex index(pattern);
        countAll(index, image);
        QCOMPARE(forwards(index, image), QList<qsizetype>{place});
        QCOMPARE(backwards(index, image), QList<qsizetype>{place});
        QCOMPARE(index.total(), std::optional<qsizetype>(1));
    }
}

void TestHitIndex::hits_ofEveryKindAreThoseOfAPlainSearch_data() {
    QTest::addColumn<QString>("typed");
    for (const char *typed :
         {"00", "?1", "00 01", "02 02", "00 ??", "?? 03", "01 02 03", "00 00 00 00", "01 ?? 02",
          "?? ?? ?? 01", "00 01 02 03 00 01", "?? ??", "?0 ?1 ?2 ?3 ?? ?0"})
        QTest::addRow("%s", typed) << QString::fromLatin1(typed);
}

void TestHitIndex::hits_ofEveryKindAreThoseOfAPlainSearch() {
    QFETCH(QString, typed);
    const BytePattern pattern = hex(typed.toLatin1().constData());
    const QByteArray large = noise(block + 200);
    for (const qsizetype size : {qsizetype(1), qsizetype(2), qsizetype(127), qsizetype(128),
                                 qsizetype(129), qsizetype(258), block, large.size()}) {
        const QByteArray image = large.first(size);
        HitIndex index(pattern);
        countAll(index, image);
        compareWithPlainSearch(index, image);
    }
}

void TestHitIndex::partOfHit_isEveryByteOfIt() {
    const QByteArray image("xABCABABCx");
    const auto marked = [&](const char *typed) {
        QString marks;
        for (qsizetype offset = 0; offset < image.size(); ++offset)
            marks += isPartOfHit(image, hex(typed), offset) ? u'^' : u'.';
        return marks;
    };
    QCOMPARE(marked("41 42 43"), QStringLiteral(".^^^..^^^."));
    QCOMPARE(marked("41 42 ?? 42"), QStringLiteral("....^^^^.."));
    QCOMPARE(marked("42 ?? 41 42"), QStringLiteral("..^^^^...."));
    QCOMPARE(marked("78"), QStringLiteral("^........^"));
    QCOMPARE(marked(""), QStringLiteral(".........."));
    QVERIFY(!isPartOfHit(image, hex("78"), image.size()));
    QVERIFY(!isPartOfHit(QByteArray(), hex("78"), 0));
}

void TestHitIndex::aTurn_countsNoMoreThanItMay() {
    const QByteArray image(3 * block + 1, 'A');
    HitIndex index(hex("41"));
    QVERIFY(!index.advance(image, 1));
    QVERIFY(!index.advance(image, 2));
    QCOMPARE(index.total(), std::nullopt);
    QVERIFY(index.advance(image, 1));
    QCOMPARE(index.total(), std::optional(image.size()));
    QVERIFY(index.advance(image, 1));
}

void TestHitIndex::answers_waitForWhatIsNotCounted() {
    QByteArray image(3 * block, '\0');
    image[5] = 'A';
    image[2 * block] = 'A';
    HitIndex index(hex("41"));
    const auto isNotYet = [](const HitAnswer &answer) {
        return answer.kind == HitAnswer::Kind::NotYet;
    };
    QVERIFY(isNotYet(index.firstFrom(image, 0)));
    QVERIFY(isNotYet(index.lastBefore(image, image.size())));
    QVERIFY(!index.advance(image, 1));
    QCOMPARE(index.firstFrom(image, 0).offset, qsizetype(5));
    QVERIFY(isNotYet(index.firstFrom(image, 6)));
    QCOMPARE(index.lastBefore(image, block).offset, qsizetype(5));
    QVERIFY(isNotYet(index.lastBefore(image, image.size())));
    countAll(index, image);
    QCOMPARE(index.firstFrom(image, 6).offset, 2 * block);
    QCOMPARE(index.firstFrom(image, 2 * block + 1).kind, HitAnswer::Kind::None);
    QCOMPARE(index.lastBefore(image, 5).kind, HitAnswer::Kind::None);
}

void TestHitIndex::change_isCountedAnew_data() {
    QTest::addColumn<qsizetype>("offset");
    for (const qsizetype offset :
         {qsizetype(0), qsizetype(5), block - 3, block - 1, block, block + 1, 3 * block - 3})
        QTest::addRow("%lld", qlonglong(offset)) << offset;
}

void TestHitIndex::change_isCountedAnew() {
    QFETCH(qsizetype, offset);
    QByteArray image = noise(3 * block);
    HitIndex index(hex("00 01 02"));
    countAll(index, image);
    for (const QByteArray &bytes : {QByteArray("\x00\x01\x02", 3), QByteArray("\x03\x03\x03", 3)}) {
        image.replace(offset, bytes.size(), bytes);
        index.forget(offset, offset + bytes.size());
        QCOMPARE(index.total(), std::nullopt);
        countAll(index, image);
        compareWithPlainSearch(index, image);
    }
    // The byte that has changed may be the last of a hit, or not yet.
    image.replace(offset, 2, QByteArray("\x00\x01", 2));
    index.forget(offset, offset + 2);
    for (const char last : {'\2', '\3'}) {
        image[offset + 2] = last;
        index.forget(offset + 2, offset + 3);
        countAll(index, image);
        compareWithPlainSearch(index, image);
    }
}

void TestHitIndex::anotherLength_isCountedAnew_data() {
    QTest::addColumn<qsizetype>("before");
    QTest::addColumn<qsizetype>("after");
    QTest::newRow("a byte more") << block << block + 1;
    QTest::newRow("a byte less") << block + 1 << block;
    QTest::newRow("a hit is completed") << 2 * block - 1 << 2 * block + 2;
    QTest::newRow("blocks more") << qsizetype(10) << 3 * block;
    QTest::newRow("blocks less") << 3 * block << qsizetype(10);
    QTest::newRow("none left") << 2 * block << qsizetype(0);
    QTest::newRow("some come") << qsizetype(0) << 2 * block;
}

void TestHitIndex::anotherLength_isCountedAnew() {
    QFETCH(qsizetype, before);
    QFETCH(qsizetype, after);
    const QByteArray image = noise(3 * block);
    HitIndex index(hex("?0 ?? ?1"));
    countAll(index, image.first(before));
    countAll(index, image.first(after));
    compareWithPlainSearch(index, image.first(after));
}

QTEST_GUILESS_MAIN(TestHitIndex)
#include "tst_hitindex.moc"
