// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsStore.h"
#include "widgets/KeyBinder.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestKeyBinder : public QObject {
    Q_OBJECT

private slots:
    void controls_showTheStoreAtOnce();
    void text_isWrittenAtEveryChange();
    void text_keepsTheCursorWhereNothingChanged();
    void field_sendsOnce_data();
    void field_sendsOnce();
    void field_setByAssistiveTechnologySendsAtOnce();
    void field_thatIsReadOnlyShowsTheStoreAndNothingElse();
    void field_changedFromTheStoreSendsNothing();
    void field_sendsAfterAnotherControlTookItsText();
    void commitPending_sendsWhatIsBeingTyped();
    void switch_writesBeforeItSends();
    void switch_withoutKeyOnlySends();
    void switch_toggledByAssistiveTechnology();
    void switch_changedFromTheStoreSendsNothing();
    void radioPair_shows_data();
    void radioPair_shows();
    void radioPair_sendsOnceWithBothKeysStored();
    void radioPair_isOneChange();
    void radioPair_changedFromTheStoreSendsNothing();
    void radioPair_leavesOtherButtonsAlone();
    void binding_outlivesItsControl();
    void refusedChange_isTakenBackAndNotSent();
    void refusedSwitch_withoutKeyIsTakenBack();
};

namespace {

const QString key = QStringLiteral("key");
const QString onKey = QStringLiteral("pad_ff");
const QString zeroKey = QStringLiteral("pad_00");

/// A store of its own, a binder, a window with a field and another place for the focus, and a
/// record of what was sent: the key's text or state at that moment.
struct Bench {
    Bench() {
        field = new QLineEdit(&window);
        other = new QLineEdit(&window);
        other->move(0, 40);
    }

    void show() {
        window.show();
        QApplication::setActiveWindow(&window);
        other->setFocus();
        QVERIFY(QTest::qWaitFor([this] { return other->hasFocus(); }));
    }

    KeyBinder::Action recordText() {
        return [this](QObject *sender) {
            sent.append((sender == field ? QString() : QStringLiteral("?")) +
                        store.stringValue(key));
        };
    }

    KeyBinder::Action recordState() {
        return [this](QObject *sender) {
            sent.append(sender->objectName() +
                        (store.boolValue(onKey) ? QStringLiteral(" 1") : QStringLiteral(" 0")) +
                        (store.boolValue(zeroKey) ? QStringLiteral(" 1") : QStringLiteral(" 0")));
        };
    }

    // First, and so the last to go: a window that is closed leaves its field, which sends.
    QStringList sent;
    QTemporaryDir folder;
    SettingsStore store{folder.filePath(QStringLiteral("velm.conf"))};
    KeyBinder binder{store};
    QWidget window;
    QLineEdit *field = nullptr;
    QLineEdit *other = nullptr;
};

void setAccessibleText(QWidget *widget, const QString &text) {
    QAccessible::queryAccessibleInterface(widget)->setText(QAccessible::Value, text);
}

void doAccessibly(QWidget *widget, const QString &action) {
    QAccessible::queryAccessibleInterface(widget)->actionInterface()->doAction(action);
}

} // namespace

void TestKeyBinder::controls_showTheStoreAtOnce() {
    Bench bench;
    bench.store.registerDefaults({{key, QStringLiteral("W27C512@DIP28")}, {onKey, true}});
    QCheckBox box;
    bench.binder.bindText(bench.field, key);
    bench.binder.bindSwitch(&box, onKey);
    QCOMPARE(bench.field->text(), QStringLiteral("W27C512@DIP28"));
    QVERIFY(box.isChecked());
}

void TestKeyBinder::text_isWrittenAtEveryChange() {
    Bench bench;
    bench.binder.bindText(bench.field, key);
    QStringList written;
    connect(&bench.store, &SettingsStore::valueChanged, &bench.store,
            [&] { written.append(bench.store.stringValue(key)); });
    QTest::keyClicks(bench.field, QStringLiteral("27C"));
    QTest::keyClick(bench.field, Qt::Key_Backspace);
    setAccessibleText(bench.field, QStringLiteral("24C02"));
    QCOMPARE(written, QStringList({QStringLiteral("2"), QStringLiteral("27"), QStringLiteral("27C"),
                                   QStringLiteral("27"), QStringLiteral("24C02")}));
}

void TestKeyBinder::text_keepsTheCursorWhereNothingChanged() {
    Bench bench;
    bench.store.setValue(key, QStringLiteral("abcdef"));
    bench.binder.bindText(bench.field, key);
    bench.field->setCursorPosition(2);
    QTest::keyClicks(bench.field, QStringLiteral("X"));
    QCOMPARE(bench.field->cursorPosition(), 3);
    QCOMPARE(bench.store.stringValue(key), QStringLiteral("abXcdef"));
}

void TestKeyBinder::field_sendsOnce_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QStringList>("sent");
    const auto row = [](const char *name, const QString &typed, const QList<int> &keys,
                        const QStringList &sent) { QTest::newRow(name) << typed << keys << sent; };
    row("typing alone sends nothing", QStringLiteral("12"), {}, {});
    row("Enter sends", QStringLiteral("12"), {Qt::Key_Return}, {QStringLiteral("012")});
    row("Enter twice sends once", QStringLiteral("12"), {Qt::Key_Return, Qt::Key_Return},
        {QStringLiteral("012")});
    row("leaving sends", QStringLiteral("12"), {Qt::Key_Tab}, {QStringLiteral("012")});
    row("Enter and leaving send once", QStringLiteral("12"), {Qt::Key_Return, Qt::Key_Tab},
        {QStringLiteral("012")});
    row("Enter in an unchanged field sends nothing", QString(), {Qt::Key_Return}, {});
    row("leaving an unchanged field sends nothing", QString(), {Qt::Key_Tab}, {});
    row("a text that is as before sends nothing", QStringLiteral("1"),
        {Qt::Key_Backspace, Qt::Key_Tab}, {});
    row("each change sends", QStringLiteral("1"), {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Tab},
        {QStringLiteral("01"), QStringLiteral("0")});
}

void TestKeyBinder::field_sendsOnce() {
    QFETCH(QString, typed);
    QFETCH(QList<int>, keys);
    Bench bench;
    bench.store.setValue(key, QStringLiteral("0"));
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    bench.field->setFocus();
    bench.field->end(false);
    QTest::keyClicks(bench.field, typed);
    for (const int pressed : keys)
        QTest::keyClick(bench.field, Qt::Key(pressed));
    QTEST(bench.sent, "sent");
}

void TestKeyBinder::field_setByAssistiveTechnologySendsAtOnce() {
    Bench bench;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    setAccessibleText(bench.field, QStringLiteral("0x100"));
    QCOMPARE(bench.sent, QStringList{QStringLiteral("0x100")});
    bench.field->setFocus();
    setAccessibleText(bench.field, QStringLiteral("0x200"));
    QCOMPARE(bench.sent, QStringList{QStringLiteral("0x100")});
    bench.other->setFocus();
    QCOMPARE(bench.sent, QStringList({QStringLiteral("0x100"), QStringLiteral("0x200")}));
}

void TestKeyBinder::field_thatIsReadOnlyShowsTheStoreAndNothingElse() {
    Bench bench;
    bench.store.setValue(key, QStringLiteral("/rom.bin"));
    bench.field->setReadOnly(true);
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    setAccessibleText(bench.field, QStringLiteral("27"));
    QCOMPARE(bench.store.stringValue(key), QStringLiteral("/rom.bin"));
    QCOMPARE(bench.field->text(), QStringLiteral("/rom.bin"));
    bench.store.setValue(key, QStringLiteral("/other.bin"));
    QCOMPARE(bench.field->text(), QStringLiteral("/other.bin"));
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::field_changedFromTheStoreSendsNothing() {
    Bench bench;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    bench.store.setValue(key, QStringLiteral("stored"));
    QCOMPARE(bench.field->text(), QStringLiteral("stored"));
    bench.field->setFocus();
    bench.other->setFocus();
    bench.binder.commitPending();
    QCOMPARE(bench.sent, QStringList());
}

// The other control's action has used the text as it was then; going back to the former text is
// a change, too.
void TestKeyBinder::field_sendsAfterAnotherControlTookItsText() {
    Bench bench;
    QCheckBox box;
    bench.store.setValue(key, QStringLiteral("0"));
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.binder.bindSwitch(&box, onKey,
                            [&](QObject *) { bench.sent.append(QStringLiteral("box")); });
    bench.show();
    bench.field->setFocus();
    bench.field->end(false);
    QTest::keyClicks(bench.field, QStringLiteral("1"));
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    QTest::keyClick(bench.field, Qt::Key_Backspace);
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(bench.sent, QStringList({QStringLiteral("box"), QStringLiteral("0")}));
}

void TestKeyBinder::commitPending_sendsWhatIsBeingTyped() {
    Bench bench;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    bench.field->setFocus();
    QTest::keyClicks(bench.field, QStringLiteral("7"));
    bench.binder.commitPending();
    bench.binder.commitPending();
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(bench.sent, QStringList{QStringLiteral("7")});
}

void TestKeyBinder::switch_writesBeforeItSends() {
    Bench bench;
    QCheckBox box;
    box.setObjectName(QStringLiteral("box"));
    bench.binder.bindSwitch(&box, onKey, bench.recordState());
    box.click();
    box.click();
    QCOMPARE(bench.sent, QStringList({QStringLiteral("box 1 0"), QStringLiteral("box 0 0")}));
}

void TestKeyBinder::switch_withoutKeyOnlySends() {
    Bench bench;
    QCheckBox box;
    box.setChecked(true);
    QSignalSpy changes(&bench.store, &SettingsStore::valueChanged);
    bench.binder.bindSwitch(&box, QString(), bench.recordState());
    QVERIFY(box.isChecked());
    box.click();
    QCOMPARE(bench.sent, QStringList{QStringLiteral(" 0 0")});
    QCOMPARE(changes.count(), 0);
}

void TestKeyBinder::switch_toggledByAssistiveTechnology() {
    Bench bench;
    QCheckBox box;
    bench.binder.bindSwitch(&box, onKey, bench.recordState());
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    QCOMPARE(bench.sent, QStringList{QStringLiteral(" 1 0")});
}

void TestKeyBinder::switch_changedFromTheStoreSendsNothing() {
    Bench bench;
    QCheckBox box;
    bench.binder.bindSwitch(&box, onKey, bench.recordState());
    bench.store.setValue(onKey, true);
    QVERIFY(box.isChecked());
    QCOMPARE(bench.sent, QStringList());
}

namespace {

/// The pair of fill bytes, bound.
struct Pair {
    explicit Pair(Bench &bench) {
        ones.setObjectName(QStringLiteral("ones"));
        zeros.setObjectName(QStringLiteral("zeros"));
        bench.binder.bindRadioPair(&ones, onKey, &zeros, zeroKey, bench.recordState());
    }

    QString state() const {
        return ones.isChecked()
                   ? (zeros.isChecked() ? QStringLiteral("both") : QStringLiteral("ones"))
                   : (zeros.isChecked() ? QStringLiteral("zeros") : QStringLiteral("none"));
    }

    QRadioButton ones;
    QRadioButton zeros;
};

} // namespace

void TestKeyBinder::radioPair_shows_data() {
    QTest::addColumn<bool>("ones");
    QTest::addColumn<bool>("zeros");
    QTest::addColumn<QString>("state");
    QTest::newRow("the first") << true << false << QStringLiteral("ones");
    QTest::newRow("the second") << false << true << QStringLiteral("zeros");
    QTest::newRow("both in the store: the second") << true << true << QStringLiteral("zeros");
    QTest::newRow("neither in the store: the first") << false << false << QStringLiteral("ones");
}

void TestKeyBinder::radioPair_shows() {
    QFETCH(bool, ones);
    QFETCH(bool, zeros);
    Bench bench;
    bench.store.setValue(onKey, ones);
    bench.store.setValue(zeroKey, zeros);
    const Pair pair(bench);
    QTEST(pair.state(), "state");
    QCOMPARE(bench.sent, QStringList());
    QCOMPARE(bench.store.boolValue(onKey), ones);
    QCOMPARE(bench.store.boolValue(zeroKey), zeros);
}

void TestKeyBinder::radioPair_sendsOnceWithBothKeysStored() {
    Bench bench;
    bench.store.registerDefaults({{onKey, true}, {zeroKey, false}});
    Pair pair(bench);
    pair.zeros.click();
    pair.zeros.click();
    doAccessibly(&pair.ones, QAccessibleActionInterface::toggleAction());
    QCOMPARE(bench.sent, QStringList({QStringLiteral("zeros 0 1"), QStringLiteral("ones 1 0")}));
    QCOMPARE(pair.state(), QStringLiteral("ones"));
}

// A kill between two changes would leave both keys on or none, and each would be waited for.
void TestKeyBinder::radioPair_isOneChange() {
    Bench bench;
    bench.store.registerDefaults({{onKey, true}, {zeroKey, false}});
    Pair pair(bench);
    QStringList found;
    connect(&bench.store, &SettingsStore::valueSet, &bench.store, [&] {
        const SettingsStore file(bench.store.filePath());
        found << file.stringValue(onKey) + u' ' + file.stringValue(zeroKey);
    });
    pair.zeros.click();
    QCOMPARE(found, QStringList({QStringLiteral("false true"), QStringLiteral("false true")}));
}

void TestKeyBinder::radioPair_changedFromTheStoreSendsNothing() {
    Bench bench;
    const Pair pair(bench);
    QStringList states;
    for (const auto &[name, value] :
         {std::pair(zeroKey, true), {onKey, false}, {zeroKey, false}, {onKey, true}}) {
        bench.store.setValue(name, value);
        states.append(pair.state());
    }
    QCOMPARE(states, QStringList({QStringLiteral("zeros"), QStringLiteral("zeros"),
                                  QStringLiteral("ones"), QStringLiteral("ones")}));
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::radioPair_leavesOtherButtonsAlone() {
    Bench bench;
    QRadioButton another(&bench.window);
    another.setChecked(true);
    QRadioButton ones(&bench.window);
    QRadioButton zeros(&bench.window);
    bench.binder.bindRadioPair(&ones, onKey, &zeros, zeroKey, bench.recordState());
    zeros.click();
    QVERIFY(another.isChecked());
    QVERIFY(!ones.isChecked());
}

void TestKeyBinder::binding_outlivesItsControl() {
    Bench bench;
    auto *box = new QCheckBox;
    auto *pair = new Pair(bench);
    bench.binder.bindSwitch(box, key);
    bench.binder.bindTextWithAction(bench.field, QStringLiteral("text"), bench.recordText());
    delete box;
    delete pair;
    delete bench.field;
    for (const QString &name : {key, onKey, zeroKey})
        bench.store.setValue(name, true);
    bench.store.setValue(QStringLiteral("text"), QStringLiteral("x"));
    bench.binder.commitPending();
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::refusedChange_isTakenBackAndNotSent() {
    Bench bench;
    bench.store.registerDefaults({{key, QStringLiteral("0000")}, {onKey, true}, {zeroKey, false}});
    QCheckBox box;
    const QString boxKey = QStringLiteral("skipErase");
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.binder.bindSwitch(&box, boxKey, bench.recordState());
    Pair pair(bench);
    bench.store.setGuard([] { return false; });
    setAccessibleText(bench.field, QStringLiteral("4000"));
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    doAccessibly(&pair.zeros, QAccessibleActionInterface::toggleAction());
    QCOMPARE(bench.field->text(), QStringLiteral("0000"));
    QVERIFY(!box.isChecked());
    QCOMPARE(pair.state(), QStringLiteral("ones"));
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::refusedSwitch_withoutKeyIsTakenBack() {
    Bench bench;
    QCheckBox box;
    bool onWhenSent = true;
    bench.binder.bindSwitch(&box, QString(), [&](QObject *) { onWhenSent = box.isChecked(); });
    bench.store.setGuard([] { return false; });
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    QVERIFY(!box.isChecked());
    QVERIFY(!onWhenSent); // whoever is told finds what holds, and says why
}

QTEST_MAIN(TestKeyBinder)
#include "tst_keybinder.moc"
