// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

#include <QMenu>
#include <QMenuBar>

/// A key that is held down repeats itself. What is done only when it is asked for twice must not
/// be done by that.
class TestWindowHeldKeys : public QObject {
    Q_OBJECT

private slots:
    void heldKey_isOnePress_data();
    void heldKey_isOnePress();
    void heldKeyOfAButtonsLetter_isOnePress();
    void heldQuit_keepsTheEdits();
    void heldUndo_takesBackMore();
    void menuEntriesWithAKey_repeatOnlyWhereAStepFollowsAStep();
};

namespace {

constexpr bool repeats = true;

void press(QWidget *widget, int key, Qt::KeyboardModifiers modifiers, bool repeat) {
    QTest::simulateEvent(widget, true, key, modifiers, QString(), repeat);
}

void release(QWidget *widget, int key, Qt::KeyboardModifiers modifiers, bool repeat) {
    QTest::simulateEvent(widget, false, key, modifiers, QString(), repeat);
}

/// Holds a key down for three repetitions, as a keyboard tells of it.
void hold(WindowFixture &velm, QWidget *widget, int key, Qt::KeyboardModifiers modifiers = {}) {
    press(widget, key, modifiers, !repeats);
    velm.settle();
    for (int repetition = 0; repetition < 3; ++repetition) {
        release(widget, key, modifiers, repeats);
        press(widget, key, modifiers, repeats);
        velm.settle();
    }
    release(widget, key, modifiers, !repeats);
    velm.settle();
}

/// A tool that leaves a trace, and a device with nothing to burn on it.
QString useTracingTool(WindowFixture &velm) {
    const QString trace = velm.path(QStringLiteral("burned"));
    velm.useTool("touch '" + trace.toUtf8() + "'\n");
    return trace;
}

bool isAsked(WindowFixture &velm) {
    return velm.message().contains(u"There are no data to burn");
}

} // namespace

void TestWindowHeldKeys::heldKey_isOnePress_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("onButton");
    QTest::addColumn<bool>("presses");
    QTest::newRow("the key of the menu") << int(Qt::Key_F7) << false << true;
    QTest::newRow("space on the button") << int(Qt::Key_Space) << true << true;
    // Whether it presses a button at all is up to the desktop.
    QTest::newRow("return on the button") << int(Qt::Key_Return) << true << false;
}

void TestWindowHeldKeys::heldKey_isOnePress() {
    QFETCH(int, key);
    QFETCH(bool, onButton);
    QFETCH(bool, presses);
    WindowFixture velm;
    const QString trace = useTracingTool(velm);
    velm.start();
    QPushButton *button = velm.controls().btn_write;
    button->setFocus();
    hold(velm, onButton ? static_cast<QWidget *>(button) : &velm.velm().window(), key);
    QVERIFY(!QFile::exists(trace));
    QVERIFY(isAsked(velm) || !presses);
    // A press of its own is a second one.
    velm.click(button);
    if (!presses)
        velm.click(button);
    QVERIFY(QFile::exists(trace));
}

void TestWindowHeldKeys::heldKeyOfAButtonsLetter_isOnePress() {
    WindowFixture velm;
    const QString trace = useTracingTool(velm);
    velm.start();
    QPushButton *button = velm.controls().btn_write;
    const int letter = QKeySequence::mnemonic(button->text())[0].key();
    QWidget *window = &velm.velm().window();
    press(window, letter, Qt::AltModifier, !repeats);
    QTRY_VERIFY(isAsked(velm) && !button->isDown());
    press(window, letter, Qt::AltModifier, repeats);
    QVERIFY(!button->isDown());
    QVERIFY(!QFile::exists(trace));
    release(window, letter, Qt::AltModifier, !repeats);
    press(window, letter, Qt::AltModifier, !repeats);
    QTRY_VERIFY(QFile::exists(trace));
}

void TestWindowHeldKeys::heldQuit_keepsTheEdits() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    hold(velm, &velm.velm().window(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY2(velm.message().contains(u"1 hand edit is in no file."), qPrintable(velm.message()));
    QVERIFY(velm.velm().window().isVisible());
}

void TestWindowHeldKeys::heldUndo_takesBackMore() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    enter(velm, 0, 2, QStringLiteral("7A"));
    hold(velm, &velm.velm().window(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
    hold(velm, &velm.velm().window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(*velm.state().output_data, QByteArray("zz23456789ABCDEFGHIJ"));
}

void TestWindowHeldKeys::menuEntriesWithAKey_repeatOnlyWhereAStepFollowsAStep() {
    WindowFixture velm;
    velm.start();
    QStringList repeating;
    for (const QMenu *menu : velm.velm().window().menuBar()->findChildren<QMenu *>())
        for (const QAction *entry : menu->actions())
            if (!entry->shortcut().isEmpty() && entry->autoRepeat())
                repeating.append(entry->iconText());
    QCOMPARE(repeating,
             QStringList({QStringLiteral("Undo edit"), QStringLiteral("Redo edit"),
                          QStringLiteral("Find next"), QStringLiteral("Find previous"),
                          QStringLiteral("Larger letters"), QStringLiteral("Smaller letters")}));
}

QTEST_MAIN(TestWindowHeldKeys)
#include "tst_window_heldkeys.moc"
