// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "base/ShownName.h"

#include <QTest>

/// A device's name as the list shows it.
class TestShownName : public QObject {
    Q_OBJECT

private slots:
    void name_isShownAs_data();
    void name_isShownAs();
    void longName_endsInAnEllipsis_data();
    void longName_endsInAnEllipsis();
};

void TestShownName::name_isShownAs_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *title, const QString &name, const char *shown) {
        QTest::newRow(title) << name << QString::fromUtf8(shown);
    };
    row("nothing", QString(), "");
    row("a device", QStringLiteral("W27C512@DIP28"), "W27C512@DIP28");
    row("blanks", QStringLiteral(" A  B "), " A  B ");
    row("a backslash", QStringLiteral("A\\x1bB"), "A\\x1bB");
    row("letters of others", QStringLiteral("\u00e9\u0416\u4e2d"), "\u00e9\u0416\u4e2d");
    row("beyond the first plane", QStringLiteral("\U0001f600"), "\U0001f600");
    row("escape sequence", QStringLiteral("\x1b[0;91mA"), "\\x1b[0;91mA");
    row("tab", QStringLiteral("A\tB"), "A\\x09B");
    row("a NUL", QString(QChar(u'\0')), "\\x00");
    row("delete", QStringLiteral("\x7f"), "\\x7f");
    row("the upper controls", QString(QChar(0x9b)), "\\x9b");
    row("soft hyphen", QString(QChar(0xad)), "\\xad");
    row("from right to left", QStringLiteral("A\u202eB\u2066C"), "A\\u202eB\\u2066C");
    row("no width", QStringLiteral("A\u200bB\ufeff"), "A\\u200bB\\ufeff");
    row("a variation", QStringLiteral("A\ufe0fB\U000e0100"), "A\\ufe0fB\\U000e0100");
    row("a filler", QStringLiteral("A\u3164B\u1160C\uffa0"), "A\\u3164B\\u1160C\\uffa0");
    row("joined", QStringLiteral("A\u034fB\u180bC"), "A\\u034fB\\u180bC");
    row("blanks", QStringLiteral("A B\u00a0C\u3000D\u2800"), "A B\\xa0C\\u3000D\\u2800");
    row("marks that are seen", QStringLiteral("e\u0301"), "e\u0301");
    row("a tag", QStringLiteral("A\U000e0041"), "A\\U000e0041");
    row("no character", QString(QChar(0xffff)), "\\uffff");
}

void TestShownName::name_isShownAs() {
    QFETCH(QString, name);
    QTEST(shownName(name), "shown");
}

void TestShownName::longName_endsInAnEllipsis_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const QString most(longestShownName, u'x');
    QTest::newRow("as long as is shown") << most << most;
    QTest::newRow("longer by one") << most + u'y' << most + u'\u2026';
    QTest::newRow("far longer") << QString(1 << 20, u'x') << most + u'\u2026';
    QTest::newRow("a pair across the end")
        << most.chopped(1) + QStringLiteral("\U0001f600") << most.chopped(1) + u'\u2026';
    QTest::newRow("an escape across the end")
        << most.chopped(3) + QStringLiteral("\x1b") << most.chopped(3) + u'\u2026';
    QTest::newRow("escapes alone")
        << QString(longestShownName, u'\t')
        << QStringLiteral("\\x09").repeated(longestShownName / 4) + u'\u2026';
}

void TestShownName::longName_endsInAnEllipsis() {
    QFETCH(QString, name);
    QTEST(shownName(name), "shown");
}

QTEST_GUILESS_MAIN(TestShownName)
#include "tst_shown_name.moc"
