// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/Themes.h"
#include "widgets/ConsoleView.h"

#include "support/ShownConsole.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

class TestConsoleView : public QObject {
    Q_OBJECT

private slots:
    void storageAndView_areKeptApart();
    void firstPiece_isShownAtOnce();
    void laterPieces_areShownSoon();
    void runs_areSetOffInTheViewOnly();
    void everyCharacter_hasTheSameColourAndFont();
    void characters_followThePalette();
    void append_scrollsToTheEnd();
    void append_scrollsToTheEndOfALongLine();
    void followOutput_isOnAtEveryStart();
    void followOutput_offHoldsTheView();
    void selection_doesNotGrow_data();
    void selection_doesNotGrow();
    void newConsole_selectsNothing();
    void trim_boundsStorageAndViewAndIsToldOnce();
    void trim_holdsWhatTheUserLooksAt();
    void manyLines_areBounded();
    void linesThatComeOneByOne_areBoundedInView();
    void clearedConsole_saysAgainWhatIsOutOfView();
    void flood_leavesTheLoopTurning();
    void copyAll_takesTheStoredText();
    void copy_takesTheShownText();
    void save_isAskedFor();
    void wrappedLines_endAtTheEdge();
    void clear_emptiesBoth();
    void contextMenu_offersTheActions();
    void keyboard_leavesByTab();
    void height_isThatOfTheLines_data();
    void height_isThatOfTheLines();
};

namespace {

/// The formats of all characters, each once, as "points colour".
QStringList formats(const ConsoleView &view) {
    QStringList found;
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            const QString words = format.font().family() + u' ' +
                                  QString::number(format.fontPointSize()) + u' ' +
                                  format.foreground().color().name();
            if (!found.contains(words))
                found.append(words);
        }
    return found;
}

QString formatIn(const QPalette &palette) {
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family() + QStringLiteral(" 21 ") +
           palette.color(QPalette::Text).name();
}

} // namespace

void TestConsoleView::storageAndView_areKeptApart() {
    ConsoleView view;
    const QStringList pieces = {QStringLiteral("\r\x1b[KReading Code...  "),
                                QStringLiteral(" 0%"),
                                QStringLiteral("\r\x1b"),
                                QStringLiteral("[KReading Code...  50%"),
                                QStringLiteral("\r\x1b[KRead. OK\r\n"),
                                QStringLiteral("\a\x1b[0;91mbad\x1b[0m")};
    for (const QString &piece : pieces)
        view.appendText(piece);
    view.flush();
    QCOMPARE(view.storedText(), pieces.join(QString()));
    QCOMPARE(view.toPlainText(), QStringLiteral("Read. OK\nbad"));
}

void TestConsoleView::firstPiece_isShownAtOnce() {
    ConsoleView view;
    view.appendText(QStringLiteral("first"));
    QCOMPARE(view.toPlainText(), QStringLiteral("first"));
}

void TestConsoleView::laterPieces_areShownSoon() {
    ConsoleView view;
    view.beginRun();
    view.appendText(QStringLiteral("first"));
    view.appendText(QStringLiteral(" second"));
    view.appendText(QStringLiteral(" third"));
    view.endRun();
    QTRY_COMPARE(view.toPlainText(), QStringLiteral("first second third"));
}

void TestConsoleView::runs_areSetOffInTheViewOnly() {
    ConsoleView view;
    for (const QString &text :
         {QStringLiteral("one"), QStringLiteral("two\n"), QStringLiteral("\rthree")}) {
        view.beginRun();
        view.appendText(text);
        view.endRun();
    }
    view.flush();
    QCOMPARE(view.storedText(), QStringLiteral("onetwo\n\rthree"));
    QCOMPARE(view.toPlainText(), QStringLiteral("one\n\ntwo\n\nthree"));
}

void TestConsoleView::everyCharacter_hasTheSameColourAndFont() {
    ConsoleView view;
    view.beginRun();
    view.appendText(QStringLiteral("plain \x1b[31mred\x1b[0m\nabc\rX\u00e9\U0001f600\n"));
    view.endRun();
    view.beginRun();
    view.appendText(QStringLiteral("next"));
    view.flush();
    QCOMPARE(formats(view), QStringList{formatIn(view.palette())});
}

void TestConsoleView::characters_followThePalette() {
    ConsoleView view;
    view.appendText(QStringLiteral("one\ntwo"));
    view.setPalette(darkPalette());
    view.appendText(QStringLiteral("\nthree"));
    view.flush();
    QCOMPARE(formats(view), QStringList{formatIn(darkPalette())});
}

void TestConsoleView::append_scrollsToTheEnd() {
    ConsoleView view;
    showView(view);
    view.appendText(numberedLines(5000));
    view.flush();
    QVERIFY(showsEnd(view));
    view.verticalScrollBar()->setValue(0);
    view.appendText(QStringLiteral("last"));
    view.flush();
    QVERIFY(showsEnd(view));
}

void TestConsoleView::append_scrollsToTheEndOfALongLine() {
    ConsoleView view;
    showView(view);
    view.appendText(QString(400, u'x'));
    view.flush();
    QVERIFY(showsEnd(view));
    QVERIFY(view.horizontalScrollBar()->value() > 0);
    view.appendText(QStringLiteral("\nshort"));
    view.flush();
    QVERIFY(showsEnd(view));
    QCOMPARE(view.horizontalScrollBar()->value(), 0);
}

void TestConsoleView::followOutput_isOnAtEveryStart() {
    {
        ConsoleView view;
        view.followOutputAction()->setChecked(false);
    }
    ConsoleView view;
    QVERIFY(view.followOutputAction()->isCheckable());
    QVERIFY(view.followOutputAction()->isChecked());
}

void TestConsoleView::followOutput_offHoldsTheView() {
    ConsoleView view;
    showView(view);
    view.appendText(numberedLines(200));
    view.flush();
    view.followOutputAction()->setChecked(false);
    view.verticalScrollBar()->setValue(50);
    view.appendText(numberedLines(200));
    view.flush();
    QCOMPARE(view.verticalScrollBar()->value(), 50);
    view.followOutputAction()->setChecked(true);
    QVERIFY(showsEnd(view));
}

void TestConsoleView::selection_doesNotGrow_data() {
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::newRow("a cursor at the start") << 0 << 0;
    QTest::newRow("a cursor at the end") << 7 << 7;
    QTest::newRow("all, forwards") << 0 << 7;
    QTest::newRow("all, backwards") << 7 << 0;
    QTest::newRow("a word in the middle") << 1 << 3;
}

void TestConsoleView::selection_doesNotGrow() {
    QFETCH(int, anchor);
    QFETCH(int, position);
    ConsoleView view;
    view.appendText(QStringLiteral("one\ntwo"));
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    view.setTextCursor(cursor);
    view.appendText(QStringLiteral("\nthree\r\x1b[Kfour"));
    view.flush();
    QCOMPARE(view.toPlainText(), QStringLiteral("one\ntwo\nfour"));
    QCOMPARE(QList<int>({view.textCursor().anchor(), view.textCursor().position()}),
             QList<int>({anchor, position}));
}

void TestConsoleView::newConsole_selectsNothing() {
    ConsoleView view;
    view.appendText(QStringLiteral("one\n"));
    view.appendText(QStringLiteral("\rtwo"));
    view.flush();
    QVERIFY(!view.textCursor().hasSelection());
}

void TestConsoleView::trim_boundsStorageAndViewAndIsToldOnce() {
    ConsoleView view(nullptr, 10000);
    QSignalSpy spy(&view, &ConsoleView::trimmed);
    view.beginRun();
    for (int piece = 0; piece < 100; ++piece) {
        view.appendText(numberedLines(100));
        view.flush();
    }
    QVERIFY(view.storedText().size() <= 10000);
    QVERIFY(view.toPlainText().size() <= 10000);
    QVERIFY(view.toPlainText().size() > 9000);
    QVERIFY(view.storedText().endsWith(view.toPlainText()));
    QCOMPARE(spy.count(), 1);
}

void TestConsoleView::trim_holdsWhatTheUserLooksAt() {
    ConsoleView view(nullptr, 10000);
    showView(view);
    view.appendText(numberedLines(2000));
    view.flush();
    view.followOutputAction()->setChecked(false);
    view.verticalScrollBar()->setValue(1000);
    const QString looked = view.cursorForPosition(QPoint(5, 5)).block().text();
    view.appendText(numberedLines(500));
    view.flush();
    QCOMPARE(view.cursorForPosition(QPoint(5, 5)).block().text(), looked);
}

void TestConsoleView::manyLines_areBounded() {
    ConsoleView view;
    QSignalSpy trimmed(&view, &ConsoleView::trimmed);
    QSignalSpy shortened(&view, &ConsoleView::shortened);
    const QString lines(3 * ConsoleView::maxLines, u'\n');
    view.appendText(lines);
    view.flush();
    view.appendText(QStringLiteral("last"));
    view.flush();
    QVERIFY(view.blockCount() <= ConsoleView::maxLines);
    QVERIFY(view.toPlainText().endsWith(u"\nlast"));
    QCOMPARE(view.storedText(), lines + QStringLiteral("last"));
    QCOMPARE(trimmed.count(), 0);
    QCOMPARE(shortened.count(), 1);
}

void TestConsoleView::linesThatComeOneByOne_areBoundedInView() {
    ConsoleView view;
    QSignalSpy shortened(&view, &ConsoleView::shortened);
    for (int half = 0; half < 3; ++half) {
        view.appendText(numberedLines(ConsoleView::maxLines / 2));
        view.flush();
    }
    QVERIFY(view.blockCount() <= ConsoleView::maxLines);
    QVERIFY(view.storedText().endsWith(view.toPlainText()));
    QCOMPARE(shortened.count(), 1);
}

void TestConsoleView::clearedConsole_saysAgainWhatIsOutOfView() {
    ConsoleView view;
    QSignalSpy shortened(&view, &ConsoleView::shortened);
    for (int time = 0; time < 2; ++time) {
        view.appendText(QString(2 * ConsoleView::maxLines, u'\n'));
        view.clearAll();
    }
    QCOMPARE(shortened.count(), 2);
}

void TestConsoleView::flood_leavesTheLoopTurning() {
    ConsoleView view;
    showView(view);
    const QString piece = numberedLines(ConsoleView::maxLines / 3);
    for (int count = 0; count < 2; ++count)
        view.appendText(piece);
    // The view has taken in one turn's share only, and goes on by itself.
    QVERIFY(view.toPlainText().size() < view.storedText().size());
    QTRY_COMPARE_WITH_TIMEOUT(view.toPlainText().size(), 2 * piece.size(), 60000);
    QVERIFY(showsEnd(view));
}

void TestConsoleView::copyAll_takesTheStoredText() {
    ConsoleView view;
    QVERIFY(!view.copyAllAction()->isEnabled());
    view.appendText(QStringLiteral("abc\r\x1b[Kd\n"));
    view.copyAllAction()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("abc\r\x1b[Kd\n"));
}

void TestConsoleView::copy_takesTheShownText() {
    ConsoleView view;
    view.appendText(QStringLiteral("abc\r\x1b[Kd\ne"));
    view.selectAll();
    view.copy();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("d\ne"));
}

void TestConsoleView::save_isAskedFor() {
    ConsoleView view;
    QSignalSpy spy(&view, &ConsoleView::saveRequested);
    view.appendText(QStringLiteral("abc"));
    view.saveAction()->trigger();
    QCOMPARE(spy.count(), 1);
}

void TestConsoleView::wrappedLines_endAtTheEdge() {
    ConsoleView view;
    showView(view);
    view.appendText(QString(1000, u'x'));
    QVERIFY(view.horizontalScrollBar()->maximum() > 0);
    view.wrapAction()->trigger();
    QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
    QVERIFY(showsEnd(view));
    view.wrapAction()->trigger();
    QVERIFY(view.horizontalScrollBar()->maximum() > 0);
}

void TestConsoleView::clear_emptiesBoth() {
    ConsoleView view;
    view.beginRun();
    view.appendText(QStringLiteral("abc\ndef\x1b["));
    view.clearAction()->trigger();
    QCOMPARE(view.storedText() + view.toPlainText(), QString());
    QVERIFY(!view.clearAction()->isEnabled());
    view.appendText(QStringLiteral("new"));
    view.flush();
    QCOMPARE(view.storedText() + u'|' + view.toPlainText(), QStringLiteral("new|new"));
}

void TestConsoleView::contextMenu_offersTheActions() {
    ConsoleView view;
    showView(view);
    view.appendText(QStringLiteral("abc"));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            view.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(view.viewport(), &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList items;
    for (const QAction *action : menu->actions())
        items.append(action->isSeparator() ? QStringLiteral("-") : action->text().remove(u'&'));
    QCOMPARE(items, QStringList({QStringLiteral("Copy"), QStringLiteral("Copy whole console"),
                                 QStringLiteral("Save console…"), QStringLiteral("-"),
                                 QStringLiteral("Select all"), QStringLiteral("Clear console"),
                                 QStringLiteral("-"), QStringLiteral("Follow output"),
                                 QStringLiteral("Wrap long lines")}));
    menu->close();
}

void TestConsoleView::keyboard_leavesByTab() {
    QWidget window;
    auto *view = new ConsoleView(&window);
    auto *other = new QWidget(&window);
    other->setFocusPolicy(Qt::StrongFocus);
    window.show();
    QApplication::setActiveWindow(&window);
    view->setFocus();
    QTRY_VERIFY(view->hasFocus());
    QTest::keyClick(view, Qt::Key_Tab);
    QVERIFY(other->hasFocus());
}

void TestConsoleView::height_isThatOfTheLines_data() {
    QTest::addColumn<int>("frame");
    QTest::addColumn<double>("margin");
    QTest::newRow("as it comes") << int(QFrame::StyledPanel) << 4.0;
    QTest::newRow("without a frame") << int(QFrame::NoFrame) << 4.0;
    QTest::newRow("with wide margins") << int(QFrame::StyledPanel) << 20.0;
}

void TestConsoleView::height_isThatOfTheLines() {
    QFETCH(const int, frame);
    QFETCH(const double, margin);
    ConsoleView view;
    showView(view);
    view.setFrameStyle(frame);
    view.document()->setDocumentMargin(margin);
    view.appendText(QStringLiteral("1\n2\n3\n4"));
    view.flush();
    view.resize(600, view.heightFor(4));
    QTRY_COMPARE(view.verticalScrollBar()->maximum(), 0);
    view.resize(600, view.heightFor(4) - 1);
    QTRY_COMPARE(view.verticalScrollBar()->maximum(), 1);
    view.resize(600, view.heightFor(5) - 1);
    QTRY_COMPARE(view.verticalScrollBar()->maximum(), 0);
    view.appendText(QStringLiteral("\n5"));
    view.flush();
    QTRY_COMPARE(view.verticalScrollBar()->maximum(), 1);
}

QTEST_MAIN(TestConsoleView)
#include "tst_consoleview.moc"
