// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/EditingSteps.h"

/// What the controller tells those that show something: which image has changed, by whatever way.
class TestWindowSignals : public QObject {
    Q_OBJECT

private slots:
    void start_isTold();
    void read_isTold();
    void readThatLeavesNothing_isTold();
    void composition_isTold();
    void openedFile_isTold();
    void tabs_areTold();
    void edits_areToldWithTheirBytes();
    void growth_isToldAndTakenBack();
    void editTakenBackFromAnotherTab_isTold();
    void restoredImage_isTold();
    void logicTest_isTold();
    void whatIsTold_isShownAlready();
};

namespace {

/// What has been told since the last take(), in order.
class ToldSignals : public QObject {
public:
    explicit ToldSignals(AppDelegate &delegate) {
        const auto add = [this](const QString &what) { return [this, what] { told_ << what; }; };
        connect(&delegate, &AppDelegate::imageToBurnChanged, this, add(QStringLiteral("to burn")));
        connect(&delegate, &AppDelegate::readDataTaken, this, add(QStringLiteral("read")));
        connect(&delegate, &AppDelegate::shownContentChanged, this, add(QStringLiteral("shown")));
        connect(&delegate, &AppDelegate::shownBytesChanged, this, [this](ByteRange changed) {
            told_ << QStringLiteral("%1 bytes at %2")
                         .arg(QString::number(changed.length), QString::number(changed.offset));
        });
    }

    QString take() { return std::exchange(told_, {}).join(QStringLiteral(", ")); }

private:
    QStringList told_;
};

void readChip(WindowFixture &velm, const QByteArray &script) {
    velm.useTool(script);
    velm.delegate().go(velm.controls().btn_read);
    velm.settle();
}

const QByteArray readsTwoBytes = "printf AB > \"$4\"\necho 'Reading Code...  0.01Sec  OK' >&2\n";

void press(WindowFixture &velm, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&velm.velm().window(), Qt::Key_Z, modifiers);
    velm.settle();
}

} // namespace

void TestWindowSignals::start_isTold() {
    WindowFixture velm;
    velm.start();
    ToldSignals told(velm.delegate());
    velm.delegate().applicationDidFinishLaunching();
    QCOMPARE(told.take(), QStringLiteral("to burn, shown"));
}

void TestWindowSignals::read_isTold() {
    WindowFixture velm;
    velm.start();
    ToldSignals told(velm.delegate());
    readChip(velm, readsTwoBytes);
    QCOMPARE(told.take(), QStringLiteral("to burn, read, shown"));
}

void TestWindowSignals::readThatLeavesNothing_isTold() {
    WindowFixture velm;
    velm.start();
    readChip(velm, readsTwoBytes);
    ToldSignals told(velm.delegate());
    bool wasNull = false;
    connect(&velm.delegate(), &AppDelegate::readDataTaken, &told,
            [&] { wasNull = velm.state().read_from_chip_data == nullptr; });
    readChip(velm, "rm \"$4\"\nexit 1\n");
    QCOMPARE(told.take(), QStringLiteral("to burn, read, shown"));
    QVERIFY(wasNull);
}

void TestWindowSignals::composition_isTold() {
    WindowFixture velm;
    showTwentyBytes(velm);
    ToldSignals told(velm.delegate());
    velm.click(velm.controls().btn_pad);
    velm.settle();
    QCOMPARE(told.take(), QStringLiteral("to burn, shown"));
}

void TestWindowSignals::openedFile_isTold() {
    WindowFixture velm;
    showTwentyBytes(velm);
    ToldSignals told(velm.delegate());
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    velm.settle();
    QCOMPARE(told.take(), QStringLiteral("to burn, shown"));
}

void TestWindowSignals::tabs_areTold() {
    WindowFixture velm;
    showTwentyBytes(velm);
    ToldSignals told(velm.delegate());
    for (const QString &tab : {readTabIdentifier(), logicTabIdentifier(), burnTabIdentifier()}) {
        velm.controls().tabview->selectTabViewItem(tab);
        QCOMPARE(told.take(), QStringLiteral("shown"));
    }
}

void TestWindowSignals::edits_areToldWithTheirBytes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    ToldSignals told(velm.delegate());
    enter(velm, 1, 2, QStringLiteral("7A"));
    QCOMPARE(told.take(), QStringLiteral("to burn, 1 bytes at 17"));
    press(velm, Qt::ControlModifier);
    QCOMPARE(told.take(), QStringLiteral("to burn, 1 bytes at 17"));
    press(velm, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(told.take(), QStringLiteral("to burn, 1 bytes at 17"));
}

void TestWindowSignals::growth_isToldAndTakenBack() {
    WindowFixture velm;
    showTwentyBytes(velm);
    ToldSignals told(velm.delegate());
    enter(velm, 1, 4, QStringLiteral("\"xyz\""));
    QCOMPARE(lengthOf(velm.state().output_data), 22);
    QCOMPARE(told.take(), QStringLiteral("to burn, 3 bytes at 19"));
    press(velm, Qt::ControlModifier);
    QCOMPARE(lengthOf(velm.state().output_data), 20);
    QCOMPARE(told.take(), QStringLiteral("to burn, 3 bytes at 19"));
}

void TestWindowSignals::editTakenBackFromAnotherTab_isTold() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    ToldSignals told(velm.delegate());
    press(velm, Qt::ControlModifier);
    QCOMPARE(told.take(), QStringLiteral("shown, to burn, 1 bytes at 0"));
}

void TestWindowSignals::restoredImage_isTold() {
    WindowFixture velm;
    showTwentyBytes(velm);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.delegate().build_and_reload();
    velm.settle();
    ToldSignals told(velm.delegate());
    velm.delegate().edits().restore();
    QCOMPARE(told.take(), QStringLiteral("to burn, 20 bytes at 0"));
}

void TestWindowSignals::logicTest_isTold() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("7400"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    ToldSignals told(velm.delegate());
    velm.delegate().go(velm.controls().btn_logic);
    velm.settle();
    QCOMPARE(told.take(), QStringLiteral("shown, shown")); // emptied, then filled
}

void TestWindowSignals::whatIsTold_isShownAlready() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QStringList cells;
    const auto note = [&] { cells << velm.cell(0, 1); };
    connect(&velm.delegate(), &AppDelegate::shownContentChanged, this, note);
    connect(&velm.delegate(), &AppDelegate::shownBytesChanged, this, note);
    enter(velm, 0, 1, QStringLiteral("7A"));
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "other"));
    velm.settle();
    QCOMPARE(cells, QStringList({QStringLiteral("7A"), QStringLiteral("6F")}));
}

QTEST_MAIN(TestWindowSignals)
#include "tst_window_signals.moc"
