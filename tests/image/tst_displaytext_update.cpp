// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/DisplayText.h"

#include <QTest>

#include <algorithm>
#include <iterator>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

ByteBuffer buffer(const QByteArray &bytes) {
    return std::make_shared<QByteArray>(bytes);
}

/// Some bytes take the place of others, which may be more or fewer.
struct Change {
    qsizetype offset = 0;
    qsizetype replaced = 0;
    QByteArray bytes;
};

/// A few bytes or many: others, more or fewer, in the middle or at the end.
Change anyChange(std::mt19937 &random, const QByteArray &bytes) {
    static const QByteArray pieces[] = {"a",    "\xe2\x82\xac", "\x82", "\xac",
                                        "\xff", "\xe2",         "ab",   ""};
    const auto upTo = [&random](qsizetype most) { return qsizetype(random() % size_t(most + 1)); };
    const qsizetype size = bytes.size();
    const qsizetype places[] = {0,    299'999,    300'000,   300'001,
                                size, 300'002,    size - 1,  upTo(size / 4096) * 4096 + upTo(8) - 4,
                                4096, upTo(size), upTo(size)};
    Change change;
    change.offset = std::clamp<qsizetype>(places[random() % std::size(places)], 0, size);
    change.bytes =
        pieces[random() % std::size(pieces)].repeated(random() % 8 == 0 ? upTo(10'000) : 1);
    const qsizetype gone = random() % 8 == 0 ? upTo(20'000) : change.bytes.size();
    change.replaced = std::min(gone, size - change.offset);
    return change;
}

/// What undoes \a change, which is about to be made.
Change takenBack(const Change &change, const QByteArray &bytes) {
    return {change.offset, change.bytes.size(), bytes.mid(change.offset, change.replaced)};
}

/// Gives what is to be told of it.
ByteRange carryOut(const Change &change, QByteArray &bytes) {
    const qsizetype before = bytes.size();
    const qsizetype offset = std::min(change.offset, before);
    const qsizetype replaced = std::min(change.replaced, before - offset);
    bytes.replace(offset, replaced, change.bytes);
    // By its length a buffer tells of its end.
    if (replaced == change.bytes.size() || offset + replaced == before)
        return {offset, change.bytes.size()};
    return {offset, std::max(before, bytes.size()) - offset};
}

/// Compares \a text, of \a bytes, with them decoded for the first time, around \a offset.
void compareWithAnew(const DisplayText &text, const ByteBuffer &bytes, qsizetype offset) {
    const DisplayText anew(bytes);
    QCOMPARE(text.length(), anew.length());
    QCOMPARE(text.byteLength(), anew.byteLength());
    QCOMPARE(text.isMultiByte(), anew.isMultiByte());
    const qsizetype from = std::max<qsizetype>(offset - 8, 0);
    QCOMPARE(text.units(from, 16), anew.units(from, 16));
}

/// Units that were not told to read otherwise are the same.
void compareOutside(ByteRange told, const QString &before, const QString &after) {
    QCOMPARE(before.first(std::min(before.size(), told.offset)),
             after.first(std::min(after.size(), told.offset)));
    QCOMPARE(before.mid(told.end()), after.mid(told.end()));
}

} // namespace

/// Text of an image that is edited.
class TestDisplayTextUpdate : public QObject {
    Q_OBJECT

private slots:
    void isWhatDecodingAnewGives_data();
    void isWhatDecodingAnewGives();
    void whereBlocksMeet();
    void looksOnlyAtWhatChanged_data();
    void looksOnlyAtWhatChanged();
    void tellsWhatReadsOtherwise();
    void ofAsManyCharactersTellsOnlyThose();
    void ofAnotherBufferDecodesIt();
};

void TestDisplayTextUpdate::isWhatDecodingAnewGives_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray letters(300'000, 'a');
    const QByteArray euro = "\xe2\x82\xac";
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("plain text") << letters;
    QTest::newRow("several bytes a character") << letters + euro + letters;
    QTest::newRow("several bytes each") << euro.repeated(100'000);
    QTest::newRow("a character cut short at the end") << letters + euro.first(2);
    QTest::newRow("a character cut short between others") << letters + euro.first(2) + letters;
    QTest::newRow("no text") << QByteArray(300'000, '\xff');
    QTest::newRow("no text in the middle") << letters + "\x80" + letters;
    QTest::newRow("text after a byte that is none") << "\xff" + letters;
}

// Edits of all kinds, most of them around the places where the meaning of a byte changes. Half of
// them are taken back, most in the order that they were made in.
void TestDisplayTextUpdate::isWhatDecodingAnewGives() {
    QFETCH(const QByteArray, bytes);
    std::mt19937 random(1);
    const auto edited = buffer(bytes);
    DisplayText text(edited);
    std::vector<Change> made;
    for (int step = 0; step < 1000; ++step) {
        const bool takesBack = !made.empty() && random() % 2 == 0;
        if (takesBack && random() % 8 == 0)
            std::swap(made.back(), made[random() % made.size()]);
        const Change change = takesBack ? made.back() : anyChange(random, *edited);
        if (takesBack)
            made.pop_back();
        else
            made.push_back(takenBack(change, *edited));
        text.update(edited, carryOut(change, *edited));
        compareWithAnew(text, edited, change.offset);
        if (step % 50 == 0)
            QVERIFY(text.units(0, edited->size()) == DisplayText(edited).units(0, edited->size()));
    }
}

// A character that belongs to two blocks is UTF-8 by the bytes of both.
void TestDisplayTextUpdate::whereBlocksMeet() {
    const QByteArray pieces[] = {"a",
                                 "\x82",
                                 "\xc3",
                                 "abc",
                                 "\xc3\xa9",
                                 "\xe2\x82\xad",
                                 "\xad\xe2\x82",
                                 "\x82\xad\xe2",
                                 "\xf0\x9f\x92\xbe"};
    const auto bytes = buffer(QByteArray("\xe2\x82\xac").repeated(4096));
    DisplayText text(bytes);
    for (qsizetype offset = 4088; offset < 4104; ++offset) {
        for (const QByteArray &piece : pieces) {
            const QByteArray before = bytes->mid(offset, piece.size());
            for (const QByteArray &now : {piece, before}) {
                const QString shown = text.units(0, text.length());
                bytes->replace(offset, now.size(), now);
                const ByteRange told = text.update(bytes, {offset, now.size()});
                compareWithAnew(text, bytes, 0);
                compareOutside(told, shown, text.units(0, text.length()));
            }
        }
        const QByteArray behind = bytes->mid(offset);
        bytes->truncate(offset);
        text.update(bytes, {0, 0});
        compareWithAnew(text, bytes, 0);
        bytes->append(behind);
        text.update(bytes, {0, 0});
        compareWithAnew(text, bytes, 0);
    }
}

void TestDisplayTextUpdate::looksOnlyAtWhatChanged_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray letters(300'000, 'a');
    QTest::newRow("plain text") << letters;
    QTest::newRow("zeros") << QByteArray(300'000, '\0');
    QTest::newRow("several bytes a character") << letters + "\xe2\x82\xac";
}

// Whoever looks at the other bytes again finds what was put there unsaid, which is no text.
void TestDisplayTextUpdate::looksOnlyAtWhatChanged() {
    QFETCH(const QByteArray, bytes);
    const auto edited = buffer(bytes);
    DisplayText text(edited);
    const qsizetype length = text.length();
    const bool isMultiByte = text.isMultiByte();
    edited->replace(150'000, 2, "\xff\xff");
    const auto set = [&](qsizetype offset, const QByteArray &piece) {
        edited->replace(offset, piece.size(), piece);
        text.update(edited, {offset, piece.size()});
    };
    set(10, "\x80");
    set(40'000, "\xff\xff");
    set(250'000, QByteArray(10'000, '\xff'));
    QCOMPARE(text.length(), bytes.size());
    set(250'000, bytes.mid(250'000, 10'000));
    set(10, bytes.mid(10, 1));
    QCOMPARE(text.length(), bytes.size());
    set(40'000, bytes.mid(40'000, 2));
    QCOMPARE(text.isMultiByte(), isMultiByte);
    QCOMPARE(text.length(), length);
    set(20, "\xc3\xa9");
    QVERIFY(text.isMultiByte());
    QCOMPARE(text.length(), length - 1);
}

void TestDisplayTextUpdate::tellsWhatReadsOtherwise() {
    const auto bytes = buffer("abc\x80");
    DisplayText text(bytes);
    const auto replaced = [&](qsizetype place, const char *piece) {
        bytes->replace(place, 1, piece, 1);
        const ByteRange range = text.update(bytes, {place, 1});
        return std::pair(range.offset, range.length);
    };
    const std::pair<qint64, qint64> all(0, 4);
    QCOMPARE(replaced(1, "x"), std::pair(qint64(1), qint64(1)));
    QCOMPARE(replaced(2, "\xc2"), all);
    QCOMPARE(replaced(1, "y"), all);
    QCOMPARE(replaced(2, "z"), all);
    QCOMPARE(replaced(0, "w"), std::pair(qint64(0), qint64(1)));
}

void TestDisplayTextUpdate::ofAsManyCharactersTellsOnlyThose() {
    const auto bytes = buffer(QByteArray("\xe2\x82\xac"
                                         "a")
                                  .repeated(100'000));
    DisplayText text(bytes);
    (*bytes)[200'003] = 'b';
    const ByteRange told = text.update(bytes, {200'003, 1});
    QVERIFY(told.offset > 90'000 && told.offset <= 100'001);
    QVERIFY(told.end() > 200'003 && told.end() < 200'020);
    bytes->replace(200'000, 4, "abcd");
    QCOMPARE(text.update(bytes, {200'000, 4}).length, 400'000);
}

void TestDisplayTextUpdate::ofAnotherBufferDecodesIt() {
    DisplayText text(buffer("abc"));
    text.update(buffer("\xe2\x82\xac"), {0, 0});
    QCOMPARE(text.units(0, 9), QString(QChar(0x20AC)));
    for (const char *character : {"\xe2\x82\xad", "\xe2\x82\xae"})
        QCOMPARE(text.update(buffer(QByteArray(character).repeated(4)), {0, 0}).length, 12);
    text.update(nullptr, {0, 0});
    QCOMPARE(text.length(), 0);
    text.update(nullptr, {0, 1});
    QCOMPARE(text.byteLength(), 0);
    const auto shrunk = buffer("abc");
    text.update(shrunk, {0, 3});
    shrunk->chop(1);
    text.update(shrunk, {2, 1});
    QCOMPARE(text.length(), 2);
}

QTEST_GUILESS_MAIN(TestDisplayTextUpdate)
#include "tst_displaytext_update.moc"
