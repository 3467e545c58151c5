// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/WorkState.h"
#include "control/ActionGate.h"
#include "control/EditOffers.h"
#include "control/HandEdits.h"
#include "control/Messages.h"

#include <QTest>

#include <new>

/// What is said of edits, beside what the window's tests see of it.
class TestEditOffers : public QObject {
    Q_OBJECT

private slots:
    void forgottenEdits_areTold();
    void replacedEditsThatAreDropped_areTold();
    void replacedEdits_areToldAsTheHistoryHasThem();
    void editThatCannotBeShown_isNoEditThatFailed();
    void undo_saysNothingOfTheCompositionAgain();
};

namespace {

constexpr qint64 maxStepBytes = 12;

/// Ten bytes with what offers to edit them.
struct Edited {
    ByteBuffer image = std::make_shared<QByteArray>("0123456789");
    HandEdits edits{image, maxStepBytes};
    MessageLine line;
    Messages messages{line};
    SecondPress secondPress{messages};
    WorkState work;
    ActionGate gate{work, messages};
    EditOffers offers{{edits, messages, secondPress, gate, [] { return ImageControls(); }}};

    bool write(qint64 offset, const QByteArray &bytes) {
        return offers.change({overwriteOf(offset, bytes, image->size()), QStringLiteral("paste"),
                              QStringLiteral("Pasted.")});
    }
};

} // namespace

void TestEditOffers::forgottenEdits_areTold() {
    const QString forgotten = QStringLiteral("Older edits can no longer be taken back");
    Edited data;
    QObject::connect(&data.offers, &EditOffers::changed, &data.line,
                     [&] { data.offers.sayForgotten(); });
    QVERIFY(data.write(0, "abcd"));
    QVERIFY(!data.line.toPlainText().contains(forgotten));
    QVERIFY(data.write(0, "efgh"));
    QVERIFY2(data.line.toPlainText().contains(forgotten), qPrintable(data.line.toPlainText()));
    QVERIFY(data.line.toPlainText().contains(u"Pasted."));
    QVERIFY(data.write(0, "i"));
    QVERIFY(!data.line.toPlainText().contains(forgotten));
}

void TestEditOffers::replacedEditsThatAreDropped_areTold() {
    Edited data;
    const auto composeAnew = [&data] {
        data.edits.keepReplaced();
        data.image = std::make_shared<QByteArray>("0123456789");
        data.edits.composed({.revision = data.edits.state().revision + 1, .madeWith = {}});
        data.offers.sayComposed({});
    };
    for (qsizetype image = 0; image < HandEdits::maxReplaced; ++image) {
        QVERIFY(data.write(0, "a"));
        composeAnew();
    }
    const QString replaced = QStringLiteral("1 hand edit was replaced.");
    QVERIFY(data.line.toPlainText().contains(replaced));
    QVERIFY(!data.line.toPlainText().contains(u"no longer be restored"));
    QVERIFY(data.write(0, "a"));
    composeAnew();
    QVERIFY2(data.line.toPlainText().contains(
                 replaced +
                 QStringLiteral(" Older ones, which are in no file, can no longer be restored.")),
             qPrintable(data.line.toPlainText()));
}

void TestEditOffers::replacedEdits_areToldAsTheHistoryHasThem() {
    Edited data;
    const auto isTold = [&data](const QString &sentence) {
        return data.line.toPlainText().contains(sentence);
    };
    const QString one = QStringLiteral("1 hand edit was replaced.");
    const QString two = QStringLiteral("2 hand edits were replaced.");
    QVERIFY(data.write(0, "a"));
    data.edits.keepReplaced();
    data.image = std::make_shared<QByteArray>("0123456789");
    data.edits.composed({.revision = 2, .madeWith = {}});
    data.offers.sayComposed({});
    data.offers.restore();
    QVERIFY(!isTold(one));
    data.offers.undo();
    QVERIFY(isTold(one));
    QVERIFY(data.write(0, "b"));
    QVERIFY(data.write(1, "b"));
    data.offers.restore();
    QVERIFY(isTold(two));
    data.offers.undo();
    QVERIFY(isTold(one));
    data.offers.redo();
    QVERIFY(isTold(two));
    QVERIFY(data.offers.refusesToLose(SecondPress::Presser::Program));
}

void TestEditOffers::editThatCannotBeShown_isNoEditThatFailed() {
    Edited data;
    QObject::connect(&data.offers, &EditOffers::changed, &data.line,
                     [] { throw std::bad_alloc(); });
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, data.write(0, "abcd"));
    QVERIFY2(!data.line.toPlainText().contains(u"as they were"),
             qPrintable(data.line.toPlainText()));
    QCOMPARE(*data.image, QByteArray("abcd456789"));
}

// What stands there already would be told again to whoever hears it.
void TestEditOffers::undo_saysNothingOfTheCompositionAgain() {
    Edited data;
    data.offers.sayComposed({QStringLiteral("Pad to holds no number."), false});
    QVERIFY(data.write(0, "abcd"));
    QVERIFY(data.line.toPlainText().startsWith(u"Pasted."));
    data.offers.undo();
    QVERIFY2(data.line.toPlainText().startsWith(u"Pasted."), qPrintable(data.line.toPlainText()));
    QVERIFY(data.line.toPlainText().contains(u"Pad to holds no number."));
}

QTEST_MAIN(TestEditOffers)
#include "tst_editoffers.moc"
