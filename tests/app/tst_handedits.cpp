#include "app/HandEdits.h"
#include "grid/CellEdit.h"

#include <QSignalSpy>
#include <QTest>

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

private:
    void write(qint64 offset, const QByteArray &bytes);
    QString state() const;

    ByteBuffer image_;
    std::unique_ptr<HandEdits> edits_;
};

void TestHandEdits::init() {
    image_ = std::make_shared<QByteArray>("abcdef");
    edits_ = std::make_unique<HandEdits>(image_);
    edits_->composed(1);
}

void TestHandEdits::write(qint64 offset, const QByteArray &bytes) {
    CellEdit edit;
    edit.offset = offset;
    edit.bytesWritten = bytes.size();
    edit.replaced = image_->mid(offset, bytes.size());
    image_->replace(offset, bytes.size(), bytes);
    edits_->remember(edit);
}

/// "bytes, number of edits".
QString TestHandEdits::state() const {
    return QStringLiteral("%1, %2").arg(QString::fromLatin1(*image_),
                                        QString::number(edits_->state().edits));
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
    edits_->composed(2);
    edits_->undo();
    QCOMPARE(state(), QStringLiteral("new, 0"));
    QCOMPARE(edits_->state().revision, quint64(2));
}

void TestHandEdits::restoring_bringsItsRevisionAndCount() {
    write(0, "X");
    write(1, "Y");
    const HandEdits::Replaced replaced{image_, edits_->state()};
    image_ = std::make_shared<QByteArray>("new");
    edits_->composed(2);
    write(0, "N");
    edits_->restore(replaced);
    QCOMPARE(state(), QStringLiteral("XYcdef, 2"));
    QCOMPARE(edits_->state().revision, replaced.state.revision);
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
    QSignalSpy changed(edits_.get(), &HandEdits::imageChanged);
    write(4, "X");
    QCOMPARE(changed.size(), 0);
    edits_->undo();
    edits_->redo();
    edits_->redo();
    QCOMPARE(changed, QList<QList<QVariant>>({{qint64(4)}, {qint64(4)}}));
}

void TestHandEdits::unsavedEdits() {
    QVERIFY(!edits_->areUnsaved());
    write(0, "X");
    QVERIFY(edits_->areUnsaved());
    edits_->noteSaved();
    QVERIFY(!edits_->areUnsaved());
    write(0, "Y");
    QVERIFY(edits_->areUnsaved());
    edits_->undo();
    QVERIFY(!edits_->areUnsaved());
    edits_->undo();
    QVERIFY(!edits_->areUnsaved()); // as it was composed
}

QTEST_GUILESS_MAIN(TestHandEdits)
#include "tst_handedits.moc"
