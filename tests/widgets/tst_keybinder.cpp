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

using namespace Qt::StringLiterals;

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
    void radioPair_changedFromTheStoreSendsNothing();
    void radioPair_leavesOtherButtonsAlone();
    void binding_outlivesItsControl();
    void refusedChange_isTakenBackAndNotSent();
    void refusedSwitch_withoutKeyIsTakenBack();
};

namespace {

const QString key = u"key"_s;
const QString onKey = u"pad_ff"_s;
const QString zeroKey = u"pad_00"_s;

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
            sent.append((sender == field ? QString() : u"?"_s) + store.stringValue(key));
        };
    }

    KeyBinder::Action recordState() {
        return [this](QObject *sender) {
            sent.append(sender->objectName() + (store.boolValue(onKey) ? u" 1"_s : u" 0"_s) +
                        (store.boolValue(zeroKey) ? u" 1"_s : u" 0"_s));
        };
    }

    // First, and so the last to go: a window that is closed leaves its field, which sends.
    QStringList sent;
    QTemporaryDir folder;
    SettingsStore store{folder.filePath(u"velm.conf"_s)};
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
    bench.store.registerDefaults({{key, u"W27C512@DIP28"_s}, {onKey, true}});
    QCheckBox box;
    bench.binder.bindText(bench.field, key);
    bench.binder.bindSwitch(&box, onKey);
    QCOMPARE(bench.field->text(), u"W27C512@DIP28"_s);
    QVERIFY(box.isChecked());
}

void TestKeyBinder::text_isWrittenAtEveryChange() {
    Bench bench;
    bench.binder.bindText(bench.field, key);
    QStringList written;
    connect(&bench.store, &SettingsStore::valueChanged, &bench.store,
            [&] { written.append(bench.store.stringValue(key)); });
    QTest::keyClicks(bench.field, u"27C"_s);
    QTest::keyClick(bench.field, Qt::Key_Backspace);
    setAccessibleText(bench.field, u"24C02"_s);
    QCOMPARE(written, QStringList({u"2"_s, u"27"_s, u"27C"_s, u"27"_s, u"24C02"_s}));
}

void TestKeyBinder::text_keepsTheCursorWhereNothingChanged() {
    Bench bench;
    bench.store.setValue(key, u"abcdef"_s);
    bench.binder.bindText(bench.field, key);
    bench.field->setCursorPosition(2);
    QTest::keyClicks(bench.field, u"X"_s);
    QCOMPARE(bench.field->cursorPosition(), 3);
    QCOMPARE(bench.store.stringValue(key), u"abXcdef"_s);
}

void TestKeyBinder::field_sendsOnce_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QStringList>("sent");
    const auto row = [](const char *name, const QString &typed, const QList<int> &keys,
                        const QStringList &sent) { QTest::newRow(name) << typed << keys << sent; };
    row("typing alone sends nothing", u"12"_s, {}, {});
    row("Enter sends", u"12"_s, {Qt::Key_Return}, {u"012"_s});
    row("Enter twice sends once", u"12"_s, {Qt::Key_Return, Qt::Key_Return}, {u"012"_s});
    row("leaving sends", u"12"_s, {Qt::Key_Tab}, {u"012"_s});
    row("Enter and leaving send once", u"12"_s, {Qt::Key_Return, Qt::Key_Tab}, {u"012"_s});
    row("Enter in an unchanged field sends nothing", QString(), {Qt::Key_Return}, {});
    row("leaving an unchanged field sends nothing", QString(), {Qt::Key_Tab}, {});
    row("a text that is as before sends nothing", u"1"_s, {Qt::Key_Backspace, Qt::Key_Tab}, {});
    row("each change sends", u"1"_s, {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Tab},
        {u"01"_s, u"0"_s});
}

void TestKeyBinder::field_sendsOnce() {
    QFETCH(QString, typed);
    QFETCH(QList<int>, keys);
    Bench bench;
    bench.store.setValue(key, u"0"_s);
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
    setAccessibleText(bench.field, u"0x100"_s);
    QCOMPARE(bench.sent, QStringList{u"0x100"_s});
    bench.field->setFocus();
    setAccessibleText(bench.field, u"0x200"_s);
    QCOMPARE(bench.sent, QStringList{u"0x100"_s});
    bench.other->setFocus();
    QCOMPARE(bench.sent, QStringList({u"0x100"_s, u"0x200"_s}));
}

void TestKeyBinder::field_thatIsReadOnlyShowsTheStoreAndNothingElse() {
    Bench bench;
    bench.store.setValue(key, u"/rom.bin"_s);
    bench.field->setReadOnly(true);
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    setAccessibleText(bench.field, u"27"_s);
    QCOMPARE(bench.store.stringValue(key), u"/rom.bin"_s);
    QCOMPARE(bench.field->text(), u"/rom.bin"_s);
    bench.store.setValue(key, u"/other.bin"_s);
    QCOMPARE(bench.field->text(), u"/other.bin"_s);
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::field_changedFromTheStoreSendsNothing() {
    Bench bench;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    bench.store.setValue(key, u"stored"_s);
    QCOMPARE(bench.field->text(), u"stored"_s);
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
    bench.store.setValue(key, u"0"_s);
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.binder.bindSwitch(&box, onKey, [&](QObject *) { bench.sent.append(u"box"_s); });
    bench.show();
    bench.field->setFocus();
    bench.field->end(false);
    QTest::keyClicks(bench.field, u"1"_s);
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    QTest::keyClick(bench.field, Qt::Key_Backspace);
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(bench.sent, QStringList({u"box"_s, u"0"_s}));
}

void TestKeyBinder::commitPending_sendsWhatIsBeingTyped() {
    Bench bench;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.show();
    bench.field->setFocus();
    QTest::keyClicks(bench.field, u"7"_s);
    bench.binder.commitPending();
    bench.binder.commitPending();
    QTest::keyClick(bench.field, Qt::Key_Return);
    QCOMPARE(bench.sent, QStringList{u"7"_s});
}

void TestKeyBinder::switch_writesBeforeItSends() {
    Bench bench;
    QCheckBox box;
    box.setObjectName(u"box"_s);
    bench.binder.bindSwitch(&box, onKey, bench.recordState());
    box.click();
    box.click();
    QCOMPARE(bench.sent, QStringList({u"box 1 0"_s, u"box 0 0"_s}));
}

void TestKeyBinder::switch_withoutKeyOnlySends() {
    Bench bench;
    QCheckBox box;
    box.setChecked(true);
    QSignalSpy changes(&bench.store, &SettingsStore::valueChanged);
    bench.binder.bindSwitch(&box, QString(), bench.recordState());
    QVERIFY(box.isChecked());
    box.click();
    QCOMPARE(bench.sent, QStringList{u" 0 0"_s});
    QCOMPARE(changes.count(), 0);
}

void TestKeyBinder::switch_toggledByAssistiveTechnology() {
    Bench bench;
    QCheckBox box;
    bench.binder.bindSwitch(&box, onKey, bench.recordState());
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    QCOMPARE(bench.sent, QStringList{u" 1 0"_s});
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
        ones.setObjectName(u"ones"_s);
        zeros.setObjectName(u"zeros"_s);
        bench.binder.bindRadioPair(&ones, onKey, &zeros, zeroKey, bench.recordState());
    }

    QString state() const {
        return ones.isChecked() ? (zeros.isChecked() ? u"both"_s : u"ones"_s)
                                : (zeros.isChecked() ? u"zeros"_s : u"none"_s);
    }

    QRadioButton ones;
    QRadioButton zeros;
};

} // namespace

void TestKeyBinder::radioPair_shows_data() {
    QTest::addColumn<bool>("ones");
    QTest::addColumn<bool>("zeros");
    QTest::addColumn<QString>("state");
    QTest::newRow("the first") << true << false << u"ones"_s;
    QTest::newRow("the second") << false << true << u"zeros"_s;
    QTest::newRow("both in the store: the second") << true << true << u"zeros"_s;
    QTest::newRow("neither in the store: the first") << false << false << u"ones"_s;
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
    QCOMPARE(bench.sent, QStringList({u"zeros 0 1"_s, u"ones 1 0"_s}));
    QCOMPARE(pair.state(), u"ones"_s);
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
    QCOMPARE(states, QStringList({u"zeros"_s, u"zeros"_s, u"ones"_s, u"ones"_s}));
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
    bench.binder.bindTextWithAction(bench.field, u"text"_s, bench.recordText());
    delete box;
    delete pair;
    delete bench.field;
    for (const QString &name : {key, onKey, zeroKey})
        bench.store.setValue(name, true);
    bench.store.setValue(u"text"_s, u"x"_s);
    bench.binder.commitPending();
    QCOMPARE(bench.sent, QStringList());
}

void TestKeyBinder::refusedChange_isTakenBackAndNotSent() {
    Bench bench;
    bench.store.registerDefaults({{key, u"0000"_s}, {onKey, true}, {zeroKey, false}});
    QCheckBox box;
    const QString boxKey = u"skipErase"_s;
    bench.binder.bindTextWithAction(bench.field, key, bench.recordText());
    bench.binder.bindSwitch(&box, boxKey, bench.recordState());
    Pair pair(bench);
    bench.store.setGuard([] { return false; });
    setAccessibleText(bench.field, u"4000"_s);
    doAccessibly(&box, QAccessibleActionInterface::toggleAction());
    doAccessibly(&pair.zeros, QAccessibleActionInterface::toggleAction());
    QCOMPARE(bench.field->text(), u"0000"_s);
    QVERIFY(!box.isChecked());
    QCOMPARE(pair.state(), u"ones"_s);
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
    QVERIFY(!onWhenSent); // who is told finds what holds, and says why
}

QTEST_MAIN(TestKeyBinder)
#include "tst_keybinder.moc"
