// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/SelectRangeWindow.h"
#include "window/EditingSteps.h"

#include "ui_SelectRangeWindow.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>

/// Bytes that are selected in the window's grid, and what the Edit menu does with them.
class TestWindowSelection : public QObject {
    Q_OBJECT

private slots:
    void anotherTab_hasNoneOfTheSelection();
    void anotherImage_keepsWhatThereIs();
    void selectAll_isForTheGridAlone();
    void copy_isForTheGridAlone();
    void copyAs_takesEveryForm_data();
    void copyAs_takesEveryForm();
    void copyAs_offersRowsAloneForResults();
    void contextMenu_hasWhatTheEditMenuHas();
    void selectRange_beginsWithTheSelection();
    void selectRange_selectsAndGoes_data();
    void selectRange_selectsAndGoes();
    void selectRange_saysWhatIsWrong_data();
    void selectRange_saysWhatIsWrong();
    void selectRange_tellsTheSameBytesInTheOtherWay();
    void selectRange_amongResultsHasNoBytes();
    void twoDigits_moveOnUnlessThatIsTurnedOff();
    void movingOn_isRemembered();
};

namespace {

QPair<qint64, qint64> selected(WindowFixture &velm) {
    const ByteRange bytes = velm.controls().tableview->selection().bytes();
    return {bytes.offset, bytes.length};
}

QPair<qint64, qint64> bytes(qint64 offset, qint64 length) {
    return {offset, length};
}

QMenu *editMenu(WindowFixture &velm) {
    for (QAction *menu : velm.velm().window().menuBar()->actions())
        if (menu->text() == u"&Edit")
            return menu->menu();
    qFatal("no menu Edit");
}

/// The entry of \a menu, or of a menu in it, that reads \a text.
QAction *entry(const QMenu *menu, const QString &text) {
    for (QAction *action : menu->actions()) {
        if (action->text() == text)
            return action;
        if (QAction *inner = action->menu() ? entry(action->menu(), text) : nullptr)
            return inner;
    }
    return nullptr;
}

void choose(WindowFixture &velm, const QString &text) {
    QAction *action = entry(editMenu(velm), text);
    QVERIFY2(action, qPrintable(text));
    action->trigger();
}

/// Opens the window that asks for a range, as its key does.
SelectRangeWindow *openRange(WindowFixture &velm) {
    MainWindow &window = velm.velm().window();
    QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    velm.settle();
    return window.findChild<SelectRangeWindow *>();
}

QString copied() {
    return QGuiApplication::clipboard()->text();
}

} // namespace

void TestWindowSelection::anotherTab_hasNoneOfTheSelection() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::device, QStringLiteral("W27C512@DIP28"));
    showTwentyBytes(velm);
    velm.click(velm.controls().btn_read);
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    GridView *grid = velm.controls().tableview;
    grid->selection().select({3, 9});
    QVERIFY(grid->selection().hasBlock());
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QVERIFY(grid->gridModel()->byteCount() > 20);
    QVERIFY(!grid->selection().hasBlock());
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QVERIFY(!grid->selection().hasBlock());
}

void TestWindowSelection::anotherImage_keepsWhatThereIs() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selection().select({3, 15});
    velm.delegate().openBinary(velm.write(QStringLiteral("other.bin"), "0123456789"));
    velm.settle();
    QCOMPARE(selected(velm), bytes(3, 7));
    enter(velm, 0, 1, QStringLiteral("'abcdefghijklmnop"));
    QVERIFY(!grid->selection().hasBlock()); // whoever edits moves the cursor
}

void TestWindowSelection::selectAll_isForTheGridAlone() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QLineEdit *field = velm.controls().startAddTextField;
    field->setText(QStringLiteral("1234"));
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(field->selectedText(), QStringLiteral("1234"));
    QVERIFY(!velm.controls().tableview->selection().hasBlock());
    velm.controls().tableview->setFocus();
    QTest::keyClick(velm.controls().tableview, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(selected(velm), bytes(0, 20));
    velm.controls().tableview->selection().end();
    choose(velm, QStringLiteral("Select a&ll"));
    QCOMPARE(selected(velm), bytes(0, 20));
}

void TestWindowSelection::copy_isForTheGridAlone() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->selection().select({1, 3});
    QLineEdit *field = velm.controls().startAddTextField;
    field->setText(QStringLiteral("1234"));
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied(), QStringLiteral("1234"));
    velm.controls().tableview->setFocus();
    QTest::keyClick(velm.controls().tableview, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied(), QStringLiteral("31 32 33"));
    velm.controls().btn_open->setFocus();
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(velm.controls().btn_open, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(copied(), QString());
    choose(velm, QStringLiteral("&Copy"));
    QCOMPARE(copied(), QStringLiteral("31 32 33"));
}

void TestWindowSelection::copyAs_takesEveryForm_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *text, const char *expected) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(expected);
    };
    row("&Hexadecimal text", "31 32 33");
    row("&C array", "const unsigned char data[3] = {\n    0x31, 0x32, 0x33,\n};");
    row("&Python bytes", "b\"123\"");
    row("Ch&aracters", "123");
    row("&Rows", "0000  30 31 32 33 34 35 36 37 38 39 41 42 43 44 45 46  0123456789ABCDEF\n");
}

void TestWindowSelection::copyAs_takesEveryForm() {
    QFETCH(QString, text);
    QFETCH(QString, expected);
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->selection().select({1, 3});
    choose(velm, text);
    QCOMPARE(copied(), expected);
}

void TestWindowSelection::copyAs_offersRowsAloneForResults() {
    WindowFixture velm;
    showTwentyBytes(velm);
    const QAction *array = entry(editMenu(velm), QStringLiteral("&C array"));
    const QAction *rows = entry(editMenu(velm), QStringLiteral("&Rows"));
    QVERIFY(array->isEnabled() && rows->isEnabled());
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QVERIFY(!array->isEnabled() && rows->isEnabled());
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QVERIFY(array->isEnabled());
}

void TestWindowSelection::contextMenu_hasWhatTheEditMenuHas() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    grid->selection().select({1, 3});
    const QPoint place = grid->visualRect(grid->model()->index(0, 3)).center();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, place, grid->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(grid->viewport(), &asked);
    auto *menu = grid->findChild<QMenu *>();
    QVERIFY(menu && menu->isVisible());
    for (const char *text : {"&Copy", "&C array", "Select a&ll", "&Select range\u2026"})
        QVERIFY2(entry(menu, QString::fromUtf8(text)), text);
    entry(menu, QStringLiteral("&Copy"))->trigger();
    QCOMPARE(copied(), QStringLiteral("31 32 33"));
    menu->close();
}

void TestWindowSelection::selectRange_beginsWithTheSelection() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->selection().select({2, 17});
    SelectRangeWindow *range = openRange(velm);
    QVERIFY(range);
    QCOMPARE(range->controls().first->text(), QStringLiteral("0002"));
    QCOMPARE(range->controls().end->text(), QStringLiteral("0012"));
    QCOMPARE(range->controls().first->selectedText(), QStringLiteral("0002"));
    QCOMPARE(openRange(velm), range);
    range->reject();
    QCOMPARE(selected(velm), bytes(2, 17));
}

void TestWindowSelection::selectRange_selectsAndGoes_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<int>("until");
    QTest::addColumn<QString>("end");
    QTest::newRow("to an address") << QStringLiteral("5") << 0 << QStringLiteral("#16");
    QTest::newRow("a length") << QStringLiteral("0x5") << 1 << QStringLiteral("C");
}

void TestWindowSelection::selectRange_selectsAndGoes() {
    QFETCH(QString, first);
    QFETCH(int, until);
    QFETCH(QString, end);
    WindowFixture velm;
    showTwentyBytes(velm);
    QPointer<SelectRangeWindow> range = openRange(velm);
    range->controls().first->setText(first);
    range->controls().until->setCurrentIndex(until);
    range->controls().end->setText(end);
    QTest::keyClick(range->controls().end, Qt::Key_Return);
    QCOMPARE(selected(velm), bytes(5, 12));
    QTRY_VERIFY(!range);
    QTRY_VERIFY(velm.controls().tableview->hasFocus());
}

void TestWindowSelection::selectRange_saysWhatIsWrong_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<int>("until");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, const char *first, int until, const char *end,
                        const char *sentence) {
        QTest::newRow(name) << QString::fromUtf8(first) << until << QString::fromUtf8(end)
                            << QString::fromUtf8(sentence);
    };
    row("no address", "%1", 0, "5",
        "\u201c%1\u201d is no address: it takes hexadecimal digits, or decimal ones behind #.");
    row("no last address", "1", 0, "",
        "\u201c\u201d is no address: it takes hexadecimal digits, or decimal ones behind #.");
    row("no length", "1", 1, "-1",
        "\u201c-1\u201d is no length: it takes hexadecimal digits, or decimal ones behind #.");
    row("behind the end", "14", 0, "15", "There is no byte at 14: the last one is at 0013.");
    row("to behind the end", "1", 0, "14", "There is no byte at 14: the last one is at 0013.");
    row("too long", "1", 1, "14",
        "There are not as many bytes from 1 on: the last one is at 0013.");
    row("backwards", "5", 0, "4", "The last byte, at 4, is before the first, at 5.");
    row("none", "5", 1, "0", "A length of 0 selects nothing.");
}

void TestWindowSelection::selectRange_saysWhatIsWrong() {
    QFETCH(QString, first);
    QFETCH(int, until);
    QFETCH(QString, end);
    QFETCH(QString, sentence);
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->selection().select({2, 3});
    SelectRangeWindow *range = openRange(velm);
    const Ui::SelectRangeWindow &c = range->controls();
    c.first->setText(first);
    c.until->setCurrentIndex(until);
    c.end->setText(end);
    QCOMPARE(c.remark->text(), QString());
    velm.click(c.selectButton);
    QCOMPARE(c.remark->text(), sentence);
    QVERIFY(range->isVisible());
    QCOMPARE(selected(velm), bytes(2, 3));
    c.end->setText(QStringLiteral("7"));
    QCOMPARE(c.remark->text(), QString());
}

void TestWindowSelection::selectRange_tellsTheSameBytesInTheOtherWay() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->selection().select({2, 17});
    const Ui::SelectRangeWindow &c = openRange(velm)->controls();
    QCOMPARE(c.end->accessibleName(), QStringLiteral("Last byte"));
    c.until->setCurrentIndex(1);
    QCOMPARE(c.end->text(), QStringLiteral("11"));
    QCOMPARE(c.end->accessibleName(), QStringLiteral("Length"));
    c.until->setCurrentIndex(0);
    QCOMPARE(c.end->text(), QStringLiteral("0012"));
    c.end->setText(QStringLiteral("nothing"));
    c.until->setCurrentIndex(1);
    QCOMPARE(c.end->text(), QString());
}

void TestWindowSelection::selectRange_amongResultsHasNoBytes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    SelectRangeWindow *range = openRange(velm);
    velm.click(range->controls().selectButton);
    QCOMPARE(range->controls().remark->text(), QStringLiteral("There are no bytes."));
}

void TestWindowSelection::twoDigits_moveOnUnlessThatIsTurnedOff() {
    WindowFixture velm;
    showTwentyBytes(velm);
    GridView *grid = velm.controls().tableview;
    const auto type = [&](const char *keys) {
        grid->setFocus();
        for (const char *key = keys; *key; ++key) {
            QWidget *target = grid->entries().editor();
            QTest::keyClick(target ? target : grid, *key);
        }
    };
    const QString text = QStringLiteral("&Move on after two digits");
    QVERIFY(entry(editMenu(velm), text)->isChecked());
    grid->moveTo(grid->model()->index(0, 16));
    type("6162");
    QCOMPARE(onDisk(velm), QByteArray("0123456789ABCDEabHIJ"));
    QCOMPARE(grid->currentIndex(), grid->model()->index(1, 2));
    type("00");
    QCOMPARE(velm.beeps, 1);
    QCOMPARE(grid->currentIndex(), grid->model()->index(1, 2));
    QVERIFY(!grid->entries().editor());
    // Each is an edit of its own.
    velm.delegate().edits().undo();
    QCOMPARE(onDisk(velm), QByteArray("0123456789ABCDEaGHIJ"));

    choose(velm, text);
    type("63");
    QVERIFY(grid->entries().editor());
    QTest::keyClick(grid->entries().editor(), Qt::Key_Escape);
}

void TestWindowSelection::movingOn_isRemembered() {
    WindowFixture velm;
    velm.start();
    choose(velm, QStringLiteral("&Move on after two digits"));
    velm.velm().window().close();
    velm.end();
    velm.start();
    QVERIFY(!entry(editMenu(velm), QStringLiteral("&Move on after two digits"))->isChecked());
}

QTEST_MAIN(TestWindowSelection)
#include "tst_window_selection.moc"
