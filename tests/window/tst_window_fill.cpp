// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "blocks/FillWindow.h"
#include "support/SpokenWords.h"
#include "window/BlockSteps.h"

#include "ui_FillWindow.h"

#include <QAccessible>

/// Filling bytes of the data to burn.
class TestWindowFill : public QObject {
    Q_OBJECT

private slots:
    void fills_data();
    void fills();
    void badInput_isSaidAndFillsNothing_data();
    void badInput_isSaidAndFillsNothing();
    void addresses_areTypedFromTheCursorAsWell();
    void randomBytes_comeBackTheSame();
    void emptyImage_isNotAskedAbout();
    void window_offersTheBlockElseTheRest();
    void window_offersTheSelectedRows();
    void withoutAByte_offersNone_data();
    void withoutAByte_offersNone();
    void window_followsTheImage();
    void refusal_leavesTheWindowOpen();
    void refusalOfAnotherTab_isSaidInTheWindow();
    void everyControl_hasANameAndATip();
};

namespace {

FillWindow &openFill(WindowFixture &velm) {
    choose(velm, QStringLiteral("F&ill\u2026"));
    FillWindow *window = openWindow<FillWindow>(velm);
    if (!window)
        qFatal("no window");
    return *window;
}

void press(WindowFixture &velm, FillWindow &window) {
    velm.click(window.controls().fillButton);
    velm.settle();
}

} // namespace

void TestWindowFill::fills_data() {
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, int offset, int length, const char *with,
                        const QByteArray &expected, const char *message) {
        QTest::newRow(name) << offset << length << QString::fromLatin1(with) << expected
                            << QString::fromLatin1(message);
    };
    row("the first byte", 0, 1, "7a", "z123456789ABCDEFGHIJ", "Filled 1 byte at 0000 with 7A.");
    row("the last byte", 19, 1, "0x0", QByteArray("0123456789ABCDEFGHI\0", 20),
        "Filled 1 byte at 0013 with 00.");
    row("zeros", 2, 3, "00", QByteArray("01\0\0\0", 5) + "56789ABCDEFGHIJ",
        "Filled 3 bytes at 0002 with 00.");
    row("a pattern", 4, 16, "61 62 63", "0123abcabcabcabcabca",
        "Filled 16 bytes at 0004 with 61 62 63.");
    row("a pattern longer than the block", 4, 2, "0x61,0x62,0x63", "0123ab6789ABCDEFGHIJ",
        "Filled 2 bytes at 0004 with 61 62 63.");
    row("a long pattern", 0, 20, "616263646566676869", "abcdefghiabcdefghiab",
        "Filled 20 bytes at 0000 with a pattern of 9 bytes.");
}

void TestWindowFill::fills() {
    QFETCH(const int, offset);
    QFETCH(const int, length);
    QFETCH(const QString, with);
    QFETCH(const QByteArray, expected);
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, offset, length);
    FillWindow &window = openFill(velm);
    window.controls().last->setText(QString::number(offset + length - 1, 16));
    window.controls().pattern->setText(with);
    press(velm, window);
    QCOMPARE(imageAndFile(velm), expected);
    QTEST(velm.message(), "message");
    QVERIFY(!openWindow<FillWindow>(velm));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    velm.delegate().edits().redo();
    QCOMPARE(imageAndFile(velm), expected);
}

void TestWindowFill::badInput_isSaidAndFillsNothing_data() {
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, const char *first, const char *last, const char *with,
                        const char *said) {
        QTest::newRow(name) << QString::fromUtf8(first) << QString::fromUtf8(last)
                            << QString::fromUtf8(with) << QString::fromUtf8(said);
    };
    row("no first address", "y", "3", "FF",
        "\u201cy\u201d is no address: it takes hexadecimal digits, or decimal ones behind #.");
    row("no last address", "0", "x", "FF",
        "\u201cx\u201d is no address: it takes hexadecimal digits, or decimal ones behind #.");
    row("last before first", "4", "3", "FF", "The last byte, at 3, is before the first, at 4.");
    row("behind the end", "0", "14", "FF", "There is no byte at 14: the last one is at 0013.");
    row("an address of more than 32 bits", "100000000", "3", "FF",
        "There is no byte at 100000000: the last one is at 0013.");
    row("nothing to fill with", "0", "3", " ", "There is no byte to fill with.");
    row("an odd digit", "0", "3", "FF F",
        "Line 1, character 4: \u201cF\u201d has an odd number of digits.");
    row("no digit", "0", "3", "FG",
        "Line 1, character 2: \u201cG\u201d is no byte in hexadecimal digits.");
}

void TestWindowFill::badInput_isSaidAndFillsNothing() {
    QFETCH(const QString, first);
    QFETCH(const QString, last);
    QFETCH(const QString, with);
    WindowFixture velm;
    showTwentyBytes(velm);
    FillWindow &window = openFill(velm);
    window.controls().first->setText(first);
    window.controls().last->setText(last);
    window.controls().pattern->setText(with);
    QTEST(window.controls().result->text(), "said");
    QVERIFY(!window.controls().fillButton->isEnabled());
    emit window.controls().fillButton->clicked(); // as assistive technology can
    velm.settle();
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QCOMPARE(velm.beeps, 0);
}

void TestWindowFill::addresses_areTypedFromTheCursorAsWell() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 4, 1);
    FillWindow &window = openFill(velm);
    window.controls().first->setText(QStringLiteral("-1"));
    window.controls().last->setText(QStringLiteral("+2"));
    window.controls().pattern->setText(QStringLiteral("61"));
    QCOMPARE(window.controls().result->text(), QStringLiteral("Will fill 4 bytes at 0003."));
    press(velm, window);
    QCOMPARE(imageAndFile(velm), QByteArray("012aaaa789ABCDEFGHIJ"));
}

void TestWindowFill::randomBytes_comeBackTheSame() {
    WindowFixture velm;
    showBytes(velm, QByteArray(4096, 'x'));
    selectBytes(velm, 16, 4000);
    FillWindow &window = openFill(velm);
    window.controls().random->setChecked(true);
    QVERIFY(!window.controls().pattern->isEnabled());
    press(velm, window);
    const QByteArray filled = imageAndFile(velm);
    QCOMPARE(filled.first(16) + filled.last(80), QByteArray(96, 'x'));
    QVERIFY(filled.mid(16, 4000).count('x') < 100);
    QCOMPARE(velm.message(), QStringLiteral("Filled 4,000 bytes at 0010 with random bytes."));
    velm.delegate().edits().undo();
    QCOMPARE(imageAndFile(velm), QByteArray(4096, 'x'));
    velm.delegate().edits().redo();
    QCOMPARE(imageAndFile(velm), filled);
}

void TestWindowFill::emptyImage_isNotAskedAbout() {
    WindowFixture velm;
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    choose(velm, QStringLiteral("F&ill\u2026"));
    QVERIFY(!openWindow<FillWindow>(velm));
    QVERIFY2(velm.message().contains(u"There are no bytes to fill."), qPrintable(velm.message()));
}

void TestWindowFill::window_offersTheBlockElseTheRest() {
    WindowFixture velm;
    showTwentyBytes(velm);
    const auto offered = [](FillWindow &window) {
        return window.controls().first->text() + u'-' + window.controls().last->text();
    };
    selectBytes(velm, 2, 3);
    FillWindow &window = openFill(velm);
    QCOMPARE(offered(window), QStringLiteral("0002-0004"));
    selectBytes(velm, 5, 1);
    QCOMPARE(&openFill(velm), &window);
    QCOMPARE(offered(window), QStringLiteral("0005-0013"));
    QCOMPARE(window.controls().result->text(), QStringLiteral("Will fill 15 bytes at 0005."));
    QTest::keyClick(&window, Qt::Key_Escape);
    velm.settle();
    QVERIFY(!openWindow<FillWindow>(velm));
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
}

void TestWindowFill::window_offersTheSelectedRows() {
    WindowFixture velm;
    showBytes(velm, QByteArray(100, 'x'));
    GridView *grid = velm.controls().tableview;
    grid->setFocus();
    const auto at = [grid](int row) {
        return grid->visualRect(grid->model()->index(row, 0)).center();
    };
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at(1));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::ShiftModifier, at(3));
    FillWindow &window = openFill(velm);
    QCOMPARE(window.controls().first->text(), QStringLiteral("0010"));
    QCOMPARE(window.controls().last->text(), QStringLiteral("003F"));
    press(velm, window);
    QCOMPARE(imageAndFile(velm),
             QByteArray(16, 'x') + QByteArray(48, '\xFF') + QByteArray(36, 'x'));
}

void TestWindowFill::withoutAByte_offersNone_data() {
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("column");
    QTest::newRow("behind the last byte") << QList<int>{1} << 9;
    QTest::newRow("rows apart") << QList<int>{0, 2} << 0;
}

void TestWindowFill::withoutAByte_offersNone() {
    QFETCH(const QList<int>, rows);
    QFETCH(const int, column);
    WindowFixture velm;
    const QByteArray image(rows.size() == 1 ? 20 : 40, 'x');
    showBytes(velm, image);
    GridView *grid = velm.controls().tableview;
    for (const int row : rows) {
        grid->selectionModel()->setCurrentIndex(grid->model()->index(row, column),
                                                QItemSelectionModel::Select |
                                                    QItemSelectionModel::Rows);
    }
    FillWindow &window = openFill(velm);
    QCOMPARE(window.controls().first->text(), QString());
    QCOMPARE(window.controls().last->text(), QString());
    QTest::keyClick(&window, Qt::Key_Return);
    velm.settle();
    QCOMPARE(imageAndFile(velm), image);
    // What was offered before is not offered again.
    selectBytes(velm, 2, 3);
    openFill(velm);
    grid->moveTo(grid->model()->index(int(image.size() / 16), 12));
    openFill(velm);
    QCOMPARE(window.controls().first->text(), QString());
}

void TestWindowFill::window_followsTheImage() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    FillWindow &window = openFill(velm);
    QVERIFY(window.controls().fillButton->isEnabled());
    velm.delegate().openBinary(velm.write(QStringLiteral("short.bin"), "0123"));
    velm.settle();
    QVERIFY(!window.controls().fillButton->isEnabled());
    QCOMPARE(window.controls().result->text(),
             QStringLiteral("There is no byte at 0013: the last one is at 0003."));
    velm.delegate().openBinary(velm.write(QStringLiteral("empty.bin"), ""));
    velm.settle();
    QCOMPARE(window.controls().result->text(), QStringLiteral("There are no bytes."));
}

void TestWindowFill::refusal_leavesTheWindowOpen() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    FillWindow &window = openFill(velm);
    velm.useTool("sleep 60\n");
    velm.whileBusy([&] {
        press(velm, window);
        velm.delegate().stopRun();
    });
    velm.click(velm.controls().btn_verify);
    QTRY_VERIFY(velm.velm().work().isIdle());
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(window.isVisible());
    QCOMPARE(window.controls().result->text(),
             QStringLiteral("Nothing was filled: the main window says why."));
}

void TestWindowFill::refusalOfAnotherTab_isSaidInTheWindow() {
    WindowFixture velm;
    showTwentyBytes(velm);
    selectBytes(velm, 0, 1);
    FillWindow &window = openFill(velm);
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    const SpokenWords speaker;
    press(velm, window);
    QCOMPARE(imageAndFile(velm), QByteArray("0123456789ABCDEFGHIJ"));
    QVERIFY(window.controls().result->text().contains(u"Only the data to burn"));
    QCOMPARE(speaker.spoken.count(window.controls().result->text()), 1);
}

void TestWindowFill::everyControl_hasANameAndATip() {
    WindowFixture velm;
    showTwentyBytes(velm);
    FillWindow &window = openFill(velm);
    const Ui::FillWindow &c = window.controls();
    const QList<QWidget *> controls = {c.first,  c.last,       c.pattern,
                                       c.random, c.fillButton, c.cancelButton};
    QStringList names;
    QStringList marks;
    for (const QWidget *control : controls) {
        QVERIFY(!control->toolTip().isEmpty());
        names << control->accessibleName();
    }
    for (const QString &text : {c.firstLabel->text(), c.lastLabel->text(), c.patternLabel->text(),
                                c.random->text(), c.fillButton->text()})
        marks << QKeySequence::mnemonic(text).toString();
    QCOMPARE(names.removeDuplicates(), 0);
    QVERIFY(!names.contains(QString()));
    QCOMPARE(marks.removeDuplicates(), 0);
    QVERIFY(!marks.contains(QString()));
}

QTEST_MAIN(TestWindowFill)
#include "tst_window_fill.moc"
