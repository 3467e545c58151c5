// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/BoundedText.h"

#include <QTest>

class TestBoundedText : public QObject {
    Q_OBJECT

private slots:
    void text_losesItsMiddleIfItIsTooLong_data();
    void text_losesItsMiddleIfItIsTooLong();
    void character_isLeftOutWhole();
};

void TestBoundedText::text_losesItsMiddleIfItIsTooLong_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto x = [](qsizetype count) { return QString(count, u'x'); };
    const auto row = [](const char *name, const QString &text, const QString &shown) {
        QTest::newRow(name) << text << shown;
    };
    row("nothing", QString(), QString());
    row("the longest", x(200), x(200));
    const QString middle = QStringLiteral(" (101 characters are not shown) ");
    row("one more", u'<' + x(199) + u'>', u'<' + x(49) + middle + x(49) + u'>');
    row("of two units each",
        u'<' + x(49) + QStringLiteral("\U0001F600").repeated(101) + x(49) + u'>',
        u'<' + x(49) + middle + x(49) + u'>');
}

void TestBoundedText::text_losesItsMiddleIfItIsTooLong() {
    QFETCH(QString, text);
    QTEST(boundedText(text, 200), "shown");
}

void TestBoundedText::character_isLeftOutWhole() {
    const QString face = QStringLiteral("\U0001F600");
    const QString x = QString(49, u'x');
    QCOMPARE(boundedText(x + face.repeated(200) + x, 200),
             x + QStringLiteral(" (200 characters are not shown) ") + x);
}

QTEST_APPLESS_MAIN(TestBoundedText)
#include "tst_boundedtext.moc"
