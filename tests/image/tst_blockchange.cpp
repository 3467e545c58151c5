// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/BlockChange.h"
#include "image/EditedBytes.h"
#include "support/AddressSpaceLimit.h"

#include <QRandomGenerator>
#include <QTest>

#include <new>

/// What a change of a block makes of an image, and how it is taken back.
class TestBlockChange : public QObject {
    Q_OBJECT

private slots:
    void changes_data();
    void changes();
    void troubles_data();
    void troubles();
    void randomBytes_areThoseOfTheirSeed();
    void anImageThatIsShared_isNotChangedForTheOther();
    void withoutMemory_allIsAsItWas();
    void editedBytes_areThoseThatCame();
    void randomChanges_comeAndGoAsInAModel();
};

namespace {

BlockContent anything() {
    return RandomBytes{};
}

BlockContent repeated(const QByteArray &pattern) {
    return RepeatedBytes{pattern};
}

/// The same by the simplest means.
QByteArray modelOf(const QByteArray &image, const BlockChange &change) {
    QByteArray bytes;
    if (const auto *content = std::get_if<RepeatedBytes>(&change.content))
        for (qint64 i = 0; i < change.length; ++i)
            bytes += content->pattern.at(i % content->pattern.size());
    return image.first(change.offset) + bytes + image.mid(change.offset + change.replaced);
}

QByteArray editedModelOf(QByteArray marks, const BlockChange &change) {
    return marks.replace(change.offset, change.replaced, QByteArray(change.length, 'E'));
}

QByteArray marksOf(const EditedBytes &edited, qsizetype size) {
    QByteArray marks;
    for (qsizetype offset = 0; offset < size; ++offset)
        marks += edited.contains(offset) ? 'E' : '.';
    return marks;
}

BlockChange randomChange(QRandomGenerator &random, qint64 imageSize) {
    const qint64 offset = random.bounded(imageSize + 1);
    const QByteArray bytes(1 + random.bounded(9), char('a' + random.bounded(26)));
    switch (random.bounded(3)) {
    case 0: {
        const qint64 length = random.bounded(imageSize - offset + 1);
        if (length > 0)
            return fillOf({offset, length}, RepeatedBytes{"xyz"});
        [[fallthrough]];
    }
    case 1:
        return overwriteOf(offset, bytes, imageSize);
    default:
        return insertionOf(offset, bytes);
    }
}

} // namespace

void TestBlockChange::changes_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<BlockChange>("change");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QByteArray>("touched");
    const QByteArray ten = "0123456789";
    const auto row = [](const char *name, const QByteArray &image, const BlockChange &change,
                        const QByteArray &expected, const QByteArray &touched) {
        QTest::newRow(name) << image << change << expected << touched;
    };
    row("first byte", ten, fillOf({0, 1}, repeated("x")), "x123456789", "0+1");
    row("last byte", ten, fillOf({9, 1}, repeated("x")), "012345678x", "9+1");
    row("all with zero", ten, fillOf({0, 10}, repeated(QByteArray(1, '\0'))), QByteArray(10, '\0'),
        "0+10");
    row("a pattern, cut off", ten, fillOf({1, 8}, repeated("abc")), "0abcabcab9", "1+8");
    row("a pattern longer than the block", ten, fillOf({4, 2}, repeated("abcdef")), "0123ab6789",
        "4+2");
    row("the only byte", "0", fillOf({0, 1}, repeated("ab")), "a", "0+1");
    row("bytes over others", ten, overwriteOf(3, "abc", 10), "012abc6789", "3+3");
    row("bytes up to the end", ten, overwriteOf(7, "abc", 10), "0123456abc", "7+3");
    row("bytes past the end", ten, overwriteOf(8, "abcd", 10), "01234567abcd", "8+4");
    row("bytes behind the end", ten, overwriteOf(10, "ab", 10), "0123456789ab", "10+2");
    row("bytes where none were", "", overwriteOf(0, "ab", 0), "ab", "0+2");
    row("in front", ten, insertionOf(0, "ab"), "ab0123456789", "0+12");
    row("in the middle", ten, insertionOf(5, "ab"), "01234ab56789", "5+7");
    row("at the end", ten, insertionOf(10, "ab"), "0123456789ab", "10+2");
}

void TestBlockChange::changes() {
    QFETCH(QByteArray, image);
    QFETCH(const BlockChange, change);
    QFETCH(const QByteArray, expected);
    const QByteArray before = image;
    QVERIFY(canBeMade(change, image.size()));
    const ByteRange touched = touchedBy(change, image.size());
    QTEST(QByteArray::number(touched.offset) + '+' + QByteArray::number(touched.length), "touched");
    const QByteArray replaced = replacedBytes(image, change);
    for (int round = 0; round < 2; ++round) {
        makeChange(image, change);
        QCOMPARE(image, expected);
        takeBackChange(image, change, replaced);
        QCOMPARE(image, before);
    }
}

void TestBlockChange::troubles_data() {
    QTest::addColumn<BlockChange>("change");
    QTest::addColumn<qint64>("imageSize");
    QTest::addColumn<std::optional<BlockTrouble>>("trouble");
    const auto row = [](const char *name, const BlockChange &change, qint64 imageSize,
                        std::optional<BlockTrouble> trouble) {
        QTest::newRow(name) << change << imageSize << trouble;
    };
    const BlockContent x = repeated("x");
    row("all", fillOf({0, 10}, x), 10, std::nullopt);
    row("one too many", fillOf({0, 11}, x), 10, BlockTrouble::BehindEnd);
    row("behind the end", fillOf({11, 1}, x), 10, BlockTrouble::BehindEnd);
    row("before the start", fillOf({-1, 1}, x), 10, BlockTrouble::BehindEnd);
    row("none", fillOf({3, 0}, x), 10, BlockTrouble::NoBytes);
    row("an insertion of none", insertionOf(3, {}), 10, BlockTrouble::NoBytes);
    row("an insertion at the end", insertionOf(10, "x"), 10, std::nullopt);
    row("an insertion behind the end", insertionOf(11, "x"), 10, BlockTrouble::BehindEnd);
    row("none in an empty image", fillOf({0, 1}, x), 0, BlockTrouble::BehindEnd);
    row("up to the largest", insertionOf(0, "x"), largestImage - 1, std::nullopt);
    row("past the largest", insertionOf(0, "x"), largestImage, BlockTrouble::TooLarge);
    row("the largest over itself", fillOf({0, largestImage}, x), largestImage, std::nullopt);
}

void TestBlockChange::troubles() {
    QFETCH(const BlockChange, change);
    QFETCH(const qint64, imageSize);
    const auto possible = canBeMade(change, imageSize);
    QTEST(possible ? std::nullopt : std::optional(*possible.failure()), "trouble");
}

void TestBlockChange::randomBytes_areThoseOfTheirSeed() {
    const qint64 size = 10000;
    const auto filled = [](ByteRange where, quint32 seed) {
        QByteArray image(size, '\0');
        makeChange(image, fillOf(where, RandomBytes{seed}));
        return image;
    };
    const QByteArray all = filled({0, size}, 7);
    QCOMPARE(all, filled({0, size}, 7));
    QVERIFY(all != filled({0, size}, 8));
    QCOMPARE(filled({1, size - 3}, 7).mid(1, size - 3), all.first(size - 3));
    QCOMPARE(filled({1, size - 3}, 7).back(), '\0');
    for (int byte = 0; byte < 256; ++byte)
        QVERIFY(all.contains(char(byte)));
}

void TestBlockChange::anImageThatIsShared_isNotChangedForTheOther() {
    QByteArray image("0123456789");
    const QByteArray other = image;
    const BlockChange change = fillOf({0, 10}, repeated("ab"));
    const QByteArray replaced = replacedBytes(image, change);
    makeChange(image, change);
    QCOMPARE(other, QByteArray("0123456789"));
    QCOMPARE(replaced, QByteArray("0123456789"));
    const QByteArray changed = image;
    takeBackChange(image, change, replaced);
    QCOMPARE(changed, QByteArray("ababababab"));
    QCOMPARE(image, QByteArray("0123456789"));
}

void TestBlockChange::withoutMemory_allIsAsItWas() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    QByteArray image(qsizetype(128) << 20, 'x');
    image.squeeze();
    const char *place = image.constData();
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc,
                                 replacedBytes(image, fillOf({0, 100 << 20}, anything())));
        const QByteArray shared = image;
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, makeChange(image, fillOf({0, 1}, repeated("y"))));
    }
    QVERIFY(image.constData() == place);
    QCOMPARE(image.size(), qsizetype(128) << 20);
    QCOMPARE(image.front(), 'x');
}

void TestBlockChange::editedBytes_areThoseThatCame() {
    EditedBytes edited;
    QVERIFY(edited.isEmpty());
    edited.note(fillOf({2, 3}, repeated("x")));
    QCOMPARE(marksOf(edited, 8), QByteArray("..EEE..."));
    edited.note(insertionOf(3, "yz"));
    QCOMPARE(marksOf(edited, 10), QByteArray("..EEEEE..."));
    edited.note(insertionOf(1, "a"));
    QCOMPARE(marksOf(edited, 11), QByteArray(".E.EEEEE..."));
    edited.note(fillOf({2, 1}, repeated("x")));
    QCOMPARE(edited.ends().size(), std::size_t(1));
    QVERIFY(!edited.contains(-1));
}

void TestBlockChange::randomChanges_comeAndGoAsInAModel() {
    QRandomGenerator random(20);
    for (int round = 0; round < 200; ++round) {
        QByteArray image(random.bounded(40), '-');
        EditedBytes edited;
        QByteArray marks(image.size(), '.');
        QList<QByteArray> states{image};
        QList<std::pair<BlockChange, QByteArray>> made;
        for (int step = 0; step < 20; ++step) {
            const BlockChange change = randomChange(random, image.size());
            QVERIFY(canBeMade(change, image.size()));
            const QByteArray expected = modelOf(image, change);
            made.append({change, replacedBytes(image, change)});
            makeChange(image, change);
            QCOMPARE(image, expected);
            states.append(expected);
            edited.note(change);
            marks = editedModelOf(marks, change);
            QCOMPARE(marksOf(edited, image.size()), marks);
        }
        qint64 end = -1;
        for (const auto &[offset, next] : edited.ends()) {
            QVERIFY(offset > end && next > offset);
            end = next;
        }
        while (!made.isEmpty()) {
            const auto [change, replaced] = made.takeLast();
            takeBackChange(image, change, replaced);
            states.removeLast();
            QCOMPARE(image, states.last());
        }
    }
}

QTEST_GUILESS_MAIN(TestBlockChange)
#include "tst_blockchange.moc"
