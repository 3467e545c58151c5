// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/WrappingLabel.h"

#include <QTest>

/// A text in a narrow window.
class TestWrappingLabel : public QObject {
    Q_OBJECT

private slots:
    void width_isNotThatOfAnEndlessWord();
    void endlessWord_isShownToItsEnd();
    void lines_endBetweenWords();
    void otherText_looksAsInAnotherLabel();
};

namespace {

const QString endless(1000, u'x');

QImage pictureOf(const QString &text, int width) {
    WrappingLabel label;
    label.setText(text);
    label.resize(width, label.heightForWidth(width));
    return label.grab().toImage();
}

} // namespace

void TestWrappingLabel::width_isNotThatOfAnEndlessWord() {
    WrappingLabel label;
    label.setText(QStringLiteral("x"));
    const int before = label.minimumSizeHint().width();
    label.setText(endless);
    QCOMPARE(label.minimumSizeHint().width(), before);
    const int letters = 80 * label.fontMetrics().averageCharWidth();
    QCOMPARE(label.sizeHint(), QSize(letters, label.heightForWidth(letters)));
}

void TestWrappingLabel::endlessWord_isShownToItsEnd() {
    QVERIFY(pictureOf(endless + u'x', 200) != pictureOf(endless + u'o', 200));
}

void TestWrappingLabel::lines_endBetweenWords() {
    const int room = WrappingLabel().fontMetrics().horizontalAdvance(QStringLiteral("xxx xx"));
    QCOMPARE(pictureOf(QStringLiteral("xxx xxx"), room),
             pictureOf(QStringLiteral("xxx\nxxx"), room));
}

void TestWrappingLabel::otherText_looksAsInAnotherLabel() {
    WrappingLabel label;
    QLabel other;
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::red);
    for (QLabel *one : {static_cast<QLabel *>(&label), &other}) {
        one->setWordWrap(true);
        one->setText(QStringLiteral("Enter a part of the name. ").repeated(9));
        one->setPalette(palette);
        one->resize(200, 300);
    }
    QCOMPARE(label.heightForWidth(200), other.heightForWidth(200));
    QCOMPARE(label.grab().toImage(), other.grab().toImage());
}

QTEST_MAIN(TestWrappingLabel)
#include "tst_wrappinglabel.moc"
