// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/FittingLine.h"

#include <QTest>

namespace {

/// Says as many words as there is room for.
class Words final : public FittingLine {
public:
    using FittingLine::FittingLine;
    using FittingLine::joined;
    using FittingLine::say;

protected:
    QString fittingText() const override {
        QString words = wholeText();
        while (words.contains(u' ') && fontMetrics().horizontalAdvance(words) > width())
            words.truncate(words.lastIndexOf(u' '));
        return words;
    }
};

const QString all = QStringLiteral("one two three");

/// A line on the screen that has room for all three words.
class ShownWords {
public:
    ShownWords() {
        line.resize(wide(), line.sizeHint().height());
        line.say(all);
        line.show();
    }
    int wide() const { return line.fontMetrics().horizontalAdvance(all) + 1; }

    Words line;
};

} // namespace

class TestFittingLine : public QObject {
    Q_OBJECT

private slots:
    void text_followsTheRoom();
    void text_followsTheFont();
    void text_showsItsBeginning();
    void selectedWhole_staysSelected();
    void user_canOnlyRead();
    void emptyPieces_leaveNoSeparator();
};

void TestFittingLine::text_followsTheRoom() {
    ShownWords shown;
    QCOMPARE(shown.line.text(), all);
    shown.line.resize(shown.wide() - 2, shown.line.height());
    QCOMPARE(shown.line.text(), QStringLiteral("one two"));
    QCOMPARE(shown.line.wholeText(), all);
    shown.line.resize(shown.wide(), shown.line.height());
    QCOMPARE(shown.line.text(), all);
}

void TestFittingLine::text_followsTheFont() {
    ShownWords shown;
    QFont larger = shown.line.font();
    larger.setPointSizeF(larger.pointSizeF() * 1.3);
    shown.line.setFont(larger);
    QCOMPARE(shown.line.text(), QStringLiteral("one two"));
}

void TestFittingLine::text_showsItsBeginning() {
    ShownWords shown;
    shown.line.resize(1, shown.line.height());
    shown.line.say(QStringLiteral("immeasurable"));
    QCOMPARE(shown.line.text(), QStringLiteral("immeasurable"));
    QCOMPARE(shown.line.cursorPosition(), 0);
}

void TestFittingLine::selectedWhole_staysSelected() {
    ShownWords shown;
    QVERIFY(QTest::qWaitForWindowActive(&shown.line));
    shown.line.setFocus();
    shown.line.selectAll();
    shown.line.say(QStringLiteral("one"));
    QCOMPARE(shown.line.selectedText(), QStringLiteral("one"));
    shown.line.setSelection(0, 1);
    shown.line.say(QStringLiteral("two"));
    QCOMPARE(shown.line.selectedText(), QString());
}

void TestFittingLine::user_canOnlyRead() {
    ShownWords shown;
    QTest::keyClick(&shown.line, Qt::Key_A);
    QCOMPARE(shown.line.text(), all);
}

void TestFittingLine::emptyPieces_leaveNoSeparator() {
    QCOMPARE(Words::joined({QString(), QStringLiteral("one"), QStringLiteral("two")}),
             QStringLiteral("one \u00b7 two"));
}

QTEST_MAIN(TestFittingLine)
#include "tst_fittingline.moc"
