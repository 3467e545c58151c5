// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/FuseText.h"

#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

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
        picture << (line.fuse
                        ? u"%1:%2/%3"_s.arg(line.fuse->name, QString::number(line.fuse->value),
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
        {u"fuses_lo:98/2"_s, u"lock_byte:255/2"_s});
    row("the newer dialect", "fuses_lo=0x62\nlock_byte=0xff\n",
        {u"fuses_lo:98/2"_s, u"lock_byte:255/2"_s});
    row("words, and upper case", "conf_word = 0X3FFF", {u"conf_word:16383/4"_s});
    row("the largest", "a=0xFFFFFFFF", {u"a:4294967295/8"_s});
    row("one digit", "a=0x0", {u"a:0/1"_s});
    row("other ends of lines", "a=0x1\r\nb=0x2\rc=0x3\r\r\nd=0x4",
        {u"a:1/1"_s, u"b:2/1"_s, u"c:3/1"_s, u"d:4/1"_s});
    row("blanks around", "\t a  =  0x62 \t\n", {u"a:98/2"_s});
    row("blank lines", "\n \n\t\na=0x1\n\n", {u"a:1/1"_s});
    row("a name twice", "a=0x1\na=0x2\n", {u"a:1/1"_s, u"a:2/1"_s});
    row("a comment", "# ATMEGA8\na=0x1\n", {u"[# ATMEGA8]"_s, u"a:1/1"_s});
    row("no value", "a = \na =0x\na\n", {u"[a =]"_s, u"[a =0x]"_s, u"[a]"_s});
    row("no name", "= 0x62\n", {u"[= 0x62]"_s});
    row("a name of two words", "a b = 0x62\n", {u"[a b = 0x62]"_s});
    row("no hexadecimal number", "a=62\nb=0x6g\nc=-0x1\n",
        {u"[a=62]"_s, u"[b=0x6g]"_s, u"[c=-0x1]"_s});
    row("more behind the value", "a=0x62 x\nb=0x1=0x2\n", {u"[a=0x62 x]"_s, u"[b=0x1=0x2]"_s});
    row("too long a value", "a=0x123456789\n", {u"[a=0x123456789]"_s});
    row("digits of another script", "a=0x\xD9\xA1\n", {u"[a=0x\u0661]"_s});
    row("no UTF-8", "\xFF=0x1\n\xC3", {u"\uFFFD:1/1"_s, u"[\uFFFD]"_s});
    row("a name with an escape", "a\x1B[0m=0x1\n", {u"[a\u001B[0m=0x1]"_s});
    row("a null character", QByteArray("a\0=0x1\n", 7), {u"[a"_s + QChar() + u"=0x1]"_s});
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
