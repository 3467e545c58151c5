// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/HandEdits.h"
#include "support/AddressSpaceLimit.h"
#include "support/CellOverwrite.h"

#include <QRandomGenerator>
#include <QTest>

#include <new>

/// Changes of blocks in the history of edits, beside those of cells.
class TestBlockEdits : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aChange_isOneStep();
    void aChangeThatChangesNothing_isNone();
    void changes_tellWhatTheyTouched();
    void editedBytes_followTheHistory();
    void editedBytes_comeBackWithTheirImage();
    void randomEdits_areTakenBackAndMadeAgain();
    void changeWithoutMemory_leavesAllAsItWas();
    void growingWithoutMemory_leavesAllAsItWas();
    void stepsWithoutMemory_leaveAllAsItWas();
    void oldestSteps_areForgotten();
    void whatIsLeftOfTheHistory_isTrue();
    void restoredImages_countAsKept();

private:
    void write(qint64 offset, const QByteArray &bytes) { overwrite(*edits_, offset, bytes); }
    std::optional<ByteRange> fill(qint64 offset, qint64 length, char byte);
    void compose(const QByteArray &bytes);
    QString marks() const;

    ByteBuffer image_;
    std::unique_ptr<HandEdits> edits_;
    quint64 revision_ = 0;
};

void TestBlockEdits::init() {
    edits_ = std::make_unique<HandEdits>(image_);
    compose("0123456789");
}

void TestBlockEdits::compose(const QByteArray &bytes) {
    edits_->keepReplaced();
    image_ = std::make_shared<QByteArray>(bytes);
    edits_->composed({.revision = ++revision_, .madeWith = {}});
}

std::optional<ByteRange> TestBlockEdits::fill(qint64 offset, qint64 length, char byte) {
    return edits_->change(fillOf({offset, length}, RepeatedBytes{QByteArray(1, byte)}),
                          QStringLiteral("fill"));
}

// A letter for each byte that is edited, a dot for each other.
QString TestBlockEdits::marks() const {
    QString marks;
    for (qint64 offset = 0; offset < image_->size(); ++offset)
        marks += edits_->edited().contains(offset) ? u'E' : u'.';
    return marks;
}

void TestBlockEdits::aChange_isOneStep() {
    fill(2, 4, 'x');
    edits_->change(insertionOf(1, "abc"), QStringLiteral("file"));
    QCOMPARE(*image_, QByteArray("0abc1xxxx6789"));
    QCOMPARE(edits_->state().edits, 2);
    QCOMPARE(edits_->history().count(), 2);
    QCOMPARE(edits_->history().undoText(), QStringLiteral("file"));
    const quint64 revision = edits_->state().revision;
    edits_->undo();
    QCOMPARE(*image_, QByteArray("01xxxx6789"));
    QCOMPARE(edits_->history().undoText(), QStringLiteral("fill"));
    edits_->undo();
    QCOMPARE(*image_, QByteArray("0123456789"));
    QCOMPARE(edits_->state().revision, revision_);
    edits_->redo();
    edits_->redo();
    QCOMPARE(*image_, QByteArray("0abc1xxxx6789"));
    QCOMPARE(edits_->state().revision, revision);
}

void TestBlockEdits::aChangeThatChangesNothing_isNone() {
    QVERIFY(!fill(3, 1, '3'));
    QVERIFY(!edits_->history().canUndo());
    QVERIFY(edits_->edited().isEmpty());
    QCOMPARE(edits_->state().revision, revision_);
    QVERIFY(fill(3, 2, '3'));
}

void TestBlockEdits::changes_tellWhatTheyTouched() {
    const auto words = [](const std::optional<ByteRange> &bytes) {
        return bytes ? QStringLiteral("%1+%2").arg(bytes->offset).arg(bytes->length) : QString();
    };
    QCOMPARE(words(edits_->change(insertionOf(4, "ab"), {})), QStringLiteral("4+8"));
    QCOMPARE(words(fill(1, 2, 'x')), QStringLiteral("1+2"));
    QCOMPARE(words(edits_->undo()), QStringLiteral("1+2"));
    QCOMPARE(words(edits_->undo()), QStringLiteral("4+8"));
    QCOMPARE(words(edits_->undo()), QString());
    QCOMPARE(words(edits_->redo()), QStringLiteral("4+8"));
}

void TestBlockEdits::editedBytes_followTheHistory() {
    QCOMPARE(marks(), QStringLiteral(".........."));
    write(1, "X");
    QCOMPARE(marks(), QStringLiteral(".E........"));
    fill(0, 4, 'y');
    QCOMPARE(marks(), QStringLiteral("EEEE......"));
    edits_->change(insertionOf(2, "ab"), {});
    write(11, "ZZ");
    QCOMPARE(marks(), QStringLiteral("EEEEEE.....EE"));
    edits_->undo();
    edits_->undo();
    QCOMPARE(marks(), QStringLiteral("EEEE......"));
    edits_->undo();
    QCOMPARE(marks(), QStringLiteral(".E........"));
    edits_->redo();
    edits_->redo();
    QCOMPARE(marks(), QStringLiteral("EEEEEE......"));
    compose("0123456789");
    QCOMPARE(marks(), QStringLiteral(".........."));
}

void TestBlockEdits::editedBytes_comeBackWithTheirImage() {
    fill(2, 3, 'x');
    compose("abcdefghij");
    write(9, "Z");
    edits_->restore();
    QCOMPARE(marks(), QStringLiteral("..EEE....."));
    write(0, "Y");
    QCOMPARE(marks(), QStringLiteral("E.EEE....."));
    edits_->undo();
    QCOMPARE(marks(), QStringLiteral("..EEE....."));
    edits_->undo();
    QCOMPARE(marks(), QStringLiteral(".........E"));
    edits_->redo();
    QCOMPARE(marks(), QStringLiteral("..EEE....."));
}

void TestBlockEdits::randomEdits_areTakenBackAndMadeAgain() {
    QRandomGenerator random(11);
    for (int round = 0; round < 50; ++round) {
        compose(QByteArray(1 + random.bounded(30), '-'));
        QList<QByteArray> states{*image_};
        QStringList marked{marks()};
        while (states.size() < 30) {
            const qint64 offset = random.bounded(image_->size());
            const qint64 length = 1 + random.bounded(image_->size() - offset);
            const QByteArray bytes(length, char('a' + random.bounded(26)));
            const quint64 before = edits_->state().revision;
            switch (random.bounded(4)) {
            case 0:
                edits_->change(fillOf({offset, length}, RandomBytes{random.generate()}), {});
                break;
            case 1:
                edits_->change(insertionOf(offset, bytes.first(1 + length / 4)), {});
                break;
            case 2:
                edits_->change(overwriteOf(image_->size() - 1, bytes, image_->size()), {});
                break;
            default:
                write(offset, bytes);
            }
            if (edits_->state().revision == before)
                continue;
            states.append(*image_);
            marked.append(marks());
        }
        for (qsizetype step = states.size() - 2; step >= 0; --step) {
            edits_->undo();
            QCOMPARE(*image_, states[step]);
            QCOMPARE(marks(), marked[step]);
        }
        QVERIFY(!edits_->history().canUndo());
        for (qsizetype step = 1; step < states.size(); ++step) {
            edits_->redo();
            QCOMPARE(*image_, states[step]);
            QCOMPARE(marks(), marked[step]);
        }
        QVERIFY(!edits_->history().canRedo());
    }
}

void TestBlockEdits::changeWithoutMemory_leavesAllAsItWas() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    compose(QByteArray(qsizetype(128) << 20, 'x'));
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, fill(0, 100 << 20, 'y'));
        const QByteArray shared = *image_;
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, fill(0, 1, 'y'));
    }
    QCOMPARE(image_->front(), 'x');
    QVERIFY(!edits_->history().canUndo());
    QVERIFY(edits_->edited().isEmpty());
    fill(0, 100 << 20, 'y');
    QCOMPARE(image_->front(), 'y');
}

void TestBlockEdits::growingWithoutMemory_leavesAllAsItWas() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    const qsizetype size = qsizetype(128) << 20;
    compose(QByteArray(size, 'x'));
    const QByteArray grown(qsizetype(64) << 20, 'y');
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, edits_->change(insertionOf(5, grown), {}));
    }
    QCOMPARE(image_->size(), size);
    QCOMPARE(image_->count('x'), size);
    QVERIFY(!edits_->history().canUndo());
    QVERIFY(edits_->edited().isEmpty());
    QCOMPARE(edits_->state().revision, revision_);
    QVERIFY(edits_->change(insertionOf(5, grown), {}));
    QCOMPARE(image_->size(), size + grown.size());
}

void TestBlockEdits::stepsWithoutMemory_leaveAllAsItWas() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    const qsizetype size = qsizetype(64) << 20;
    compose(QByteArray(size, 'x'));
    fill(1, 1, 'z');
    edits_->change(insertionOf(5, QByteArray(size, 'y')), {});
    const quint64 revision = edits_->state().revision;
    {
        const QByteArray shared = *image_;
        const AddressSpaceLimit limit(rlim_t(16) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, edits_->undo());
    }
    QCOMPARE(image_->size(), 2 * size);
    QCOMPARE(edits_->state().revision, revision);
    QVERIFY(edits_->edited().contains(6));
    QVERIFY(edits_->undo());
    QCOMPARE(image_->size(), size);
    {
        const QByteArray shared = *image_;
        const AddressSpaceLimit limit(rlim_t(16) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, edits_->redo());
    }
    QCOMPARE(image_->size(), size);
    QCOMPARE(edits_->state().edits, 1);
    QVERIFY(edits_->edited().contains(1) && !edits_->edited().contains(6));
    QVERIFY(edits_->redo());
    QCOMPARE(edits_->state().revision, revision);
}

// Each of these fills keeps the bytes that were there and the byte that it writes.
void TestBlockEdits::oldestSteps_areForgotten() {
    edits_ = std::make_unique<HandEdits>(image_, 12);
    compose("0123456789");
    fill(0, 5, 'a');
    fill(5, 5, 'b');
    QVERIFY(!edits_->hasForgotten());
    QCOMPARE(edits_->history().count(), 2);
    fill(0, 1, 'c');
    QVERIFY(edits_->hasForgotten());
    QCOMPARE(edits_->history().count(), 2);
    QCOMPARE(edits_->history().undoText(), QStringLiteral("fill"));
    fill(1, 1, 'd');
    QVERIFY(!edits_->hasForgotten());
    fill(0, 10, 'e');
    QVERIFY(edits_->hasForgotten());
    QCOMPARE(edits_->history().count(), 1);
    edits_->undo();
    QVERIFY(!edits_->hasForgotten());
    QCOMPARE(*image_, QByteArray("cdaaabbbbb"));
    QVERIFY(!edits_->history().canUndo());
}

void TestBlockEdits::whatIsLeftOfTheHistory_isTrue() {
    edits_ = std::make_unique<HandEdits>(image_, 12);
    compose("0123456789");
    fill(0, 5, 'a');
    const quint64 first = edits_->state().revision;
    fill(5, 2, 'b');
    fill(0, 6, 'c');
    const quint64 last = edits_->state().revision;
    QCOMPARE(edits_->state().edits, 3);
    QCOMPARE(edits_->unsaved().present, 3);
    edits_->undo();
    edits_->undo();
    QVERIFY(!edits_->undo());
    QCOMPARE(*image_, QByteArray("aaaaa56789"));
    QCOMPARE(edits_->state().revision, first);
    QCOMPARE(edits_->state().edits, 1);
    QCOMPARE(marks(), QStringLiteral("EEEEE....."));
    edits_->redo();
    QCOMPARE(marks(), QStringLiteral("EEEEEEE..."));
    edits_->redo();
    QCOMPARE(*image_, QByteArray("ccccccb789"));
    QCOMPARE(edits_->state().revision, last);
    compose("0123456789");
    QCOMPARE(marks(), QStringLiteral(".........."));
}

void TestBlockEdits::restoredImages_countAsKept() {
    edits_ = std::make_unique<HandEdits>(image_, 12);
    compose("0123456789");
    fill(2, 3, 'x');
    compose("abcdefghij");
    fill(0, 1, 'y');
    edits_->restore();
    QVERIFY(!edits_->hasForgotten());
    fill(0, 2, 'z');
    QVERIFY(edits_->hasForgotten());
    QCOMPARE(edits_->history().count(), 1);
    edits_->undo();
    QCOMPARE(*image_, QByteArray("01xxx56789"));
    QCOMPARE(marks(), QStringLiteral("..EEE....."));
    QCOMPARE(edits_->state().edits, 1);
}

QTEST_GUILESS_MAIN(TestBlockEdits)
#include "tst_blockedits.moc"
