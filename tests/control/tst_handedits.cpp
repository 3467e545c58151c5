// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/HandEdits.h"
#include "support/AddressSpaceLimit.h"
#include "support/CellOverwrite.h"

#include <QTest>

#include <new>

/// Which state of the image it is, and how many edits are in it, step by step.
class TestHandEdits : public QObject {
    Q_OBJECT

private slots:
    void init();
    void aRevision_comesBackWithItsBytes();
    void anotherEditInstead_isAnotherRevision();
    void anEntryThatChangesNothing_isNone();
    void composing_endsTheHistory();
    void restoring_bringsItsRevisionAndCount();
    void steps_tellTheirPlace();
    void unsavedEdits();
    void everyReplacedImage_canBeRestored();
    void editsThatARestoredImageReplaced_areKept();
    void restoredImage_isReplacedAgainOnceTakenBack();
    void imageWithoutEdits_isNotKeptWhenAnotherIsRestored();
    void composedImage_isNotARestoredOneWhenItIsBack();
    void replacedImages_areBoundedButForTheNewest();
    void replacedImages_areDroppedInTheOrderOfTheirEdits();
    void replacedImages_areDroppedWithoutAWordIfSaved();
    void replacedImages_areBoundedInBytesBesideTheNewest();
    void compositionOfTheSameBytes_replacesNothing();
    void compositionOfTheSameBytes_dropsNothing();
    void stepWithoutMemory_leavesAllAsItWas();

private:
    void write(qint64 offset, const QByteArray &bytes) { overwrite(*edits_, offset, bytes); }
    QString state() const;
    QString unsaved() const;
    /// The bytes of the replaced images, the one to be restored last.
    QString replaced() const;
    /// Has \a bytes composed in the place of the image.
    void compose(const QByteArray &bytes);
    /// Edits the image, and has another composed in its place.
    void replaceEdited();

    ByteBuffer image_;
    quint64 compositions_ = 1;
    std::unique_ptr<HandEdits> edits_;
};

void TestHandEdits::init() {
    image_ = std::make_shared<QByteArray>("abcdef");
    edits_ = std::make_unique<HandEdits>(image_);
    edits_->composed({.revision = 1, .madeWith = {}});
}

// "bytes, number of edits".
QString TestHandEdits::state() const {
    return QStringLiteral("%1, %2").arg(QString::fromLatin1(*image_),
                                        QString::number(edits_->state().edits));
}

// "of the image, of replaced ones".
QString TestHandEdits::unsaved() const {
    const HandEdits::Unsaved edits = edits_->unsaved();
    return QStringLiteral("%1 and %2")
        .arg(QString::number(edits.present), QString::number(edits.replaced));
}

QString TestHandEdits::replaced() const {
    QStringList images;
    for (const HandEdits::Replaced &replaced : edits_->replaced())
        images << QString::fromLatin1(*replaced.image);
    return images.join(u' ');
}

void TestHandEdits::compose(const QByteArray &bytes) {
    edits_->keepReplaced();
    image_ = std::make_shared<QByteArray>(bytes);
    edits_->composed({.revision = ++compositions_, .madeWith = {}});
}

void TestHandEdits::aRevision_comesBackWithItsBytes() {
    QHash<quint64, QByteArray> seen{{1, *image_}};
    const auto note = [&] {
        const quint64 revision = edits_->state().revision;
        if (!seen.contains(revision))
            seen.insert(revision, *image_);
        QCOMPARE(seen.value(revision), *image_);
    };
    write(0, "X");
    note();
    write(5, "YZ");
    note();
    QCOMPARE(seen.size(), 3);
    QCOMPARE(state(), QStringLiteral("XbcdeYZ, 2"));
    for (int back = 0; back < 3; ++back) {
        edits_->undo();
        note();
    }
    QCOMPARE(state(), QStringLiteral("abcdef, 0"));
    QCOMPARE(edits_->state().revision, quint64(1));
    edits_->redo();
    note();
    edits_->redo();
    note();
    QCOMPARE(state(), QStringLiteral("XbcdeYZ, 2"));
    QCOMPARE(seen.size(), 3);
}

void TestHandEdits::anotherEditInstead_isAnotherRevision() {
    write(0, "X");
    const quint64 first = edits_->state().revision;
    edits_->undo();
    write(0, "Y");
    QVERIFY(edits_->state().revision != first);
    QVERIFY(!edits_->history().canRedo());
}

void TestHandEdits::anEntryThatChangesNothing_isNone() {
    write(0, "a");
    QCOMPARE(edits_->state().revision, quint64(1));
    QVERIFY(!edits_->history().canUndo());
}

void TestHandEdits::composing_endsTheHistory() {
    write(0, "X");
    image_ = std::make_shared<QByteArray>("new");
    edits_->composed({.revision = 2, .madeWith = {}});
    edits_->undo();
    QCOMPARE(state(), QStringLiteral("new, 0"));
    QCOMPARE(edits_->state().revision, quint64(2));
}

void TestHandEdits::restoring_bringsItsRevisionAndCount() {
    write(0, "X");
    write(1, "Y");
    const quint64 revision = edits_->state().revision;
    edits_->keepReplaced();
    image_ = std::make_shared<QByteArray>("new");
    edits_->composed({.revision = 2, .madeWith = {}});
    write(0, "N");
    edits_->restore();
    QCOMPARE(state(), QStringLiteral("XYcdef, 2"));
    QCOMPARE(edits_->state().revision, revision);
    write(2, "Z");
    QCOMPARE(state(), QStringLiteral("XYZdef, 3"));
    edits_->undo();
    edits_->undo();
    QCOMPARE(state(), QStringLiteral("New, 1"));
    edits_->redo();
    edits_->redo();
    QCOMPARE(state(), QStringLiteral("XYZdef, 3"));
}

void TestHandEdits::steps_tellTheirPlace() {
    write(4, "XY");
    const auto isPlace = [](const std::optional<ByteRange> &bytes) {
        return bytes && bytes->offset == 4 && bytes->length == 2;
    };
    QVERIFY(isPlace(edits_->undo()));
    QVERIFY(!edits_->undo());
    QVERIFY(isPlace(edits_->redo()));
    QVERIFY(!edits_->redo());
}

void TestHandEdits::unsavedEdits() {
    QCOMPARE(unsaved(), QStringLiteral("0 and 0"));
    write(0, "X");
    QCOMPARE(unsaved(), QStringLiteral("1 and 0"));
    edits_->noteSaved();
    QCOMPARE(unsaved(), QStringLiteral("0 and 0"));
    write(0, "Y");
    QCOMPARE(unsaved(), QStringLiteral("2 and 0"));
    edits_->undo();
    QCOMPARE(unsaved(), QStringLiteral("0 and 0"));
    edits_->undo();
    QCOMPARE(unsaved(), QStringLiteral("0 and 0")); // as it was composed
    write(1, "Z");
    edits_->keepReplaced();
    image_ = std::make_shared<QByteArray>("new");
    edits_->composed({.revision = 2, .madeWith = {}});
    QCOMPARE(unsaved(), QStringLiteral("0 and 1"));
    write(0, "N");
    QCOMPARE(unsaved(), QStringLiteral("1 and 1"));
}

void TestHandEdits::everyReplacedImage_canBeRestored() {
    write(0, "X");
    compose("second");
    write(0, "Y");
    compose("third");
    compose("fourth"); // the third has no edits
    write(0, "Z");
    QStringList restored;
    for (int press = 0; press < 4; ++press) {
        edits_->restore();
        restored << state();
    }
    QCOMPARE(restored, QStringList({QStringLiteral("Yecond, 1"), QStringLiteral("Xbcdef, 1"),
                                    QStringLiteral("Zourth, 1"), QStringLiteral("Yecond, 1")}));
    while (edits_->history().canUndo())
        edits_->undo();
    QCOMPARE(state(), QStringLiteral("fourth, 0"));
    QCOMPARE(replaced(), QStringLiteral("Xbcdef Yecond"));
}

void TestHandEdits::editsThatARestoredImageReplaced_areKept() {
    write(0, "X");
    compose("second");
    write(0, "Y");
    edits_->restore();
    QCOMPARE(state(), QStringLiteral("Xbcdef, 1"));
    QCOMPARE(replaced(), QStringLiteral("Yecond"));
    edits_->noteSaved();
    QCOMPARE(unsaved(), QStringLiteral("0 and 1"));
    compose("third");
    QCOMPARE(replaced(), QStringLiteral("Yecond Xbcdef"));
    QCOMPARE(unsaved(), QStringLiteral("0 and 1"));
}

void TestHandEdits::restoredImage_isReplacedAgainOnceTakenBack() {
    write(0, "X");
    compose("second");
    write(0, "Y");
    edits_->restore();
    edits_->undo();
    QCOMPARE(replaced(), QStringLiteral("Xbcdef"));
    QCOMPARE(unsaved(), QStringLiteral("1 and 1"));
    edits_->redo();
    QCOMPARE(replaced(), QStringLiteral("Yecond"));
    edits_->undo();
    write(1, "Y"); // drops what could be made again
    edits_->restore();
    QCOMPARE(state(), QStringLiteral("Xbcdef, 1"));
    QCOMPARE(replaced(), QStringLiteral("YYcond"));
}

void TestHandEdits::imageWithoutEdits_isNotKeptWhenAnotherIsRestored() {
    write(0, "X");
    compose("second");
    edits_->restore();
    QCOMPARE(replaced(), QString());
    edits_->undo();
    QCOMPARE(replaced(), QStringLiteral("Xbcdef"));
    edits_->redo();
    QCOMPARE(replaced(), QString());
}

void TestHandEdits::composedImage_isNotARestoredOneWhenItIsBack() {
    write(0, "X");
    compose("second");
    write(0, "Y");
    edits_->restore();
    QVERIFY(edits_->state().isRestored);
    edits_->restore();
    QCOMPARE(state(), QStringLiteral("Yecond, 1"));
    QVERIFY(!edits_->state().isRestored);
    edits_->restore();
    QVERIFY(edits_->state().isRestored);
}

void TestHandEdits::replaceEdited() {
    write(0, "z");
    compose("abcdef");
}

void TestHandEdits::replacedImages_areBoundedButForTheNewest() {
    for (qsizetype image = 0; image < HandEdits::maxReplaced; ++image)
        replaceEdited();
    QVERIFY(!edits_->hasDropped());
    replaceEdited();
    QCOMPARE(edits_->replaced().size(), HandEdits::maxReplaced);
    QVERIFY(edits_->hasDropped());
    while (!edits_->replaced().isEmpty())
        compose(*edits_->replaced().last().image);
    compose("abcdef");
    replaceEdited();
    QVERIFY(!edits_->hasDropped());
}

void TestHandEdits::replacedImages_areDroppedInTheOrderOfTheirEdits() {
    for (const char *bytes : {"1", "2", "3", "4", "5", "6", "7", "8"}) {
        write(0, "z");
        compose(bytes);
    }
    write(0, "Y");
    edits_->restore();
    QVERIFY(replaced().startsWith(u"Y zbcdef z "));
    QVERIFY(!edits_->hasDropped());
    compose("new");
    QVERIFY(replaced().startsWith(u"Y z z "));
    QCOMPARE(edits_->replaced().size(), HandEdits::maxReplaced);
    QVERIFY(edits_->hasDropped());
}

void TestHandEdits::replacedImages_areDroppedWithoutAWordIfSaved() {
    write(0, "z");
    edits_->noteSaved();
    for (qsizetype image = 0; image <= HandEdits::maxReplaced; ++image)
        replaceEdited();
    QCOMPARE(edits_->replaced().size(), HandEdits::maxReplaced);
    QVERIFY(!edits_->hasDropped());
    replaceEdited();
    QVERIFY(edits_->hasDropped());
}

void TestHandEdits::replacedImages_areBoundedInBytesBesideTheNewest() {
    const auto replaceLarge = [this] {
        image_ = std::make_shared<QByteArray>(HandEdits::maxReplacedBytes / 2 + 1, 'a');
        replaceEdited();
    };
    replaceLarge();
    replaceLarge();
    QCOMPARE(edits_->replaced().size(), 2);
    QVERIFY(!edits_->hasDropped());
    replaceLarge();
    QCOMPARE(edits_->replaced().size(), 2);
    QVERIFY(edits_->hasDropped());
}

void TestHandEdits::compositionOfTheSameBytes_replacesNothing() {
    write(0, "X");
    edits_->keepReplaced();
    image_ = std::make_shared<QByteArray>("Xbcdef");
    edits_->composed({.revision = 2, .madeWith = {}});
    QVERIFY(edits_->replaced().isEmpty());
}

void TestHandEdits::compositionOfTheSameBytes_dropsNothing() {
    for (qsizetype image = 0; image < HandEdits::maxReplaced; ++image)
        replaceEdited();
    write(0, "Y");
    compose("Ybcdef");
    QCOMPARE(edits_->replaced().size(), HandEdits::maxReplaced);
    QVERIFY(!edits_->hasDropped());
}

void TestHandEdits::stepWithoutMemory_leavesAllAsItWas() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    *image_ = QByteArray(qsizetype(128) << 20, 'x');
    edits_->composed({.revision = 2, .madeWith = {}});
    write(0, "yz");
    const QByteArray shared = *image_; // so that a step has to copy all bytes
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, edits_->undo());
    }
    QVERIFY(image_->constData() == shared.constData());
    QCOMPARE(edits_->state().edits, 1);
    edits_->undo();
    QCOMPARE(image_->first(3), QByteArray("xxx"));
    QCOMPARE(edits_->state().revision, quint64(2));
    const QByteArray again = *image_;
    {
        const AddressSpaceLimit limit(rlim_t(32) << 20);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, edits_->redo());
    }
    QCOMPARE(edits_->state().edits, 0);
    edits_->redo();
    QCOMPARE(image_->first(3), QByteArray("yzx"));
}

QTEST_GUILESS_MAIN(TestHandEdits)
#include "tst_handedits.moc"
