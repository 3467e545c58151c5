// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/BoundedText.h"
#include "support/Themes.h"
#include "widgets/Announcement.h"
#include "widgets/MessageLine.h"
#include "widgets/Palette.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QVBoxLayout>

using Severity = MessageLine::Severity;
using Texts = QList<QList<QVariant>>;

class TestMessageLine : public QObject {
    Q_OBJECT

private slots:
    void messages_areShownNewestFirst();
    void severity_isAWordAndAReadableColour_data();
    void severity_isAWordAndAReadableColour();
    void sentence_staysOnOneLine();
    void sentence_losesItsMiddleIfItIsTooLong();
    void text_isReadByAssistiveTechnology();
    void height_isAlwaysTheSame();
    void longSentence_isWrapped();
    void action_hasAButton();
    void action_mayClearItsOwnMessage();
    void eachAction_hasAButtonOfItsOwn();
    void button_staysWithItsMessage();
    void buttons_standBesideEachOtherAfterTheText();
    void buttons_leaveRoomForTheText();
    void buttons_standBesideTheScrollBar();
    void buttons_areReachedByKeyboardInTheirOrder();
    void repeatedMessage_keepsTheSelection();
    void messages_ofOneMomentAreAnnouncedOnce();
    void announcement_isANotification();
    void messageThatHasGone_isNotAnnounced();
};

namespace {

QPushButton *shownButton(const MessageLine &line) {
    for (QPushButton *button : line.findChildren<QPushButton *>())
        if (!button->isHidden())
            return button;
    return nullptr;
}

/// The buttons in the order in which they are found.
QList<QPushButton *> shownButtons(const MessageLine &line) {
    QList<QPushButton *> buttons = line.findChildren<QPushButton *>();
    buttons.removeIf([](const QPushButton *button) { return button->isHidden(); });
    return buttons;
}

QStringList labels(const MessageLine &line) {
    QStringList all;
    for (const QPushButton *button : shownButtons(line))
        all.append(button->text());
    return all;
}

/// The message line at the foot of a window, as it is used.
struct Window {
    Window() {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&room, 1);
        column->addWidget(&line);
        window.resize(500, 300);
        window.show();
        QApplication::setActiveWindow(&window);
        QCoreApplication::processEvents();
    }

    int height() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return line.height();
    }

    QWidget window;
    QWidget room;
    MessageLine line;
};

void setNumbered(MessageLine &line, int count) {
    for (int number = 1; number <= count; ++number)
        line.setMessage(number, Severity::Information, QStringLiteral("Message %1.").arg(number),
                        {});
}

} // namespace

void TestMessageLine::messages_areShownNewestFirst() {
    MessageLine line;
    line.setMessage('a', Severity::Information, QStringLiteral("First."), {});
    line.setMessage('b', Severity::Warning, QStringLiteral("Second."), {});
    QCOMPARE(line.toPlainText(), QStringLiteral("Warning: Second.\nFirst."));
    line.setMessage('a', Severity::Problem, QStringLiteral("Third."), {});
    QCOMPARE(line.toPlainText(), QStringLiteral("Problem: Third.\nWarning: Second."));
    line.clearMessage('a');
    line.clearMessage('?');
    QCOMPARE(line.toPlainText(), QStringLiteral("Warning: Second."));
    line.clearMessage('b');
    QCOMPARE(line.toPlainText(), QString());
}

void TestMessageLine::severity_isAWordAndAReadableColour_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
}

void TestMessageLine::severity_isAWordAndAReadableColour() {
    QFETCH(QPalette, palette);
    MessageLine line;
    line.setMessage('1', Severity::Information, QStringLiteral("x"), {});
    line.setMessage('2', Severity::Success, QStringLiteral("x"), {});
    line.setMessage('3', Severity::Warning, QStringLiteral("x"), {});
    line.setMessage('4', Severity::Problem, QStringLiteral("x"), {});
    QCOMPARE(line.toPlainText(), QStringLiteral("Problem: x\nWarning: x\nDone: x\nx"));
    line.setPalette(palette);
    QStringList colors;
    for (QTextBlock block = line.document()->begin(); block.isValid(); block = block.next()) {
        const QColor color = block.begin().fragment().charFormat().foreground().color();
        QVERIFY(contrastRatio(color, palette.color(QPalette::Window)) >= smallestTextContrast);
        colors.append(color.name());
    }
    QCOMPARE(colors,
             QStringList({failureTextColor(palette).name(), warningTextColor(palette).name(),
                          successTextColor(palette).name(),
                          palette.color(QPalette::WindowText).name()}));
}

void TestMessageLine::sentence_staysOnOneLine() {
    MessageLine line;
    line.setMessage('a', Severity::Information, QStringLiteral("No file a\nb\u2029c  d\x1b."), {});
    QCOMPARE(line.toPlainText(), QStringLiteral("No file a b c  d ."));
}

void TestMessageLine::sentence_losesItsMiddleIfItIsTooLong() {
    MessageLine line;
    const QString longest = QString(longestSentence, u'x');
    line.setMessage('a', Severity::Information, longest, {});
    QCOMPARE(line.toPlainText(), longest);
    line.setMessage('a', Severity::Information, longest + u'x', {});
    QCOMPARE(line.toPlainText(), boundedText(longest + u'x'));
}

void TestMessageLine::text_isReadByAssistiveTechnology() {
    Window window;
    window.line.setMessage('a', Severity::Problem, QStringLiteral("No file."), {});
    QAccessibleInterface *object = QAccessible::queryAccessibleInterface(&window.line);
    QCOMPARE(object->text(QAccessible::Name), QStringLiteral("Message"));
    QVERIFY(object->textInterface());
    QCOMPARE(object->textInterface()->text(0, object->textInterface()->characterCount()),
             QStringLiteral("Problem: No file."));
    QVERIFY(object->state().readOnly);
    QVERIFY(object->state().focusable);
}

void TestMessageLine::height_isAlwaysTheSame() {
    Window window;
    const int empty = window.height();
    QVERIFY(empty >= 2 * window.line.fontMetrics().lineSpacing());
    QList<bool> scrolls;
    for (int count = 0; count <= 4; ++count) {
        setNumbered(window.line, count);
        QCOMPARE(window.height(), empty);
        scrolls.append(window.line.verticalScrollBar()->maximum() > 0);
    }
    QCOMPARE(scrolls, QList<bool>({false, false, false, true, true}));
}

void TestMessageLine::longSentence_isWrapped() {
    Window window;
    window.line.setMessage('a', Severity::Information, QStringLiteral("many words ").repeated(40),
                           {});
    window.height();
    QVERIFY(window.line.verticalScrollBar()->maximum() > 0);
    QCOMPARE(window.line.horizontalScrollBar()->maximum(), 0);
}

void TestMessageLine::action_hasAButton() {
    Window window;
    MessageLine &line = window.line;
    int runs = 0;
    line.setMessage('a', Severity::Information, QStringLiteral("12 hand edits were replaced."),
                    {QStringLiteral("&Restore edits"), [&] { ++runs; }});
    QPushButton *button = shownButton(line);
    QVERIFY(button);
    QCOMPARE(button->accessibleName(), QStringLiteral("Restore edits"));
    QAccessible::queryAccessibleInterface(button)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(runs, 1);
    line.clearMessage('a');
    QVERIFY(!shownButton(line));
}

void TestMessageLine::action_mayClearItsOwnMessage() {
    MessageLine line;
    line.setMessage('a', Severity::Information, QStringLiteral("x"),
                    {QStringLiteral("Undo"), [&] {
                         line.clearMessage('a');
                         line.setMessage('b', Severity::Success, QStringLiteral("undone"), {});
                     }});
    shownButton(line)->click();
    QCOMPARE(line.toPlainText(), QStringLiteral("Done: undone"));
    QVERIFY(!shownButton(line));
}

void TestMessageLine::eachAction_hasAButtonOfItsOwn() {
    MessageLine line;
    QStringList deeds;
    const QStringList names = {QStringLiteral("One"), QStringLiteral("Two"),
                               QStringLiteral("Three")};
    const auto offer = [&](const QString &name) {
        line.setMessage(int(names.indexOf(name)), Severity::Information, QStringLiteral("x"),
                        {QStringLiteral("&") + name, [&, name] { deeds.append(name); }});
    };
    offer(QStringLiteral("One"));
    line.setMessage('b', Severity::Information, QStringLiteral("y"), {});
    offer(QStringLiteral("Two"));
    QCOMPARE(labels(line), QStringList({QStringLiteral("&Two"), QStringLiteral("&One")}));
    QCOMPARE(line.findChild<QPushButton *>()->accessibleName(), QStringLiteral("Two"));
    for (QPushButton *button : shownButtons(line))
        button->click();
    QCOMPARE(deeds, QStringList({QStringLiteral("Two"), QStringLiteral("One")}));
    offer(QStringLiteral("One"));
    QCOMPARE(labels(line), QStringList({QStringLiteral("&One"), QStringLiteral("&Two")}));
    line.clearMessage(0);
    QCOMPARE(labels(line), QStringList({QStringLiteral("&Two")}));
    QCOMPARE(line.findChild<QPushButton *>()->text(), QStringLiteral("&Two"));
    line.setMessage(1, Severity::Information, QStringLiteral("x"), {});
    QCOMPARE(labels(line), QStringList());
    offer(QStringLiteral("Three"));
    QCOMPARE(labels(line), QStringList({QStringLiteral("&Three")}));
    line.clearMessage(2);
    QCOMPARE(labels(line), QStringList());
}

// Who has a finger on a button must not do something else with it because a message came.
void TestMessageLine::button_staysWithItsMessage() {
    Window window;
    MessageLine &line = window.line;
    QStringList deeds;
    line.setMessage('a', Severity::Information, QStringLiteral("x"),
                    {QStringLiteral("One"), [&] { deeds << QStringLiteral("1"); }});
    QPushButton *one = shownButton(line);
    const QRect place = one->geometry();
    one->setFocus();
    QTest::keyPress(one, Qt::Key_Space);
    line.setMessage('b', Severity::Information, QStringLiteral("y"),
                    {QStringLiteral("Two"), [&] { deeds << QStringLiteral("2"); }});
    QTest::keyRelease(one, Qt::Key_Space);
    QCOMPARE(deeds, QStringList({QStringLiteral("1")}));
    QVERIFY(one->hasFocus());
    QCOMPARE(one->geometry(), place);
    line.setMessage('a', Severity::Information, QStringLiteral("z"),
                    {QStringLiteral("Other"), [&] { deeds << QStringLiteral("3"); }});
    one->click();
    QCOMPARE(deeds, QStringList({QStringLiteral("1")}));
}

void TestMessageLine::buttons_standBesideEachOtherAfterTheText() {
    Window window;
    const int before = window.height();
    window.line.setMessage('a', Severity::Information, QStringLiteral("x"),
                           {QStringLiteral("One"), [] {}});
    QCOMPARE(window.height(), before);
    window.line.setMessage('a', Severity::Information, QStringLiteral("x"),
                           {QStringLiteral("Two words"), [] {}});
    QCOMPARE(window.height(), before);
    window.line.setMessage('b', Severity::Information, QStringLiteral("y"),
                           {QStringLiteral("One"), [] {}});
    const int both = window.height();
    const QList<QPushButton *> buttons = shownButtons(window.line);
    QCOMPARE(buttons.size(), 2);
    const QRect text = window.line.viewport()->geometry();
    QVERIFY(text.right() < buttons[0]->geometry().left());
    QVERIFY(buttons[0]->geometry().right() < buttons[1]->geometry().left());
    QCOMPARE(buttons[1]->geometry().right(), window.line.rect().right());
    for (const QPushButton *button : buttons)
        QVERIFY(window.line.rect().contains(button->geometry()));
    window.line.setMessage('b', Severity::Information, QStringLiteral("y"), {});
    QCOMPARE(window.height(), both);
    QVERIFY(window.line.viewport()->width() > text.width());
}

void TestMessageLine::buttons_leaveRoomForTheText() {
    Window window;
    window.window.resize(1000, 300);
    int topic = 0;
    for (const QString &label : {QStringLiteral("Restore"), QStringLiteral("Reload"),
                                 QStringLiteral("Write the image file again"),
                                 QStringLiteral("Remove \u201c(custom)\u201d")})
        window.line.setMessage(++topic, Severity::Information,
                               QStringLiteral("A message of a few words."), {label, [] {}});
    window.height();
    const QRect text = window.line.viewport()->geometry();
    QVERIFY(text.width() > window.line.width() / 3);
    const QList<QPushButton *> buttons = shownButtons(window.line);
    QCOMPARE(buttons.size(), 4);
    for (const QPushButton *button : buttons) {
        QVERIFY(!button->geometry().intersects(text));
        QVERIFY(window.line.rect().contains(button->geometry()));
    }
}

void TestMessageLine::buttons_standBesideTheScrollBar() {
    Window window;
    window.line.setMessage('a', Severity::Information, QStringLiteral("many words ").repeated(40),
                           {QStringLiteral("Act"), [] {}});
    window.height();
    const QScrollBar *bar = window.line.verticalScrollBar();
    QTRY_VERIFY(bar->isVisible());
    const QRect place(bar->mapTo(&window.line, QPoint()), bar->size());
    QVERIFY(!shownButton(window.line)->geometry().intersects(place));
    window.line.setMessage('a', Severity::Information, QStringLiteral("few"),
                           {QStringLiteral("Act"), [] {}});
    window.height();
    QTRY_COMPARE(shownButton(window.line)->geometry().right(), window.line.width() - 1);
}

void TestMessageLine::buttons_areReachedByKeyboardInTheirOrder() {
    Window window;
    QLineEdit next;
    next.setParent(&window.window);
    next.show();
    window.line.setMessage('a', Severity::Information, QStringLiteral("x"),
                           {QStringLiteral("One"), [] {}});
    window.line.setMessage('b', Severity::Information, QStringLiteral("y"),
                           {QStringLiteral("Two"), [] {}});
    window.line.setMessage('c', Severity::Information, QStringLiteral("z"),
                           {QStringLiteral("Three"), [] {}});
    window.line.setFocus();
    QTRY_VERIFY(window.line.hasFocus());
    QTest::keyClick(&window.line, Qt::Key_Tab);
    for (QPushButton *button : shownButtons(window.line)) {
        QVERIFY2(button->hasFocus(), qPrintable(button->text()));
        QTest::keyClick(button, Qt::Key_Tab);
    }
    QVERIFY(next.hasFocus());
}

void TestMessageLine::repeatedMessage_keepsTheSelection() {
    MessageLine line;
    line.setMessage('a', Severity::Information, QStringLiteral("same"), {});
    line.selectAll();
    line.setMessage('a', Severity::Information, QStringLiteral("same"),
                    {QStringLiteral("One"), [] {}});
    QCOMPARE(line.textCursor().selectedText(), QStringLiteral("same"));
    QVERIFY(shownButton(line));
}

void TestMessageLine::messages_ofOneMomentAreAnnouncedOnce() {
    MessageLine line;
    const QSignalSpy announced(&line, &MessageLine::announced);
    line.setMessage('a', Severity::Information, QStringLiteral("remark"), {});
    line.setMessage('b', Severity::Success, QStringLiteral("verdict"), {});
    QCOMPARE(announced.size(), 0);
    QTRY_COMPARE(announced, Texts({{QStringLiteral("Done: verdict\nremark")}}));
    line.setMessage('b', Severity::Success, QStringLiteral("verdict"), {});
    line.setMessage('c', Severity::Warning, QStringLiteral("later"), {});
    QTRY_COMPARE(announced.size(), 2);
    QCOMPARE(announced.last(), Texts::value_type({QStringLiteral("Warning: later")}));
    line.setMessage('b', Severity::Success, QStringLiteral("verdict"), {});
    QTRY_COMPARE(announced.size(), 3);
    QCOMPARE(announced.last(), Texts::value_type({QStringLiteral("Done: verdict")}));
}

void TestMessageLine::announcement_isANotification() {
    Window window;
    window.line.setMessage('a', Severity::Success, QStringLiteral("Read succeeded."), {});
    QTRY_VERIFY(window.line.findChild<Announcement *>());
    const auto *object =
        QAccessible::queryAccessibleInterface(window.line.findChild<Announcement *>());
    QCOMPARE(object->role(), QAccessible::Notification);
    QCOMPARE(object->text(QAccessible::Name), QStringLiteral("Done: Read succeeded."));
    QVERIFY(!object->state().invisible);
}

void TestMessageLine::messageThatHasGone_isNotAnnounced() {
    MessageLine line;
    const QSignalSpy announced(&line, &MessageLine::announced);
    line.setMessage('a', Severity::Information, QStringLiteral("for a moment"), {});
    line.clearMessage('a');
    MessageLine other;
    QSignalSpy later(&other, &MessageLine::announced);
    other.setMessage('a', Severity::Information, QStringLiteral("later"), {});
    QVERIFY(later.wait());
    QCOMPARE(announced.size(), 0);
}

QTEST_MAIN(TestMessageLine)
#include "tst_messageline.moc"
