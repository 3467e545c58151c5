// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/TextLines.h"

#include <QTest>

class TestTextLines : public QObject {
    Q_OBJECT

private slots:
    void lines_areCutAtEachBreak_data();
    void lines_areCutAtEachBreak();
    void lines_referToTheText();
    void lineOfAFile_endsWithOneUnitOrAPair();
};

void TestTextLines::lines_areCutAtEachBreak_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char *name, const QString &text, const QStringList &lines) {
        QTest::newRow(name) << text << lines;
    };
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b c");
    row("no text", {}, {QString()});
    row("no break", b, {b});
    row("one break", a + u'\n' + b, {a, b});
    row("a break at the end", a + u'\n', {a, {}});
    row("a break at the start", u'\n' + a, {{}, a});
    row("a pair", a + QStringLiteral("\r\n") + b, {a, {}, b});
    row("nothing but breaks", QStringLiteral("\n\n"), {{}, {}, {}});
    for (const char16_t character : {u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'})
        row(qPrintable(QString::number(character, 16)), a + QChar(character) + b, {a, b});
    for (const char16_t character : {u'\t', u'\b', u'\x1c', u'\0', u'\u00a0'}) {
        const QString whole = a + QChar(character) + b;
        row(qPrintable(QString::number(character, 16)), whole, {whole});
    }
}

void TestTextLines::lines_areCutAtEachBreak() {
    QFETCH(const QString, text);
    QStringList lines;
    LineCursor cursor(text);
    while (const auto line = cursor.next())
        lines.append(line->toString());
    QTEST(lines, "lines");
    QVERIFY(!cursor.next());
}

void TestTextLines::lines_referToTheText() {
    const QString text = QStringLiteral("first\nsecond");
    LineCursor cursor(text);
    QCOMPARE(cursor.next()->data(), text.constData());
    QCOMPARE(cursor.next()->data(), text.constData() + 6);
}

void TestTextLines::lineOfAFile_endsWithOneUnitOrAPair() {
    const QByteArrayView text("a\r\nb\n\rc\r");
    QList<qsizetype> lengths;
    for (qsizetype at = 0; at <= text.size(); ++at)
        lengths.append(lineEndAt(text, at));
    QCOMPARE(lengths, (QList<qsizetype>{0, 2, 1, 0, 1, 1, 0, 1, 0}));
    QCOMPARE(lineEndAt(QStringLiteral("\u0A0D\r\n"), 1), 2);
}

QTEST_GUILESS_MAIN(TestTextLines)
#include "tst_text_lines.moc"
