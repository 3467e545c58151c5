// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/BlockSteps.h"

#include "support/AddressSpaceLimit.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>

/// Pasting over bytes of the data to burn.
class TestWindowPaste : public QObject {
    Q_OBJECT

private slots:
    void pastes_data();
    void pastes();
    void cursor_goesOnBehindThePastedBytes();
    void cursor_goesToTheLastByteAtTheEndOfARow();
    void whatDoesNotFit_isPastedOnlyWhenAsked();
    void cursorBehindTheLastByte_appends();
    void farther_isRefused();
    void emptyImage_isLengthenedWhenAsked();
    void whatIsNotUnderstood_isPastedAsCharactersWhenAsked();
    void charactersThatAreNoBytes_areNotPasted();
    void copiedRows_arePasted();
    void nothingToPaste_isSaid();
    void refusal_goesWithTheNextMove_data();
    void refusal_goesWithTheNextMove();
    void inAField_theKeyPastesThere();
    void longText_leavesTheWindowAlive();
    void longTextWithoutMemory_isNotPasted();
    void longTextWithoutMemory_leavesTheReadingBefore();
    void imageThatChangesMeanwhile_isLeftAlone();
    void entryThatIsOpenMeanwhile_countsAsAChange();
    void entryThatIsOpen_endsTheOfferToLengthen();
    void anotherTabMeanwhile_isNotLeft();
    void runMeanwhile_endsThePaste();
};

namespace {

void copy(const QString &text) {
    QGuiApplication::clipboard()->setText(text);
}

void paste(WindowFixture &velm) {
    pressInGrid(velm, Qt::Key_V);
}

constexpr qsizetype longCount = 4 << 20;

/// Begins to paste so much that it is read in many turns.
void beginLongPaste(WindowFixture &velm) {
    showBytes(velm, QByteArray(longCount, 'x'));
    selectBytes(velm, 0, 1);
    copy(QStringLiteral("61 ").repeated(longCount));
    menuEntry(velm, QStringLiteral("Pas&te"))->trigger();
    QTRY_COMPARE(velm.message(), QStringLiteral("Reading the clipboard\u2026"));
}

constexpr QStringView noMemory = u"not enough memory for what is on the clipboard";

/// Pastes what another program offers, which is decoded when it is asked for.
void pasteWithoutMemory(WindowFixture &velm) {
    auto *offered = new QMimeData;
    offered->setData(QStringLiteral("text/plain;charset=utf-8"), QByteArray(64 << 20, '6'));
    QGuiApplication::clipboard()->setMimeData(offered);
    {
        const AddressSpaceLimit limit(rlim_t(16) << 20);
        paste(velm);
    }
    QGuiApplication::clipboard()->clear();
}

/// Types \a text into the cell of the byte at \a offset, and does not end the entry.
void type(WindowFixture &velm, qint64 offset, const QString &text) {
    GridView *grid = velm.controls().tableview;
    selectBytes(velm, offset, 1);
    QTest::keyClick(grid, Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(grid->entries().editor());
    QVERIFY(editor);
    editor->selectAll();
    editor->insert(text);
}

bool says(WindowFixture &velm, const QString &words) {
    return velm.message().contains(words);
}

} // namespace

void TestWindowPaste::pastes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *text, int offset, const QByteArray &expected,
                        const char *message) {
        QTest::newRow(name) << QString::fromLatin1(text) << offset << expected
                            << QString::fromLatin1(message);
    };
    row("one byte", "7a", 0, "z123456789ABCDEFGHIJ", "Pasted 1 byte at 0000.");
    row("a zero", "00", 19, QByteArray("0123456789ABCDEFGHI\0", 20), "Pasted 1 byte at 0013.");
    row("digits", "61 62,63\n64", 2, "01abcd6789ABCDEFGHIJ", "Pasted 4 bytes at 0002.");
    row("an array", "const char a[] = {0x61, 98};", 18, "0123456789ABCDEFGHab",
        "Pasted 2 bytes at 0012.");
    row("a literal", "b'ab\\x63'", 17, "0123456789ABCDEFGabc", "Pasted 3 bytes at 0011.");
}

void TestWindowPaste::pastes() {
    QFETCH(const QString, text);
    QFETCH(const int, offset);
    QFETCH(const QByteArray, expected);
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, offset, 1);
    copy(text);
    paste(velm);
    QCOMPARE(imageAndFile(velm), expected);
    QTEST(velm.message(), "message");
    QVERIFY(menuEntry(velm, QStringLiteral("&Undo paste"))->isEnabled());
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    velm.delegate().edits().redo();
    QCOMPARE(imageAndFile(velm), expected);
}

void TestWindowPaste::cursor_goesToTheLastByteAtTheEndOfARow() {
    WindowFixture velm;
    showBytes(velm, QByteArray(16, 'x'));
    selectBytes(velm, 12, 1);
    copy(QStringLiteral("61 62 63 64"));
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray(12, 'x') + "abcd");
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray(12, 'x') + "abcd");
    QVERIFY(messageButton(velm, QStringLiteral("Paste and lengthen")));
}

void TestWindowPaste::cursor_goesOnBehindThePastedBytes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 3, 2);
    copy(QStringLiteral("61 62 63"));
    paste(velm);
    QCOMPARE(velm.controls().tableview->selection().bytes().offset, 6);
    QCOMPARE(velm.message(), QStringLiteral("Pasted 3 bytes at 0003."));
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray("012abcabc9ABCDEFGHIJ"));
}

void TestWindowPaste::whatDoesNotFit_isPastedOnlyWhenAsked() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 18, 1);
    copy(QStringLiteral("61 62 63 64"));
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.message(), QStringLiteral("Warning: Nothing was pasted: 2 of 4 bytes do not fit, "
                                            "since from 0012 on there are 2."));
    QVERIFY(!velm.delegate().edits().history().canUndo());
    QPushButton *button = messageButton(velm, QStringLiteral("Paste and lengthen"));
    QVERIFY(button);
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHabcd"));
    QCOMPARE(velm.message(), QStringLiteral("Pasted 4 bytes at 0012."));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowPaste::cursorBehindTheLastByte_appends() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 16, 1);
    copy(QStringLiteral("61 62 63 64"));
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFabcd"));
    paste(velm);
    QVERIFY2(velm.message().contains(u"since from 0014 on there are 0."),
             qPrintable(velm.message()));
    QPushButton *button = messageButton(velm, QStringLiteral("Paste and lengthen"));
    QVERIFY(button);
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFabcdabcd"));
}

void TestWindowPaste::farther_isRefused() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->moveTo(velm.controls().tableview->model()->index(1, 6));
    copy(QStringLiteral("61"));
    paste(velm);
    QCOMPARE(velm.message(),
             QStringLiteral("Warning: Put the cursor on the first byte to paste over."));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowPaste::emptyImage_isLengthenedWhenAsked() {
    WindowFixture velm;
    showBytes(velm, "");
    copy(QStringLiteral("61 62"));
    paste(velm);
    QPushButton *button = messageButton(velm, QStringLiteral("Paste and lengthen"));
    QVERIFY2(button, qPrintable(velm.message()));
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("ab"));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray(""));
}

void TestWindowPaste::whatIsNotUnderstood_isPastedAsCharactersWhenAsked() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    copy(QStringLiteral("6162 hello"));
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.message(),
             QStringLiteral(
                 "Warning: Nothing was pasted at 0000. Line 1, character 6: \u201chello\u201d "
                 "is no byte in hexadecimal digits."));
    QPushButton *button = messageButton(velm, QStringLiteral("Paste characters"));
    QVERIFY(button);
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("6162 helloABCDEFGHIJ"));
    QCOMPARE(velm.message(), QStringLiteral("Pasted 10 bytes at 0000."));
}

void TestWindowPaste::charactersThatAreNoBytes_areNotPasted() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    copy(QStringLiteral("5 \u20AC"));
    choose(velm, QStringLiteral("Paste c&haracters"));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.message(),
             QStringLiteral("Warning: Nothing was pasted at 0000. Line 1, character 3: "
                            "\u201c\u20AC\u201d takes more than a byte."));
    QVERIFY(!messageButton(velm, QStringLiteral("Paste characters")));
}

void TestWindowPaste::copiedRows_arePasted() {
    WindowFixture velm;
    showTwentyBytes(velm);
    copy(QStringLiteral("0000  61 62 63 64 65 66 67 68 69 6A 6B 6C 6D 6E 6F 70  abcdefghijklmnop\n"
                        "0010  71 72 XX XX XX XX XX XX XX XX XX XX XX XX XX XX  qr\n"));
    selectBytes(velm, 1, 1);
    paste(velm);
    QCOMPARE(imageAndFile(velm), QByteArray("0abcdefghijklmnopqrJ"));
}

void TestWindowPaste::nothingToPaste_isSaid() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    QGuiApplication::clipboard()->clear();
    paste(velm);
    QCOMPARE(velm.message(), QStringLiteral("Warning: There is no text on the clipboard."));
    copy(QStringLiteral("  "));
    paste(velm);
    QCOMPARE(velm.message(),
             QStringLiteral("Warning: Nothing was pasted at 0000. There are no bytes in it."));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowPaste::refusal_goesWithTheNextMove_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("offer");
    QTest::addColumn<Qt::Key>("key");
    const QString lengthen = QStringLiteral("Paste and lengthen");
    const QString characters = QStringLiteral("Paste characters");
    QTest::newRow("to another row") << QStringLiteral("61 62") << lengthen << Qt::Key_Up;
    QTest::newRow("within the row") << QStringLiteral("61 62") << lengthen << Qt::Key_Left;
    QTest::newRow("as characters") << QStringLiteral("xyz") << characters << Qt::Key_Left;
}

void TestWindowPaste::refusal_goesWithTheNextMove() {
    QFETCH(const QString, text);
    QFETCH(const QString, offer);
    QFETCH(const Qt::Key, key);
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 19, 1);
    copy(text);
    paste(velm);
    QVERIFY(messageButton(velm, offer));
    QTest::keyClick(velm.controls().tableview, key);
    QVERIFY(!messageButton(velm, offer));
    QVERIFY(!velm.message().contains(u"Nothing was pasted"));
}

void TestWindowPaste::inAField_theKeyPastesThere() {
    WindowFixture velm;
    showTwentyBytes(velm);
    copy(QStringLiteral("61"));
    QLineEdit *device = velm.controls().uaTextField;
    device->setFocus();
    device->selectAll();
    QTest::keyClick(device, Qt::Key_V, Qt::ControlModifier);
    velm.settle();
    QCOMPARE(device->text(), QStringLiteral("61"));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowPaste::longText_leavesTheWindowAlive() {
    WindowFixture velm;
    const qsizetype count = 4 << 20;
    showBytes(velm, QByteArray(count, 'x'));
    selectBytes(velm, 0, 1);
    copy(QStringLiteral("61 ").repeated(count));
    menuEntry(velm, QStringLiteral("Pas&te"))->trigger();
    QTRY_COMPARE(velm.message(), QStringLiteral("Reading the clipboard\u2026"));
    QTRY_COMPARE(velm.message(), QStringLiteral("Pasted 4,194,304 bytes at 0000."));
    QCOMPARE(imageAndFile(velm), QByteArray(count, 'a'));
}

void TestWindowPaste::longTextWithoutMemory_isNotPasted() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    pasteWithoutMemory(velm);
    QVERIFY2(velm.message().contains(noMemory), qPrintable(velm.message()));
    QCOMPARE(*velm.state().output_data, QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowPaste::longTextWithoutMemory_leavesTheReadingBefore() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
    WindowFixture velm;
    beginLongPaste(velm);
    pasteWithoutMemory(velm);
    QVERIFY2(velm.message().contains(noMemory), qPrintable(velm.message()));
    QTRY_COMPARE(imageAndFile(velm), QByteArray(longCount, 'a'));
}

void TestWindowPaste::imageThatChangesMeanwhile_isLeftAlone() {
    WindowFixture velm;
    beginLongPaste(velm);
    velm.delegate().edits().writeZeros({7, 1});
    QVERIFY(velm.message().contains(u"Reading the clipboard"));
    QTRY_VERIFY(says(velm, QStringLiteral("have changed meanwhile")));
    QCOMPARE(imageAndFile(velm), QByteArray(7, 'x') + '\0' + QByteArray(longCount - 8, 'x'));
}

void TestWindowPaste::entryThatIsOpenMeanwhile_countsAsAChange() {
    WindowFixture velm;
    beginLongPaste(velm);
    type(velm, 5, QStringLiteral("4"));
    QTRY_VERIFY(says(velm, QStringLiteral("have changed meanwhile")));
    QCOMPARE(imageAndFile(velm), QByteArray(5, 'x') + '\4' + QByteArray(longCount - 6, 'x'));
}

void TestWindowPaste::entryThatIsOpen_endsTheOfferToLengthen() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 19, 1);
    copy(QStringLiteral("61 62"));
    paste(velm);
    QPushButton *button = messageButton(velm, QStringLiteral("Paste and lengthen"));
    QVERIFY(button);
    // Where the cursor is: elsewhere the offer would go at once.
    GridView *grid = velm.controls().tableview;
    QTest::keyClick(grid, Qt::Key_QuoteDbl);
    QVERIFY(grid->entries().editor());
    QTest::keyClicks(grid->entries().editor(), QStringLiteral("abcd"));
    button->click();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIabcd"));
    QVERIFY2(says(velm, QStringLiteral("have changed meanwhile")), qPrintable(velm.message()));
}

void TestWindowPaste::anotherTabMeanwhile_isNotLeft() {
    WindowFixture velm;
    beginLongPaste(velm);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_VERIFY(says(velm, QStringLiteral("Nothing was pasted. Only the data to burn")));
    QCOMPARE(velm.controls().tabview->selectedTabViewItem().identifier, readTabIdentifier());
    QVERIFY(!velm.delegate().edits().history().canUndo());
}

void TestWindowPaste::runMeanwhile_endsThePaste() {
    WindowFixture velm;
    beginLongPaste(velm);
    velm.whileBusy([&] {
        QTRY_VERIFY(!says(velm, QStringLiteral("Reading the clipboard")));
        velm.delegate().stopRun();
    });
    velm.useTool("sleep 60\n");
    velm.click(velm.controls().btn_verify);
    QTRY_VERIFY(velm.velm().work().isIdle());
    QVERIFY2(says(velm, QStringLiteral("Nothing was pasted, since the tool was at work.")),
             qPrintable(velm.message()));
    QVERIFY(!velm.delegate().edits().history().canUndo());
}

QTEST_MAIN(TestWindowPaste)
#include "tst_window_paste.moc"
