// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Announcement.h"
#include "window/EditingSteps.h"

#include "ui_FindBar.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTextDocumentFragment>

/// Searching for bytes in the image that is shown.
class TestWindowFind : public QObject {
    Q_OBJECT

private slots:
    void bar_showsWhenItIsAskedFor();
    void escape_givesTheGridTheKeyboard_data();
    void escape_givesTheGridTheKeyboard();
    void hits_areCountedAndMarked_data();
    void hits_areCountedAndMarked();
    void steps_goFromHitToHitAndAround();
    void steps_beginWhereTheCursorIs();
    void keys_stepFromTheGrid();
    void keys_withoutAnythingToSearchFor_leadToTheField();
    void badPattern_saysWhy();
    void notFound_isSaidAndNothingMoves();
    void edits_areFollowed();
    void marks_areDrawnAnew();
    void anotherTab_isAnotherImage();
    void logicResults_haveNoBytes();
    void emptyImage_hasNoBytes();
    void dismissed_keepsWhatWasSearchedForAndShowsNoMarks();
    void largeImage_isSearchedInTurns();
    void stepAhead_isTakenWhenItsPlaceIsSearched();
    void anotherImage_endsAStep();
    void matchCase_isForTextAlone();
    void assistiveTechnology_isToldOnce();
};

namespace {

constexpr int hexadecimalChoice = 0;
constexpr int textChoice = 1;
constexpr int text16Choice = 2;

/// What of a widget has been painted.
class PaintedRegion final : public QObject {
public:
    explicit PaintedRegion(QWidget &widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }

    QRegion region;
};

Ui::FindBar &bar(WindowFixture &velm) {
    return velm.controls().findBar->controls();
}

void type(WindowFixture &velm, const QString &text, int choice = textChoice) {
    velm.controls().findBar->find();
    bar(velm).kind->setCurrentIndex(choice);
    bar(velm).what->setText(text);
}

QString count(WindowFixture &velm) {
    return bar(velm).count->text();
}

QString remark(WindowFixture &velm) {
    return bar(velm).remark->text();
}

/// The offset of the byte under the grid's cursor.
int cursor(WindowFixture &velm) {
    const QModelIndex cell = velm.controls().tableview->currentIndex();
    return cell.row() * 16 + cell.column() - 1;
}

void moveTo(WindowFixture &velm, int offset) {
    velm.controls().tableview->showAddress(offset);
    velm.settle();
}

/// Which bytes of the first two rows are marked as found.
QString marks(WindowFixture &velm) {
    const GridModel *model = velm.controls().tableview->gridModel();
    QString marks;
    for (int row = 0; row < model->rowCount(); ++row)
        for (int column = firstByteColumn; column <= lastByteColumn; ++column)
            marks += model->mark(row, column).found ? u'^' : u'.';
    return marks;
}

void showPaddedImage(WindowFixture &velm, const char *kibibytes) {
    velm.settings().setValue(settingsKeys::pad_to, QString::fromLatin1(kibibytes));
    velm.settings().setValue(settingsKeys::pad, true);
    showTwentyBytes(velm);
}

} // namespace

void TestWindowFind::bar_showsWhenItIsAskedFor() {
    WindowFixture velm;
    showTwentyBytes(velm);
    FindBar *find = velm.controls().findBar;
    QVERIFY(!find->isVisible());
    velm.controls().tableview->setFocus();
    QTest::keyClick(&velm.velm().window(), Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(bar(velm).what->hasFocus());
    QVERIFY(find->isVisible());
    bar(velm).what->setText(QStringLiteral("12 34"));
    velm.controls().tableview->setFocus();
    // A field whose text is selected before it gets the keyboard is not named by a screen reader.
    const QSignalSpy moved(qApp, &QApplication::focusChanged);
    connect(bar(velm).what, &QLineEdit::selectionChanged, this, [&] { QCOMPARE(moved.size(), 1); });
    QTest::keyClick(&velm.velm().window(), Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(bar(velm).what->hasFocus());
    QCOMPARE(bar(velm).what->selectedText(), QStringLiteral("12 34"));
}

void TestWindowFind::escape_givesTheGridTheKeyboard_data() {
    QTest::addColumn<QString>("control");
    for (const char *name : {"what", "kind", "matchCase", "previous", "next", "address"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestWindowFind::escape_givesTheGridTheKeyboard() {
    QFETCH(QString, control);
    WindowFixture velm;
    showTwentyBytes(velm);
    type(velm, QStringLiteral("12"));
    auto *widget = velm.controls().findBar->findChild<QWidget *>(control);
    widget->setFocus();
    QVERIFY(widget->hasFocus());
    const QSignalSpy moved(qApp, &QApplication::focusChanged);
    QTest::keyClick(widget, Qt::Key_Escape);
    QVERIFY(!velm.controls().findBar->isVisible());
    QVERIFY(velm.controls().tableview->hasFocus());
    QCOMPARE(moved.size(), 1);
}

void TestWindowFind::hits_areCountedAndMarked_data() {
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("choice");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<QString>("expectedCount");
    QTest::addColumn<QString>("expectedMarks");
    QTest::newRow("digits") << QByteArray("0123401") << QStringLiteral("30 31") << hexadecimalChoice
                            << false << QStringLiteral("1 of 2")
                            << QStringLiteral("^^...^^.........");
    QTest::newRow("any digit") << QByteArray("xyABab") << QStringLiteral("4?") << hexadecimalChoice
                               << false << QStringLiteral("2 hits")
                               << QStringLiteral("..^^............");
    QTest::newRow("across rows") << QByteArray("..............needle") << QStringLiteral("needle")
                                 << textChoice << false << QStringLiteral("1 hit")
                                 << QStringLiteral("..............^^^^^^............");
    QTest::newRow("either case") << QByteArray(".Rom rOM") << QStringLiteral("rom") << textChoice
                                 << false << QStringLiteral("2 hits")
                                 << QStringLiteral(".^^^.^^^........");
    QTest::newRow("this case") << QByteArray(".Rom rom") << QStringLiteral("rom") << textChoice
                               << true << QStringLiteral("1 hit")
                               << QStringLiteral(".....^^^........");
    QTest::newRow("two bytes a letter")
        << QByteArray(".R\0o\0..ro", 9) << QStringLiteral("ro") << text16Choice << false
        << QStringLiteral("1 hit") << QStringLiteral(".^^^^...........");
    QTest::newRow("hits that overlap")
        << QByteArray(".AAA.") << QStringLiteral("41 41") << hexadecimalChoice << false
        << QStringLiteral("2 hits") << QStringLiteral(".^^^............");
}

void TestWindowFind::hits_areCountedAndMarked() {
    QFETCH(QByteArray, image);
    QFETCH(QString, typed);
    QFETCH(int, choice);
    QFETCH(bool, matchCase);
    QFETCH(QString, expectedCount);
    QFETCH(QString, expectedMarks);
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary, velm.write(QStringLiteral("rom.bin"), image));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    moveTo(velm, 0);
    bar(velm).matchCase->setChecked(matchCase);
    type(velm, typed, choice);
    QTRY_COMPARE(count(velm), expectedCount);
    QCOMPARE(marks(velm), expectedMarks);
    const GridModel *model = velm.controls().tableview->gridModel();
    const int found = int(expectedMarks.indexOf(u'^'));
    const QModelIndex cell = model->index(found / 16, found % 16 + 1);
    QCOMPARE(cell.data(Qt::AccessibleDescriptionRole).toString(), QStringLiteral("found"));
}

void TestWindowFind::steps_goFromHitToHitAndAround() {
    WindowFixture velm;
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), "AB..AB..AB"));
    velm.start();
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    moveTo(velm, 0);
    type(velm, QStringLiteral("ab"));
    QLineEdit *what = bar(velm).what;
    const auto comesTo = [&](int offset, const QString &words, const QString &said) {
        QTRY_COMPARE(cursor(velm), offset);
        QTRY_COMPARE(count(velm), words);
        QCOMPARE(remark(velm), said);
        QVERIFY(what->hasFocus());
    };
    QTest::keyClick(what, Qt::Key_Return);
    comesTo(4, QStringLiteral("2 of 3"), {});
    QTest::keyClick(what, Qt::Key_Return);
    comesTo(8, QStringLiteral("3 of 3"), {});
    QTest::keyClick(what, Qt::Key_Return);
    comesTo(0, QStringLiteral("1 of 3"), QStringLiteral("Went on from the beginning."));
    moveTo(velm, 1); // whoever went elsewhere knows
    comesTo(1, QStringLiteral("3 hits"), {});
    moveTo(velm, 0);
    QTest::keyClick(what, Qt::Key_Return, Qt::ShiftModifier);
    comesTo(8, QStringLiteral("3 of 3"), QStringLiteral("Went on from the end."));
    QTest::keyClick(what, Qt::Key_Return, Qt::ShiftModifier);
    comesTo(4, QStringLiteral("2 of 3"), {});
    QTest::mouseClick(bar(velm).next, Qt::LeftButton);
    QTRY_COMPARE(cursor(velm), 8);
    QTest::mouseClick(bar(velm).previous, Qt::LeftButton);
    QTRY_COMPARE(cursor(velm), 4);
}

void TestWindowFind::steps_beginWhereTheCursorIs() {
    WindowFixture velm;
    showTwentyBytes(velm);
    type(velm, QStringLiteral("3? 3?"), hexadecimalChoice); // 0 to 8
    QTRY_COMPARE(count(velm).section(u' ', -2), QStringLiteral("9 hits"));
    GridView *grid = velm.controls().tableview;
    grid->setCurrentIndex(grid->model()->index(1, addressColumn));
    velm.controls().findBar->findPrevious();
    QTRY_COMPARE(cursor(velm), 8);
    grid->setCurrentIndex(grid->model()->index(0, charactersColumn));
    velm.controls().findBar->findNext();
    QTRY_COMPARE(cursor(velm), 0);
    type(velm, QStringLiteral("4?"), hexadecimalChoice); // 10 to 19
    grid->setCurrentIndex(grid->model()->index(1, addressColumn));
    velm.controls().findBar->findNext();
    QTRY_COMPARE(cursor(velm), 16);
    type(velm, QStringLiteral("3? 3?"), hexadecimalChoice);
    moveTo(velm, 5);
    velm.controls().findBar->findNext();
    QTRY_COMPARE(cursor(velm), 6);
    grid->setCurrentIndex(QModelIndex());
    velm.controls().findBar->findNext();
    QTRY_COMPARE(cursor(velm), 0);
    QTRY_COMPARE(count(velm), QStringLiteral("1 of 9"));
}

void TestWindowFind::keys_stepFromTheGrid() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 0);
    type(velm, QStringLiteral("3?"), hexadecimalChoice);
    velm.controls().findBar->dismiss();
    QWidget *window = &velm.velm().window();
    QTest::keyClick(window, Qt::Key_F3);
    QTRY_COMPARE(cursor(velm), 1);
    QVERIFY(velm.controls().findBar->isVisible());
    QVERIFY(velm.controls().tableview->hasFocus());
    QTest::keyClick(window, Qt::Key_F3);
    QTRY_COMPARE(cursor(velm), 2);
    QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
    QTRY_COMPARE(cursor(velm), 1);
    QTRY_COMPARE(count(velm), QStringLiteral("2 of 10"));
}

void TestWindowFind::keys_withoutAnythingToSearchFor_leadToTheField() {
    WindowFixture velm;
    showTwentyBytes(velm);
    QTest::keyClick(&velm.velm().window(), Qt::Key_F3);
    QTRY_VERIFY(bar(velm).what->hasFocus());
    QCOMPARE(count(velm), QString());
    QCOMPARE(remark(velm), QString());
}

void TestWindowFind::badPattern_saysWhy() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 3);
    const auto described = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
    };
    type(velm, QStringLiteral("30 3"), hexadecimalChoice);
    QTRY_COMPARE(remark(velm), QStringLiteral("\u201c3\u201d ends with half a byte."));
    QCOMPARE(described(bar(velm).what), remark(velm));
    QCOMPARE(described(bar(velm).remark), remark(velm));
    QCOMPARE(count(velm), QString());
    QVERIFY(!marks(velm).contains(u'^'));
    QTest::keyClick(bar(velm).what, Qt::Key_Return);
    velm.settle();
    QCOMPARE(cursor(velm), 3);
    type(velm, QStringLiteral("3g"), hexadecimalChoice);
    QTRY_COMPARE(remark(velm), QStringLiteral("\u201c3g\u201d is not hexadecimal."));
    type(velm, QStringLiteral("<b>3</b>"), hexadecimalChoice);
    QTRY_COMPARE(remark(velm), QStringLiteral("\u201c<b>3</b>\u201d is not hexadecimal."));
    QCOMPARE(QTextDocumentFragment::fromHtml(bar(velm).remark->toolTip()).toPlainText(),
             remark(velm));
    type(velm, QStringLiteral("3\u20ac"), textChoice);
    QTRY_COMPARE(remark(velm), QStringLiteral("\u201c\u20ac\u201d takes more than 8 bits."));
    type(velm, QString(2000, u'1'), textChoice);
    QTRY_VERIFY(remark(velm).startsWith(u"More than 1"));
    type(velm, QStringLiteral("34"), hexadecimalChoice);
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    QCOMPARE(remark(velm), QString());
    QCOMPARE(described(bar(velm).remark), QString());
    QVERIFY(!described(bar(velm).what).contains(u"half"));
    QCOMPARE(velm.beeps, 0);
}

void TestWindowFind::notFound_isSaidAndNothingMoves() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 3);
    type(velm, QStringLiteral("nothing"));
    QTRY_COMPARE(count(velm), QStringLiteral("not found"));
    QTest::keyClick(bar(velm).what, Qt::Key_Return);
    velm.settle();
    QCOMPARE(cursor(velm), 3);
    QCOMPARE(remark(velm), QString());
}

void TestWindowFind::edits_areFollowed() {
    WindowFixture velm;
    showTwentyBytes(velm);
    type(velm, QStringLiteral("01"));
    QTRY_COMPARE(count(velm).right(5), QStringLiteral("1 hit"));
    enter(velm, 0, 8, QStringLiteral("'01'"));
    QTRY_COMPARE(count(velm), QStringLiteral("2 hits"));
    enter(velm, 1, 4, QStringLiteral("'01.....01....01'")); // rows come behind the last one
    QTRY_COMPARE(count(velm), QStringLiteral("5 hits"));
    QCOMPARE(marks(velm).left(24), QStringLiteral("^^.....^^..........^^..."));
    velm.delegate().edits().undo();
    QTRY_COMPARE(count(velm), QStringLiteral("2 hits"));
    velm.delegate().edits().undo();
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    QCOMPARE(marks(velm).left(16), QStringLiteral("^^.............."));
}

void TestWindowFind::marks_areDrawnAnew() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 0);
    velm.controls().findBar->find();
    velm.settle();
    GridView *grid = velm.controls().tableview;
    PaintedRegion painted(*grid->viewport());
    const QRect inLastRow = grid->visualRect(grid->model()->index(1, 1));
    QVERIFY(!painted.region.contains(inLastRow));
    bar(velm).what->setText(QStringLiteral("46 47"));
    QTRY_VERIFY(painted.region.contains(inLastRow));
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    velm.settle();
    // A hit that begins in one row ends in the next.
    painted.region = {};
    grid->model()->setData(grid->model()->index(0, lastByteColumn), QStringLiteral("45"));
    QTRY_COMPARE(count(velm), QStringLiteral("not found"));
    QTRY_VERIFY(painted.region.contains(inLastRow));
}

void TestWindowFind::anotherTab_isAnotherImage() {
    WindowFixture velm;
    velm.useTool("printf 'B.B.B' > \"$4\"\necho 'Reading Code...  0.01Sec  OK' >&2\n");
    showTwentyBytes(velm);
    type(velm, QStringLiteral("B"));
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    QTRY_COMPARE(remark(velm), QStringLiteral("There are no bytes to search."));
    velm.click(velm.controls().btn_read);
    QTRY_COMPARE(count(velm).right(6), QStringLiteral("3 hits"));
    QCOMPARE(marks(velm), QStringLiteral("^.^.^..........."));
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    QTRY_COMPARE(count(velm).right(5), QStringLiteral("1 hit"));
}

void TestWindowFind::logicResults_haveNoBytes() {
    WindowFixture velm;
    showTwentyBytes(velm);
    type(velm, QStringLiteral("1"));
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    velm.controls().tabview->selectTabViewItem(logicTabIdentifier());
    QTRY_COMPARE(remark(velm), QStringLiteral("There are no bytes among the logic test results."));
    QCOMPARE(count(velm), QString());
    velm.controls().findBar->findNext();
    velm.settle();
    QCOMPARE(remark(velm), QStringLiteral("There are no bytes among the logic test results."));
}

void TestWindowFind::emptyImage_hasNoBytes() {
    WindowFixture velm;
    velm.start();
    type(velm, QStringLiteral("??"), hexadecimalChoice);
    QTRY_COMPARE(remark(velm), QStringLiteral("There are no bytes to search."));
    QTest::keyClick(bar(velm).what, Qt::Key_Return);
    velm.settle();
    QCOMPARE(count(velm), QString());
}

void TestWindowFind::dismissed_keepsWhatWasSearchedForAndShowsNoMarks() {
    WindowFixture velm;
    showTwentyBytes(velm);
    type(velm, QStringLiteral("abc"));
    bar(velm).matchCase->setChecked(false);
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    QVERIFY(marks(velm).contains(u'^'));
    QTest::mouseClick(bar(velm).dismissButton, Qt::LeftButton);
    QVERIFY(!velm.controls().findBar->isVisible());
    QVERIFY(!marks(velm).contains(u'^'));
    velm.controls().findBar->find();
    QCOMPARE(bar(velm).what->text(), QStringLiteral("abc"));
    QCOMPARE(bar(velm).kind->currentIndex(), textChoice);
    QTRY_COMPARE(count(velm), QStringLiteral("1 hit"));
    QVERIFY(marks(velm).contains(u'^'));
}

void TestWindowFind::largeImage_isSearchedInTurns() {
    WindowFixture velm;
    showPaddedImage(velm, "65536");
    QSignalSpy turns(velm.controls().findBar->findChild<ImageFinder *>(), &ImageFinder::changed);
    type(velm, QStringLiteral("FF FF FF FF"), hexadecimalChoice);
    QTRY_VERIFY(count(velm).endsWith(u"hits"));
    QCOMPARE(count(velm), QLocale().toString(65536 * 1024 - 20 - 3) + QStringLiteral(" hits"));
    QVERIFY2(turns.size() > 2, qPrintable(QString::number(turns.size())));
}

void TestWindowFind::stepAhead_isTakenWhenItsPlaceIsSearched() {
    WindowFixture velm;
    showPaddedImage(velm, "65536");
    moveTo(velm, 0x100);
    type(velm, QStringLiteral("ghij"));
    velm.controls().findBar->findNext();
    QCOMPARE(cursor(velm), 0x100); // nobody has looked behind it so far
    QTRY_COMPARE(cursor(velm), 16);
    QTRY_COMPARE(remark(velm), QStringLiteral("Went on from the beginning."));
    QCOMPARE(count(velm), QStringLiteral("1 of 1"));
}

void TestWindowFind::anotherImage_endsAStep() {
    WindowFixture velm;
    showPaddedImage(velm, "65536");
    moveTo(velm, 0x100);
    type(velm, QStringLiteral("ghij"));
    velm.controls().findBar->findNext();
    velm.controls().tabview->selectTabViewItem(readTabIdentifier());
    velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
    const int before = cursor(velm);
    QTRY_VERIFY(count(velm).endsWith(u"1 hit"));
    QCOMPARE(cursor(velm), before);
}

void TestWindowFind::matchCase_isForTextAlone() {
    WindowFixture velm;
    velm.start();
    velm.controls().findBar->find();
    QVERIFY(!bar(velm).matchCase->isEnabled());
    for (const int choice : {textChoice, text16Choice}) {
        bar(velm).kind->setCurrentIndex(choice);
        QVERIFY(bar(velm).matchCase->isEnabled());
    }
    bar(velm).kind->setCurrentIndex(hexadecimalChoice);
    QVERIFY(!bar(velm).matchCase->isEnabled());
}

void TestWindowFind::assistiveTechnology_isToldOnce() {
    WindowFixture velm;
    showTwentyBytes(velm);
    moveTo(velm, 0);
    QSignalSpy told(velm.controls().findBar, &FindBar::announced);
    type(velm, QStringLiteral("0"));
    bar(velm).what->setText(QStringLiteral("01"));
    QTRY_COMPARE(told.size(), 1);
    QCOMPARE(told.takeFirst().first().toString(), QStringLiteral("1 of 1"));
    QTest::keyClick(bar(velm).what, Qt::Key_Return);
    QTRY_COMPARE(told.size(), 1);
    QCOMPARE(told.takeFirst().first().toString(),
             QStringLiteral("1 of 1. Went on from the beginning."));
    auto *last = velm.controls().findBar->findChildren<Announcement *>().last();
    QCOMPARE(QAccessible::queryAccessibleInterface(last)->text(QAccessible::Name),
             QStringLiteral("1 of 1. Went on from the beginning."));
    const auto *counted = QAccessible::queryAccessibleInterface(bar(velm).count);
    QCOMPARE(counted->text(QAccessible::Name), QStringLiteral("Count"));
    QCOMPARE(counted->text(QAccessible::Description), QStringLiteral("1 of 1"));
}

QTEST_MAIN(TestWindowFind)
#include "tst_window_find.moc"
