// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/InsertFileWindow.h"
#include "support/SpokenWords.h"
#include "window/BlockSteps.h"

#include "ui_InsertFileWindow.h"

/// Taking the bytes of a file into the data to burn.
class TestWindowInsertFile : public QObject {
    Q_OBJECT

private slots:
    void inserts_data();
    void inserts();
    void badInput_isSaidAndChangesNothing_data();
    void badInput_isSaidAndChangesNothing();
    void insertedBytes_areSelected();
    void address_isThatOfTheSelection_data();
    void address_isThatOfTheSelection();
    void intoAnEmptyImage_bytesAreMovedIn();
    void textOfRecords_isPointedOut();
    void fileThatCannotBeRead_isSaid();
    void fileThatIsWrittenMeanwhile_isNotInserted();
    void longName_leavesTheWindowItsSize();
    void fileThatGoesMeanwhile_isInserted();
    void cancelledPanel_changesNothing();
    void refusalOfAnotherTab_isSaidInTheWindow();
    void everyControl_hasANameAndATip();
};

namespace {

/// Chooses the entry, and \a bytes as the file; null if no window opens.
InsertFileWindow *openInsertion(WindowFixture &velm, const QByteArray &bytes) {
    velm.panels.answer = velm.write(QStringLiteral("part.bin"), bytes);
    choose(velm, QStringLiteral("Insert a fil&e\u2026"));
    return openWindow<InsertFileWindow>(velm);
}

void press(WindowFixture &velm, InsertFileWindow &window) {
    velm.click(window.controls().insertButton);
    velm.settle();
}

} // namespace

void TestWindowInsertFile::inserts_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("moves");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &file, const char *address, bool moves,
                        const QByteArray &expected, const char *message) {
        QTest::newRow(name) << file << QString::fromLatin1(address) << moves << expected
                            << QString::fromLatin1(message);
    };
    row("over the first", "ab", "0", false, "ab23456789ABCDEFGHIJ",
        "Wrote part.bin over 2 bytes at 0000.");
    row("over the last", "ab", "12", false, "0123456789ABCDEFGHab",
        "Wrote part.bin over 2 bytes at 0012.");
    row("over all", "abcdefghijklmnopqrst", "0", false, "abcdefghijklmnopqrst",
        "Wrote part.bin over 20 bytes at 0000.");
    row("before the first", "ab", "0", true, "ab0123456789ABCDEFGHIJ",
        "Inserted part.bin: 2 bytes at 0000.");
    row("in the middle", QByteArray("a\0b", 3), "#10", true,
        QByteArray("0123456789a\0bABCDEFGHIJ", 23), "Inserted part.bin: 3 bytes at 000A.");
    row("behind the last", "a", "14", true, "0123456789ABCDEFGHIJa",
        "Inserted part.bin: 1 byte at 0014.");
}

void TestWindowInsertFile::inserts() {
    QFETCH(const QByteArray, file);
    QFETCH(const QString, address);
    QFETCH(const bool, moves);
    QFETCH(const QByteArray, expected);
    WindowFixture velm;
    showTwentyBytes(velm);
    InsertFileWindow *window = openInsertion(velm, file);
    QVERIFY(window);
    QCOMPARE(velm.panels.requests.last().title, QStringLiteral("Insert a file"));
    QVERIFY(window->controls().over->isChecked());
    window->controls().address->setText(address);
    if (moves)
        window->controls().before->click();
    QVERIFY2(window->controls().insertButton->isEnabled(),
             qPrintable(window->controls().result->text()));
    press(velm, *window);
    QCOMPARE(imageAndFile(velm), expected);
    QTEST(velm.message(), "message");
    QVERIFY(!openWindow<InsertFileWindow>(velm));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    velm.delegate().edits().redo();
    QCOMPARE(imageAndFile(velm), expected);
}

void TestWindowInsertFile::badInput_isSaidAndChangesNothing_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("moves");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, const QByteArray &file, const char *address, bool moves,
                        const char *said) {
        QTest::newRow(name) << file << QString::fromLatin1(address) << moves
                            << QString::fromUtf8(said);
    };
    row("too long", "abc", "12", false, "1 of 3 bytes do not fit, since from 0012 on there are 2.");
    row("behind the end", "abc", "14", false,
        "3 of 3 bytes do not fit, since from 0014 on there are 0.");
    row("moving behind the end", "abc", "15", true, "The data to burn end before 0015.");
    row("no address", "abc", "x", false,
        "\xE2\x80\x9Cx\xE2\x80\x9D is no address: it takes hexadecimal digits, or decimal ones "
        "behind #.");
    row("an address of more than 32 bits", "abc", "100000000", false,
        "The data to burn end before 100000000.");
    row("an address of 64 bits", "abc", "FFFFFFFFFFFFFFFF", true,
        "The data to burn end before FFFFFFFFFFFFFFFF.");
    row("from the cursor", "abc", "+13", false,
        "2 of 3 bytes do not fit, since from 0013 on there are 1.");
    row("before the first byte", "abc", "-1", false, "There is no byte at -1.");
    row("an empty file", "", "0", true, "The file is empty.");
}

void TestWindowInsertFile::badInput_isSaidAndChangesNothing() {
    QFETCH(const QByteArray, file);
    QFETCH(const QString, address);
    QFETCH(const bool, moves);
    WindowFixture velm;
    showTwentyBytes(velm);
    InsertFileWindow *window = openInsertion(velm, file);
    QVERIFY(window);
    window->controls().address->setText(address);
    if (moves)
        window->controls().before->click();
    QTEST(window->controls().result->text(), "said");
    QVERIFY(!window->controls().insertButton->isEnabled());
    emit window->controls().insertButton->clicked(); // as assistive technology can
    velm.settle();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowInsertFile::insertedBytes_areSelected() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 5, 1);
    InsertFileWindow *window = openInsertion(velm, "abc");
    QVERIFY(window);
    QCOMPARE(window->controls().address->text(), QStringLiteral("0005"));
    QCOMPARE(window->controls().result->text(), QStringLiteral("Will replace 3 bytes at 0005."));
    window->controls().before->click();
    QCOMPARE(window->controls().result->text(),
             QStringLiteral("The data to burn become 23 bytes long."));
    press(velm, *window);
    const ByteRange selected = velm.controls().tableview->selection().bytes();
    QCOMPARE(selected.offset, 5);
    QCOMPARE(selected.length, 3);
    QCOMPARE(velm.message(), QStringLiteral("Inserted part.bin: 3 bytes at 0005."));
}

void TestWindowInsertFile::address_isThatOfTheSelection_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("offered");
    QTest::newRow("a byte") << 1 << 3 << QStringLiteral("0012");
    QTest::newRow("a row") << 1 << 0 << QStringLiteral("0010");
    QTest::newRow("just behind the last byte") << 1 << 5 << QStringLiteral("0014");
    QTest::newRow("farther behind it") << 1 << 6 << QString();
}

void TestWindowInsertFile::address_isThatOfTheSelection() {
    QFETCH(const int, row);
    QFETCH(const int, column);
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.controls().tableview->moveTo(velm.controls().tableview->model()->index(row, column));
    InsertFileWindow *window = openInsertion(velm, "ab");
    QVERIFY(window);
    QTEST(window->controls().address->text(), "offered");
}

void TestWindowInsertFile::intoAnEmptyImage_bytesAreMovedIn() {
    WindowFixture velm;
    showBytes(velm, "");
    InsertFileWindow *window = openInsertion(velm, "abc");
    QVERIFY(window);
    QVERIFY(!window->controls().insertButton->isEnabled());
    window->controls().before->click();
    press(velm, *window);
    QCOMPARE(imageAndFile(velm), QByteArray("abc"));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray(""));
}

void TestWindowInsertFile::fileThatIsWrittenMeanwhile_isNotInserted() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    InsertFileWindow *window = openInsertion(velm, "ab");
    QVERIFY(window);
    velm.write(QStringLiteral("part.bin"), "newer");
    press(velm, *window);
    QCOMPARE(window->controls().result->text(),
             QStringLiteral("part.bin has been written since it was read here: choose it again."));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    window = openInsertion(velm, "newer");
    press(velm, *window);
    QCOMPARE(imageAndFile(velm), QByteArray("newer56789ABCDEFGHIJ"));
}

void TestWindowInsertFile::longName_leavesTheWindowItsSize() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    const QString name = QString(240, u'x');
    velm.panels.answer = velm.write(name, "ab");
    choose(velm, QStringLiteral("Insert a fil&e\u2026"));
    auto *window = openWindow<InsertFileWindow>(velm);
    QVERIFY(window);
    const int width = window->minimumSizeHint().width();
    velm.write(name, "newer");
    press(velm, *window);
    QVERIFY2(window->controls().result->text().startsWith(name),
             qPrintable(window->controls().result->text()));
    QCOMPARE(window->minimumSizeHint().width(), width);
}

void TestWindowInsertFile::fileThatGoesMeanwhile_isInserted() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    InsertFileWindow *window = openInsertion(velm, "ab");
    QVERIFY(window);
    QVERIFY(QFile::remove(velm.path(QStringLiteral("part.bin"))));
    press(velm, *window);
    QCOMPARE(imageAndFile(velm), QByteArray("ab23456789ABCDEFGHIJ"));
}

void TestWindowInsertFile::textOfRecords_isPointedOut() {
    WindowFixture velm;
    showTwentyBytes(velm);
    InsertFileWindow *window = openInsertion(velm, ":00000001FF\n");
    QVERIFY(window);
    QVERIFY(window->controls().text->isVisible());
    window = openInsertion(velm, "abc");
    QVERIFY(window);
    QVERIFY(!window->controls().text->isVisible());
}

void TestWindowInsertFile::fileThatCannotBeRead_isSaid() {
    WindowFixture velm;
    showTwentyBytes(velm);
    velm.panels.answer = velm.path(QStringLiteral("missing.bin"));
    choose(velm, QStringLiteral("Insert a fil&e\u2026"));
    QVERIFY(!openWindow<InsertFileWindow>(velm));
    QVERIFY2(velm.message().contains(u"missing.bin could not be read, so nothing was inserted: "),
             qPrintable(velm.message()));
}

void TestWindowInsertFile::cancelledPanel_changesNothing() {
    WindowFixture velm;
    showTwentyBytes(velm);
    choose(velm, QStringLiteral("Insert a fil&e\u2026"));
    QCOMPARE(velm.panels.requests.size(), 1);
    QVERIFY(!openWindow<InsertFileWindow>(velm));
}

void TestWindowInsertFile::refusalOfAnotherTab_isSaidInTheWindow() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    InsertFileWindow *window = openInsertion(velm, "abc");
    QVERIFY(window);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    const SpokenWords speaker;
    press(velm, *window);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(window->controls().result->text().contains(u"Only the data to burn"));
    QCOMPARE(speaker.spoken.count(window->controls().result->text()), 1);
}

void TestWindowInsertFile::everyControl_hasANameAndATip() {
    WindowFixture velm;
    showTwentyBytes(velm);
    InsertFileWindow *window = openInsertion(velm, "abc");
    QVERIFY(window);
    const Ui::InsertFileWindow &c = window->controls();
    const QList<QWidget *> controls = {c.address, c.over, c.before, c.insertButton, c.cancelButton};
    QStringList names;
    QStringList marks;
    for (const QWidget *control : controls) {
        QVERIFY(!control->toolTip().isEmpty());
        names << control->accessibleName();
    }
    for (const QString &text :
         {c.addressLabel->text(), c.over->text(), c.before->text(), c.insertButton->text()})
        marks << QKeySequence::mnemonic(text).toString();
    QCOMPARE(names.removeDuplicates(), 0);
    QVERIFY(!names.contains(QString()));
    QCOMPARE(marks.removeDuplicates(), 0);
    QVERIFY(!marks.contains(QString()));
}

QTEST_MAIN(TestWindowInsertFile)
#include "tst_window_insertfile.moc"
