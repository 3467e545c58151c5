// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/FuseText.h"

#include <QStringList>
#include <QTest>

/// The lines in which the tool keeps fuses.
class TestFuseText : public QObject {
    Q_OBJECT

private slots:
    void text_isRead_data();
    void text_isRead();
    void fuses_areCounted();
};

namespace {

/// "name:value/digits" for a fuse, the text in brackets for any other line.
QStringList pictureOf(const QList<FuseLine> &lines) {
    QStringList picture;
    for (const FuseLine &line : lines)
        picture << (line.fuse ? QStringLiteral("%1:%2/%3")
                                    .arg(line.fuse->name, QString::number(line.fuse->value),
                                         QString::number(line.fuse->digits))
                              : u'[' + line.text + u']');
    return picture;
}

} // namespace

void TestFuseText::text_isRead_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char *name, const QByteArray &text, const QStringList &lines) {
        QTest::newRow(name) << text << lines;
    };
    row("nothing", "", {});
    row("the release's dialect", "fuses_lo = 0x62\nlock_byte = 0xff\n",
        {QStringLiteral("fuses_lo:98/2"), QStringLiteral("lock_byte:255/2")});
    row("the newer dialect", "fuses_lo=0x62\nlock_byte=0xff\n",
        {QStringLiteral("fuses_lo:98/2"), QStringLiteral("lock_byte:255/2")});
    row("words, and upper case", "conf_word = 0X3FFF", {QStringLiteral("conf_word:16383/4")});
    row("the largest", "a=0xFFFFFFFF", {QStringLiteral("a:4294967295/8")});
    row("one digit", "a=0x0", {QStringLiteral("a:0/1")});
    row("other ends of lines", "a=0x1\r\nb=0x2\rc=0x3\r\r\nd=0x4",
        {QStringLiteral("a:1/1"), QStringLiteral("b:2/1"), QStringLiteral("c:3/1"),
         QStringLiteral("d:4/1")});
    row("blanks around", "\t a  =  0x62 \t\n", {QStringLiteral("a:98/2")});
    row("blank lines", "\n \n\t\na=0x1\n\n", {QStringLiteral("a:1/1")});
    row("a name twice", "a=0x1\na=0x2\n", {QStringLiteral("a:1/1"), QStringLiteral("a:2/1")});
    row("a comment", "# ATMEGA8\na=0x1\n",
        {QStringLiteral("[# ATMEGA8]"), QStringLiteral("a:1/1")});
    row("no value", "a = \na =0x\na\n",
        {QStringLiteral("[a =]"), QStringLiteral("[a =0x]"), QStringLiteral("[a]")});
    row("no name", "= 0x62\n", {QStringLiteral("[= 0x62]")});
    row("a name of two words", "a b = 0x62\n", {QStringLiteral("[a b = 0x62]")});
    row("no hexadecimal number", "a=62\nb=0x6g\nc=-0x1\n",
        {QStringLiteral("[a=62]"), QStringLiteral("[b=0x6g]"), QStringLiteral("[c=-0x1]")});
    row("more behind the value", "a=0x62 x\nb=0x1=0x2\n",
        {QStringLiteral("[a=0x62 x]"), QStringLiteral("[b=0x1=0x2]")});
    row("too long a value", "a=0x123456789\n", {QStringLiteral("[a=0x123456789]")});
    row("digits of another script", "a=0x\xD9\xA1\n", {QStringLiteral("[a=0x\u0661]")});
    row("no UTF-8", "\xFF=0x1\n\xC3", {QStringLiteral("\uFFFD:1/1"), QStringLiteral("[\uFFFD]")});
    row("a name with an escape", "a\x1B[0m=0x1\n", {QStringLiteral("[a\u001B[0m=0x1]")});
    row("a null character", QByteArray("a\0=0x1\n", 7),
        {QStringLiteral("[a") + QChar() + QStringLiteral("=0x1]")});
}

void TestFuseText::text_isRead() {
    QFETCH(QByteArray, text);
    QTEST(pictureOf(readFuseText(text)), "lines");
}

void TestFuseText::fuses_areCounted() {
    QCOMPARE(countFuses(readFuseText("a=0x1\nwhat?\nb=0x2\n")), 2);
    QCOMPARE(countFuses({}), 0);
}

QTEST_GUILESS_MAIN(TestFuseText)
#include "tst_fusetext.moc"
